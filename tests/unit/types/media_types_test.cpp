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
#include "lists/foreign_list.h"
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
    for (const std::string& each : listMimeTypes()) names += each + ';';
    return names;
}

/// Of today's kinds those alone that the player's own decoders there have.
std::string installedExtensions(const MediaTypes& types) {
    std::set<std::string> sorted{"png", "cue"};
    for (const MediaType& type : types.all()) sorted.insert(text::lower(type.extension));
    for (const std::string& each : listExtensions()) sorted.insert(text::lower(each));
    std::string all;
    for (const std::string& each : sorted) all += (all.empty() ? "" : " ") + each;
    return all;
}

/// Types that are alike share a row.
std::string manualOf(const std::vector<MediaType>& types) {
    std::vector<std::vector<std::string>> rows;
    for (const MediaType& type : types) {
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

/// The desktop starts the player its own way, with the types of today.
TEST(MediaTypes, TheDesktopEntryNamesThem) {
    MediaTypes types;
    EXPECT_EQ(types.mimeTypes().size(), 19U) << "each once";
    types.addWhereThere(typesOfToday(), [](const MediaType& /*type*/) { return true; });
    expectKeptPart("packaging/corvane.desktop", "MimeType=", "\n", desktopNames(types));
}

TEST(MediaTypes, TheInstallerForWindowsAddsThem) {
    expectKeptPart("packaging/windows/CMakeLists.txt", "set(extensions ", ")", installedExtensions(MediaTypes()));
}

TEST(MediaTypes, TheManualTellsThem) {
    expectManualRows("types", manualOf(MediaTypes().all()));
    expectManualRows("types of today", manualOf(typesOfToday()));
}

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
    EXPECT_NE(desktopNames(player.types).find(";audio/flac;audio/x-flac;"), std::string::npos);
    EXPECT_NE(installedExtensions(player.types).find(" cue flac gif "), std::string::npos);
    EXPECT_NE(manualOf(player.types.all()).find("<td>FLAC</td><td>lossless</td><td>sound</td>"), std::string::npos);
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

// --- Types of today --------------------------------------------------------------------------------------------------

struct TypesOfToday : PlayerFixture {
    TypesOfToday() {
        machine.media.decodes = {"FLAC", "MKV", "MOD"};
        machine.pictures.decodes = {"WEBP"};
    }
};

/// KIND-24: With KINDS the types of today are played where their decoders are there, and are none where they are not
TEST_F(TypesOfToday, AreThoseWhoseDecodersAreThere) {
    EXPECT_FALSE(player.types.knows("FLAC"));
    mdlPublicFunction::addTypesOfToday(player);
    for (const char* there : {"FLAC", "MKV", "MOD", "WEBP", "WAV", "JPG"})
        EXPECT_TRUE(player.types.knows(there)) << there;
    for (const char* gone : {"APE", "MP4", "JXL"}) EXPECT_FALSE(player.types.knows(gone)) << gone;
    EXPECT_EQ(player.types.filterOf(TypeGroup::Image), "*.BMP;*.JPEG;*.JPG;*.GIF;*.WEBP");
    EXPECT_TRUE(player.types.patternsOf(TypeGroup::Video).ends_with(";*.MKV"));
    const auto names = player.types.mimeTypes();
    EXPECT_EQ(std::count(names.begin(), names.end(), "image/webp"), 1);
    EXPECT_EQ(std::count(names.begin(), names.end(), "image/jxl"), 0);
}

TEST_F(TypesOfToday, AskForEachOnceAndOnlyWhenItIsLookedFor) {
    std::vector<std::string> asked;
    player.types.addWhereThere(typesOfToday(),
                               [&](const MediaType& type) { return asked.push_back(type.extension), false; });
    EXPECT_TRUE(player.types.knows("WAV"));
    EXPECT_FALSE(player.types.mimeTypes().empty());
    EXPECT_TRUE(asked.empty());
    EXPECT_FALSE(player.types.knows("FLAC"));
    EXPECT_FALSE(player.types.knows("FLAC"));
    EXPECT_EQ(asked, (std::vector<std::string>{"FLAC"}));
}

/// KIND-25: On the panel a sound of today is told as "FLAC Now On Play", a movie as "Video File Now On Play", a picture
/// as
///     "PNG IMAGE"
TEST_F(TypesOfToday, HaveTheirTextsAndWindows) {
    machine.media.decodes.insert("MP4");
    machine.pictures.decodes.insert("PNG");
    mdlPublicFunction::addTypesOfToday(player);
    EXPECT_EQ(player.media.make("/m/a.flac")->type().text, "FLAC Now On Play");
    EXPECT_EQ(player.media.make("/m/a.mp4")->type().text, "Video File Now On Play");
    EXPECT_EQ(player.media.make("/m/a.mp4")->type().kind, mdlDefinePublic::mkMovie);
    EXPECT_EQ(player.media.make("/m/a.png")->type().text, "PNG IMAGE");
    EXPECT_EQ(player.media.make("/m/a.png")->type().kind, mdlDefinePublic::mkImage);
    EXPECT_EQ(typesOfToday().size(), 41U);
}

}  // namespace
}  // namespace corvane
