// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/left_out.h"

#include <gtest/gtest.h>

#include "engine/list_look_up.h"
#include "engine/mdlDefinePublic.h"
#include "engine/mdlPublicFunction.h"
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using Names = std::vector<std::string>;

struct LeftOut : PlayerFixture {
    Names taken(const Names& named) {
        return filesForList(player, named, [this](const std::string& line) { told.push_back(line); });
    }
    Names told;
};

TEST_F(LeftOut, WhatAListTakesIsKeptInOrderAndTheRestTold) {
    machine.files.add("/m/b.mp3");
    machine.files.add("/m/a.wav");
    EXPECT_EQ(taken({"/m/b.mp3", "", "/m/x.mp3", "/m/notes.txt", "/m/a.wav"}), (Names{"/m/b.mp3", "/m/a.wav"}));
    EXPECT_EQ(told, (Names{"/m/x.mp3: left out, because there is no such file",
                           "/m/notes.txt: left out, because it is none of the kinds that are played"}));
}

/// KIND-26: A file of a type of today that nothing on the machine decodes is left out, and its reason says so
TEST_F(LeftOut, ATypeWithoutADecoderIsToldSo) {
    EXPECT_EQ(taken({"/m/photo.avif"}), Names{});
    player.conveniences.names = player.conveniences.kinds = true;
    EXPECT_EQ(taken({"/m.x/photo.no 1.avif", "/m/a.b.txt"}), Names{});
    EXPECT_EQ(told, (Names{"/m/photo.avif: left out, because it is none of the kinds that are played",
                           "/m.x/photo.no 1.avif: left out, because nothing on this machine decodes AVIF",
                           "/m/a.b.txt: left out, because it is none of the kinds that are played"}));
}

/// Each look-up may cost time of the user interface.
TEST_F(LeftOut, BehindTooManyMissingNamesNoneIsLookedUp) {
    machine.files.add("/m/a.wav");
    Names named(60'000, "/m/missing.mp3");
    named.push_back("/m/a.wav");
    EXPECT_EQ(taken(named), Names{});
    ASSERT_EQ(told.size(), kMostMissing + 1);
    EXPECT_EQ(told.back(), "The last 58977 names: left out, because too many have no file");
}

TEST_F(LeftOut, BehindAFullListNoneIsLookedUp) {
    machine.files.add("/m/a.wav");
    EXPECT_EQ(taken(Names(1000, "/m/a.wav")).size(), std::size_t{mdlDefinePublic::kMaxFiles});
    EXPECT_EQ(told, Names{"The last 744 names: left out, because the list is full"});
}

/// DROP-17: All files of a drop, a start or a hand-over are looked up by one call; one on a drive that does not answer
///     keeps no other away
TEST_F(LeftOut, AllThatMayBeTakenAreLookedUpByOneCall) {
    std::vector<std::string> paths;
    for (int i = 0; i < 200; ++i) {
        paths.push_back("/m/" + std::to_string(i) + ".wav");
        machine.files.add(paths.back());
    }
    const auto calls = [this] {
        std::vector<std::string> made;
        for (const std::string& each : machine.log.allCalls("files")) {
            if (each.starts_with("files.lookUpAll")) made.push_back(each);
        }
        machine.log.clear();
        return made;
    };
    EXPECT_EQ(mdlPublicFunction::takeFiles(player, DropData{true, paths}), 200);
    EXPECT_EQ(calls(), Names{"files.lookUpAll 200"});
    EXPECT_EQ(taken(paths).size(), 200U);
    EXPECT_EQ(calls(), Names{"files.lookUpAll 200"});

    paths.insert(paths.begin(), 100, "/m/missing.wav");
    EXPECT_EQ(mdlPublicFunction::takeFiles(player, DropData{true, paths}), 200);
    EXPECT_EQ(calls(), (Names{"files.lookUpAll 256", "files.lookUpAll 44"})) << "never more than a full list can need";
}

TEST(NamesOfACommandLine, StandBetweenBlanks) {
    EXPECT_EQ(namesBetweenBlanks("  /a.mp3 /b c.wav  "), (Names{"/a.mp3", "/b", "c.wav"}));
    EXPECT_EQ(namesBetweenBlanks(""), Names{});
}

}  // namespace
}  // namespace corvane
