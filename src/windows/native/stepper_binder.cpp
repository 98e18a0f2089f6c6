// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "windows/native/binder.h"
#include "windows/native/native_form_window.h"
#include "windows/text.h"

namespace corvane {

namespace {

/// A scroll bar so narrow that it is two arrows: they step a number; held, they step on. Arrow keys step it too, while
/// the focus is on it. The system's pair of arrows fills its place, where a scroll bar would leave a gap between them.
class StepperBinder : public Binder {
public:
    StepperBinder(NativeWindow& window, ScrollBar& bar) : Binder(window, bar, UPDOWN_CLASSW, UDS_HORZ), bar_(bar) {
        UDACCEL steps{0, 1};
        SendMessageW(widget(), UDM_SETACCEL, 1, reinterpret_cast<LPARAM>(&steps));
        SetWindowTextW(widget(), toWide(bar.AccessibleName).c_str());
    }

    void changed(PropertyId property) override {
        if (property == PropertyId::Min || property == PropertyId::Max || property == PropertyId::Value) showValue();
        Binder::changed(property);
    }
    void takeAll() override {
        showValue();
        Binder::takeAll();
    }
    void scroll(int code, int position) override {
        if (code == SB_THUMBPOSITION) stepTo(position);
    }
    std::optional<LRESULT> message(UINT message, WPARAM first, LPARAM second) override {
        switch (message) {
            case WM_GETDLGCODE:
                return DLGC_WANTARROWS;
            case WM_KEYDOWN:
                key(first);
                return 0;
            case WM_SETFOCUS:
            case WM_KILLFOCUS:
                InvalidateRect(widget(), nullptr, TRUE);
                break;
            case WM_PAINT:
                DefSubclassProc(widget(), message, first, second);
                if (GetFocus() == widget()) drawFocus();
                return 0;
            default:
                break;
        }
        return Binder::message(message, first, second);
    }

private:
    void key(WPARAM code) {
        switch (code) {
            case VK_LEFT:
            case VK_DOWN:
                stepTo(bar_.Value - 1);
                break;
            case VK_RIGHT:
            case VK_UP:
                stepTo(bar_.Value + 1);
                break;
            // The ends are a step beyond the numbers, from where those wrap.
            case VK_HOME:
                stepTo(bar_.Min + 1);
                break;
            case VK_END:
                stepTo(bar_.Max - 1);
                break;
            default:
                break;
        }
    }
    void stepTo(int wanted) {
        const int value = std::clamp(wanted, bar_.Min.get(), bar_.Max.get());
        window().apply([&] { bar_.Value = value; });
        if (window().isBound()) showValue();  // it has stepped by itself, and the form may want another value
    }
    void showValue() {
        SendMessageW(widget(), UDM_SETRANGE32, static_cast<WPARAM>(bar_.Min.get()), bar_.Max.get());
        SendMessageW(widget(), UDM_SETPOS32, 0, bar_.Value.get());
    }
    void drawFocus() {
        constexpr int kInside = 3;
        RECT ring{};
        GetClientRect(widget(), &ring);
        InflateRect(&ring, -kInside, -kInside);
        const HDC dc = GetDC(widget());
        DrawFocusRect(dc, &ring);
        ReleaseDC(widget(), dc);
    }

    ScrollBar& bar_;
};

}  // namespace

std::unique_ptr<Binder> makeStepperBinder(NativeWindow& window, ScrollBar& bar) {
    return std::make_unique<StepperBinder>(window, bar);
}

}  // namespace corvane
