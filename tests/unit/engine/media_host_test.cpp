// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/media_host.h"

#include "engine/media_time.h"
#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

/// What a medium of the test has been asked, and how many of it live.
struct Seen {
    int alive = 0;
    std::vector<std::string> calls;
    std::string closesIn;  ///< the call in which the user closes the file
};

/// A medium of a kind that the player does not know otherwise: it plays in the MCI window, and may be closed by each of
/// its calls.
class Sample : public OpenMedium {
public:
    Sample(Player& player, MediaType type, Seen& seen) : OpenMedium(player, std::move(type)), seen_(seen) {
        ++seen_.alive;
    }
    ~Sample() override { --seen_.alive; }
    FormId window() const override { return FormId::MciWindow; }
    void makeReady(const std::string& ahead) const override { called("makeReady " + ahead); }
    void open() override { called("open"); }
    void close(bool /*keepImage*/) override { seen_.calls.emplace_back("close"); }
    void resume() override { called("resume"); }
    void pause() override { called("pause"); }
    void step() override { called("step"); }
    void back() override { called("back"); }
    void progress() override { called("progress"); }
    std::int64_t lengthUs() const override { return 20; }
    std::int64_t positionUs() const override { return 25; }
    bool isProgressing() const override { return true; }
    void seekTo(std::int64_t us) override { called("seekTo " + std::to_string(us)); }
    void seekToSlide(std::int32_t x) override { called("seekToSlide " + std::to_string(x)); }
    std::optional<std::int32_t> position() const override { return 7; }
    void leaveWholeScreen() override { called("leaveWholeScreen"); }
    bool takeWholeScreenBack() override {
        called("takeWholeScreenBack");
        return true;
    }
    bool hold(bool back, bool shift) override {
        called(std::string("hold") + (back ? " back" : "") + (shift ? " shift" : ""));
        return true;
    }
    void endHold(bool steppedFast) override { called(steppedFast ? "endHold fast" : "endHold"); }

private:
    void called(const std::string& call) const {
        seen_.calls.push_back(call);
        if (call.substr(0, call.find(' ')) != seen_.closesIn) return;
        CloseFile(player_, false);
        EXPECT_FALSE(player_.media.isOpen());
        EXPECT_EQ(seen_.alive, 1) << call << " runs on in it";
    }

    Seen& seen_;
};

class Hosted : public PanelHands {
protected:
    Hosted() {
        player.media.registerMedium(
            mkMciFile, [this](MediaType type) { return std::make_shared<Sample>(player, std::move(type), seen); });
    }
    Seen seen;
};

TEST_F(Hosted, AKindIsMadeByWhatIsRegisteredForIt) {
    const auto made = player.media.make("/m/tune.mid");
    EXPECT_EQ(seen.alive, 1);
    EXPECT_EQ(made->type().kind, mkMciFile);
    EXPECT_STREQ(made->type().deviceType, "Sequencer");
    EXPECT_FALSE(player.media.isOpen()) << "it is not open yet";
    EXPECT_NE(player.media.make(kMovie)->window(), FormId::MciWindow);
    EXPECT_EQ(seen.alive, 1);
}

TEST_F(Hosted, TheKindOfTheOpenMediumIsTold) {
    player.media.setCurrent(player.media.make(kSound));
    EXPECT_EQ(player.gMediaKind, mkMciFile);
    EXPECT_TRUE(player.media.playsIn(FormId::MciWindow));
    EXPECT_FALSE(player.media.playsIn(FormId::ImageWindow));
    player.media.setCurrent(nullptr);
    EXPECT_EQ(player.gMediaKind, mkNone);
    EXPECT_FALSE(player.media.playsIn(FormId::MciWindow));
    EXPECT_EQ(seen.alive, 0);
}

TEST_F(Hosted, LivesFromItsOpeningUntilItIsClosed) {
    bring(kSound, "playing");
    EXPECT_EQ(seen.alive, 1) << "what makes the next file ready does not stay";
    act([this] { NextFile(player); });
    EXPECT_EQ(seen.alive, 1);
    act([this] { CloseFile(player, false); });
    EXPECT_EQ(seen.alive, 0);
    EXPECT_EQ(seen.calls, (std::vector<std::string>{"open", "close", "open", "close"}));
}

TEST_F(Hosted, IsAskedByTheProceduresAndThePanel) {
    bring(kSound, "playing");
    PauseFile(player);
    NextFile(player);
    PrevFile(player);
    PlayFile(player);
    seekOpenFile(player, 15);
    EXPECT_EQ(openLengthUs(player), 20);
    EXPECT_EQ(openPositionUs(player), 20) << "inside the length";
    EXPECT_TRUE(isProgressing(player));
    press(panel().pctSlide, kLeft);
    machine.loop.enter([this] { panel().pctSlide.MouseMove.raise({kLeftButton, 0, 900, 0}); });
    release(panel().pctSlide, kLeft);
    hold(kPrev, 800, kShiftMask);
    EXPECT_EQ(seen.calls, (std::vector<std::string>{"open", "pause", "step", "back", "resume", "seekTo 15", "pause",
                                                    "seekToSlide 900", "resume", "endHold", "leaveWholeScreen",
                                                    "hold back shift", "takeWholeScreenBack", "endHold"}));
}

/// Outside of any handler as well, where nothing else would keep it.
TEST_F(Hosted, MayBeClosedInsideEachOfItsCalls) {
    setUp(kSound);
    const auto again = [this](const char* call, bool paused, const std::function<void()>& does) {
        SCOPED_TRACE(call);
        seen.closesIn = "";
        PlayFile(player);
        if (paused) PauseFile(player);
        seen.closesIn = call;
        seen.calls.clear();
        does();
        EXPECT_EQ(seen.alive, 0) << "it goes when the call is over";
        EXPECT_EQ(seen.calls.back(), "close") << "and was asked";
        EXPECT_EQ(state(), "stopped");
    };
    const auto drag = [this] {
        panel().pctSlide.MouseDown.raise(kLeft);
        panel().pctSlide.MouseMove.raise({kLeftButton, 0, 900, 0});
    };
    const auto pressNext = [this] { panel().cmdMainPanel[kNext].MouseDown.raise(kLeft); };
    again("pause", false, [this] { PauseFile(player); });
    again("step", true, [this] { NextFile(player); });
    again("back", true, [this] { PrevFile(player); });
    again("resume", true, [this] { PlayFile(player); });
    again("seekTo", false, [this] { seekOpenFile(player, 10); });
    again("seekToSlide", false, drag);
    again("leaveWholeScreen", false, pressNext);
    again("endHold", false, pressNext);
    again("takeWholeScreenBack", false, [this] { panel().cmdMainPanel[kNext].MouseUp.raise(kLeft); });
    again("hold", false, [&] {
        pressNext();
        panel().tmrPrevNext.Tick.raise();
    });
    again("progress", false, [this] {
        player.forms.load<MciWindowControls>().mmcMci->StatusUpdate.raise();
        player.forms.unload<MciWindowControls>();
    });
    CloseFile(player, false);
    seen.closesIn = "open";
    PlayFile(player);
    EXPECT_EQ(seen.alive, 0);
}

TEST_F(Hosted, GivesWayToAMediumThatPlaysInAnotherWindow) {
    bring(kSound, "playing");
    seen.calls.clear();
    setList({"/m/second.wav", kMovie});
    PlayFile(player);
    EXPECT_EQ(seen.calls, (std::vector<std::string>{"open"})) << "the window is the same: it is opened anew in it";
    EXPECT_EQ(seen.alive, 1);
    seen.calls.clear();
    player.gFileIndex = 1;
    PlayFile(player);
    EXPECT_EQ(seen.calls, (std::vector<std::string>{"close"}));
    EXPECT_EQ(seen.alive, 0);
}

TEST_F(Hosted, TheFirstFileIsMadeReadyWhereTheListBeginsByItself) {
    setUp(kSound);
    prepareFirst(player);
    EXPECT_TRUE(seen.calls.empty());
    for (bool* reason : {&player.gAutoPlay, &player.playsAtStart}) {
        seen.calls.clear();
        *reason = true;
        prepareFirst(player);
        *reason = false;
        EXPECT_EQ(seen.calls, (std::vector<std::string>{std::string("makeReady ") + kSound}));
    }
    seen.calls.clear();
    player.gAutoPlay = true;
    setList({});
    prepareFirst(player);
    EXPECT_TRUE(seen.calls.empty());
}

}  // namespace
}  // namespace corvane
