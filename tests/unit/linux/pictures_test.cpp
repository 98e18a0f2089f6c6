// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QImageWriter>
#include <vector>

#include "unit/linux/memory_peak.h"
#include "unit/linux/pictures_rig.h"
#include "unit/pictures/picture_bytes.h"

namespace corvane {
namespace {

struct DesktopPictures : test::PicturesRig {
    static QImage busy(int width, int height) {
        QImage image(width, height, QImage::Format_RGB32);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) image.setPixel(x, y, qRgb(x * 7 % 256, y * 5 % 256, x * y % 256));
        }
        return image;
    }
    void writeProgressive(const std::string& name, int width, int height) {
        QImage large(width, height, QImage::Format_RGB32);
        large.fill(Qt::darkGreen);
        QImageWriter writer(QString::fromStdString(folder.in(name)), "JPG");
        writer.setProgressiveScanWrite(true);
        ASSERT_TRUE(writer.write(large));
    }
    std::string reasonOf(const std::string& name) {
        const auto decoded = pictures.decode(folder.in(name));
        EXPECT_EQ(decoded.picture.empty(), !decoded.reason.empty()) << name;
        return decoded.reason;
    }
};

/// PIC-25: The content counts, not the name, and from memory as from a file
/// PIC-02
TEST_F(DesktopPictures, TheContentCountsNotTheName) {
    busy(20, 10).save(QString::fromStdString(folder.in("a.gif")), "PNG");
    EXPECT_EQ(reasonOf("a.gif"), "");
}

/// A GIF of one dot that lies in a larger picture.
std::string dotInside(int width, int height) {
    const auto word = [](int value) {
        return std::string{static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)};
    };
    const std::string colours("\x80\0\0\0\0\0\xFF\xFF\xFF", 9);
    const std::string dot("\x2C\0\0\0\0\1\0\1\0\0\2\2\x44\1\0\x3B", 16);
    return "GIF87a" + word(width) + word(height) + colours + dot;
}

/// PIC-22
TEST_F(DesktopPictures, AGifHasTheSizeThatItsHeaderAnnouncesAndNoMoreThanThereIsRoomFor) {
    folder.write("a.gif", dotInside(300, 200));
    const auto decoded = pictures.decode(folder.in("a.gif"));
    EXPECT_EQ(decoded.reason, "");
    EXPECT_EQ(decoded.picture.width(), 300);
    EXPECT_EQ(decoded.picture.height(), 200);
    folder.write("b.gif", dotInside(10000, 6000));
    EXPECT_NE(reasonOf("b.gif").find("too large"), std::string::npos);
}

/// PIC-16: A picture that cannot be decoded asks as a missing file does
/// PIC-23
TEST_F(DesktopPictures, EveryCutOffFileIsDamaged) {
    for (const char* format : {"BMP", "JPG", "PNG"}) {
        busy(200, 100).save(QString::fromStdString(folder.in("whole")), format);
        EXPECT_EQ(reasonOf("whole"), "") << format;
        const std::string bytes = folder.bytes("whole");
        for (const double share : {0.01, 0.5, 0.9}) {
            folder.write("cut", bytes.substr(0, static_cast<std::size_t>(share * static_cast<double>(bytes.size()))));
            EXPECT_NE(reasonOf("cut"), "") << format << " " << share;
        }
    }
    folder.write("empty", "");
    EXPECT_NE(reasonOf("empty"), "");
}

/// PIC-02
TEST_F(DesktopPictures, SampleGifAndItsFirstHalf) {
    std::ostringstream bytes;
    bytes << std::ifstream(CORVANE_SOURCE_DIR "/samples/city.gif", std::ios::binary).rdbuf();
    folder.write("whole.gif", bytes.str());
    EXPECT_EQ(reasonOf("whole.gif"), "");
    folder.write("half.gif", bytes.str().substr(0, bytes.str().size() / 2));
    EXPECT_NE(reasonOf("half.gif"), "");
}

/// What throws made-up bytes at the decoder reads them from memory, which must say as much about files.
/// PIC-25
TEST_F(DesktopPictures, AFileIsDecodedAsItsBytesInMemoryAre) {
    constexpr std::size_t kBytesOfCells = 20;  // before the picture
    int decoded = 0;
    for (const auto& entry : std::filesystem::directory_iterator(CORVANE_SOURCE_DIR "/tests/fuzz/corpus/cells")) {
        std::ostringstream read;
        read << std::ifstream(entry.path(), std::ios::binary).rdbuf();
        const std::string whole = read.str().substr(kBytesOfCells);
        for (const std::string& bytes : {whole, whole.substr(0, whole.size() / 2)}) {
            folder.write("picture", bytes);
            const auto ofFile = pictures.decode(folder.in("picture"));
            test::Bytes memory(bytes);
            const auto ofMemory = QtPictures::decodeFrom(memory, [] { return false; });
            EXPECT_EQ(ofFile.reason, ofMemory.reason) << entry.path();
            EXPECT_EQ(imageOf(ofFile.picture), imageOf(ofMemory.picture)) << entry.path();
            EXPECT_EQ(ofFile.picture.width(), ofMemory.picture.width()) << entry.path();
            decoded += ofMemory.picture.empty() ? 0 : 1;
        }
    }
    EXPECT_GE(decoded, 8);
}

/// PIC-22
TEST_F(DesktopPictures, AnUnreasonablyLargePictureIsRefusedWithoutReadingIt) {
    // A bitmap of 10000 by 10000 pixels of 8 bits: the file is one hole behind its header.
    std::string header(54, '\0');
    header[0] = 'B';
    header[1] = 'M';
    header[10] = 0x36;  // the pixels lie behind 256 colours
    header[11] = 0x04;
    header[14] = 40;
    header[18] = header[22] = 0x10;
    header[19] = header[23] = 0x27;
    header[26] = 1;
    header[28] = 8;
    folder.write("huge.bmp", header);
    std::filesystem::resize_file(folder.in("huge.bmp"), 54 + 1024 + 10000 * 10000);
    EXPECT_NE(reasonOf("huge.bmp").find("too large"), std::string::npos) << reasonOf("huge.bmp");
}

/// PIC-20
TEST_F(DesktopPictures, AJpegIsTurnedUpright) {
    busy(40, 20).save(QString::fromStdString(folder.in("plain.jpg")), "JPG");
    // A camera's note that the picture is to be turned by a quarter.
    const std::string note(
        "\xFF\xE1\0\x22"
        "Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06\0\0\0\0\0\0",
        36);
    folder.write("turned.jpg", folder.bytes("plain.jpg").insert(2, note));
    const auto decoded = pictures.decode(folder.in("turned.jpg"));
    EXPECT_EQ(decoded.picture.width(), 20) << decoded.reason;
    EXPECT_EQ(decoded.picture.height(), 40);
}

/// PIC-22: Pictures hold what is theirs of the program's 200 MB, be they large, progressive, shown or decoded ahead: a
///     larger one is reduced, a JPEG of up to 200 megapixels and any other of 40, and what is larger yet is refused by
///     its size without being read
TEST_F(DesktopPictures, LargePicturesNeverHoldMoreThanTheirShareOfMemory) {
    QImage large(6000, 4000, QImage::Format_RGB32);
    large.fill(Qt::red);
    large.save(QString::fromStdString(folder.in("a.jpg")), "JPG");
    const std::int64_t before = QtPicture::heldPixels();
    {
        const Picture first = pictures.decode(folder.in("a.jpg")).picture;
        EXPECT_EQ(first.width(), 6000) << "its size is its own";
        EXPECT_EQ(first.height(), 4000);
        EXPECT_LE(QtPicture::heldPixels() - before, kMaxHeldPixels);
        EXPECT_NEAR(static_cast<int>(first.data()->pixel(5999, 3999) >> 16), 254, 3);
        const Picture second = pictures.decode(folder.in("a.jpg")).picture;
        pictures.decodeAhead(folder.in("a.jpg"));
        finishHints();
        EXPECT_LE(QtPicture::heldPixels(), kMaxHeldTogether + kMaxHeldPixels / 3);
    }
    EXPECT_NE(begin("none.jpg").reason, "") << "lets what was decoded ahead go";
    EXPECT_EQ(QtPicture::heldPixels(), before);
}

/// A JPEG of 40 million pixels is decoded in what is left of the program's 200 MB, or not at all.
/// PIC-22
TEST_F(DesktopPictures, TheLargestPicturesStayBelowTheirShareWhileTheyAreDecoded) {
    constexpr int kShareMegabytes = 160;
    for (const bool progressive : {false, true}) {
        QImage large(7300, 5470, QImage::Format_RGB32);
        large.fill(Qt::darkGreen);
        QImageWriter writer(QString::fromStdString(folder.in("large.jpg")), "JPG");
        writer.setProgressiveScanWrite(progressive);
        ASSERT_TRUE(writer.write(large));
        large = {};
        const test::MemoryPeak peak;
        const Picture alone = pictures.decode(folder.in("large.jpg")).picture;
        EXPECT_FALSE(alone.empty());
        EXPECT_EQ(alone.width(), 7300);
        EXPECT_LT(peak.megabytes(), kShareMegabytes) << progressive;
    }
}

/// PIC-22
TEST_F(DesktopPictures, ThereMayBeNoRoomForAnotherLargeOne) {
    writeProgressive("large.jpg", 7300, 5470);
    {
        const Picture shown(std::make_shared<QtPicture>(QImage(6000, 5900, QImage::Format_RGB32)));
        const test::MemoryPeak peak;
        EXPECT_NE(reasonOf("large.jpg").find("too large"), std::string::npos);
        EXPECT_LT(peak.megabytes(), 80) << "refused before it is decoded";
    }
    EXPECT_EQ(reasonOf("large.jpg"), "") << "there is room again";
}

/// A progressive JPEG needs much beside its picture: it waits until the picture on the screen has gone.
/// PIC-22
TEST_F(DesktopPictures, APictureMayLackTheRoomThatAnotherHolds) {
    writeProgressive("next.jpg", 7300, 5470);
    Picture shown(std::make_shared<QtPicture>(QImage(6000, 5900, QImage::Format_RGB32)));
    pictures.decodeAhead(folder.in("next.jpg"));
    finishHints();
    const auto refused = begin("next.jpg");
    EXPECT_TRUE(refused.lacksRoom);
    EXPECT_NE(refused.reason.find("too large"), std::string::npos);
    shown = {};
    const auto decoded = begin("next.jpg");
    EXPECT_EQ(decoded.reason, "");
    EXPECT_FALSE(decoded.lacksRoom);
    EXPECT_EQ(decoded.picture.width(), 7300);
}

/// PIC-22
TEST_F(DesktopPictures, ARefusalOfAHintForWantOfRoomIsNotKept) {
    writeProgressive("next.jpg", 7300, 5470);
    Picture shown(std::make_shared<QtPicture>(QImage(6000, 5900, QImage::Format_RGB32)));
    pictures.decodeAhead(folder.in("next.jpg"));
    finishHints();
    shown = {};
    EXPECT_EQ(begin("next.jpg").reason, "");
}

/// PIC-22
TEST_F(DesktopPictures, OneThatIsLetGoIsCountedNoMoreAndGivesItsMemoryBack) {
    constexpr int kSide = 2000;
    std::vector<uchar> pixels(std::size_t{4} * kSide * kSide);
    bool freed = false;
    const auto tell = [](void* told) { *static_cast<bool*>(told) = true; };
    const std::int64_t before = QtPicture::heldPixels();
    Picture picture(
        std::make_shared<QtPicture>(QImage(pixels.data(), kSide, kSide, QImage::Format_RGB32, tell, &freed)));
    EXPECT_EQ(QtPicture::heldPixels(), before + kSide * kSide);
    picture = {};
    EXPECT_EQ(QtPicture::heldPixels(), before);
    EXPECT_TRUE(freed);
}

/// PIC-24: A file that has changed since it was decoded ahead is read again
TEST_F(DesktopPictures, AFileChangedAfterTheHintIsReadAgain) {
    const QString path = QString::fromStdString(folder.in("a.png"));
    busy(20, 10).save(path);
    pictures.decodeAhead(folder.in("a.png"));
    EXPECT_EQ(begin("a.png").picture.width(), 20);
    pictures.decodeAhead(folder.in("a.png"));
    finishHints();
    busy(50, 10).save(path);
    EXPECT_EQ(begin("a.png").picture.width(), 50);
}

/// PIC-09
TEST_F(DesktopPictures, OnlyAbsurdSizesLackMemory) {
    Form form("frmTried", FormStyle::Media);
    PictureBox box(&form, "pctTried");
    EXPECT_NE(pictures.paintStretched(box, 10, 10), 0) << "there is no picture";
    box.Picture = Picture(std::make_shared<QtPicture>(busy(20, 10)));
    EXPECT_EQ(pictures.paintStretched(box, 40000, 20000), 0);
    EXPECT_EQ(pictures.paintStretched(box, 2e9F, 1), kOutOfMemoryForPicture);
    EXPECT_EQ(box.paintedWidth(), 40000.0F);
}

}  // namespace
}  // namespace corvane
