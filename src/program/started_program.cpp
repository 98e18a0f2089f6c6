// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/started_program.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "engine/left_out.h"
#include "program/program_folder.h"

namespace corvane {

namespace {

constexpr std::size_t kMostLeftOut = 16;  ///< names that no list takes, as many as a box has use for

/// Those of the names that are not among `taken`, which are some of them in their order; no more than kMostLeftOut.
std::vector<std::string> othersOf(const std::vector<std::string>& named, const std::vector<std::string>& taken) {
    std::vector<std::string> others;
    auto next = taken.begin();
    for (const std::string& name : named) {
        if (next != taken.end() && *next == name) {
            ++next;
        } else if (!name.empty() && others.size() < kMostLeftOut) {
            others.push_back(name);
        }
    }
    return others;
}

}  // namespace

StartedProgram::StartedProgram(CommandLine line, std::string folder, System system)
    : line_(std::move(line)), folder_(std::move(folder)), system_(std::move(system)) {
    for (const std::string& option : line_.unknown) system_.tell(option + ": there is no such option");
}

bool StartedProgram::onlyInstance(const ListTaker& taken) {
    if (!system_.instance.acquire()) return callTheFirst(taken), false;
    system_.removeHalves(folder_);
    system_.removeHalves(folder_ + system_.files.separator() + kSkinFolder);
    std::vector<std::string> named = namesBetweenBlanks(line_.names);
    named.insert(named.end(), line_.files.begin(), line_.files.end());
    taken(named, system_.tell);
    return true;
}

void StartedProgram::callTheFirst(const ListTaker& taken) {
    if (const std::string place = system_.instance.elsewhere(); !place.empty()) {
        // What is handed over would be played and asked about where nobody looks.
        elsewhere_ = "The player runs already in another session, on " + place + ".";
        system_.tell(elsewhere_);
        return;
    }
    // The list of the player that runs is not replaced by names alone: they are for a start of their own.
    if (!line_.names.empty())
        system_.tell("The player runs already, and takes no names but behind --open: " + line_.names);
    std::vector<std::string> files = taken(line_.files, system_.tell);
    const std::vector<std::string> others = othersOf(line_.files, files);
    const std::size_t fitting = system_.instance.fitting(files);
    if (fitting < files.size()) {
        system_.tell("More files than can be handed over; the last " + std::to_string(files.size() - fitting) +
                     " are left out.");
        files.resize(fitting);
    }
    // Of these the player that runs tells why, where it is seen.
    files.insert(files.end(), others.begin(), others.end());
    files.resize(system_.instance.fitting(files));
    if (!system_.instance.call(files)) system_.tell("The player that runs does not answer.");
}

void StartedProgram::end() {
    if (std::exchange(ending_, true)) return;
    if (onEnd_) onEnd_();
}

}  // namespace corvane
