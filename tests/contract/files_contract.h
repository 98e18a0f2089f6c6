// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/ports.h"

namespace corvane {

/// A party's files with an empty folder to try them in.
class FilesStage {
public:
    FilesStage() = default;
    FilesStage(const FilesStage&) = delete;
    FilesStage& operator=(const FilesStage&) = delete;
    virtual ~FilesStage() = default;

    virtual Files& files() = 0;
    virtual std::string root() = 0;  ///< an empty folder, without a separator at its end
    virtual void makeFile(const std::string& path, const std::string& bytes) = 0;
    virtual void makeHiddenFile(const std::string& path) = 0;
    virtual void makeFolder(const std::string& path) = 0;
    virtual std::string bytesOf(const std::string& path) = 0;
    /// From now on no file of the root folder can be replaced; false: this party cannot arrange that.
    virtual bool failReplacements() = 0;
    virtual std::string hiddenName() = 0;  ///< a name that makes or may make a file hidden
};

using FilesStageFactory = std::unique_ptr<FilesStage> (*)();

class FilesContract : public ::testing::TestWithParam<FilesStageFactory> {
protected:
    using Texts = std::vector<std::string>;
    std::unique_ptr<FilesStage> stage = GetParam()();
    Files& files = stage->files();
    std::string in(const std::string& name) { return stage->root() + files.separator() + name; }
};

/// MEDIA-33: The lookup gives a file's own name, hidden ones included, and takes no folder for a file
/// DROP-06
TEST_P(FilesContract, LooksUpAFilesOwnName) {
    stage->makeFile(in("Song.wav"), "");
    EXPECT_EQ(files.lookUp(in("Song.wav")), "Song.wav");
    EXPECT_EQ(files.lookUp(in("Other.wav")), std::nullopt);
    EXPECT_EQ(files.lookUp(in("Nowhere") + files.separator() + "Song.wav"), std::nullopt);
    EXPECT_EQ(files.lookUp(""), std::nullopt);
}

/// START-12, DROP-06, OPEN-05, MEDIA-33, WIN-11
TEST_P(FilesContract, LooksUpHiddenFilesToo) {
    stage->makeHiddenFile(in(stage->hiddenName()));
    EXPECT_EQ(files.lookUp(in(stage->hiddenName())), stage->hiddenName());
}

/// MEDIA-33
TEST_P(FilesContract, AFolderIsNoFile) {
    stage->makeFolder(in("folder"));
    EXPECT_EQ(files.lookUp(in("folder")), std::nullopt);
}

/// DROP-17
TEST_P(FilesContract, LooksUpManyInTheirOrder) {
    stage->makeFile(in("Song.wav"), "");
    stage->makeFile(in("b.wav"), "");
    stage->makeFolder(in("folder"));
    using Names = std::vector<std::optional<std::string>>;
    EXPECT_EQ(files.lookUpAll({in("b.wav"), in("Other.wav"), "", in("folder"), in("Song.wav")}),
              (Names{"b.wav", std::nullopt, std::nullopt, std::nullopt, "Song.wav"}));
    EXPECT_EQ(files.lookUpAll({}), Names());
}

/// MEDIA-34: A list of files is sorted without case and matches any of several patterns
TEST_P(FilesContract, ListsFilesThatMatchSortedWithoutCase) {
    for (const char* name : {"b.BMP", "A.bmp", "c.jpg", "d.wav", "bmp", "x.bmp.txt"}) stage->makeFile(in(name), "");
    stage->makeFolder(in("folder.bmp"));
    EXPECT_EQ(files.list(stage->root(), "*.bmp;*.JPG"), (Texts{"A.bmp", "b.BMP", "c.jpg"}));
    EXPECT_EQ(files.list(stage->root(), "*.mid"), Texts{});
    EXPECT_EQ(files.list(stage->root(), "?.wav"), Texts{"d.wav"});
    EXPECT_EQ(files.list(in("nowhere"), "*"), Texts{});
}

TEST_P(FilesContract, ListsFoldersSorted) {
    for (const char* name : {"b", "A", "c"}) stage->makeFolder(in(name));
    stage->makeFile(in("file"), "");
    EXPECT_EQ(files.folders(stage->root()), (Texts{"A", "b", "c"}));
    EXPECT_EQ(files.folders(in("A")), Texts{});
    EXPECT_EQ(files.folders(in("nowhere")), Texts{});
}

TEST_P(FilesContract, KnowsAFolderThatCanBeRead) {
    EXPECT_TRUE(files.readable(stage->root()));
    EXPECT_FALSE(files.readable(in("nowhere")));
    stage->makeFile(in("file"), "");
    EXPECT_FALSE(files.readable(in("file")));
}

TEST_P(FilesContract, ReadsAWholeFileOfAnyBytes) {
    const std::string bytes("a\r\n\0\xFF\x81z", 7);
    stage->makeFile(in("data"), bytes);
    stage->makeFile(in("empty"), "");
    EXPECT_EQ(files.read(in("data"), 7), bytes);
    EXPECT_EQ(files.read(in("empty"), 7), "");
}

TEST_P(FilesContract, DoesNotReadWhatIsTooLongOrNoFile) {
    stage->makeFile(in("data"), "12345678");
    stage->makeFolder(in("folder"));
    EXPECT_EQ(files.read(in("data"), 7), std::nullopt);
    EXPECT_EQ(files.read(in("nowhere"), 7), std::nullopt);
    EXPECT_EQ(files.read(in("folder"), 7), std::nullopt);
}

/// MEDIA-35: A replacement is whole or leaves the old file
/// WIN-14: A file is replaced whole or not at all, a read-only one never
TEST_P(FilesContract, ReplacesAndCreatesAFile) {
    stage->makeFile(in("old.ini"), "a long old content");
    EXPECT_TRUE(files.replace(in("old.ini"), "new"));
    EXPECT_EQ(stage->bytesOf(in("old.ini")), "new");
    EXPECT_TRUE(files.replace(in("old.ini"), "n"));
    EXPECT_EQ(stage->bytesOf(in("old.ini")), "n") << "one byte is a content, too";
    EXPECT_TRUE(files.replace(in("fresh.ini"), ""));
    EXPECT_EQ(stage->bytesOf(in("fresh.ini")), "");
    EXPECT_EQ(files.list(stage->root(), "*"), (Texts{"fresh.ini", "old.ini"})) << "nothing is left beside";
}

TEST_P(FilesContract, CannotReplaceWhereThereIsNoFolder) {
    EXPECT_FALSE(files.replace(in("nowhere") + files.separator() + "a.ini", "new"));
    stage->makeFolder(in("folder"));
    EXPECT_FALSE(files.replace(in("folder"), "new"));
}

/// SET-57, MEDIA-35, WIN-14
TEST_P(FilesContract, AFailedReplacementLeavesTheOldFile) {
    stage->makeFile(in("old.ini"), "old");
    if (!stage->failReplacements()) GTEST_SKIP() << "replacements cannot be made to fail here";
    EXPECT_FALSE(files.replace(in("old.ini"), "new"));
    EXPECT_EQ(stage->bytesOf(in("old.ini")), "old");
    EXPECT_EQ(files.list(stage->root(), "*"), Texts{"old.ini"});
}

TEST_P(FilesContract, OffersDrivesThatCanBeOpened) {
    const auto drives = files.drives();
    ASSERT_FALSE(drives.empty());
    for (const Drive& drive : drives) {
        EXPECT_NE(drive.text, "");
        EXPECT_NE(drive.path, "");
    }
    EXPECT_TRUE(files.readable(drives[0].path));
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(FilesContract);

}  // namespace corvane
