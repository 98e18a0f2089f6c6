// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/bitmap_picture.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using Pixels = BitmapPicture::Pixels;

/// Another party's, two pixels wide and one high.
class Foreign : public PictureData {
public:
    int width() const override { return 2; }
    int height() const override { return 1; }
    std::uint32_t pixel(int x, int /*y*/) const override { return x == 0 ? 0x112233 : 0x445566; }
};

Picture bitmap(int width, int height, Pixels pixels, int fullWidth = 0, int fullHeight = 0) {
    return Picture(std::make_shared<BitmapPicture>(width, height, std::move(pixels), fullWidth, fullHeight));
}

TEST(BitmapPictures, TellTheirPixelsWithoutAlpha) {
    const BitmapPicture picture(2, 1, {0xFF010203, 0x80040506});
    EXPECT_EQ(picture.pixel(0, 0), 0x010203U);
    EXPECT_EQ(picture.pixel(1, 0), 0x040506U);
    EXPECT_EQ(picture.held(1, 0), 0x80040506U);
    EXPECT_FALSE(picture.opaque());
    EXPECT_TRUE(BitmapPicture(1, 1, {0xFF000000}).opaque());
}

TEST(BitmapPictures, AReducedOneIsAsLargeAsThePictureIs) {
    const BitmapPicture picture(2, 2, {1, 2, 3, 4}, 6, 4);
    EXPECT_EQ(picture.width(), 6);
    EXPECT_EQ(picture.height(), 4);
    EXPECT_EQ(picture.pixel(0, 0), 1U);
    EXPECT_EQ(picture.pixel(2, 1), 1U);
    EXPECT_EQ(picture.pixel(3, 1), 2U);
    EXPECT_EQ(picture.pixel(5, 3), 4U);
}

TEST(BitmapPictures, AnotherPartysPictureIsTakenOverOpaque) {
    EXPECT_EQ(bitmapOf({}), nullptr);
    const auto taken = bitmapOf(Picture(std::make_shared<Foreign>()));
    EXPECT_EQ(taken->pixels(), (Pixels{0xFF112233, 0xFF445566}));
    const Picture own = bitmap(1, 1, {7});
    EXPECT_EQ(bitmapOf(own).get(), own.data().get());
}

TEST(BitmapPictures, APartHasThePixelsOfItsCell) {
    const Picture whole = bitmap(3, 2, {1, 2, 3, 0x80000004, 5, 6});
    EXPECT_EQ(bitmapOf(cutOut(whole, {0, 1, 2, 1}))->pixels(), (Pixels{0x80000004, 5}));
    EXPECT_EQ(bitmapOf(cutOut(whole, {2, 0, 1, 2}))->pixels(), (Pixels{3, 6}));
    const Picture reduced = bitmap(2, 1, {8, 9}, 4, 2);
    EXPECT_EQ(bitmapOf(cutOut(reduced, {1, 0, 2, 2}))->pixels(), (Pixels{8, 9, 8, 9}));
}

}  // namespace
}  // namespace corvane
