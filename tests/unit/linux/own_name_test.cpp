// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/own_name.h"

#include <gtest/gtest.h>

#include "files/posix_files.h"
#include "unit/linux/caseless_folder.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

struct OwnName : ::testing::Test {
    void mountNames(std::vector<std::string> names) {
        caseless_ = std::make_unique<test::CaselessFolder>(folder.in(""), std::move(names));
        if (!caseless_->mounted()) GTEST_SKIP() << "this user may not mount a file system";
    }
    std::string lookedUp(const std::string& name) { return files_.lookUp(folder.in(name)).value_or("not there"); }

    test::TemporaryFolder folder;

private:
    std::unique_ptr<test::CaselessFolder> caseless_;
    PosixFiles files_;
};

TEST_F(OwnName, IsTheFilesAndNotWhatWasTypedWhereCaseIsIgnored) {
    ASSERT_NO_FATAL_FAILURE(mountNames({"Other.mp3", "My Song.MP3", "\xC3\x89t\xC3\xA9.wav", "01.mid"}));
    if (IsSkipped()) return;
    EXPECT_EQ(lookedUp("my song.mp3"), "My Song.MP3");
    EXPECT_EQ(lookedUp("My Song.MP3"), "My Song.MP3");
    EXPECT_EQ(lookedUp("\xC3\xA9T\xC3\x89.WAV"), "\xC3\x89t\xC3\xA9.wav");
    EXPECT_EQ(lookedUp("01.MID"), "01.mid");
    EXPECT_EQ(lookedUp("song.mp3"), "not there");
}

TEST_F(OwnName, IsTheAskedOneInAFolderTooLargeToBeReadForEachName) {
    std::vector<std::string> names;
    for (int i = 0; i < kMostEntriesRead; ++i) names.push_back("a" + std::to_string(i) + ".mp3");
    names.emplace_back("Last.mp3");
    ASSERT_NO_FATAL_FAILURE(mountNames(names));
    if (IsSkipped()) return;
    EXPECT_EQ(lookedUp("A7.MP3"), "a7.mp3");
    EXPECT_EQ(lookedUp("LAST.MP3"), "LAST.MP3");
}

TEST_F(OwnName, OfFilesThatDifferInCaseAloneIsTheOneAskedFor) {
    folder.write("song.mp3", "");
    folder.write("Song.mp3", "");
    EXPECT_EQ(lookedUp("song.mp3"), "song.mp3");
    EXPECT_EQ(lookedUp("Song.mp3"), "Song.mp3");
    EXPECT_EQ(lookedUp("SONG.mp3"), "not there");
}

TEST_F(OwnName, OfAHardLinkIsTheOneAskedFor) {
    folder.write("song.mp3", "");
    std::filesystem::create_hard_link(folder.in("song.mp3"), folder.in("Song.mp3"));
    EXPECT_EQ(lookedUp("song.mp3"), "song.mp3");
    EXPECT_EQ(lookedUp("Song.mp3"), "Song.mp3");
}

}  // namespace
}  // namespace corvane
