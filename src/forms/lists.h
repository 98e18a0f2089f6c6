// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "forms/control.h"
#include "forms/controls.h"

namespace corvane {

/// A one-line text field. Change follows each change of Text, typed or set.
class TextBox : public Control {
public:
    TextBox(Form* owner, std::string name, int index = -1)
        : Control(owner, ControlKind::TextBox, std::move(name), index) {}
    Property<std::string> Text{*this, PropertyId::Text};
    Property<int> SelStart{*this, PropertyId::SelStart, 0};    ///< characters
    Property<int> SelLength{*this, PropertyId::SelLength, 0};  ///< characters
    int MaxLength = 0;                                         ///< characters; 0: no limit
    Event<> Change;
    /// Tied: Up, Down, Page Up and Page Down, which a line of text has no use for, as they go down.
    Event<KeyArgs> KeyDown;
    /// A typed character, before it is taken: the handler returns the character to take, 0 to drop it.
    std::function<int(int)> KeyPress;

protected:
    void onChanged(PropertyId property) override {
        if (property == PropertyId::Text) Change.raise();
    }
};

/// Items with one current item (ListIndex, -1 none); base of all list-like controls.
class ItemsControl : public MouseControl {
public:
    using MouseControl::MouseControl;

    const std::vector<std::string>& items() const { return items_; }
    int count() const { return static_cast<int>(items_.size()); }
    const std::string& item(int index) const { return items_.at(static_cast<std::size_t>(index)); }
    /// Replaces all items; the current item and the selection are reset first.
    void setItems(std::vector<std::string> items);
    void addItem(std::string text);
    void removeItem(int index);
    void clear() { setItems({}); }

    Property<int> ListIndex{*this, PropertyId::ListIndex, -1};
    bool MultiSelect = false;

    bool isSelected(int index) const;
    /// Selects or deselects an item (multi-select lists); other lists follow ListIndex.
    void select(int index, bool selected);
    std::vector<int> selectedIndices() const;
    void clearSelection();

private:
    std::vector<std::string> items_;
    std::vector<bool> selected_;
};

class ListBox : public ItemsControl {
public:
    ListBox(Form* owner, std::string name, int index = -1)
        : ItemsControl(owner, ControlKind::ListBox, std::move(name), index) {}
    Property<int> HorizontalExtent{*this, PropertyId::HorizontalExtent, 0};  ///< pixels
};

/// A drop-down list. Editable: the text can be typed too. Setting ListIndex sets Text and raises Click.
class ComboBox : public ItemsControl {
public:
    ComboBox(Form* owner, std::string name, int index = -1)
        : ItemsControl(owner, ControlKind::ComboBox, std::move(name), index) {}
    Property<std::string> Text{*this, PropertyId::Text};
    bool Editable = false;
    Event<> Change;  ///< follows each change of Text

protected:
    void onChanged(PropertyId property) override;
};

/// A scroll bar used as a stepper. Change follows each change of Value, by the user or set.
class ScrollBar : public Control {
public:
    ScrollBar(Form* owner, std::string name, int index = -1)
        : Control(owner, ControlKind::ScrollBar, std::move(name), index) {}
    Property<int> Value{*this, PropertyId::Value, 0};
    Property<int> Min{*this, PropertyId::Min, 0};
    Property<int> Max{*this, PropertyId::Max, 100};
    Event<> Change;

protected:
    void onChanged(PropertyId property) override {
        if (property == PropertyId::Value) Change.raise();
    }
};

/// The drives (on Linux: root, home, mounted media, discs) as a drop-down list. Change follows Drive.
class DriveBox : public ItemsControl {
public:
    DriveBox(Form* owner, std::string name, int index = -1)
        : ItemsControl(owner, ControlKind::DriveBox, std::move(name), index) {}
    Property<std::string> Drive{*this, PropertyId::Drive};
    Event<> Change;

protected:
    void onChanged(PropertyId property) override {
        if (property == PropertyId::Drive) Change.raise();
    }
};

/// The folders of Path: items are what the list shows; a double-click (DblClick) on one goes there.
class FolderBox : public ItemsControl {
public:
    FolderBox(Form* owner, std::string name, int index = -1)
        : ItemsControl(owner, ControlKind::FolderBox, std::move(name), index) {}
    Property<std::string> Path{*this, PropertyId::Path};
    Event<> Change;

protected:
    void onChanged(PropertyId property) override {
        if (property == PropertyId::Path) Change.raise();
    }
};

/// The files of folder Path that match Pattern (";" between patterns, letters without case). Multi-select.
class FileBox : public ItemsControl {
public:
    FileBox(Form* owner, std::string name, int index = -1)
        : ItemsControl(owner, ControlKind::FileBox, std::move(name), index) {
        MultiSelect = true;
    }
    Property<std::string> Path{*this, PropertyId::Path};
    Property<std::string> Pattern{*this, PropertyId::Pattern, "*"};
};

}  // namespace corvane
