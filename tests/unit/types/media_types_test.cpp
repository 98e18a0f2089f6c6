// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/media_types.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "fake/player_fixture.h"

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

/// What stands behind `begin` on its line of a file of the project, up to `end`.
std::string behind(const std::string& path, const std::string& begin, char end = '\n') {
    std::ifstream file(std::string(CORVANE_SOURCE_DIR) + "/" + path);
    for (std::string line; std::getline(file, line);) {
        if (line.compare(0, begin.size(), begin) == 0) return line.substr(begin.size(), line.find(end) - begin.size());
    }
    return "";
}

TEST(MediaTypes, EachIsThereOnceWithAllThatIsAskedOfIt) {
    std::set<std::string> seen;
    for (const MediaType& type : mediaTypes()) {
        EXPECT_TRUE(std::regex_match(type.extension, std::regex("[A-Z0-9]+"))) << type.extension;
        EXPECT_TRUE(seen.insert(type.extension).second) << type.extension;
        EXPECT_NE(type.text, "") << type.extension;
        EXPECT_FALSE(type.mimeTypes.empty()) << type.extension;
        EXPECT_EQ(findMediaType(type.extension), &type);
        EXPECT_EQ(typeToOpen(type.extension).text, type.text);
    }
    EXPECT_EQ(seen.size(), 26U);
}

TEST(MediaTypes, OneThatIsNotKnownIsTriedAsASound) {
    EXPECT_EQ(findMediaType("OGG"), nullptr);
    EXPECT_EQ(findMediaType("wav"), nullptr) << "in capitals alone";
    const MediaType type = typeToOpen("OGG");
    EXPECT_EQ(type.kind, mdlDefinePublic::mkMciFile);
    EXPECT_EQ(type.text, "OGG Now On Play");
    EXPECT_STREQ(type.deviceType, "");
}

TEST(MediaTypes, TheDesktopEntryNamesThem) {
    const std::vector<std::string> names = mimeTypes();
    EXPECT_EQ(words(behind("packaging/corvane.desktop", "MimeType="), ';'),
              std::set<std::string>(names.begin(), names.end()));
    EXPECT_EQ(names.size(), 19U) << "each once";
}

TEST(MediaTypes, TheInstallerForWindowsAddsThem) {
    std::set<std::string> lower;
    for (const MediaType& type : mediaTypes()) {
        std::string name = type.extension;
        std::transform(name.begin(), name.end(), name.begin(), [](char c) { return c < 'A' ? c : c + ('a' - 'A'); });
        lower.insert(name);
    }
    EXPECT_EQ(words(behind("packaging/windows/CMakeLists.txt", "set(extensions ", ')'), ' '), lower);
}

TEST(MediaTypes, AFilterShowsThoseOfItsGroup) {
    EXPECT_EQ(patternsOf(TypeGroup::Image), "*.BMP;*.JPEG;*.JPG;*.GIF");
    EXPECT_EQ(patternsOf(TypeGroup::CdAudio), "*.CDA");
    EXPECT_EQ(words(patternsOf(TypeGroup::None), ';').size(), mediaTypes().size());
}

class EachType : public PlayerFixture {};

TEST_F(EachType, HasAMediumThatPlaysIt) {
    for (const MediaType& type : mediaTypes()) {
        const auto medium = player.media.make("/m/file." + type.extension);
        ASSERT_NE(medium, nullptr) << type.extension;
        EXPECT_EQ(medium->type().extension, type.extension);
    }
}

}  // namespace
}  // namespace corvane
