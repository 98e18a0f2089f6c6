// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>

namespace corvane {

/// Who decides whether what a task does comes into force: the task itself, or the one that no longer waits for it. The
/// first of them wins. Any thread.
class Decision {
public:
    enum class By { Nobody, Task, Waiter };

    /// True for the first caller, and again for the same one.
    bool take(By caller) {
        By none = By::Nobody;
        return taken_.compare_exchange_strong(none, caller) || none == caller;
    }

private:
    std::atomic<By> taken_{By::Nobody};
};

}  // namespace corvane
