// SPDX-License-Identifier: GPL-3.0-or-later
// JPEG and PNG files made to take all time or all memory, and the largest that are honest.
#include <QBuffer>
#include <QImageWriter>

#include "media/pictures/jpeg_reader.h"
#include "media/pictures/png_reader.h"
#include "pictures/picture_file.h"
#include "unit/linux/memory_peak.h"
#include "unit/linux/pictures_rig.h"
#include "unit/linux/stopwatch.h"
#include "unit/pictures/picture_bytes.h"

namespace corvane {
namespace {

using namespace std::string_literals;

bool never() { return false; }

PicturePixels read(const std::string& bytes, const std::function<bool()>& givenUp = never, std::int64_t held = 0) {
    test::Bytes file(bytes);
    return readPicture(file, {held, givenUp}, readJpeg, readPng);
}

std::string saved(const QImage& image, const char* format, bool progressive = false) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(progressive);
    EXPECT_TRUE(writer.write(image));
    return bytes.toStdString();
}

QImage plain(int width, int height, QImage::Format format = QImage::Format_Grayscale8) {
    test::offscreenApplication();
    QImage image(width, height, format);
    image.fill(Qt::gray);
    return image;
}

// --- JPEG ------------------------------------------------------------------------------------------------------------

std::string big(std::uint32_t value, int bytes) {
    std::string text;
    for (int i = bytes; i-- > 0;) text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
}

/// Its last layer comes so many times more.
std::string layered(int width, int height, int times) {
    const std::string whole = saved(plain(width, height), "JPG", true);
    const std::size_t last = whole.rfind("\xFF\xDA"s);
    const std::string layer = whole.substr(last, whole.size() - last - 2);
    std::string bytes = whole.substr(0, whole.size() - 2);
    for (int i = 0; i < times; ++i) bytes += layer;
    return bytes + "\xFF\xD9";
}

/// A grey file of any size: each block takes the same six bits.
std::string greyJpeg(std::uint32_t width, std::uint32_t height) {
    QImage one(8, 8, QImage::Format_Grayscale8);
    one.fill(128);
    std::string bytes = saved(one, "JPG");
    const std::size_t frame = bytes.find("\xFF\xC0"s);
    bytes.replace(frame + 5, 4, big(height, 2) + big(width, 2));
    const std::size_t data = bytes.rfind("\xFF\xDA"s) + 10;
    bytes.resize(data);
    const std::size_t blocks = std::size_t{(width + 7) / 8} * ((height + 7) / 8);
    bytes.reserve(bytes.size() + blocks);
    for (std::size_t i = 0; i < blocks; i += 4) bytes += "\x28\xA2\x8A";
    return bytes + "\xFF\xD9";
}

/// PIC-28: No file holds the panel, takes all memory or is decoded without an end: layers, holes, jumps, codes, texts,
///     screens and sides without measure
TEST(HostileJpeg, OneOfAThousandLayersIsRefusedInTime) {
    const std::string bytes = layered(4000, 3000, 1000);
    ASSERT_LT(bytes.size(), 200'000U);
    const test::Stopwatch clock;
    EXPECT_NE(read(bytes).reason.find("layers"), std::string::npos);
    EXPECT_LT(clock.own(), std::chrono::seconds(20));
}

TEST(HostileJpeg, AnHonestOneOfSomeLayersIsRead) { EXPECT_EQ(read(layered(400, 300, 20)).reason, ""); }

/// Asked within each layer, not only between two pieces of the file.
/// PIC-28
TEST(HostileJpeg, EndsSoonAfterItIsGivenUp) {
    const std::string bytes = layered(4000, 3000, 90);
    int asked = 0;
    const auto picture = read(bytes, [&asked] { return ++asked > 20; });
    EXPECT_TRUE(picture.pixels.empty());
    EXPECT_LE(asked, 25);
}

/// PIC-22
TEST(HostileJpeg, TwoHundredMegapixelsAreDecodedReduced) {
    const std::string bytes = greyJpeg(16'000, 12'500);
    const test::MemoryPeak peak;
    const auto picture = read(bytes);
    ASSERT_EQ(picture.reason, "");
    EXPECT_EQ(picture.full, (PictureSize{16'000, 12'500}));
    EXPECT_LE(picture.held.pixels(), kMaxHeldPixels);
    EXPECT_GT(picture.held.pixels(), 10'000'000);
    EXPECT_EQ(picture.pixels.front(), 0xFF808080U);
    EXPECT_EQ(picture.pixels.back(), 0xFF808080U);
    EXPECT_LT(peak.megabytes(), 100);
    EXPECT_EQ(read(greyJpeg(10'000, 4'900)).reason, "") << "49";
    EXPECT_EQ(read(greyJpeg(12'000, 9'000)).reason, "") << "108";
    EXPECT_NE(read(greyJpeg(16'000, 12'501)).reason.find("too large"), std::string::npos);
    EXPECT_NE(read(greyJpeg(65'500, 65'500)).reason.find("too large"), std::string::npos);
}

/// PIC-22
TEST(HostileJpeg, OneOfTwoHundredMegapixelsIsTurnedInItsOwnMemory) {
    const std::string note =
        "\xFF\xE1\0\x22"
        "Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06\0\0\0\0\0\0"s;
    const std::string bytes = greyJpeg(16'000, 12'500).insert(2, note);
    const test::MemoryPeak peak;
    const auto picture = read(bytes);
    EXPECT_EQ(picture.full, (PictureSize{12'500, 16'000})) << picture.reason;
    EXPECT_LT(peak.megabytes(), 100);
}

TEST(HostileJpeg, LayersOfMoreThanThereIsRoomForAreRefused) {
    std::string bytes = layered(800, 600, 0);
    const std::size_t frame = bytes.find("\xFF\xC2"s);
    ASSERT_NE(frame, std::string::npos);
    bytes.replace(frame + 5, 4, big(12'500, 2) + big(16'000, 2));
    const test::MemoryPeak peak;
    EXPECT_NE(read(bytes).reason.find("too large"), std::string::npos);
    EXPECT_LT(peak.megabytes(), 60);
}

TEST(HostileJpeg, WhatNoteLeadsNowhereIsNoOrientation) {
    // A directory that lies in itself, one far behind the notes, one of 65,535 entries.
    for (const std::string& directory : {"\0\0\0\0"s, "\xFF\xFF\xFF\xFF"s, "\0\0\0\x08\xFF\xFF"s}) {
        const std::string notes = "Exif\0\0MM\0*"s + directory + std::string(40, '\xFF');
        std::string bytes = greyJpeg(40, 20);
        bytes.insert(2, "\xFF\xE1"s + big(static_cast<std::uint32_t>(notes.size() + 2), 2) + notes);
        const auto picture = read(bytes);
        EXPECT_EQ(picture.reason, "");
        EXPECT_EQ(picture.full, (PictureSize{40, 20}));
    }
}

TEST(HostileJpeg, KindsThatTheDecoderDoesNotKnowAreDamaged) {
    for (const auto& [place, byte] : {std::pair{4, '\x0C'}, {1, '\xC3'}, {9, '\x05'}, {9, '\0'}}) {
        std::string bytes = greyJpeg(40, 20);
        bytes[bytes.find("\xFF\xC0"s) + static_cast<std::size_t>(place)] =
            byte;  // 12 bits; lossless; five colours; none
        EXPECT_EQ(read(bytes).reason, "The picture is damaged.") << place;
    }
    std::string thumbnail = greyJpeg(40, 20);
    const std::string inside = "Exif\0\0"s + greyJpeg(16, 16);
    thumbnail.insert(2, "\xFF\xE1"s + big(static_cast<std::uint32_t>(inside.size() + 2), 2) + inside);
    EXPECT_EQ(read(thumbnail).full, (PictureSize{40, 20})) << "the picture, not the small one in its notes";
}

// --- PNG -------------------------------------------------------------------------------------------------------------

std::uint32_t checksum(const std::string& bytes) {
    std::uint32_t sum = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) sum = sum >> 1U ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    return ~sum;
}

std::string part(const std::string& name, const std::string& content) {
    return big(static_cast<std::uint32_t>(content.size()), 4) + name + content + big(checksum(name + content), 4);
}

std::string deflated(const std::string& bytes) {
    return qCompress(QByteArray::fromStdString(bytes), 9).mid(4).toStdString();
}

/// kind: 0 grey, 2 coloured, 3 of a table, 6 coloured with an alpha.
std::string png(std::uint32_t width, std::uint32_t height, int depth, int kind, bool interlaced, const std::string& raw,
                const std::string& between = "") {
    const std::string head = big(width, 4) + big(height, 4) + static_cast<char>(depth) + static_cast<char>(kind) +
                             "\0\0"s + static_cast<char>(interlaced ? 1 : 0);
    return "\x89PNG\r\n\x1A\n"s + part("IHDR", head) + between + part("IDAT", deflated(raw)) + part("IEND", "");
}

std::uint32_t greyAt(int x, int y) { return static_cast<std::uint32_t>(x * 7 + y * 13) % 256; }

/// Rows of 8 bits, or of the seven passes.
std::string rows(int width, int height, bool interlaced) {
    struct Pass {
        int left, top, right, down;
    };
    const std::vector<Pass> seven = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                     {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    std::string raw;
    for (const Pass& pass : interlaced ? seven : std::vector<Pass>{{0, 0, 1, 1}}) {
        if (pass.left >= width) continue;
        for (int y = pass.top; y < height; y += pass.down) {
            raw += '\0';
            for (int x = pass.left; x < width; x += pass.right) raw += static_cast<char>(greyAt(x, y));
        }
    }
    return raw;
}

TEST(HostilePng, RowsInEitherOrderAreRead) {
    for (int width = 1; width <= 9; ++width) {
        for (int height = 1; height <= 9; ++height) {
            for (const bool interlaced : {false, true}) {
                const auto count = [](int side) { return static_cast<std::uint32_t>(side); };
                const auto picture =
                    read(png(count(width), count(height), 8, 0, interlaced, rows(width, height, interlaced)));
                ASSERT_EQ(picture.reason, "") << width << "x" << height << " " << interlaced;
                for (int i = 0; i < width * height; ++i) {
                    ASSERT_EQ(picture.pixels[static_cast<std::size_t>(i)],
                              0xFF000000U | 0x10101U * greyAt(i % width, i / width))
                        << width << "x" << height << " " << interlaced;
                }
            }
        }
    }
}

/// PIC-22
TEST(HostilePng, ALargeOneIsHeldReducedAlsoWithItsRowsInterlaced) {
    constexpr int kWidth = 6000, kHeight = 4500;
    for (const bool interlaced : {false, true}) {
        std::string raw = rows(kWidth, kHeight, interlaced);
        const std::string bytes = png(kWidth, kHeight, 8, 0, interlaced, raw);
        raw = {};
        const test::MemoryPeak peak;
        const auto picture = read(bytes);
        ASSERT_EQ(picture.reason, "");
        EXPECT_EQ(picture.full, (PictureSize{kWidth, kHeight}));
        EXPECT_LE(picture.held.pixels(), kMaxHeldPixels);
        EXPECT_GT(picture.held.pixels(), kMaxHeldPixels * 9 / 10);
        EXPECT_FALSE(picture.seeThrough) << "each pixel has come";
        if (interlaced) {
            EXPECT_EQ(picture.pixels.front() & 0xFFU, greyAt(0, 0)) << "one of them, where no row is complete";
        }
        EXPECT_LT(peak.megabytes(), 130);
    }
}

/// PIC-28
TEST(HostilePng, WhatItCarriesBesideItsPictureTakesNoMemory) {
    const std::string much = deflated(std::string(7'900'000, 'a'));
    std::string between;
    for (int i = 0; i < 200; ++i) {
        between += part("zTXt", "key\0\0"s + much) + part("iTXt", "key\0\1\0\0\0"s + much);
    }
    between += part("iCCP", "name\0\0"s + much);
    for (const std::string& each : {between, ""s}) {
        const std::string bytes = png(4, 4, 8, 0, false, rows(4, 4, false), each);
        const test::MemoryPeak peak;
        EXPECT_EQ(read(bytes).reason, "");
        EXPECT_LT(peak.megabytes(), 40);
    }
}

TEST(HostilePng, SixteenBitsAndAlphaAreMadeEight) {
    QImage image = plain(30, 20, QImage::Format_RGBA64);
    image.fill(QColor(200, 100, 50, 128));
    const auto picture = read(saved(image, "PNG"));
    ASSERT_EQ(picture.reason, "");
    EXPECT_TRUE(picture.seeThrough);
    EXPECT_EQ(picture.pixels[0] >> 24U, 128U);
    EXPECT_NEAR(static_cast<int>(picture.pixels[0] >> 16U & 0xFFU), 100, 1) << "multiplied by its alpha";
}

TEST(HostilePng, ATooLargeOneIsRefusedAndACutOneDamaged) {
    const std::string raw = rows(4, 4, false);
    EXPECT_NE(read(png(8000, 5001, 8, 0, false, raw)).reason.find("too large"), std::string::npos);
    EXPECT_EQ(read(png(8000, 5000, 16, 6, false, raw)).reason, "The picture is damaged.") << "it ends early";
    EXPECT_EQ(read(png(0x7FFFFFFF, 1, 8, 0, false, raw)).reason, "The picture is damaged.");
    EXPECT_EQ(read(png(0, 4, 8, 0, false, raw)).reason, "The picture is damaged.");
    EXPECT_EQ(read(png(4, 4, 8, 3, false, raw)).reason, "The picture is damaged.") << "without its table";
}

TEST(HostilePng, EndsSoonAfterItIsGivenUp) {
    const std::string bytes = png(3000, 3000, 8, 0, false, rows(3000, 3000, false));
    int asked = 0;
    EXPECT_TRUE(read(bytes, [&asked] { return ++asked > 100; }).pixels.empty());
    EXPECT_LE(asked, 105);
}

// --- The worker ------------------------------------------------------------------------------------------------------

struct HostilePictures : test::PicturesRig {
    std::string slow() {
        folder.write("slow.jpg", layered(6000, 5000, 95));
        return "slow.jpg";
    }
};

/// PIC-28
TEST_F(HostilePictures, BeginningAndGivingUpTakeNoTime) {
    const std::string path = folder.in(slow());
    int told = 0;
    for (int i = 0; i < 20; ++i) {
        const test::Stopwatch beginning;
        EXPECT_FALSE(pictures.begin(path, [&told](const Pictures::Decoded&) { ++told; }));
        EXPECT_LT(beginning.own().count(), 200);
        test::waitUntil([] { return false; }, 20);  // until it decodes
        const test::Stopwatch ending;
        pictures.giveUp();
        EXPECT_LT(ending.own().count(), 200);
    }
    EXPECT_TRUE(test::waitUntil([this] { return pictures.isIdle(); }, 2'000)) << "the decoder itself ends soon";
    EXPECT_EQ(told, 0);
}

/// PIC-28
TEST_F(HostilePictures, TheNextPictureDoesNotWaitForASlowOne) {
    const std::string path = folder.in(slow());
    plain(30, 20).save(QString::fromStdString(folder.in("good.bmp")), "BMP");
    EXPECT_FALSE(pictures.begin(path, [](const Pictures::Decoded&) { FAIL(); }));
    test::waitUntil([] { return false; }, 50);
    const test::Stopwatch clock;
    EXPECT_EQ(begin("good.bmp").picture.width(), 30);
    EXPECT_LT(clock.own().count(), 1'500);
}

/// PIC-28
TEST_F(HostilePictures, TheEndDoesNotWaitForASlowOne) {
    const std::string path = folder.in(slow());
    std::unique_ptr<QtPictures> ending = std::make_unique<QtPictures>(post);
    EXPECT_FALSE(ending->begin(path, [](const Pictures::Decoded&) { FAIL(); }));
    test::waitUntil([] { return false; }, 50);
    const test::Stopwatch clock;
    ending.reset();
    EXPECT_LT(clock.own().count(), 1'500);
}

TEST_F(HostilePictures, AHintForASlowOneGivesWayToWhatIsWanted) {
    pictures.decodeAhead(folder.in(slow()));
    test::waitUntil([] { return false; }, 100);
    plain(30, 20).save(QString::fromStdString(folder.in("good.bmp")), "BMP");
    const test::Stopwatch clock;
    EXPECT_EQ(begin("good.bmp").picture.width(), 30);
    EXPECT_LT(clock.own().count(), 1'500);
}

/// PIC-28
TEST_F(HostilePictures, AFileThatIsAllHoleIsRefusedAtOnce) {
    folder.write("hole.jpg", "\xFF\xD8\xFF\xE0\0\x10JFIF"s);
    std::filesystem::resize_file(folder.in("hole.jpg"), std::uintmax_t{20} << 30);
    const test::Stopwatch clock;
    EXPECT_NE(begin("hole.jpg").reason.find("too large"), std::string::npos);
    EXPECT_LT(clock.own().count(), 1'000);
    std::filesystem::resize_file(folder.in("hole.jpg"), static_cast<std::uintmax_t>(kMaxPictureBytes));
    const test::MemoryPeak peak;
    EXPECT_NE(begin("hole.jpg").reason, "");
    EXPECT_LT(peak.megabytes(), 40);
}

}  // namespace
}  // namespace corvane
