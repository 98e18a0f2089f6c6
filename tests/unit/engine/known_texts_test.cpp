// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/known_texts.h"

#include <algorithm>
#include <memory>

#include "unit/engine/session_fixture.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

using Paths = std::vector<std::string>;

class Texts : public Session {
protected:
    Texts() {
        player.conveniences.texts = true;
        say("/m/one.wav", {"One", "Artist", "Album", 1, nullptr});
        say("/m/two.wav", {"Two", "", "Album", 2, nullptr});
    }
    void say(const std::string& path, FileTexts texts) { machine.texts.files[path] = std::move(texts); }
    const std::string& title() { return label(kTitleLabel); }
    std::ptrdiff_t asked(const std::string& path) {
        return std::count(machine.texts.asked.begin(), machine.texts.asked.end(), path);
    }
};

/// TEXT-04: The display shows title and artist of the file's tags, the title alone without an artist, and the name
///     without a title
TEST_F(Texts, TheDisplayShowsTitleAndArtist) {
    say("/m/three.wav", {"", "Artist", "", 0, nullptr});
    openThree();
    act([this] { PlayFile(player); });
    EXPECT_EQ(title(), "One - Artist");
    act([this] { NextFile(player); });
    EXPECT_EQ(title(), "Two");
    act([this] { NextFile(player); });
    EXPECT_EQ(title(), "three");
}

/// TEXT-05: Without the convenience nothing is read, and names stand
TEST_F(Texts, WithoutTheConvenienceNamesStand) {
    player.conveniences = kAllConveniences;
    player.conveniences.texts = false;
    openThree();
    act([this] { PlayFile(player); });
    EXPECT_EQ(title(), "one");
    EXPECT_EQ(now().title, "one");
    EXPECT_EQ(now().artist, "");
    EXPECT_EQ(machine.texts.asked, Paths());
}

/// TEXT-05
TEST_F(Texts, ADesktopThatReadsNoneShowsNames) {
    ports.texts = nullptr;
    openThree();
    act([this] { PlayFile(player); });
    EXPECT_EQ(title(), "one");
}

/// TEXT-06: What comes late replaces the name, and only of the file that the display still stands for
TEST_F(Texts, WhatComesLateReplacesTheName) {
    machine.texts.readingMs = 500;
    openThree();
    act([this] { PlayFile(player); });
    EXPECT_EQ(title(), "one");
    EXPECT_EQ(now().title, "one");
    machine.advance(500);
    EXPECT_EQ(title(), "One - Artist");
    EXPECT_EQ(now().title, "One");
    EXPECT_EQ(now().artist, "Artist");
}

/// TEXT-06
TEST_F(Texts, WhatBelongsToAFileThatWasLeftIsNotShown) {
    machine.texts.readingMs = 500;
    open({"/m/one.wav", "/m/three.wav"});
    act([this] { PlayFile(player); });
    act([this] { NextFile(player); });
    machine.advance(5000);
    EXPECT_EQ(title(), "three");
    say("/m/three.wav", {"Three", "", "", 0, nullptr});
    act([this] { takeFiles(player, {true, {"/m/three.wav"}, false}); });
    act([this] { takeFiles(player, {true, {}, false}); });
    machine.advance(5000);
    EXPECT_EQ(title(), "") << "an emptied list";
}

/// TEXT-07: The next file's texts are read while one plays: the display never waits for them
TEST_F(Texts, TheNextOneIsReadWhileOnePlays) {
    machine.texts.readingMs = 100;
    openThree();
    act([this] { PlayFile(player); });
    machine.advance(300);
    EXPECT_EQ(machine.texts.asked, (Paths{"/m/one.wav", "/m/two.wav"}));
    act([this] { NextFile(player); });
    EXPECT_EQ(title(), "Two") << "at once";
}

/// TEXT-08: A file is read again when it is shown again, so that changed tags are seen; what was known stands meanwhile
TEST_F(Texts, AFileThatIsShownAgainIsReadAgain) {
    open({"/m/one.wav"});
    act([this] { PlayFile(player); });
    act([this] { CloseFile(player, false); });
    const auto before = asked("/m/one.wav");
    machine.texts.readingMs = 100;
    say("/m/one.wav", {"Renamed", "", "", 0, nullptr});
    act([this] { PlayFile(player); });
    EXPECT_EQ(title(), "One - Artist");
    EXPECT_EQ(asked("/m/one.wav"), before + 1);
    machine.advance(100);
    EXPECT_EQ(title(), "Renamed");
}

/// TEXT-09: Pictures are not asked for texts; sounds, tracks and movies are
TEST_F(Texts, PicturesAreNotAsked) {
    open({"/m/view.bmp", "/m/clip.avi", "/cd/Track01.cda"});
    act([this] { PlayFile(player); });
    act([this] { NextFile(player); });
    EXPECT_EQ(machine.texts.asked.front(), "/m/clip.avi");
    act([this] { NextFile(player); });
    EXPECT_EQ(asked("/cd/Track01.cda"), 1);
    EXPECT_EQ(asked("/m/view.bmp"), 0);
}

/// TEXT-10: One file is read at a time, few wait, and few are kept
TEST_F(Texts, OneAtATimeAndFewWait) {
    machine.texts.readingMs = 1000;
    Paths many;
    for (int i = 0; i < 40; ++i) {
        many.push_back("/m/" + std::to_string(i) + ".wav");
        machine.addSound(many.back(), 1000);
        say(many.back(), {"T" + std::to_string(i), "", "", 0, nullptr});
    }
    open(many);
    for (int i = 0; i < 39; ++i) act([this] { NextFile(player); });
    EXPECT_EQ(machine.texts.asked.size(), 1U) << "the others wait";
    machine.advance(60'000);
    EXPECT_LE(machine.texts.asked.size(), 1 + KnownTexts::kMostWaiting);
    EXPECT_EQ(title(), "T39") << "the latest one is among them";
    machine.texts.readingMs = 0;
    for (const std::string& path : many) {
        player.texts.expect(path);
        machine.settle();
    }
    EXPECT_LE(
        std::count_if(many.begin(), many.end(), [&](const auto& path) { return player.texts.find(path) != nullptr; }),
        static_cast<long>(KnownTexts::kMostKnown));
    EXPECT_NE(player.texts.find(many.back()), nullptr);
}

TEST_F(Texts, AnAnswerThatComesWhenThePlayerHasGoneIsDropped) {
    auto other = std::make_unique<Player>(ports);
    other->conveniences.texts = true;
    other->texts.expect("/m/one.wav");
    other.reset();
    machine.settle();
}

/// TEXT-01, TEXT-03
TEST_F(Texts, AreMadeHarmless) {
    say("/m/one.wav", {"Café\n\u202Egnp", " A\x01rtist ", "Al\tbum", -4, nullptr});
    open({"/m/one.wav"});
    act([this] { PlayFile(player); });
    EXPECT_EQ(title(), "Café gnp - Artist");
    EXPECT_EQ(now().album, "Al bum");
    EXPECT_EQ(now().albumNumber, 0);
}

/// TEXT-11: A remote control is told title, artist, album, number on the album and cover; a title that there is not is
///     the name
TEST_F(Texts, ARemoteControlIsToldThem) {
    say("/m/one.wav", {"One", "Artist", "Album", 7, std::make_shared<CoverFile>("/m/cover.jpg")});
    say("/m/three.wav", {"", "Artist", "", 0, nullptr});
    openThree();
    EXPECT_EQ(now().title, "One") << "also what play would open";
    play();
    EXPECT_EQ(now().title, "One");
    EXPECT_EQ(now().artist, "Artist");
    EXPECT_EQ(now().album, "Album");
    EXPECT_EQ(now().albumNumber, 7);
    EXPECT_EQ(now().number, 1);
    EXPECT_EQ(now().cover, "/m/cover.jpg");
    ask([](MediaSession& s) { return s.next(); });
    EXPECT_EQ(now().artist, "");
    EXPECT_EQ(now().cover, "");
    ask([](MediaSession& s) { return s.next(); });
    EXPECT_EQ(now().title, "three");
    EXPECT_EQ(now().artist, "Artist");
}

}  // namespace
}  // namespace corvane
