// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/dense_skin.h"

#include <gtest/gtest.h>

#include "fake/fake_pictures.h"

namespace corvane {
namespace {

struct DenseScreen : FakePictures {
    DenseScreen(FakeLoop& loop, Schedule& schedule, CallLog& log) : FakePictures(loop, schedule, log) {
        add("/s/A.BMP", 10, 4);
    }
    Picture paired(const Picture& plain, std::function<Picture()> dense) override {
        ask = std::move(dense);
        return plain;
    }
    Picture joinedWith() {
        const Picture plain = decode("/s/A.BMP").picture;
        withDense(*this, plain, "/s/A.BMP");
        return ask();
    }
    std::function<Picture()> ask;
};

struct DenseSkin : ::testing::Test {
    CallLog log;
    FakeLoop loop;
    Schedule schedule;
    DenseScreen screen{loop, schedule, log};
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

TEST_F(DenseSkin, IsReadWhenADenseScreenAsksForIt) {
    withDense(screen, screen.decode("/s/A.BMP").picture, "/s/A.BMP");
    screen.add("/s/A@2X.BMP", 20, 8);  // later than the skin was loaded
    EXPECT_EQ(screen.ask().width(), 20);
    EXPECT_EQ(screen.joinedWith().width(), 20);
}

TEST_F(DenseSkin, IsThePlainOneOnADesktopWithoutDensePictures) {
    FakePictures plainScreen(loop, schedule, log);
    plainScreen.add("/s/A.BMP", 10, 4);
    plainScreen.add("/s/A@2X.BMP", 20, 8);
    const Picture plain = plainScreen.decode("/s/A.BMP").picture;
    EXPECT_EQ(withDense(plainScreen, plain, "/s/A.BMP"), plain);
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
