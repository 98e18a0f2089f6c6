// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/player_fixture.h"

namespace corvane {
namespace {

/// Every form of the player, unloaded from inside its own handlers.
class EveryForm : public PlayerFixture, public ::testing::WithParamInterface<FormId> {
protected:
    EveryForm() {
        machine.files.addFolder("/app");
        setUpPanel();
        machine.loop.enter([this] { form_ = &player.forms.load(GetParam()); });
        name_ = form_->name();
        machine.settle();
    }
    Form& form() { return *form_; }
    void expectGone() {
        EXPECT_EQ(player.forms.find(GetParam()), nullptr);
        EXPECT_EQ(machine.windows.find(name_), nullptr);
    }

    Form* form_ = nullptr;
    std::string name_;
};

/// MCI-02: It is made afresh for each use, and its end clears what pointed to it
/// COM-07
TEST_P(EveryForm, IsFoundAndLoadedOnce) {
    EXPECT_EQ(player.forms.find(GetParam()), &form());
    EXPECT_EQ(&player.forms.load(GetParam()), &form());
    EXPECT_LE(machine.log.count("windows.attach " + name_), 1);
}

/// COM-08: A form may be unloaded by its own handler, timer or media event
TEST_P(EveryForm, MayBeUnloadedByItsOwnHandler) {
    form().Click.tie([this] {
        Form& self = form();
        player.forms.unload(GetParam());
        expectGone();
        self.Caption = "still valid while its handler runs";
        for (Control* control : self.controls()) control->ToolTipText = "so are its controls";
    });
    machine.loop.enter([this] { form().Click.raise(); });
    machine.settle();
    expectGone();
}

/// IMG-22: Its end clears what pointed to it
/// MCI-02, MOVIE-36
TEST_P(EveryForm, GoesWithoutATraceWhenEverythingIsCleared) {
    machine.loop.enter([this] {
        player.forms.clear();
        form().Caption = "still valid";
    });
    EXPECT_TRUE(machine.windows.attached().empty());
    EXPECT_EQ(machine.timers.running(), 0);
    EXPECT_EQ(machine.media.liveControls(), 0);
}

class FormWithTimers : public EveryForm {};

/// COM-08
TEST_P(FormWithTimers, MayBeUnloadedByATimerOfItsOwn) {
    Timer* own = nullptr;
    for (Control* control : form().controls()) {
        if (control->kind() == ControlKind::Timer) own = static_cast<Timer*>(control);
    }
    ASSERT_NE(own, nullptr);
    int ticks = 0;
    own->Tick.tie([this, own, &ticks] {
        ++ticks;
        player.forms.unload(GetParam());
        own->Enabled = true;
    });
    own->Interval = 10;
    own->restart();
    machine.advance(100);
    expectGone();
    EXPECT_EQ(ticks, 1);
}

class FormWithMedia : public EveryForm {};

/// MCI-02, COM-08
TEST_P(FormWithMedia, MayBeUnloadedByAMediaEvent) {
    const auto leave = [this](const std::string&) { player.forms.unload(GetParam()); };
    if (GetParam() == FormId::MciWindow) {
        machine.media.mci()->Failed.tie(leave);
        machine.media.mci()->fail("broken");
    } else {
        machine.media.movie()->Failed.tie(leave);
        machine.media.movie()->fail("broken");
    }
    machine.settle();
    expectGone();
    EXPECT_EQ(machine.media.liveControls(), 0);
}

std::string formName(const ::testing::TestParamInfo<FormId>& info) {
    static constexpr std::array<const char*, kForms> kNames = {"Startup",     "MainPanel",   "MenuWindow", "MciWindow",
                                                               "MovieWindow", "ImageWindow", "FileList",   "Custom",
                                                               "Find",        "Conveniences"};
    return kNames.at(static_cast<std::size_t>(info.param));
}

INSTANTIATE_TEST_SUITE_P(Forms, EveryForm,
                         ::testing::Values(FormId::Startup, FormId::MainPanel, FormId::MenuWindow, FormId::MciWindow,
                                           FormId::MovieWindow, FormId::ImageWindow, FormId::FileList, FormId::Custom,
                                           FormId::Find, FormId::Conveniences),
                         &formName);
INSTANTIATE_TEST_SUITE_P(Forms, FormWithTimers,
                         ::testing::Values(FormId::Startup, FormId::MainPanel, FormId::MovieWindow, FormId::ImageWindow,
                                           FormId::Custom),
                         &formName);
INSTANTIATE_TEST_SUITE_P(Forms, FormWithMedia, ::testing::Values(FormId::MciWindow, FormId::MovieWindow), &formName);

}  // namespace
}  // namespace corvane
