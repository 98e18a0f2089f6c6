// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

#include "shell/windowing/make_drawn.h"
#include "unit/windows/other_program.h"
#include "windows/windowing/box_watch.h"
#include "windows/windowing/media_canvas.h"
#include "windows/windowing/windows_dialogs.h"

namespace corvane {
namespace {

/// What was true when a box was shown, before a window manager had its say: that of this desktop puts each new window
/// where it likes and gives it the focus.
struct Shown {
    HWND front = nullptr;
    RECT place{};
    bool activated = false;  ///< the box was to get the keyboard by being shown
} shown;

LRESULT CALLBACK noteShown(int code, WPARAM first, LPARAM second) {
    const auto& told = *reinterpret_cast<CWPRETSTRUCT*>(second);
    const bool placed = code == HC_ACTION && told.message == WM_WINDOWPOSCHANGED && told.hwnd == BoxWatch::box();
    const UINT how = placed ? reinterpret_cast<WINDOWPOS*>(told.lParam)->flags : 0;
    if ((how & SWP_SHOWWINDOW) != 0) {
        shown.front = GetForegroundWindow();
        shown.activated = (how & SWP_NOACTIVATE) == 0;
        GetWindowRect(told.hwnd, &shown.place);
    }
    return CallNextHookEx(nullptr, code, first, second);
}

/// A panel, and what is looked at while a box is up: each step until it says that it is over.
struct BoxOfAPanel : ::testing::Test {
    using Step = std::function<bool(HWND box)>;

    BoxOfAPanel() {
        form.SetSize(200 * kTwipsPerPixel, 100 * kTwipsPerPixel);
        form.Move(300 * kTwipsPerPixel, 200 * kTwipsPerPixel);
        context.panel = canvas.handle();
        window->bind();
    }
    ~BoxOfAPanel() override {
        window->unbind();
        UnhookWindowsHookEx(hook);
    }

    /// The answer of a box that the steps were taken under; empty: a step was not over in time.
    std::optional<Answer> ask(std::vector<Step> steps) {
        std::size_t at = 0;
        int looks = 0;
        MessageWindow ticks([&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message != WM_TIMER) return std::nullopt;
            const HWND box = BoxWatch::box();
            if (box == nullptr || IsWindowVisible(box) == 0) return 0;
            if (at < steps.size() && steps[at](box)) {
                ++at;
                looks = 0;
            } else if (++looks > 300) {
                dialogs.refuse();
            }
            return 0;
        });
        SetTimer(ticks.handle(), 1, USER_TIMER_MINIMUM, nullptr);
        const Answer answer =
            dialogs.messageBox("gone.wav Can't open!!", "Corvane", Buttons::AbortRetryIgnore, Icon::Exclamation);
        return at == steps.size() ? std::optional(answer) : std::nullopt;
    }
    static bool isInFront(HWND box) { return GetForegroundWindow() == box; }
    /// Enter, to whatever has the keyboard in the box.
    static bool pressEnter(HWND box) {
        const HWND focus = GetFocus();
        if (focus == nullptr || IsChild(box, focus) == 0) return false;
        PostMessageW(focus, WM_KEYDOWN, VK_RETURN, 1);
        return true;
    }

    HHOOK hook = SetWindowsHookExW(WH_CALLWNDPROCRET, &noteShown, nullptr, GetCurrentThreadId());
    WindowsLoop loop;
    DesktopContext context{loop, 1.0, nullptr};
    Form form{"frmTried", FormStyle::Painted};
    std::unique_ptr<DrawnWindow> window = makeDrawn<CanvasWindow, MediaCanvas>(form, context);
    CanvasWindow& canvas = static_cast<CanvasWindow&>(window->surface());
    WindowsDialogs dialogs{context};
};

/// WIN-62: A box that comes by itself leaves the keyboard to the program that has it, until the user turns to this one
TEST_F(BoxOfAPanel, LeavesTheKeyboardToTheProgramThatHasIt) {
    form.Show();
    const test::OtherProgram other;
    ASSERT_TRUE(other.bringToFront(loop));
    const Step click = [&](HWND) {  // on the panel, which the box shuts
        SendMessageW(canvas.handle(), WM_SETCURSOR, reinterpret_cast<WPARAM>(canvas.handle()),
                     MAKELPARAM(HTERROR, WM_LBUTTONDOWN));
        return true;
    };
    EXPECT_EQ(ask({click, isInFront, pressEnter}), Answer::Abort);
    EXPECT_EQ(shown.front, other.window());
    EXPECT_FALSE(shown.activated);
}

/// WIN-62
TEST_F(BoxOfAPanel, IsAnsweredWhereItLiesWhenTheProgramEnds) {
    form.Show();
    const test::OtherProgram other;
    ASSERT_TRUE(other.bringToFront(loop));
    const Step end = [&](HWND) {
        dialogs.refuse();
        return true;
    };
    EXPECT_EQ(ask({end}), Answer::Abort);
}

/// WIN-62
TEST_F(BoxOfAPanel, HasTheKeyboardWhereItsProgramHasIt) {
    form.Show();
    ASSERT_TRUE(loop.runUntil(
        [this] {
            canvas.activate();
            return GetForegroundWindow() == canvas.handle();
        },
        5000));
    EXPECT_EQ(ask({isInFront, pressEnter}), Answer::Abort);
    EXPECT_TRUE(shown.activated) << "not by the window manager alone";
}

/// WIN-62
TEST_F(BoxOfAPanel, HasTheKeyboardBeforeThereIsAWindow) {
    const test::OtherProgram other;
    ASSERT_TRUE(other.bringToFront(loop));
    EXPECT_EQ(ask({isInFront, pressEnter}), Answer::Abort) << "what was just started is waited for";
    EXPECT_NE(shown.front, other.window());
    EXPECT_TRUE(shown.activated);
}

TEST_F(BoxOfAPanel, LiesOverThePanel) {
    form.Show();
    loop.runUntil([] { return false; }, 200);
    RECT own{};
    GetWindowRect(canvas.handle(), &own);
    const Step end = [&](HWND) {
        dialogs.refuse();
        return true;
    };
    EXPECT_EQ(ask({end}), Answer::Abort);
    EXPECT_NEAR(shown.place.left + shown.place.right, own.left + own.right, 2);
    EXPECT_NEAR(shown.place.top + shown.place.bottom, own.top + own.bottom, 2);
}

}  // namespace
}  // namespace corvane
