// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/ports.h"

namespace corvane {

/// A party's pictures. The picture file is 40 by 30 pixels: left half red (0xFF0000), right half blue (0x0000FF).
class PicturesStage {
public:
    PicturesStage() = default;
    PicturesStage(const PicturesStage&) = delete;
    PicturesStage& operator=(const PicturesStage&) = delete;
    virtual ~PicturesStage() = default;

    virtual Pictures& pictures() = 0;
    virtual std::string picture() = 0;
    virtual std::string broken() = 0;  ///< there, but no picture
};

using PicturesStageFactory = std::unique_ptr<PicturesStage> (*)();

class PicturesContract : public ::testing::TestWithParam<PicturesStageFactory> {
protected:
    std::unique_ptr<PicturesStage> stage = GetParam()();
    Pictures& pictures = stage->pictures();
};

TEST_P(PicturesContract, DecodesAFile) {
    const auto decoded = pictures.decode(stage->picture());
    ASSERT_FALSE(decoded.picture.empty()) << decoded.reason;
    EXPECT_EQ(decoded.picture.width(), 40);
    EXPECT_EQ(decoded.picture.height(), 30);
    EXPECT_EQ(decoded.picture.data()->pixel(0, 0), 0xFF0000U);
    EXPECT_EQ(decoded.picture.data()->pixel(39, 29), 0x0000FFU);
}

TEST_P(PicturesContract, SaysWhyItCannotDecode) {
    for (const std::string& path : {stage->broken(), stage->picture() + ".nowhere"}) {
        const auto decoded = pictures.decode(path);
        EXPECT_TRUE(decoded.picture.empty());
        EXPECT_NE(decoded.reason, "");
    }
}

TEST_P(PicturesContract, AHintChangesNothingOfTheResult) {
    pictures.decodeAhead(stage->broken());
    pictures.decodeAhead(stage->picture());
    EXPECT_EQ(pictures.decode(stage->picture()).picture.width(), 40);
    EXPECT_EQ(pictures.decode(stage->picture()).picture.width(), 40);
    pictures.decodeAhead(stage->broken());
    EXPECT_TRUE(pictures.decode(stage->broken()).picture.empty());
}

TEST_P(PicturesContract, CutsACell) {
    const Picture whole = pictures.decode(stage->picture()).picture;
    const Picture cell = pictures.cut(whole, {19, 10, 2, 3});
    ASSERT_FALSE(cell.empty());
    EXPECT_EQ(cell.width(), 2);
    EXPECT_EQ(cell.height(), 3);
    EXPECT_EQ(cell.data()->pixel(0, 0), 0xFF0000U);
    EXPECT_EQ(cell.data()->pixel(1, 2), 0x0000FFU);
    EXPECT_FALSE(pictures.cut(whole, {0, 0, 40, 30}).empty());
}

TEST_P(PicturesContract, CutsNothingThatIsNotInside) {
    const Picture whole = pictures.decode(stage->picture()).picture;
    for (const Pictures::Cell& cell : {Pictures::Cell{39, 0, 2, 1},
                                       {0, 29, 1, 2},
                                       {-1, 0, 5, 5},
                                       {0, -1, 5, 5},
                                       {0, 0, 0, 5},
                                       {0, 0, 5, 0},
                                       {0, 0, -1, 5},
                                       {50, 50, 1, 1},
                                       {2147483647, 0, 2147483647, 1}}) {
        EXPECT_TRUE(pictures.cut(whole, cell).empty()) << cell.x << " " << cell.y << " " << cell.width;
    }
    EXPECT_TRUE(pictures.cut(Picture(), {0, 0, 1, 1}).empty());
}

TEST_P(PicturesContract, StretchesThePictureOfABox) {
    Form form("frmImageWindow", FormStyle::Media);
    PictureBox box(&form, "pctImage");
    box.Scale = ScaleMode::InPixels;
    box.Picture = pictures.decode(stage->picture()).picture;
    EXPECT_EQ(pictures.paintStretched(box, 80, 60), 0);
    EXPECT_EQ(box.paintedWidth(), 80);
    EXPECT_EQ(box.paintedHeight(), 60);
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(PicturesContract);

}  // namespace corvane
