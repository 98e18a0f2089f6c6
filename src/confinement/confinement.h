// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "confinement/refused_calls.h"
#include "confinement/written_places.h"

namespace corvane {

/// What the kernel keeps the program from, in force.
struct Confinement {
    RefusedCalls calls;
    WrittenPlaces writing;
    bool network = false;  ///< kept, because a server that is in use has a host
};

/// The value of a variable of the environment, "" when it is not set.
using Variables = std::function<std::string(const char* name)>;

/// Whether display, sound server or message bus are named with a host, so that reaching them needs the network.
bool namesHost(const Variables& variables);

/// Where the player writes: its folder, what the settings and lists in it are links to, the folder for what runs
/// (lock and socket; "" when there is none), what libraries of the desktop keep for the next start. A link that leads
/// to a drive that does not answer in time is left out.
std::vector<std::string> placesToWrite(const std::string& programFolder, const std::string& runtimeFolder,
                                       const Variables& variables);

/// Gives up for good what a player never needs. To be called before the first thread begins, with folders that exist;
/// threads that have asked a drive before take no other task. What the kernel does not offer is left out.
Confinement confine(const std::string& programFolder, const std::string& runtimeFolder);

}  // namespace corvane
