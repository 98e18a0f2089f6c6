// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "windows/native/native_form_window.h"

// Labels and images: what has no keyboard and hands the mouse to its control.

namespace corvane {

namespace {

/// What hands the mouse to its control.
class MouseControlOf : public SystemControl {
public:
    MouseControlOf(NativeWindow& window, const Control& control, NativeEvents& told, DWORD style)
        : SystemControl(window, control, told, WC_STATICW, SS_NOTIFY | style) {}

protected:
    std::optional<LRESULT> message(UINT message, WPARAM first, LPARAM second) override {
        const auto mouse = nativeMouse(message, second, clientSize());
        if (!mouse) return SystemControl::message(message, first, second);
        if (mouse->act == NativeMouse::Act::Move && window().dragStep()) return 0;
        if (mouse->act == NativeMouse::Act::Release && GetCapture() == handle()) ReleaseCapture();
        if (mouse->button != 0 && mouse->act != NativeMouse::Act::Release) SetCapture(handle());
        events().mouse(*mouse);
        return 0;
    }
};

class LabelControl : public MouseControlOf, public NativeLabel {
public:
    LabelControl(NativeWindow& window, const Label& label, NativeEvents& told)
        : MouseControlOf(window, label, told,
                         SS_LEFT | SS_CENTERIMAGE |
                             static_cast<DWORD>(label.Labels != nullptr ? 0 : SS_NOPREFIX | SS_ENDELLIPSIS)) {}
    void setText(const std::string& text) override { setWindowText(text); }
};

/// A handle to drag between two lists, or a small mark that points at the field beside it.
class MarkControl : public MouseControlOf, public NativeMark {
public:
    MarkControl(NativeWindow& window, const Image& image, NativeEvents& told)
        : MouseControlOf(window, image, told, WS_VISIBLE | SS_OWNERDRAW), isHandle_(image.MouseMove.isTied()) {}

    void light(bool lit) override {
        lit_ = lit;
        InvalidateRect(handle(), nullptr, TRUE);
    }
    void draw(const DRAWITEMSTRUCT& item) override {
        FillRect(item.hDC, &item.rcItem, GetSysColorBrush(COLOR_BTNFACE));
        if (!isHandle_ && !lit_) return;
        const LONG middleX = (item.rcItem.left + item.rcItem.right) / 2;
        const LONG middleY = (item.rcItem.top + item.rcItem.bottom) / 2;
        const int saved = SaveDC(item.hDC);
        SelectObject(item.hDC, GetStockObject(NULL_PEN));
        SelectObject(item.hDC, GetSysColorBrush(isHandle_ ? COLOR_BTNSHADOW : COLOR_HIGHLIGHT));
        if (isHandle_) {
            constexpr LONG kRadius = 2, kStep = 7;
            for (const LONG each : {-kStep, LONG{0}, kStep}) {
                Ellipse(item.hDC, middleX - kRadius, middleY + each - kRadius, middleX + kRadius + 1,
                        middleY + each + kRadius + 1);
            }
        } else {
            const LONG half = (item.rcItem.right - item.rcItem.left) * 2 / 5;
            const std::array<POINT, 3> arrow{{{middleX - half * 7 / 10, middleY - half},
                                              {middleX + half, middleY},
                                              {middleX - half * 7 / 10, middleY + half}}};
            Polygon(item.hDC, arrow.data(), static_cast<int>(arrow.size()));
        }
        RestoreDC(item.hDC, saved);
    }

protected:
    std::optional<LRESULT> message(UINT message, WPARAM first, LPARAM second) override {
        if (message == WM_SETCURSOR && isHandle_) {
            SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
            return TRUE;
        }
        return MouseControlOf::message(message, first, second);
    }

private:
    bool isHandle_;
    bool lit_ = false;
};

}  // namespace

std::unique_ptr<NativeLabel> NativeWindow::makeLabel(const Label& label, NativeEvents& events) {
    return std::make_unique<LabelControl>(*this, label, events);
}

std::unique_ptr<NativeMark> NativeWindow::makeMark(const Image& image, NativeEvents& events) {
    return std::make_unique<MarkControl>(*this, image, events);
}

}  // namespace corvane
