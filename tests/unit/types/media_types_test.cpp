// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/media_types.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>
#include <sstream>

#include "engine/mdlPublicFunction.h"
#include "fake/kept_part.h"
#include "fake/player_fixture.h"
#include "types/text.h"

namespace corvane {
namespace {

std::set<std::string> words(const std::string& text, char between) {
    std::set<std::string> result;
    std::istringstream all(text);
    for (std::string word; std::getline(all, word, between);) {
        if (!word.empty()) result.insert(word);
    }
    return result;
}

TEST(MediaTypes, EachIsThereOnceWithAllThatIsAskedOfIt) {
    const MediaTypes types;
    std::set<std::string> seen;
    for (const MediaType& type : types.all()) {
        EXPECT_TRUE(std::regex_match(type.extension, std::regex("[A-Z0-9]+"))) << type.extension;
        EXPECT_TRUE(seen.insert(type.extension).second) << type.extension;
        EXPECT_NE(type.text, "") << type.extension;
        EXPECT_FALSE(type.mimeTypes.empty()) << type.extension;
        EXPECT_EQ(types.find(type.extension), &type);
        EXPECT_EQ(types.toOpen(type.extension).text, type.text);
    }
    EXPECT_EQ(seen.size(), 26U);
}

TEST(MediaTypes, OneThatIsNotKnownIsTriedAsASound) {
    EXPECT_EQ(MediaTypes().find("OGG"), nullptr);
    EXPECT_EQ(MediaTypes().find("wav"), nullptr) << "in capitals alone";
    const MediaType type = MediaTypes().toOpen("OGG");
    EXPECT_EQ(type.kind, mdlDefinePublic::mkMciFile);
    EXPECT_EQ(type.text, "OGG Now On Play");
    EXPECT_STREQ(type.deviceType, "");
}

/// What is installed or read by people, as the table has it.
std::string desktopNames(const MediaTypes& types) {
    std::string names;
    for (const std::string& each : types.mimeTypes()) names += each + ';';
    return names;
}

std::string installedExtensions(const MediaTypes& types) {
    std::set<std::string> sorted;
    for (const MediaType& type : types.all()) sorted.insert(text::lower(type.extension));
    std::string all;
    for (const std::string& each : sorted) all += (all.empty() ? "" : " ") + each;
    return all;
}

/// Types that are alike share a row.
std::string manualOf(const MediaTypes& types) {
    std::vector<std::vector<std::string>> rows;
    for (const MediaType& type : types.all()) {
        const auto row = std::find_if(rows.begin(), rows.end(), [&](const auto& each) {
            return each[1] == type.family.name && each[2] == type.family.playsAs;
        });
        if (row == rows.end()) {
            rows.push_back({type.extension, type.family.name, type.family.playsAs});
        } else {
            (*row)[0] += ", " + type.extension;
        }
    }
    return manualRows(rows);
}

TEST(MediaTypes, TheDesktopEntryNamesThem) {
    const MediaTypes types;
    EXPECT_EQ(types.mimeTypes().size(), 19U) << "each once";
    expectKeptPart("packaging/corvane.desktop", "MimeType=", "\n", desktopNames(types));
}

TEST(MediaTypes, TheInstallerForWindowsAddsThem) {
    expectKeptPart("packaging/windows/CMakeLists.txt", "set(extensions ", ")", installedExtensions(MediaTypes()));
}

TEST(MediaTypes, TheManualTellsThem) { expectManualRows("types", manualOf(MediaTypes())); }

TEST(MediaTypes, AFilterShowsThoseOfItsGroup) {
    const MediaTypes types;
    EXPECT_EQ(types.filterOf(TypeGroup::Image), "*.BMP;*.JPEG;*.JPG;*.GIF");
    EXPECT_EQ(types.patternsOf(TypeGroup::CdAudio), "*.CDA");
    EXPECT_EQ(words(types.patterns(), ';').size(), types.all().size());
}

class EachType : public PlayerFixture {};

TEST_F(EachType, HasAMediumThatPlaysIt) {
    for (const MediaType& type : player.types.all()) {
        const auto medium = player.media.make("/m/file." + type.extension);
        ASSERT_NE(medium, nullptr) << type.extension;
        EXPECT_EQ(medium->type().extension, type.extension);
    }
}

MediaType flac() {
    return {"FLAC",           mdlDefinePublic::mkMciFile, "FLAC File Now On Play",
            TypeGroup::Sound, {"lossless", "sound"},      {"audio/flac", "audio/x-flac"}};
}

/// KIND-22: A type that is added while the program runs is listed, opened, told and offered like the others
TEST_F(EachType, ThatIsAddedIsSeenEverywhere) {
    machine.files.add("/m/new.flac");
    EXPECT_EQ(mdlPublicFunction::takeFiles(player, DropData{true, {"/m/new.flac"}}), 0)
        << "before, a list leaves it out";
    ASSERT_TRUE(player.types.add(flac()));

    EXPECT_EQ(mdlPublicFunction::takeFiles(player, DropData{true, {"/m/new.flac"}}), 1);
    const auto medium = player.media.make("/m/new.flac");
    EXPECT_EQ(medium->type().kind, mdlDefinePublic::mkMciFile);
    EXPECT_EQ(medium->type().text, "FLAC File Now On Play");
    EXPECT_EQ(medium->type().deviceType, nullptr);
    const std::vector<std::string> names = player.types.mimeTypes();
    EXPECT_EQ(std::vector<std::string>(names.end() - 2, names.end()),
              (std::vector<std::string>{"audio/flac", "audio/x-flac"}));
    EXPECT_TRUE(player.types.patterns().ends_with(";*.AIFF;*.FLAC"));
    EXPECT_EQ(player.types.patternsOf(TypeGroup::Sound), "*.WAV;*.SND;*.AU;*.AIF;*.AIFC;*.AIFF;*.FLAC");
    EXPECT_EQ(player.types.filterOf(TypeGroup::Sound), "*.WAV;*.SND;*.AU;*.AIF;*.AIFC;*.AIFF);*.FLAC");
    EXPECT_TRUE(desktopNames(player.types).ends_with(";audio/flac;audio/x-flac;"));
    EXPECT_NE(installedExtensions(player.types).find(" cda flac gif "), std::string::npos);
    EXPECT_NE(manualOf(player.types).find("<td>FLAC</td><td>lossless</td><td>sound</td>"), std::string::npos);
}

TEST_F(EachType, IsAddedOnceAndOnlyAsOneThatCanBeFound) {
    EXPECT_TRUE(player.types.add(flac()));
    EXPECT_FALSE(player.types.add(flac())) << "it is there already";
    for (const char* wrong : {"", "flac", "TAR.GZ", "A B", "WAV"}) {
        MediaType type = flac();
        type.extension = wrong;
        EXPECT_FALSE(player.types.add(type)) << wrong;
    }
    MediaType none = flac();
    none.extension = "OGA";
    none.kind = mdlDefinePublic::mkNone;
    EXPECT_FALSE(player.types.add(none));
    EXPECT_EQ(player.types.all().size(), 27U);
}

}  // namespace
}  // namespace corvane
