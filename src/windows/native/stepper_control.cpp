// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/text.h"
#include "windows/native/native_form_window.h"

namespace corvane {

namespace {

/// A scroll bar so narrow that it is two arrows: they step a number; held, they step on. Arrow keys step it too, while
/// the focus is on it. The system's pair of arrows fills its place, where a scroll bar would leave a gap between them.
class StepperControl : public SystemControl, public NativeStepper {
public:
    StepperControl(NativeWindow& window, const ScrollBar& bar, NativeEvents& told)
        : SystemControl(window, bar, told, UPDOWN_CLASSW, UDS_HORZ) {
        UDACCEL steps{0, 1};
        ask(UDM_SETACCEL, 1, reinterpret_cast<LPARAM>(&steps));
        setWindowText(bar.AccessibleName);
    }
    void setRange(int least, int most) override { ask(UDM_SETRANGE32, static_cast<WPARAM>(least), most); }
    void setValue(int value) override { ask(UDM_SETPOS32, 0, value); }
    void scroll(int code, int position) override {
        if (code == SB_THUMBPOSITION) events().stepTo(position);
    }

protected:
    std::optional<LRESULT> message(UINT message, WPARAM first, LPARAM second) override {
        switch (message) {
            case WM_GETDLGCODE:
                return DLGC_WANTARROWS;
            case WM_KEYDOWN:
                key(first);
                return 0;
            case WM_SETFOCUS:
            case WM_KILLFOCUS:
                InvalidateRect(handle(), nullptr, TRUE);
                break;
            case WM_PAINT:
                DefSubclassProc(handle(), message, first, second);
                if (GetFocus() == handle()) drawFocus();
                return 0;
            default:
                break;
        }
        return SystemControl::message(message, first, second);
    }

private:
    void key(WPARAM code) {
        if (code == VK_LEFT || code == VK_DOWN) events().stepBy(-1);
        if (code == VK_RIGHT || code == VK_UP) events().stepBy(1);
        if (code == VK_HOME || code == VK_END) events().stepToEnd(code == VK_END);
    }
    void drawFocus() {
        constexpr int kInside = 3;
        RECT ring{};
        GetClientRect(handle(), &ring);
        InflateRect(&ring, -kInside, -kInside);
        const HDC dc = GetDC(handle());
        DrawFocusRect(dc, &ring);
        ReleaseDC(handle(), dc);
    }
};

}  // namespace

std::unique_ptr<NativeStepper> NativeWindow::makeStepper(const ScrollBar& bar, NativeEvents& events) {
    return std::make_unique<StepperControl>(*this, bar, events);
}

}  // namespace corvane
