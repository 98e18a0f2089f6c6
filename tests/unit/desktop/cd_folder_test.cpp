// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/cd_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <set>

#include "desktop/media/cd_sound.h"
#include "unit/desktop/cd_image.h"

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

std::set<std::string> namesIn(const fs::path& folder) {
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename());
    return names;
}

class CdFolder : public testing::Test {
protected:
    test::ScratchFolder runtime_;
    test::ScratchFolder images_;
    Environment runtimeFolder_{"XDG_RUNTIME_DIR", runtime_.path().string()};
    std::string cue_ = test::writeImage(images_.path(), "Vol. 2 (live)", {{440, 75}, {0, 75}, {880, 150}});
    Environment chosen_{"CORVANE_CDROM", cue_};
};

TEST_F(CdFolder, ADiscShowsAsAFolderOfItsAudioTracks) {
    const std::vector<Drive> drives = discDrives();
    ASSERT_FALSE(drives.empty());
    EXPECT_EQ(drives.front().text, "CD (Vol. 2 (live).cue)");
    EXPECT_EQ(drives.front().path.find('.'), std::string::npos);
    EXPECT_EQ(namesIn(drives.front().path), (std::set<std::string>{"Track01.cda", "Track03.cda", "disc-place"}));
    EXPECT_EQ(fs::file_size(drives.front().path + "/Track03.cda"), 44U);
    EXPECT_EQ(discDrives().front().path, drives.front().path);
}

TEST_F(CdFolder, TheStubNamesItsTrack) {
    std::ifstream file(makeDiscFolder(cue_) + "/Track03.cda", std::ios::binary);
    const std::string stub((std::istreambuf_iterator<char>(file)), {});
    ASSERT_EQ(stub.size(), 44U);
    EXPECT_EQ(stub.substr(0, 4), "RIFF");
    EXPECT_EQ(stub.substr(8, 8), "CDDAfmt ");
    EXPECT_EQ(stub[22], 3);                                     // the track
    EXPECT_EQ(static_cast<unsigned char>(stub[28]), 150);       // its first sector
    EXPECT_EQ(static_cast<unsigned char>(stub[32]), 150);       // its length
    EXPECT_EQ(stub.substr(36, 4), std::string("\0\4\0\0", 4));  // starts at 0:04.00 of the disc
    EXPECT_EQ(stub.substr(40, 4), std::string("\0\2\0\0", 4));
}

TEST_F(CdFolder, AnEntryLeadsBackToItsDisc) {
    const std::string folder = makeDiscFolder(cue_);
    const Environment other("CORVANE_CDROM", "/elsewhere/other");
    EXPECT_EQ(discPlace(folder + "/Track01.cda"), cue_);
    EXPECT_EQ(discPlace(folder), cue_);
    EXPECT_EQ(discPlace(cue_), cue_);
    EXPECT_EQ(discPlace((images_.path() / "Track01.cda").string()), cue_);
    EXPECT_EQ(discPlace("/somewhere/Track01.cda"), "/elsewhere/other");
    EXPECT_EQ(discPlace(""), "/elsewhere/other");
}

TEST_F(CdFolder, OpensAsSoundFromAnEntry) {
    const OpenedSound opened = openCdSound(makeDiscFolder(cue_) + "/Track03.cda");
    ASSERT_TRUE(opened.sound) << opened.reason;
    EXPECT_EQ(opened.sound->trackLength(3), 2 << 8);
    const Environment none("CORVANE_CDROM", (images_.path() / "gone.cue").string());
    EXPECT_FALSE(openCdSound("/somewhere/Track01.cda").sound);
    EXPECT_NE(openCdSound("/somewhere/Track01.cda").reason, "");
}

TEST_F(CdFolder, AnotherDiscInTheDriveReplacesTheTracks) {
    const std::string folder = makeDiscFolder(cue_);
    test::writeImage(images_.path(), "Vol. 2 (live)", {{440, 75}});
    refreshDiscPath(folder);
    EXPECT_EQ(namesIn(folder), (std::set<std::string>{"Track01.cda", "disc-place"}));
    fs::remove(cue_);
    refreshDiscPath(folder + "/Track02.cda");
    EXPECT_EQ(namesIn(folder), (std::set<std::string>{"disc-place"}));
}

TEST_F(CdFolder, AFolderThatIsGoneComesBackUnderItsPath) {
    const std::string folder = makeDiscFolder(cue_);
    fs::remove_all(runtime_.path() / "corvane-cd");
    refreshDiscPath("/somewhere/else/Track01.cda");
    EXPECT_FALSE(fs::exists(folder));
    refreshDiscPath(folder + "/Track01.cda");
    EXPECT_TRUE(fs::exists(folder + "/Track01.cda"));
}

TEST_F(CdFolder, ARuntimeFolderWithADotIsNotUsed) {
    const test::ScratchFolder dotted;
    const Environment runtime("XDG_RUNTIME_DIR", (dotted.path() / "a.b").string());
    const std::string folder = makeDiscFolder(cue_);
    EXPECT_EQ(folder.find('.'), std::string::npos);
    EXPECT_TRUE(fs::exists(folder + "/Track01.cda"));
    fs::remove_all(folder);
}

}  // namespace
}  // namespace corvane
