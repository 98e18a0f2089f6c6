// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/gif_frames.h"

#include <gtest/gtest.h>

#include "pictures/gif_reader.h"
#include "pictures/webp_head.h"
#include "unit/linux/picture_bytes.h"
#include "unit/pictures/picture_bytes.h"

namespace corvane {
namespace {

using namespace std::string_literals;
using test::Dots;
using test::gifFile;
using test::GifPart;
using test::little;

bool never() { return false; }

constexpr std::uint32_t kGround = 0xFF000000U | test::kGifBackground;

/// Colour n is n.
std::vector<std::uint32_t> numbers() {
    std::vector<std::uint32_t> colours(128);
    for (std::uint32_t i = 0; i < 128; ++i) colours[i] = i;
    return colours;
}
std::uint32_t opaque(std::uint32_t number) { return 0xFF000000U | number; }

/// One colour all over.
GifPart plain(int left, int width, std::uint32_t colour, int leaving = 0) {
    GifPart part{Dots(width, 1, [colour](int, int) { return colour; })};
    part.left = left;
    part.leaving = leaving;
    return part;
}

using Row = std::vector<std::uint32_t>;

class Frames {
public:
    explicit Frames(const std::string& bytes) : reader_(gifFrames(bytes)) {}
    std::optional<FramePixels> next() { return reader_->next(never); }
    /// What the next one looks like; empty: there is none.
    Row row() {
        const auto frame = next();
        return frame ? frame->pixels.pixels : Row();
    }

private:
    std::unique_ptr<FrameReader> reader_;
};

/// ANIM-01: A picture of a GIF file stays under the next one, is cleared or gives back what it covered, as it says
TEST(GifFrames, EachLeavesAsItSays) {
    Frames frames(gifFile(3, 1, numbers(),
                          {plain(0, 3, 1), plain(0, 1, 2), plain(1, 1, 4, 2), plain(2, 1, 5, 3), plain(0, 1, 6)}));
    EXPECT_EQ(frames.row(), (Row{opaque(1), opaque(1), opaque(1)}));
    EXPECT_EQ(frames.row(), (Row{opaque(2), opaque(1), opaque(1)}));
    EXPECT_EQ(frames.row(), (Row{opaque(2), opaque(4), opaque(1)}));
    EXPECT_EQ(frames.row(), (Row{opaque(2), kGround, opaque(5)})) << "the one before was cleared";
    EXPECT_EQ(frames.row(), (Row{opaque(6), kGround, opaque(1)})) << "the one before gave back what was there";
    EXPECT_EQ(frames.row(), (Row{opaque(1), opaque(1), opaque(1)})) << "for ever, from an empty screen on";
}

/// ANIM-02: Through the holes of a picture those before it are seen, and where none is, what the first one leaves
TEST(GifFrames, ThroughHolesTheOnesBeforeAreSeen) {
    for (const int leaving : {0, 1, 2, 3}) {
        GifPart first = plain(1, 1, 1, leaving);
        first.transparent = 9;
        GifPart second{Dots(3, 1, [](int x, int) { return x == 2 ? 5U : 9U; })};
        second.transparent = 9;
        Frames frames(gifFile(3, 1, numbers(), {first, second}));
        EXPECT_EQ(frames.row(), (Row{0, opaque(1), 0})) << leaving;
        EXPECT_EQ(frames.row(), (Row{0, leaving < 2 ? opaque(1) : 0, opaque(5)})) << leaving;
    }
}

/// ANIM-02
TEST(GifFrames, TheFirstLooksAsTheStillPicture) {
    GifPart hole = plain(1, 2, 7);
    hole.transparent = 9;
    for (const GifPart& first : {plain(1, 1, 1), hole}) {
        const std::string bytes = gifFile(4, 1, numbers(), {first, plain(0, 1, 2)});
        test::Bytes file(bytes);
        EXPECT_EQ(Frames(bytes).row(), readGif(file, {0, never}).pixels);
    }
}

/// ANIM-03: A frame is seen for as long as it says; one that says nothing, or a hundredth, for a tenth of a second
TEST(GifFrames, TheirTimes) {
    std::vector<GifPart> parts(5, plain(0, 1, 1));
    parts[0].hundredths = 0, parts[1].hundredths = 1, parts[2].hundredths = 2, parts[3].hundredths = 7;
    parts[4].hundredths = 65535;
    Frames frames(gifFile(1, 1, numbers(), parts));
    for (const int expected : {100, 100, 20, 70, 655350}) EXPECT_EQ(frames.next()->milliseconds, expected);
}

/// ANIM-04: A file is shown once and as often again as it says, 0: for ever; then its last frame stays
TEST(GifFrames, ComeAsOftenAsTheFileSays) {
    const auto count = [](int repeats) {
        Frames frames(gifFile(1, 1, numbers(), {plain(0, 1, 1), plain(0, 1, 2)}, repeats));
        int seen = 0;
        for (auto frame = frames.next(); frame && seen < 1000; frame = frames.next()) {
            ++seen;
            if (frame->isLast) {
                EXPECT_FALSE(frames.next());
            }
        }
        return seen;
    };
    EXPECT_EQ(count(-1), 2) << "without a word of it";
    EXPECT_EQ(count(1), 4);
    EXPECT_EQ(count(3), 8);
    EXPECT_EQ(count(0), 1000);
}

/// ANIM-05: A file with one picture, a screen or a picture of too many pixels has no frames: nothing moves
TEST(GifFrames, AStillOrTooLargeOneHasNone) {
    EXPECT_FALSE(Frames(gifFile(2, 1, numbers(), {plain(0, 2, 1)})).next());
    EXPECT_FALSE(Frames("GIF89a").next());
    EXPECT_FALSE(Frames("").next());
    const std::vector<GifPart> two{plain(0, 1, 1), plain(0, 1, 2)};
    EXPECT_FALSE(Frames(gifFile(2001, 2000, numbers(), two)).next());
    EXPECT_TRUE(Frames(gifFile(2000, 2000, numbers(), two)).next());
    const std::string wide = ","s + little(0, 4) + little(65535, 2) + little(65535, 2) + "\0\7\2\x80\1\0;"s;
    std::string bytes = gifFile(2, 1, numbers(), {plain(0, 2, 1)});
    bytes.pop_back();
    Frames frames(bytes + wide);
    EXPECT_FALSE(frames.next()->isLast);
    EXPECT_FALSE(frames.next());
}

/// ANIM-06: Frames outside of the screen or without an area, and data that ends or makes no sense, hurt nothing
TEST(GifFrames, OddOnesHurtNothing) {
    GifPart tall{Dots(1, 5, [](int, int y) { return static_cast<std::uint32_t>(y + 1); })};
    tall.interlaced = true;
    tall.leaving = 3;
    GifPart outside = plain(65535, 1, 5, 2);
    outside.top = 65535;
    GifPart empty{Dots(0, 0, [](int, int) { return 0U; })};
    Frames frames(gifFile(2, 1, numbers(), {plain(1, 5, 1, 2), outside, empty, tall, plain(0, 1, 6, 3)}));
    EXPECT_EQ(frames.row(), (Row{kGround, opaque(1)}));
    EXPECT_EQ(frames.row(), (Row{kGround, kGround}));
    EXPECT_EQ(frames.row(), (Row{kGround, kGround}));
    EXPECT_EQ(frames.row(), (Row{opaque(1), kGround}));
    EXPECT_EQ(frames.row(), (Row{opaque(6), kGround}));

    const std::string bytes = gifFile(3, 1, numbers(), {plain(0, 3, 1, 2), plain(1, 2, 2, 3), plain(0, 3, 4)});
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        for (const char odd : {'\0', '\x2C', '\xFF'}) {
            std::string broken = bytes.substr(0, length) + odd + bytes.substr(length + 1);
            Frames whole(broken), cut(bytes.substr(0, length));
            for (int i = 0; i < 8; ++i) {
                for (Frames* each : {&whole, &cut}) {
                    if (const auto frame = each->next()) {
                        EXPECT_EQ(static_cast<std::int64_t>(frame->pixels.pixels.size()), frame->pixels.full.pixels());
                    }
                }
            }
        }
    }
}

/// ANIM-06
TEST(GifFrames, TenThousandAreReadOneByOne) {
    std::vector<GifPart> parts(10'000, plain(0, 1, 1));
    parts.back() = plain(0, 1, 2);
    Frames frames(gifFile(1, 1, numbers(), parts, -1));
    for (int i = 1; i < 10'000; ++i) ASSERT_EQ(frames.row(), (Row{opaque(1)})) << i;
    const auto last = frames.next();
    EXPECT_TRUE(last->isLast);
    EXPECT_EQ(last->pixels.pixels, (Row{opaque(2)}));
}

TEST(GifFrames, GivenUpThereIsNone) {
    const auto reader = gifFrames(gifFile(1, 1, numbers(), {plain(0, 1, 1), plain(0, 1, 2)}));
    EXPECT_FALSE(reader->next([] { return true; }));
}

/// ANIM-07: A WEBP file says whether it moves, and how often, in chunks in front of its pictures
TEST(WebpHead, IsReadByItsChunks) {
    const auto file = [](int flags, const std::string& chunks) {
        return "RIFF\0\0\0\0WEBPVP8X"s + little(10, 4) + static_cast<char>(flags) + "\0\0\0"s + little(3, 3) +
               little(1, 3) + chunks;
    };
    const std::string loop = "ANIM"s + little(6, 4) + little(0, 4) + little(5, 2);
    EXPECT_FALSE(webpHeadOf(""));
    EXPECT_FALSE(webpHeadOf("RIFF\0\0\0\0WEBPVP8 "s));
    EXPECT_FALSE(webpHeadOf(file(2, "").substr(0, 29)));
    EXPECT_FALSE(webpHeadOf(file(0, loop))->moves);
    const auto head = webpHeadOf(file(2, "ICCP"s + little(1, 4) + "x\0"s + loop));
    EXPECT_TRUE(head->moves);
    EXPECT_EQ(head->times, 5);
    EXPECT_EQ(head->size, (PictureSize{4, 2}));
    EXPECT_EQ(webpHeadOf(file(2, "ANMF"s + little(0, 4) + loop))->times, 1)
        << "behind the first picture it is too late";
    EXPECT_EQ(webpHeadOf(file(2, "JUNK"s + little(0xFFFFFFFF, 4) + loop))->times, 1);
    for (std::size_t length = 0; length < loop.size(); ++length) webpHeadOf(file(2, loop.substr(0, length)));
}

}  // namespace
}  // namespace corvane
