// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/play_lists.h"

#include "storage/profile_file.h"
#include "types/numbers.h"
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

/// LIST-01: A list's file is FILE and page × 10 + list in two digits and .INI, in the program's folder
/// LIST-02: Page 1 list 0 has FILE10.INI, which no other list can have because list numbers stay within 0 to 9
TEST_F(PlayLists, AFileIsNamedByPageAndList) {
    EXPECT_EQ(listFileName(player, 0, 0), "/app/FILE00.INI");
    EXPECT_EQ(listFileName(player, 3, 7), "/app/FILE37.INI");
    EXPECT_EQ(listFileName(player, 9, 9), "/app/FILE99.INI");
    EXPECT_EQ(listFileName(player, 1, 0), "/app/FILE10.INI");
}

/// LIST-09: Without a command line the file of the current page and list is read
/// LIST-19: The number of entries is the list's length
/// LIST-20: Paths are not looked up when a list is read
/// LIST-21: With an entry at least the panel shows number 001, the first title and the plain count
/// LIST-05, LIST-06
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

/// LIST-22: Without an entry list and panel stay as they are
/// LIST-23: A missing file is an empty list, silently
TEST_F(PlayLists, AMissingFileLeavesListAndPanelAlone) {
    player.gFileCount = 1;
    player.gFileTitle[0] = "old";
    EXPECT_EQ(start(), Texts{"old "});
    EXPECT_EQ(caption(kNumberLabel), "");
    EXPECT_TRUE(machine.dialogs.boxes.empty());
}

/// LIST-15: An empty or missing key ends the list; later entries are never read: without LIST003 there are three
TEST_F(PlayLists, AMissingKeyEndsTheList) {
    list("LIST000=a.x|1\nLIST001=b.x|2\nLIST002=c.x|3\nLIST004=e.x|5\n");
    EXPECT_EQ(start(), (Texts{"a 1", "b 2", "c 3"}));
}

/// LIST-13: An entry without a separator ends the list
/// LIST-14: An entry whose separator comes first, as of an unused one, ends the list
TEST_F(PlayLists, AnEntryWithoutSeparatorOrTitleEndsTheList) {
    for (const char* end : {"", "|", "|C:\\a.mid", ",C:\\a.mid", "C:\\a.mid"}) {
        list("LIST000=a.x|1\nLIST001=" + std::string(end) + "\nLIST002=c.x|3\n");
        EXPECT_EQ(read().entries.size(), 1U) << end;
    }
}

/// LIST-12: Without a bar the first comma divides
/// LIST-18
TEST_F(PlayLists, TheCommaFormIsRead) {
    list("LIST000=song.wav,C:\\A\\SONG.WAV\n");
    EXPECT_EQ(start(), Texts{"song C:\\A\\SONG.WAV"});
}

/// LIST-11
TEST_F(PlayLists, ABarWinsOverACommaInFrontOfIt) {
    list("LIST000=a, b.wav|/m/a, b.wav\n");
    EXPECT_EQ(start(), Texts{"a, b /m/a, b.wav"});
}

/// LIST-11: The first bar divides title and path
/// LIST-18: The path is all that follows the separator
TEST_F(PlayLists, TheFirstSeparatorDivides) {
    const auto entry = splitEntry("a|b|c");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "a");
    EXPECT_EQ(entry->path, "b|c");
}

/// LIST-16: The title is cut at its first dot: a.b.mid shows as a
/// LIST-17: A title without a dot is the whole text
TEST_F(PlayLists, TitlesAreCutAtTheirFirstDot) {
    list("LIST000=a.b.mid|1\nLIST001=no dot|2\nLIST002=.hidden.mid|3\nLIST003=last.mid|\n");
    EXPECT_EQ(start(), (Texts{"a 1", "no dot 2", " 3", "last "}));
}

/// LIST-05: LISTNAME is the list's name; the editor reads it, the start does not
TEST_F(PlayLists, TheEditorGetsNamesUncutAndTheListsName) {
    list("LISTNAME=\"My list\"\nLIST000=a.b.mid|/m/a.b.mid\n");
    const PlayList got = read();
    EXPECT_EQ(got.listName, "My list");
    ASSERT_EQ(got.entries.size(), 1U);
    EXPECT_EQ(got.entries[0].name, "a.b.mid");
    EXPECT_EQ(got.entries[0].path, "/m/a.b.mid");
}

/// LIST-07: A list holds 256 entries at most
/// LIST-10: Entries are read from LIST000 upwards, 256 at most
TEST_F(PlayLists, AListHolds256EntriesAtMost) {
    std::string lines;
    for (int i = 0; i < 300; ++i) lines += "LIST" + zeroPadded(i, 3) + "=a.mid|" + std::to_string(i) + "\n";
    list(lines);
    start();
    EXPECT_EQ(player.gFileCount, 256);
    EXPECT_EQ(player.gFilePath[255], "255");
    EXPECT_EQ(caption(kTotalLabel), "256");
}

/// LIST-08: An entry is read up to 511 bytes
TEST_F(PlayLists, AnEntryIsReadUpTo511Bytes) {
    list("LIST000=a.mid|" + std::string(600, 'p') + "\n");
    EXPECT_EQ(read().entries.at(0).path, std::string(505, 'p'));
}

/// LIST-08
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

/// LIST-24: A damaged file is an empty list
TEST_F(PlayLists, DamagedFilesAreEmptyLists) {
    std::string noise;
    for (int i = 0; i < 50'000; ++i) noise += static_cast<char>((i * 7919 + i / 13) & 0xFF);
    for (const std::string& text :
         {std::string(), noise, std::string("[FILELIST]\nLIST000"), std::string(5'000, '\0')}) {
        machine.files.add("/app/FILE00.INI", text);
        EXPECT_TRUE(start().empty());
    }
}

/// LIST-25: A file over 8 MiB is an empty list and is never written over
TEST_F(PlayLists, AnAbsurdlyLongFileIsAnEmptyListAndIsNeverWrittenOver) {
    list("LIST000=a.mid|1\n;" + std::string(kMostProfileBytes, 'x'));
    EXPECT_TRUE(start().empty());
    EXPECT_FALSE(writePlayList(player, "/app/FILE00.INI", {}));
    EXPECT_TRUE(machine.calls("files").empty());
}

/// LIST-04: Everything stands in the section FILELIST
/// LIST-06: LIST000 to LIST255 hold one entry each: title, a bar, full path
/// LIST-29: All 256 keys are written each time, unused ones as the bar alone
TEST_F(PlayLists, SavingWritesTheNameAndAll256KeysInOneReplacement) {
    EXPECT_TRUE(
        writePlayList(player, "/app/FILE00.INI",
                      {"Morning", {{"intro.mid", "C:\\MUSIC\\INTRO.MID"}, {"photo.jpg", "C:\\PICS\\PHOTO.JPG"}}}));
    std::string expected =
        "[FILELIST]\r\nLISTNAME=Morning\r\nLIST000=intro.mid|C:\\MUSIC\\INTRO.MID\r\n"
        "LIST001=photo.jpg|C:\\PICS\\PHOTO.JPG\r\n";
    for (int i = 2; i < 256; ++i) expected += "LIST" + zeroPadded(i, 3) + "=|\r\n";
    EXPECT_EQ(machine.files.bytes("/app/FILE00.INI"), expected);
    EXPECT_EQ(machine.calls("files"), Texts{"files.replace /app/FILE00.INI"});
}

/// LIST-30: A shorter list saved over a longer one reads back short
TEST_F(PlayLists, AShorterListSavedOverALongerOneReadsBackShort) {
    PlayList ten{"ten", std::vector<ListEntry>(10, {"a.mid", "/m/a.mid"})};
    writePlayList(player, "/app/FILE00.INI", ten);
    ten.entries.resize(3);
    writePlayList(player, "/app/FILE00.INI", ten);
    EXPECT_EQ(read().entries.size(), 3U);
}

/// LIST-31: Entries past the 256th are not saved
TEST_F(PlayLists, EntriesBeyond256AreNotSaved) {
    writePlayList(player, "/app/FILE00.INI", {"", std::vector<ListEntry>(300, {"a.mid", "/m/a.mid"})});
    EXPECT_EQ(read().entries.size(), 256U);
    EXPECT_EQ(machine.files.bytes("/app/FILE00.INI").find("LIST256"), std::string::npos);
}

/// LIST-32: A save is one replacement of the file; one that fails or is killed leaves the old list whole
TEST_F(PlayLists, AFailedSaveLeavesTheOldList) {
    writePlayList(player, "/app/FILE00.INI", {"old", {{"a.mid", "/m/a.mid"}}});
    machine.files.failReplace = true;
    EXPECT_FALSE(writePlayList(player, "/app/FILE00.INI", {"new", {}}));
    EXPECT_EQ(read().listName, "old");
}

/// LIST-34: Names with blanks, quotes and foreign bytes survive
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

/// LIST-35: A bar in a shown name is written as an underscore, so that the path survives
TEST_F(PlayLists, ABarInANameDoesNotCostThePath) {
    writePlayList(player, "/app/FILE00.INI", {"", {{"a|b.mid", "/m/a|b.mid"}}});
    EXPECT_EQ(read().entries.at(0).name, "a_b.mid");
    EXPECT_EQ(read().entries.at(0).path, "/m/a|b.mid");
}

/// LIST-36: An entry that would be too long loses the end of its shown name, not of its path
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

/// CMD-01: Arguments form the list in place of the saved one
/// CMD-12: The panel then shows number 001, the first title and the count
/// CMD-04
TEST_F(PlayLists, TheCommandLineReplacesTheSavedList) {
    list("LIST000=saved.mid|/m/saved.mid\n");
    machine.files.add("/m/one.mid");
    machine.files.add("/m/TWO.Mp3");
    EXPECT_EQ(start("/m/one.mid /m/TWO.Mp3"), (Texts{"one /m/one.mid", "TWO /m/TWO.Mp3"}));
    EXPECT_EQ(caption(kNumberLabel), "001");
    EXPECT_EQ(caption(kTitleLabel), "one");
    EXPECT_EQ(caption(kTotalLabel), "2");
}

/// CMD-05: Other pieces are skipped silently
/// CMD-13: A line without one usable file leaves an empty list: the saved one is not taken
TEST_F(PlayLists, ACommandLineWithoutAUsableFileDoesNotLoadTheSavedList) {
    list("LIST000=saved.mid|/m/saved.mid\n");
    EXPECT_TRUE(start("/m/missing.mid /m/text.txt").empty());
    EXPECT_EQ(caption(kTotalLabel), "");
}

/// CMD-03: The line is split at every blank; quotes mean nothing, so a name with a blank is split into pieces that fail
TEST_F(PlayLists, BlanksSplitTheCommandLineAndQuotesMeanNothing) {
    machine.files.add("/m/my song.mid");
    machine.files.add("/m/b.mid");
    machine.files.add("song.mid");
    EXPECT_EQ(start("  \"/m/my song.mid\"  /m/my song.mid /m/b.mid "), (Texts{"song song.mid", "b /m/b.mid"}));
}

/// CMD-06: A path in a folder with a dot is skipped
TEST_F(PlayLists, AFolderWithADotIsSkipped) {
    machine.files.add("/my.music/a.mid");
    machine.files.add("./b.mid");
    machine.files.add("/m/c.d.mid");
    EXPECT_TRUE(start("/my.music/a.mid ./b.mid /m/c.d.mid").empty());
}

/// CMD-10: A file that does not exist is skipped
TEST_F(PlayLists, AMissingFileOfTheCommandLineIsSkipped) {
    machine.files.add("/m/b.mid");
    EXPECT_EQ(start("/m/a.mid /m/b.mid"), Texts{"b /m/b.mid"});
}

/// CMD-09: Hidden files are taken
TEST_F(PlayLists, AHiddenFileOfTheCommandLineIsTaken) {
    machine.files.addHidden("/m/b.mid");
    EXPECT_EQ(start("/m/b.mid"), Texts{"b /m/b.mid"});
}

/// CMD-08: The title is the name as the folder gives it, cut at its first dot
TEST_F(PlayLists, TheTitleIsTheNameAsTheFolderGivesIt) {
    machine.files.caseSensitive = false;
    machine.files.add("/m/Song.MID");
    EXPECT_EQ(start("/M/SONG.mid"), Texts{"Song /M/SONG.mid"});
}

/// CMD-07: A doubled backslash behind the drive's colon is made single, and only there
TEST_F(PlayLists, ADoubledBackslashBehindTheDriveIsMadeSingle) {
    machine.files.slash = '\\';
    machine.files.add("C:\\a.mid");
    EXPECT_EQ(start("C:\\\\a.mid"), Texts{"a C:\\a.mid"});
}

/// CMD-11: After 256 accepted pieces no more are taken
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

/// CMD-14: A long line of rubbish is passed over
TEST_F(PlayLists, ALongCommandLineOfRubbishIsPassedOver) {
    EXPECT_TRUE(start(std::string(1'000'000, ' ')).empty());
    EXPECT_TRUE(start(std::string(1'000'000, '.')).empty());
}

/// CMD-15
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
