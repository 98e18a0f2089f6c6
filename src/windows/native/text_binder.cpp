// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <string>

#include "windows/native/binder.h"
#include "windows/native/native_form_window.h"
#include "windows/text.h"

namespace corvane {

namespace {

bool isPair(const std::wstring& text, std::size_t at) {
    return IS_HIGH_SURROGATE(text[at]) && at + 1 < text.size() && IS_LOW_SURROGATE(text[at + 1]);
}

/// Places in a text count characters in the form and UTF-16 units in the system's field.
int characters(const std::wstring& text, std::size_t units) {
    int count = 0;
    for (std::size_t i = 0; i < units && i < text.size(); ++i, ++count) {
        if (isPair(text, i)) ++i;
    }
    return count;
}

int units(const std::wstring& text, int characterCount) {
    std::size_t at = 0;
    for (int i = 0; i < characterCount && at < text.size(); ++i) at += isPair(text, at) ? 2 : 1;
    return static_cast<int>(at);
}

class TextBinder : public Binder {
public:
    TextBinder(NativeWindow& window, TextBox& box)
        : Binder(window, box, WC_EDITW, ES_AUTOHSCROLL, WS_EX_CLIENTEDGE), box_(box) {
        if (box.MaxLength > 0) SendMessageW(widget(), EM_LIMITTEXT, static_cast<WPARAM>(box.MaxLength), 0);
    }

    void changed(PropertyId property) override {
        if (property == PropertyId::Text && box_.Text.get() != text()) setText(box_.Text);
        if (property == PropertyId::SelStart || property == PropertyId::SelLength) showSelection();
        Binder::changed(property);
    }
    void takeAll() override {
        if (!isLabelled()) {
            const std::wstring hint = toWide(box_.AccessibleName);
            SendMessageW(widget(), EM_SETCUEBANNER, FALSE, reinterpret_cast<LPARAM>(hint.c_str()));
        }
        changed(PropertyId::Text);
        Binder::takeAll();
    }
    void command(int code) override {
        if (code != EN_CHANGE || taking_) return;
        keepWhatIsTaken();
        const std::string now = text();
        window().apply([&] { box_.Text = now; });
    }
    /// The system draws a line of text at the field's top: no higher than that asks for, in the middle of the room.
    void flush() override {
        const RECT at = place();
        const LONG height = std::min(at.bottom - at.top, window().fieldHeight());
        ::SetWindowPos(widget(), nullptr, at.left, (at.top + at.bottom - height) / 2, at.right - at.left, height,
                       SWP_NOZORDER | SWP_NOACTIVATE);
    }
    SIZE wanted() const override { return {0, window().fieldHeight()}; }

    std::optional<LRESULT> message(UINT message, WPARAM first, LPARAM second) override {
        if (message == WM_LBUTTONDOWN) mouseDown_ = true;
        if (message == WM_LBUTTONUP) {
            mouseDown_ = false;
            // A selection that was asked for while the press gave the focus would be lost to the click's own.
            if (again_)
                window().loop().afterMessage([this, alive = window().alive()] {
                    if (!alive.expired()) showSelection();
                });
            again_ = false;
        }
        return Binder::message(message, first, second);
    }

protected:
    void focusChanged(bool got) override {
        takeSelection();  // the form's events must find what the user selected
        Binder::focusChanged(got);
    }

private:
    bool isLabelled() const {
        for (const Control* each : window().shownForm().controls()) {
            if (each->kind() == ControlKind::Label && static_cast<const Label*>(each)->Labels == &box_) return true;
        }
        return false;
    }
    std::wstring wideText() const { return toWide(text()); }

    void setText(const std::string& wanted) {
        taking_ = true;
        SetWindowTextW(widget(), toWide(wanted).c_str());
        taking_ = false;
    }
    /// Lets through what the control's KeyPress takes, however it came in: typed, pasted or dropped.
    void keepWhatIsTaken() {
        if (!box_.KeyPress) return;
        const std::wstring given = wideText();
        DWORD cursor = 0;
        SendMessageW(widget(), EM_GETSEL, 0, reinterpret_cast<LPARAM>(&cursor));
        std::wstring taken;
        std::size_t before = 0;
        for (std::size_t i = 0; i < given.size(); ++i) {
            const std::size_t from = i;
            char32_t typed = given[i];
            if (isPair(given, i)) {
                typed = 0x10000U + ((given[i] & 0x3FFU) << 10U) + (given[i + 1] & 0x3FFU);
                ++i;
            }
            const int character = box_.KeyPress(static_cast<int>(typed));
            if (character == static_cast<int>(typed)) {
                taken.append(given, from, i - from + 1);
            } else if (character > 0 && character < 0x10000) {
                taken += static_cast<wchar_t>(character);
            }
            if (from < cursor) before = taken.size();
        }
        if (taken == given) return;
        setText(fromWide(taken));
        SendMessageW(widget(), EM_SETSEL, before, static_cast<LPARAM>(before));
    }
    void takeSelection() {
        if (mouseDown_) return;
        DWORD start = 0;
        DWORD end = 0;
        SendMessageW(widget(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        const std::wstring shown = wideText();
        const int first = characters(shown, start);
        taking_ = true;
        box_.SelStart = first;
        box_.SelLength = characters(shown, end) - first;
        taking_ = false;
    }
    void showSelection() {
        if (taking_ || !window().isBound()) return;
        again_ = mouseDown_;
        const std::wstring shown = wideText();
        SendMessageW(widget(), EM_SETSEL, static_cast<WPARAM>(units(shown, box_.SelStart)),
                     units(shown, box_.SelStart + box_.SelLength));
    }

    TextBox& box_;
    bool taking_ = false;     ///< one side is being written: what the other reports is an echo
    bool mouseDown_ = false;  ///< on the field
    bool again_ = false;      ///< the control set its selection while the mouse was down
};

}  // namespace

std::unique_ptr<Binder> makeTextBinder(NativeWindow& window, TextBox& box) {
    return std::make_unique<TextBinder>(window, box);
}

}  // namespace corvane
