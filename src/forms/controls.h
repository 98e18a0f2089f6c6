// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "forms/control.h"
#include "forms/input.h"
#include "forms/picture.h"

namespace corvane {

/// 24-bit colour: red in the low byte, blue in the high byte.
using Colour = std::int32_t;
inline constexpr Colour kBlack = 0x000000;
inline constexpr Colour kWhite = 0xFFFFFF;

/// What a control that is dragged to a value stands at, in a unit of its form's choice.
struct DraggedValue {
    double value = 0;
    double minimum = 0;
    double maximum = 0;  ///< not above the minimum: nothing can be set now
    double step = 1;     ///< of an arrow key
};

/// Mouse and drop events that painted controls share, and what assistive programs and the keyboard do in place of the
/// mouse.
class MouseControl : public Control {
public:
    using Control::Control;
    Property<bool> Checked{*this, PropertyId::Checked, false};  ///< a switch, or its lamp, is on
    bool Checkable = false;                                     ///< it is a switch, or the lamp of one
    /// Tied for a control that is dragged to a value; notify(PropertyId::Value) tells that it stands elsewhere.
    std::function<DraggedValue()> AccessibleValue;
    Event<double> SetAccessibleValue;  ///< a value between the ends is asked for: the same as dragging there

    Event<> Click;
    Event<> DblClick;
    Event<MouseArgs> MouseDown;
    Event<MouseArgs> MouseMove;
    Event<MouseArgs> MouseUp;
    Event<WheelArgs> MouseWheel;  ///< the form's is raised for a control that has not tied it
    /// What the tip says where the pointer rests, x as MouseArgs has it; not tied or empty: ToolTipText.
    std::function<std::string(float x)> TipAt;
    Event<DropData> OLEDragDrop;
};

/// A push button: native with a Caption, or graphical with pictures (DownPicture while held down).
/// The desktop raises MouseDown, then MouseUp and Click on release inside: Click first, then MouseUp.
class CommandButton : public MouseControl {
public:
    CommandButton(Form* owner, std::string name, int index = -1)
        : MouseControl(owner, ControlKind::CommandButton, std::move(name), index) {}
    Property<std::string> Caption{*this, PropertyId::Caption};
    Property<corvane::Picture> Picture{*this, PropertyId::Picture};
    Property<corvane::Picture> DownPicture{*this, PropertyId::DownPicture};
    Property<bool> Default{*this, PropertyId::Default, false};  ///< pressed by Enter
    Property<bool> Cancel{*this, PropertyId::Cancel, false};    ///< pressed by Esc
};

/// A text with a transparent background.
class Label : public MouseControl {
public:
    Label(Form* owner, std::string name, int index = -1)
        : MouseControl(owner, ControlKind::Label, std::move(name), index) {}
    Property<std::string> Caption{*this, PropertyId::Caption};
    Property<Colour> ForeColor{*this, PropertyId::ForeColor, kBlack};
    Control* Labels = nullptr;  ///< the field this label names (dialogs); not owned
};

/// A picture without a window; shows its picture at its own size, top left.
class Image : public MouseControl {
public:
    Image(Form* owner, std::string name, int index = -1)
        : MouseControl(owner, ControlKind::Image, std::move(name), index) {}
    Property<corvane::Picture> Picture{*this, PropertyId::Picture};
};

enum class ScaleMode { InTwips, InPixels };

/// A box showing a picture, or a plain rectangle of BackColor when it has none.
class PictureBox : public MouseControl {
public:
    PictureBox(Form* owner, std::string name, int index = -1)
        : MouseControl(owner, ControlKind::PictureBox, std::move(name), index) {}
    Property<corvane::Picture> Picture{*this, PropertyId::Picture};
    Property<Colour> BackColor{*this, PropertyId::BackColor, kBlack};
    ScaleMode Scale = ScaleMode::InTwips;  ///< unit of its mouse positions and of its own geometry
    float hitWidth = 0;                    ///< width that takes the mouse, in its unit; 0: Width
    Event<int> KeyPress;

    /// The picture drawn stretched over the box's origin, in the box's unit; 0 by 0: drawn at its own size.
    /// The desktop scales when it paints, the visible part only.
    float paintedWidth() const { return paintedWidth_; }
    float paintedHeight() const { return paintedHeight_; }
    void setPainted(float width, float height) {
        paintedWidth_ = width;
        paintedHeight_ = height;
        notify(PropertyId::Painted);
    }

private:
    float paintedWidth_ = 0;
    float paintedHeight_ = 0;
};

/// Holds the skin's bitmap, out of which cells are cut (Pictures::cut). Never shown.
class PictureClip : public Control {
public:
    PictureClip(Form* owner, std::string name, int index = -1)
        : Control(owner, ControlKind::PictureClip, std::move(name), index) {
        Visible = false;
    }
    Property<corvane::Picture> Picture{*this, PropertyId::Picture};
};

/// A filled circle in its rectangle.
class Shape : public Control {
public:
    Shape(Form* owner, std::string name, int index = -1) : Control(owner, ControlKind::Shape, std::move(name), index) {}
    Property<Colour> FillColor{*this, PropertyId::FillColor, kBlack};
};

/// A timer: while Enabled and Interval > 0 it ticks every Interval milliseconds, through the Timers port.
/// Enabling a running timer changes nothing; a change of Interval starts the period afresh.
class Timer : public Control {
public:
    Timer(Form* owner, std::string name, int index = -1) : Control(owner, ControlKind::Timer, std::move(name), index) {
        Enabled = false;
        Visible = false;
    }
    Property<int> Interval{*this, PropertyId::Interval, 0};
    Event<> Tick;

    void restart() {
        Enabled = false;
        Enabled = true;
    }
};

/// A titled group box.
class Frame : public MouseControl {
public:
    Frame(Form* owner, std::string name, int index = -1)
        : MouseControl(owner, ControlKind::Frame, std::move(name), index) {}
    Property<std::string> Caption{*this, PropertyId::Caption};
};

/// A check box; Value true when checked. Click follows each change of Value.
class CheckBox : public Control {
public:
    CheckBox(Form* owner, std::string name, int index = -1)
        : Control(owner, ControlKind::CheckBox, std::move(name), index) {}
    Property<std::string> Caption{*this, PropertyId::Caption};
    Property<bool> Value{*this, PropertyId::Value, false};
    Event<> Click;

protected:
    void onChanged(PropertyId property) override {
        if (property == PropertyId::Value) Click.raise();
    }
};

/// One of a group of exclusive choices: setting one clears the others of the same Container.
class OptionButton : public Control {
public:
    OptionButton(Form* owner, std::string name, int index = -1)
        : Control(owner, ControlKind::OptionButton, std::move(name), index) {}
    Property<std::string> Caption{*this, PropertyId::Caption};
    Property<bool> Value{*this, PropertyId::Value, false};
    Event<> Click;

protected:
    void onChanged(PropertyId property) override;
};

}  // namespace corvane
