// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/dense_skin.h"

#include <gtest/gtest.h>

#include "fake/fake_pictures.h"
#include "platform/dense_pictures.h"

namespace corvane {
namespace {

struct DenseScreen : FakePictures, DensePictures {
    explicit DenseScreen(CallLog& log) : FakePictures(log) { add("/s/A.BMP", 10, 4); }
    bool denseWanted() const override { return wanted; }
    Picture paired(const Picture& /*plain*/, const Picture& dense) override { return joined = dense; }
    Picture joinedWith() {
        const Picture plain = decode("/s/A.BMP").picture;
        withDense(*this, plain, "/s/A.BMP");
        return joined;
    }
    bool wanted = true;
    Picture joined;
};

struct DenseSkin : ::testing::Test {
    CallLog log;
    DenseScreen screen{log};
};

TEST(DenseNames, StandBeforeTheEnding) {
    EXPECT_EQ(denseName("/s/A.BMP"), "/s/A@2X.BMP");
    EXPECT_EQ(denseName("/s.d/A"), "/s.d/A@2X");
    EXPECT_EQ(denseName("C:\\s\\A.B.bmp"), "C:\\s\\A.B@2X.bmp");
}

TEST(DenseNames, AreNoSkinsBesideTheirOwn) {
    const std::vector<std::string> names = {"A.BMP", "A@2x.bmp", "B@2X.BMP"};
    EXPECT_EQ(withoutDense(names), (std::vector<std::string>{"A.BMP", "B@2X.BMP"}));
}

TEST_F(DenseSkin, IsReadOnlyForADenseScreen) {
    screen.add("/s/A@2X.BMP", 20, 8);
    EXPECT_EQ(screen.joinedWith().width(), 20);
    screen.joined = {};
    screen.wanted = false;
    EXPECT_TRUE(screen.joinedWith().empty());
}

TEST_F(DenseSkin, OfAWrongSizeIsLeftOut) {
    screen.add("/s/A@2X.BMP", 20, 7);
    EXPECT_TRUE(screen.joinedWith().empty());
    screen.add("/s/A@2X.BMP", 19, 8);
    EXPECT_TRUE(screen.joinedWith().empty());
}

TEST_F(DenseSkin, DamagedOrMissingIsLeftOut) {
    EXPECT_TRUE(screen.joinedWith().empty());
    screen.addBroken("/s/A@2X.BMP", "damaged");
    EXPECT_TRUE(screen.joinedWith().empty());
}

}  // namespace
}  // namespace corvane
