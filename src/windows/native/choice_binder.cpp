// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "windows/native/binder.h"
#include "windows/native/native_form_window.h"
#include "windows/text.h"

namespace corvane {

namespace {

constexpr int kMostSeen = 20;  ///< entries of a list that has dropped down

ComboBox* asCombo(ItemsControl& control) {
    return control.kind() == ControlKind::ComboBox ? static_cast<ComboBox*>(&control) : nullptr;
}

DWORD styleOf(ItemsControl& control) {
    const ComboBox* const combo = asCombo(control);
    const bool typed = combo != nullptr && combo->Editable;
    return static_cast<DWORD>(typed ? CBS_DROPDOWN | CBS_AUTOHSCROLL : CBS_DROPDOWNLIST) | WS_VSCROLL;
}

class ChoiceBinder : public Binder {
public:
    ChoiceBinder(NativeWindow& window, ItemsControl& control)
        : Binder(window, control, WC_COMBOBOXW, styleOf(control)), items_(control), combo_(asCombo(control)) {
        SendMessageW(widget(), CB_SETMINVISIBLE, kMostSeen, 0);
    }

    void changed(PropertyId property) override {
        switch (property) {
            case PropertyId::Items:
            case PropertyId::ListIndex:
            case PropertyId::Text:
                stale_ = stale_ || property == PropertyId::Items;
                flushSoon();
                break;
            default:
                Binder::changed(property);
                break;
        }
    }
    void flush() override {
        fitHeight();
        if (stale_) showItems();
        const int current = static_cast<int>(SendMessageW(widget(), CB_GETCURSEL, 0, 0));
        const std::string before = text();
        if (current != items_.ListIndex)
            SendMessageW(widget(), CB_SETCURSEL, static_cast<WPARAM>(items_.ListIndex.get()), 0);
        if (!isTyped() || (combo_->Text.get() == text() && before == text())) return;
        DWORD cursor = 0;
        SendMessageW(widget(), CB_GETEDITSEL, reinterpret_cast<WPARAM>(&cursor), 0);
        SetWindowTextW(widget(), toWide(combo_->Text.get()).c_str());
        // A new current item has rewritten the field, also under someone who types.
        const WORD place = before == combo_->Text.get() ? static_cast<WORD>(cursor) : WORD{0};
        SendMessageW(widget(), CB_SETEDITSEL, 0, MAKELPARAM(place, place));
    }
    void command(int code) override {
        switch (code) {
            case CBN_SELCHANGE: {
                const int index = static_cast<int>(SendMessageW(widget(), CB_GETCURSEL, 0, 0));
                window().apply([&] { choose(index); });
                break;
            }
            case CBN_EDITCHANGE: {
                const std::string typed = text();
                window().apply([&] {
                    combo_->ListIndex = -1;
                    combo_->Text = typed;
                });
                break;
            }
            case CBN_DROPDOWN:
                SendMessageW(widget(), CB_SETDROPPEDWIDTH, static_cast<WPARAM>(widestItem()), 0);
                break;
            default:
                break;
        }
    }
    SIZE wanted() const override {
        RECT own{};
        GetWindowRect(widget(), &own);
        return {0, std::max(window().fieldHeight(), own.bottom - own.top)};
    }
    bool takesEnter() const override { return SendMessageW(widget(), CB_GETDROPPEDSTATE, 0, 0) != 0; }

private:
    bool isTyped() const { return combo_ != nullptr && combo_->Editable; }

    /// The system makes it as high as its font asks: in the middle of its room. The room for the list is height too.
    void fitHeight() {
        const RECT at = place();
        const int list = kMostSeen * static_cast<int>(textSize("Ag").cy);
        const int width = static_cast<int>(at.right - at.left);
        const int height = static_cast<int>(at.bottom - at.top);
        const UINT flags = SWP_NOZORDER | SWP_NOACTIVATE;
        ::SetWindowPos(widget(), nullptr, at.left, at.top, width, height + list, flags);
        RECT own{};
        GetWindowRect(widget(), &own);
        const int spare = std::max(0, height - static_cast<int>(own.bottom - own.top));
        ::SetWindowPos(widget(), nullptr, at.left, at.top + spare / 2, 0, 0, flags | SWP_NOSIZE);
    }
    void showItems() {
        stale_ = false;
        SendMessageW(widget(), WM_SETREDRAW, FALSE, 0);
        SendMessageW(widget(), CB_RESETCONTENT, 0, 0);
        for (const std::string& each : items_.items()) {
            SendMessageW(widget(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(toWide(each).c_str()));
        }
        SendMessageW(widget(), WM_SETREDRAW, TRUE, 0);
        InvalidateRect(widget(), nullptr, TRUE);
    }
    LONG widestItem() const {
        constexpr LONG kRoom = 32;
        LONG widest = 0;
        for (const std::string& each : items_.items()) widest = std::max(widest, textSize(each).cx);
        return widest + kRoom;
    }
    void choose(int index) {
        const bool again = items_.ListIndex == index;
        items_.ListIndex = index;  // a combo box raises Click by itself
        if (combo_ == nullptr) {
            items_.Click.raise();
        } else if (again && index >= 0) {
            combo_->Text = std::string(combo_->item(index));
        }
    }

    ItemsControl& items_;
    ComboBox* combo_;  ///< null: a drive box
    bool stale_ = true;
};

}  // namespace

std::unique_ptr<Binder> makeChoiceBinder(NativeWindow& window, ItemsControl& control) {
    return std::make_unique<ChoiceBinder>(window, control);
}

}  // namespace corvane
