// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windows_process.h"

#include <algorithm>
#include <utility>

#include "engine/left_out.h"
#include "windows/files/plain_file.h"
#include "windows/files/windows_files.h"
#include "windows/program_folder.h"
#include "windows/standard_stream.h"
#include "windows/text.h"

namespace corvane {

bool areDroppedOnIcon(const std::vector<std::string>& arguments) {
    WindowsFiles files;
    const auto isFile = [&files](const std::string& each) {
        const bool isFull = each.size() > 3 && each[1] == ':' && each[2] == '\\' && isPlainName(toWide(each));
        return isFull && files.lookUp(each).has_value();
    };
    return !arguments.empty() && std::all_of(arguments.begin(), arguments.end(), isFile);
}

CommandLine commandLineOfProcess() {
    int count = 0;
    wchar_t** const given = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count && given != nullptr; ++i) arguments.push_back(fromWide(given[i]));
    LocalFree(given);
    if (areDroppedOnIcon(arguments)) arguments.insert(arguments.begin(), "--open");
    return readArguments(arguments, fullPath);
}

std::string helpText() { return usageText(); }

WindowsProcess::WindowsProcess(CommandLine line, std::string folder)
    : line_(std::move(line)), folder_(std::move(folder)), instance_(folder_) {
    for (const std::string& option : line_.unknown) tellOnErrors(option + ": there is no such option");
}

bool WindowsProcess::onlyInstance() {
    if (instance_.acquire()) {
        removeUnfinishedFiles(folder_);
        WindowsFiles files;
        std::vector<std::string> named = namesBetweenBlanks(line_.names);
        named.insert(named.end(), line_.files.begin(), line_.files.end());
        filesForList(files, named, tellOnErrors);
        return true;
    }
    callTheFirst();
    return false;
}

void WindowsProcess::callTheFirst() {
    // The list of the player that runs is not replaced by names alone: they are for a start of their own.
    if (!line_.names.empty())
        tellOnErrors("The player runs already, and takes no names but behind --open: " + line_.names);
    WindowsFiles drive;
    std::vector<std::string> files = filesForList(drive, line_.files, tellOnErrors);
    const std::size_t fitting = Instance::fitting(files);
    if (fitting < files.size()) {
        tellOnErrors("More files than can be handed over; the last " + std::to_string(files.size() - fitting) +
                     " are left out.");
        files.resize(fitting);
    }
    if (!line_.files.empty() && files.empty()) return;
    if (!instance_.handOver(files)) tellOnErrors("The player that runs does not answer.");
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
