// SPDX-License-Identifier: GPL-3.0-or-later
// What every window is told of the machine: its sleep, and its screens.
#include <gtest/gtest.h>

#include "winapi/program/sleep_watch.h"
#include "windows/windowing/windows_windows.h"

namespace corvane {
namespace {

struct MachineNews : ::testing::Test {
    MachineNews() {
        context.powerTold = [this](WPARAM what) { watch.heard(what); };
        form.SetSize(200 * kTwipsPerPixel, 100 * kTwipsPerPixel);
        form.Move(50 * kTwipsPerPixel, 60 * kTwipsPerPixel);
        other.SetSize(40 * kTwipsPerPixel, 30 * kTwipsPerPixel);
        windows.attach(form);
        windows.attach(other);
        form.Show();
        loop.runUntil([] { return false; }, 50);
    }
    ~MachineNews() override {
        windows.detach(other);
        windows.detach(form);
    }
    HWND handleOf(const Form& of) const { return dynamic_cast<SystemWindow&>(windows.windowOf(of)->frame()).handle(); }
    /// As the system does: all windows, one after the other.
    void tellAll(UINT message, WPARAM first) {
        for (const Form* each : {&form, &other}) SendMessageW(handleOf(*each), message, first, 0);
    }
    RECT placeNow() const {
        RECT place{};
        GetWindowRect(handleOf(form), &place);
        return place;
    }

    WindowsLoop loop;
    DesktopContext context{loop, 1.0, nullptr};
    WindowsWindows windows{context};
    Form form{"frmTried", FormStyle::Painted};
    Form other{"frmOther", FormStyle::Media};
    std::vector<std::string> told;
    SleepWatch watch{loop, [this](bool sleeps) { told.emplace_back(sleeps ? "sleeps" : "awake"); }};
};

using Told = std::vector<std::string>;

/// WIN-79: What plays is held before the machine sleeps, and goes on once when it is awake
TEST_F(MachineNews, TheSleepIsToldBeforeTheSystemIsAnsweredAndOnce) {
    SendMessageW(handleOf(form), WM_POWERBROADCAST, PBT_APMSUSPEND, 0);
    EXPECT_EQ(told, Told{"sleeps"}) << "when the answer comes the machine may be asleep";
    SendMessageW(handleOf(other), WM_POWERBROADCAST, PBT_APMSUSPEND, 0);
    tellAll(WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC);
    tellAll(WM_POWERBROADCAST, PBT_APMRESUMESUSPEND);
    loop.runUntil([this] { return told.size() > 2; }, 100);
    EXPECT_EQ(told, (Told{"sleeps", "awake"}));
}

/// WIN-79
TEST_F(MachineNews, OtherNewsOfThePowerMeanNothing) {
    tellAll(WM_POWERBROADCAST, PBT_APMPOWERSTATUSCHANGE);
    tellAll(WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC);
    loop.runUntil([this] { return !told.empty(); }, 100);
    EXPECT_EQ(told, Told{}) << "it did not sleep";
}

/// WIN-80: A panel that goes out of sight with its screen is brought back as it stands
TEST_F(MachineNews, AScreenThatGoesBringsThePanelBack) {
    for (const auto& [message, first] :
         {std::pair<UINT, WPARAM>{WM_DISPLAYCHANGE, 32}, {WM_SETTINGCHANGE, SPI_SETWORKAREA}}) {
        SetWindowPos(handleOf(form), nullptr, -5000, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        loop.runUntil([] { return false; }, 50);
        ASSERT_LT(placeNow().right, 0) << "it is out of sight";
        tellAll(message, first);
        EXPECT_TRUE(loop.runUntil([this] { return placeNow().left >= 0 && placeNow().top >= 0; }, 2000)) << message;
        EXPECT_EQ(context.toPixels(form.Left), placeNow().left) << "the form knows its place";
    }
}

/// WIN-80
TEST_F(MachineNews, APanelInSightStaysAndOtherSettingsMoveNothing) {
    const RECT before = placeNow();
    tellAll(WM_DISPLAYCHANGE, 32);
    loop.runUntil([] { return false; }, 100);
    EXPECT_EQ(placeNow().left, before.left);
    SetWindowPos(handleOf(form), nullptr, -5000, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    tellAll(WM_SETTINGCHANGE, SPI_SETCLIENTAREAANIMATION);
    EXPECT_FALSE(loop.runUntil([this] { return placeNow().left >= 0; }, 200));
}

}  // namespace
}  // namespace corvane
