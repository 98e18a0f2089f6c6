// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <vector>

#include "forms/item_tips.h"
#include "windows/drop.h"
#include "windows/native/binder.h"
#include "windows/native/native_form_window.h"
#include "windows/text.h"

namespace corvane {

namespace {

DWORD styleOf(const ItemsControl& control) {
    const DWORD many = control.MultiSelect ? static_cast<DWORD>(LBS_EXTENDEDSEL) : 0U;
    return WS_VSCROLL | WS_HSCROLL | static_cast<DWORD>(LBS_NOTIFY | LBS_NOINTEGRALHEIGHT) | many;
}

class ListBinder : public Binder {
public:
    ListBinder(NativeWindow& window, ItemsControl& control)
        : Binder(window, control, WC_LISTBOXW, styleOf(control), WS_EX_CLIENTEDGE), items_(control) {
        if (items_.OLEDragDrop.isTied()) DragAcceptFiles(widget(), TRUE);
    }

    void changed(PropertyId property) override {
        switch (property) {
            case PropertyId::Items:
                itemsStale_ = true;
                flushSoon();
                break;
            case PropertyId::ListIndex:
            case PropertyId::Selected:
                if (taking_) return;
                selectionStale_ = true;
                flushSoon();
                break;
            case PropertyId::HorizontalExtent:
                flushSoon();
                break;
            default:
                Binder::changed(property);
                break;
        }
    }
    void flush() override {
        Binder::flush();
        if (itemsStale_) showItems();
        if (items_.kind() == ControlKind::ListBox) {
            const int extent = static_cast<const ListBox&>(items_).HorizontalExtent;
            setExtent(static_cast<int>(extent * window().scale().across()));
        }
        if (selectionStale_) showSelection();
    }
    void command(int code) override {
        if (code == LBN_SELCHANGE) takeSelection();
        if (code == LBN_DBLCLK) doubleClick();
    }
    std::optional<LRESULT> message(UINT message, WPARAM first, LPARAM second) override {
        if (message == WM_DROPFILES) {
            const DropData data = filesOf(reinterpret_cast<HGLOBAL>(first));
            DragFinish(reinterpret_cast<HDROP>(first));
            window().post([this, data] { items_.OLEDragDrop.raise(data); });
            return 0;
        }
        if (message == WM_KEYDOWN && first == VK_RETURN && takesEnter()) {
            doubleClick();
            return 0;
        }
        if (message == WM_MOUSEMOVE) tipOfRowAt({GET_X_LPARAM(second), GET_Y_LPARAM(second)});
        return Binder::message(message, first, second);
    }
    /// In a folder list Enter goes into the folder.
    bool takesEnter() const override { return items_.kind() == ControlKind::FolderBox && current() >= 0; }

private:
    LRESULT ask(UINT message, WPARAM first = 0, LPARAM second = 0) const {
        return SendMessageW(widget(), message, first, second);
    }
    int current() const { return static_cast<int>(ask(items_.MultiSelect ? LB_GETCARETINDEX : LB_GETCURSEL)); }
    void setExtent(int pixels) const {
        if (ask(LB_GETHORIZONTALEXTENT) != pixels) ask(LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(pixels));
    }

    /// -1: below the last one.
    int rowAt(POINT at) const {
        const LRESULT found = ask(LB_ITEMFROMPOINT, 0, MAKELPARAM(at.x, at.y));
        RECT place{};
        const bool inIt =
            HIWORD(found) == 0 && ask(LB_GETITEMRECT, LOWORD(found), reinterpret_cast<LPARAM>(&place)) > 0;
        return inIt && PtInRect(&place, at) != 0 ? LOWORD(found) : -1;
    }
    /// What a row says to the pointer: what the form has for it, else its text where that is cut.
    std::string tipOf(int row) const {
        if (row < 0 || row >= items_.count()) return items_.ToolTipText;
        const auto* const tips = dynamic_cast<const ItemTips*>(&items_);
        std::string tip = tips != nullptr && tips->tipOf ? tips->tipOf(row) : std::string();
        if (!tip.empty()) return tip;
        RECT client{};
        GetClientRect(widget(), &client);
        constexpr LONG kMargins = 8;
        return textSize(items_.item(row)).cx + kMargins > client.right ? items_.item(row) : items_.ToolTipText.get();
    }
    void tipOfRowAt(POINT at) {
        const int row = rowAt(at);
        if (row == tipped_) return;
        tipped_ = row;
        window().setTip(widget(), tipOf(row));
    }

    void showItems() {
        itemsStale_ = false;
        tipped_ = kNoRow;
        const bool keepPlace = items_.kind() == ControlKind::ListBox;
        const auto top = static_cast<WPARAM>(ask(LB_GETTOPINDEX));
        const int caret = current();
        ask(WM_SETREDRAW, FALSE);
        ask(LB_RESETCONTENT);
        LONG widest = 0;
        for (const std::string& each : items_.items()) {
            ask(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(toWide(each).c_str()));
            if (!keepPlace) widest = std::max(widest, textSize(each).cx);
        }
        if (keepPlace) {
            ask(LB_SETTOPINDEX, top);
            if (caret >= 0 && items_.MultiSelect && items_.count() > 0) {
                ask(LB_SETCARETINDEX, static_cast<WPARAM>(std::min(caret, items_.count() - 1)), TRUE);
            }
        } else {
            constexpr int kRoom = 8;
            setExtent(widest + kRoom);
        }
        ask(WM_SETREDRAW, TRUE);
        InvalidateRect(widget(), nullptr, TRUE);
        selectionStale_ = true;
    }
    void showSelection() {
        selectionStale_ = false;
        if (items_.MultiSelect) {
            ask(LB_SETSEL, FALSE, -1);
            for (const int row : items_.selectedIndices()) ask(LB_SETSEL, TRUE, row);
            if (items_.ListIndex >= 0) ask(LB_SETCARETINDEX, static_cast<WPARAM>(items_.ListIndex.get()), FALSE);
        } else {
            ask(LB_SETCURSEL, static_cast<WPARAM>(items_.ListIndex.get()));
        }
    }
    void takeSelection() {
        std::vector<bool> now(static_cast<std::size_t>(items_.count()));
        for (std::size_t i = 0; i < now.size(); ++i) now[i] = ask(LB_GETSEL, i) > 0;
        window().apply([&] {
            taking_ = true;
            for (std::size_t i = 0; items_.MultiSelect && i < now.size(); ++i) {
                if (items_.isSelected(static_cast<int>(i)) != now[i]) items_.select(static_cast<int>(i), now[i]);
            }
            items_.ListIndex = current();
            taking_ = false;
            items_.Click.raise();
        });
    }
    void doubleClick() {
        const int row = current();
        window().apply([&] {
            taking_ = true;
            items_.ListIndex = row;
            taking_ = false;
            items_.DblClick.raise();
        });
    }

    ItemsControl& items_;
    bool itemsStale_ = true;
    bool selectionStale_ = true;
    static constexpr int kNoRow = -2;
    int tipped_ = kNoRow;  ///< the row that the tip was set for; -1: none
    bool taking_ = false;  ///< the user's choice goes to the control: what that reports is an echo
};

}  // namespace

std::unique_ptr<Binder> makeListBinder(NativeWindow& window, ItemsControl& control) {
    return std::make_unique<ListBinder>(window, control);
}

}  // namespace corvane
