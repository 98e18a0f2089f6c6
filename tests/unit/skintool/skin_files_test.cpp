// SPDX-License-Identifier: GPL-3.0-or-later
#include "skintool/skin_files.h"

#include <gtest/gtest.h>

#include "linux/pictures/qt_pictures.h"
#include "panel/skin_records.h"
#include "skintool/skin_preview.h"
#include "skintool/template_skin.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

class SkinFolder : public ::testing::Test {
protected:
    SkinFolder() {
        test::offscreenApplication();
        paint("MINE.BMP", plain.bitmap);
        folder.write("MINE.CSV", plain.text);
    }
    void paint(const std::string& name, const QImage& image) const {
        ASSERT_TRUE(image.save(QString::fromStdString(folder.in(name)), "BMP"));
    }
    std::vector<SkinMistake> check() const { return checkSkinFiles(findSkin(folder.in("MINE"))); }
    testing::AssertionResult says(const std::string& words) const {
        const auto found = check();
        if (!found.empty() && found[0].text.find(words) != std::string::npos) return testing::AssertionSuccess();
        return testing::AssertionFailure() << found.size() << " " << (found.empty() ? "" : found[0].text);
    }

    test::TemporaryFolder folder;
    TemplateSkin plain = templateSkin();
};

TEST_F(SkinFolder, APathOfEitherFileOrWithoutEndingNamesTheSkin) {
    for (const char* path : {"MINE", "MINE.BMP", "MINE.csv"}) {
        const SkinFiles files = findSkin(folder.in(path));
        EXPECT_EQ(files.bitmap, folder.in("MINE.BMP")) << path;
        EXPECT_EQ(files.text, folder.in("MINE.CSV")) << path;
        EXPECT_EQ(files.dense, "") << path;
    }
}

TEST_F(SkinFolder, EndingsMayBeSmall) {
    std::filesystem::rename(folder.in("MINE.CSV"), folder.in("MINE.csv"));
    EXPECT_EQ(findSkin(folder.in("MINE")).text, folder.in("MINE.csv"));
    EXPECT_TRUE(check().empty());
}

TEST_F(SkinFolder, InOrder) { EXPECT_TRUE(check().empty()); }

TEST_F(SkinFolder, MissingFiles) {
    std::filesystem::remove(folder.in("MINE.BMP"));
    EXPECT_TRUE(says("there is no bitmap"));
    EXPECT_EQ(check().size(), 1U);
    std::filesystem::remove(folder.in("MINE.CSV"));
    EXPECT_EQ(check().size(), 2U);
}

TEST_F(SkinFolder, ABitmapThatCannotBeRead) {
    folder.write("MINE.BMP", "no picture");
    EXPECT_TRUE(says("MINE.BMP: This is not a picture"));
    EXPECT_TRUE(check()[0].keepsPanelAway);
}

TEST_F(SkinFolder, ADenseBitmapThatIsNotTwiceAsLarge) {
    paint("MINE@2X.BMP", plain.bitmap);
    EXPECT_TRUE(says("is not twice as wide and high"));
    paint("MINE@2X.BMP", plain.bitmap.scaled(plain.bitmap.size() * 2));
    EXPECT_TRUE(check().empty());
    folder.write("MINE@2X.BMP", "no picture");
    EXPECT_TRUE(says("MINE@2X.BMP: This is not a picture"));
}

TEST_F(SkinFolder, EveryStateHasAPicture) {
    const auto states = previewSkin(readSkin(findSkin(folder.in("MINE"))), 2);
    std::vector<std::string> names;
    for (const auto& [name, image] : states) {
        names.push_back(name);
        EXPECT_EQ(image.size(), QSize(800, 240)) << name;
        for (const auto& other : states)
            EXPECT_TRUE(name == other.first || image != other.second) << name << other.first;
    }
    EXPECT_EQ(names, (std::vector<std::string>{"rest", "opening", "playing-1", "playing-2", "playing-3", "lamps-lit",
                                               "pressed", "volume-lowest", "volume-full"}));
}

/// A record's place on the panel and its picture.
std::pair<QRect, QImage> partOf(const TemplateSkin& skin, int number) {
    const auto record = SkinRecords(skin.text).next(number, number).value();
    const QSize size(record.width, record.height);
    return {{QPoint(record.left, record.top), size}, skin.bitmap.copy({QPoint(record.clipX, record.clipY), size})};
}

TEST_F(SkinFolder, EachStateShowsItsRecords) {
    const auto states = previewSkin(readSkin(findSkin(folder.in("MINE"))), 1);
    ASSERT_EQ(states.size(), 9U);
    const std::vector<std::pair<std::size_t, int>> wanted = {{0, 34}, {0, 8},  {0, 25}, {2, 25}, {3, 26},
                                                             {4, 27}, {5, 35}, {5, 37}, {5, 39}, {6, 3},
                                                             {6, 6},  {6, 9},  {6, 18}, {6, 12}};
    for (const auto& [state, number] : wanted) {
        const auto [place, picture] = partOf(plain, number);
        EXPECT_EQ(states[state].second.copy(place), picture) << states[state].first << " " << number;
    }
}

TEST_F(SkinFolder, ASkinThatCannotBeShownHasNoPictures) {
    folder.write("MINE.CSV", plain.text + "x,12,1,1,1,1,9999,9999,1\n");
    EXPECT_TRUE(previewSkin(readSkin(findSkin(folder.in("MINE"))), 1).empty());
    std::filesystem::remove(folder.in("MINE.CSV"));
    EXPECT_TRUE(previewSkin(readSkin(findSkin(folder.in("MINE"))), 1).empty());
}

TEST(ShippedSkins, AreInOrder) {
    test::offscreenApplication();
    for (const char* name : {"DEFAULT", "BRASS", "SLIM", "PAPER"}) {
        const auto found = checkSkinFiles(findSkin(std::string(CORVANE_SOURCE_DIR) + "/PANELSET/" + name));
        EXPECT_TRUE(found.empty()) << name << ": " << found.front().line << " " << found.front().text;
    }
}

}  // namespace
}  // namespace corvane
