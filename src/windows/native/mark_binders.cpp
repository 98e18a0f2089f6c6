// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>

#include "windows/native/binder.h"
#include "windows/native/native_form_window.h"

// Labels and images: what has no keyboard and hands the mouse to its control.

namespace corvane {

namespace {

int buttonOf(UINT message) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_LBUTTONUP:
            return kLeftButton;
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
        case WM_RBUTTONUP:
            return kRightButton;
        default:
            return 0;
    }
}

class MouseBinder : public Binder {
public:
    MouseBinder(NativeWindow& window, MouseControl& control, DWORD style)
        : Binder(window, control, WC_STATICW, SS_NOTIFY | style), mouse_(control) {}

    std::optional<LRESULT> message(UINT message, WPARAM first, LPARAM second) override {
        const int button = buttonOf(message);
        if (button == 0 && message != WM_MOUSEMOVE) return Binder::message(message, first, second);
        const FormScale& scale = window().scale();
        const MouseArgs args{button, shiftState(), scale.twipsAcross(GET_X_LPARAM(second)),
                             scale.twipsDown(GET_Y_LPARAM(second))};
        if (message == WM_MOUSEMOVE && window().dragStep()) return 0;
        if (message == WM_MOUSEMOVE) {
            window().apply([&] { mouse_.MouseMove.raise(args); });
        } else if (message == WM_LBUTTONUP || message == WM_RBUTTONUP) {
            if (GetCapture() == widget()) ReleaseCapture();
            released(args, {GET_X_LPARAM(second), GET_Y_LPARAM(second)});
        } else {
            SetCapture(widget());
            window().apply([&] { mouse_.MouseDown.raise(args); });
            const bool isDouble = message == WM_LBUTTONDBLCLK && window().isBound();
            if (isDouble) window().apply([&] { mouse_.DblClick.raise(); });
        }
        return 0;
    }

private:
    void released(const MouseArgs& args, POINT at) {
        RECT own{};
        GetClientRect(widget(), &own);
        const bool click = args.button == kLeftButton && PtInRect(&own, at) != 0;
        window().apply([&] {
            if (click) mouse_.Click.raise();
            if (window().isBound()) mouse_.MouseUp.raise(args);
        });
    }

    MouseControl& mouse_;
};

class LabelBinder : public MouseBinder {
public:
    LabelBinder(NativeWindow& window, Label& label)
        : MouseBinder(window, label,
                      SS_LEFT | SS_CENTERIMAGE |
                          static_cast<DWORD>(label.Labels != nullptr ? 0 : SS_NOPREFIX | SS_ENDELLIPSIS)),
          label_(label) {}
    void changed(PropertyId property) override {
        if (property == PropertyId::Caption) {
            if (label_.Labels != nullptr) {
                show(label_.Caption);
            } else {
                window().setPlainText(widget(), label_.Caption);
            }
        }
        Binder::changed(property);
    }
    void takeAll() override {
        changed(PropertyId::Caption);
        Binder::takeAll();
    }
    SIZE wanted() const override {
        const SIZE size = textSize(label_.Caption);
        return {size.cx + 2, size.cy};
    }

private:
    Label& label_;
};

/// A handle to drag between two lists, or a small mark that points at the field beside it.
class ImageBinder : public MouseBinder {
public:
    ImageBinder(NativeWindow& window, Image& image)
        : MouseBinder(window, image, SS_OWNERDRAW), handle_(image.MouseMove.isTied()) {}

    std::optional<LRESULT> message(UINT message, WPARAM first, LPARAM second) override {
        if (message == WM_SETCURSOR && handle_) {
            SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
            return TRUE;
        }
        return MouseBinder::message(message, first, second);
    }
    void draw(const DRAWITEMSTRUCT& item) override {
        FillRect(item.hDC, &item.rcItem, GetSysColorBrush(COLOR_BTNFACE));
        const LONG middleX = (item.rcItem.left + item.rcItem.right) / 2;
        const LONG middleY = (item.rcItem.top + item.rcItem.bottom) / 2;
        const int saved = SaveDC(item.hDC);
        SelectObject(item.hDC, GetStockObject(NULL_PEN));
        SelectObject(item.hDC, GetSysColorBrush(handle_ ? COLOR_BTNSHADOW : COLOR_HIGHLIGHT));
        if (handle_) {
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

private:
    bool handle_;
};

}  // namespace

std::unique_ptr<Binder> makeMarkBinder(NativeWindow& window, MouseControl& control) {
    if (control.kind() == ControlKind::Label) {
        return std::make_unique<LabelBinder>(window, static_cast<Label&>(control));
    }
    return std::make_unique<ImageBinder>(window, static_cast<Image&>(control));
}

}  // namespace corvane
