// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windows_process.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <utility>

#include "engine/left_out.h"
#include "windows/plain_file.h"
#include "windows/program_folder.h"
#include "windows/standard_stream.h"
#include "windows/text.h"
#include "windows/windows_files.h"

namespace corvane {

namespace {

/// Whether a list takes the name; where it does not, that is told.
bool isTaken(const std::string& name) {
    WindowsFiles files;
    const std::string why = whyLeftOut(files, name);
    if (!why.empty()) tellOnErrors(why);
    return why.empty() && !name.empty();
}

}  // namespace

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
        std::istringstream names(line_.names);
        for (std::string name; std::getline(names, name, ' ');) isTaken(name);
        for (const std::string& file : line_.files) isTaken(file);
        return true;
    }
    callTheFirst();
    return false;
}

void WindowsProcess::callTheFirst() {
    // The list of the player that runs is not replaced by names alone: they are for a start of their own.
    if (!line_.names.empty())
        tellOnErrors("The player runs already, and takes no names but behind --open: " + line_.names);
    std::vector<std::string> files;
    std::copy_if(line_.files.begin(), line_.files.end(), std::back_inserter(files), isTaken);
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
