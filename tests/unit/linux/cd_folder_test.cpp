// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/discs/cd_folder.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "files/posix_files.h"
#include "media/discs/cd_sound.h"
#include "unit/linux/cd_image.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;

/// Sets a variable for the test's time.
class Environment {
public:
    Environment(std::string name, const std::string& value) : name_(std::move(name)) {
        if (const char* const old = std::getenv(name_.c_str())) old_ = old;
        ::setenv(name_.c_str(), value.c_str(), 1);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment() { old_.empty() ? ::unsetenv(name_.c_str()) : ::setenv(name_.c_str(), old_.c_str(), 1); }

private:
    std::string name_;
    std::string old_;
};

using Names = std::vector<std::string>;

class CdFolder : public testing::Test {
protected:
    test::ScratchFolder runtime_;
    test::ScratchFolder images_;
    Environment runtimeFolder_{"XDG_RUNTIME_DIR", runtime_.path().string()};
    std::string cue_ = test::writeImage(images_.path(), "Vol. 2 (live)", {{440, 75}, {0, 75}, {880, 150}});
    Environment chosen_{"CORVANE_CDROM", cue_};
    PosixFiles files_;
};

/// MEDIA-15: A disc shows as a folder of its audio tracks, and an entry leads back to its disc
/// MEDIA-43: CORVANE_CDROM names the drive, or an image that stands for one; an entry without another disc is looked
///     for there
TEST_F(CdFolder, ADiscShowsAsAFolderOfItsAudioTracks) {
    const std::vector<Drive> drives = discDrives();
    ASSERT_FALSE(drives.empty());
    EXPECT_EQ(drives.front().text, "CD (Vol. 2 (live).cue)");
    const std::string folder = drives.front().path;
    EXPECT_EQ(folder.find('.'), std::string::npos);
    EXPECT_EQ(discDrives().front().path, folder);
    EXPECT_TRUE(files_.readable(folder));
    EXPECT_EQ(files_.list(folder, "*.mp3;*.CDA"), (Names{"Track01.cda", "Track03.cda"}));
    EXPECT_EQ(files_.list(folder, "*.mp3"), Names{});
    EXPECT_EQ(files_.folders(folder), Names{});
    EXPECT_EQ(files_.lookUp(folder + "/Track03.cda"), "Track03.cda");
    for (const char* const name : {"/Track02.cda", "/Track04.cda", "/track03.cda", "/Track03.cda/", "/", "", "/.."}) {
        EXPECT_EQ(files_.lookUp(folder + name), std::nullopt) << name;
    }
    EXPECT_EQ(files_.lookUp(folder + "x/Track03.cda"), std::nullopt);
    EXPECT_FALSE(files_.readable(folder + "x"));
}

/// MEDIA-44: Tracks of a disc are no files: they are answered from the disc that is there now, keep their paths between
///     sessions, go with the disc, and nothing is written or read elsewhere for them
TEST_F(CdFolder, NothingIsWrittenAnywhere) {
    const std::string folder = discDrives().front().path;
    EXPECT_EQ(files_.list(folder, "*"), (Names{"Track01.cda", "Track03.cda"}));
    EXPECT_TRUE(openCdSound(folder + "/Track01.cda").sound);
    EXPECT_FALSE(fs::exists(folder));
    EXPECT_TRUE(fs::is_empty(runtime_.path()));
    EXPECT_FALSE(files_.replace(folder + "/Track01.cda", "x"));
    EXPECT_EQ(files_.read(folder + "/Track01.cda", 1000), std::nullopt);
}

/// MEDIA-15, MEDIA-43
TEST_F(CdFolder, AnEntryLeadsBackToItsDisc) {
    const std::string folder = discFolder(cue_);
    EXPECT_EQ(discPlace(folder + "/Track01.cda"), cue_);
    EXPECT_EQ(discPlace(folder), cue_);
    const Environment other("CORVANE_CDROM", "/elsewhere/other");
    EXPECT_EQ(discPlace(cue_), cue_);
    EXPECT_EQ(discPlace((images_.path() / "Track01.cda").string()), cue_);
    EXPECT_EQ(discPlace("/somewhere/Track01.cda"), "/elsewhere/other");
    EXPECT_EQ(discPlace(""), "/elsewhere/other");
}

/// MEDIA-43
TEST_F(CdFolder, OpensAsSoundFromAnEntry) {
    const OpenedSound opened = openCdSound(discFolder(cue_) + "/Track03.cda");
    ASSERT_TRUE(opened.sound) << opened.reason;
    EXPECT_EQ(opened.sound->trackLength(3), 2 << 8);
    const Environment none("CORVANE_CDROM", (images_.path() / "gone.cue").string());
    EXPECT_FALSE(openCdSound("/somewhere/Track01.cda").sound);
    EXPECT_NE(openCdSound("/somewhere/Track01.cda").reason, "");
}

/// MEDIA-44
TEST_F(CdFolder, AnotherDiscInTheDriveReplacesTheTracks) {
    const std::string folder = discFolder(cue_);
    test::writeImage(images_.path(), "Vol. 2 (live)", {{440, 75}});
    EXPECT_EQ(files_.list(folder, "*"), Names{"Track01.cda"});
    EXPECT_EQ(files_.lookUp(folder + "/Track03.cda"), std::nullopt);
}

/// MEDIA-44
TEST_F(CdFolder, TracksOfADiscThatIsGoneAreGone) {
    const std::string folder = discFolder(cue_);
    ASSERT_TRUE(files_.lookUp(folder + "/Track01.cda"));
    fs::rename(images_.path() / "Vol. 2 (live).bin", images_.path() / "away.bin");
    EXPECT_EQ(files_.lookUp(folder + "/Track01.cda"), std::nullopt) << "without the file that holds it";
    fs::rename(images_.path() / "away.bin", images_.path() / "Vol. 2 (live).bin");
    EXPECT_TRUE(files_.lookUp(folder + "/Track01.cda"));
    fs::remove(cue_);
    EXPECT_EQ(files_.lookUp(folder + "/Track01.cda"), std::nullopt);
    EXPECT_EQ(files_.list(folder, "*"), Names{});
    EXPECT_TRUE(files_.readable(folder)) << "a drive without a disc";
}

/// MEDIA-15
TEST_F(CdFolder, WhatIsNoDriveAndNoImageHasNoTracks) {
    for (const char* const place : {"/dev/zero", "/dev/tty", "/proc/kcore", "/etc/passwd", "/", "/nowhere"}) {
        const Environment other("CORVANE_CDROM", place);
        const std::string folder = discFolder(place);
        EXPECT_EQ(files_.list(folder, "*"), Names{}) << place;
        EXPECT_EQ(files_.lookUp(folder + "/Track01.cda"), std::nullopt) << place;
        EXPECT_NE(openCdSound(folder + "/Track01.cda").reason, "") << place;
    }
}

/// Lists of earlier versions name folders in places where somebody else may have made some since.
/// MEDIA-44
TEST_F(CdFolder, TracksUnderTheirEarlierPathsAreFoundAndNoFileIsAskedFor) {
    const std::string name = fs::path(discFolder(cue_)).filename();
    for (const fs::path& root :
         {runtime_.path() / "corvane-cd", fs::path("/tmp/corvane-cd-" + std::to_string(::getuid()))}) {
        EXPECT_EQ(files_.lookUp((root / name / "Track01.cda").string()), "Track01.cda");
        EXPECT_EQ(discPlace((root / name / "Track01.cda").string()), cue_);
        EXPECT_EQ(files_.lookUp((root / "other" / "Track01.cda").string()), std::nullopt);
    }
    const fs::path lure = runtime_.path() / "corvane-cd" / "other";
    fs::create_directories(lure);
    std::ofstream(lure / "Track01.cda") << "x";
    std::ofstream(lure / "disc-place") << cue_ << '\n';
    const Environment none("CORVANE_CDROM", "");
    EXPECT_EQ(files_.lookUp((lure / "Track01.cda").string()), std::nullopt);
    EXPECT_NE(discPlace((lure / "Track01.cda").string()), cue_);
}

}  // namespace
}  // namespace corvane
