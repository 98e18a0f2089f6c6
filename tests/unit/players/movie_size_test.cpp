// SPDX-License-Identifier: GPL-3.0-or-later
// The movie's window at each zoom, for pictures of each shape.
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

class SizedMovie : public PlayerFixture {
protected:
    /// Opens a movie of this size.
    void open(int sourceWidth, int sourceHeight, std::int16_t zoom) {
        machine.addMovie("/m/film.avi", 40, sourceWidth, sourceHeight);
        player.gMovieZoom = zoom;
        setUpPanel();
        setList({"/m/film.avi"});
        PlayFile(player);
        machine.settle();
    }
    void expectPlaces(float width, float height, float movieLeft, float movieTop) {
        EXPECT_NEAR(movieWindow()->Width / 15, width, 0.02);
        EXPECT_NEAR(movieWindow()->Height / 15, height, 0.02);
        EXPECT_NEAR(movieWindow()->Left / 15, (1024 - width) / 2, 0.02);
        EXPECT_NEAR(movieWindow()->Top / 15, (768 - height) / 2, 0.02);
        EXPECT_NEAR(movieWindow()->amvMovie->Left / 15, movieLeft, 0.02);
        EXPECT_NEAR(movieWindow()->amvMovie->Top / 15, movieTop, 0.02);
    }
};

struct Size {
    std::int16_t zoom;
    float width, height;        ///< of the window, pixels
    float movieLeft, movieTop;  ///< of the control on it, pixels
};

void PrintTo(const Size& size, std::ostream* out) { *out << "zoom " << size.zoom; }

class MovieZoom : public SizedMovie, public ::testing::WithParamInterface<Size> {};

/// MOVIE-03: Zooms 0, 1 and 5: the window is as wide as the control and 30 twips less high
/// MOVIE-04: Zooms 2, 3 and 4: the smaller ratio r of control and source sizes the window, two source rows less high
/// MOVIE-05: Then the control stands in the middle of the window, r pixels lower
/// MOVIE-06: The window stands in the middle of the screen
TEST_P(MovieZoom, SizesAndCentresTheWindow) {
    const Size& size = GetParam();
    open(320, 240, size.zoom);
    expectPlaces(size.width, size.height, size.movieLeft, size.movieTop);
}

// Zoom 2: the control is 256 by 192, r = 0.8; the window 256 by 190.4, the control one scaled pixel lower than centred.
INSTANTIATE_TEST_SUITE_P(Table, MovieZoom,
                         ::testing::Values(Size{0, 320, 240, 0, 0}, Size{1, 640, 480, 0, 0}, Size{2, 256, 190.4F, 0, 0},
                                           Size{3, 512, 380.8F, 0, 0}, Size{4, 723.968F, 538.4512F, 0, 0},
                                           Size{5, 320, 240, 0, 0}));

struct Shape {
    std::int16_t zoom;
    int sourceWidth, sourceHeight;  ///< pixels
    float width, height;            ///< of the window, pixels
    float movieLeft, movieTop;      ///< of the control on it, pixels
};

void PrintTo(const Shape& shape, std::ostream* out) {
    *out << shape.sourceWidth << " by " << shape.sourceHeight << " at zoom " << shape.zoom;
}

class MovieShape : public SizedMovie, public ::testing::WithParamInterface<Shape> {};

/// The control is a share of the screen, of 4 to 3; the window is as large as the picture that fits in.
/// MOVIE-04, MOVIE-05, MOVIE-06
TEST_P(MovieShape, TheSmallerRatioFitsThePictureIn) {
    const Shape& shape = GetParam();
    open(shape.sourceWidth, shape.sourceHeight, shape.zoom);
    expectPlaces(shape.width, shape.height, shape.movieLeft, shape.movieTop);
}

// 640 by 240 in a control of 256 by 192: r is 0.4 by the width and 0.8 by the height. The control is higher than the
// window, and lies one scaled pixel lower than centred.
INSTANTIATE_TEST_SUITE_P(Table, MovieShape,
                         ::testing::Values(Shape{2, 640, 240, 256, 95.2F, 0, -48},
                                           Shape{2, 240, 640, 72, 191.4F, -92, 0},
                                           Shape{3, 640, 240, 512, 190.4F, 0, -96},
                                           Shape{3, 240, 640, 144, 382.8F, -184, 0},
                                           Shape{4, 640, 240, 723.968F, 269.2256F, 0, -135.744F},
                                           Shape{4, 240, 640, 203.616F, 541.2792F, -260.176F, 0}));

}  // namespace
}  // namespace corvane
