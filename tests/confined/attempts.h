// SPDX-License-Identifier: GPL-3.0-or-later
// What a player never does, tried: by a test in a process of its own, and from inside the running program by a library
// that is loaded before it.
#pragma once

#include <string>
#include <vector>

namespace corvane::test {

/// Who is to refuse it; Kept: nobody.
enum class By { Calls, Bounds, Kept };

/// Two folders of the test's own: what lies in the first may be changed, what lies in the second may not.
struct AttemptPlaces {
    std::string inside;
    std::string outside;
    int port = 0;  ///< where something listens at 127.0.0.1; 0: nothing does
};

struct Attempt {
    const char* name;
    By by;
    /// 0: the system let it through, also to fail for another reason; else the error with which it was refused.
    int (*attempt)(const AttemptPlaces&);
};

/// Lays down what the attempts change. False: it could not.
bool layDown(const AttemptPlaces& places);

const std::vector<Attempt>& attempts();

}  // namespace corvane::test
