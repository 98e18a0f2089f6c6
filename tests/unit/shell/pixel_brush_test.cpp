// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/windowing/pixel_brush.h"

#include <gtest/gtest.h>

#include <memory>

#include "pictures/paired_picture.h"

namespace corvane {
namespace {

using Pixels = std::vector<std::uint32_t>;

constexpr std::uint32_t kBlack32 = 0xFF000000, kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF;
constexpr auto kRedColour = static_cast<Colour>(0x0000FF);  // red is lowest in a colour

Picture picture(int width, int height, Pixels pixels) {
    return Picture(std::make_shared<BitmapPicture>(width, height, std::move(pixels)));
}

class MemoryBrush final : public PixelBrush {
public:
    MemoryBrush(const PixelTarget& target, PixelSize surface, double scale, StretchedPicture& stretched)
        : PixelBrush(target, surface, scale, stretched) {}
    using PixelBrush::rounded;
    void text(const std::string& /*text*/, const Rectangle& /*place*/, Colour /*colour*/,
              const std::vector<Rectangle>& /*covered*/) override {}
};

/// A part of a surface, each of its pixels green at first.
struct Part {
    explicit Part(const PixelPlace& of, PixelSize surface = {100, 100}, double scale = 1)
        : pixels(static_cast<std::size_t>(of.width * of.height), kGreen),
          brush({pixels.data(), of}, surface, scale, stretched) {}
    Pixels pixels;
    StretchedPicture stretched;
    MemoryBrush brush;
};

TEST(PixelBrushes, ComposeASkinFromItsPicturesAndFilledPlaces) {
    const Picture background = picture(3, 2, Pixels(6, kBlue));
    const Picture button = picture(2, 2, Pixels(4, kRed));
    const std::vector<CompositionStep> steps{{nullptr, &button, kBlack, {1, 0, 1, 2}},
                                             {nullptr, nullptr, kRedColour, {0, 1, 1, 1}}};
    Part whole({0, 0, 3, 2}, {3, 2});
    whole.brush.skin(background, steps);
    EXPECT_EQ(whole.pixels, (Pixels{kBlue, kRed, kBlue, kRed, kRed, kBlue}));
    Part corner({1, 1, 2, 1}, {3, 2});
    corner.brush.skin(background, steps);
    EXPECT_EQ(corner.pixels, (Pixels{kRed, kBlue}));
    Part twice({1, 0, 4, 1}, {6, 4}, 2);
    twice.brush.skin(background, steps);
    EXPECT_EQ(twice.pixels, (Pixels{kBlue, kRed, kRed, kBlue})) << "pixels of a whole scale stay sharp";
}

/// A skin of 3 by 2 blue pixels, and 6 by 4 for dense screens that are numbered from 0.
struct PairedSkin {
    PairedSkin() {
        Pixels dense;
        for (std::uint32_t i = 0; i < 24; ++i) dense.push_back(kBlack32 | i);
        skin = pairedPicture(picture(3, 2, Pixels(6, kBlue)), [this, dense] {
            ++asked;
            return given ? picture(6, 4, dense) : Picture();
        });
    }
    Pixels shown(double scale, const PixelPlace& place, const std::vector<CompositionStep>& steps = {}) {
        const auto whole = [scale](int side) { return static_cast<int>(side * scale); };
        Part part(place, {whole(3), whole(2)}, scale);
        part.brush.skin(skin, steps);
        return part.pixels;
    }
    Picture skin;
    bool given = true;
    int asked = 0;
};

/// WIN-78: From one and a half pixels on, a skin is composed from its bitmap of twice the size
TEST(PixelBrushes, ADenseScreenShowsTheOtherPixelsAndAsksForThemOnce) {
    PairedSkin paired;
    EXPECT_EQ(paired.shown(1.49, {1, 0, 2, 1}), Pixels(2, kBlue));
    EXPECT_EQ(paired.asked, 0) << "nobody sees them";
    EXPECT_EQ(paired.shown(2, {1, 2, 3, 1}), (Pixels{kBlack32 | 13U, kBlack32 | 14U, kBlack32 | 15U}));
    for (const std::uint32_t each : paired.shown(1.5, {0, 0, 3, 3})) EXPECT_NE(each, kBlue);
    EXPECT_EQ(paired.asked, 1);
    EXPECT_EQ(paired.shown(1, {0, 0, 1, 1}), Pixels{kBlue}) << "a screen that is not dense again";
}

/// WIN-78
TEST(PixelBrushes, APartThatIsCutOutHasItsOwnOfTheOtherPixels) {
    PairedSkin paired;
    const Picture knob = cutPaired(cutPaired(paired.skin, {1, 0, 2, 2}), {1, 1, 1, 1});
    EXPECT_EQ(paired.asked, 0);
    const std::vector<CompositionStep> steps{{nullptr, &knob, kBlack, {0, 0, 1, 1}}};
    EXPECT_EQ(paired.shown(2, {0, 0, 3, 1}, steps), (Pixels{kBlack32 | 16U, kBlack32 | 17U, kBlack32 | 2U}));
    EXPECT_EQ(paired.shown(2, {0, 1, 3, 1}, steps), (Pixels{kBlack32 | 22U, kBlack32 | 23U, kBlack32 | 8U}));
    EXPECT_EQ(paired.asked, 1);
}

/// WIN-78
TEST(PixelBrushes, WhatHasNoOtherPixelsIsEnlargedBesideThem) {
    PairedSkin paired;
    const Picture plain = picture(2, 1, {kRed, kGreen});
    const std::vector<CompositionStep> steps{{nullptr, &plain, kBlack, {1, 0, 2, 1}},
                                             {nullptr, nullptr, kRedColour, {0, 1, 1, 1}}};
    EXPECT_EQ(paired.shown(2, {1, 1, 5, 1}, steps), (Pixels{kBlack32 | 7U, kRed, kRed, kGreen, kGreen}));
    EXPECT_EQ(paired.shown(2, {1, 3, 2, 1}, steps), (Pixels{kRed, kBlack32 | 20U}));
    PairedSkin without;
    without.given = false;
    EXPECT_EQ(without.shown(2, {0, 0, 2, 1}), Pixels(2, kBlue)) << "the file is not there, or damaged";
    EXPECT_EQ(without.asked, 1);
}

TEST(PixelBrushes, ABackgroundThatIsNotThereIsBlack) {
    Part part({0, 0, 2, 1}, {2, 1});
    part.brush.skin({}, {});
    EXPECT_EQ(part.pixels, Pixels(2, kBlack32));
}

TEST(PixelBrushes, ADiscFillsItsPlaceAndLeavesWhatCoversIt) {
    Part part({10, 10, 8, 8});
    part.brush.disc({10, 10, 8, 8}, kRedColour, {{14, 12, 1, 1}});
    const auto at = [&part](int x, int y) { return part.pixels[static_cast<std::size_t>((y - 10) * 8 + x - 10)]; };
    EXPECT_EQ(at(13, 13), kRed);
    EXPECT_EQ(at(10, 10), kGreen) << "a corner is outside";
    EXPECT_EQ(at(14, 12), kGreen) << "covered";
    EXPECT_EQ(at(13, 12), kRed);
    EXPECT_EQ(at(15, 12), kRed);
    EXPECT_EQ(at(14, 13), kRed);
    EXPECT_EQ(at(14, 11), kRed);
}

TEST(PixelBrushes, ADiscIsDrawnOnlyWhereThePartIs) {
    Part part({14, 14, 2, 2});
    part.brush.disc({10, 10, 8, 8}, kRedColour, {});
    EXPECT_EQ(part.pixels, Pixels(4, kRed));
    Part beside({18, 10, 2, 2});
    beside.brush.disc({10, 10, 8, 8}, kRedColour, {});
    EXPECT_EQ(beside.pixels, Pixels(4, kGreen));
}

TEST(PixelBrushes, PicturesLieOnBlackTheLastOneOnTop) {
    const Picture red = picture(1, 1, {kRed}), blue = picture(1, 1, {kBlue});
    Part part({0, 0, 4, 1});
    part.brush.pictures(
        {{red, {0, 0, 3, 1}, {0, 0, 3, 1}}, {blue, {1, 0, 3, 1}, {1, 0, 1, 1}}, {{}, {0, 0, 4, 1}, {}}});
    EXPECT_EQ(part.pixels, (Pixels{kRed, kBlue, kRed, kBlack32}));
}

TEST(PixelBrushes, AReducedPictureIsAveragedAndKeptUntilItChanges) {
    const Picture striped = picture(4, 1, {kBlack32, 0xFF0000FE, kBlack32, 0xFF0000FE});
    const auto drawn = [](StretchedPicture& stretched, const Picture& shown, int width) {
        Pixels pixels(4, kGreen);
        stretched.draw({pixels.data(), {0, 0, 4, 1}}, shown, {0, 0, static_cast<double>(width), 1}, {0, 0, 4, 1});
        return pixels;
    };
    StretchedPicture stretched;
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(drawn(stretched, striped, 2), (Pixels{0xFF00007F, 0xFF00007F, kGreen, kGreen}));
    }
    EXPECT_EQ(drawn(stretched, striped, 1), (Pixels{0xFF00007F, kGreen, kGreen, kGreen})) << "another size";
    EXPECT_EQ(drawn(stretched, picture(2, 1, {kRed, kRed}), 1)[0], kRed) << "another picture";
    EXPECT_EQ(drawn(stretched, striped, 4), striped.empty() ? Pixels() : bitmapOf(striped)->pixels());
}

TEST(PixelBrushes, PlacesAreRoundedAtTheirEdges) {
    EXPECT_EQ(MemoryBrush::rounded({0.4, 0.6, 2.2, 2.2}), (PixelPlace{0, 1, 3, 2}));
}

}  // namespace
}  // namespace corvane
