// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <string>

#include "unit/pictures/picture_bytes.h"

namespace corvane {
namespace {

using namespace std::string_literals;
using test::Bytes;
using test::whole;

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

TEST(PictureCheckDetails, OnlyABitmapWithoutRunsSaysHowLongItIs) {
    for (const char plain : {'\0', '\3'}) {
        EXPECT_TRUE(whole(bitmap(8, plain) + std::string(600, '.')));
        EXPECT_FALSE(whole(bitmap(8, plain) + std::string(599, '.')));
    }
    EXPECT_TRUE(whole(bitmap(8, 1) + "...")) << "its decoder must tell";
    EXPECT_TRUE(whole(bitmap(4, 2) + "..."));
    EXPECT_TRUE(whole(bitmap(1, 0) + std::string(80, '.'))) << "300 bits are 40 bytes";
    EXPECT_FALSE(whole(bitmap(1, 0) + std::string(79, '.')));
}

TEST(PictureCheckDetails, AnAbsurdWidthIsLeftToTheReaderAndNoneIsNot) {
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

int orientation(const std::string& bytes) {
    Bytes file(bytes);
    return orientationOf(file);
}

TEST(PictureCheckDetails, TheOrientationIsFoundBehindOtherNotesAndParts) {
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

TEST(PictureCheckDetails, MarksThatStandAloneHaveNoLength) {
    // Taken for a length, what follows would lead beyond the end of the file.
    for (const char mark : {'\x01', '\xD0', '\xD7', '\xD8'}) {
        EXPECT_TRUE(whole("\xFF\xD8\xFF\xDA\0\x02.."s + '\xFF' + mark + "\x7F\x7F\xFF\xD9")) << int{mark};
    }
    for (const char mark : {'\x02', '\xCF', '\xDA'}) {
        EXPECT_FALSE(whole("\xFF\xD8\xFF\xDA\0\x02.."s + '\xFF' + mark + "\x7F\x7F\xFF\xD9")) << int{mark};
    }
}

TEST(PictureCheckDetails, APartOfAJpegIsAsLongAsItSays) {
    EXPECT_TRUE(whole("\xFF\xD8\xFF\xE1\0\x05...\xFF\xD9"s));
    EXPECT_TRUE(whole("\xFF\xD8\xFF\xE1\0\x02\xFF\xD9"s));
    EXPECT_FALSE(whole("\xFF\xD8\xFF\xE1\0\x04\xFF\xD9"s)) << "the mark lies in it";
    EXPECT_FALSE(whole("\xFF\xD8\xFF\xE1\1\x04\xFF\xD9"s + std::string(200, '.') + "\xFF\xD9"s));
}

}  // namespace
}  // namespace corvane
