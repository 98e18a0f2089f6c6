// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/sound_ahead.h"

#include "linux/qt_time.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

class Ahead : public testing::Test {
protected:
    Ahead() {
        test::offscreenApplication();
        for (const char* name : {"a.mp3", "b.mp3"}) copy("cbr_bare.mp3", name);
    }
    void copy(const std::string& from, const std::string& to) {
        std::filesystem::copy_file(std::string(CORVANE_SOURCE_DIR) + "/tests/data/sound/" + from, folder_.in(to),
                                   std::filesystem::copy_options::overwrite_existing);
    }
    void expectOpen(const std::string& name) {
        ahead_.expect(folder_.in(name), SoundLevel::OfAlbum);
        ASSERT_TRUE(test::waitUntil([this] { return ahead_.isOpen(); }));
    }
    std::shared_ptr<OpenJob> take(const std::string& name, SoundLevel level = SoundLevel::OfAlbum) {
        return ahead_.take(folder_.in(name), level);
    }
    test::TemporaryFolder folder_;
    QtTimers timers_;
    SoundAhead ahead_{timers_};
};

/// LOUD-09
TEST_F(Ahead, TheExpectedSoundIsThereAtOnceAndOnce) {
    expectOpen("a.mp3");
    const auto job = take("a.mp3");
    ASSERT_TRUE(job);
    EXPECT_TRUE(job->finished());
    EXPECT_TRUE(job->sound());
    EXPECT_EQ(take("a.mp3"), nullptr);
}

/// LOUD-10: A sound that was opened ahead plays only as what it was opened for: the same path, level and file
TEST_F(Ahead, AnotherOneIsNotTaken) {
    expectOpen("a.mp3");
    EXPECT_EQ(take("b.mp3"), nullptr);
    EXPECT_EQ(take("a.mp3", SoundLevel::OfTrack), nullptr);
    EXPECT_TRUE(take("a.mp3"));
}

/// LOUD-10
TEST_F(Ahead, AFileThatWasReplacedOrRemovedIsOpenedAnew) {
    expectOpen("a.mp3");
    std::filesystem::remove(folder_.in("a.mp3"));
    EXPECT_EQ(take("a.mp3"), nullptr);
    expectOpen("b.mp3");
    std::filesystem::remove(folder_.in("b.mp3"));
    copy("vbr_bare.mp3", "b.mp3");
    EXPECT_EQ(take("b.mp3"), nullptr);
}

/// OPEN-57: Where no seam is to be closed the next sound is opened as well, a moment behind the present one's begin
TEST_F(Ahead, WithoutASeamToCloseItIsOpenedAMomentLater) {
    ahead_.expect(folder_.in("a.mp3"), SoundLevel::AsRecorded);
    EXPECT_EQ(take("a.mp3", SoundLevel::AsRecorded), nullptr) << "not begun yet";
    ASSERT_TRUE(test::waitUntil([this] { return ahead_.isOpen(); }));
    EXPECT_EQ(take("a.mp3"), nullptr) << "for another level";
    EXPECT_TRUE(take("a.mp3", SoundLevel::AsRecorded));
}

/// OPEN-57
TEST_F(Ahead, TheSameOneIsNotOpenedAgain) {
    expectOpen("a.mp3");
    ahead_.expect(folder_.in("a.mp3"), SoundLevel::OfAlbum);
    EXPECT_TRUE(ahead_.isOpen());
    ahead_.expect(folder_.in("b.mp3"), SoundLevel::AsRecorded);
    EXPECT_FALSE(ahead_.isOpen()) << "at most one is";
}

TEST_F(Ahead, WhatWasDroppedIsGone) {
    expectOpen("a.mp3");
    ahead_.drop();
    EXPECT_FALSE(ahead_.isOpen());
    EXPECT_EQ(take("a.mp3"), nullptr);
}

}  // namespace
}  // namespace corvane
