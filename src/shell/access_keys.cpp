// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/access_keys.h"

#include <algorithm>

#include "types/text.h"

namespace corvane {

namespace {

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

/// The caption that may hold an access key; empty: none.
std::string markable(const Control& control) {
    switch (control.kind()) {
        case ControlKind::CommandButton: {
            const auto& button = static_cast<const CommandButton&>(control);
            return button.Visible && !button.Default && !button.Cancel ? button.Caption.get() : std::string();
        }
        case ControlKind::OptionButton:
            return static_cast<const OptionButton&>(control).Caption;
        case ControlKind::CheckBox:
            return static_cast<const CheckBox&>(control).Caption;
        case ControlKind::Label: {
            const auto& label = static_cast<const Label&>(control);
            return label.Labels != nullptr ? label.Caption.get() : std::string();
        }
        case ControlKind::MenuItem: {
            const auto& item = static_cast<const MenuItem&>(control);
            return item.Visible && !item.isSeparator() ? item.Caption.get() : std::string();
        }
        default:
            return {};
    }
}

/// Buttons choose before options, options before labels.
int rank(ControlKind kind) {
    if (kind == ControlKind::CommandButton) return 0;
    return kind == ControlKind::Label ? 2 : 1;
}

std::string doubled(const std::string& text) {
    std::string result;
    for (const char c : text) result += c == '&' ? "&&" : std::string(1, c);
    return result;
}

}  // namespace

AccessKeys::AccessKeys(const Form& form) { chooseFor({form.controls().begin(), form.controls().end()}); }

AccessKeys::AccessKeys(const MenuItem& menu) { chooseFor({menu.children.begin(), menu.children.end()}); }

void AccessKeys::chooseFor(std::vector<const Control*> controls) {
    std::erase_if(controls, [](const Control* each) { return markable(*each).empty(); });
    std::stable_sort(controls.begin(), controls.end(),
                     [](const Control* a, const Control* b) { return rank(a->kind()) < rank(b->kind()); });
    for (const Control* each : controls) choose(*each, true);
    // Short captions have the least to choose from.
    std::stable_sort(controls.begin(), controls.end(),
                     [](const Control* a, const Control* b) { return markable(*a).size() < markable(*b).size(); });
    for (const Control* each : controls) choose(*each, false);
}

void AccessKeys::choose(const Control& control, bool initialsOnly) {
    if (letters_.count(&control) > 0) return;
    const std::string caption = markable(control);
    for (std::size_t i = 0; i < caption.size(); ++i) {
        const char letter = text::upper(caption[i]);
        const bool taken = std::any_of(letters_.begin(), letters_.end(),
                                       [letter](const auto& entry) { return entry.second == letter; });
        const bool beginsWord = i == 0 || !isLetter(caption[i - 1]);
        if (!isLetter(letter) || taken || (initialsOnly && !beginsWord)) continue;
        letters_[&control] = letter;
        return;
    }
}

std::string AccessKeys::marked(const Control& control, const std::string& caption) const {
    const auto found = letters_.find(&control);
    const auto at = found == letters_.end() ? caption.end() : std::find_if(caption.begin(), caption.end(), [&](char c) {
        return text::upper(c) == found->second;
    });
    if (at == caption.end()) return doubled(caption);
    return doubled(std::string(caption.begin(), at)) + '&' + doubled(std::string(at, caption.end()));
}

}  // namespace corvane
