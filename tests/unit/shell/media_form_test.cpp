// SPDX-License-Identifier: GPL-3.0-or-later
// A window of movies and pictures: where they lie, when the window takes its place, the whole screen.
#include "platform/movie_control.h"
#include "unit/shell/drawn_rig.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;
using test::plain;

struct PictureForm : test::DrawnRig {
    PictureForm() : DrawnRig(FormStyle::Media) {
        box.Scale = ScaleMode::InPixels;
        box.Picture = plain(80, 60);
        box.Move(60, 20);
        box.SetSize(80, 60);
        attach();
    }
    std::vector<ShownPicture> drawn() {
        FakeBrush brush;
        window->paint(brush);
        return brush.shown;
    }
    void enlarge() {
        form.SetSize(250 * kTwipsPerPixel, 120 * kTwipsPerPixel);
        form.Move(10 * kTwipsPerPixel, 30 * kTwipsPerPixel);
    }
    PictureBox box{&form, "pctTried"};
};

TEST_F(PictureForm, APictureHasItsOwnSizeUntilTheBoxSaysAnother) {
    ASSERT_EQ(drawn().size(), 1U);
    EXPECT_EQ(toText(drawn()[0].whole), "60 20 80 60");
    box.setPainted(160, 120);
    EXPECT_EQ(toText(drawn()[0].whole), "60 20 160 120");
    EXPECT_EQ(toText(drawn()[0].seen), "60 20 80 60");
    screens.scale = 2;
    EXPECT_EQ(toText(drawn()[0].whole), "120 40 320 240");
    box.Scale = ScaleMode::InTwips;
    EXPECT_EQ(toText(drawn()[0].whole), "8 3 21 16") << "in the unit of the box";
    box.setPainted(0, 0);
    EXPECT_EQ(toText(drawn()[0].whole), "8 3 160 120");
    box.Visible = false;
    EXPECT_TRUE(drawn().empty());
}

/// IMG-23
TEST_F(PictureForm, GoesToThePlaceOfAPictureThatIsPreparedWhenItIsReady) {
    box.Visible = false;
    toldNow();
    enlarge();
    EXPECT_EQ(surface->at, (PixelPlace{0, 0, 200, 100}));
    box.Visible = true;
    EXPECT_EQ(surface->at, (PixelPlace{10, 30, 250, 120}));
    const Texts told = toldNow();
    EXPECT_EQ(
        std::count_if(told.begin(), told.end(), [](const std::string& each) { return each.starts_with("place"); }), 1)
        << "one step";
}

/// IMG-24
TEST_F(PictureForm, AMinimisedOneTakesItsNextPlaceWhenItIsRestored) {
    form.WindowState = WindowState::Minimized;
    enlarge();
    box.Visible = false;
    box.Visible = true;
    EXPECT_EQ(surface->at, (PixelPlace{0, 0, 200, 100}));
    form.WindowState = WindowState::Normal;
    EXPECT_EQ(surface->at, (PixelPlace{10, 30, 250, 120}));
}

TEST_F(PictureForm, AHiddenOneTakesItsPlaceAtOnce) {
    form.Hide();
    box.Visible = false;
    enlarge();
    EXPECT_EQ(surface->at, (PixelPlace{10, 30, 250, 120}));
}

/// A movie that says by itself whether it fills the screen.
class FillingMovie : public MouseControl, public ScreenFilling {
public:
    explicit FillingMovie(Form* form) : MouseControl(form, ControlKind::Movie, "movTried") {}
    bool fillsScreen() const override { return fills; }
    void fill(bool wanted) {
        fills = wanted;
        fillsScreenChanged.raise();
    }
    bool fills = false;
};

struct MovieForm : test::DrawnRig {
    MovieForm() : DrawnRig(FormStyle::Media) { place(movie, 20, 10, 160, 80); }
    ~MovieForm() override {
        window->unbind();
        window.reset();
    }
    FillingMovie movie{&form};
};

TEST_F(MovieForm, TheSurfaceIsToldWhereTheMovieLies) {
    attach();
    EXPECT_EQ(surface->movie, &movie);
    EXPECT_EQ(toText(surface->movieAt), "20 10 160 80");
    movie.Left = 30 * kTwipsPerPixel;
    EXPECT_EQ(toText(surface->movieAt), "30 10 160 80");
    screens.scale = 2;
    window->scaleChanged();
    EXPECT_EQ(toText(surface->movieAt), "60 20 320 160");
    window->unbind();
    EXPECT_EQ(surface->movie, nullptr);
}

/// MOVIE-12
TEST_F(MovieForm, FillsTheScreenAsLongAsTheMovieDoes) {
    attach();
    movie.fill(true);
    movie.fill(true);
    EXPECT_EQ(toldNow(), Texts{"fill"});
    EXPECT_EQ(toText(window->pixelsOf(movie)), "0 0 1000 800") << "it takes the mouse everywhere";
    window->beginDrag();
    press(500, 400);
    window->beginDrag();
    EXPECT_FALSE(window->isDragged()) << "what fills the screen stays";
    release(500, 400);
    movie.fill(false);
    EXPECT_EQ(toldNow(), Texts{"unfill"});
    EXPECT_EQ(toText(window->pixelsOf(movie)), "20 10 160 80");
}

TEST_F(MovieForm, FillsItFromTheStart) {
    movie.fills = true;
    window->bind();
    EXPECT_TRUE(surface->whole.has_value());
}

TEST_F(MovieForm, TheScreenIsGivenBackWhenTheFormGoes) {
    attach();
    movie.fill(true);
    window->unbind();
    EXPECT_FALSE(surface->whole.has_value());
    EXPECT_FALSE(movie.fillsScreenChanged.isTied()) << "the window goes before the movie";
}

}  // namespace
}  // namespace corvane
