// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/mci_state_control.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "controls/mci_axis.h"
#include "fake/fake_loop.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

/// A device that notes what it is told, and does what a test says.
struct NotedDevice : MciStateControl {
    explicit NotedDevice(EventLoop& loop) : MciStateControl(loop) {}
    ~NotedDevice() override { release(); }

    enum class Answer { Opened, Failed, Later } answer = Answer::Opened;
    MciAxis is{1000, 4000, {}};
    Texts seen;
    std::int64_t place = 0;
    std::uint64_t number = 0;
    std::string refusal;
    int interval = 0;

    void note(const std::string& what) { seen.push_back(what); }
    void openIt() override {
        note("open " + fileName());
        if (answer == Answer::Opened) opened();
        if (answer == Answer::Failed) failed("no sound");
    }
    void closeIt() override { note("close"); }
    const SoundAxis& axis() const override { return is; }
    std::string playPart(std::uint64_t given, std::int64_t from, std::int64_t to) override {
        note("play " + std::to_string(from) + " " + (to == kToEnd ? "end" : std::to_string(to)));
        number = given;
        place = from;
        return refusal;
    }
    void pausePart() override { note("pause"); }
    void resumePart() override { note("resume"); }
    void stopPart() override { note("stop"); }
    std::int64_t partPosition() const override { return place; }
    void tick(int intervalMs) override { interval = intervalMs; }

    using MciStateControl::failed;
    using MciStateControl::later;
    using MciStateControl::opened;
    using MciStateControl::partEnded;
    using MciStateControl::stillOpen;
    using MciStateControl::updateDue;
};

struct MciStates : ::testing::Test {
    MciStates() { tie(*mci); }
    void tie(NotedDevice& device) {
        device.Done.tie([this](int how) { told.push_back("done " + std::to_string(how)); });
        device.Failed.tie([this](const std::string& why) { told.push_back("failed " + why); });
        device.StatusUpdate.tie([this] { told.push_back("update"); });
    }
    /// What the device was told since the last time.
    Texts seen() { return std::exchange(mci->seen, {}); }
    void open() {
        mci->FileName("/a.wav");
        mci->Command("Open");
        seen();
    }
    /// The play that runs reaches its end, as a device tells it.
    void end(std::int64_t at) {
        mci->place = at;
        mci->later([this, number = mci->number, at] { mci->partEnded(number, at); });
    }

    FakeLoop loop;
    std::optional<NotedDevice> mci{std::in_place, loop};
    Texts told;
};

TEST_F(MciStates, NothingIsDoneWithoutADevice) {
    for (const char* word : {"Play", "Pause", "Stop", "Seek", "Close"}) mci->Command(word);
    EXPECT_EQ(seen(), Texts{});
    EXPECT_EQ(mci->Length(), 0);
    EXPECT_EQ(mci->Position(), 0);
    EXPECT_EQ(mci->TrackLength(), 0);
}

TEST_F(MciStates, EachWordIsItsCommand) {
    mci->FileName("/a.wav");
    mci->DeviceType("WaveAudio");
    EXPECT_EQ(mci->DeviceType(), "WaveAudio");
    for (const char* word : {"Open", "Play", "Pause", "Play", "Stop", "Eject", "Close", "Play"}) mci->Command(word);
    EXPECT_EQ(seen(), (Texts{"close", "open /a.wav", "play 0 end", "pause", "resume", "stop", "close"}));
    loop.drain();
    EXPECT_EQ(told, Texts{});
}

TEST_F(MciStates, PlacesServeTheNextCommandThatThereIs) {
    mci->From(500);
    mci->To(900);
    mci->Command("Play");
    EXPECT_EQ(mci->To(), 900) << "nothing is open: they wait";
    mci->Command("Eject");
    EXPECT_EQ(mci->To(), 900) << "no command that it knows";
    mci->Command("Open");
    EXPECT_EQ(mci->To(), 0);
    seen();
    mci->From(500);
    mci->To(900);
    mci->Command("Play");
    mci->Command("Play");
    EXPECT_EQ(seen(), (Texts{"play 500 900", "stop", "play 500 end"}));
    mci->To(700);
    mci->Command("Seek");
    EXPECT_EQ(mci->Position(), 700);
    mci->Command("Seek");
    EXPECT_EQ(mci->Position(), 0);
}

TEST_F(MciStates, APlayThatRunsAlreadyGoesOn) {
    open();
    mci->Command("Play");
    mci->place = 100;
    mci->Command("Play");
    EXPECT_EQ(seen(), Texts{"play 0 end"});
    mci->To(2000);
    mci->Command("Play");
    EXPECT_EQ(seen(), (Texts{"stop", "play 100 2000"})) << "to another end";
    mci->From(50);
    mci->To(2000);
    mci->Command("Play");
    EXPECT_EQ(seen(), (Texts{"stop", "play 50 2000"})) << "from another place";
}

TEST_F(MciStates, ASeekHoldsAndStaysWhatItWas) {
    open();
    mci->To(1500);
    mci->Command("Seek");
    EXPECT_EQ(mci->Position(), 1500);
    mci->Command("Play");
    EXPECT_EQ(seen(), Texts{"play 1500 end"});
    mci->To(9000);
    mci->Command("Seek");
    EXPECT_EQ(mci->Position(), 4000) << "held inside the length";
    EXPECT_EQ(mci->interval, 0) << "it does not play";
    mci->To(300);
    mci->Command("Seek");
    mci->Command("Pause");
    mci->Command("Play");
    EXPECT_EQ(seen(), (Texts{"stop", "play 300 end"}));
}

TEST_F(MciStates, ItsEndIsToldOnceAndItStandsThere) {
    open();
    mci->Command("Play");
    end(4000);
    EXPECT_EQ(told, Texts{});
    loop.drain();
    EXPECT_EQ(told, Texts{"done 1"});
    EXPECT_EQ(mci->Position(), 4000);
    mci->partEnded(mci->number, 4000);
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(MciStates, AnEndThatACallOvertookIsDropped) {
    for (const char* word : {"Stop", "Seek", "Close", "Open"}) {
        open();
        mci->Command("Play");
        end(4000);
        mci->Command(word);
        loop.drain();
        EXPECT_EQ(told, Texts{}) << word;
    }
    open();
    mci->Command("Play");
    end(4000);
    mci->From(10);
    mci->Command("Play");
    loop.drain();
    EXPECT_EQ(told, Texts{}) << "another play";
}

TEST_F(MciStates, AnEndThatComesWhilePausedIsToldWhenItGoesOn) {
    open();
    mci->Command("Play");
    end(4000);
    mci->Command("Pause");
    loop.drain();
    EXPECT_EQ(told, Texts{});
    seen();
    mci->Command("Play");
    EXPECT_EQ(seen(), Texts{"resume"}) << "what is left of it rings out";
    EXPECT_EQ(told, Texts{}) << "never from inside a call";
    loop.drain();
    EXPECT_EQ(told, Texts{"done 1"});
}

TEST_F(MciStates, APlayOfNothingEndsAtOnce) {
    open();
    for (const auto& [from, to] : {std::pair{4000, 0}, {2000, 2000}, {2000, 1000}}) {
        told.clear();
        mci->From(from);
        if (to > 0) mci->To(to);
        mci->Command("Play");
        EXPECT_EQ(told, Texts{});
        loop.drain();
        EXPECT_EQ(told, Texts{"done 1"}) << from;
        EXPECT_EQ(mci->Position(), from);
    }
    EXPECT_EQ(seen(), Texts{}) << "the device is not asked";
    mci->is.length = 0;
    mci->From(9000);
    mci->Command("Play");
    EXPECT_EQ(seen(), Texts{"play 9000 end"}) << "a length that is not known holds nothing";
}

TEST_F(MciStates, WhatCannotBeOpenedFailsLater) {
    mci->answer = NotedDevice::Answer::Failed;
    mci->Command("Open");
    EXPECT_EQ(told, Texts{});
    loop.drain();
    EXPECT_EQ(told, Texts{"failed no sound"});
    told.clear();
    mci->Command("Open");
    mci->answer = NotedDevice::Answer::Opened;
    mci->Command("Open");
    loop.drain();
    EXPECT_EQ(told, Texts{}) << "another opening has taken its place";
    mci->refusal = "no thread";
    mci->Command("Play");
    EXPECT_EQ(mci->Length(), 0) << "nothing is open";
    loop.drain();
    EXPECT_EQ(told, Texts{"failed no thread"});
}

TEST_F(MciStates, ASeekWhileItOpensLeavesItStoppedThere) {
    mci->answer = NotedDevice::Answer::Later;
    open();
    mci->Command("Play");
    mci->To(1500);
    mci->Command("Seek");
    mci->opened();
    EXPECT_EQ(seen(), Texts{}) << "the play before it is not wanted any more";
    EXPECT_EQ(mci->Position(), 1500);
}

TEST_F(MciStates, WhatIsAskedForWhileItOpensIsDoneThen) {
    mci->answer = NotedDevice::Answer::Later;
    open();
    EXPECT_TRUE(mci->Opening());
    EXPECT_EQ(mci->Length(), 0);
    mci->To(1500);
    mci->Command("Seek");
    EXPECT_EQ(mci->Position(), 1500);
    mci->Command("Play");
    EXPECT_EQ(mci->interval, 0) << "nothing plays yet";
    mci->opened();
    EXPECT_FALSE(mci->Opening());
    EXPECT_EQ(seen(), Texts{"play 1500 end"});

    open();
    mci->From(700);
    mci->To(900);
    mci->Command("Play");
    mci->Command("Pause");
    EXPECT_EQ(mci->Position(), 700);
    mci->opened();
    EXPECT_EQ(seen(), (Texts{"play 700 900", "pause"}));

    open();
    mci->Command("Play");
    mci->Command("Stop");
    mci->opened();
    EXPECT_EQ(seen(), Texts{}) << "it was stopped again";

    open();
    mci->Command("Play");
    mci->Command("Close");
    mci->Command("Open");
    seen();
    mci->opened();
    EXPECT_EQ(seen(), Texts{}) << "of another opening";
}

TEST_F(MciStates, TheStatusIsToldWhilePlayingOnlyAndDoesNotPileUp) {
    open();
    mci->updateDue();
    mci->UpdateInterval(0);
    EXPECT_EQ(mci->interval, 0);
    mci->Command("Play");
    EXPECT_EQ(mci->interval, 1);
    mci->UpdateInterval(100);
    EXPECT_EQ(mci->interval, 100);
    mci->updateDue();
    mci->updateDue();
    loop.drain();
    EXPECT_EQ(told, Texts{"update"});
    mci->updateDue();
    mci->Command("Pause");
    EXPECT_EQ(mci->interval, 0);
    loop.drain();
    EXPECT_EQ(told, Texts{"update"}) << "it plays no more";
    mci->Command("Play");
    mci->updateDue();
    mci->Command("Open");  // what was under way is dropped, and must not keep the next one back
    mci->Command("Play");
    mci->updateDue();
    loop.drain();
    EXPECT_EQ(told, (Texts{"update", "update"}));
}

TEST_F(MciStates, WhatComesLateFromAThreadIsKnownByItsOpening) {
    EXPECT_TRUE(mci->stillOpen()());
    open();
    const auto still = mci->stillOpen();
    mci->Command("Play");
    EXPECT_TRUE(still());
    mci->Command("Open");
    EXPECT_FALSE(still());
    const auto last = mci->stillOpen();
    mci->Command("Play");
    end(4000);
    mci.reset();
    EXPECT_FALSE(last());
    loop.drain();
    EXPECT_EQ(told, Texts{}) << "the control has gone";
}

/// Two tracks of 3 and 2 seconds.
struct MciDiscs : MciStates {
    MciDiscs() {
        mci->is = {kCdSectorsPerSecond, 375, {{1, 150, 225, true}, {2, 375, 150, true}}};
        mci->TimeFormat(kFormatTmsf);
        open();
    }
};

TEST_F(MciDiscs, TellTheLengthOfEachTrack) {
    mci->Track(2);
    EXPECT_EQ(mci->TrackLength(), packLength(150));
    mci->Track(3);
    EXPECT_EQ(mci->TrackLength(), 0);
}

TEST_F(MciDiscs, ATracksOwnPlaceAsItsEndIsTheTracksEnd) {
    mci->From(1);
    mci->To(1);
    mci->Command("Play");
    mci->From(1);
    mci->To(2);
    mci->Command("Play");
    EXPECT_EQ(seen(), (Texts{"play 0 225", "stop", "play 0 225"}));
}

TEST_F(MciDiscs, ATrackThatWasPlayedStandsInItselfNotInTheNext) {
    mci->From(1);
    mci->To(2);
    mci->Command("Play");
    mci->place = 225;
    EXPECT_EQ(unpackTmsf(mci->Position()).track, 1);
    EXPECT_EQ(unpackTmsf(mci->Position()).sectors, 224);
    mci->place = 224;
    EXPECT_EQ(unpackTmsf(mci->Position()).sectors, 224);
}

}  // namespace
}  // namespace corvane
