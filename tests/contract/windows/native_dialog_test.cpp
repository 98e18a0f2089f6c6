// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/native_dialog_contract.h"
#include "contract/windows/media_rig.h"
#include "winapi/text.h"
#include "windows/native/native_form_window.h"

namespace corvane {
namespace {

class WindowsNativeStage : public test::LoopStage<NativeStage> {
public:
    void attach(Form& form) override {
        window_ = std::make_unique<NativeWindow>(form, context_);
        window_->bind();
        form.Show();
    }
    void detach() override {
        if (window_) window_->unbind();
    }

    void press(const CommandButton& button) override { send(button, BM_CLICK); }
    void toggle(const Control& control) override { send(control, BM_CLICK); }
    void type(const Control& control, const std::string& letters) override {
        HWND field = of(control);
        if (control.kind() == ControlKind::ComboBox) field = FindWindowExW(field, nullptr, WC_EDITW, nullptr);
        SetFocus(field);
        SendMessageW(field, EM_SETSEL, 1000, 1000);
        for (const char each : letters) SendMessageW(field, WM_CHAR, static_cast<WPARAM>(each), 1);
    }
    void choose(const ItemsControl& box, int row) override {
        send(box, CB_SETCURSEL, static_cast<WPARAM>(row));
        SendMessageW(window_->handle(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(of(box)), CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(of(box)));
    }
    void click(const ItemsControl& list, int row) override {
        send(list, WM_LBUTTONDOWN, MK_LBUTTON, rowAt(list, row));
        send(list, WM_LBUTTONUP, 0, rowAt(list, row));
    }
    void doubleClick(const ItemsControl& list, int row) override {
        click(list, row);
        send(list, WM_LBUTTONDBLCLK, MK_LBUTTON, rowAt(list, row));
        send(list, WM_LBUTTONUP, 0, rowAt(list, row));
    }
    void stepRight(const ScrollBar& bar) override { send(bar, WM_KEYDOWN, VK_RIGHT, 1); }

    std::string text(const Control& control) override {
        wchar_t shown[64] = {};
        GetWindowTextW(of(control), shown, 64);
        std::wstring text = shown;
        if (control.kind() != ControlKind::CommandButton) return fromWide(text);
        for (std::size_t at = text.find(L'&'); at != std::wstring::npos; at = text.find(L'&', at + 1)) {
            text.erase(at, 1);
        }
        return fromWide(text);
    }
    bool isOn(const Control& control) override { return send(control, BM_GETCHECK) == BST_CHECKED; }
    bool isUsable(const Control& control) override {
        return IsWindowVisible(of(control)) != 0 && IsWindowEnabled(of(control)) != 0;
    }
    std::vector<int> selected(const ItemsControl& list) override {
        std::vector<int> rows;
        for (int row = 0; row < list.count(); ++row) {
            if (send(list, LB_GETSEL, static_cast<WPARAM>(row)) > 0) rows.push_back(row);
        }
        return rows;
    }
    int value(const ScrollBar& bar) override { return static_cast<int>(send(bar, UDM_GETPOS32)); }
    int left(const Control& control) override {
        RECT place{};
        GetWindowRect(of(control), &place);
        return static_cast<int>(place.left);
    }

private:
    HWND of(const Control& control) const { return window_->widgetOf(control); }
    LRESULT send(const Control& control, UINT message, WPARAM first = 0, LPARAM second = 0) const {
        return SendMessageW(of(control), message, first, second);
    }
    LPARAM rowAt(const ItemsControl& list, int row) const {
        const auto height = static_cast<int>(send(list, LB_GETITEMHEIGHT));
        return MAKELPARAM(5, row * height + height / 2);
    }

    DesktopContext context_{loop_, 1.0, nullptr};
    std::unique_ptr<NativeWindow> window_;
};

std::unique_ptr<NativeStage> makeNative() { return std::make_unique<WindowsNativeStage>(); }

INSTANTIATE_TEST_SUITE_P(Windows, NativeDialogContract, ::testing::Values(&makeNative));

}  // namespace
}  // namespace corvane
