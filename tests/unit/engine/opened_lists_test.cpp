// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/opened_lists.h"

#include <algorithm>

#include "engine/left_out.h"
#include "engine/media_session.h"
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;
using namespace mdlPublicFunction;

struct OpenedLists : PlayerFixture {
    OpenedLists() {
        player.conveniences.lists = true;
        player.conveniences.names = true;
        for (const char* name : {"a.mp3", "b.mp3", "sub/c.mp3", "sub/d e.wav"})
            machine.files.add(std::string("/m/") + name);
    }
    void add(const std::string& path, std::string bytes) { machine.files.add(path, std::move(bytes)); }
    Texts opened(const Texts& named) {
        Texts paths;
        const OpenedFiles found = openedAs(player, named);
        for (const OpenedFile& each : found.files) paths.push_back(each.path);
        told = found.leftOut;
        return paths;
    }
    Texts told;
};

/// LIST-57: With LISTS, a list of another player is its entries, where it stands; without it, it is a file of no kind
TEST_F(OpenedLists, AListIsItsEntriesInPlace) {
    add("/m/l.m3u8", "#EXTM3U\nb.mp3\nsub\\c.mp3\nsub/d%20e.wav\n");
    EXPECT_EQ(opened({"/m/a.mp3", "/m/l.m3u8", "/m/a.mp3"}),
              (Texts{"/m/a.mp3", "/m/b.mp3", "/m/sub/c.mp3", "/m/sub/d e.wav", "/m/a.mp3"}));
    EXPECT_EQ(told, Texts{});
    EXPECT_EQ(takeFiles(player, DropData{true, {"/m/l.m3u8"}}), 3);
    EXPECT_EQ(player.gFilePath[1], "/m/sub/c.mp3");
    EXPECT_EQ(player.gFileTitle[2], "d e");
    player.conveniences.lists = false;
    EXPECT_EQ(opened({"/m/l.m3u8"}), Texts{"/m/l.m3u8"});
    EXPECT_EQ(takeFiles(player, DropData{true, {"/m/l.m3u8"}}), 0);
}

/// LIST-57
TEST_F(OpenedLists, EveryFormat) {
    add("/m/l.pls", "[playlist]\nFile1=a.mp3\n");
    add("/m/l.xspf", "<playlist><trackList><track><location>sub/d%20e.wav</location></track></trackList></playlist>");
    add("/m/l.asx", "<asx><entry><ref href=\"b.mp3\"/></entry></asx>");
    add("/m/l.m3u", "a.mp3\n");
    add("/m/l.m3u8", "b.mp3\n");
    EXPECT_EQ(opened({"/m/l.pls", "/m/l.xspf", "/m/l.asx"}), (Texts{"/m/a.mp3", "/m/sub/d e.wav", "/m/b.mp3"}));
    const std::vector<std::pair<std::string, std::string>> each{{"pls", "/m/a.mp3"},
                                                                {"xspf", "/m/sub/d e.wav"},
                                                                {"asx", "/m/b.mp3"},
                                                                {"m3u", "/m/a.mp3"},
                                                                {"m3u8", "/m/b.mp3"}};
    for (const auto& [ending, path] : each) {
        const std::string list = "/m/l." + ending;
        EXPECT_EQ(takeFiles(player, DropData{true, {list}}), 1) << ending;
        EXPECT_EQ(player.gFilePath[0], path) << "dropped, " << ending;
        player.gFilePath[0] = "";
        EXPECT_TRUE(isNameOfList(player, list)) << ending;
        machine.loop.enter([&] { openFiles(player, {list}); });
        EXPECT_EQ(player.gFilePath[0], path) << "opened, " << ending;
    }
}

/// LIST-70: A folder may be named as files are which are played
TEST_F(OpenedLists, AFolderNamedLikeAFile) {
    for (const char* name : {"Live.mp3/1.wav", "Live.mp3/2.2/3.wav", "Best.TS/4.wav"})
        add(std::string("/m/") + name, "");
    add("/m/l.m3u", "Live.mp3\nb.mp3\n");
    const auto taken = [this](const Texts& named) {
        takeFiles(player, DropData{true, named});
        Texts paths;
        for (int i = 0; i < player.gFileCount; ++i) paths.push_back(player.gFilePath[static_cast<std::size_t>(i)]);
        return paths;
    };
    EXPECT_EQ(taken({"/m/Live.mp3"}), (Texts{"/m/Live.mp3/1.wav", "/m/Live.mp3/2.2/3.wav"}));
    EXPECT_EQ(taken({"/m/a.mp3", "/m/Best.TS", "/m/gone.mp3", "/m/b.mp3"}),
              (Texts{"/m/a.mp3", "/m/Best.TS/4.wav", "/m/b.mp3"}));
    EXPECT_EQ(taken({"/m/l.m3u"}), (Texts{"/m/Live.mp3/1.wav", "/m/Live.mp3/2.2/3.wav", "/m/b.mp3"}));
    told.clear();
    EXPECT_EQ(
        filesForList(player, {"/m/Live.mp3", "/m/gone.mp3"}, [&](const std::string& line) { told.push_back(line); }),
        Texts{"/m/Live.mp3"});
    EXPECT_EQ(told, Texts{"/m/gone.mp3: left out, because there is no such file"});
    player.conveniences.lists = false;
    EXPECT_EQ(taken({"/m/Live.mp3"}), Texts{});
}

/// LIST-58: Entries that lead to the network are left out, and that is told in one box
TEST_F(OpenedLists, TheNetworkIsLeftOutAndToldOf) {
    add("/m/l.m3u", "http://x/y.mp3\na.mp3\nhttps://z/w.mp3\n");
    add("/m/one.m3u", "http://x/y.mp3\n");
    EXPECT_EQ(opened({"/m/l.m3u", "/m/one.m3u"}), Texts{"/m/a.mp3"});
    EXPECT_EQ(told, (Texts{"/m/l.m3u: 2 entries left out, because they lead to the network",
                           "/m/one.m3u: one entry left out, because it leads to the network"}));
    setUpPanel();
    machine.loop.enter([this] { takeFiles(player, DropData{true, {"/m/l.m3u"}}); });
    machine.settle();
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "/m/l.m3u: 2 entries left out, because they lead to the network");
}

/// LIST-65: A list or a folder with nothing that is played says so
TEST_F(OpenedLists, NothingToPlayIsToldOf) {
    add("/m/l.m3u", "gone.mp3\n");
    add("/texts/notes.txt", "");
    setUpPanel();
    for (const char* each : {"/m/l.m3u", "/texts"}) {
        machine.dialogs.boxes.clear();
        machine.loop.enter([&] { EXPECT_FALSE(openFiles(player, {"/m/x.txt", each})); });
        machine.settle();
        ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
        EXPECT_EQ(machine.dialogs.boxes[0].text,
                  each + std::string(": left out, because nothing in it can be played here"));
    }
    machine.dialogs.boxes.clear();
    machine.loop.enter([&] { playDropped(player, DropData{true, {"/m/l.m3u"}}); });
    machine.settle();
    EXPECT_EQ(machine.dialogs.boxes.size(), 1U) << "once";
    machine.dialogs.boxes.clear();
    machine.loop.enter([&] { EXPECT_FALSE(openFiles(player, {"/m/x.txt"})); });
    machine.settle();
    EXPECT_TRUE(machine.dialogs.boxes.empty());
}

/// LIST-59: A list that names itself, and lists that name each other, end
TEST_F(OpenedLists, ListsThatNameThemselvesEnd) {
    add("/m/self.m3u", "a.mp3\nself.m3u\n./sub/../self.m3u\nb.mp3\n");
    EXPECT_EQ(opened({"/m/self.m3u"}), (Texts{"/m/a.mp3", "/m/b.mp3"}));
    add("/m/x.m3u", "a.mp3\ny.pls\n");
    add("/m/y.pls", "File1=x.m3u\nFile2=b.mp3\nFile3=z.asx\n");
    add("/m/z.asx", "<entryref href=\"x.m3u\"/><ref href=\"sub/c.mp3\"/>");
    EXPECT_EQ(opened({"/m/x.m3u"}), (Texts{"/m/a.mp3", "/m/b.mp3", "/m/sub/c.mp3"}));
    EXPECT_EQ(opened({"/m/self.m3u", "/m/self.m3u"}).size(), 4U) << "one after the other is not inside";
}

/// LIST-59
TEST_F(OpenedLists, ManyListsInListsEnd) {
    std::string many;
    for (int i = 0; i < 1000; ++i) {
        const std::string name = "n" + std::to_string(i) + ".m3u";
        many += name + "\n";
        add("/m/" + name, "many.m3u\nmore.m3u\na.mp3\n");
    }
    add("/m/many.m3u", many);
    add("/m/more.m3u", many);
    machine.log.clear();
    EXPECT_LE(opened({"/m/many.m3u"}).size(), static_cast<std::size_t>(kMostLists));
    std::size_t reads = 0;
    for (const std::string& call : machine.log.allCalls("files")) reads += call.starts_with("files.read ") ? 1 : 0;
    EXPECT_EQ(reads, static_cast<std::size_t>(kMostLists));
}

TEST_F(OpenedLists, AListThatCannotBeReadIsTold) {
    EXPECT_EQ(opened({"/m/gone.m3u"}), Texts{});
    EXPECT_EQ(told, Texts{"/m/gone.m3u: left out, because it cannot be read, or is too long for a list"});
}

/// LIST-60: A folder is the files below it that are played: its own first, then its folders', each in natural order
TEST_F(OpenedLists, AFolderIsWhatIsBelowIt) {
    for (const char* name :
         {"10.mp3", "2.mp3", "notes.txt", "l.m3u", "disc 10/1.mp3", "disc 9/x.y.wav", "disc 9/.hidden.mp3"}) {
        add(std::string("/al.bum/") + name, "");
    }
    EXPECT_EQ(opened({"/al.bum"}),
              (Texts{"/al.bum/2.mp3", "/al.bum/10.mp3", "/al.bum/disc 9/x.y.wav", "/al.bum/disc 10/1.mp3"}));
    EXPECT_EQ(takeFiles(player, DropData{true, {"/al.bum", "/m/a.mp3"}}), 5);
    player.conveniences.lists = false;
    EXPECT_EQ(takeFiles(player, DropData{true, {"/al.bum"}}), 0);
}

/// LIST-67: In a folder with sounds, and in those below it, pictures are covers and no entries; in any other they are
/// entries
TEST_F(OpenedLists, PicturesBesideSoundsAreCovers) {
    for (const char* name : {"Cover.jpg", "track 1.mp3", "Scans/1.bmp", "trip/clip.avi", "trip/photo.jpg"}) {
        add(std::string("/al.bum/") + name, "");
        add(std::string("/other/in/") + name, "");
    }
    add("/other/photo.gif", "");
    EXPECT_EQ(opened({"/al.bum"}), (Texts{"/al.bum/track 1.mp3", "/al.bum/trip/clip.avi"}));
    EXPECT_EQ(opened({"/other"}), (Texts{"/other/photo.gif", "/other/in/track 1.mp3", "/other/in/trip/clip.avi"}));
    EXPECT_EQ(opened({"/other/in/trip"}), (Texts{"/other/in/trip/clip.avi", "/other/in/trip/photo.jpg"}));
}

/// LIST-61: A folder that leads to one above it, by a link, ends there; so do folders beyond a depth and a number
TEST_F(OpenedLists, FoldersThatLeadToThemselvesEnd) {
    std::string path = "/loop";
    for (int i = 0; i < 40; ++i, path += "/again") add(path + "/a.mp3", "");
    EXPECT_EQ(opened({"/loop"}), Texts{"/loop/a.mp3"}) << "each shows what the one above it shows";
    path = "/deep";
    for (int i = 0; i < 40; ++i, path += "/" + std::to_string(i)) add(path + "/a.mp3", "");
    EXPECT_EQ(opened({"/deep"}).size(), static_cast<std::size_t>(kMostFolderDepth));
}

/// LIST-62: A sheet of a disc image is its audio tracks, with their titles
TEST_F(OpenedLists, ASheetIsItsTracks) {
    add("/m/d.cue",
        "FILE \"d.wav\" WAVE\nTRACK 01 AUDIO\nTITLE \"First. One\"\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nINDEX 01 "
        "00:10:00\n");
    for (const char* track : {"Track01.cda", "Track02.cda"}) add(std::string("/m/d.cue/") + track, "");
    EXPECT_EQ(opened({"/m/d.cue"}), (Texts{"/m/d.cue/Track01.cda", "/m/d.cue/Track02.cda"}));
    for (const bool names : {true, false}) {
        player.conveniences.names = names;
        EXPECT_EQ(takeFiles(player, DropData{true, {"/m/d.cue"}}), 2);
        EXPECT_EQ(player.gFileTitle[0], "First. One");
        EXPECT_EQ(player.gFileTitle[1], "Track02");
        EXPECT_EQ(player.types.knows(typeOf(player.conveniences, player.gFilePath[0])), true);
    }
    machine.files.remove("/m/d.cue/Track01.cda");
    EXPECT_EQ(opened({"/m/d.cue"}), Texts{});
    EXPECT_EQ(told, Texts{"/m/d.cue: left out, because its tracks are not there, or cannot be played here"});
    add("/m/bad.cue", "no sheet");
    EXPECT_EQ(opened({"/m/bad.cue"}), Texts{});
    EXPECT_EQ(told.size(), 1U);
    player.conveniences.lists = false;
    EXPECT_EQ(typeOf(player.conveniences, "/m/d.cue/Track01.cda"), "CUE/TRACK01.CDA") << "the stated way";
}

/// LIST-60
TEST_F(OpenedLists, AFolderOfADiscsImageIsItsTracks) {
    add("/img/d.cue", "FILE \"d.bin\" BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n");
    add("/img/d.bin", "");
    add("/img/d.cue/Track01.cda", "");
    EXPECT_EQ(opened({"/img"}).front(), "/img/d.cue/Track01.cda");
    add("/img/Cover.jpg", "");
    const Texts beside = opened({"/img"});
    EXPECT_EQ(beside.front(), "/img/d.cue/Track01.cda") << "a cover does not hide the sheet";
    EXPECT_EQ(std::count(beside.begin(), beside.end(), "/img/Cover.jpg"), 0);
}

/// LIST-63: A list of 9,999 entries is looked up by one call, each entry once
TEST_F(OpenedLists, EachEntryIsLookedUpOnce) {
    player.conveniences.longLists = true;
    std::string lines;
    for (int i = 0; i < 12'000; ++i) lines += "a.mp3\n";
    add("/m/l.m3u", lines);
    machine.log.clear();
    EXPECT_EQ(takeFiles(player, DropData{true, {"/m/l.m3u"}}), 9999);
    std::size_t calls = 0, looks = 0;
    for (const std::string& call : machine.log.allCalls("files")) {
        calls += call.starts_with("files.lookUpAll") ? 1 : 0;
        looks += call.starts_with("files.lookUp ") ? 1 : 0;
    }
    EXPECT_LE(calls, 10U);
    EXPECT_EQ(looks, 9999U);
}

/// LIST-57
TEST_F(OpenedLists, OfEveryWayToReadANameTheOneThatIsThereCounts) {
    add("/m/l.m3u", "x\\y%20z.mp3\n");
    for (const char* const there : {"/m/x/y z.mp3", "/m/x/y%20z.mp3", "/m/x\\y%20z.mp3", "/m/x\\y z.mp3"}) {
        add(there, "");
        EXPECT_EQ(opened({"/m/l.m3u"}), Texts{there});
        machine.files.remove(there);
    }
}

/// LIST-66: The media interface opens lists and folders, and names their types, with LISTS alone
TEST_F(OpenedLists, TheMediaInterfaceOpensThem) {
    add("/m/l.m3u", "a.mp3\nb.mp3\n");
    setUpPanel();
    MediaSession session(player);
    const auto names = [&session] {
        const Texts types = session.mimeTypes();
        return std::find(types.begin(), types.end(), "audio/x-mpegurl") != types.end();
    };
    machine.loop.enter([] {});  // it looks when a handler is over
    const auto opened = [&](const std::string& path) {
        MediaSession::Answer answer = MediaSession::Answer::Busy;
        machine.loop.enter([&] { answer = session.open(path); });
        machine.settle();
        return answer;
    };
    EXPECT_TRUE(names());
    EXPECT_EQ(opened("/m/l.m3u"), MediaSession::Answer::Done);
    EXPECT_EQ(player.gFileCount, 2);
    EXPECT_EQ(opened("/m/gone.m3u"), MediaSession::Answer::Invalid);
    EXPECT_EQ(opened("/m"), MediaSession::Answer::Done);
    EXPECT_EQ(player.gFileCount, 4);
    player.conveniences.lists = false;
    EXPECT_FALSE(names());
    EXPECT_EQ(opened("/m/l.m3u"), MediaSession::Answer::NotSupported);
    EXPECT_EQ(opened("/m"), MediaSession::Answer::NotSupported);
    EXPECT_EQ(player.gFileCount, 4);
}

/// LIST-64: Lists and folders behind --open reach the player that runs as they were named; without LISTS they are left
/// out
TEST_F(OpenedLists, AStartPassesThemOn) {
    add("/m/l.m3u", "a.mp3\n");
    Texts lines;
    const auto tell = [&lines](const std::string& line) { lines.push_back(line); };
    EXPECT_EQ(filesForList(player, {"/m/l.m3u", "/m/sub", "/m/a.mp3", "/m/gone.pls", "/m/x.txt"}, tell),
              (Texts{"/m/l.m3u", "/m/sub", "/m/a.mp3"}));
    EXPECT_EQ(lines, (Texts{"/m/gone.pls: left out, because there is no such file",
                            "/m/x.txt: left out, because it is none of the kinds that are played"}));
    player.conveniences.lists = false;
    EXPECT_EQ(filesForList(player, {"/m/l.m3u", "/m/sub", "/m/a.mp3"}, tell), Texts{"/m/a.mp3"});
}

}  // namespace
}  // namespace corvane
