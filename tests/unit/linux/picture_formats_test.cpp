// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <string>
#include <vector>

#include "linux/pictures/qt_pictures.h"
#include "unit/linux/offscreen.h"
#include "unit/linux/picture_bytes.h"

namespace corvane {
namespace {

using namespace std::string_literals;
using test::bitmapFile;
using test::BitmapKind;
using test::Dots;
using test::gifFile;
using test::GifPart;
using test::little;

/// What is decoded of a file, from its bytes.
struct PictureFormats : ::testing::Test {
    PictureFormats() { test::offscreenApplication(); }
    Picture decode(const std::string& bytes) {
        folder.write("picture", bytes);
        const auto decoded = pictures.decode(folder.in("picture"));
        EXPECT_EQ(decoded.reason, "");
        return decoded.picture;
    }
    /// Each pixel is that of the dots, whose values are 0xRRGGBB; each channel to `slack`, where it counts.
    static void expectDots(
        const Picture& picture, const Dots& dots, int slack = 0,
        const std::function<bool(int, int)>& counts = [](int, int) { return true; }) {
        ASSERT_FALSE(picture.empty());
        ASSERT_EQ(picture.width(), dots.width);
        ASSERT_EQ(picture.height(), dots.height);
        for (int y = 0; y < dots.height; ++y) {
            for (int x = 0; x < dots.width; ++x) {
                if (!counts(x, y)) continue;
                const std::uint32_t seen = picture.data()->pixel(x, y), wanted = dots.at(x, y);
                for (const unsigned shift : {16U, 8U, 0U}) {
                    ASSERT_NEAR(static_cast<int>(seen >> shift & 0xFF), static_cast<int>(wanted >> shift & 0xFF), slack)
                        << "at " << x << ", " << y << std::hex << ": " << seen << " for " << wanted;
                }
            }
        }
    }
    test::TemporaryFolder folder;
    QtPictures pictures;
};

// --- Bitmaps: odd sizes, so that rows are filled up; no row, column or colour like another. --------------------------

constexpr int kWidth = 13, kHeight = 5;

std::uint32_t colourOf(std::uint32_t number) {
    return ((number * 67 + 20) % 256) << 16 | ((number * 29 + 200) % 256) << 8 | (number * 151 + 90) % 256;
}

std::vector<std::uint32_t> colours(std::uint32_t count) {
    std::vector<std::uint32_t> table;
    for (std::uint32_t i = 0; i < count; ++i) table.push_back(colourOf(i));
    return table;
}

/// Numbers of colours: runs in the upper rows, none in the lower ones.
Dots numbers(std::uint32_t count) {
    return {kWidth, kHeight, [count](int x, int y) {
                const auto across = static_cast<std::uint32_t>(y < 3 ? x / 4 : x * x);
                return (across * 5 + static_cast<std::uint32_t>(y) * 3 + 1) % count;
            }};
}

Dots coloured(const Dots& from) {
    return {from.width, from.height, [&](int x, int y) { return colourOf(from.at(x, y)); }};
}

/// What is left of a colour whose channels have that many bits, at its full range.
Dots coarse(const Dots& from, int red, int green, int blue) {
    const auto channel = [](std::uint32_t value, int bits) {
        const std::uint32_t most = (1U << bits) - 1;
        return (value * most / 255) * 255 / most;
    };
    return {from.width, from.height, [&](int x, int y) {
                const std::uint32_t colour = from.at(x, y);
                return channel(colour >> 16 & 0xFF, red) << 16 | channel(colour >> 8 & 0xFF, green) << 8 |
                       channel(colour & 0xFF, blue);
            }};
}

struct BitmapCase {
    const char* name;
    BitmapKind kind;
    std::uint32_t colours;  ///< of its table; 0: it has none
};

std::ostream& operator<<(std::ostream& out, const BitmapCase& one) { return out << one.name; }

struct PictureFormatsOfBitmaps : PictureFormats, ::testing::WithParamInterface<BitmapCase> {};

/// PIC-18: A bitmap of each depth, from either side, of runs, of each header's version and of any order of colours has
///     its pixels
TEST_P(PictureFormatsOfBitmaps, EachPixelHasItsColour) {
    const auto& [name, kind, count] = GetParam();
    if (count > 0) {
        const Dots dots = numbers(count);
        const std::string rows = kind.compression == 0 ? bitmapRows(dots, kind) : packedRows(dots, kind.bits);
        return expectDots(decode(bitmapFile(kWidth, kHeight, kind, colours(count), rows)), coloured(dots));
    }
    Dots dots = coloured(numbers(200));
    dots.values[0] = 0xFFFFFF;
    dots.values[1] = 0;
    const std::string file = bitmapFile(kWidth, kHeight, kind, {}, bitmapRows(dots, kind));
    if (kind.bits == 16) {
        dots = coarse(dots, 5, kind.masks[1] == 0x7E0 ? 6 : 5, 5);
        return expectDots(decode(file), dots, 1);
    }
    expectDots(decode(file), dots);
}

constexpr std::array<std::uint32_t, 4> k555{0x7C00, 0x3E0, 0x1F, 0}, k565{0xF800, 0x7E0, 0x1F, 0};
constexpr std::array<std::uint32_t, 4> kUsual{0xFF0000, 0xFF00, 0xFF, 0}, kTurned{0xFF, 0xFF00, 0xFF0000, 0};
constexpr std::array<std::uint32_t, 4> kSolid{0xFF0000, 0xFF00, 0xFF, 0xFF000000};

INSTANTIATE_TEST_SUITE_P(
    Files, PictureFormatsOfBitmaps,
    ::testing::Values(
        BitmapCase{"Bits1", {.bits = 1}, 2}, BitmapCase{"Bits1TopDown", {.bits = 1, .topDown = true}, 2},
        BitmapCase{"Bits4", {.bits = 4}, 16}, BitmapCase{"Bits4FewColours", {.bits = 4}, 9},
        BitmapCase{"Bits4TopDown", {.bits = 4, .topDown = true}, 16}, BitmapCase{"Bits8", {.bits = 8}, 256},
        BitmapCase{"Bits8FewColours", {.bits = 8}, 200}, BitmapCase{"Bits8TopDown", {.bits = 8, .topDown = true}, 256},
        BitmapCase{"Bits16", {.bits = 16}, 0},
        BitmapCase{"Bits16Masks555", {.bits = 16, .compression = 3, .masks = k555}, 0},
        BitmapCase{"Bits16Masks565", {.bits = 16, .compression = 3, .masks = k565}, 0},
        BitmapCase{"Bits16Masks565TopDown", {.bits = 16, .compression = 3, .masks = k565, .topDown = true}, 0},
        BitmapCase{"Bits24", {.bits = 24}, 0}, BitmapCase{"Bits24TopDown", {.bits = 24, .topDown = true}, 0},
        BitmapCase{"Bits32", {.bits = 32}, 0},
        BitmapCase{"Bits32TopDownUnusedByte", {.bits = 32, .topDown = true, .unusedByte = 77}, 0},
        BitmapCase{"Bits32Masks", {.bits = 32, .compression = 3, .masks = kUsual}, 0},
        BitmapCase{"Bits32MasksTurned", {.bits = 32, .compression = 3, .masks = kTurned}, 0},
        BitmapCase{"Runs8", {.bits = 8, .compression = 1}, 256}, BitmapCase{"Runs4", {.bits = 4, .compression = 2}, 16},
        BitmapCase{"OldHeader1", {.bits = 1, .header = 12}, 2}, BitmapCase{"OldHeader4", {.bits = 4, .header = 12}, 16},
        BitmapCase{"OldHeader8", {.bits = 8, .header = 12}, 256},
        BitmapCase{"OldHeader24", {.bits = 24, .header = 12}, 0},
        BitmapCase{"Version4Bits8", {.bits = 8, .header = 108}, 256},
        BitmapCase{"Version4Bits24", {.bits = 24, .header = 108}, 0},
        BitmapCase{"Version4Masks565", {.bits = 16, .header = 108, .compression = 3, .masks = k565}, 0},
        BitmapCase{"Version4Solid", {.bits = 32, .header = 108, .compression = 3, .masks = kSolid}, 0},
        BitmapCase{"Version5Bits4", {.bits = 4, .header = 124}, 16},
        BitmapCase{"Version5Bits24TopDown", {.bits = 24, .header = 124, .topDown = true}, 0},
        BitmapCase{"Version5MasksTurned", {.bits = 32, .header = 124, .compression = 3, .masks = kTurned}, 0},
        BitmapCase{"Version5Solid", {.bits = 32, .header = 124, .compression = 3, .masks = kSolid}, 0}),
    [](const auto& one) { return std::string(one.param.name); });

TEST_F(PictureFormats, ASingleRowFromTheTopIsRead) {
    const Dots wanted(4, 1, [](int x, int) { return 0x102030U * static_cast<std::uint32_t>(x); });
    const BitmapKind kind{.bits = 24, .topDown = true};
    expectDots(decode(bitmapFile(4, 1, kind, {}, bitmapRows(wanted, kind))), wanted);
}

/// Runs may leave pixels out: those have the first colour.
/// PIC-18
TEST_F(PictureFormats, RunsOfABitmapJumpOverPixels) {
    const std::string rows("\3\1\0\0\0\2\2\1\2\2\0\1",
                           12);  // three of colour 1; the next row; 2 right and 1 up; two of 2
    const Dots wanted(4, 4, [](int x, int y) {
        if (y == 3 && x < 3) return colourOf(1);
        return y == 1 && x >= 2 ? colourOf(2) : colourOf(0);
    });
    expectDots(decode(bitmapFile(4, 4, {.bits = 8, .compression = 1}, colours(256), rows)), wanted);
}

// --- JPEG: six fields, tests/data/pictures/build.py. -----------------------------------------------------------------

constexpr int kField = 16;

Dots fields(const std::vector<std::uint32_t>& colours) {
    return {3 * kField, 2 * kField,
            [&](int x, int y) { return colours[static_cast<std::size_t>(y / kField * 3 + x / kField)]; }};
}

/// Most files keep one colour for four pixels, so that neighbouring fields run into each other.
bool insideOfAField(int x, int y) {
    return x % kField >= 2 && x % kField < kField - 2 && y % kField >= 2 && y % kField < kField - 2;
}

const std::vector<std::uint32_t> kColours{0xFF0000, 0x00A000, 0x0000FF, 0xFFFFFF, 0x000000, 0xC89632};
const std::vector<std::uint32_t> kGreys{0xFFFFFF, 0xC8C8C8, 0x969696, 0x646464, 0x323232, 0x000000};
const std::vector<std::uint32_t> kInk{0x00FFFF, 0xFF00FF, 0xFFFF00, 0x000000, 0xFFFFFF, 0x7DA5CD};

/// PIC-19: A JPEG has its colours, be it stored at once or in several scans, coloured, grey or in ink
TEST_F(PictureFormats, EveryKindOfJpegHasItsColours) {
    constexpr int kSlack = 6;
    const std::pair<const char*, std::vector<std::uint32_t>> files[] = {
        {"baseline", kColours},       {"full_colour", kColours}, {"progressive", kColours},  {"grey", kGreys},
        {"grey_progressive", kGreys}, {"ink_inverted", kInk},    {"ink_as_brightness", kInk}};
    for (const auto& [name, wanted] : files) {
        SCOPED_TRACE(name);
        const auto decoded = pictures.decode(CORVANE_SOURCE_DIR "/tests/data/pictures/"s + name + ".jpg");
        EXPECT_EQ(decoded.reason, "");
        expectDots(decoded.picture, fields(wanted), kSlack, insideOfAField);
    }
}

/// A camera's note of how the picture is to be turned, in either order of bytes.
std::string note(char orientation, bool bigFirst) {
    const std::string entry = bigFirst
                                  ? "MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0"s + orientation + "\0\0\0\0\0\0"s
                                  : "II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0"s + orientation + "\0\0\0\0\0\0\0"s;
    return "\xFF\xE1\0"s + static_cast<char>(entry.size() + 8) + "Exif\0\0"s + entry;
}

/// The pixel of the stored picture that stands at a place of the upright one.
QPoint storedPlace(int orientation, int x, int y) {
    constexpr int kRight = 3 * kField - 1, kBottom = 2 * kField - 1;  // of the upright one
    switch (orientation) {
        case 2:
            return {kRight - x, y};
        case 3:
            return {kRight - x, kBottom - y};
        case 4:
            return {x, kBottom - y};
        case 5:
            return {y, x};
        case 6:
            return {y, kRight - x};  // stored lying on its left side: its first row is the right edge
        case 7:
            return {kBottom - y, kRight - x};
        case 8:
            return {kBottom - y, x};
        default:
            return {x, y};
    }
}

/// PIC-20: A JPEG stands upright whichever of the eight ways its camera was held
TEST_F(PictureFormats, AJpegStandsUprightWhateverWayTheCameraWasHeld) {
    const Dots upright = fields(kColours);
    for (int orientation = 1; orientation <= 8; ++orientation) {
        QImage stored(orientation < 5 ? 3 * kField : 2 * kField, orientation < 5 ? 2 * kField : 3 * kField,
                      QImage::Format_RGB32);
        for (int y = 0; y < upright.height; ++y) {
            for (int x = 0; x < upright.width; ++x)
                stored.setPixel(storedPlace(orientation, x, y), 0xFF000000U | upright.at(x, y));
        }
        stored.save(QString::fromStdString(folder.in("plain.jpg")), "JPG", 100);
        for (const bool bigFirst : {true, false}) {
            SCOPED_TRACE(orientation);
            const std::string bytes =
                folder.bytes("plain.jpg").insert(2, note(static_cast<char>(orientation), bigFirst));
            expectDots(decode(bytes), upright, 6, insideOfAField);
        }
    }
}

// --- GIF
// --------------------------------------------------------------------------------------------------------------

Dots gifNumbers(int width, int height) {
    return {width, height, [](int x, int y) { return static_cast<std::uint32_t>(x * 7 + y * 11) % 128; }};
}

/// PIC-21: An interlaced GIF has its rows in order, an animated one shows its first picture, a transparent one the
///     black behind it
TEST_F(PictureFormats, AGifHasItsColoursAlsoWithItsRowsInterlaced) {
    for (const int height : {1, 2, 5, 8, 9, 17, 33}) {
        for (const bool interlaced : {false, true}) {
            SCOPED_TRACE(std::to_string(height) + (interlaced ? " interlaced" : ""));
            const Dots dots = gifNumbers(21, height);
            GifPart part{dots};
            part.interlaced = interlaced;
            expectDots(decode(gifFile(21, height, colours(128), {part})), coloured(dots));
        }
    }
}

/// PIC-21
TEST_F(PictureFormats, AnAnimatedGifShowsItsFirstPicture) {
    const Dots first = gifNumbers(12, 9);
    const Dots second(12, 9, [](int /*x*/, int /*y*/) { return 5U; });
    GifPart own{second};
    own.colours = std::vector<std::uint32_t>(128, 0xFF00FF);
    expectDots(decode(gifFile(12, 9, colours(128), {GifPart{first}, GifPart{second}, own})), coloured(first));
    GifPart small{Dots(4, 3, [](int x, int /*y*/) { return static_cast<std::uint32_t>(x); })};
    small.left = 6;
    small.top = 2;
    own.dots = small.dots;
    // What the first picture leaves free has the background colour that the file names.
    const Dots wanted(12, 9, [&](int x, int y) {
        return x >= 6 && x < 10 && y >= 2 && y < 5 ? colourOf(static_cast<std::uint32_t>(x - 6))
                                                   : colourOf(test::kGifBackground);
    });
    expectDots(decode(gifFile(12, 9, colours(128), {small, GifPart{second}})), wanted);
}

/// PIC-21
TEST_F(PictureFormats, TheHolesOfATransparentGifShowTheBlackBehindIt) {
    const Dots dots = gifNumbers(20, 7);
    GifPart part{dots};
    part.transparent = 18;
    const Picture picture = decode(gifFile(20, 7, colours(128), {part}));
    int holes = 0;
    const Dots wanted(20, 7, [&](int x, int y) {
        if (dots.at(x, y) != 18) return colourOf(dots.at(x, y));
        ++holes;
        return 0U;
    });
    EXPECT_GE(holes, 2);
    expectDots(picture, wanted);
}

}  // namespace
}  // namespace corvane
