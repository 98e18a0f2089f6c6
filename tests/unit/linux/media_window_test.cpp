// SPDX-License-Identifier: GPL-3.0-or-later
#include <QPainter>
#include <vector>

#include "linux/windowing/full_screen_window.h"
#include "linux/windowing/movie_surface.h"
#include "platform/movie_control.h"
#include "unit/linux/window_rig.h"

namespace corvane {
namespace {

using test::plain;

/// A movie of one colour.
class PlainMovie : public MovieControl, public MovieSurface {
public:
    using MovieControl::MovieControl;
    void FileName(const std::string& path) override { path_ = path; }
    const std::string& FileName() const override { return path_; }
    void MovieWindowSize(int /*size*/) override {}
    void FullScreenMode(bool on) override {
        full = on;
        fillsScreenChanged.raise();
    }
    bool FullScreenMode() const override { return full; }
    double Duration() const override { return 10; }
    double CurrentPosition() const override { return 0; }
    void CurrentPosition(double /*seconds*/) override {}
    double Rate() const override { return 1; }
    void Rate(double /*rate*/) override {}
    int ImageSourceWidth() const override { return 100; }
    int ImageSourceHeight() const override { return 50; }
    void Run() override {}
    void Pause() override {}
    void Stop() override {}
    int State() const override { return kMovieRunning; }

    void setTarget(QSize devicePixels) override { target = devicePixels; }
    void paint(QPainter& painter, const QRect& area) override {
        painter.fillRect(area, colour);
        ++painted;
    }
    bool fillsScreen() const override { return full; }

    bool full = false;
    int painted = 0;
    QSize target;
    QColor colour = Qt::green;

private:
    std::string path_;
};

struct PictureWindow : test::WindowRig {
    PictureWindow() : WindowRig(FormStyle::Media) {
        box.Scale = ScaleMode::InPixels;
        QImage halves(100, 50, QImage::Format_RGB32);
        halves.fill(Qt::red);
        QPainter(&halves).fillRect(50, 0, 50, 50, Qt::blue);
        box.Picture = Picture(std::make_shared<QtPicture>(halves));
        box.SetSize(100, 50);
        box.Move(50, 25);
    }
    PictureBox box{&form, "pctTried"};
};

/// PIC-13
TEST_F(PictureWindow, ShowsThePictureAtItsOwnSizeOnBlack) {
    attach();
    const QImage all = shown();
    EXPECT_EQ(all.pixelColor(49, 30), QColor(Qt::black));
    EXPECT_EQ(all.pixelColor(50, 30), QColor(Qt::red));
    EXPECT_EQ(all.pixelColor(99, 30), QColor(Qt::red));
    EXPECT_EQ(all.pixelColor(100, 30), QColor(Qt::blue));
    EXPECT_EQ(all.pixelColor(150, 30), QColor(Qt::black));
}

/// What was there before the window is painted must not be seen.
TEST_F(PictureWindow, PaintsEveryPixel) {
    QImage holed(100, 50, QImage::Format_ARGB32_Premultiplied);
    holed.fill(Qt::transparent);
    QPainter(&holed).fillRect(50, 0, 50, 50, Qt::blue);
    attach();
    for (const bool opaque : {false, true}) {
        box.Picture =
            Picture(std::make_shared<QtPicture>(opaque ? holed.convertToFormat(QImage::Format_RGB32) : holed));
        QImage all(widget().size(), QImage::Format_RGB32);
        all.fill(Qt::green);
        widget().render(&all, QPoint(), QRegion(), QWidget::DrawChildren);
        EXPECT_EQ(all.pixelColor(20, 30), QColor(Qt::black)) << "beside the picture";
        EXPECT_EQ(all.pixelColor(70, 30), QColor(Qt::black)) << "through the picture";
        EXPECT_EQ(all.pixelColor(120, 30), QColor(Qt::blue));
        EXPECT_EQ(all.pixelColor(155, 80), QColor(Qt::black));
    }
}

TEST_F(PictureWindow, ShowsItEnlargedAndReduced) {
    box.SetSize(400, 200);
    box.Move(-100, -50);
    box.setPainted(400, 200);
    attach();
    EXPECT_EQ(shown().pixelColor(1, 1), QColor(Qt::red));
    EXPECT_EQ(shown().pixelColor(90, 50), QColor(Qt::red));
    EXPECT_EQ(shown().pixelColor(110, 50), QColor(Qt::blue));
    box.SetSize(20, 10);
    box.Move(0, 0);
    box.setPainted(20, 10);
    EXPECT_EQ(shown().pixelColor(8, 5), QColor(Qt::red));
    EXPECT_EQ(shown().pixelColor(12, 5), QColor(Qt::blue));
    EXPECT_EQ(shown().pixelColor(21, 5), QColor(Qt::black));
}

TEST_F(PictureWindow, AHiddenBoxShowsNothing) {
    attach();
    box.Visible = false;
    EXPECT_EQ(shown().pixelColor(60, 30), QColor(Qt::black));
}

/// A window that stays up for the next picture: it must not be seen with the one picture at the other one's place.
/// IMG-23: A window that is kept between two pictures goes to the next one's place in one step, when that is ready;
///     nothing else is seen between pictures of one size
TEST_F(PictureWindow, GoesToThePlaceOfAPictureThatIsPreparedInOneStepWhenItIsReady) {
    attach();
    form.Show();
    struct Steps : QObject {
        std::vector<QRect> seen;
        bool eventFilter(QObject* watched, QEvent* event) override {
            const auto* const window = static_cast<QWidget*>(watched);
            if (event->type() == QEvent::Move || event->type() == QEvent::Resize) seen.push_back(window->geometry());
            return false;
        }
    } steps;
    const QRect before = widget().geometry();
    widget().installEventFilter(&steps);
    box.Visible = false;
    form.SetSize(form.Width + 750, form.Height + 300);
    form.Move(form.Left + 150, form.Top + 450);
    EXPECT_EQ(widget().geometry(), before);
    box.Visible = true;
    const QRect after(before.topLeft() + QPoint(10, 30), before.size() + QSize(50, 20));
    EXPECT_EQ(widget().geometry(), after);
    EXPECT_EQ(widget().minimumSize(), after.size());
    EXPECT_EQ(widget().maximumSize(), after.size());
    for (const QRect& step : steps.seen) EXPECT_EQ(step, after);
    EXPECT_FALSE(steps.seen.empty());
}

/// Asked for another place, it would be brought back by the window manager.
/// IMG-24
TEST_F(PictureWindow, AMinimisedOneTakesItsNextPlaceWhenItIsRestored) {
    attach();
    form.Show();
    form.WindowState = WindowState::Minimized;
    const QRect before = widget().geometry();
    box.Visible = false;
    form.SetSize(form.Width + 750, form.Height + 300);
    form.Move(form.Left + 150, form.Top + 450);
    box.Visible = true;
    EXPECT_EQ(widget().geometry(), before);
    EXPECT_EQ(widget().maximumSize(), before.size());
    EXPECT_TRUE(widget().isMinimized());
    form.WindowState = WindowState::Normal;
    EXPECT_EQ(widget().geometry(), QRect(before.topLeft() + QPoint(10, 30), before.size() + QSize(50, 20)));
}

struct MovieWindow : test::WindowRig {
    MovieWindow() : WindowRig(FormStyle::Media) { place(movie, 0, 0, 200, 100); }
    ~MovieWindow() override { windows.detach(form); }
    PlainMovie movie{&form};
    static QWidget* wholeScreen() {
        for (QWidget* each : QApplication::topLevelWidgets()) {
            if (dynamic_cast<FullScreenWindow*>(each) != nullptr && each->isVisible()) return each;
        }
        return nullptr;
    }
};

TEST_F(MovieWindow, PaintsTheVisiblePartOfTheControl) {
    place(movie, 20, -10, 400, 60);
    attach();
    EXPECT_EQ(movie.target, QSize(180, 50));
    EXPECT_EQ(shown().pixelColor(19, 10), QColor(Qt::black));
    EXPECT_EQ(shown().pixelColor(20, 10), QColor(Qt::green));
    EXPECT_EQ(shown().pixelColor(20, 50), QColor(Qt::black));
    form.Width = 100 * kTwipsPerPixel;
    EXPECT_EQ(movie.target, QSize(80, 50));
}

TEST_F(MovieWindow, PaintsAFrameWhenOneIsReady) {
    attach();
    (void)shown();
    const int before = movie.painted;
    movie.frameReady.raise();
    EXPECT_TRUE(test::waitUntil([&] { return movie.painted > before; }));
}

/// MOVIE-12
TEST_F(MovieWindow, FillsTheScreenAndHandsInputToTheForm) {
    std::string typed;
    float x = 0;
    form.KeyPress.tie([&](int character) { typed += static_cast<char>(character); });
    movie.MouseDown.tie([&](const MouseArgs& mouse) { x = mouse.x; });
    attach();
    movie.FullScreenMode(true);
    QWidget* const whole = wholeScreen();
    ASSERT_NE(whole, nullptr);
    EXPECT_EQ(movie.target, whole->size());
    QKeyEvent typing(QEvent::KeyPress, Qt::Key_Z, {}, "z");
    QCoreApplication::sendEvent(whole, &typing);
    EXPECT_EQ(typed, "z");
    const QPoint at(500, 300);
    QMouseEvent down(QEvent::MouseButtonPress, at, at, Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(whole, &down);
    EXPECT_EQ(x, 7500.0F);
    movie.FullScreenMode(false);
    EXPECT_EQ(wholeScreen(), nullptr);
    EXPECT_EQ(movie.target, QSize(200, 100));
}

/// Alt+Tab: the release of Alt is another program's, and the next key's must not open the menu.
TEST_F(MovieWindow, TheFormHearsThatItsWholeScreenSurfaceHasLostTheKeyboard) {
    int lost = 0;
    form.LostFocus.tie([&] { ++lost; });
    attach();
    movie.FullScreenMode(true);
    QWidget* const whole = wholeScreen();
    ASSERT_NE(whole, nullptr);
    settle();
    lost = 0;
    QFocusEvent out(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(whole, &out);
    settle();
    EXPECT_EQ(lost, 1);
}

TEST_F(MovieWindow, TheScreenIsGivenBackWhenTheFormGoes) {
    attach();
    movie.FullScreenMode(true);
    windows.detach(form);
    EXPECT_EQ(wholeScreen(), nullptr);
    movie.frameReady.raise();
    movie.fillsScreenChanged.raise();
    EXPECT_EQ(wholeScreen(), nullptr);
}

}  // namespace
}  // namespace corvane
