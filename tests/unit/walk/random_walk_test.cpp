// SPDX-License-Identifier: GPL-3.0-or-later
// Random commands in any order: whatever comes, the player stays in a sane state.
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "dialogs/forms.h"
#include "engine/media_session.h"
#include "fake/player_fixture.h"
#include "listedit/forms.h"
#include "panel/forms.h"
#include "players/forms.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;

constexpr int kCommands = 100000;
constexpr int kHoldInterval = 750;
constexpr int kCommandsOfOneRun = 4000;  // then the program is ended and started afresh

/// One run of the program with its machine.
class Walk {
public:
    Walk(unsigned seed, const Conveniences& ways) : random_(seed) {
        player.conveniences = ways;
        registerAllForms(player);
        machine.dialogs.whileUp = [this] { meanwhile(); };
        addMedia();
        setList();
        machine.files.add("/skin.csv", "slider,40,10,10,0,0,200,8,WHITE\nknob,24,300,10,0,0,60,60,1\n");
        player.gTextPath = "/skin.csv";
        player.gImageHide = pick(2) == 0;
        player.gInterval = static_cast<std::int16_t>(pick(3));
        player.gMovieZoom = static_cast<std::int16_t>(pick(6));
        player.gImageZoom = static_cast<std::int16_t>(pick(6));
        machine.pictures.decodingMs = pick(3) == 0 ? 0 : pick(900);
        player.gQuickPlay = pick(4) == 0;
        player.gDelayTime = static_cast<std::int16_t>(1 + pick(700));
        player.gWindowPos = static_cast<std::int16_t>(pick(3));
        player.forms.load<MenuWindowControls>().pcpMainPanel.Picture = makePicture(1024, 1024, {0x404040});
        machine.loop.enter([&] { player.forms.load<MainPanelControls>().Show(); });
        machine.settle();
    }

    bool isRunning() { return player.forms.find<MainPanelControls>() != nullptr && !machine.process.ending(); }

    /// One random command; its name for the report of a failure.
    std::string step() {
        switch (pick(18)) {
            case 0:
            case 1:
                return clickButton();
            case 2:
                return pressKey();
            case 3:
                return beginHold();
            case 4:
                return endHold();
            case 5:
                return dragSlider();
            case 6:
                return turnKnob();
            case 7:
                return drop();
            case 8:
                return chooseFromMenu();
            case 9:
                return mediaEvent();
            case 10:
                return changeSettings();
            case 11:
                return touchMediaWindow();
            case 12:
                return loseFile();
            case 13:
                return remoteCommand();
            case 14:
                return useHands();
            default:
                return passTime();
        }
    }

    void expectSane(const std::string& command) {
        EXPECT_EQ(machine.pictures.isDecoding(), player.pictureAwaited) << command;
        if (!isRunning()) {
            EXPECT_FALSE(player.pictureAwaited) << command << ": nobody gave the picture up";
            return;
        }
        auto& panel = *player.forms.find<MainPanelControls>();
        const bool play = panel.cmdMainPanel[kPlay].Enabled;
        const bool pause = panel.cmdMainPanel[kPause].Enabled;
        EXPECT_TRUE(play || pause) << command << ": neither stopped, playing nor paused";
        EXPECT_EQ(player.gPlaying, !play) << command << ": the panel lies about playing";
        EXPECT_GE(player.gFileIndex, 0) << command;
        EXPECT_LT(player.gFileIndex, std::max<int>(player.gFileCount, 1)) << command;
        EXPECT_TRUE(player.gVolume >= 0 && player.gVolume <= 15) << command;
        expectWindowsOfKind(command);
        expectWhatSounds(command);
        expectSessionTells(command);
        EXPECT_EQ(machine.timers.running(), enabledTimers()) << command << ": a timer is armed for a form that is gone";
        EXPECT_EQ(machine.loop.depth(), 0) << command;
    }

    int postedInBoxes = 0;  ///< events that came while a box was up
    FakeMachine machine;
    Ports ports = machine.ports();
    Player player{ports};
    MediaSession session{player};

private:
    int pick(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
    MainPanelControls& panel() { return *player.forms.find<MainPanelControls>(); }
    void enter(const std::function<void()>& handler) {
        machine.loop.enter(handler);
        machine.settle();
    }

    void addMedia() {
        machine.addSound("/m/a.mid", 12000);
        machine.addSound("/m/b.wav", 2500);
        machine.addSound("/m/c.mp3", 40);
        machine.addBrokenSound("/m/d.au", "broken");
        machine.addMovie("/m/e.avi", 4.5, 320, 240);
        machine.addMovie("/m/f.mpg", 400, 0, 0);
        machine.addBrokenMovie("/m/g.mov", "broken");
        machine.addPicture("/m/h.bmp", 100, 80);
        machine.addPicture("/m/i.jpg", 3000, 2000);
        machine.addBrokenPicture("/m/j.gif", "broken");
        machine.addDisc("/cd", {30, 75});
        all_ = {"/m/a.mid", "/m/b.wav", "/m/c.mp3", "/m/d.au",         "/m/e.avi",        "/m/f.mpg",   "/m/g.mov",
                "/m/h.bmp", "/m/i.jpg", "/m/j.gif", "/cd/Track01.cda", "/cd/Track02.cda", "/m/gone.wav"};
    }

    std::vector<std::string> someFiles() {
        std::vector<std::string> files;
        for (int left = pick(7); left > 0; --left) files.push_back(all_[static_cast<std::size_t>(pick(13))]);
        return files;
    }

    void setList() {
        player.gFileCount = 0;
        for (const std::string& path : all_) {
            const auto index = static_cast<std::size_t>(player.gFileCount++);
            player.gFilePath[index] = path;
            player.gFileTitle[index] = "t";
        }
    }

    std::string clickButton() {
        const int index = pick(100) == 0 ? kPower : kMinimise + pick(11);
        if (index == kEditor) return passTime();
        CommandButton& button = panel().cmdMainPanel[static_cast<std::size_t>(index)];
        if (!button.Enabled || !panel().Visible) return passTime();
        enter([&] {
            button.MouseDown.raise({kLeftButton, 0, 1, 1});
            button.Click.raise();
            button.MouseUp.raise({kLeftButton, 0, 1, 1});
        });
        return "click " + std::to_string(index);
    }

    std::string pressKey() {
        static const std::string keys = "MRSzxc,.udzx,.,.q";
        const char key = keys[static_cast<std::size_t>(pick(static_cast<int>(keys.size())))];
        Form& form = pick(3) == 0 && player.forms.find(FormId::ImageWindow) != nullptr
                         ? *player.forms.find(FormId::ImageWindow)
                         : static_cast<Form&>(panel());
        enter([&] { form.KeyPress.raise(key); });
        return std::string("key ") + key;
    }

    std::string beginHold() {
        CommandButton& button = panel().cmdMainPanel[static_cast<std::size_t>(kPrev + pick(2))];
        enter([&] { button.MouseDown.raise({kLeftButton, pick(2), 1, 1}); });
        return "hold";
    }

    std::string endHold() {
        CommandButton& button = panel().cmdMainPanel[static_cast<std::size_t>(kPrev + pick(2))];
        enter([&] {
            if (pick(2) == 0) button.Click.raise();
            if (isRunning()) button.MouseUp.raise({kLeftButton, 0, 1, 1});
        });
        return "release";
    }

    std::string dragSlider() {
        PictureBox& slide = panel().pctSlide;
        const float x = static_cast<float>(pick(3200) - 100);
        switch (pick(4)) {
            case 0:
                enter([&] { slide.MouseDown.raise({kLeftButton, 0, x, 5}); });
                return "slider down";
            case 1:
                enter([&] { slide.MouseUp.raise({kLeftButton, 0, x, 5}); });
                return "slider up";
            default:
                enter([&] { slide.MouseMove.raise({0, 0, x, 5}); });
                return "slider move";
        }
    }

    std::string turnKnob() {
        Image& knob = panel().imgMainPanel[kKnobImage];
        const MouseArgs mouse{kLeftButton, 0, static_cast<float>(pick(2000) - 500),
                              static_cast<float>(pick(2000) - 500)};
        enter([&] {
            knob.MouseDown.raise(mouse);
            knob.MouseMove.raise(mouse);
            knob.MouseUp.raise(mouse);
        });
        return "knob";
    }

    std::string drop() {
        const std::size_t files = postDrop();
        machine.settle();
        return "drop of " + std::to_string(files);
    }

    std::size_t postDrop() {
        const DropData data{pick(5) != 0, someFiles()};
        machine.loop.post([this, data] {
            if (isRunning()) panel().cmdMainPanel[0].OLEDragDrop.raise(data);
        });
        return data.files.size();
    }

    /// While a box is up, time passes and what is posted waits: drops, commands of a remote control, media events.
    void meanwhile() {
        machine.advance(pick(1500));
        for (int left = pick(3); left > 0; --left) {
            ++postedInBoxes;
            switch (pick(5)) {
                case 0:
                    postDrop();
                    break;
                case 1:
                    postCommand(mdlPublicFunction::NextFile);
                    break;
                case 2:
                    postCommand(mdlPublicFunction::PrevFile);
                    break;
                case 3:
                    if (FakeMciControl* mci = machine.media.mci(); mci != nullptr) mci->postDone(1 + pick(2));
                    break;
                default:
                    postRemoteCommand();
            }
        }
        machine.advance(pick(500));
    }

    void postCommand(void (*command)(Player&)) {
        machine.loop.post([this, command] {
            if (isRunning()) command(player);
        });
    }

    std::string chooseFromMenu() {
        auto& menu = *player.forms.find<MenuWindowControls>();
        MenuItem* item = nullptr;
        switch (pick(4)) {
            case 0:
                item = &menu.PlayCmd[static_cast<std::size_t>(pick(8))];
                break;
            case 1:
                item = &menu.PlayMode[static_cast<std::size_t>(pick(2))];
                break;
            case 2:
                item = &menu.PlayCustom[static_cast<std::size_t>(pick(5))];
                break;
            default:
                item = &menu.mnuSub[static_cast<std::size_t>(7 + pick(5))];
                break;
        }
        enter([&] {
            mdlPublicFunction::showPopupMenu(player);
            item->Click.raise();
        });
        return "menu " + item->Caption.get();
    }

    /// As media keys and remote controls do it.
    std::string remoteCommand() {
        answerBoxes();
        const int which = postRemoteCommand();
        machine.settle();
        return "remote command " + std::to_string(which);
    }

    int postRemoteCommand() {
        const int which = pick(10);
        const std::int64_t us = std::int64_t{pick(60000) - 20000} * 1000;
        const std::string path = all_[static_cast<std::size_t>(pick(13))];
        machine.loop.post([this, which, us, path] {
            const std::array<std::function<void()>, 10> all = {
                [this] { session.next(); },           [this] { session.previous(); },
                [this] { session.play(); },           [this] { session.pause(); },
                [this] { session.playPause(); },      [this] { session.stop(); },
                [this, us] { session.seekBy(us); },   [this, us] { session.seekTo(session.state().track, us); },
                [this] { session.setShuffle(true); }, [this, path] { session.open(path); },
            };
            all[static_cast<std::size_t>(which)]();
        });
        return which;
    }

    std::string mediaEvent() {
        answerBoxes();
        if (FakeMciControl* mci = machine.media.mci(); mci != nullptr && pick(2) == 0) {
            mci->postDone(1 + pick(2));
        } else if (mci != nullptr) {
            mci->fail("went away");
        }
        machine.settle();
        return "media event";
    }

    std::string changeSettings() {
        player.gImageHide = pick(2) == 0;
        player.gInterval = static_cast<std::int16_t>(pick(3));
        player.gQuickPlay = pick(5) == 0;
        return "settings";
    }

    std::string touchMediaWindow() {
        if (auto* movie = player.forms.find<MovieWindowControls>()) {
            enter([&] { pick(2) == 0 ? movie->amvMovie->DblClick.raise() : movie->CloseRequest.raise(false); });
            return "movie window";
        }
        if (auto* image = player.forms.find<ImageWindowControls>()) {
            const MouseArgs at{kMiddleButton, 0, static_cast<float>(pick(900)), static_cast<float>(pick(900))};
            enter([&] {
                image->pctImage.MouseDown.raise(at);
                image->pctImage.MouseMove.raise({0, 0, at.x - 300, at.y + 200});
                image->pctImage.MouseUp.raise(at);
            });
            return "image window";
        }
        return passTime();
    }

    /// Keys and wheels of today; on a plain start they do what they did.
    std::string useHands() {
        static constexpr std::array<int, 5> kKeys = {kKeyF11, kKeyEscape, kKeyLeft, kKeyRight, kKeyF11};
        Form* form = player.forms.find(FormId::MovieWindow);
        if (form == nullptr) form = player.forms.find(FormId::ImageWindow);
        if (form == nullptr) form = &panel();
        if (pick(2) == 0) {
            const int key = kKeys[static_cast<std::size_t>(pick(5))];
            enter([&] { form->KeyDown.raise({key, 0, false}); });
            return "hand's key " + std::to_string(key);
        }
        const int notches = 1 + pick(3);
        const WheelArgs turned{pick(2) == 0 ? notches : -notches, 0};
        enter([&] { pick(2) == 0 ? panel().pctSlide.MouseWheel.raise(turned) : form->MouseWheel.raise(turned); });
        return "wheel";
    }

    std::string loseFile() {
        if (pick(20) != 0) return passTime();
        machine.files.remove("/m/b.wav");
        return "file deleted";
    }

    std::string passTime() {
        answerBoxes();
        const int time = pick(3) == 0 ? pick(4000) : pick(300);
        machine.advance(time);
        return "wait " + std::to_string(time);
    }

    void answerBoxes() {
        static constexpr std::array<Answer, 3> kAnswers = {Answer::Abort, Answer::Retry, Answer::Ignore};
        machine.dialogs.answers.clear();
        for (int i = 0; i < 3; ++i) machine.dialogs.answers.push_back(kAnswers[static_cast<std::size_t>(pick(3))]);
        machine.dialogs.answers.push_back(Answer::Abort);
    }

    void expectSessionTells(const std::string& command) {
        using Status = MediaState::Status;
        const MediaState& told = session.state();
        const bool stopped = panel().isStopped() || player.gMediaKind == mkNone;
        const Status panels = stopped ? Status::Stopped : (panel().isPaused() ? Status::Paused : Status::Playing);
        EXPECT_EQ(told.status, panels) << command;
        EXPECT_EQ(told.track != 0, player.gFileCount > 0 || player.gMediaKind != mkNone) << command;
        EXPECT_GE(session.positionUs(), 0) << command;
        EXPECT_TRUE(told.lengthUs == 0 || session.positionUs() <= told.lengthUs) << command;
    }

    void expectWindowsOfKind(const std::string& command) {
        const bool mci = player.forms.find(FormId::MciWindow) != nullptr;
        const bool movie = player.forms.find(FormId::MovieWindow) != nullptr;
        const bool image = player.forms.find(FormId::ImageWindow) != nullptr;
        const std::int16_t kind = player.gMediaKind;
        EXPECT_EQ(mci, kind == mkMciFile || kind == mkCDTrack) << command << ", kind " << kind;
        EXPECT_EQ(movie, kind == mkMovie) << command << ", kind " << kind;
        EXPECT_TRUE(image || player.pictureAwaited || kind != mkImage) << command;
        EXPECT_TRUE(kind == mkImage || !player.pictureAwaited) << command << ", kind " << kind;
        EXPECT_EQ(machine.media.liveControls(), (mci ? 1 : 0) + (movie ? 1 : 0)) << command;
    }

    /// The panel says what is open and what sounds: "playing" without an open file only until the next try of one that
    /// could not be opened.
    void expectWhatSounds(const std::string& command) {
        const bool stopped = panel().isStopped();
        const bool paused = panel().isPaused();
        const bool nothingOpen = player.gMediaKind == mkNone;
        const bool triesAgain = panel().tmrPlayBack.Enabled;
        // Previous on a held picture enables pause at once and plays after the double-click time.
        EXPECT_TRUE(!stopped || nothingOpen || triesAgain)
            << command << ": stopped, and kind " << player.gMediaKind << " is open";
        EXPECT_FALSE(paused && nothingOpen) << command << ": paused, and nothing is open";
        EXPECT_FALSE(player.gPlaying && nothingOpen && !triesAgain) << command << ": playing, and nothing is open";
        const bool seeking = panel().tmrPrevNext.Interval != kHoldInterval;  // a hold has taken over
        if (const FakeMciControl* mci = machine.media.mci()) {
            EXPECT_TRUE(seeking || mci->isPlaying() == player.gPlaying) << command << ": sounding " << mci->isPlaying();
        }
        if (const FakeMovieControl* movie = machine.media.movie()) {
            EXPECT_TRUE(player.gPlaying || movie->State() != kMovieRunning) << command << ": a held movie runs";
        }
        if (const auto* image = player.forms.find<ImageWindowControls>()) {
            const bool counts = player.gMediaKind == mkImage && player.gPlaying;
            EXPECT_TRUE(counts || !image->tmrImage.Enabled) << command << ": a picture counts that does not play";
        }
    }

    int enabledTimers() {
        int enabled = 0;
        for (const Form* form : machine.windows.attached()) {
            for (const Control* control : form->controls()) {
                if (control->kind() != ControlKind::Timer) continue;
                const auto& timer = static_cast<const Timer&>(*control);
                if (timer.Enabled && timer.Interval > 0) ++enabled;
            }
        }
        return enabled;
    }

    std::mt19937 random_;
    std::vector<std::string> all_;
};

void walkAround(int commands, const Conveniences& ways) {
    unsigned seed = 1;
    auto walk = std::make_unique<Walk>(seed, ways);
    std::string before;
    int inBoxes = 0;
    std::array<int, 5> seen{};  // commands after which each media kind was open, from -1 up
    for (int i = 0; i < commands && !testing::Test::HasFailure(); ++i) {
        if (!walk->isRunning() || i % kCommandsOfOneRun == kCommandsOfOneRun - 1) {
            inBoxes += walk->postedInBoxes;
            walk = std::make_unique<Walk>(++seed, ways);
        }
        const std::string command = walk->step();
        walk->machine.clearCalls();
        walk->machine.dialogs.boxes.clear();
        walk->expectSane("seed " + std::to_string(seed) + ", command " + std::to_string(i) + ", after " + before +
                         ", " + command);
        before = command;
        if (walk->isRunning()) ++seen[static_cast<std::size_t>(walk->player.gMediaKind + 1)];
    }
    EXPECT_GT(inBoxes, commands / 100) << "events while a box was up";
    // The walk went everywhere, not only through a closed player.
    for (std::size_t kind = 0; kind < seen.size(); ++kind) {
        EXPECT_GT(seen[kind], commands / 50) << "kind " << static_cast<int>(kind) - 1;
    }
}

/// OPEN-48: With nothing open nothing more happens
/// PANEL-22, OPEN-11, MOVE-45
TEST(RandomWalk, AnyOrderOfCommandsLeavesASaneState) { walkAround(kCommands, {}); }

/// OPEN-48
TEST(RandomWalk, WithTheConveniencesAsWell) { walkAround(kCommands, kAllConveniences); }

}  // namespace
}  // namespace corvane
