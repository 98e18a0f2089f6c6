// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/form.h"

#include <algorithm>
#include <utility>

namespace corvane {

Form::Form(std::string name, FormStyle style)
    : MouseControl(nullptr, ControlKind::Form, std::move(name)), style_(style) {
    Visible = false;
}

Form::~Form() = default;

void Form::add(Control& control) { controls_.push_back(&control); }

void Form::remove(Control& control) { std::erase(controls_, &control); }

Control* Form::control(const std::string& name, int index) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(), [&](const Control* each) {
        return each->name() == name && each->index() == index;
    });
    return found == controls_.end() ? nullptr : *found;
}

void Form::raise(Control& control) {
    remove(control);
    add(control);
}

}  // namespace corvane
