// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstdlib>
#include <optional>
#include <vector>

#include "forms/row_habits.h"
#include "shell/native/list_rows.h"
#include "windows/drop.h"
#include "windows/native/native_form_window.h"
#include "windows/windowing/shown_text.h"

namespace corvane {

namespace {

DWORD styleOf(const ItemsControl& control) {
    const DWORD many = control.MultiSelect ? static_cast<DWORD>(LBS_EXTENDEDSEL) : 0U;
    return WS_VSCROLL | WS_HSCROLL | static_cast<DWORD>(LBS_NOTIFY | LBS_NOINTEGRALHEIGHT) | many;
}

class ListControl : public SystemControl, public NativeList {
public:
    ListControl(NativeWindow& window, const ItemsControl& control, NativeEvents& told)
        : SystemControl(window, control, told, WC_LISTBOXW, styleOf(control), WS_EX_CLIENTEDGE), items_(control) {
        if (items_.OLEDragDrop.isTied()) DragAcceptFiles(handle(), TRUE);
        const auto* const rows = dynamic_cast<const MovesRows*>(&control);
        movesRows_ = rows != nullptr && rows->moveRows;
    }

    void refresh(bool keepPlace) override {
        tipped_ = kNoRow;
        const auto top = static_cast<WPARAM>(ask(LB_GETTOPINDEX));
        const int caret = current();
        ask(WM_SETREDRAW, FALSE);
        ask(LB_RESETCONTENT);
        int widest = 0;
        for (const std::string& each : items_.items()) {
            ask(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(shownText(each).c_str()));
            if (!keepPlace) widest = std::max(widest, textSize(each).width);
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
        InvalidateRect(handle(), nullptr, TRUE);
    }
    void setExtent(int pixels) override {
        if (ask(LB_GETHORIZONTALEXTENT) != pixels) ask(LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(pixels));
    }
    void select(const std::vector<RowRange>& rows, int current) override {
        if (!items_.MultiSelect) {
            ask(LB_SETCURSEL, static_cast<WPARAM>(current));
            return;
        }
        ask(LB_SETSEL, FALSE, -1);
        for (const RowRange& each : rows) {
            for (int row = each.first; row <= each.last; ++row) ask(LB_SETSEL, TRUE, row);
        }
        if (current >= 0) ask(LB_SETCARETINDEX, static_cast<WPARAM>(current), FALSE);
    }
    void setTip(const std::string& text) override {
        tip_ = text;
        tipped_ = kNoRow;
        SystemControl::setTip(text);
    }

    void command(int code) override {
        if (code == LBN_SELCHANGE) events().rowsSelected(rangesOf(selectedRows()), current());
        if (code == LBN_DBLCLK) events().opened(current());
    }
    /// In a folder list Enter goes into the folder.
    bool takesEnter() const override { return items_.kind() == ControlKind::FolderBox && current() >= 0; }

protected:
    std::optional<LRESULT> message(UINT message, WPARAM first, LPARAM second) override {
        if (message == WM_DROPFILES) {
            const DropData data = filesOf(reinterpret_cast<HGLOBAL>(first));
            DragFinish(reinterpret_cast<HDROP>(first));
            events().dropped(data);
            return 0;
        }
        if (movesRows_ && message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) {
            if (drag(message, first, {GET_X_LPARAM(second), GET_Y_LPARAM(second)})) return 0;
        }
        if (message == WM_CAPTURECHANGED) endDrag();
        const bool keyDown = message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
        if (keyDown && events().key({static_cast<int>(first), shiftState()})) return 0;
        if (message == WM_KEYDOWN && first == VK_RETURN && takesEnter()) {
            events().opened(current());
            return 0;
        }
        if (message == WM_MOUSEMOVE) tipOfRowAt({GET_X_LPARAM(second), GET_Y_LPARAM(second)});
        return SystemControl::message(message, first, second);
    }

private:
    int current() const { return static_cast<int>(ask(items_.MultiSelect ? LB_GETCARETINDEX : LB_GETCURSEL)); }
    std::vector<int> selectedRows() const {
        std::vector<int> rows;
        for (int row = 0; row < items_.count(); ++row) {
            if (ask(LB_GETSEL, static_cast<WPARAM>(row)) > 0) rows.push_back(row);
        }
        return rows;
    }
    /// -1: below the last one.
    int rowAt(POINT at) const {
        const LRESULT found = ask(LB_ITEMFROMPOINT, 0, MAKELPARAM(at.x, at.y));
        RECT place{};
        const bool inIt =
            HIWORD(found) == 0 && ask(LB_GETITEMRECT, LOWORD(found), reinterpret_cast<LPARAM>(&place)) > 0;
        return inIt && PtInRect(&place, at) != 0 ? LOWORD(found) : -1;
    }
    /// The left button on a row, without Shift or Ctrl, and what follows until it comes up. True: the list of the
    /// system is not to see it, which would select the rows on the way.
    bool drag(UINT message, WPARAM keys, POINT at) {
        if (message == WM_LBUTTONDOWN && (keys & (MK_SHIFT | MK_CONTROL)) == 0 && rowAt(at) >= 0) return grab(at);
        if (!grabbed_) return false;
        if (message == WM_MOUSEMOVE) dragTo(at);
        if (message == WM_LBUTTONUP) return endPress();
        return message == WM_MOUSEMOVE;
    }
    /// True: one of several selected rows, which stay selected until it is known whether they are dragged.
    bool grab(POINT at) {
        grabbed_ = at;
        isHeld_ = ask(LB_GETSEL, static_cast<WPARAM>(rowAt(at))) > 0 && ask(LB_GETSELCOUNT) > 1;
        if (!isHeld_) return false;
        SetFocus(handle());
        SetCapture(handle());
        return true;
    }
    bool endPress() {
        const std::optional<int> before = draggedTo_;
        const LPARAM from = MAKELPARAM(grabbed_->x, grabbed_->y);
        const bool wasHeld = isHeld_;
        endDrag();
        if (wasHeld) ReleaseCapture();
        if (!before && !wasHeld) return false;
        if (!before) DefSubclassProc(handle(), WM_LBUTTONDOWN, MK_LBUTTON, from);
        // Where it went down: the list's own release would select as far as the pointer is.
        if (!before || !wasHeld) DefSubclassProc(handle(), WM_LBUTTONUP, 0, from);
        if (before) events().rowsDragged(*before);
        return true;
    }
    /// The row in front of which a release would put the rows, with a mark beside it; near an edge the list goes on.
    void dragTo(POINT at) {
        const bool isFar = std::abs(at.x - grabbed_->x) >= GetSystemMetrics(SM_CXDRAG) ||
                           std::abs(at.y - grabbed_->y) >= GetSystemMetrics(SM_CYDRAG);
        if (!draggedTo_ && !isFar) return;
        POINT onScreen = at;
        ClientToScreen(handle(), &onScreen);
        LBItemFromPt(handle(), onScreen, TRUE);  // scrolls
        const auto rowHeight = std::max(1, static_cast<int>(ask(LB_GETITEMHEIGHT)));
        const int y = std::clamp(static_cast<int>(at.y), 0, std::max(0, clientSize().height - 1));
        const int row = static_cast<int>(ask(LB_GETTOPINDEX)) + (y + rowHeight / 2) / rowHeight;
        draggedTo_ = std::min(row, items_.count());
        DrawInsert(window().handle(), handle(), std::min(row, items_.count() - 1));
    }
    void endDrag() {
        if (draggedTo_) DrawInsert(window().handle(), handle(), -1);
        grabbed_.reset();
        draggedTo_.reset();
    }
    void tipOfRowAt(POINT at) {
        const int row = rowAt(at);
        if (row == tipped_) return;
        constexpr int kMargins = 8;
        const bool cut =
            row >= 0 && row < items_.count() && textSize(items_.item(row)).width + kMargins > clientSize().width;
        const std::string tip = rowTip(items_, row, cut);
        SystemControl::setTip(tip.empty() ? tip_ : tip);
        tipped_ = row;
    }

    const ItemsControl& items_;
    bool movesRows_ = false;
    std::optional<POINT> grabbed_;  ///< where the button went down on a row
    bool isHeld_ = false;           ///< the list of the system has not seen that
    std::optional<int> draggedTo_;  ///< rows are being dragged
    std::string tip_;               ///< of the list itself
    static constexpr int kNoRow = -2;
    int tipped_ = kNoRow;  ///< the row that the tip was set for; -1: none
};

}  // namespace

std::unique_ptr<NativeList> NativeWindow::makeList(const ItemsControl& control, NativeEvents& events) {
    return std::make_unique<ListControl>(*this, control, events);
}

}  // namespace corvane
