// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "engine/control_sets.h"
#include "engine/timer_driver.h"
#include "platform/ports.h"

namespace corvane {

/// Where forms are found, loaded and unloaded. Finding never makes one. A form may be unloaded from inside its own
/// handlers: it is detached at once and destroyed when no handler runs any more.
class FormHost {
public:
    using Factory = std::function<std::unique_ptr<Form>()>;

    explicit FormHost(Ports& ports);
    ~FormHost();
    FormHost(const FormHost&) = delete;
    FormHost& operator=(const FormHost&) = delete;

    void registerForm(FormId id, Factory factory);

    Form* find(FormId id) const { return loaded_[slot(id)].get(); }
    /// The loaded form, or a new one of the registered factory after its Load event. One that unloads itself while it
    /// loads is detached, and valid until the next time that no handler runs any more.
    Form& load(FormId id);
    /// Raises Unload, then detaches. A form that is not loaded: nothing.
    void unload(FormId id);
    /// Detaches and destroys everything without Unload events (the program's end).
    void clear();

    // The same by a form's class. One that was registered as another class is not found; load() throws std::bad_cast.
    template <class F>
    F* find() const {
        return dynamic_cast<F*>(find(F::kId));
    }
    template <class F>
    F& load() {
        return dynamic_cast<F&>(load(F::kId));
    }
    template <class F>
    void unload() {
        unload(F::kId);
    }

private:
    static std::size_t slot(FormId id) { return static_cast<std::size_t>(id); }
    void bury();

    Ports& ports_;
    TimerDriver timers_;
    std::array<Factory, kForms> factories_;
    std::array<std::unique_ptr<Form>, kForms> loaded_;
    std::array<bool, kForms> unloading_{};
    std::vector<std::unique_ptr<Form>> gone_;
    int loading_ = 0;  ///< Load events that run
    EventLoop::Watch quiet_;
};

}  // namespace corvane
