// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

namespace corvane {

/// Tells what is late from what is still meant, where something is begun again and again: a timer that is armed anew, a
/// control that opens its next file. Used on one thread.
class Generation {
public:
    /// What was begun keeps one; it may outlive the Generation.
    class Ticket {
    public:
        bool isCurrent() const { return !of_.expired(); }

    private:
        friend class Generation;
        explicit Ticket(const std::shared_ptr<const char>& of) : of_(of) {}
        std::weak_ptr<const char> of_;
    };

    Ticket ticket() const { return Ticket(now_); }
    /// From now on all tickets given so far are void.
    void next() { now_ = std::make_shared<const char>(); }

private:
    std::shared_ptr<const char> now_ = std::make_shared<const char>();
};

}  // namespace corvane
