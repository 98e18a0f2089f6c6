// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "windows/native/binder.h"
#include "windows/native/native_form_window.h"

namespace corvane {

namespace {

/// A scroll bar so narrow that it is two arrows: they step a number; held, they step on. Arrow keys step it too.
class StepperBinder : public Binder {
public:
    StepperBinder(NativeWindow& window, ScrollBar& bar) : Binder(window, bar, WC_SCROLLBARW, SBS_HORZ), bar_(bar) {}

    void changed(PropertyId property) override {
        if (property == PropertyId::Min || property == PropertyId::Max || property == PropertyId::Value) showValue();
        Binder::changed(property);
    }
    void takeAll() override {
        showValue();
        Binder::takeAll();
    }
    void scroll(int code, int position) override {
        int value = bar_.Value;
        switch (code) {
            case SB_LINELEFT:
            case SB_PAGELEFT:
                --value;
                break;
            case SB_LINERIGHT:
            case SB_PAGERIGHT:
                ++value;
                break;
            case SB_LEFT:
                value = bar_.Min;
                break;
            case SB_RIGHT:
                value = bar_.Max;
                break;
            case SB_THUMBPOSITION:
                value = position;
                break;
            default:
                return;
        }
        value = std::clamp(value, bar_.Min.get(), bar_.Max.get());
        window().apply([&] { bar_.Value = value; });
    }

private:
    void showValue() {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_RANGE | SIF_POS | SIF_DISABLENOSCROLL;
        info.nMin = bar_.Min;
        info.nMax = bar_.Max;
        info.nPos = bar_.Value;
        SetScrollInfo(widget(), SB_CTL, &info, TRUE);
    }

    ScrollBar& bar_;
};

}  // namespace

std::unique_ptr<Binder> makeStepperBinder(NativeWindow& window, ScrollBar& bar) {
    return std::make_unique<StepperBinder>(window, bar);
}

}  // namespace corvane
