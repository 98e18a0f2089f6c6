// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <string>

namespace corvane {

// The tool kit waits up to half a minute, on the user-interface thread, for a message bus that takes a connection and
// says nothing. So the buses are greeted before it does, and one that does not answer as a bus is done without.

/// Whether a bus answers there: takes who calls and gives him a name. `address` in the bus's own form; one that is
/// not on this machine's sockets is believed. Returns in time.
bool busAnswers(const std::string& address, std::chrono::milliseconds patience);

/// Replaces the addresses of buses that do not answer, in the environment: of the user's bus, and of the one for
/// assistive programs, which it is asked for. Waits for half a second at most. Called before there are threads.
void leaveSilentBuses();

}  // namespace corvane
