// SPDX-License-Identifier: GPL-3.0-or-later
#include <QHelpEvent>
#include <QToolTip>

#include "linux/windowing/shown_text.h"
#include "unit/linux/window_rig.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;
using test::plain;

struct PaintedWindowTest : test::WindowRig {
    explicit PaintedWindowTest(double scale = 1.0) : WindowRig(FormStyle::Painted, scale) {
        form.Picture = plain(200, 100, Qt::darkBlue);
        place(button, 10, 10, 40, 20);
        button.Picture = plain(40, 20, Qt::green);
        button.DownPicture = plain(40, 20, Qt::red);
        place(slide, 10, 60, 30, 10);
        slide.BackColor = 0x00FFFF;  // yellow: red and green
        slide.hitWidth = 150 * kTwipsPerPixel;
        label.Move(100 * kTwipsPerPixel, 10 * kTwipsPerPixel);
        label.SetSize(60 * kTwipsPerPixel, 20 * kTwipsPerPixel);
        label.ForeColor = kWhite;
    }
    Image image{&form, "imgTried"};
    PictureBox slide{&form, "pctTried"};
    Label label{&form, "lblTried"};
    Shape dot{&form, "shpTried"};
    CommandButton button{&form, "cmdTried"};

    int whitePixels(const QRect& part) {
        const QImage all = shown();
        int count = 0;
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x) count += qGray(all.pixel(x, y)) > 128 ? 1 : 0;
        }
        return count;
    }
};

TEST_F(PaintedWindowTest, IsExactlyAsLargeAsItsFormAndDrawsPixelForPixel) {
    attach();
    EXPECT_EQ(widget().size(), QSize(200, 100));
    const QImage all = shown();
    EXPECT_EQ(all.pixelColor(0, 0), QColor(Qt::darkBlue));
    EXPECT_EQ(all.pixelColor(9, 10), QColor(Qt::darkBlue));
    EXPECT_EQ(all.pixelColor(10, 10), QColor(Qt::green));
    EXPECT_EQ(all.pixelColor(49, 29), QColor(Qt::green));
    EXPECT_EQ(all.pixelColor(50, 29), QColor(Qt::darkBlue));
    EXPECT_EQ(all.pixelColor(39, 65), QColor(Qt::yellow));
    EXPECT_EQ(all.pixelColor(40, 65), QColor(Qt::darkBlue));
}

TEST_F(PaintedWindowTest, FollowsItsControls) {
    attach();
    slide.Width = 100 * kTwipsPerPixel;
    EXPECT_EQ(shown().pixelColor(109, 65), QColor(Qt::yellow));
    slide.Width = 15;
    EXPECT_EQ(shown().pixelColor(20, 65), QColor(Qt::darkBlue));
    button.Visible = false;
    EXPECT_EQ(shown().pixelColor(20, 20), QColor(Qt::darkBlue));
    form.Width = 100 * kTwipsPerPixel;
    EXPECT_EQ(widget().width(), 100);
}

TEST_F(PaintedWindowTest, AnImageIsAsLargeAsItsPicture) {
    image.Move(45 * kTwipsPerPixel, 20 * kTwipsPerPixel);
    image.Picture = plain(10, 10, Qt::magenta);
    attach();
    EXPECT_EQ(shown().pixelColor(54, 29), QColor(Qt::magenta));
    EXPECT_EQ(shown().pixelColor(55, 29), QColor(Qt::darkBlue));
    EXPECT_EQ(shown().pixelColor(49, 29), QColor(Qt::green)) << "a button lies above";
    image.Picture = plain(20, 30, Qt::cyan);
    EXPECT_EQ(shown().pixelColor(64, 49), QColor(Qt::cyan));
}

/// SKIN-53: A held button shows its pressed picture while the pointer is on it; a disabled one keeps its normal picture
TEST_F(PaintedWindowTest, AHeldButtonShowsItsPressedPictureWhileThePointerIsInside) {
    attach();
    press({20, 20});
    EXPECT_EQ(shown().pixelColor(20, 20), QColor(Qt::red));
    moveTo({80, 80});
    EXPECT_EQ(shown().pixelColor(20, 20), QColor(Qt::green));
    moveTo({21, 20});
    EXPECT_EQ(shown().pixelColor(20, 20), QColor(Qt::red));
    release({21, 20});
    EXPECT_EQ(shown().pixelColor(20, 20), QColor(Qt::green));
}

/// SKIN-53
TEST_F(PaintedWindowTest, ADisabledButtonKeepsItsNormalPicture) {
    button.Enabled = false;
    attach();
    press({20, 20});
    EXPECT_EQ(shown().pixelColor(20, 20), QColor(Qt::green));
}

/// SKIN-54
TEST_F(PaintedWindowTest, TextsAreCutToTheirPlaceWithTheWholeInTheToolTip) {
    label.Caption = "A title that is far too long for its place";
    attach();
    EXPECT_GT(whitePixels({100, 10, 60, 20}), 20);
    EXPECT_EQ(whitePixels({160, 10, 40, 20}), 0);
    QHelpEvent help(QEvent::ToolTip, QPoint(110, 20), widget().mapToGlobal(QPoint(110, 20)));
    QCoreApplication::sendEvent(&widget(), &help);
    EXPECT_EQ(QToolTip::text(), plainTip("A title that is far too long for its place"));
    label.ToolTipText = "Frame";
    QCoreApplication::sendEvent(&widget(), &help);
    EXPECT_EQ(QToolTip::text(), plainTip("Frame"));
}

TEST_F(PaintedWindowTest, ATextLiesBehindThePicturesAboveIt) {
    place(label, 10, 10, 40, 20);
    label.Caption = "WWWWWW";
    attach();
    for (int y = 10; y < 30; ++y) {
        for (int x = 10; x < 50; ++x) ASSERT_EQ(shown().pixelColor(x, y), QColor(Qt::green)) << x << " " << y;
    }
}

TEST_F(PaintedWindowTest, AShapeIsARoundSpotInItsRectangle) {
    place(dot, 100, 50, 20, 20);
    dot.FillColor = kWhite;
    attach();
    EXPECT_EQ(shown().pixelColor(110, 60), QColor(Qt::white));
    EXPECT_EQ(shown().pixelColor(100, 50), QColor(Qt::darkBlue));
}

TEST_F(PaintedWindowTest, GoesAtOnceWhenItsFormGoesInsideAnEvent) {
    button.Click.tie([this] { windows.detach(form); });
    button.MouseUp.tie([this](const MouseArgs&) { seen.push_back("too late"); });
    attach();
    const QPointer<QWidget> before = &widget();
    click({20, 20});
    EXPECT_EQ(windows.windowOf(form), nullptr);
    ASSERT_FALSE(before.isNull());
    EXPECT_FALSE(before->isVisible());
    EXPECT_TRUE(test::waitUntil([&] { return before.isNull(); }));
    EXPECT_EQ(seen, Texts{});
}

/// PANEL-23: Minimised and brought back it plays on
TEST_F(PaintedWindowTest, MinimisesAndComesBack) {
    attach();
    form.WindowState = WindowState::Minimized;
    EXPECT_TRUE(widget().isMinimized());
    widget().showNormal();
    settle();
    EXPECT_EQ(form.WindowState, WindowState::Normal);
}

struct DoubledWindowTest : PaintedWindowTest {
    DoubledWindowTest() : PaintedWindowTest(2.0) {}
};

TEST_F(DoubledWindowTest, IsScaledAsAWholeAndSharp) {
    attach();
    EXPECT_EQ(widget().size(), QSize(400, 200));
    const QImage all = shown();
    EXPECT_EQ(all.pixelColor(19, 20), QColor(Qt::darkBlue));
    EXPECT_EQ(all.pixelColor(20, 20), QColor(Qt::green));
    EXPECT_EQ(all.pixelColor(99, 59), QColor(Qt::green));
    EXPECT_EQ(all.pixelColor(100, 59), QColor(Qt::darkBlue));
    float x = 0;
    button.MouseDown.tie([&](const MouseArgs& mouse) { x = mouse.x; });
    press({40, 40});
    EXPECT_EQ(x, 150.0F);
}

struct FractionalWindowTest : PaintedWindowTest {
    FractionalWindowTest() : PaintedWindowTest(1.5) {}
};

/// The largest difference of two pictures' grey values.
int farthest(const QImage& a, const QImage& b) {
    int difference = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            difference = std::max(difference, std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))));
        }
    }
    return difference;
}

TEST_F(FractionalWindowTest, PartsPaintedLaterFitWithoutSeams) {
    QImage noise(200, 100, QImage::Format_RGB32);
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 200; ++x) noise.setPixel(x, y, qRgb(x * 37 % 256, y * 53 % 256, (x * y) % 256));
    }
    form.Picture = Picture(std::make_shared<QtPicture>(noise));
    attach();
    QImage whole(300, 150, QImage::Format_RGB32);
    widget().render(&whole);
    QImage parts(whole.size(), whole.format());
    for (int x = 0; x < 300; x += 7) widget().render(&parts, QPoint(x, 0), QRegion(x, 0, 7, 150));
    EXPECT_LE(farthest(parts, whole), 2) << "beyond rounding";
}

}  // namespace
}  // namespace corvane
