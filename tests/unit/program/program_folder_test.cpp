// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/program_folder.h"

#include <gtest/gtest.h>

#include "fake/fake_folders.h"

namespace corvane {
namespace {

struct ProgramFolders : ::testing::Test {
    ProgramFolders() { files.addFolder("/bin"); }
    void ship(const std::string& place) { files.add(place + "/PANELSET/DEFAULT.CSV", "skin"); }
    ProgramFolder folder() { return {choice, folders, files}; }

    CallLog log;
    FakeFiles files{log};
    FakeFolders folders{files};
    FolderChoice choice{"", "/home/corvane", {"/bin", "/share"}};
};

/// START-43
TEST_F(ProgramFolders, TheChosenOneWinsAndNothingIsPutThere) {
    ship("/bin");
    for (const auto& [given, whole] : {std::pair{"/chosen/", "/chosen"}, {"chosen", "/here/chosen"}, {"/", "/"}}) {
        choice.chosen = given;
        EXPECT_EQ(folder().named(), whole);
        EXPECT_EQ(folder().ready(), whole);
    }
    EXPECT_FALSE(files.readable("/chosen"));
    choice.chosen = "/";
    EXPECT_EQ(folder().skins(), "/PANELSET") << "a root ends with its separator";
}

/// START-43
TEST_F(ProgramFolders, TheProgramsOwnWithSkinsBeside) {
    ship("/bin");
    ship("/share");
    EXPECT_EQ(folder().named(), "/bin");
    EXPECT_EQ(folder().ready(), "/bin");
    EXPECT_EQ(folder().skins(), "/bin/PANELSET");
    EXPECT_FALSE(files.readable("/home/corvane"));
}

/// START-43
TEST_F(ProgramFolders, ElseTheUsersMadeOnItsFirstUseWithTheShippedSkins) {
    ship("/share");
    EXPECT_EQ(folder().named(), "/home/corvane");
    EXPECT_EQ(folder().skins(), "/share/PANELSET") << "before its first use";
    EXPECT_FALSE(files.readable("/home/corvane")) << "naming it makes nothing";
    EXPECT_EQ(folder().ready(), "/home/corvane");
    EXPECT_EQ(files.bytes("/home/corvane/PANELSET/DEFAULT.CSV"), "skin");
    EXPECT_EQ(folder().skins(), "/home/corvane/PANELSET");
}

/// START-43
TEST_F(ProgramFolders, TheUsersWhereTheProgramsOwnCannotBeWritten) {
    ship("/bin");
    folders.readOnly.insert("/bin");
    EXPECT_EQ(folder().ready(), "/home/corvane");
    EXPECT_EQ(files.bytes("/home/corvane/PANELSET/DEFAULT.CSV"), "skin");
}

/// START-43
TEST_F(ProgramFolders, WithoutShippedSkinsTheUsersIsMadeAllTheSame) {
    EXPECT_EQ(folder().ready(), "/home/corvane");
    EXPECT_TRUE(files.readable("/home/corvane"));
    EXPECT_FALSE(files.readable("/home/corvane/PANELSET"));
    EXPECT_EQ(folder().skins(), "");
}

/// FAULT-12
TEST_F(ProgramFolders, WithoutAPlaceOfTheUsersTheShippedSkinsAreUsed) {
    ship("/share");
    folders.noneCanBeMade = true;
    EXPECT_EQ(folder().ready(), "/share");
    EXPECT_FALSE(files.has("/share/PANELSET/.shipped")) << "nothing is written there";
}

TEST_F(ProgramFolders, TheManualLiesBesideTheProgramOrIsInstalled) {
    EXPECT_EQ(folder().manual(), "");
    files.add("/share/manual/index.html");
    EXPECT_EQ(folder().manual(), "/share/manual/index.html");
    files.add("/bin/manual/index.html");
    EXPECT_EQ(folder().manual(), "/bin/manual/index.html");
}

}  // namespace
}  // namespace corvane
