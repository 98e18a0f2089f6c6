// SPDX-License-Identifier: GPL-3.0-or-later
// Bitmaps and GIFs by their bytes: every kind whole, every kind hostile.
#include <gtest/gtest.h>

#include "pictures/bmp_reader.h"
#include "pictures/gif_reader.h"
#include "pictures/picture_file.h"
#include "pictures/upright_rows.h"
#include "unit/linux/picture_bytes.h"
#include "unit/pictures/picture_bytes.h"

namespace corvane {
namespace {

using namespace std::string_literals;
using test::bitmapFile;
using test::bitmapRows;
using test::Bytes;
using test::Dots;
using test::gifFile;
using test::GifPart;
using test::little;

bool never() { return false; }

PicturePixels none(PictureBytes& /*file*/, const DecodingBounds& /*bounds*/) { return PicturePixels::damaged(); }

PicturePixels read(const std::string& bytes, std::int64_t held = 0) {
    Bytes file(bytes);
    return readPicture(file, {held, never}, none, none);
}

std::uint32_t at(const PicturePixels& picture, int x, int y) {
    return picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.held.width) +
                          static_cast<std::size_t>(x)] &
           0xFFFFFFU;
}

std::vector<std::uint32_t> greys(std::uint32_t count) {
    std::vector<std::uint32_t> table;
    for (std::uint32_t i = 0; i < count; ++i) table.push_back(0x10101U * (i * 255 / (count - 1)));
    return table;
}

/// A file that is all hole behind its header, as sparse files are.
class Sparse : public PictureBytes {
public:
    Sparse(std::string header, std::int64_t size) : header_(std::move(header)), size_(size) {}
    std::int64_t size() override { return size_; }
    std::string part(std::int64_t from, std::int64_t count) override {
        count = std::min(count, size_ - from);
        asked += std::max<std::int64_t>(count, 0);
        if (count <= 0) return {};
        std::string bytes(static_cast<std::size_t>(count), '\0');
        if (from < static_cast<std::int64_t>(header_.size())) {
            const std::string start = header_.substr(static_cast<std::size_t>(from), bytes.size());
            bytes.replace(0, start.size(), start);
        }
        return bytes;
    }
    std::int64_t asked = 0;  ///< bytes

private:
    std::string header_;
    std::int64_t size_;
};

// --- Reduction -------------------------------------------------------------------------------------------------------

TEST(ReducedRows, AveragesNeighboursInEitherOrderOfRows) {
    const Dots dots(6, 4, [](int x, int y) { return static_cast<std::uint32_t>((x + 6 * y) * 8) * 0x10101U; });
    for (const bool fromTop : {true, false}) {
        ReducedRows rows({6, 4}, {3, 2});
        for (int i = 0; i < 4; ++i) {
            const int y = fromTop ? i : 3 - i;
            std::vector<std::uint32_t> row;
            for (int x = 0; x < 6; ++x) row.push_back(0xFF000000U | dots.at(x, y));
            rows.put(y, row.data());
        }
        const PicturePixels picture = rows.take();
        ASSERT_EQ(picture.pixels.size(), 6U);
        EXPECT_EQ(picture.full, (PictureSize{6, 4}));
        EXPECT_FALSE(picture.seeThrough);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < 3; ++x) {
                const int wanted = (2 * x + 12 * y) * 8 + (0 + 8 + 48 + 56) / 4;
                EXPECT_EQ(at(picture, x, y), static_cast<std::uint32_t>(wanted) * 0x10101U) << x << " " << y;
            }
        }
    }
}

TEST(ReducedRows, KeepsWhatIsNotReducedAndTellsHoles) {
    ReducedRows rows({2, 1}, {2, 1});
    const std::uint32_t row[] = {0xFF010203U, 0x00000000U};
    rows.put(0, row);
    const PicturePixels picture = rows.take();
    EXPECT_EQ(picture.pixels, (std::vector<std::uint32_t>{0xFF010203U, 0}));
    EXPECT_TRUE(picture.seeThrough);
}

TEST(UprightRows, StandsEachOfTheEightWays) {
    // Stored as 3 by 2: abc, def.
    const std::uint32_t rows[2][3] = {{'a', 'b', 'c'}, {'d', 'e', 'f'}};
    const char* const upright[] = {"abcdef", "cbafed", "fedcba", "defabc", "adbecf", "daebfc", "fcebda", "cfbead"};
    for (int orientation = 1; orientation <= 8; ++orientation) {
        UprightRows turned({30, 20}, {3, 2}, orientation);
        for (int y = 0; y < 2; ++y) turned.put(y, rows[y]);
        const PicturePixels picture = turned.take();
        std::string seen;
        for (const std::uint32_t pixel : picture.pixels) seen += static_cast<char>(pixel);
        EXPECT_EQ(seen, upright[orientation - 1]) << orientation;
        EXPECT_EQ(picture.held, orientation < 5 ? (PictureSize{3, 2}) : (PictureSize{2, 3}));
        EXPECT_EQ(picture.full, orientation < 5 ? (PictureSize{30, 20}) : (PictureSize{20, 30}));
    }
}

// --- Bitmaps ---------------------------------------------------------------------------------------------------------

/// PIC-22
TEST(BmpReader, HoldsALargeOneReduced) {
    // 24 million pixels of 1 bit: black on the left, white on the right.
    const std::string colours = "\0\0\0\0\xFF\xFF\xFF\0"s;
    const std::string header = "BM"s + little(0, 8) + little(62, 4) + little(40, 4) + little(6000, 4) +
                               little(4000, 4) + little(1, 2) + little(1, 2) + std::string(24, '\0') + colours;
    const std::string row = std::string(375, '\0') + std::string(377, '\xFF');
    std::string bytes = header;
    for (int y = 0; y < 4000; ++y) bytes += row;
    const PicturePixels picture = read(bytes);
    ASSERT_EQ(picture.reason, "");
    EXPECT_EQ(picture.full, (PictureSize{6000, 4000}));
    EXPECT_LE(picture.held.pixels(), kMaxHeldPixels);
    EXPECT_GT(picture.held.pixels(), kMaxHeldPixels * 9 / 10);
    EXPECT_EQ(at(picture, 100, 100), 0U);
    EXPECT_EQ(at(picture, picture.held.width - 100, picture.held.height - 1), 0xFFFFFFU);
}

/// PIC-28
TEST(BmpReader, RefusesSidesThatCannotBe) {
    constexpr std::int64_t kLargest = 0x7FFFFFFF, kSmallest = -kLargest - 1;
    const std::int64_t sides[] = {0, -1, kLargest, kSmallest, kSmallest + 1, 1'000'001, -1'000'001};
    for (const std::int64_t width : sides) {
        for (const std::int64_t height : sides) {
            for (const int compression : {0, 1, 2, 3}) {
                const int bits = compression == 1 ? 8 : compression == 2 ? 4 : 32;
                const std::string header = "BM"s + little(0, 8) + little(2000, 4) + little(40, 4) + little(width, 4) +
                                           little(height, 4) + little(1, 2) + little(bits, 2) + little(compression, 4);
                Sparse file(header, 1 << 20);
                const auto picture = readPicture(file, {0, never}, none, none);
                EXPECT_TRUE(picture.pixels.empty()) << width << " x " << height;
                EXPECT_NE(picture.reason, "");
            }
        }
    }
}

/// PIC-22
TEST(BmpReader, ReadsNothingOfOneThatIsTooLarge) {
    const std::string header = "BM"s + little(0, 8) + little(54, 4) + little(40, 4) + little(8000, 4) +
                               little(8000, 4) + little(1, 2) + little(24, 2) + std::string(24, '\0');
    Sparse file(header, 54 + 3 * 8000 * 8000);
    EXPECT_NE(readPicture(file, {0, never}, none, none).reason.find("too large (8000 x 8000"), std::string::npos);
    EXPECT_LT(file.asked, 1'000'000);
}

/// PIC-28
TEST(BmpReader, RunsThatLeaveThePictureHarmNothing) {
    const std::vector<std::string> attacks = {
        "\xFF\1\xFF\2\xFF\3\0\1"s,                    // longer than their row
        "\0\2\xFF\xFF\xFF\1\0\1"s,                    // a jump far outside
        "\0\xFF"s + std::string(256, 'a') + "\0\1"s,  // more numbers than the row has
        "\0\0\0\0\0\0\0\0\0\0\0\0\xFF\1\0\1"s,        // more rows than there are
    };
    for (const std::string& rows : attacks) {
        const auto picture = read(bitmapFile(4, 4, {.bits = 8, .compression = 1}, greys(256), rows));
        EXPECT_EQ(picture.reason, "");
        EXPECT_EQ(picture.pixels.size(), 16U);
    }
}

/// PIC-28
TEST(BmpReader, RunsAndColoursOneByOneFillEachRow) {
    const auto shown = [](int bits, int compression, const std::string& rows) {
        const auto picture =
            read(bitmapFile(3, 2, {.bits = bits, .compression = compression}, greys(1U << bits), rows));
        std::vector<std::uint32_t> pixels;
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < 3; ++x) pixels.push_back(at(picture, x, y));
        }
        return pixels;
    };
    const auto grey = [](const std::vector<std::uint32_t>& shades, std::size_t i) { return shades[i] & 0xFFFFFFU; };
    for (const int bits : {8, 4}) {
        const auto shades = greys(1U << bits);
        // The lower row first: three alike; then one by one, filled up to two bytes.
        const std::string single = bits == 8 ? "\0\3\1\2\3\0"s : "\0\3\x12\x30"s;
        const std::string alike = bits == 8 ? "\3\5"s : "\3\x55"s;
        const auto pixels = shown(bits, bits == 8 ? 1 : 2, alike + "\0\0"s + single + "\0\1"s);
        const std::vector<std::uint32_t> wanted = {grey(shades, 1), grey(shades, 2), grey(shades, 3),
                                                   grey(shades, 5), grey(shades, 5), grey(shades, 5)};
        EXPECT_EQ(pixels, wanted) << bits;
    }
}

/// A header, then the same bytes again and again.
class Endless : public PictureBytes {
public:
    Endless(std::string header, std::string again) : header_(std::move(header)), again_(std::move(again)) {
        while (many_.size() < 300'000) many_ += again_;
    }
    std::int64_t size() override { return kMaxPictureBytes; }
    std::string part(std::int64_t from, std::int64_t count) override {
        const auto start = static_cast<std::size_t>(from);
        const auto wanted = static_cast<std::size_t>(std::clamp<std::int64_t>(size() - from, 0, count));
        std::string bytes = start < header_.size() ? header_.substr(start, wanted) : std::string();
        while (bytes.size() < wanted)
            bytes += many_.substr((start + bytes.size() - header_.size()) % again_.size(), wanted - bytes.size());
        return bytes;
    }

private:
    std::string header_, again_, many_;
};

/// PIC-28
TEST(BmpReader, JumpsWithoutAnEndAreDamaged) {
    Endless file(bitmapFile(4, 4, {.bits = 8, .compression = 1}, greys(256), ""), "\0\2\xFF\0"s);
    EXPECT_EQ(readPicture(file, {0, never}, none, none).reason, "The picture is damaged.");
}

TEST(BmpReader, NamesAColourThatItsTableDoesNotHave) {
    const auto picture = read(bitmapFile(2, 1, {.bits = 8}, greys(2), "\1\xC8\0\0"s));
    EXPECT_EQ(picture.reason, "");
    EXPECT_EQ(at(picture, 0, 0), 0xFFFFFFU);
    EXPECT_EQ(at(picture, 1, 0), 0U);
}

TEST(BmpReader, KindsThatAreNotReadAreDamaged) {
    for (const auto& [bits, compression] : {std::pair{2, 0}, {8, 2}, {4, 1}, {24, 3}, {24, 4}, {24, 5}, {0, 0}}) {
        const std::string header = "BM"s + little(0, 8) + little(2000, 4) + little(40, 4) + little(4, 4) +
                                   little(4, 4) + little(1, 2) + little(bits, 2) + little(compression, 4);
        Sparse file(header, 100'000);
        EXPECT_EQ(readPicture(file, {0, never}, none, none).reason, "The picture is damaged.") << bits;
    }
}

// --- GIF -------------------------------------------------------------------------------------------------------------

/// PIC-21
TEST(GifReader, InterlacedRowsStandInOrderWhateverTheirNumber) {
    for (int height = 1; height <= 40; ++height) {
        const Dots dots(5, height, [](int x, int y) { return static_cast<std::uint32_t>(x + 3 * y) % 128; });
        GifPart part{dots};
        part.interlaced = true;
        const auto picture = read(gifFile(5, height, greys(128), {part}));
        ASSERT_EQ(picture.reason, "") << height;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < 5; ++x) ASSERT_EQ(at(picture, x, y), greys(128)[dots.at(x, y)]) << height << ": " << y;
        }
    }
}

std::string gifHeader(int width, int height) {
    return "GIF89a" + little(width, 2) + little(height, 2) + "\x80\0\0"s + "\0\0\0\xFF\xFF\xFF"s;
}

/// PIC-28
TEST(GifReader, AHugeScreenWithADotIsTooLarge) {
    const std::string dot = ","s + little(0, 4) + little(1, 2) + little(1, 2) + "\0\2\2\x44\1\0;"s;
    EXPECT_NE(read(gifHeader(65535, 65535) + dot).reason.find("too large (65535 x 65535"), std::string::npos);
    const std::string wide = ","s + little(0, 4) + little(65535, 2) + little(65535, 2) + "\0\2\2\x44\1\0;"s;
    EXPECT_NE(read(gifHeader(1, 1) + wide).reason.find("too large"), std::string::npos);
    EXPECT_EQ(read(gifHeader(1, 1) + dot).reason, "");
}

/// PIC-28
TEST(GifReader, FortyMegapixelsAreTheMostOfAScreenAndOfAPicture) {
    const std::string code = "\0\2\2\x4C\1\0;"s;
    const auto part = [&code](int width, int height) {
        return ","s + little(0, 4) + little(width, 2) + little(height, 2) + code;
    };
    for (const std::string& file : {gifHeader(8000, 5000) + part(1, 1), gifHeader(0, 0) + part(8000, 5000)}) {
        const PicturePixels picture = read(file);
        ASSERT_EQ(picture.reason, "");
        EXPECT_EQ(picture.full, (PictureSize{8000, 5000}));
        EXPECT_LE(picture.held.pixels(), kMaxHeldPixels);
    }
    EXPECT_NE(read(gifHeader(8000, 5001) + part(1, 1)).reason.find("too large"), std::string::npos);
    EXPECT_NE(read(gifHeader(1, 1) + part(8000, 5001)).reason.find("too large"), std::string::npos);
}

/// PIC-28
TEST(GifReader, OfAHundredThousandPicturesTheFirstIsRead) {
    std::string bytes = gifHeader(2, 1) + ","s + little(0, 4) + little(2, 2) + little(1, 2) + "\0\2\2\x4C\1\0"s;
    for (int i = 0; i < 100'000; ++i) {
        bytes += "!\xF9\4\0\0\0\0\0"s + ","s + little(0, 4) + little(1, 2) + little(1, 2) + "\0\2\2\x44\1\0"s;
    }
    const auto picture = read(bytes + ";");
    EXPECT_EQ(picture.reason, "");
    EXPECT_EQ(picture.held, (PictureSize{2, 1}));
}

TEST(GifReader, AScreenWithoutASizeHasItsPictures) {
    const std::string dot = ","s + little(0, 4) + little(1, 2) + little(1, 2) + "\0\2\2\x44\1\0;"s;
    const auto picture = read(gifHeader(0, 0) + dot);
    EXPECT_EQ(picture.reason, "");
    EXPECT_EQ(picture.full, (PictureSize{1, 1}));
}

/// Codes in groups of bits, the lowest first, as one block.
std::string packed(const std::vector<int>& codes, int bits) {
    std::string bytes;
    unsigned held = 0;
    int had = 0;
    for (const int code : codes) {
        held |= static_cast<unsigned>(code) << had;
        for (had += bits; had >= 8; had -= 8, held >>= 8U) bytes += static_cast<char>(held & 0xFFU);
    }
    if (had > 0) bytes += static_cast<char>(held & 0xFFU);
    return std::string(1, static_cast<char>(bytes.size())) + bytes + '\0';
}

/// PIC-28
TEST(GifReader, CodesThatCannotBeLeaveTheRestAsItsBackground) {
    const std::string start = gifHeader(4, 1) + ","s + little(0, 4) + little(4, 2) + little(1, 2) + "\0\2"s;
    const std::vector<std::vector<int>> attacks = {{4, 1, 7}, {7}, {6}, {4, 6}, {4, 4, 4, 5}, {5}, {4, 1, 5}, {}};
    for (const auto& codes : attacks) {
        const auto picture = read(start + packed(codes, 3) + ";");
        EXPECT_EQ(picture.reason, "");
        ASSERT_EQ(picture.pixels.size(), 4U);
        EXPECT_EQ(at(picture, 3, 0), 0U);
    }
    for (const char bits : {'\0', '\x09', '\xFF'}) {
        std::string bytes = start;
        bytes.back() = bits;
        EXPECT_EQ(read(bytes + packed({4, 1}, 3) + ";").reason, "") << int{bits};
    }
    std::string wide = start;
    wide.back() = '\x09';
    EXPECT_EQ(at(read(wide + packed({512, 1, 1, 1, 1}, 10) + ";"), 0, 0), 0U) << "no colour has nine bits";
}

/// PIC-28
TEST(GifReader, MoreCodesThanItsTableHoldsAreRead) {
    constexpr int kDots = 6000, kDot = 1, kFirstLearned = 6, kMostBits = 12;
    std::string bits;
    int learned = kFirstLearned, width = 3;
    for (int code = 0; code < kDots; ++code) {
        for (int bit = 0; bit < width; ++bit) bits += static_cast<char>(kDot >> bit & 1);
        if (code > 0 && ++learned == 1 << width && width < kMostBits) ++width;
    }
    std::string packedBits((bits.size() + 7) / 8, '\0');
    for (std::size_t i = 0; i < bits.size(); ++i) packedBits[i / 8] |= static_cast<char>(bits[i] << (i % 8));
    std::string file = gifHeader(kDots, 1) + ","s + little(0, 4) + little(kDots, 2) + little(1, 2) + "\0\2"s;
    for (std::size_t from = 0; from < packedBits.size(); from += 255) {
        const std::string block = packedBits.substr(from, 255);
        file += static_cast<char>(block.size()) + block;
    }
    const auto picture = read(file + '\0' + ";");
    ASSERT_EQ(picture.reason, "");
    EXPECT_EQ(at(picture, kDots - 1, 0), at(picture, 0, 0));
    EXPECT_NE(picture.pixels.back(), 0U);
}

TEST(GifReader, APictureThatHangsOverItsScreenIsCut) {
    GifPart part{Dots(6, 6, [](int x, int y) { return static_cast<std::uint32_t>(x + y); })};
    part.left = 3;
    part.top = 2;
    const auto picture = read(gifFile(5, 4, greys(128), {part}));
    EXPECT_EQ(picture.reason, "");
    EXPECT_EQ(picture.full, (PictureSize{5, 4}));
    EXPECT_EQ(at(picture, 4, 3), greys(128)[2]);
}

// --- Any file --------------------------------------------------------------------------------------------------------

/// PIC-28
TEST(PictureFile, NoFileIsReadWithoutAnEnd) {
    constexpr std::int64_t kSize = std::int64_t{20} << 30;
    for (const std::string& start : {"\xFF\xD8\xFF\xE0\0\x10"s, "GIF89a"s, "\x89PNG\r\n\x1A\n"s, "BM"s}) {
        Sparse file(start, kSize);
        EXPECT_NE(readPicture(file, {0, never}, none, none).reason.find("too large"), std::string::npos);
        EXPECT_LT(file.asked, 1'000'000);
    }
    Sparse file("plain text", kSize);
    EXPECT_EQ(readPicture(file, {0, never}, none, none).reason, "This is not a picture of a known format.");
}

TEST(PictureFile, LackOfMemoryIsAReason) {
    const auto hungry = [](PictureBytes&, const DecodingBounds&) -> PicturePixels { throw std::bad_alloc(); };
    Bytes file("\xFF\xD8\xFF\xD9"s);
    EXPECT_NE(readPicture(file, {0, never}, hungry, none).reason.find("memory"), std::string::npos);
}

/// PIC-28
TEST(PictureFile, ReadersEndSoonAfterTheyAreGivenUp) {
    const Dots dots(1200, 1200, [](int x, int y) { return static_cast<std::uint32_t>(x ^ y) % 128; });
    const std::string files[] = {
        bitmapFile(1200, 1200, {.bits = 8}, greys(256), bitmapRows(dots, {.bits = 8})),
        bitmapFile(1200, 1200, {.bits = 8, .compression = 1}, greys(256), test::packedRows(dots, 8)),
        gifFile(1200, 1200, greys(128), {GifPart{dots}})};
    for (const std::string& bytes : files) {
        Bytes file(bytes);
        int asked = 0;
        const auto atTheThird = [&asked] { return ++asked >= 3; };
        const auto picture = readPicture(file, {0, atTheThird}, none, none);
        EXPECT_TRUE(picture.pixels.empty());
        EXPECT_LE(asked, 8);
    }
}

}  // namespace
}  // namespace corvane
