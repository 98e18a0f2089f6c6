// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/graphics_choice.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

/// MOVIE-47: Movies are shown by the graphics driver where it has a card; the setting and, before it, the variable say
/// otherwise
TEST(GraphicsChoices, TheVariableCountsBeforeTheSetting) {
    EXPECT_EQ(graphicsChoice("", ""), GraphicsChoice::Auto);
    EXPECT_EQ(graphicsChoice("", "AUTO"), GraphicsChoice::Auto);
    EXPECT_EQ(graphicsChoice("", "ON"), GraphicsChoice::On);
    EXPECT_EQ(graphicsChoice("", "OFF"), GraphicsChoice::Off);
    EXPECT_EQ(graphicsChoice("off", "ON"), GraphicsChoice::Off);
    EXPECT_EQ(graphicsChoice("on", "OFF"), GraphicsChoice::On);
    EXPECT_EQ(graphicsChoice("auto", "OFF"), GraphicsChoice::Auto);
    EXPECT_EQ(graphicsChoice("", "perhaps"), GraphicsChoice::Auto);
}

/// MOVIE-47
TEST(GraphicsChoices, WithoutACardNoDriverIsAskedFor) {
    constexpr auto kAuto = GraphicsChoice::Auto;
    EXPECT_EQ(whyNoGraphics(kAuto, "xcb", ":0", true), "");
    EXPECT_EQ(whyNoGraphics(kAuto, "xcb", "unix:1", true), "");
    EXPECT_NE(whyNoGraphics(kAuto, "xcb", ":0", false), "");
    EXPECT_NE(whyNoGraphics(kAuto, "xcb", "far:10.0", true), "") << "its card is not this machine's";
    EXPECT_NE(whyNoGraphics(kAuto, "offscreen", ":0", true), "");
    EXPECT_EQ(whyNoGraphics(GraphicsChoice::On, "xcb", ":0", false), "");
    EXPECT_NE(whyNoGraphics(GraphicsChoice::On, "wayland", "", true), "");
    EXPECT_NE(whyNoGraphics(GraphicsChoice::Off, "xcb", ":0", true), "");
}

/// MOVIE-47
TEST(GraphicsChoices, ADriverThatDrawsBySoftwareIsKnownByItsName) {
    for (const char* name : {"llvmpipe (LLVM 15.0.6, 256 bits)", "softpipe", "Software Rasterizer", "SVGA3D; build",
                             "lavapipe", "Mesa swrast", "GDI Generic Software", ""}) {
        EXPECT_TRUE(drawsBySoftware(name)) << name;
    }
    for (const char* name : {"Mesa Intel(R) UHD Graphics 620 (KBL GT2)", "AMD Radeon RX 6600 (radeonsi, navi23)",
                             "NVIDIA GeForce GTX 1650/PCIe/SSE2", "NV137"}) {
        EXPECT_FALSE(drawsBySoftware(name)) << name;
    }
}

}  // namespace
}  // namespace corvane
