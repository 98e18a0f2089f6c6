// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/program/started_program.h"

#include <utility>

#include "engine/left_out.h"
#include "shell/program/program_folder.h"

namespace corvane {

StartedProgram::StartedProgram(CommandLine line, std::string folder, System system)
    : line_(std::move(line)), folder_(std::move(folder)), system_(std::move(system)) {
    for (const std::string& option : line_.unknown) system_.tell(option + ": there is no such option");
}

bool StartedProgram::onlyInstance() {
    if (!system_.instance.acquire()) return callTheFirst(), false;
    system_.removeHalves(folder_);
    system_.removeHalves(folder_ + system_.files.separator() + kSkinFolder);
    std::vector<std::string> named = namesBetweenBlanks(line_.names);
    named.insert(named.end(), line_.files.begin(), line_.files.end());
    filesForList(system_.files, named, system_.tell);
    return true;
}

void StartedProgram::callTheFirst() {
    // The list of the player that runs is not replaced by names alone: they are for a start of their own.
    if (!line_.names.empty())
        system_.tell("The player runs already, and takes no names but behind --open: " + line_.names);
    std::vector<std::string> files = filesForList(system_.files, line_.files, system_.tell);
    const std::size_t fitting = system_.instance.fitting(files);
    if (fitting < files.size()) {
        system_.tell("More files than can be handed over; the last " + std::to_string(files.size() - fitting) +
                     " are left out.");
        files.resize(fitting);
    }
    if (!line_.files.empty() && files.empty()) return;
    if (!system_.instance.call(files)) system_.tell("The player that runs does not answer.");
}

void StartedProgram::end() {
    if (std::exchange(ending_, true)) return;
    if (onEnd_) onEnd_();
}

}  // namespace corvane
