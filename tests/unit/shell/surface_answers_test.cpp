// SPDX-License-Identifier: GPL-3.0-or-later
// What a surface answers where its desktop has no answer of its own.
#include <gtest/gtest.h>

#include "fake/fake_drawn.h"
#include "pictures/bitmap_picture.h"
#include "unit/shell/drawn_rig.h"

namespace corvane {
namespace {

TEST(SurfaceAnswers, APictureIsOpaqueByItsPixels) {
    const FakeDrawnSurface surface;
    const auto opaque = [&surface](BitmapPicture::Pixels pixels) {
        return surface.Surface::isOpaque(Picture(std::make_shared<BitmapPicture>(2, 1, std::move(pixels))));
    };
    EXPECT_TRUE(opaque({0xFF000000, 0xFFFFFFFF}));
    EXPECT_FALSE(opaque({0xFF000000, 0x80808080}));
    EXPECT_TRUE(surface.Surface::isOpaque(test::plain(3, 3))) << "another party's has no alpha";
    EXPECT_FALSE(surface.Surface::isOpaque({}));
}

TEST(SurfaceAnswers, ALabelFitsUpToItsWidth) {
    const FakeDrawnSurface surface;
    const double width = surface.labelWidth("text", 20);
    EXPECT_TRUE(surface.Surface::labelFits("text", 20, width));
    EXPECT_FALSE(surface.Surface::labelFits("text", 20, width - 1));
}

}  // namespace
}  // namespace corvane
