// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/play_lists.h"

#include "storage/profile_file.h"
#include "unit/startup/startup_fixture.h"

namespace corvane {
namespace {

class PlayLists : public StartupFixture {
protected:
    void list(const std::string& lines) { machine.files.add("/app/FILE00.INI", "[FILELIST]\r\n" + lines); }

    PlayList read() { return readPlayList(player, "/app/FILE00.INI"); }

    /// Titles and paths of the player's list.
    std::vector<std::string> loaded() {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < static_cast<std::size_t>(player.gFileCount); ++i) {
            texts.push_back(player.gFileTitle[i] + " " + player.gFilePath[i]);
        }
        return texts;
    }

    std::vector<std::string> start(const std::string& commandLine = "") {
        machine.process.arguments = commandLine;
        loadListAtStart(player);
        return loaded();
    }

    const std::string& caption(int label) { return player.panelCaptions.at(static_cast<std::size_t>(label)); }
};

using Texts = std::vector<std::string>;

TEST_F(PlayLists, AFileIsNamedByPageAndList) {
    EXPECT_EQ(listFileName(player, 0, 0), "/app/FILE00.INI");
    EXPECT_EQ(listFileName(player, 3, 7), "/app/FILE37.INI");
    EXPECT_EQ(listFileName(player, 9, 9), "/app/FILE99.INI");
    EXPECT_EQ(listFileName(player, 1, 0), "/app/FILE10.INI");
}

TEST_F(PlayLists, TheCurrentListIsLoadedAtStart) {
    player.gPageNumber = 3;
    player.gListNumber = 7;
    machine.files.add("/app/FILE37.INI",
                      "[FILELIST]\r\nLISTNAME=Morning\r\nLIST000=intro.mid|C:\\MUSIC\\INTRO.MID\r\n"
                      "LIST001=photo.jpg|C:\\PICS\\PHOTO.JPG\r\nLIST002=|\r\n");
    EXPECT_EQ(start(), (Texts{"intro C:\\MUSIC\\INTRO.MID", "photo C:\\PICS\\PHOTO.JPG"}));
    EXPECT_EQ(caption(kNumberLabel), "001");
    EXPECT_EQ(caption(kTitleLabel), "intro");
    EXPECT_EQ(caption(kTotalLabel), "2");
}

TEST_F(PlayLists, AMissingFileLeavesListAndPanelAlone) {
    player.gFileCount = 1;
    player.gFileTitle[0] = "old";
    EXPECT_EQ(start(), Texts{"old "});
    EXPECT_EQ(caption(kNumberLabel), "");
    EXPECT_TRUE(machine.dialogs.boxes.empty());
}

TEST_F(PlayLists, AMissingKeyEndsTheList) {
    list("LIST000=a.x|1\nLIST001=b.x|2\nLIST002=c.x|3\nLIST004=e.x|5\n");
    EXPECT_EQ(start(), (Texts{"a 1", "b 2", "c 3"}));
}

TEST_F(PlayLists, AnEntryWithoutSeparatorOrTitleEndsTheList) {
    for (const char* end : {"", "|", "|C:\\a.mid", ",C:\\a.mid", "C:\\a.mid"}) {
        list("LIST000=a.x|1\nLIST001=" + std::string(end) + "\nLIST002=c.x|3\n");
        EXPECT_EQ(read().entries.size(), 1U) << end;
    }
}

TEST_F(PlayLists, TheCommaFormIsRead) {
    list("LIST000=song.wav,C:\\A\\SONG.WAV\n");
    EXPECT_EQ(start(), Texts{"song C:\\A\\SONG.WAV"});
}

TEST_F(PlayLists, ABarWinsOverACommaInFrontOfIt) {
    list("LIST000=a, b.wav|/m/a, b.wav\n");
    EXPECT_EQ(start(), Texts{"a, b /m/a, b.wav"});
}

TEST_F(PlayLists, TheFirstSeparatorDivides) {
    const auto entry = splitEntry("a|b|c");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "a");
    EXPECT_EQ(entry->path, "b|c");
}

TEST_F(PlayLists, TitlesAreCutAtTheirFirstDot) {
    list("LIST000=a.b.mid|1\nLIST001=no dot|2\nLIST002=.hidden.mid|3\nLIST003=last.mid|\n");
    EXPECT_EQ(start(), (Texts{"a 1", "no dot 2", " 3", "last "}));
}

TEST_F(PlayLists, TheEditorGetsNamesUncutAndTheListsName) {
    list("LISTNAME=\"My list\"\nLIST000=a.b.mid|/m/a.b.mid\n");
    const PlayList got = read();
    EXPECT_EQ(got.listName, "My list");
    ASSERT_EQ(got.entries.size(), 1U);
    EXPECT_EQ(got.entries[0].name, "a.b.mid");
    EXPECT_EQ(got.entries[0].path, "/m/a.b.mid");
}

TEST_F(PlayLists, AListHolds256EntriesAtMost) {
    std::string lines;
    for (int i = 0; i < 300; ++i)
        lines += "LIST" + mdlPublicFunction::zeroPadded(i, 3) + "=a.mid|" + std::to_string(i) + "\n";
    list(lines);
    start();
    EXPECT_EQ(player.gFileCount, 256);
    EXPECT_EQ(player.gFilePath[255], "255");
    EXPECT_EQ(caption(kTotalLabel), "256");
}

TEST_F(PlayLists, AnEntryIsReadUpTo511Bytes) {
    list("LIST000=a.mid|" + std::string(600, 'p') + "\n");
    EXPECT_EQ(read().entries.at(0).path, std::string(505, 'p'));
}

TEST_F(PlayLists, AnEntryWithoutRoomForItsPathDoesNotEndTheList) {
    const std::string longName(600, 'n');
    ASSERT_TRUE(writePlayList(player, "/app/FILE00.INI",
                              {"", {{longName, "/m/" + std::string(600, 'p')}, {"next", "/m/next.wav"}}}));
    const auto entries = read().entries;
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].name, longName.substr(0, 255));
    EXPECT_EQ(entries[0].path, "/m/" + std::string(252, 'p'));
    EXPECT_EQ(entries[1].path, "/m/next.wav");
}

TEST_F(PlayLists, DamagedFilesAreEmptyLists) {
    std::string noise;
    for (int i = 0; i < 50'000; ++i) noise += static_cast<char>((i * 7919 + i / 13) & 0xFF);
    for (const std::string& text :
         {std::string(), noise, std::string("[FILELIST]\nLIST000"), std::string(5'000, '\0')}) {
        machine.files.add("/app/FILE00.INI", text);
        EXPECT_TRUE(start().empty());
    }
}

TEST_F(PlayLists, AnAbsurdlyLongFileIsAnEmptyListAndIsNeverWrittenOver) {
    list("LIST000=a.mid|1\n;" + std::string(kMostProfileBytes, 'x'));
    EXPECT_TRUE(start().empty());
    EXPECT_FALSE(writePlayList(player, "/app/FILE00.INI", {}));
    EXPECT_TRUE(machine.calls("files").empty());
}

TEST_F(PlayLists, SavingWritesTheNameAndAll256KeysInOneReplacement) {
    EXPECT_TRUE(
        writePlayList(player, "/app/FILE00.INI",
                      {"Morning", {{"intro.mid", "C:\\MUSIC\\INTRO.MID"}, {"photo.jpg", "C:\\PICS\\PHOTO.JPG"}}}));
    std::string expected =
        "[FILELIST]\r\nLISTNAME=Morning\r\nLIST000=intro.mid|C:\\MUSIC\\INTRO.MID\r\n"
        "LIST001=photo.jpg|C:\\PICS\\PHOTO.JPG\r\n";
    for (int i = 2; i < 256; ++i) expected += "LIST" + mdlPublicFunction::zeroPadded(i, 3) + "=|\r\n";
    EXPECT_EQ(machine.files.bytes("/app/FILE00.INI"), expected);
    EXPECT_EQ(machine.calls("files"), Texts{"files.replace /app/FILE00.INI"});
}

TEST_F(PlayLists, AShorterListSavedOverALongerOneReadsBackShort) {
    PlayList ten{"ten", std::vector<ListEntry>(10, {"a.mid", "/m/a.mid"})};
    writePlayList(player, "/app/FILE00.INI", ten);
    ten.entries.resize(3);
    writePlayList(player, "/app/FILE00.INI", ten);
    EXPECT_EQ(read().entries.size(), 3U);
}

TEST_F(PlayLists, EntriesBeyond256AreNotSaved) {
    writePlayList(player, "/app/FILE00.INI", {"", std::vector<ListEntry>(300, {"a.mid", "/m/a.mid"})});
    EXPECT_EQ(read().entries.size(), 256U);
    EXPECT_EQ(machine.files.bytes("/app/FILE00.INI").find("LIST256"), std::string::npos);
}

TEST_F(PlayLists, AFailedSaveLeavesTheOldList) {
    writePlayList(player, "/app/FILE00.INI", {"old", {{"a.mid", "/m/a.mid"}}});
    machine.files.failReplace = true;
    EXPECT_FALSE(writePlayList(player, "/app/FILE00.INI", {"new", {}}));
    EXPECT_EQ(read().listName, "old");
}

TEST_F(PlayLists, NamesSurviveTheFile) {
    const std::vector<ListEntry> entries = {{" blanks .mid", "/m/ blanks .mid "},
                                            {"\"q.mid", "/m/\"q.mid\""},
                                            {"\xE6\x9B\xB2.mid", "/m/\xE6\x9B\xB2.mid"},
                                            {"\xFF\x80.mid", "/m/\xFF\x80.mid"},
                                            {"a=b;c.mid", "/m/a=b;c.mid"}};
    writePlayList(player, "/app/FILE00.INI", {" \"list\" ", entries});
    const PlayList got = read();
    EXPECT_EQ(got.listName, " \"list\" ");
    ASSERT_EQ(got.entries.size(), entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(got.entries[i].name, entries[i].name);
        EXPECT_EQ(got.entries[i].path, entries[i].path);
    }
}

TEST_F(PlayLists, ABarInANameDoesNotCostThePath) {
    writePlayList(player, "/app/FILE00.INI", {"", {{"a|b.mid", "/m/a|b.mid"}}});
    EXPECT_EQ(read().entries.at(0).name, "a_b.mid");
    EXPECT_EQ(read().entries.at(0).path, "/m/a|b.mid");
}

TEST_F(PlayLists, ALongNameIsShortenedRatherThanItsPathCut) {
    std::string name;
    for (int i = 0; i < 80; ++i) name += "\xE3\x81\x82";
    for (const std::size_t folder : {60U, 61U, 62U}) {
        const std::string path = "/music/" + std::string(folder, 'x') + "/" + name + ".mid";
        ASSERT_GT(name.size() + path.size(), 511U);
        writePlayList(player, "/app/FILE00.INI", {"", {{name + ".mid", path}}});
        const ListEntry got = read().entries.at(0);
        EXPECT_EQ(got.path, path);
        EXPECT_EQ(got.name, name.substr(0, got.name.size()));
        EXPECT_EQ(got.name.size() % 3, 0U) << "cut inside a character";
        EXPECT_GE(got.name.size() + path.size() + 1, 509U);
    }
}

TEST_F(PlayLists, TheCommandLineReplacesTheSavedList) {
    list("LIST000=saved.mid|/m/saved.mid\n");
    machine.files.add("/m/one.mid");
    machine.files.add("/m/TWO.Mp3");
    EXPECT_EQ(start("/m/one.mid /m/TWO.Mp3"), (Texts{"one /m/one.mid", "TWO /m/TWO.Mp3"}));
    EXPECT_EQ(caption(kNumberLabel), "001");
    EXPECT_EQ(caption(kTitleLabel), "one");
    EXPECT_EQ(caption(kTotalLabel), "2");
}

TEST_F(PlayLists, ACommandLineWithoutAUsableFileDoesNotLoadTheSavedList) {
    list("LIST000=saved.mid|/m/saved.mid\n");
    EXPECT_TRUE(start("/m/missing.mid /m/text.txt").empty());
    EXPECT_EQ(caption(kTotalLabel), "");
}

TEST_F(PlayLists, BlanksSplitTheCommandLineAndQuotesMeanNothing) {
    machine.files.add("/m/my song.mid");
    machine.files.add("/m/b.mid");
    machine.files.add("song.mid");
    EXPECT_EQ(start("  \"/m/my song.mid\"  /m/my song.mid /m/b.mid "), (Texts{"song song.mid", "b /m/b.mid"}));
}

TEST_F(PlayLists, AFolderWithADotIsSkipped) {
    machine.files.add("/my.music/a.mid");
    machine.files.add("./b.mid");
    machine.files.add("/m/c.d.mid");
    EXPECT_TRUE(start("/my.music/a.mid ./b.mid /m/c.d.mid").empty());
}

TEST_F(PlayLists, AMissingFileOfTheCommandLineIsSkipped) {
    machine.files.add("/m/b.mid");
    EXPECT_EQ(start("/m/a.mid /m/b.mid"), Texts{"b /m/b.mid"});
}

TEST_F(PlayLists, AHiddenFileOfTheCommandLineIsTaken) {
    machine.files.addHidden("/m/b.mid");
    EXPECT_EQ(start("/m/b.mid"), Texts{"b /m/b.mid"});
}

TEST_F(PlayLists, TheTitleIsTheNameAsTheFolderGivesIt) {
    machine.files.caseSensitive = false;
    machine.files.add("/m/Song.MID");
    EXPECT_EQ(start("/M/SONG.mid"), Texts{"Song /M/SONG.mid"});
}

TEST_F(PlayLists, ADoubledBackslashBehindTheDriveIsMadeSingle) {
    machine.files.slash = '\\';
    machine.files.add("C:\\a.mid");
    EXPECT_EQ(start("C:\\\\a.mid"), Texts{"a C:\\a.mid"});
}

TEST_F(PlayLists, TheCommandLineGives256EntriesAtMost) {
    std::string line;
    for (int i = 0; i < 300; ++i) {
        machine.files.add("/m/f" + std::to_string(i) + ".mid");
        line += "/m/f" + std::to_string(i) + ".mid ";
    }
    start(line);
    EXPECT_EQ(player.gFileCount, 256);
    EXPECT_EQ(player.gFileTitle[255], "f255");
}

TEST_F(PlayLists, ACommandLineOfNamesWithoutFilesIsNotLookedUpForEver) {
    std::string line;
    for (int i = 0; i < 100'000; ++i) line += "/gone/" + std::to_string(i) + ".mid ";
    machine.log.clear();
    EXPECT_TRUE(start(line).empty());
    EXPECT_LE(machine.log.allCalls("files").size(), 2000U);
}

TEST_F(PlayLists, ALongCommandLineOfRubbishIsPassedOver) {
    EXPECT_TRUE(start(std::string(1'000'000, ' ')).empty());
    EXPECT_TRUE(start(std::string(1'000'000, '.')).empty());
}

TEST_F(PlayLists, OpenedFilesReplaceTheListAsADropDoes) {
    list("LIST000=saved.mid|/m/saved.mid\n");
    machine.files.add("/my music/a song.mid");
    machine.process.opened = {"/my music/a song.mid", "/my music/missing.txt"};
    EXPECT_EQ(start(), Texts{"a song /my music/a song.mid"});
    EXPECT_EQ(caption(kTitleLabel), "a song");
    EXPECT_EQ(caption(kTotalLabel), "1");
}

}  // namespace
}  // namespace corvane
