// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "shell/native/native_controls.h"

namespace corvane {

class FakeSurface;

/// A native control in memory: what it was told is there to be read. Letters are 10 pixels wide, lines 14 high.
class FakeControl : public virtual NativeControl {
public:
    FakeControl(FakeSurface& surface, const Control& control, NativeEvents& told)
        : events(told), enabled(true), surface_(surface), control_(control) {}
    void place(const PixelRect& room) override { at = room; }
    void show(bool isShown) override { shown = isShown; }
    void enable(bool isEnabled) override { enabled = isEnabled; }
    void setTip(const std::string& text) override { tip = text; }
    void focus() override;
    PixelSize textSize(const std::string& text) const override { return {static_cast<int>(text.size()) * 10, 14}; }
    PixelSize ownSize() const override { return own; }
    void release() override { released = true; }

    NativeEvents& events;
    PixelRect at;
    bool shown = true;
    bool enabled;
    bool released = false;
    std::string tip;
    PixelSize own{0, 20};  ///< what it asks for itself

private:
    FakeSurface& surface_;
    const Control& control_;
};

class FakeButton : public FakeControl, public NativeButton {
public:
    using FakeControl::FakeControl;
    void setText(const std::string& shownText) override { text = shownText; }
    void setOn(bool isOn) override { on = isOn; }
    void setDefault(bool is) override { isDefault = is; }
    /// As the user does: the system turns it first.
    void toggle(bool isOn) {
        on = isOn;
        events.toggled(isOn);
    }
    std::string text;
    bool on = false;
    bool isDefault = false;
};

class FakeLabel : public FakeControl, public NativeLabel {
public:
    using FakeControl::FakeControl;
    void setText(const std::string& shownText) override { text = shownText; }
    void leadTo(const Control& led) override { field = &led; }
    std::string text;
    const Control* field = nullptr;
};

class FakeMark : public FakeControl, public NativeMark {
public:
    using FakeControl::FakeControl;
    void light(bool isLit) override { lit = isLit; }
    bool lit = false;
};

class FakeField : public FakeControl, public NativeField {
public:
    using FakeControl::FakeControl;
    void setText(const std::string& text) override;
    void setHint(const std::string& text) override { hint = text; }
    void select(int from, int to) override {
        selected = {from, to};
        ++selects;
    }
    std::u16string text() const override { return held.text; }
    /// The user types over what is selected, or pastes it.
    void type(const std::u16string& text);
    void drag(int from, int to);  ///< the user selects
    FieldText held;
    std::pair<int, int> selected{0, 0};
    int selects = 0;  ///< how often it was told a selection
    std::string hint;
};

class FakeStepper : public FakeControl, public NativeStepper {
public:
    using FakeControl::FakeControl;
    void setRange(int from, int to) override { least = from, most = to; }
    void setValue(int now) override { value = now; }
    int least = 0, most = 0, value = 0;
};

class FakeChoice : public FakeControl, public NativeChoice {
public:
    using FakeControl::FakeControl;
    void setItems(const std::vector<std::string>& texts) override;
    void setCurrent(int row) override;
    FieldText field() const override { return held; }
    void setField(const std::string& text) override;
    void setCursor(int cursor) override { held.cursor = cursor; }
    void choose(int row);                ///< the user: the system shows it first
    void type(const std::string& text);  ///< the user: it is the whole text then
    std::vector<std::string> items;
    int current = -1;
    FieldText held;
    int filled = 0;  ///< how often the items were set
};

class FakeList : public FakeControl, public NativeList {
public:
    using FakeControl::FakeControl;
    void refresh(bool keep) override;
    void setExtent(int pixels) override { extent = pixels; }
    void select(const std::vector<RowRange>& rows, int row) override;
    void showDetails(const std::vector<RowColumn>& shownColumns, bool withPictures) override {
        columns = shownColumns, pictures = withPictures;
        ++detailed;
    }
    std::vector<RowColumn> columns;
    bool pictures = false;
    int detailed = 0;  ///< how often it was told to show them
    std::vector<RowRange> selected;
    int current = -1;
    int extent = 0;
    int refreshed = 0;
    bool keptPlace = false;
};

/// Small pictures in memory, each there when it is told to be.
class FakeThumbnails : public ThumbnailReader {
public:
    void read(const std::string& path, Done done) override {
        asked.push_back(path);
        done_ = std::move(done);
    }
    void giveUp() override {
        ++givenUp;
        done_ = {};
    }
    /// The picture that was asked for last has come.
    Picture answer();
    std::vector<std::string> asked;
    int givenUp = 0;

private:
    Done done_;
};

/// A dialog's window in memory, on a screen of 1000 by 800 pixels.
class FakeSurface : public NativeSurface {
public:
    std::unique_ptr<NativeButton> makeButton(const Control& control, NativeEvents& events) override;
    std::unique_ptr<NativeLabel> makeLabel(const Label& label, NativeEvents& events) override;
    std::unique_ptr<NativeMark> makeMark(const Image& image, NativeEvents& events) override;
    std::unique_ptr<NativeField> makeField(const TextBox& box, NativeEvents& events) override;
    std::unique_ptr<NativeStepper> makeStepper(const ScrollBar& bar, NativeEvents& events) override;
    std::unique_ptr<NativeChoice> makeChoice(const ItemsControl& control, NativeEvents& events) override;
    std::unique_ptr<NativeList> makeList(const ItemsControl& control, NativeEvents& events) override;

    ThumbnailReader* thumbnails() override { return reader; }
    bool framesHold() const override { return hold; }
    PixelSize textSize(const std::string& /*text*/) const override {
        return {static_cast<int>(sample.width * textShare), static_cast<int>(sample.height * textShare)};
    }
    double leastScale() const override { return 1.0; }
    void setTextShare(double share) override { textShare = share; }
    void orderTabs(const std::vector<const Control*>& wanted) override { order = wanted; }
    void focusFirst(const Control& control) override { focused = &control; }
    void setTitle(const std::string& text) override { title = text; }
    void enable(bool isEnabled) override { enabled = isEnabled; }
    void show(bool isShown) override { shown = isShown; }
    void setState(WindowState wanted) override { state = wanted; }
    void setInner(PixelSize size, PixelSize smallest) override {
        at = {at.left, at.top, size.width, size.height}, least = smallest;
    }
    PixelSize outer() const override { return at.size(); }
    void moveOuter(const PixelRect& place) override { at = place; }
    PixelRect room() const override { return screen; }
    PixelPoint onScreen(Twips left, Twips top) const override;
    void soon(EventLoop::Handler handler) override { later.push_back(std::move(handler)); }
    void runLater();

    /// The native control of a form's control.
    template <class N>
    N& of(const Control& control) {
        return dynamic_cast<N&>(*controls_.at(&control));
    }

    ThumbnailReader* reader = nullptr;
    bool hold = true;
    PixelSize sample{174, 14};  ///< of every text, in the system's font
    double textShare = 0;       ///< of its size, as it was set; 0: never
    PixelRect screen{0, 0, 1000, 800};
    std::vector<const Control*> order;
    const Control* focused = nullptr;
    std::string title;
    bool enabled = true;
    bool shown = false;
    WindowState state = WindowState::Normal;
    PixelRect at;
    PixelSize least;
    std::vector<EventLoop::Handler> later;

private:
    template <class N>
    std::unique_ptr<N> kept(const Control& control, NativeEvents& events);
    std::map<const Control*, NativeControl*> controls_;
};

}  // namespace corvane
