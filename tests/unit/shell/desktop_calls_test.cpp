// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/desktop_calls.h"

#include <gtest/gtest.h>

#include "fake/fake_files.h"
#include "unit/shell/drawn_rig.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

class LoopTried : public WokenLoop {
public:
    using WokenLoop::called;

protected:
    bool callSoon() override { return true; }
};

class TimersTried : public NumberedTimers {
public:
    int running = 0;

protected:
    std::uint64_t begin(int /*intervalMs*/) override { return static_cast<std::uint64_t>(++running); }
    void cease(std::uint64_t /*number*/) override { --running; }
};

class DialogsTried : public NativeDialogs {
public:
    using NativeDialogs::NativeDialogs;
    void help() override {}
    bool raiseBox() override { return isBoxUp() && ++raised > 0; }
    int raised = 0;
    std::function<void()> whileUp;

protected:
    std::optional<Answer> ask(const Box& /*box*/) override {
        whileUp();
        return std::nullopt;
    }
    void closeBox() override { whileUp = nullptr; }
    void showMenu(const std::vector<MenuEntry>& /*entries*/) override {}
    void closeMenu() override {}
};

class WindowsTried : public FormWindows {
public:
    WindowsTried(EventLoop& loop, const Screens& screens) : FormWindows(loop, screens), loop_(loop), on_(screens) {}
    int doubleClickTimeMs() override { return 400; }
    bool prefersReducedMotion() override { return false; }

protected:
    std::unique_ptr<BoundWindow> makeWindow(Form& form) override {
        return std::make_unique<PaintedWindow>(form, loop_, on_, std::make_unique<FakeDrawnSurface>());
    }
    void panelIs(BoundWindow* /*panel*/) override {}
    void bury(std::unique_ptr<BoundWindow> /*gone*/) override {}

private:
    EventLoop& loop_;
    const Screens& on_;
};

class InstanceTried : public Instance {
public:
    InstanceTried() : Instance(1000) {}
    using Instance::called;

protected:
    bool takePlace() override { return true; }
    bool deliver(const std::string& /*message*/) const override { return true; }
};

class DesktopCallsTest : public ::testing::Test {
protected:
    DesktopCallsTest() {
        taker_.OLEDragDrop.tie([this](const DropData& data) { seen_.push_back("files " + data.files.at(0)); });
        panel_.CloseRequest.tie([this](bool) { seen_.push_back("close"); });
        windows_.attach(panel_);
        panel_.Show();
        run();
    }
    ~DesktopCallsTest() override { windows_.detach(panel_); }
    void run() {
        while (!loop_.idle() && !loop_.stopped()) loop_.called();
    }
    void whileABoxIsUp(std::function<void()> what) {
        dialogs_.whileUp = std::move(what);
        dialogs_.messageBox("text", "Corvane", Buttons::Ok, Icon::Stop);
    }
    FakeDrawnSurface& surface() { return dynamic_cast<FakeDrawnSurface&>(windows_.windowOf(panel_)->frame()); }

    LoopTried loop_;
    TimersTried timers_;
    FakeScreens screens_;
    CallLog log_;
    FakeFiles files_{log_};
    InstanceTried instance_;
    DialogsTried dialogs_{loop_};
    WindowsTried windows_{loop_, screens_};
    StartedProgram process_{{}, "/folder", {files_, instance_, [](const std::string&) {}, [](const std::string&) {}}};
    Texts seen_;
    DesktopCalls calls_{{loop_, timers_, dialogs_, windows_, instance_, process_, [this] { seen_.push_back("quit"); }}};
    Form panel_{"frmPanel", FormStyle::Painted};
    CommandButton taker_{&panel_, "cmdTaker"};
};

TEST_F(DesktopCallsTest, ALaterStartGivesItsFilesAndBringsTheWindowsForward) {
    surface().told.clear();
    instance_.called({"/a.mid"});
    run();
    EXPECT_EQ(seen_, Texts{"files /a.mid"});
    const Texts told = surface().told;
    EXPECT_NE(std::find(told.begin(), told.end(), "activate"), told.end());
}

TEST_F(DesktopCallsTest, AStartWithoutFilesBringsThemForwardAlone) {
    surface().told.clear();
    instance_.called({});
    run();
    EXPECT_TRUE(seen_.empty());
    const Texts told = surface().told;
    EXPECT_NE(std::find(told.begin(), told.end(), "activate"), told.end());
}

TEST_F(DesktopCallsTest, WhatWaitsForAnAnswerComesForwardInstead) {
    whileABoxIsUp([this] {
        surface().told.clear();
        instance_.called({});
        EXPECT_EQ(dialogs_.raised, 1);
    });
    run();
    EXPECT_EQ(surface().told, Texts());
}

TEST_F(DesktopCallsTest, WhoAsksToCloseAnswersTheBoxFirst) {
    whileABoxIsUp([this] {
        calls_.askToClose();
        EXPECT_EQ(dialogs_.whileUp, nullptr) << "refused";
    });
    run();
    EXPECT_EQ(seen_, Texts{"close"});
}

TEST_F(DesktopCallsTest, TheEndStopsAllOfIt) {
    timers_.start(10, [] {});
    loop_.post([this] { seen_.push_back("late"); });
    process_.end();
    run();
    EXPECT_EQ(seen_, Texts{"quit"});
    EXPECT_EQ(timers_.running, 0);
    EXPECT_TRUE(loop_.stopped());
    EXPECT_FALSE(surface().isShown());
}

}  // namespace
}  // namespace corvane
