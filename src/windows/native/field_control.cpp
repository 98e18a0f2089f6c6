// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <string>

#include "winapi/text.h"
#include "windows/native/native_form_window.h"
#include "windows/windowing/shown_text.h"

namespace corvane {

namespace {

class FieldControl : public SystemControl, public NativeField {
public:
    FieldControl(NativeWindow& window, const TextBox& box, NativeEvents& told)
        : SystemControl(window, box, told, WC_EDITW, ES_AUTOHSCROLL, WS_EX_CLIENTEDGE) {
        if (box.MaxLength > 0) ask(EM_LIMITTEXT, static_cast<WPARAM>(box.MaxLength));
    }

    void setText(const std::string& wanted) override {
        const std::wstring shown = shownText(wanted);
        if (shown != windowText()) write(shown);
    }
    void setHint(const std::string& text) override {
        ask(EM_SETCUEBANNER, FALSE, reinterpret_cast<LPARAM>(shownText(text).c_str()));
    }
    void select(int from, int to) override { ask(EM_SETSEL, static_cast<WPARAM>(from), to); }
    std::u16string text() const override {
        const std::wstring wide = windowText();
        return {wide.begin(), wide.end()};
    }
    /// The system draws a line of text at the field's top: no higher than that asks for, in the middle of the room.
    void place(const PixelRect& room) override {
        const int height = std::min(room.height, window().fieldHeight());
        SystemControl::place({room.left, (room.top + room.bottom() - height) / 2, room.width, height});
    }
    PixelSize ownSize() const override { return {0, window().fieldHeight()}; }

    void command(int code) override {
        if (code != EN_CHANGE || writing_) return;
        const FieldText given{text(), static_cast<int>(selection().first)};
        const FieldText taken = events().filtered(given);
        if (taken.text != given.text) {
            write({taken.text.begin(), taken.text.end()});
            select(taken.cursor, taken.cursor);
        }
        events().typed(fromWide(windowText()));
    }

protected:
    std::optional<LRESULT> message(UINT message, WPARAM first, LPARAM second) override {
        NativeMouse mouse;
        mouse.act = message == WM_LBUTTONDOWN ? NativeMouse::Act::Press : NativeMouse::Act::Release;
        if (message == WM_LBUTTONDOWN || message == WM_LBUTTONUP) events().mouse(mouse);
        if (message == WM_KEYDOWN && tellKey(first, second)) return 0;
        return SystemControl::message(message, first, second);
    }
    void focusChanged(bool got) override {
        // The form's events must find what the user selected, of which the system says nothing by itself.
        const auto [from, to] = selection();
        events().selectionMoved(static_cast<int>(from), static_cast<int>(to));
        SystemControl::focusChanged(got);
    }

private:
    bool tellKey(WPARAM code, LPARAM details) {
        if (code != VK_UP && code != VK_DOWN && code != VK_PRIOR && code != VK_NEXT) return false;
        constexpr LPARAM kRepeated = 0x40000000;
        return shiftState() == 0 && events().fieldKey({static_cast<int>(code), 0, (details & kRepeated) != 0});
    }
    void write(const std::wstring& text) {
        writing_ = true;
        SetWindowTextW(handle(), text.c_str());
        writing_ = false;
    }
    std::pair<DWORD, DWORD> selection() const {
        DWORD from = 0;
        DWORD to = 0;
        ask(EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
        return {from, to};
    }

    bool writing_ = false;  ///< what the field reports was not the user
};

}  // namespace

std::unique_ptr<NativeField> NativeWindow::makeField(const TextBox& box, NativeEvents& events) {
    return std::make_unique<FieldControl>(*this, box, events);
}

}  // namespace corvane
