// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace corvane {

/// What became of the refusal of system calls.
struct RefusedCalls {
    int rules = 0;    ///< in force in every thread, now and later; 0: none
    std::string why;  ///< when there are none, in words
};

/// From here on the kernel answers with "not permitted" whatever a player never does: starting programs and processes,
/// looking into and signalling other processes, sockets other than those within the machine, changing owners and users,
/// mounting, loading modules, and their kin. It cannot be undone. network: sockets of the internet stay possible.
/// Where that fails nothing is refused.
RefusedCalls refuseCalls(bool network);

}  // namespace corvane
