// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windows_process.h"

#include <utility>

#include "windows/program_folder.h"
#include "windows/text.h"
#include "windows/windows_files.h"

namespace corvane {

CommandLine commandLineOfProcess() {
    int count = 0;
    wchar_t** const given = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count && given != nullptr; ++i) arguments.push_back(fromWide(given[i]));
    LocalFree(given);
    return readArguments(arguments, fullPath);
}

std::string helpText() { return usageText(); }

WindowsProcess::WindowsProcess(CommandLine line, std::string folder)
    : line_(std::move(line)), folder_(std::move(folder)), instance_(folder_) {}

bool WindowsProcess::onlyInstance() {
    if (instance_.acquire()) {
        removeUnfinishedFiles(folder_);
        return true;
    }
    instance_.handOver(line_.files);
    return false;
}

int WindowsProcess::platformId() {
    constexpr int kOtherFamily = 2;
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    static_assert(sizeof version == 148);
    return GetVersionExA(&version) != 0 ? static_cast<int>(version.dwPlatformId) : kOtherFamily;
}

void WindowsProcess::end() {
    if (ending_) return;
    ending_ = true;
    if (onEnd_) onEnd_();
}

}  // namespace corvane
