// SPDX-License-Identifier: GPL-3.0-or-later
// The panel on screen, compared pixel by pixel with the cells that its skin names.
#include <gtest/gtest.h>

#include <QDir>
#include <algorithm>
#include <cstdlib>

#include "engine/dense_skin.h"
#include "fake/player_fixture.h"
#include "files/posix_files.h"
#include "golden/expected_panel.h"
#include "linux/pictures/qt_pictures.h"
#include "linux/windowing/qt_windows.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

std::string skinFile(const std::string& name) { return std::string(CORVANE_SOURCE_DIR) + "/" + name; }

/// A panel in a real window over a machine in memory.
class PanelOnScreen {
public:
    PanelOnScreen(const std::string& csv, const std::string& bitmap, double scale = 1.0) {
        context.scale = scale;
        registerAllForms(player);
        player.gTextPath = csv;
        player.gBitmapPath = bitmap;
        const QSize size = test::expectedSize(csv);
        player.gPanelWidth = size.width();
        player.gPanelHeight = size.height();
        machine.loop.enter([&] {
            player.forms.load<MenuWindowControls>().pcpMainPanel.Picture =
                withDense(pictures, pictures.decode(bitmap).picture, bitmap);
            player.forms.load<MainPanelControls>().Show();
        });
        for (Label& label : panel().lblMainPanel) label.Caption = "";
        panel().shpVolume.Visible = false;
    }
    ~PanelOnScreen() { player.forms.clear(); }

    MainPanelControls& panel() { return *player.forms.find<MainPanelControls>(); }
    QImage grab() { return windows.widgetOf(panel())->grab().toImage().convertToFormat(QImage::Format_RGB32); }

    FakeMachine machine;
    DesktopContext context{machine.loop, 1.0, {}};
    QtWindows windows{context};
    QtPictures pictures;
    PosixFiles files;
    Ports ports{machine.loop,   machine.media, pictures,        machine.sound,   files,         windows,
                machine.timers, machine.clock, machine.dialogs, machine.process, machine.random};
    Player player{ports};
};

/// Equal pixel by pixel, each channel up to `tolerance`; otherwise the actual, the expected and the difference picture
/// are left in the folder of the run.
void expectEqual(const QImage& actual, const QImage& expected, const QString& name, int tolerance = 0) {
    ASSERT_EQ(actual.size(), expected.size());
    QImage difference(actual.size(), QImage::Format_RGB32);
    difference.fill(Qt::black);
    int different = 0;
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            const QRgb a = actual.pixel(x, y), b = expected.pixel(x, y);
            const int most =
                std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
            if (most <= tolerance) continue;
            ++different;
            difference.setPixel(x, y, qRgb(255, 0, 0));
        }
    }
    if (different == 0) return;
    QDir().mkpath("golden");
    actual.save("golden/" + name + "-actual.png");
    expected.save("golden/" + name + "-expected.png");
    difference.save("golden/" + name + "-difference.png");
    ADD_FAILURE() << different << " pixels differ: see golden/" << name.toStdString() << "-*.png";
}

/// START-45: The panel on the screen is the skin's picture, pixel for pixel
/// PANEL-02: The skin's records 1 to 40 are applied
TEST(PanelGolden, TheDefaultSkinIsDrawnPixelForPixel) {
    test::offscreenApplication();
    const std::string csv = skinFile("PANELSET/DEFAULT.CSV");
    const std::string bitmap = skinFile("PANELSET/DEFAULT.BMP");
    PanelOnScreen screen(csv, bitmap);
    expectEqual(screen.grab(), test::expectedPanel(csv, bitmap), "default");
}

/// SKIN-52: A skin that uses every record differently is drawn pixel for pixel
TEST(PanelGolden, ASkinThatUsesEveryRecordDifferentlyIsDrawnPixelForPixel) {
    test::offscreenApplication();
    const std::string csv = skinFile("tests/data/skins/ODD.CSV");
    const std::string bitmap = skinFile("tests/data/skins/ODD.BMP");
    PanelOnScreen screen(csv, bitmap);
    expectEqual(screen.grab(), test::expectedPanel(csv, bitmap), "odd");
}

/// PANEL-07
TEST(PanelGolden, ALampThatIsLitShowsItsOwnPictureInItsPlace) {
    test::offscreenApplication();
    const std::string csv = skinFile("PANELSET/DEFAULT.CSV");
    const std::string bitmap = skinFile("PANELSET/DEFAULT.BMP");
    PanelOnScreen screen(csv, bitmap);
    const QImage dark = screen.grab();
    Image& lamp = screen.panel().imgMainPanel[kRepeatLamp];
    mdlPublicFunction::toggleRepeat(screen.player);
    const QImage lit = screen.grab();
    const QRect place(static_cast<int>(lamp.Left / kTwipsPerPixel), static_cast<int>(lamp.Top / kTwipsPerPixel),
                      static_cast<int>(lamp.Width / kTwipsPerPixel), static_cast<int>(lamp.Height / kTwipsPerPixel));
    EXPECT_NE(dark.copy(place), lit.copy(place));
    EXPECT_EQ(lit.copy(place),
              imageOf(screen.panel().imgMainPanel[kRepeatLamp + 2].Picture).convertToFormat(QImage::Format_RGB32));
}

struct ScaledSkin {
    const char* name;
    double scale;
};

class ScaledPanelGolden : public ::testing::TestWithParam<ScaledSkin> {
protected:
    ScaledPanelGolden() { test::offscreenApplication(); }
    const std::string base_ = skinFile(std::string("PANELSET/") + GetParam().name);
    const QString name_ = QString("%1-%2").arg(GetParam().name).arg(qRound(GetParam().scale * 100));
};

constexpr int kRounding = 4;  ///< of a channel: processors interpolate with slightly different sums

TEST_P(ScaledPanelGolden, LooksAsItsGoldenPicture) {
    PanelOnScreen screen(base_ + ".CSV", base_ + ".BMP", GetParam().scale);
    const QImage actual = screen.grab();
    const QString path = QString::fromStdString(skinFile("tests/golden/pictures/")) + name_ + ".png";
    if (qEnvironmentVariableIsSet("CORVANE_WRITE_GOLDEN")) {
        ASSERT_TRUE(actual.save(path));
    }
    const QImage expected = QImage(path).convertToFormat(QImage::Format_RGB32);
    ASSERT_FALSE(expected.isNull()) << path.toStdString();
    expectEqual(actual, expected, name_, kRounding);
}

TEST_P(ScaledPanelGolden, PaintedPartByPartItShowsNoSeam) {
    PanelOnScreen screen(base_ + ".CSV", base_ + ".BMP", GetParam().scale);
    const QImage whole = screen.grab();
    QWidget* const widget = screen.windows.widgetOf(screen.panel());
    QImage parts(whole.size(), QImage::Format_RGB32);
    constexpr int kSide = 37;  // no multiple of a pixel of the skin at any scale
    for (int y = 0; y < whole.height(); y += kSide) {
        for (int x = 0; x < whole.width(); x += kSide) widget->render(&parts, QPoint(x, y), QRect(x, y, kSide, kSide));
    }
    expectEqual(parts, whole, name_ + "-parts", kRounding);
}

INSTANTIATE_TEST_SUITE_P(Skins, ScaledPanelGolden,
                         ::testing::Values(ScaledSkin{"DEFAULT", 1}, ScaledSkin{"DEFAULT", 1.25},
                                           ScaledSkin{"DEFAULT", 1.5}, ScaledSkin{"DEFAULT", 1.75},
                                           ScaledSkin{"DEFAULT", 2}, ScaledSkin{"BRASS", 1}, ScaledSkin{"BRASS", 1.25},
                                           ScaledSkin{"BRASS", 1.5}, ScaledSkin{"BRASS", 2}, ScaledSkin{"SLIM", 1},
                                           ScaledSkin{"SLIM", 1.25}, ScaledSkin{"SLIM", 1.5}, ScaledSkin{"SLIM", 1.75},
                                           ScaledSkin{"SLIM", 2}, ScaledSkin{"PAPER", 1}, ScaledSkin{"PAPER", 1.25},
                                           ScaledSkin{"PAPER", 1.5}, ScaledSkin{"PAPER", 2}),
                         [](const auto& tried) {
                             return tried.param.name + std::to_string(qRound(tried.param.scale * 100));
                         });

TEST(PanelGolden, EachShippedSkinIsDrawnPixelForPixelAndADenseBitmapChangesNothingThere) {
    test::offscreenApplication();
    for (const std::string name : {"DEFAULT", "BRASS", "SLIM", "PAPER"}) {
        const std::string base = skinFile("PANELSET/" + name);
        PanelOnScreen screen(base + ".CSV", base + ".BMP");
        expectEqual(screen.grab(), test::expectedPanel(base + ".CSV", base + ".BMP"), QString::fromStdString(name));
    }
}

TEST(PanelGolden, ADenseSkinAtTwiceTheSizeIsItsDenseBitmapPixelForPixel) {
    test::offscreenApplication();
    const std::string base = skinFile("PANELSET/DEFAULT");
    PanelOnScreen screen(base + ".CSV", base + ".BMP", 2);
    const QImage dense = QImage(QString::fromStdString(base + "@2X.BMP")).convertToFormat(QImage::Format_RGB32);
    const CommandButton& play = screen.panel().cmdMainPanel[kPlay];
    const QRect place(static_cast<int>(play.Left * 2 / kTwipsPerPixel), static_cast<int>(play.Top * 2 / kTwipsPerPixel),
                      static_cast<int>(play.Width * 2 / kTwipsPerPixel),
                      static_cast<int>(play.Height * 2 / kTwipsPerPixel));
    const QImage cell = denseImageOf(play.Picture).convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(cell.size(), place.size());
    EXPECT_EQ(screen.grab().copy(place), cell);
    EXPECT_NE(cell, imageOf(play.Picture).convertToFormat(QImage::Format_RGB32).scaled(cell.size()));
}

}  // namespace
}  // namespace corvane
