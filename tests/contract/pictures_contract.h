// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

#include "contract/stage.h"
#include "platform/ports.h"

namespace corvane {

/// A party's pictures. The picture file is 40 by 30 pixels: left half red (0xFF0000), right half blue (0x0000FF).
class PicturesStage : public Stage {
public:
    virtual Pictures& pictures() = 0;
    virtual std::string picture() = 0;
    virtual std::string broken() = 0;  ///< there, but no picture
    virtual bool isIdle() = 0;         ///< nothing is being decoded
};

using PicturesStageFactory = std::unique_ptr<PicturesStage> (*)();

class PicturesContract : public ::testing::TestWithParam<PicturesStageFactory> {
protected:
    std::unique_ptr<PicturesStage> stage = GetParam()();
    Pictures& pictures = stage->pictures();
};

/// PIC-02: BMP, JPEG and GIF are decoded
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

/// WIN-28: The next picture is decoded ahead in a worker, and again when its file has changed; what it holds is counted
TEST_P(PicturesContract, AHintChangesNothingOfTheResult) {
    pictures.decodeAhead(stage->broken());
    pictures.decodeAhead(stage->picture());
    EXPECT_EQ(pictures.decode(stage->picture()).picture.width(), 40);
    EXPECT_EQ(pictures.decode(stage->picture()).picture.width(), 40);
    pictures.decodeAhead(stage->broken());
    EXPECT_TRUE(pictures.decode(stage->broken()).picture.empty());
}

/// What is begun, and what came of it.
struct BegunPicture {
    BegunPicture(Pictures& pictures, const std::string& path, EventLoop& loop)
        : atOnce(pictures.begin(path, [this, &loop](Pictures::Decoded decoded) {
              depth = loop.depth();
              later = std::move(decoded);
              ++answers;
          })) {}
    const Pictures::Decoded* decoded() const {
        if (atOnce) return &*atOnce;
        return later ? &*later : nullptr;
    }
    std::optional<Pictures::Decoded> atOnce, later;
    int answers = 0;
    int depth = 0;  ///< handlers that ran when it was told
};

/// PIC-26: A picture that takes long is told as open at once and shown when it is there, in an event of its own; what
///     was decoded ahead is shown in the event that opens it; a kept one stays up until then, its clock stopped
TEST_P(PicturesContract, WhatIsBegunIsToldInAnEventOfItsOwn) {
    BegunPicture begun(pictures, stage->picture(), stage->loop());
    EXPECT_FALSE(begun.atOnce) << "nothing was decoded ahead";
    EXPECT_EQ(begun.answers, 0) << "nothing is told from inside the call";
    ASSERT_TRUE(stage->waitFor([&] { return begun.answers > 0; }, 10'000));
    EXPECT_EQ(begun.depth, 1);
    EXPECT_EQ(begun.later->picture.width(), 40) << begun.later->reason;
    EXPECT_FALSE(stage->waitFor([&] { return begun.answers > 1; }, 50)) << "once";
}

TEST_P(PicturesContract, WhatIsBegunAndCannotBeDecodedSaysWhy) {
    for (const std::string& path : {stage->broken(), stage->picture() + ".nowhere"}) {
        BegunPicture begun(pictures, path, stage->loop());
        ASSERT_TRUE(stage->waitFor([&] { return begun.decoded() != nullptr; }, 10'000));
        EXPECT_TRUE(begun.decoded()->picture.empty());
        EXPECT_NE(begun.decoded()->reason, "");
    }
}

/// PIC-27
TEST_P(PicturesContract, WhatIsGivenUpIsNeverTold) {
    BegunPicture begun(pictures, stage->picture(), stage->loop());
    pictures.giveUp();
    pictures.giveUp();
    EXPECT_FALSE(stage->waitFor([&] { return begun.answers > 0; }, 100));
    BegunPicture again(pictures, stage->picture(), stage->loop());
    ASSERT_TRUE(stage->waitFor([&] { return again.decoded() != nullptr; }, 10'000));
    EXPECT_EQ(again.decoded()->picture.width(), 40);
    EXPECT_EQ(begun.answers, 0);
}

/// PIC-27
TEST_P(PicturesContract, TheOneBegunLastIsTheOneThatIsTold) {
    BegunPicture first(pictures, stage->picture(), stage->loop());
    BegunPicture second(pictures, stage->broken(), stage->loop());
    BegunPicture third(pictures, stage->picture(), stage->loop());
    ASSERT_TRUE(stage->waitFor([&] { return third.decoded() != nullptr; }, 10'000));
    EXPECT_EQ(third.decoded()->picture.width(), 40);
    EXPECT_FALSE(stage->waitFor([&] { return first.answers + second.answers > 0; }, 50));
}

/// PIC-26
TEST_P(PicturesContract, WhatWasDecodedAheadIsThereAtOnce) {
    pictures.decodeAhead(stage->picture());
    std::unique_ptr<BegunPicture> begun;
    // A worker needs its time: whoever asks too early waits for the event.
    ASSERT_TRUE(stage->waitFor([&] { return stage->isIdle(); }, 10'000));
    begun = std::make_unique<BegunPicture>(pictures, stage->picture(), stage->loop());
    ASSERT_TRUE(begun->atOnce);
    EXPECT_EQ(begun->atOnce->picture.width(), 40);
    EXPECT_FALSE(stage->waitFor([&] { return begun->answers > 0; }, 50)) << "told already";
}

TEST_P(PicturesContract, AHintForWhatIsBegunMeanwhileServesIt) {
    pictures.decodeAhead(stage->picture());
    BegunPicture begun(pictures, stage->picture(), stage->loop());
    ASSERT_TRUE(stage->waitFor([&] { return begun.decoded() != nullptr; }, 10'000));
    EXPECT_EQ(begun.decoded()->picture.width(), 40);
}

/// SKIN-44
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

/// SKIN-48
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

/// PIC-08
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
