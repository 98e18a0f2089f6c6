// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/lists.h"

#include <utility>

#include "forms/form.h"

namespace corvane {

void OptionButton::onChanged(PropertyId property) {
    if (property != PropertyId::Value || !Value) return;
    for (Control* other : form()->controls()) {
        if (other == this || other->kind() != ControlKind::OptionButton || other->Container != Container) continue;
        static_cast<OptionButton*>(other)->Value = false;
    }
    Click.raise();
}

void ItemsControl::setItems(std::vector<std::string> items) {
    ListIndex = -1;
    items_ = std::move(items);
    selected_.assign(items_.size(), false);
    notify(PropertyId::Items);
}

void ItemsControl::addItem(std::string text) {
    items_.push_back(std::move(text));
    selected_.push_back(false);
    notify(PropertyId::Items);
}

void ItemsControl::removeItem(int index) {
    if (index < 0 || index >= count()) return;
    items_.erase(items_.begin() + index);
    selected_.erase(selected_.begin() + index);
    notify(PropertyId::Items);
    if (ListIndex >= count()) {
        ListIndex = count() - 1;
    }
}

bool ItemsControl::isSelected(int index) const {
    if (index < 0 || index >= count()) return false;
    return MultiSelect ? selected_[static_cast<std::size_t>(index)] : ListIndex == index;
}

void ItemsControl::select(int index, bool selected) {
    if (index < 0 || index >= count()) return;
    if (!MultiSelect) {
        ListIndex = selected ? index : -1;
        return;
    }
    if (selected_[static_cast<std::size_t>(index)] == selected) return;
    selected_[static_cast<std::size_t>(index)] = selected;
    notify(PropertyId::Selected);
}

std::vector<int> ItemsControl::selectedIndices() const {
    std::vector<int> result;
    for (int i = 0; i < count(); ++i) {
        if (isSelected(i)) result.push_back(i);
    }
    return result;
}

void ItemsControl::clearSelection() {
    selected_.assign(items_.size(), false);
    notify(PropertyId::Selected);
}

void ComboBox::onChanged(PropertyId property) {
    if (property == PropertyId::Text) Change.raise();
    if (property != PropertyId::ListIndex || ListIndex < 0 || ListIndex >= count()) return;
    Text = item(ListIndex);
    Click.raise();
}

}  // namespace corvane
