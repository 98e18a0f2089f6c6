// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/picture_check.h"

#include <gtest/gtest.h>

#include "pictures/picture_budget.h"
#include "unit/pictures/picture_bytes.h"

namespace corvane {
namespace {

using namespace std::string_literals;
using test::Bytes;
using test::whole;

int orientation(const std::string& bytes) {
    Bytes file(bytes);
    return orientationOf(file);
}

/// PIC-23: A file that ends before its picture does is damaged; what a camera adds behind it does not count
TEST(PictureCheck, ABitmapIsAsLongAsItsHeaderSays) {
    std::string bitmap(54, '\0');
    bitmap.replace(0, 2, "BM");
    bitmap[10] = 54;
    bitmap[14] = 40;
    bitmap[18] = 3;  // 3 pixels of 24 bits: lines of 12 bytes
    bitmap[22] = 2;
    bitmap[28] = 24;
    EXPECT_FALSE(whole(bitmap + std::string(23, 'x')));
    EXPECT_TRUE(whole(bitmap + std::string(24, 'x')));
    bitmap.replace(22, 4, "\xFE\xFF\xFF\xFF");  // from the top down
    EXPECT_FALSE(whole(bitmap + std::string(23, 'x')));
    EXPECT_TRUE(whole(bitmap + std::string(24, 'x')));
    EXPECT_FALSE(whole("BM"));
}

/// PIC-23
TEST(PictureCheck, ABitmapOfTheOldHeaderMayBeSmallerThanANewHeader) {
    std::string bitmap = "BM\0\0\0\0\0\0\0\0\x20\0\0\0"s;                     // the pixels lie behind two colours
    bitmap += "\x0C\0\0\0\x05\0\x02\0\x01\0\x01\0"s + "\0\0\0\xFF\xFF\xFF"s;  // 5 by 2 of one bit
    EXPECT_TRUE(whole(bitmap + "\x50\0\0\0\xA0\0\0\0"s));
    EXPECT_FALSE(whole(bitmap + "\x50\0\0\0\xA0\0\0"s));
    EXPECT_FALSE(whole(bitmap.substr(0, 25)));
}

/// A segment of a JPEG file.
std::string segment(char mark, const std::string& content) {
    const std::size_t length = content.size() + 2;
    return "\xFF"s + mark + static_cast<char>(length >> 8) + static_cast<char>(length & 0xFF) + content;
}

/// With a thumbnail of marks of its own, filling bytes, coded bytes that look like marks, and restarts.
std::string jpeg() {
    return "\xFF\xD8"s + segment('\xE1', "Exif \xFF\xD8\xFF\xDA thumbnail \xFF\xD9") + "\xFF\xFF"s +
           segment('\xC2', "sizes") + segment('\xDA', "first") + "coded \xFF\0 and \xFF\xD0 on"s +
           segment('\xC4', std::string(300, '\xFF')) + segment('\xDA', "second") + "more\xFF\xD7."s + "\xFF\xD9"s;
}

JpegWork work(const std::string& bytes) {
    Bytes file(bytes);
    return jpegWorkOf(file);
}

/// 100 rows of 50, three colours, of which the first is twice as fine both ways.
TEST(PictureCheck, AJpegTellsItsScansAndSamples) {
    const std::string frame = segment('\xC2', "\x08\0\x64\0\x32\x03\x01\x22\0\x02\x11\x01\x03\x11\x01"s);
    const std::string scan = segment('\xDA', "one") + "coded\xFF\0"s;
    EXPECT_EQ(work("\xFF\xD8" + frame + scan + "\xFF\xD9").scans, 1);
    const JpegWork several =
        work("\xFF\xD8" + segment('\xE1', "Exif\xFF\xDA") + frame + scan + scan + scan + "\xFF\xD9");
    EXPECT_EQ(several.scans, 3) << "a note holds none";
    EXPECT_EQ(several.size, (PictureSize{50, 100}));
    EXPECT_EQ(several.samples, 64 * (7 * 13 + 4 * 7 + 4 * 7));
    EXPECT_EQ(work("\xFF\xD8" + frame).samples, several.samples) << "cut off";
    EXPECT_EQ(work("\xFF\xD8" + segment('\xC0', "\x08\xFF\xFF"s)).samples, 0);
    EXPECT_EQ(work("\xFF\xD8" + segment('\xC4', std::string(20, '\x11'))).samples, 0) << "a table";
    EXPECT_EQ(work("GIF89a").scans, 0);
}

/// PIC-23
TEST(PictureCheck, AJpegEndsWithTheMarkThatItsOtherPartsLeadTo) {
    const std::string all = jpeg();
    EXPECT_TRUE(whole(all));
    for (std::size_t length = 4; length < all.size(); ++length) EXPECT_FALSE(whole(all.substr(0, length))) << length;
}

/// PIC-23
TEST(PictureCheck, WhatACameraAddsBehindAJpegDoesNotCount) {
    EXPECT_TRUE(whole(jpeg() + "\xFF\xDA a film \xFF\xDA"));
    EXPECT_TRUE(whole(jpeg() + std::string(3'000'000, '.')));
    EXPECT_FALSE(whole("\xFF\xD8"s + segment('\xDA', "") + std::string(3'000'000, '.')));
    EXPECT_TRUE(whole("\xFF\xD8"s + segment('\xDA', "") + std::string(3'000'000, '.') + "\xFF\xD9"));
}

/// PIC-23
TEST(PictureCheck, AGifEndsWithItsTrailer) {
    const std::string picture = ",\0\0\0\0\x02\0\x01\0\x80"s + "colour" + "\x02\x03;;;\x01;\0"s;
    const std::string gif = "GIF89a\x02\0\x01\0\x80\0\0"s + "colour" + "!\xFE\x02;;\0"s + picture + picture;
    EXPECT_TRUE(whole(gif + ";"));
    EXPECT_TRUE(whole(gif + ";\0\0"s));
    EXPECT_TRUE(whole(gif + "; and what somebody added"));
    EXPECT_TRUE(whole(gif + "\0"s)) << "its pictures are there";
    for (std::size_t length = 4; length <= gif.size(); ++length) EXPECT_FALSE(whole(gif.substr(0, length))) << length;
    EXPECT_FALSE(whole(gif.substr(0, gif.size() - 2 * picture.size()) + "\0"s)) << "no picture";
}

/// PIC-23
TEST(PictureCheck, APngEndsWithItsLastPart) {
    const std::string head = "\x89PNG\r\n\x1A\n"s + "\0\0\0\x04IDATIENDsum."s;
    EXPECT_FALSE(whole(head));
    EXPECT_TRUE(whole(head + "\0\0\0\0IENDsum."s));
    EXPECT_TRUE(whole(head + "\0\0\0\0IENDsum."s + std::string(100'000, '.')));
    EXPECT_TRUE(whole("anything else"));
}

std::string jpegTurned(char value, bool bigFirst) {
    const std::string notes = bigFirst ? "MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0"s + value + "\0\0\0\0\0\0"s
                                       : "II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0"s + value + "\0\0\0\0\0\0\0"s;
    return "\xFF\xD8\xFF\xE0\0\x04..\xFF\xE1\0"s + static_cast<char>(notes.size() + 8) + "Exif\0\0"s + notes +
           "\xFF\xDA\0\0"s;
}

/// PIC-20
TEST(PictureCheck, ReadsHowAJpegIsToBeTurned) {
    for (const bool bigFirst : {true, false}) {
        EXPECT_EQ(orientation(jpegTurned(6, bigFirst)), 6) << bigFirst;
        EXPECT_EQ(orientation(jpegTurned(8, bigFirst)), 8) << bigFirst;
        EXPECT_EQ(orientation(jpegTurned(9, bigFirst)), 1) << bigFirst;
    }
    EXPECT_TRUE(swapsSides(5));
    EXPECT_FALSE(swapsSides(4));
    EXPECT_EQ(orientation("\xFF\xD8\xFF\xDA\0\x04.."s), 1);
    const std::string turned = jpegTurned(6, true);
    for (std::size_t length = 0; length < turned.size(); ++length) {
        const int read = orientation(turned.substr(0, length));  // never beyond the end
        EXPECT_TRUE(read == 1 || read == 6) << length;
    }
    EXPECT_EQ(orientation("BM"), 1);
}

/// PIC-22
TEST(PictureBudget, ReducesWhatWouldHoldTooMuch) {
    const PictureSize largest{6000, 3000}, twice{12000, 6000};
    ASSERT_EQ(largest.pixels(), kMaxHeldPixels);
    EXPECT_EQ(sizeToHold(largest, 0), largest);
    EXPECT_EQ(sizeToHold(twice, 0), largest);
    EXPECT_EQ(sizeToHold(largest, kMaxHeldTogether - kMaxHeldPixels / 4), (PictureSize{3464, 1732}))
        << "a third is always free";
    EXPECT_EQ(sizeToHold({65535, 1}, 0), (PictureSize{65535, 1}));
}

/// PIC-22
TEST(PictureBudget, CountsWhatADecoderNeeds) {
    EXPECT_EQ(roomForPixels(0, 1'000'000), kMaxHeldPixels);
    EXPECT_EQ(roomForPixels(0, 30'000'000), 6'000'000);
    EXPECT_EQ(roomForPixels(0, 50'000'000), 6'000'000) << "for as long as it decodes";
    EXPECT_EQ(roomForPixels(0, 59'000'000), 1'000'000);
    EXPECT_LT(roomForPixels(0, 60'000'000), 1);
    EXPECT_LT(roomForPixels(12'000'000, 50'000'000), 1);
    EXPECT_EQ(sizeToHold({10, 10}, 12'000'000, 50'000'000).pixels(), 0);
}

/// 300 by 2 pixels, whose rows are behind the header.
std::string bitmap(char bits, char compression) {
    std::string header(54, '\0');
    header.replace(0, 2, "BM");
    header[10] = 54;
    header[14] = 40;
    header[18] = 44;
    header[19] = 1;
    header[22] = 2;
    header[28] = bits;
    header[30] = compression;
    return header;
}

TEST(PictureCheck, OnlyABitmapWithoutRunsSaysHowLongItIs) {
    for (const char plain : {'\0', '\3'}) {
        EXPECT_TRUE(whole(bitmap(8, plain) + std::string(600, '.')));
        EXPECT_FALSE(whole(bitmap(8, plain) + std::string(599, '.')));
    }
    EXPECT_TRUE(whole(bitmap(8, 1) + "...")) << "its decoder must tell";
    EXPECT_TRUE(whole(bitmap(4, 2) + "..."));
    EXPECT_TRUE(whole(bitmap(1, 0) + std::string(80, '.'))) << "300 bits are 40 bytes";
    EXPECT_FALSE(whole(bitmap(1, 0) + std::string(79, '.')));
}

TEST(PictureCheck, AnAbsurdWidthIsLeftToTheReaderAndNoneIsNot) {
    std::string bytes = bitmap(8, 0);
    bytes.replace(18, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_TRUE(whole(bytes));
    bytes.replace(18, 4, 4, '\0');
    EXPECT_TRUE(whole(bytes));
    bytes[10] = 100;  // the rows would lie behind the end
    EXPECT_FALSE(whole(bytes));
}

std::string jpegWithNotes(const std::string& notes, const std::string& before = {}) {
    return "\xFF\xD8"s + before + "\xFF\xE1\0"s + static_cast<char>(notes.size() + 8) + "Exif\0\0"s + notes +
           "\xFF\xDA\0\0"s;
}

TEST(PictureCheck, TheOrientationIsFoundBehindOtherNotesAndParts) {
    const std::string first = "\x01\x0F\0\x02\0\0\0\x04.\x08.."s;  // another note, of twelve bytes
    const std::string turned = "\x01\x12\0\x03\0\0\0\x01\0\x08\0\0"s;
    const std::string notes = "MM\0*\0\0\0\x08\0\x03"s + first + first + turned;
    EXPECT_EQ(orientation(jpegWithNotes(notes)), 8);
    EXPECT_EQ(orientation(jpegWithNotes(notes, "\xFF\xE0\0\x06....\xFF\xE2\0\x02"s)), 8);
    EXPECT_EQ(orientation(jpegWithNotes(notes, "\xFF\xDA\0\x02"s)), 1) << "behind the picture";
    EXPECT_EQ(orientation(jpegWithNotes(notes, "\xFF\xE0\0\x01"s)), 1) << "a part shorter than its own length";
    EXPECT_EQ(orientation(jpegWithNotes("XX" + notes.substr(2))), 1);
    for (char value = 1; value <= 8; ++value) {
        std::string each = notes;
        each[each.size() - 3] = value;
        EXPECT_EQ(orientation(jpegWithNotes(each)), value);
    }
}

TEST(PictureCheck, MarksThatStandAloneHaveNoLength) {
    // Taken for a length, what follows would lead beyond the end of the file.
    for (const char mark : {'\x01', '\xD0', '\xD7', '\xD8'}) {
        EXPECT_TRUE(whole("\xFF\xD8\xFF\xDA\0\x02.."s + '\xFF' + mark + "\x7F\x7F\xFF\xD9")) << int{mark};
    }
    for (const char mark : {'\x02', '\xCF', '\xDA'}) {
        EXPECT_FALSE(whole("\xFF\xD8\xFF\xDA\0\x02.."s + '\xFF' + mark + "\x7F\x7F\xFF\xD9")) << int{mark};
    }
}

TEST(PictureCheck, APartOfAJpegIsAsLongAsItSays) {
    EXPECT_TRUE(whole("\xFF\xD8\xFF\xE1\0\x05...\xFF\xD9"s));
    EXPECT_TRUE(whole("\xFF\xD8\xFF\xE1\0\x02\xFF\xD9"s));
    EXPECT_FALSE(whole("\xFF\xD8\xFF\xE1\0\x04\xFF\xD9"s)) << "the mark lies in it";
    EXPECT_FALSE(whole("\xFF\xD8\xFF\xE1\1\x04\xFF\xD9"s + std::string(200, '.') + "\xFF\xD9"s));
}

}  // namespace
}  // namespace corvane
