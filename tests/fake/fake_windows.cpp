// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/fake_windows.h"

#include <algorithm>
#include <stdexcept>

namespace corvane {

FakeWindows::~FakeWindows() {
    while (!attached_.empty()) detach(*attached_.back());
}

void FakeWindows::attach(Form& form) {
    if (std::find(attached_.begin(), attached_.end(), &form) != attached_.end()) {
        throw std::logic_error(form.name() + " is attached twice");
    }
    log_.did("windows.attach " + form.name());
    attached_.push_back(&form);
    form.addObserver(this);
    for (Control* control : form.controls()) control->addObserver(this);
}

void FakeWindows::detach(Form& form) {
    const auto found = std::find(attached_.begin(), attached_.end(), &form);
    if (found == attached_.end()) throw std::logic_error(form.name() + " is detached but was not attached");
    log_.did("windows.detach " + form.name());
    for (Control* control : form.controls()) control->removeObserver(this);
    form.removeObserver(this);
    attached_.erase(found);
    if (active_ == &form) active_ = nullptr;
    if (focused_ != nullptr && focused_->form() == &form) focused_ = nullptr;
}

void FakeWindows::SetWindowPos(Form& form, int insertAfter, std::uint32_t flags) {
    static constexpr const char* kDigits = "0123456789abcdef";
    const std::string hex = {kDigits[flags >> 4U & 15U], kDigits[flags & 15U]};
    log_.did("windows.SetWindowPos " + form.name() + " " + std::to_string(insertAfter) + " " + hex);
}

void FakeWindows::activate(Form& form) {
    log_.did("windows.activate " + form.name());
    if (active_ == &form || !form.Visible || !isAlive(&form)) return;
    active_ = &form;
    loop_.post([this, shown = &form] {
        if (isAlive(shown) && active_ == shown) shown->Activate.raise();
    });
}

int FakeWindows::textWidth(Form& /*form*/, const std::string& text) {
    return charWidthPixels * static_cast<int>(text.size());
}

Form* FakeWindows::find(const std::string& formName) const {
    const auto found =
        std::find_if(attached_.begin(), attached_.end(), [&](const Form* each) { return each->name() == formName; });
    return found == attached_.end() ? nullptr : *found;
}

void FakeWindows::propertyChanged(Control& control, PropertyId property) {
    if (property == PropertyId::Focus) focus(&control);
    if (control.kind() != ControlKind::Form || property != PropertyId::Visible) return;
    auto& form = static_cast<Form&>(control);
    log_.did((form.Visible ? "windows.show " : "windows.hide ") + form.name());
    if (!form.Visible) {
        if (active_ == &form) active_ = nullptr;
    } else if (active_ != &form) {
        active_ = &form;
        loop_.post([this, shown = &form] {
            if (isAlive(shown) && active_ == shown) shown->Activate.raise();
        });
    }
}

void FakeWindows::focus(Control* control) {
    log_.did("windows.focus " + control->name());
    if (focused_ == control) return;
    Control* const before = focused_;
    focused_ = control;
    loop_.post([this, before, control] {
        if (before != nullptr && isAlive(before)) before->LostFocus.raise();
        if (isAlive(control) && focused_ == control) control->GotFocus.raise();
    });
}

bool FakeWindows::isAlive(const Control* control) const {
    for (const Form* form : attached_) {
        if (form == control) return true;
        const auto& owned = form->controls();
        if (std::find(owned.begin(), owned.end(), control) != owned.end()) return true;
    }
    return false;
}

}  // namespace corvane
