// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/shipped_skins.h"

#include <gtest/gtest.h>

#include "fake/fake_files.h"

namespace corvane {
namespace {

struct ShippedSkins : ::testing::Test {
    ShippedSkins() {
        files.addFolder("/own");
        ship("DEFAULT.BMP", "picture");
        ship("DEFAULT.CSV", "records");
        ship("note.txt", "no skin");
    }
    void ship(const std::string& name, const std::string& bytes) { files.add("/shipped/" + name, bytes); }
    void give() { giveSkins(files, "/shipped", "/own"); }

    CallLog log;
    FakeFiles files{log};
};

TEST_F(ShippedSkins, AFirstStartGetsThemAll) {
    give();
    EXPECT_EQ(files.bytes("/own/DEFAULT.BMP"), "picture");
    EXPECT_EQ(files.bytes("/own/DEFAULT.CSV"), "records");
    EXPECT_FALSE(files.has("/own/note.txt"));
}

/// WIN-50
TEST_F(ShippedSkins, AnUpdateBringsItsNewOnesAlone) {
    give();
    files.remove("/own/DEFAULT.BMP");
    ship("BRASS.BMP", "brass");
    ship("BRASS.CSV", "records");
    give();
    EXPECT_EQ(files.bytes("/own/BRASS.BMP"), "brass");
    EXPECT_EQ(files.bytes("/own/BRASS.CSV"), "records");
    EXPECT_FALSE(files.has("/own/DEFAULT.BMP")) << "what the user deletes stays deleted";
}

TEST_F(ShippedSkins, AFolderFromBeforeThereWasARecordGetsWhatItLacks) {
    files.add("/own/DEFAULT.BMP", "picture");
    files.add("/own/DEFAULT.CSV", "records");
    ship("BRASS.BMP", "brass");
    give();
    EXPECT_TRUE(files.has("/own/BRASS.BMP"));
}

TEST_F(ShippedSkins, ASkinThatTheUserChangedStaysWhole) {
    give();
    files.add("/own/DEFAULT.CSV", "my records");
    ship("DEFAULT@2X.BMP", "large");
    give();
    EXPECT_FALSE(files.has("/own/DEFAULT@2X.BMP"));
    EXPECT_EQ(files.bytes("/own/DEFAULT.CSV"), "my records");
}

TEST_F(ShippedSkins, WhatCouldNotBeGivenIsTriedAgain) {
    files.failReplace = true;
    give();
    EXPECT_FALSE(files.has("/own/DEFAULT.BMP"));
    files.failReplace = false;
    give();
    EXPECT_TRUE(files.has("/own/DEFAULT.BMP"));
}

}  // namespace
}  // namespace corvane
