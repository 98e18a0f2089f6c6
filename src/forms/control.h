// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "forms/event.h"

namespace corvane {

class Form;
class Control;

using Twips = float;  ///< form geometry; 15 twips to a pixel
inline constexpr float kTwipsPerPixel = 15.0F;

enum class ControlKind {
    Form,
    CommandButton,
    Label,
    Image,
    PictureBox,
    PictureClip,
    Shape,
    Timer,
    TextBox,
    ListBox,
    ComboBox,
    CheckBox,
    OptionButton,
    Frame,
    ScrollBar,
    DriveBox,
    FolderBox,
    FileBox,
    MenuItem,
    Movie
};

enum class PropertyId {
    Caption,
    Enabled,
    Visible,
    Left,
    Top,
    Width,
    Height,
    Picture,
    DownPicture,
    ToolTipText,
    ForeColor,
    BackColor,
    FillColor,
    Interval,
    Text,
    Items,
    ListIndex,
    Selected,
    Value,
    Min,
    Max,
    Checked,
    WindowState,
    Focus,
    HorizontalExtent,
    SelStart,
    SelLength,
    Painted,
    Path,
    Pattern,
    Drive,
    Default,
    Cancel
};

/// Told of each change of a control's properties, on the user-interface thread, after the change.
class ControlObserver {
public:
    virtual ~ControlObserver() = default;
    virtual void propertyChanged(Control& control, PropertyId property) = 0;
};

/// One observable property: assignment notifies the control's observers, only when the value changes.
template <class T>
class Property {
public:
    Property(Control& owner, PropertyId id, T value = T{}) : owner_(owner), id_(id), value_(std::move(value)) {}
    Property(const Property&) = delete;

    const T& get() const { return value_; }
    operator const T&() const { return value_; }  // NOLINT(google-explicit-constructor): reads like the value
    Property& operator=(const Property& other) { return *this = other.value_; }
    Property& operator=(T value);

private:
    Control& owner_;
    PropertyId id_;
    T value_;
};

/// What every control has. A control belongs to one form and lives as long as it.
class Control {
public:
    /// index: its place in a control array, -1 outside one.
    Control(Form* owner, ControlKind kind, std::string name, int index = -1);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control();

    ControlKind kind() const { return kind_; }
    const std::string& name() const { return name_; }
    int index() const { return index_; }
    Form* form() const { return form_; }

    Property<Twips> Left{*this, PropertyId::Left};
    Property<Twips> Top{*this, PropertyId::Top};
    Property<Twips> Width{*this, PropertyId::Width};
    Property<Twips> Height{*this, PropertyId::Height};
    Property<bool> Visible{*this, PropertyId::Visible, true};
    Property<bool> Enabled{*this, PropertyId::Enabled, true};
    Property<std::string> ToolTipText{*this, PropertyId::ToolTipText};

    int TabIndex = -1;             ///< place in the tab order; -1: not reached by Tab
    std::string AccessibleName;    ///< the role's design-time text ("Power OFF"), for assistive programs
    Control* Container = nullptr;  ///< the frame that holds it (geometry is relative to it); null: the form

    Event<> GotFocus;
    Event<> LostFocus;

    void Move(Twips left, Twips top);
    void SetSize(Twips width, Twips height);
    /// Asks the desktop to give this control the keyboard focus; GotFocus follows when it has it.
    void SetFocus();

    /// Observers are not owned; remove before the observer dies.
    void addObserver(ControlObserver* observer);
    void removeObserver(ControlObserver* observer);
    /// Called by properties; tells the control itself (onChanged), then its observers.
    void notify(PropertyId property);

protected:
    virtual void onChanged(PropertyId /*property*/) {}

private:
    ControlKind kind_;
    std::string name_;
    int index_;
    Form* form_;
    std::vector<ControlObserver*> observers_;
};

template <class T>
Property<T>& Property<T>::operator=(T value) {
    if (value_ == value) return *this;
    value_ = std::move(value);
    owner_.notify(id_);
    return *this;
}

namespace detail {
template <class C, std::size_t... I>
std::array<C, sizeof...(I)> makeControls(Form* owner, const char* name, std::index_sequence<I...>) {
    return {C(owner, name, static_cast<int>(I))...};
}
}  // namespace detail

/// A control array: N controls of one name with indices 0 to N - 1.
template <class C, std::size_t N>
std::array<C, N> controlArray(Form* owner, const char* name) {
    return detail::makeControls<C>(owner, name, std::make_index_sequence<N>());
}

}  // namespace corvane
