// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/control.h"

#include <algorithm>

#include "forms/form.h"

namespace corvane {

Control::Control(Form* owner, ControlKind kind, std::string name, int index)
    : kind_(kind), name_(std::move(name)), index_(index), form_(owner) {
    if (form_ != nullptr) form_->add(*this);
}

Control::~Control() {
    if (form_ != nullptr) form_->remove(*this);
}

void Control::Move(Twips left, Twips top) {
    Left = left;
    Top = top;
}

void Control::SetSize(Twips width, Twips height) {
    Width = width;
    Height = height;
}

void Control::SetFocus() { notify(PropertyId::Focus); }

void Control::addObserver(ControlObserver* observer) { observers_.push_back(observer); }

void Control::removeObserver(ControlObserver* observer) { std::erase(observers_, observer); }

void Control::notify(PropertyId property) {
    onChanged(property);
    const auto told = observers_;  // an observer may remove itself
    for (ControlObserver* observer : told) {
        if (std::find(observers_.begin(), observers_.end(), observer) != observers_.end()) {
            observer->propertyChanged(*this, property);
        }
    }
}

}  // namespace corvane
