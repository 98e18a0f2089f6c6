// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "contract/stage.h"
#include "platform/ports.h"

namespace corvane {

/// A party's media and the files that its devices can play.
class MciStage : public Stage {
public:
    virtual Media& media() = 0;
    virtual std::string sound() = 0;                ///< a sound file of soundMs
    virtual int soundMs() = 0;                      ///< at least 2000
    virtual std::string sequence() = 0;             ///< a MIDI file of sequenceMs
    virtual int sequenceMs() = 0;                   ///< at least 2000
    virtual bool playsSequences() { return true; }  ///< false: this machine has nothing to play them with
    virtual std::string broken() = 0;               ///< there, but no sound
    virtual std::string disc() = 0;                 ///< a track's file on a disc of at least two tracks
    virtual int trackSeconds(int track) = 0;        ///< whole seconds of track 1 and 2, each at least 2
    virtual int toleranceMs() = 0;                  ///< how far a position or length may be from the truth
};

class MciControlContract : public ::testing::TestWithParam<StageFactory<MciStage>> {
protected:
    std::unique_ptr<MciStage> stage = GetParam()();
    std::unique_ptr<MciControl> mci = stage->media().makeMciControl();
    std::vector<int> done;
    std::vector<std::string> failed;
    int updates = 0;
    bool inCall = false;
    bool raisedInCall = false;

    MciControlContract() {
        mci->Done.tie([this](int code) {
            raisedInCall = raisedInCall || inCall;
            done.push_back(code);
        });
        mci->Failed.tie([this](const std::string& reason) {
            raisedInCall = raisedInCall || inCall;
            failed.push_back(reason);
        });
        mci->StatusUpdate.tie([this] {
            raisedInCall = raisedInCall || inCall;
            ++updates;
        });
    }
    ~MciControlContract() override { EXPECT_FALSE(raisedInCall) << "an event came from inside a call"; }

    void command(const char* word) {
        inCall = true;
        mci->Command(word);
        inCall = false;
    }
    void open(const std::string& path, int lengthMs, const char* type = "") {
        mci->DeviceType(type);
        mci->FileName(path);
        command("Open");
        mci->TimeFormat(kFormatMilliseconds);
        mci->UpdateInterval(100);
        ASSERT_TRUE(stage->waitFor([&] { return isNear(mci->Length(), lengthMs); }, 2000)) << mci->Length();
    }
    void openSound() { open(stage->sound(), stage->soundMs()); }
    void playFrom(int fromMs) {
        mci->From(fromMs);
        command("Play");
    }
    bool isNear(int value, int truth) const { return std::abs(value - truth) <= stage->toleranceMs(); }
    /// It goes on by as much as the time that passes.
    void expectPace(int forMs) {
        Pace pace(*stage, [this] { return mci->Position(); });
        for (int part = 1; part <= 4; ++part) {
            stage->pass(forMs / 4);
            const auto step = pace.step();
            EXPECT_LE(std::abs(step.gone - step.passed), stage->toleranceMs() + step.mayBeLate)
                << step.gone << " in " << step.passed;
        }
    }
    /// What was just begun stands at its place, or as far behind it as time has passed since.
    void expectBegins(int placeMs, const std::function<void()>& begin) {
        const std::int64_t before = stage->now();
        begin();
        const int position = mci->Position();
        EXPECT_GE(position, placeMs - stage->toleranceMs());
        EXPECT_LE(position, placeMs + stage->now() - before + stage->toleranceMs());
    }
    bool waitForPosition(int atLeastMs, int withinMs = 3000) {
        return stage->waitFor([&] { return mci->Position() >= atLeastMs; }, withinMs);
    }
};

/// MEDIA-01: Without a device commands do nothing and positions read 0
TEST_P(MciControlContract, ReadsZeroAndDoesNothingWithoutADevice) {
    EXPECT_EQ(mci->DeviceType(), "");
    EXPECT_EQ(mci->To(), 0);
    for (const char* word : {"Play", "Pause", "Stop", "Seek", "Close", "Eject"}) command(word);
    stage->pass(300);
    EXPECT_EQ(mci->Position(), 0);
    EXPECT_EQ(mci->Length(), 0);
    EXPECT_EQ(mci->TrackLength(), 0);
    EXPECT_TRUE(done.empty());
    EXPECT_TRUE(failed.empty());
    EXPECT_EQ(updates, 0);
}

/// MEDIA-02: Opening gives the length and does not start
/// OPEN-25
TEST_P(MciControlContract, OpensWithTheLengthAndDoesNotStart) {
    openSound();
    stage->pass(300);
    EXPECT_EQ(mci->Position(), 0);
    EXPECT_EQ(updates, 0);
}

/// OPEN-27, MEDIA-36
TEST_P(MciControlContract, PlaysASequence) {
    if (!stage->playsSequences()) GTEST_SKIP() << "nothing plays MIDI here";
    open(stage->sequence(), stage->sequenceMs(), "Sequencer");
    EXPECT_EQ(mci->DeviceType(), "Sequencer");
    command("Play");
    EXPECT_TRUE(waitForPosition(300));
    expectPace(800);
    EXPECT_TRUE(failed.empty());
}

/// MEDIA-36
TEST_P(MciControlContract, GoesAtThePaceOfTheTimeAlsoAfterASeekAndAPause) {
    openSound();
    command("Play");
    ASSERT_TRUE(waitForPosition(300));
    expectPace(800);
    command("Pause");
    stage->pass(200);
    const int held = mci->Position();
    expectBegins(held, [this] { command("Play"); });
    ASSERT_TRUE(waitForPosition(held + 100));
    expectPace(400);
    expectBegins(700, [this] { playFrom(700); });
    ASSERT_TRUE(waitForPosition(800));
    expectPace(400);
}

/// MCI-06
TEST_P(MciControlContract, TellsTheStatusWhilePlayingOnly) {
    openSound();
    command("Play");
    ASSERT_TRUE(stage->waitFor([&] { return updates >= 5; }, 3000));
    EXPECT_GT(mci->Position(), 200);
    command("Pause");
    const int sofar = updates;
    stage->pass(400);
    EXPECT_EQ(updates, sofar);
}

/// MEDIA-03: An unknown command changes nothing
TEST_P(MciControlContract, AnUnknownCommandChangesNothing) {
    openSound();
    command("Play");
    ASSERT_TRUE(waitForPosition(200));
    command("Eject");
    EXPECT_TRUE(waitForPosition(500));
}

/// OPEN-46, MOVE-08
TEST_P(MciControlContract, PauseHoldsAndPlayGoesOn) {
    openSound();
    command("Play");
    ASSERT_TRUE(waitForPosition(400));
    command("Pause");
    const int held = mci->Position();
    stage->pass(400);
    EXPECT_TRUE(isNear(mci->Position(), held));
    command("Play");
    EXPECT_TRUE(waitForPosition(held + 300));
    EXPECT_TRUE(done.empty());
}

/// MCI-20, MEDIA-04, WIN-19
TEST_P(MciControlContract, TellsTheEndOnce) {
    openSound();
    playFrom(stage->soundMs() - 400);
    ASSERT_TRUE(stage->waitFor([&] { return !done.empty(); }, 4000));
    stage->pass(400);
    EXPECT_EQ(done, std::vector<int>{kNotifySuccessful});
    EXPECT_TRUE(isNear(mci->Position(), stage->soundMs())) << mci->Position();
    const int sofar = updates;
    stage->pass(300);
    EXPECT_EQ(updates, sofar);
}

/// MEDIA-04: Play goes to its "to", or to the end, which is told once
TEST_P(MciControlContract, PlaysToItsTo) {
    openSound();
    mci->To(900);
    EXPECT_EQ(mci->To(), 900);
    expectBegins(500, [this] { playFrom(500); });
    EXPECT_EQ(mci->To(), 0);
    ASSERT_TRUE(stage->waitFor([&] { return !done.empty(); }, 3000));
    EXPECT_EQ(done, std::vector<int>{kNotifySuccessful});
    EXPECT_TRUE(isNear(mci->Position(), 900)) << mci->Position();
}

/// MEDIA-05: "From" and "to" serve the next command alone
TEST_P(MciControlContract, FromAndToServeTheNextCommandOnly) {
    openSound();
    mci->To(300);
    playFrom(100);
    ASSERT_TRUE(stage->waitFor([&] { return !done.empty(); }, 3000));
    command("Play");
    EXPECT_TRUE(waitForPosition(700));
    EXPECT_EQ(done.size(), 1U);
}

/// MEDIA-06: A seek reads its target at once, holds there, stays inside the length, and paused stays paused
TEST_P(MciControlContract, ReadsASeeksTargetAtOnceAndHoldsThere) {
    openSound();
    command("Play");
    ASSERT_TRUE(waitForPosition(200));
    mci->To(1500);
    command("Seek");
    EXPECT_TRUE(isNear(mci->Position(), 1500)) << mci->Position();
    const int sofar = updates;
    stage->pass(400);
    EXPECT_TRUE(isNear(mci->Position(), 1500)) << mci->Position();
    EXPECT_EQ(updates, sofar);
    command("Play");
    EXPECT_TRUE(waitForPosition(1700));
    EXPECT_TRUE(done.empty());
}

/// MEDIA-06
TEST_P(MciControlContract, ASeekWhilePausedStaysPaused) {
    openSound();
    command("Play");
    ASSERT_TRUE(waitForPosition(200));
    command("Pause");
    mci->To(1000);
    command("Seek");
    stage->pass(400);
    EXPECT_TRUE(isNear(mci->Position(), 1000)) << mci->Position();
    command("Play");
    EXPECT_TRUE(waitForPosition(1200));
}

/// MEDIA-06
TEST_P(MciControlContract, ASeekIsHeldInsideTheLength) {
    openSound();
    mci->To(stage->soundMs() + 5000);
    command("Seek");
    EXPECT_TRUE(isNear(mci->Position(), stage->soundMs())) << mci->Position();
}

/// MEDIA-07: A stop tells no end, and an end that a seek, another play or another file overtook is dropped
/// MCI-21
TEST_P(MciControlContract, StoppingTellsNoEnd) {
    openSound();
    command("Play");
    ASSERT_TRUE(waitForPosition(200));
    command("Stop");
    const int sofar = updates;
    stage->pass(400);
    EXPECT_TRUE(done.empty());
    EXPECT_EQ(updates, sofar);
}

/// MOVE-38
TEST_P(MciControlContract, ClosingForgetsTheDevice) {
    openSound();
    command("Play");
    ASSERT_TRUE(waitForPosition(200));
    command("Close");
    EXPECT_EQ(mci->Position(), 0);
    EXPECT_EQ(mci->Length(), 0);
    stage->pass(400);
    EXPECT_TRUE(done.empty());
    command("Open");
    EXPECT_TRUE(stage->waitFor([&] { return isNear(mci->Length(), stage->soundMs()); }, 2000));
}

/// MEDIA-07, WIN-19
TEST_P(MciControlContract, AnEndThatASeekOvertookIsDropped) {
    openSound();
    playFrom(stage->soundMs() - 300);
    {
        const EventLoop::Hold hold(stage->loop());
        stage->pass(1500);
        mci->To(100);
        command("Seek");
    }
    stage->pass(300);
    EXPECT_TRUE(done.empty());
    EXPECT_TRUE(isNear(mci->Position(), 100)) << mci->Position();
}

/// MEDIA-07, WIN-19
TEST_P(MciControlContract, AnEndThatAnotherPlayOvertookIsDropped) {
    openSound();
    playFrom(stage->soundMs() - 300);
    {
        const EventLoop::Hold hold(stage->loop());
        stage->pass(1500);
        playFrom(100);
    }
    stage->pass(300);
    EXPECT_TRUE(done.empty());
    EXPECT_TRUE(waitForPosition(500));
    EXPECT_LT(mci->Position(), stage->soundMs() - 300);
}

/// MOVE-43, MEDIA-07
TEST_P(MciControlContract, AnEndThatAnotherFileOvertookIsDropped) {
    openSound();
    playFrom(stage->soundMs() - 300);
    {
        const EventLoop::Hold hold(stage->loop());
        stage->pass(1500);
        command("Close");
        mci->FileName(stage->sequence());
        mci->DeviceType("Sequencer");
        command("Open");
        command("Play");
    }
    stage->pass(300);
    EXPECT_TRUE(done.empty());
}

/// MEDIA-08
TEST_P(MciControlContract, AFileThatIsNoSoundFailsWithAReason) {
    mci->FileName(stage->broken());
    command("Open");
    command("Play");
    ASSERT_TRUE(stage->waitFor([&] { return !failed.empty(); }, 5000));
    stage->pass(300);
    EXPECT_EQ(failed.size(), 1U);
    EXPECT_NE(failed[0], "");
    EXPECT_TRUE(done.empty());
    EXPECT_EQ(updates, 0);
    EXPECT_EQ(mci->Position(), 0);
}

/// MEDIA-09: A control that is gone raises nothing
TEST_P(MciControlContract, ADestroyedControlRaisesNothing) {
    openSound();
    playFrom(stage->soundMs() - 200);
    const int sofar = updates;
    mci.reset();
    stage->pass(800);
    EXPECT_TRUE(done.empty());
    EXPECT_EQ(updates, sofar);
}

// --- Discs: packed positions, track in the lowest byte, then minutes, seconds and frames. ----------------------------

inline std::int32_t tmsf(int track, int minutes, int seconds, int frames = 0) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(track) | static_cast<std::uint32_t>(minutes) << 8U |
                                     static_cast<std::uint32_t>(seconds) << 16U |
                                     static_cast<std::uint32_t>(frames) << 24U);
}
inline int trackOf(std::int32_t packed) { return static_cast<int>(static_cast<std::uint32_t>(packed) & 0xFFU); }
inline int secondsOf(std::int32_t packed) {
    const auto bits = static_cast<std::uint32_t>(packed);
    return static_cast<int>((bits >> 8U & 0xFFU) * 60 + (bits >> 16U & 0xFFU));
}
inline int framesOf(std::int32_t packed) { return static_cast<int>(static_cast<std::uint32_t>(packed) >> 24U); }

class DiscContract : public MciControlContract {
protected:
    void openDisc() {
        mci->DeviceType("CDAudio");
        mci->FileName(stage->disc());
        command("Open");
        mci->TimeFormat(kFormatTmsf);
        mci->UpdateInterval(100);
        mci->Track(1);
        ASSERT_TRUE(stage->waitFor([&] { return mci->TrackLength() != 0; }, 3000));
    }
    std::int32_t trackEnd(int track) {
        mci->Track(track);
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(mci->TrackLength()) << 8U) + track;
    }
};

/// OPEN-23, MEDIA-16
TEST_P(DiscContract, GivesTheLengthOfEachTrack) {
    openDisc();
    for (const int track : {1, 2}) {
        mci->Track(track);
        const auto length = static_cast<std::uint32_t>(mci->TrackLength());
        EXPECT_EQ(static_cast<int>((length & 0xFFU) * 60 + (length >> 8U & 0xFFU)), stage->trackSeconds(track));
    }
    mci->Track(99);
    EXPECT_EQ(mci->TrackLength(), 0);
}

/// OPEN-32
TEST_P(DiscContract, PlaysATrackFromItsStartToItsEnd) {
    openDisc();
    mci->To(trackEnd(2));
    mci->From(2);
    command("Play");
    EXPECT_EQ(trackOf(mci->Position()), 2);
    EXPECT_EQ(secondsOf(mci->Position()), 0);
    ASSERT_TRUE(stage->waitFor([&] { return secondsOf(mci->Position()) >= 1; }, 3000));
    EXPECT_EQ(trackOf(mci->Position()), 2);
    ASSERT_TRUE(stage->waitFor([&] { return !done.empty(); }, 1000 * stage->trackSeconds(2) + 3000));
    EXPECT_EQ(done, std::vector<int>{kNotifySuccessful});
}

/// OPEN-34
TEST_P(DiscContract, StopsAtTheEndOfItsTrackNotOfTheDisc) {
    openDisc();
    mci->To(trackEnd(1));
    mci->From(tmsf(1, 0, stage->trackSeconds(1) - 1));
    command("Play");
    ASSERT_TRUE(stage->waitFor([&] { return !done.empty(); }, 4000));
    EXPECT_EQ(mci->Position(), tmsf(2, 0, 0)) << "the place behind its last frame";
    stage->pass(400);
    EXPECT_EQ(mci->Position(), tmsf(2, 0, 0));
    EXPECT_EQ(done.size(), 1U);
}

/// What is asked for while a disc is still being opened, when the length of no track is known.
TEST_P(DiscContract, ATracksOwnPlaceAsItsEndIsTheTracksEnd) {
    openDisc();
    mci->From(2);
    mci->To(2);
    command("Play");
    ASSERT_TRUE(stage->waitFor([&] { return trackOf(mci->Position()) == 2 && secondsOf(mci->Position()) >= 1; }, 3000));
    EXPECT_TRUE(done.empty());
    ASSERT_TRUE(stage->waitFor([&] { return !done.empty(); }, 1000 * stage->trackSeconds(2) + 3000));
    EXPECT_EQ(done, std::vector<int>{kNotifySuccessful});
}

TEST_P(DiscContract, AnotherTracksPlaceAsTheEndIsThatTracksStart) {
    openDisc();
    mci->From(tmsf(1, 0, stage->trackSeconds(1) - 1));
    mci->To(2);
    command("Play");
    ASSERT_TRUE(stage->waitFor([&] { return !done.empty(); }, 4000));
    const std::int32_t end = mci->Position();
    EXPECT_TRUE(end == 2 || (trackOf(end) == 1 && secondsOf(end) >= stage->trackSeconds(1) - 1)) << std::hex << end;
}

/// MOVE-22
TEST_P(DiscContract, PlayingAndPausingAtOnceHoldsAtAPlace) {
    openDisc();
    mci->To(trackEnd(2));
    mci->From(tmsf(2, 0, 1));
    command("Play");
    command("Pause");
    stage->pass(400);
    EXPECT_EQ(trackOf(mci->Position()), 2);
    EXPECT_EQ(secondsOf(mci->Position()), 1);
    EXPECT_TRUE(done.empty());
    EXPECT_EQ(updates, 0);
}

/// MEDIA-19
TEST_P(DiscContract, APlaceBehindItsTrackIsTheTracksEnd) {
    openDisc();
    mci->From(tmsf(1, 0, 60));
    command("Play");
    command("Pause");
    stage->pass(100);
    const std::int32_t position = mci->Position();
    // The end of a track is where the next one begins. It may have played for a moment before it was held.
    EXPECT_EQ(position & 0xFFFFFF, tmsf(2, 0, 0)) << std::hex << position;
    EXPECT_LE(framesOf(position), stage->toleranceMs() * 75 / 1000);
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(MciControlContract);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(DiscContract);

}  // namespace corvane
