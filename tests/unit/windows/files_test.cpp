// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "unit/windows/folder_rig.h"
#include "winapi/program/known_folders.h"
#include "windows/about.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

struct DesktopFiles : ::testing::Test {
    test::TriedFolder folder;
    WindowsFiles files;
};

TEST(TriedFolders, AreNewAndLeaveNothing) {
    std::string path;
    {
        const test::TriedFolder folder;
        path = folder.path();
        EXPECT_TRUE(WindowsFiles().folders(path).empty());
        std::string deep = path;
        for (int i = 0; i < 6; ++i) {
            deep += '\\' + std::string(60, 'd');
            CreateDirectoryW(systemPath(deep).c_str(), nullptr);
        }
        test::writeFile(deep + "\\a.ini", "kept");
        SetFileAttributesW(systemPath(deep + "\\a.ini").c_str(), FILE_ATTRIBUTE_READONLY);
        ASSERT_NE(GetFileAttributesW(systemPath(deep + "\\a.ini").c_str()), INVALID_FILE_ATTRIBUTES);
        test::writeFile(folder.in("hidden.ini"), "kept");
        SetFileAttributesW(systemPath(folder.in("hidden.ini")).c_str(),
                           FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY);
    }
    EXPECT_EQ(GetFileAttributesW(systemPath(path).c_str()), INVALID_FILE_ATTRIBUTES);
}

/// WIN-11: Hidden files are left out of lists but can be opened
TEST_F(DesktopFiles, HiddenOnesAreLeftOutOfLists) {
    test::writeFile(folder.in("a.wav"), "");
    test::writeFile(folder.in("b.wav"), "");
    SetFileAttributesW(systemPath(folder.in("b.wav")).c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(files.list(folder.path(), "*.wav"), Texts{"a.wav"});
    EXPECT_EQ(files.lookUp(folder.in("b.wav")), "b.wav");
}

/// WIN-09
TEST_F(DesktopFiles, NamesOfAnyAlphabetAreFoundWhateverTheCase) {
    const std::string name = "\xC3\x84nderung \xE6\x97\xA5.MP3";
    test::writeFile(folder.in(name), "sound");
    EXPECT_EQ(files.list(folder.path(), "*.mp3"), Texts{name});
    EXPECT_EQ(files.read(folder.in(name), 10), "sound");
    EXPECT_EQ(files.lookUp(folder.in("\xC3\xA4NDERUNG \xE6\x97\xA5.mp3")), name);
}

/// WIN-12: A name with a pattern's characters is no file's
TEST_F(DesktopFiles, APatternIsNoName) {
    test::writeFile(folder.in("a.wav"), "");
    EXPECT_EQ(files.lookUp(folder.in("*.wav")), std::nullopt);
    EXPECT_EQ(files.lookUp(folder.in("?.wav")), std::nullopt);
}

/// WIN-13: Paths beyond the usual length are read and written
TEST_F(DesktopFiles, PathsBeyondTheUsualLengthWork) {
    std::string deep = folder.path();
    for (int i = 0; i < 6; ++i) {
        deep += '\\' + std::string(60, 'd');
        CreateDirectoryW(systemPath(deep).c_str(), nullptr);
    }
    ASSERT_GT(deep.size(), 300U);
    EXPECT_TRUE(files.replace(deep + "\\a.ini", "kept"));
    EXPECT_EQ(files.read(deep + "\\a.ini", 10), "kept");
    EXPECT_EQ(files.lookUp(deep + "\\A.INI"), "a.ini");
}

/// WIN-15: What a killed save left is removed
TEST_F(DesktopFiles, LeftoversOfAKilledSaveAreRemoved) {
    test::writeFile(folder.in(".corvane-0123abcd"), "half");
    test::writeFile(folder.in(".corvane-note"), "kept");
    removeUnfinishedFiles(folder.path());
    EXPECT_EQ(files.lookUp(folder.in(".corvane-0123abcd")), std::nullopt);
    EXPECT_EQ(files.lookUp(folder.in(".corvane-note")), ".corvane-note");
}

/// WIN-14
TEST_F(DesktopFiles, AReadOnlyFileIsNotReplaced) {
    test::writeFile(folder.in("old.ini"), "old");
    ASSERT_NE(SetFileAttributesW(systemPath(folder.in("old.ini")).c_str(), FILE_ATTRIBUTE_READONLY), 0);
    EXPECT_FALSE(files.replace(folder.in("old.ini"), "new"));
    EXPECT_EQ(files.read(folder.in("old.ini"), 10), "old");
    SetFileAttributesW(systemPath(folder.in("old.ini")).c_str(), FILE_ATTRIBUTE_NORMAL);
}

struct ProgramFolders : DesktopFiles {
    ProgramFolders() {
        for (const char* each : {"bin", "bin\\PANELSET", "data"}) {
            CreateDirectoryW(systemPath(folder.in(each)).c_str(), nullptr);
        }
        test::writeFile(folder.in("bin\\PANELSET\\DEFAULT.CSV"), "skin");
    }
    std::string ready() { return ProgramFolder(choice, folders, files).ready(); }
    KnownFolders folders;
    FolderChoice choice{"", folder.in("data\\Corvane"), {folder.in("bin")}};
};

/// WIN-16: The program's folder is the chosen one, else its own where the skins lie and it can be written, else the
///     user's
TEST_F(ProgramFolders, TheChosenOneWinsThenTheProgramsOwn) {
    EXPECT_EQ(ready(), folder.in("bin"));
    choice.chosen = folder.in("chosen\\");
    EXPECT_EQ(ready(), folder.in("chosen"));
    choice.chosen = "C:\\";
    EXPECT_EQ(ready(), "C:\\");
}

/// WIN-16
TEST_F(ProgramFolders, WithoutSkinsBesideTheProgramItIsTheUsers) {
    choice.shipped = {folder.in("elsewhere")};
    EXPECT_EQ(ready(), folder.in("data\\Corvane"));
    EXPECT_TRUE(files.readable(folder.in("data\\Corvane")));
}

/// WIN-50: An update's new skins reach a user who has the program installed
TEST_F(ProgramFolders, AnUpdatesNewSkinsReachTheUser) {
    // Installed for all users, nothing can be written beside the program: here because the name is taken.
    const std::string taken = "bin\\.corvane-" + std::to_string(GetCurrentProcessId());
    CreateDirectoryW(systemPath(folder.in(taken)).c_str(), nullptr);
    const std::string own = folder.in("data\\Corvane");
    EXPECT_EQ(ready(), own);
    EXPECT_EQ(files.read(own + "\\PANELSET\\DEFAULT.CSV", 10), "skin");
    DeleteFileW(systemPath(own + "\\PANELSET\\DEFAULT.CSV").c_str());
    test::writeFile(folder.in("bin\\PANELSET\\BRASS.CSV"), "new");
    EXPECT_EQ(ready(), own);
    EXPECT_EQ(files.read(own + "\\PANELSET\\BRASS.CSV", 10), "new");
    EXPECT_EQ(files.lookUp(own + "\\PANELSET\\DEFAULT.CSV"), std::nullopt) << "what the user deletes stays deleted";
}

/// WIN-54: `--about` tells what is in force and what is missing, and makes nothing
TEST_F(ProgramFolders, AboutTellsWhatIsThereAndMakesNothing) {
    test::writeFile(folder.in("bin\\PANELSET\\DEFAULT.BMP"), "skin");
    test::writeFile(folder.in("bin\\PANELSET\\HALF.CSV"), "no picture");
    const std::string here = aboutText("corvane 1", choice);
    EXPECT_TRUE(here.starts_with("corvane 1\nFolder:            " + folder.in("bin") + "\n")) << here;
    EXPECT_NE(here.find("Skins:             DEFAULT\n"), std::string::npos) << here;
    choice.shipped = {folder.in("elsewhere")};
    const std::string first = aboutText("corvane 1", choice);
    EXPECT_NE(first.find(folder.in("data\\Corvane") + " (made at the first start)\n"), std::string::npos) << first;
    EXPECT_FALSE(files.readable(folder.in("data\\Corvane")));
}

/// WIN-16
TEST_F(ProgramFolders, AFullPathHasNoDotsOfItsOwn) {
    EXPECT_EQ(fullPath(folder.in("bin\\..\\data\\.\\a.wav")), folder.in("data\\a.wav"));
    EXPECT_EQ(fullPath("c:/music/a.wav"), "C:\\music\\a.wav");
}

}  // namespace
}  // namespace corvane
