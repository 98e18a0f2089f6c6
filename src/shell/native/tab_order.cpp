// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/native/tab_order.h"

#include <algorithm>

namespace corvane {

namespace {

bool names(const Control& label, const Control& field) {
    return label.kind() == ControlKind::Label && static_cast<const Label&>(label).Labels == &field;
}

}  // namespace

std::vector<const Control*> tabOrder(const Form& form) {
    std::vector<const Control*> order;
    std::vector<const Control*> reached;
    std::vector<const Control*> rest;
    for (const Control* each : form.controls()) {
        const bool isFrame = each->kind() == ControlKind::Frame;
        (isFrame ? order : each->TabIndex >= 0 ? reached : rest).push_back(each);
    }
    std::stable_sort(reached.begin(), reached.end(),
                     [](const Control* a, const Control* b) { return a->TabIndex < b->TabIndex; });
    for (const Control* field : reached) {
        for (const Control* each : rest) {
            if (names(*each, *field)) order.push_back(each);
        }
        order.push_back(field);
    }
    for (const Control* each : rest) {
        if (std::find(order.begin(), order.end(), each) == order.end()) order.push_back(each);
    }
    return order;
}

const Control* firstFocused(const Form& form) {
    const auto order = tabOrder(form);
    const auto found = std::find_if(order.begin(), order.end(), [](const Control* each) {
        return each->TabIndex >= 0 && each->Visible && each->Enabled;
    });
    if (found == order.end()) return nullptr;
    for (const Control* each : order) {
        if ((*found)->kind() != ControlKind::OptionButton || each->kind() != ControlKind::OptionButton) continue;
        if (each->Container == (*found)->Container && static_cast<const OptionButton*>(each)->Value) return each;
    }
    return *found;
}

bool isLabelled(const Control& field) {
    const auto& all = field.form()->controls();
    return std::any_of(all.begin(), all.end(), [&field](const Control* each) { return names(*each, field); });
}

}  // namespace corvane
