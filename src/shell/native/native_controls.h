// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "forms/form.h"
#include "forms/lists.h"
#include "forms/picture.h"
#include "platform/event_loop.h"
#include "shell/native/pixels.h"
#include "shell/native/thumbnail_reader.h"

// The controls and the window of a dialog as a desktop has them. They do what they are told and tell what the user
// does; what either means is decided in binder.h and native_form.h. All on the user-interface thread; texts are UTF-8
// where they are valid, else bytes, which the desktop shows as well as it can.

namespace corvane {

/// The mouse at a control or at the window.
struct NativeMouse {
    enum class Act { Press, DoubleClick, Move, Release };
    Act act = Act::Move;
    int button = 0;  ///< that changed; 0 for a move
    int shift = 0;   ///< kShiftMask | kCtrlMask | kAltMask
    double x = 0;    ///< pixels, from the corner of the control
    double y = 0;
    bool inside = true;  ///< the pointer is on the control
};

/// Rows from first to last, both counted.
struct RowRange {
    int first = 0;
    int last = 0;
    bool operator==(const RowRange&) const = default;
};

/// A column of a list, pixels from the list's left edge.
struct RowColumn {
    int left = 0;
    int width = 0;
    bool operator==(const RowColumn&) const = default;
};

/// A field's text and the cursor in it, UTF-16 units.
struct FieldText {
    std::u16string text;
    int cursor = 0;
    bool operator==(const FieldText&) const = default;
};

/// What the user does at a native control. What was set by a call is never told. May end the form: after telling, a
/// native control touches itself alone.
class NativeEvents {
public:
    virtual ~NativeEvents() = default;
    /// The keyboard came or went, inside the window: another window in front takes nothing away.
    virtual void focused(bool got) = 0;
    virtual void pressed() {}                                      ///< a push button
    virtual void toggled(bool /*on*/) {}                           ///< a check box or an option
    virtual void mouse(const NativeMouse&) {}                      ///< labels and images; fields: presses and releases
    virtual void stepBy(int /*steps*/) {}                          ///< a stepper: an arrow
    virtual void stepTo(int /*value*/) {}                          ///< a stepper: it went there by itself
    virtual void stepToEnd(bool /*last*/) {}                       ///< a stepper: Home or End
    virtual void chosen(int /*row*/) {}                            ///< a drop-down list; also the same row again
    virtual void typed(const std::string&) {}                      ///< a field or an editable list: the whole text
    virtual FieldText filtered(FieldText given) { return given; }  ///< a field: what of a typed text is let through
    /// A field: Up, Down, Page Up or Page Down went down alone. True: it is taken.
    virtual bool fieldKey(const KeyArgs& /*key*/) { return false; }
    virtual void selectionMoved(int /*from*/, int /*to*/) {}                             ///< a field: UTF-16 units
    virtual void rowsSelected(const std::vector<RowRange>& /*all*/, int /*current*/) {}  ///< a list
    virtual void currentMoved(int /*row*/) {}           ///< a list: without a change of the selection
    virtual void opened(int /*row*/) {}                 ///< a list: double-clicked; folders: Enter as well
    virtual void dropped(const DropData&) {}            ///< a list that takes files
    virtual bool key(const KeyArgs&) { return false; }  ///< a list: a key went down; true: the form took it
    virtual void rowsDragged(int /*before*/) {
    }  ///< a list: the selected rows, in front of that row; the count: behind all
    virtual void rowsSeen(const RowRange& /*rows*/) {}  ///< a list that shows details: other rows are seen now
    virtual Picture rowPicture(int /*row*/) const { return {}; }  ///< a list asks: none, or not there yet
};

class NativeControl {
public:
    virtual ~NativeControl() = default;
    /// Its room, from the corner of what holds it. A control of a height of its own lies in the middle of it.
    virtual void place(const PixelRect& room) = 0;
    virtual void show(bool shown) = 0;
    virtual void enable(bool enabled) = 0;
    virtual void setTip(const std::string& text) = 0;  ///< "": none
    virtual void focus() = 0;
    virtual PixelSize textSize(const std::string& text) const = 0;  ///< in its font
    virtual PixelSize ownSize() const { return {}; }                ///< what the system asks for it; 0: nothing
    virtual void release() {}                                       ///< the form goes: its control is not read any more
};

/// A push button, a check box, an option or a frame.
class NativeButton : public virtual NativeControl {
public:
    virtual void setText(const std::string& text) = 0;  ///< "&" before its letter, other ampersands doubled
    virtual void setOn(bool /*on*/) {}
    virtual void setDefault(bool /*isDefault*/) {}
};

class NativeLabel : public virtual NativeControl {
public:
    virtual void setText(const std::string& text) = 0;  ///< with a letter only when it names a field
    virtual void leadTo(const Control& /*field*/) {}    ///< where its letter leads; the field has been made
};

/// A handle to drag, or a mark that points at a field: dark, it takes the mouse as well.
class NativeMark : public virtual NativeControl {
public:
    virtual void light(bool lit) = 0;
};

class NativeField : public virtual NativeControl {
public:
    virtual void setText(const std::string& text) = 0;  ///< cursor in front; a text that it shows stays untouched
    virtual void setHint(const std::string& text) = 0;  ///< seen while the field is empty
    virtual void select(int from, int to) = 0;          ///< UTF-16 units
    virtual std::u16string text() const = 0;
};

class NativeStepper : public virtual NativeControl {
public:
    virtual void setRange(int least, int most) = 0;
    virtual void setValue(int value) = 0;
};

class NativeChoice : public virtual NativeControl {
public:
    virtual void setItems(const std::vector<std::string>& items) = 0;
    virtual void setCurrent(int row) = 0;  ///< -1: none
    // Of an editable one.
    virtual FieldText field() const { return {}; }
    virtual void setField(const std::string& /*text*/) {}  ///< a text that it shows stays untouched
    virtual void setCursor(int /*cursor*/) {}              ///< UTF-16 units
};

/// Reads its rows from the control of the form, when they are seen. Where the control moves rows, they can be dragged.
class NativeList : public virtual NativeControl {
public:
    /// The control has other items. keepPlace: scrolled and current as before, as far as there are rows.
    virtual void refresh(bool keepPlace) = 0;
    virtual void setExtent(int pixels) = 0;  ///< width of the rows; 0: as wide as the list
    virtual void select(const std::vector<RowRange>& rows, int current) = 0;  ///< current -1: it stays
    /// What rows show besides their texts, and that it has changed. pictures: each leaves room for one in front. The
    /// list tells which rows are seen then. A desktop that shows no details leaves it.
    virtual void showDetails(const std::vector<RowColumn>& /*columns*/, bool /*pictures*/) {}
};

/// The window of a dialog.
class NativeSurface {
public:
    virtual ~NativeSurface() = default;

    // Controls, each told of by its events until the surface is destroyed. Frames are made first.
    virtual std::unique_ptr<NativeButton> makeButton(const Control& control, NativeEvents& events) = 0;
    virtual std::unique_ptr<NativeLabel> makeLabel(const Label& label, NativeEvents& events) = 0;
    virtual std::unique_ptr<NativeMark> makeMark(const Image& image, NativeEvents& events) = 0;
    virtual std::unique_ptr<NativeField> makeField(const TextBox& box, NativeEvents& events) = 0;
    virtual std::unique_ptr<NativeStepper> makeStepper(const ScrollBar& bar, NativeEvents& events) = 0;
    virtual std::unique_ptr<NativeChoice> makeChoice(const ItemsControl& control, NativeEvents& events) = 0;
    virtual std::unique_ptr<NativeList> makeList(const ItemsControl& control, NativeEvents& events) = 0;
    /// Of this window alone; null: lists show no pictures.
    virtual ThumbnailReader* thumbnails() { return nullptr; }

    /// A control is placed from the corner of its frame, not of the window.
    virtual bool framesHold() const = 0;
    virtual PixelSize textSize(const std::string& text) const = 0;
    virtual double leastScale() const = 0;  ///< screen pixels to one of the form, whatever the font
    /// The texts of the window are so many times as large as the system's, 1 and less. What wants room says so anew.
    virtual void setTextShare(double share) = 0;
    /// All controls in the order of the dialog's keys.
    virtual void orderTabs(const std::vector<const Control*>& order) = 0;
    /// Has the keyboard when the window gets it.
    virtual void focusFirst(const Control& control) = 0;

    virtual void setTitle(const std::string& text) = 0;
    virtual void enable(bool enabled) = 0;
    virtual void show(bool shown) = 0;
    virtual void setState(WindowState state) = 0;
    virtual void setInner(PixelSize size, PixelSize least) = 0;  ///< least: of one that can be made larger
    virtual PixelSize outer() const = 0;                         ///< with the frame that belongs to the window
    virtual void moveOuter(const PixelRect& place) = 0;
    virtual PixelRect room() const = 0;  ///< where the window may lie; empty: there is no screen
    /// A place of the form on the screen.
    virtual PixelPoint onScreen(Twips left, Twips top) const = 0;
    /// Runs it when the system's present event is over, unless the surface has gone.
    virtual void soon(EventLoop::Handler handler) = 0;
};

}  // namespace corvane
