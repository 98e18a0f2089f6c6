// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <utility>

namespace corvane {

/// An event of a control: at most one handler, tied by the form that owns the control.
/// Raised on the user-interface thread only. A form outlives its running handlers.
template <class... Args>
class Event {
public:
    using Handler = std::function<void(Args...)>;

    void tie(Handler handler) { handler_ = std::move(handler); }
    bool isTied() const { return static_cast<bool>(handler_); }

    void raise(Args... args) const {
        if (!handler_) return;
        const Handler running = handler_;  // the handler may tie another one
        running(args...);
    }

private:
    Handler handler_;
};

}  // namespace corvane
