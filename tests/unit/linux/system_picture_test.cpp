// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures that decoders of the system read.
#include "linux/pictures/system_picture.h"

#include <sys/stat.h>
#include <QBuffer>
#include <QImageWriter>
#include <chrono>

#include "linux/pictures/qt_pictures.h"
#include "unit/linux/pictures_rig.h"
#include "unit/pictures/picture_bytes.h"
#include "workers/worker.h"

namespace corvane {
namespace {

using Clock = std::chrono::steady_clock;

bool never() { return false; }

/// Of the colour in its left half, and of many in the other: newer decoders take a file of very few bytes for damaged.
std::string written(const char* format, QSize size, Qt::GlobalColor colour) {
    test::offscreenApplication();
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = size.width() / 2; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(x * 37 % 256, y * 59 % 256, x * y * 17 % 256));
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(100);
    EXPECT_TRUE(writer.write(image)) << format;
    return bytes.toStdString();
}

std::string drawing(const std::string& size, const std::string& content) {
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" " + size + ">" + content + "</svg>";
}

PicturePixels read(const std::string& bytes, const std::string& decoder, const std::function<bool()>& givenUp = never) {
    test::offscreenApplication();
    test::Bytes file(bytes);
    return readBySystem(file, {0, givenUp}, decoder);
}

/// PIC-78: With KINDS files named for a decoder of the system are read by it
TEST(SystemPicture, EachKindIsReadByItsDecoder) {
    for (const char* decoder : {"webp", "tiff", "ico"}) {
        const PicturePixels picture = read(written(decoder, {40, 30}, Qt::red), decoder);
        EXPECT_EQ(picture.reason, "") << decoder;
        EXPECT_EQ(picture.full, (PictureSize{40, 30})) << decoder;
        ASSERT_EQ(picture.pixels.size(), 1200U) << decoder;
        EXPECT_GT(picture.pixels[600] >> 16U & 0xFFU, 0xF0U) << decoder;
        EXPECT_LT(picture.pixels[600] & 0xFFU, 0x10U) << decoder;
    }
    const PicturePixels drawn =
        read(drawing("width=\"40\" height=\"30\"", "<rect width=\"40\" height=\"30\" fill=\"#00f\"/>"), "svg");
    EXPECT_EQ(drawn.full, (PictureSize{40, 30}));
    ASSERT_FALSE(drawn.pixels.empty()) << drawn.reason;
    EXPECT_EQ(drawn.pixels[600], 0xFF0000FFU);
}

struct NamedPictures : test::PicturesRig {};

/// PIC-79: A file gets a decoder of the system by its name alone; what has the name of another kind is none
TEST_F(NamedPictures, OnlyAFileOfThatNameGetsTheSystemsDecoder) {
    const std::string bytes = written("webp", {8, 6}, Qt::red);
    folder.write("a.webp", bytes);
    folder.write("a.jpg", bytes);
    EXPECT_EQ(pictures.decode(folder.in("a.webp")).picture.width(), 8);
    EXPECT_EQ(begin("a.jpg").reason, "This is not a picture of a known format.");
    EXPECT_TRUE(pictures.shows("WEBP") && pictures.shows("PNG"));
    EXPECT_FALSE(pictures.shows("XCF"));
    EXPECT_EQ(systemDecoderOf("GIF"), "") << "it has a reader of ours";
}

TEST(SystemPicture, BytesOfAnotherKindAndDamagedOnesAreRefused) {
    EXPECT_NE(read(written("webp", {8, 6}, Qt::red), "tiff").reason, "");
    EXPECT_NE(read("", "webp").reason, "");
    const std::string whole = written("tiff", {200, 200}, Qt::red);
    EXPECT_NE(read(whole.substr(0, 60), "tiff").reason, "");
}

/// PIC-80: What the system's decoders read has 40 megapixels at most
TEST(SystemPicture, OneThatIsTooLargeIsRefusedUnread) {
    const PicturePixels huge = read(drawing("width=\"100000\" height=\"100000\"", "<rect/>"), "svg");
    EXPECT_NE(huge.reason.find("too large (100000 x 100000"), std::string::npos) << huge.reason;
}

/// PIC-82
TEST(SystemPicture, ADrawingThatNamesItselfOrAnotherFileIsDrawnWithoutThat) {
    const test::TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.in("pipe").c_str(), 0600), 0);
    for (const std::string name : {"itself.svg", "pipe"}) {
        const std::string image =
            "<image width=\"40\" height=\"30\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" xlink:href=\"" +
            folder.in(name) + "\"/><rect width=\"40\" height=\"30\" fill=\"#00f\"/>";
        const std::string bytes = drawing("width=\"40\" height=\"30\"", image);
        folder.write("itself.svg", bytes);
        const PicturePixels drawn = read(bytes, "svg");
        ASSERT_FALSE(drawn.pixels.empty()) << drawn.reason;
        EXPECT_EQ(drawn.pixels[600], 0xFF0000FFU);
    }
    EXPECT_NE(read("\x1F\x8B\x08", "svg").reason, "");
}

/// PIC-81: One that nobody wants any more is left at once, however long its decoder takes
TEST(SystemPicture, OneThatIsGivenUpIsLeftAtOnce) {
    std::string circles;
    for (int i = 0; i < 6'000; ++i) circles += "<circle cx=\"500\" cy=\"500\" r=\"490\" fill-opacity=\"0.01\"/>";
    const auto begun = Clock::now();
    const auto soon = [begun] { return Clock::now() - begun > std::chrono::milliseconds(50); };
    EXPECT_NE(read(drawing("width=\"1000\" height=\"1000\"", circles), "svg", soon).reason, "");
    const auto left = Clock::now() - begun;
    EXPECT_TRUE(Worker::endAll(std::chrono::seconds(60))) << "the process cannot end beneath it";
    EXPECT_LT(left * 3, Clock::now() - begun);
}

}  // namespace
}  // namespace corvane
