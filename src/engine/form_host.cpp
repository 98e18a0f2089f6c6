// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/form_host.h"

#include <utility>

namespace corvane {

FormHost::FormHost(Ports& ports)
    : ports_(ports), timers_(ports.timers, ports.loop), quiet_(ports.loop, EventLoop::When::Quiet, [this] {
          if (loading_ == 0) bury();  // a handler that ends while a form loads may have unloaded that form
      }) {}

FormHost::~FormHost() { clear(); }

void FormHost::registerForm(FormId id, Factory factory) { factories_[slot(id)] = std::move(factory); }

Form& FormHost::load(FormId id) {
    auto& place = loaded_[slot(id)];
    if (place) return *place;
    place = factories_[slot(id)]();
    Form& form = *place;
    ports_.windows.attach(form);
    timers_.attach(form);
    ++loading_;
    form.Load.raise();  // may unload the form again: it stays valid all the same
    --loading_;
    return form;
}

void FormHost::unload(FormId id) {
    auto& place = loaded_[slot(id)];
    if (!place || unloading_[slot(id)]) return;
    unloading_[slot(id)] = true;
    place->Unload.raise();
    unloading_[slot(id)] = false;
    timers_.detach(*place);
    ports_.windows.detach(*place);
    gone_.push_back(std::move(place));
    if (ports_.loop.depth() == 0 && loading_ == 0) bury();
}

void FormHost::clear() {
    for (auto& place : loaded_) {
        if (!place) continue;
        timers_.detach(*place);
        ports_.windows.detach(*place);
        gone_.push_back(std::move(place));
    }
    if (ports_.loop.depth() == 0) bury();
}

void FormHost::bury() {
    auto gone = std::exchange(gone_, {});
    gone.clear();
}

}  // namespace corvane
