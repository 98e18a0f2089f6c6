// SPDX-License-Identifier: GPL-3.0-or-later
// Names that strangers made are shown as text, wherever they are shown.
#include "windows/windowing/shown_text.h"

#include <gtest/gtest.h>

#include <memory>

#include "forms/item_tips.h"
#include "shell/windowing/make_drawn.h"
#include "winapi/text.h"
#include "windows/native/native_form_window.h"
#include "windows/windowing/box_watch.h"
#include "windows/windowing/media_canvas.h"
#include "windows/windowing/tool_tip.h"
#include "windows/windowing/windows_dialogs.h"

namespace corvane {
namespace {

/// Would be read as "songexe.mp3".
const std::string kTurned =
    "song\xE2\x80\xAE"
    "3pm.exe";
constexpr wchar_t kSeen[] =
    L"song\xFFFD"
    L"3pm.exe";

std::wstring textOf(HWND window) {
    std::wstring text(4096, L'\0');
    text.resize(
        static_cast<std::size_t>(SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

/// What the tip of a window's part says.
std::wstring tipOf(HWND owner, HWND part) {
    std::wstring found;
    for (HWND tips = nullptr; (tips = FindWindowExW(nullptr, tips, TOOLTIPS_CLASSW, nullptr)) != nullptr;) {
        if (GetWindow(tips, GW_OWNER) != owner) continue;
        std::wstring text(4096, L'\0');
        TOOLINFOW tool{};
        tool.cbSize = sizeof tool;
        tool.hwnd = owner;
        tool.uId = reinterpret_cast<UINT_PTR>(part);
        tool.lpszText = text.data();
        SendMessageW(tips, TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
        if (text[0] != L'\0') found = text.c_str();
    }
    return found;
}

/// WIN-63
TEST(ShownText, OldBytesAreReadFirst) {
    EXPECT_EQ(shownText(kTurned), kSeen);
    EXPECT_EQ(shownText("caf\xE9\n.mp3"), toWide("caf\xE9 .mp3"));
    EXPECT_EQ(shownTip(std::string(100'000, 'w')).size(), 600U);
}

struct TurnedDialog : ::testing::Test {
    TurnedDialog() {
        form.SetSize(400 * kTwipsPerPixel, 300 * kTwipsPerPixel);
        form.Caption = kTurned;
        for (Control* each : std::initializer_list<Control*>{&label, &list, &choice, &field, &check}) {
            each->Move(10 * kTwipsPerPixel, 10 * kTwipsPerPixel);
            each->SetSize(120 * kTwipsPerPixel, 60 * kTwipsPerPixel);
            each->ToolTipText = kTurned;
        }
        label.Caption = kTurned;
        check.Caption = kTurned;
        field.Text = kTurned;
        list.addItem(kTurned);
        choice.addItem(kTurned);
        window.bind();
    }
    ~TurnedDialog() override { window.unbind(); }
    std::wstring row(const Control& control, UINT message) const {
        std::wstring text(4096, L'\0');
        const LRESULT length =
            SendMessageW(window.widgetOf(control), message, 0, reinterpret_cast<LPARAM>(text.data()));
        text.resize(static_cast<std::size_t>(std::max<LRESULT>(length, 0)));
        return text;
    }

    WindowsLoop loop;
    DesktopContext context{loop, 1.0, nullptr};
    Form form{"frmTried", FormStyle::Dialog};
    Label label{&form, "lblTried"};
    ListBox list{&form, "lstTried"};
    ComboBox choice{&form, "cboTried"};
    TextBox field{&form, "txtTried"};
    CheckBox check{&form, "chkTried"};
    NativeWindow window{form, context};
};

/// WIN-63: No name turns the writing of a box, a tip, a row, a field or a title around, or makes a box wider than the
///     screen
TEST_F(TurnedDialog, ShowsNamesAsText) {
    EXPECT_EQ(textOf(window.handle()), kSeen);
    for (const Control* each : std::initializer_list<const Control*>{&label, &field}) {
        EXPECT_EQ(textOf(window.widgetOf(*each)), kSeen) << each->name();
    }
    EXPECT_TRUE(textOf(window.widgetOf(check)).ends_with(kSeen)) << "behind the sign of its access key";
    EXPECT_EQ(row(list, LB_GETTEXT), kSeen);
    EXPECT_EQ(row(choice, CB_GETLBTEXT), kSeen);
    EXPECT_EQ(tipOf(window.handle(), window.widgetOf(label)), kSeen);
    EXPECT_EQ(std::string(field.Text), kTurned) << "it is only shown so";
}

struct TurnedPanel : ::testing::Test {
    TurnedPanel() {
        form.SetSize(200 * kTwipsPerPixel, 100 * kTwipsPerPixel);
        form.Caption = kTurned;
        window->bind();
    }
    ~TurnedPanel() override { window->unbind(); }

    WindowsLoop loop;
    DesktopContext context{loop, 1.0, nullptr};
    Form form{"frmTried", FormStyle::Painted};
    std::unique_ptr<DrawnWindow> window = makeDrawn<CanvasWindow, MediaCanvas>(form, context);
    CanvasWindow& canvas = static_cast<CanvasWindow&>(window->surface());
};

/// WIN-63
TEST_F(TurnedPanel, ShowsNamesAsText) {
    EXPECT_EQ(textOf(canvas.handle()), kSeen);
    EXPECT_EQ(canvas.labelWidth(kTurned, 20), canvas.labelWidth(fromWide(kSeen), 20)) << "drawn as it is measured";
}

/// WIN-63
TEST_F(TurnedPanel, AsksForATipAndShowsItAsText) {
    ToolTip tip(canvas.handle());
    NMTTDISPINFOW asked{};
    asked.hdr.code = static_cast<UINT>(TTN_GETDISPINFOW);
    for (HWND each = nullptr; (each = FindWindowExW(nullptr, each, TOOLTIPS_CLASSW, nullptr)) != nullptr;) {
        asked.hdr.hwndFrom = each;
        if (tip.notify(reinterpret_cast<LPARAM>(&asked), [] { return kTurned; })) break;
    }
    ASSERT_NE(asked.lpszText, nullptr);
    EXPECT_STREQ(asked.lpszText, kSeen);
}

/// WIN-63
TEST_F(TurnedPanel, ABoxShowsNamesAsTextAndFitsTheScreen) {
    WindowsDialogs dialogs(context);
    std::wstring title;
    std::wstring said;
    RECT place{};
    MessageWindow ticks([&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_TIMER) return std::nullopt;
        const HWND box = BoxWatch::box();
        if (box == nullptr || IsWindowVisible(box) == 0) return 0;
        title = textOf(box);
        GetWindowRect(box, &place);
        for (HWND each = nullptr; (each = FindWindowExW(box, each, WC_STATICW, nullptr)) != nullptr;) {
            if (std::wstring text = textOf(each); text.size() > said.size()) said = std::move(text);
        }
        dialogs.refuse();
        return 0;
    });
    SetTimer(ticks.handle(), 1, USER_TIMER_MINIMUM, nullptr);
    dialogs.messageBox(kTurned + "\nis not " + std::string(4000, 'w') + " there", kTurned, Buttons::Ok,
                       Icon::Exclamation);
    EXPECT_EQ(title, kSeen);
    EXPECT_TRUE(said.starts_with(std::wstring(kSeen) + L"\nis not w")) << fromWide(said);
    EXPECT_TRUE(said.ends_with(L"w there")) << fromWide(said);
    EXPECT_LE(place.right - place.left, GetSystemMetrics(SM_CXSCREEN));
}

}  // namespace
}  // namespace corvane
