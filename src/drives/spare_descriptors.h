// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <mutex>

#include "drives/descriptor.h"

namespace corvane {

/// Some file descriptors that are kept back for the windows. The display's server hands the memory of each window over
/// as a descriptor, and the tool kit waits for ever for one that does not fit into a full table: so the user-interface
/// thread is lent them while it draws. Any thread.
class SpareDescriptors {
public:
    static constexpr const char* kNoneLeft = "Too many files are open.";

    /// Takes them, at the program's start: low ones, so that they also count when the limit is lowered while it runs. A
    /// low limit is raised as far as that is free to the program. Without this call nothing is ever lent. False: so few
    /// are left that the program cannot run.
    static bool keep();
    static constexpr int kLeast = 40;  ///< that a start needs besides: a player with a movie has some 30 open

    /// True while they are lent because there were few others: what can be refused is refused now.
    static bool lent() { return all().given_; }

    /// While one lives, a full table has room. Lives for a moment only, on the user-interface thread: nothing that may
    /// hang happens meanwhile.
    class Loan {
    public:
        Loan() { all().give(); }
        Loan(const Loan&) = delete;
        Loan& operator=(const Loan&) = delete;
        ~Loan() { all().takeBack(); }
    };

    /// Whether errno says that there is no descriptor left, of the process's or of the system's.
    static bool refused();
    /// Why something could not be opened, in words: `otherwise`, unless no descriptor is left.
    static const char* reason(const char* otherwise);

private:
    static constexpr std::size_t kCount =
        6;  ///< a window's memory, a font and a picture of the tool kit's, and as many more

    static SpareDescriptors& all();
    void give();
    void takeBack();
    void fill();

    std::mutex mutex_;  ///< guards what follows
    std::array<Descriptor, kCount> held_;
    bool kept_ = false;
    int loans_ = 0;
    std::atomic<bool> given_{false};
};

}  // namespace corvane
