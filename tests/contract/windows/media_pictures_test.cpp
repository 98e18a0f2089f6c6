// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/pictures_contract.h"
#include "contract/windows/media_rig.h"
#include "pictures/picture_budget.h"
#include "winapi/pictures/windows_pictures.h"

namespace corvane {
namespace {

using namespace std::string_literals;
using test::bytesOf;
using test::sample;

/// A bitmap of 24 bits, its rows from the bottom; colour(x, y) is 0xRRGGBB.
template <class Colour>
std::string bitmap(int width, int height, Colour colour) {
    const auto word = [](int value) {
        std::string bytes;
        for (int i = 0; i < 4; ++i) bytes += static_cast<char>(value >> (8 * i));
        return bytes;
    };
    std::string pixels;
    for (int y = height - 1; y >= 0; --y) {
        for (int x = 0; x < width; ++x) pixels += word(colour(x, y)).substr(0, 3);
        pixels.append(static_cast<std::size_t>((4 - width * 3 % 4) % 4), '\0');
    }
    return "BM"s + word(54 + static_cast<int>(pixels.size())) + word(0) + word(54) + word(40) + word(width) +
           word(height) + "\x01\0\x18\0"s + word(0) + word(0) + word(0) + word(0) + word(0) + word(0) + pixels;
}

class WindowsPicturesStage : public test::LoopStage<PicturesStage> {
public:
    WindowsPicturesStage() {
        folder_.write("halves.bmp", bitmap(40, 30, [](int x, int) { return x < 20 ? 0xFF0000 : 0x0000FF; }));
        folder_.write("broken.bmp", "BM this is no picture");
    }
    ~WindowsPicturesStage() override { post_.stop(); }
    Pictures& pictures() override { return pictures_; }
    std::string picture() override { return folder_.in("halves.bmp"); }
    std::string broken() override { return folder_.in("broken.bmp"); }
    bool isIdle() override { return pictures_.isIdle(); }

private:
    test::ScratchFolder folder_;
    UiPost post_ = loop_.uiPost();
    WindowsPictures pictures_{post_};
};

std::unique_ptr<PicturesStage> makeStage() { return std::make_unique<WindowsPicturesStage>(); }

INSTANTIATE_TEST_SUITE_P(Windows, PicturesContract, testing::Values(&makeStage));

class DecodedPictures : public testing::Test {
protected:
    std::string reasonOf(const std::string& path) {
        const auto decoded = pictures_.decode(path);
        EXPECT_EQ(decoded.picture.empty(), !decoded.reason.empty()) << path;
        return decoded.reason;
    }
    static void expectColour(const Picture& picture, int x, int y, std::uint32_t wanted) {
        const std::uint32_t seen = picture.data()->pixel(x, y);
        for (const unsigned shift : {0U, 8U, 16U}) {
            EXPECT_NEAR(static_cast<int>(seen >> shift & 0xFFU), static_cast<int>(wanted >> shift & 0xFFU), 8)
                << std::hex << seen << " at " << std::dec << x << " " << y;
        }
    }

    ~DecodedPictures() override { post_.stop(); }
    /// What comes of a picture that is begun, at once or later.
    Pictures::Decoded begin(const std::string& path) {
        std::optional<Pictures::Decoded> told;
        if (auto now = pictures_.begin(path, [&told](Pictures::Decoded decoded) { told = decoded; })) return *now;
        EXPECT_TRUE(loop_.runUntil([&] { return told.has_value(); }, 30'000)) << path;
        return told.value_or(Pictures::Decoded{});
    }
    void finishHints() {
        ASSERT_TRUE(loop_.runUntil([this] { return pictures_.isIdle(); }, 30'000));
    }

    test::ScratchFolder folder_;
    WindowsLoop loop_;
    UiPost post_ = loop_.uiPost();
    WindowsPictures pictures_{post_};
};

TEST_F(DecodedPictures, TheSamplesLookAsTheyShould) {
    const Picture hills = pictures_.decode(sample("hills.bmp")).picture;
    ASSERT_EQ(hills.width(), 320);
    ASSERT_EQ(hills.height(), 240);
    expectColour(hills, 30, 30, 0x8CC8EC);
    expectColour(hills, 250, 50, 0xFFD84A);
    const Picture sunset = pictures_.decode(sample("sunset.jpg")).picture;
    ASSERT_EQ(sunset.width(), 320);
    expectColour(sunset, 30, 108, 0xF2803A);
    expectColour(sunset, 40, 215, 0x1E3A5C);
    const Picture city = pictures_.decode(sample("city.gif")).picture;
    ASSERT_EQ(city.height(), 240);
    expectColour(city, 20, 20, 0x141C3C);
    expectColour(city, 258, 42, 0xF4EEC8);
}

/// WIN-27
TEST_F(DecodedPictures, EveryCutOffFileIsDamaged) {
    for (const char* name : {"hills.bmp", "sunset.jpg", "city.gif"}) {
        const std::string bytes = bytesOf(sample(name));
        for (const double share : {0.01, 0.5, 0.9}) {
            const auto length = static_cast<std::size_t>(share * static_cast<double>(bytes.size()));
            EXPECT_NE(reasonOf(folder_.write("cut", bytes.substr(0, length))), "") << name << " " << share;
        }
    }
    EXPECT_NE(reasonOf(folder_.write("empty", "")), "");
    EXPECT_NE(reasonOf(folder_.in("")), "") << "a folder";
}

/// WIN-27: Pictures are decoded by their content, JPEGs turned upright; damaged and too large ones fail with a reason
TEST_F(DecodedPictures, TheContentCountsNotTheName) {
    EXPECT_EQ(reasonOf(folder_.write("a.gif", bytesOf(sample("sunset.jpg")))), "");
    EXPECT_EQ(reasonOf(folder_.write("\xE6\xAD\x8C b", bytesOf(sample("hills.bmp")))), "") << "any name";
    EXPECT_NE(reasonOf(sample("scale.wav")), "");
}

/// WIN-27
TEST_F(DecodedPictures, AJpegIsTurnedUpright) {
    const std::string plain = bytesOf(sample("sunset.jpg"));
    const Picture upright = pictures_.decode(sample("sunset.jpg")).picture;
    for (const char orientation : {'\x03', '\x06', '\x08'}) {
        const std::string note = "\xFF\xE1\0\x22"s + "Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0"s +
                                 orientation + "\0\0\0\0\0\0"s;
        const Picture turned =
            pictures_.decode(folder_.write("turned.jpg", std::string(plain).insert(2, note))).picture;
        const bool half = orientation == '\x03';
        ASSERT_EQ(turned.width(), half ? 320 : 240);
        ASSERT_EQ(turned.height(), half ? 240 : 320);
        const std::uint32_t colour = upright.data()->pixel(30, 108);
        if (half) expectColour(turned, 319 - 30, 239 - 108, colour);
        if (orientation == '\x06') expectColour(turned, 239 - 108, 30, colour);
        if (orientation == '\x08') expectColour(turned, 108, 319 - 30, colour);
    }
}

/// WIN-27
TEST_F(DecodedPictures, AnUnreasonablyLargePictureIsRefused) {
    std::string huge = bitmap(1, 1, [](int, int) { return 0; });
    huge[18] = huge[22] = '\x10';  // 10000 by 10000 pixels of 1 bit: nothing is read of them
    huge[19] = huge[23] = '\x27';
    huge[28] = '\x01';
    huge.resize(62 + 1252 * 10000);
    huge[10] = 62;
    EXPECT_NE(reasonOf(folder_.write("huge.bmp", huge)).find("too large"), std::string::npos);
}

/// Layers are gone through once each by a decoder that cannot be given up, and where there are several it holds the
/// whole of a picture.
/// WIN-27
TEST_F(DecodedPictures, AJpegOfTooManyLayersOrTooLargeOnesIsRefused) {
    const std::string plain = bytesOf(sample("sunset.jpg"));
    const std::size_t scan = plain.rfind("\xFF\xDA"s);
    const std::string layer = plain.substr(scan, plain.size() - scan - 2);
    std::string many = plain.substr(0, plain.size() - 2);
    for (int i = 0; i < 100; ++i) many += layer;
    EXPECT_NE(reasonOf(folder_.write("many.jpg", many + "\xFF\xD9")).find("layers"), std::string::npos);
    std::string large = plain;
    const std::size_t frame =
        large.find("\xFF\xC0"s) == std::string::npos ? large.find("\xFF\xC2"s) : large.find("\xFF\xC0"s);
    ASSERT_NE(frame, std::string::npos);
    large.replace(frame + 5, 4, "\x2E\xE0\x2E\xE0"s);  // 12000 by 12000
    EXPECT_NE(reasonOf(folder_.write("large.jpg", large)).find(test::onWine() ? "too large" : "."), std::string::npos);
    large.replace(frame + 5, 4, "\x4E\x20\x4E\x20"s);  // 20000 by 20000
    EXPECT_NE(reasonOf(folder_.write("larger.jpg", large)).find("too large"), std::string::npos);
}

TEST_F(DecodedPictures, AGifHasTheSizeOfItsScreen) {
    std::string gif = bytesOf(sample("city.gif"));
    gif.replace(6, 4, "\x54\x01\xFA\0"s);  // 340 by 250
    const Picture larger = pictures_.decode(folder_.write("larger.gif", gif)).picture;
    ASSERT_EQ(larger.width(), 340);
    ASSERT_EQ(larger.height(), 250);
    expectColour(larger, 20, 20, 0x141C3C);
    expectColour(larger, 335, 245, 0xF4EEC8);  // the background that it names
    gif.replace(6, 4, "\xFF\xFF\xFF\xFF"s);
    EXPECT_NE(reasonOf(folder_.write("huge.gif", gif)).find("too large"), std::string::npos);
}

/// WIN-28
TEST_F(DecodedPictures, WhatIsHeldIsCountedAndLetGo) {
    const std::int64_t before = WindowsPictures::heldPixels();
    {
        const Picture first = pictures_.decode(sample("hills.bmp")).picture;
        EXPECT_EQ(WindowsPictures::heldPixels() - before, 320 * 240);
        pictures_.decodeAhead(sample("sunset.jpg"));
        finishHints();
        EXPECT_EQ(WindowsPictures::heldPixels() - before, 2 * 320 * 240);
    }
    EXPECT_NE(begin(folder_.in("none.jpg")).reason, "") << "lets what was decoded ahead go";
    EXPECT_EQ(WindowsPictures::heldPixels(), before);
}

/// WIN-28
TEST_F(DecodedPictures, AFileChangedAfterTheHintIsReadAgain) {
    const auto plain = [](int, int) { return 0x123456; };
    const std::string path = folder_.write("a.bmp", bitmap(20, 10, plain));
    pictures_.decodeAhead(path);
    EXPECT_EQ(begin(path).picture.width(), 20);
    pictures_.decodeAhead(path);
    finishHints();
    folder_.write("a.bmp", bitmap(50, 10, plain));
    EXPECT_EQ(begin(path).picture.width(), 50);
}

TEST_F(DecodedPictures, OnlyAbsurdSizesLackMemory) {
    Form form("frmTried", FormStyle::Media);
    PictureBox box(&form, "pctTried");
    EXPECT_NE(pictures_.paintStretched(box, 10, 10), 0) << "there is no picture";
    box.Picture = pictures_.decode(sample("hills.bmp")).picture;
    EXPECT_EQ(pictures_.paintStretched(box, 40000, 20000), 0);
    EXPECT_EQ(pictures_.paintStretched(box, 2e9F, 1), kOutOfMemoryForPicture);
    EXPECT_EQ(box.paintedWidth(), 40000.0F);
}

}  // namespace
}  // namespace corvane
