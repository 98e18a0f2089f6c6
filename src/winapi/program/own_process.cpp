// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/program/own_process.h"

#include <algorithm>

#include "winapi/files/plain_file.h"
#include "winapi/files/windows_files.h"
#include "winapi/program/known_folders.h"
#include "winapi/text.h"

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

int platformFamily() {
    constexpr int kOtherFamily = 2;
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    static_assert(sizeof version == 148);
    return GetVersionExA(&version) != 0 ? static_cast<int>(version.dwPlatformId) : kOtherFamily;
}

}  // namespace corvane
