// SPDX-License-Identifier: GPL-3.0-or-later
// The panel on screen, compared pixel by pixel with the cells that its skin names.
#include <gtest/gtest.h>

#include <QDir>

#include "desktop/qt_files.h"
#include "desktop/qt_pictures.h"
#include "desktop/qt_windows.h"
#include "fake/player_fixture.h"
#include "golden/expected_panel.h"
#include "unit/desktop/offscreen.h"

namespace corvane {
namespace {

std::string skinFile(const std::string& name) { return std::string(CORVANE_SOURCE_DIR) + "/" + name; }

/// A panel in a real window over a machine in memory.
class PanelOnScreen {
public:
    PanelOnScreen(const std::string& csv, const std::string& bitmap) {
        registerAllForms(player);
        player.gTextPath = csv;
        player.gBitmapPath = bitmap;
        const QSize size = test::expectedSize(csv);
        player.gPanelWidth = size.width();
        player.gPanelHeight = size.height();
        machine.loop.enter([&] {
            player.forms.load<MenuWindowControls>().pcpMainPanel.Picture = pictures.decode(bitmap).picture;
            player.forms.load<MainPanelControls>().Show();
        });
        for (Label& label : panel().lblMainPanel) label.Caption = "";
        panel().shpVolume.Visible = false;
    }
    ~PanelOnScreen() { player.forms.clear(); }

    MainPanelControls& panel() { return *player.forms.find<MainPanelControls>(); }
    QImage grab() {
        return windows.windowOf(panel())->widget()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    FakeMachine machine;
    DesktopContext context{machine.loop, 1.0, {}};
    QtWindows windows{context};
    QtPictures pictures;
    QtFiles files;
    Ports ports{machine.loop,   machine.media, pictures,        machine.sound,   files,         windows,
                machine.timers, machine.clock, machine.dialogs, machine.process, machine.random};
    Player player{ports};
};

/// Equal pixel by pixel; otherwise the actual, the expected and the difference picture are left in the folder of the
/// run.
void expectEqual(const QImage& actual, const QImage& expected, const QString& name) {
    ASSERT_EQ(actual.size(), expected.size());
    QImage difference(actual.size(), QImage::Format_RGB32);
    difference.fill(Qt::black);
    int different = 0;
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            if (actual.pixel(x, y) == expected.pixel(x, y)) continue;
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

TEST(PanelGolden, TheDefaultSkinIsDrawnPixelForPixel) {
    test::offscreenApplication();
    const std::string csv = skinFile("PANELSET/DEFAULT.CSV");
    const std::string bitmap = skinFile("PANELSET/DEFAULT.BMP");
    PanelOnScreen screen(csv, bitmap);
    expectEqual(screen.grab(), test::expectedPanel(csv, bitmap), "default");
}

TEST(PanelGolden, ASkinThatUsesEveryRecordDifferentlyIsDrawnPixelForPixel) {
    test::offscreenApplication();
    const std::string csv = skinFile("tests/data/skins/ODD.CSV");
    const std::string bitmap = skinFile("tests/data/skins/ODD.BMP");
    PanelOnScreen screen(csv, bitmap);
    expectEqual(screen.grab(), test::expectedPanel(csv, bitmap), "odd");
}

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

}  // namespace
}  // namespace corvane
