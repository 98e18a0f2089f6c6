// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "winapi/text.h"
#include "windows/native/native_form_window.h"
#include "windows/windowing/shown_text.h"

namespace corvane {

namespace {

constexpr int kMostSeen = 20;  ///< entries of a list that has dropped down

DWORD styleOf(const ItemsControl& control) {
    const bool typed = control.kind() == ControlKind::ComboBox && static_cast<const ComboBox&>(control).Editable;
    return static_cast<DWORD>(typed ? CBS_DROPDOWN | CBS_AUTOHSCROLL : CBS_DROPDOWNLIST) | WS_VSCROLL;
}

class ChoiceControl : public SystemControl, public NativeChoice {
public:
    ChoiceControl(NativeWindow& window, const ItemsControl& control, NativeEvents& told)
        : SystemControl(window, control, told, WC_COMBOBOXW, styleOf(control)) {
        ask(CB_SETMINVISIBLE, kMostSeen);
    }

    void setItems(const std::vector<std::string>& items) override {
        ask(WM_SETREDRAW, FALSE);
        ask(CB_RESETCONTENT);
        widest_ = 0;
        for (const std::string& each : items) {
            ask(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(shownText(each).c_str()));
            widest_ = std::max(widest_, textSize(each).width);
        }
        ask(WM_SETREDRAW, TRUE);
        InvalidateRect(handle(), nullptr, TRUE);
    }
    void setCurrent(int row) override {
        if (current() != row) ask(CB_SETCURSEL, static_cast<WPARAM>(row));
    }
    FieldText field() const override {
        DWORD cursor = 0;
        ask(CB_GETEDITSEL, reinterpret_cast<WPARAM>(&cursor));
        const std::wstring text = windowText();
        return {{text.begin(), text.end()}, static_cast<int>(cursor)};
    }
    void setField(const std::string& text) override {
        if (shownText(text) != windowText()) setWindowText(text);
    }
    void setCursor(int cursor) override { ask(CB_SETEDITSEL, 0, MAKELPARAM(cursor, cursor)); }

    void command(int code) override {
        constexpr int kRoom = 32;
        if (code == CBN_SELCHANGE) events().chosen(current());
        if (code == CBN_EDITCHANGE) events().typed(fromWide(windowText()));
        if (code == CBN_DROPDOWN) ask(CB_SETDROPPEDWIDTH, static_cast<WPARAM>(widest_ + kRoom));
    }
    /// The system makes it as high as its font asks: in the middle of its room. The room for the list is height too.
    void place(const PixelRect& room) override {
        const int list = kMostSeen * textSize("Ag").height;
        SystemControl::place({room.left, room.top, room.width, room.height + list});
        const int spare = std::max(0, room.height - ownHeight());
        ::SetWindowPos(handle(), nullptr, room.left, room.top + spare / 2, 0, 0,
                       SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOSIZE);
    }
    PixelSize ownSize() const override { return {0, std::max(window().fieldHeight(), ownHeight())}; }
    bool takesEnter() const override { return ask(CB_GETDROPPEDSTATE) != 0; }

private:
    int current() const { return static_cast<int>(ask(CB_GETCURSEL)); }
    int ownHeight() const {
        RECT own{};
        GetWindowRect(handle(), &own);
        return static_cast<int>(own.bottom - own.top);
    }

    int widest_ = 0;  ///< of the items, pixels
};

}  // namespace

std::unique_ptr<NativeChoice> NativeWindow::makeChoice(const ItemsControl& control, NativeEvents& events) {
    return std::make_unique<ChoiceControl>(*this, control, events);
}

}  // namespace corvane
