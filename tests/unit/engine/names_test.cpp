// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "engine/mdlPublicFunction.h"
#include "types/numbers.h"

namespace corvane::mdlPublicFunction {
namespace {

/// KIND-01: The extension is what follows the first dot of the whole path, folders included, in capitals: song.Mp3 is
///     MP3
/// KIND-02: A dot in a folder's name counts: My.Music gives MUSIC/SONG.WAV
/// KIND-03: Without a dot the extension is the whole path
TEST(Names, TheExtensionIsWhatFollowsTheFirstDotInCapitals) {
    EXPECT_EQ(GetExtension("C:\\A\\song.Mp3"), "MP3");
    EXPECT_EQ(GetExtension("C:\\My.Music\\song.wav"), "MUSIC\\SONG.WAV");
    EXPECT_EQ(GetExtension("picture.jpeg.bmp"), "JPEG.BMP");
    EXPECT_EQ(GetExtension("/a/no dot"), "/A/NO DOT");
    EXPECT_EQ(GetExtension("x."), "");
    EXPECT_EQ(GetExtension("a.\xC3\xA9t\xC3\xA9"), "\xC3\x89T\xC3\x89") << "letters beyond ASCII have capitals too";
    EXPECT_EQ(GetExtension(""), "");
}

/// KIND-04: The base name is what stands in front of the first dot; without a dot the whole
TEST(Names, TheBaseNameIsWhatStandsInFrontOfTheFirstDot) {
    EXPECT_EQ(GetBaseName("D:\\Track05.cda"), "D:\\Track05");
    EXPECT_EQ(GetBaseName("a.b.mid"), "a");
    EXPECT_EQ(GetBaseName("no dot"), "no dot");
    EXPECT_EQ(GetBaseName(".mid"), "");
}

/// KIND-23: With NAMES the type is what follows the last dot of the file's own name, the title what is before it;
///     without, the first dot of the whole path counts
TEST(Names, WithTheConvenienceTheLastDotOfTheOwnNameCounts) {
    Conveniences ways;
    ways.names = true;
    EXPECT_EQ(typeOf(ways, "/My.Music/My.Song (live).flac"), "FLAC");
    EXPECT_EQ(typeOf(ways, "C:\\My.Music\\a b.Mp3"), "MP3");
    EXPECT_EQ(typeOf({}, "/My.Music/a.mp3"), "MUSIC/A.MP3");
    EXPECT_EQ(titleOf(ways, "My.Song (live).flac"), "My.Song (live)");
    EXPECT_EQ(titleOf({}, "My.Song (live).flac"), "My");
    EXPECT_EQ(titleOf(ways, "no dot"), "no dot");
    for (const char* none : {"", "/a.b/no dot", "/a/.mp3", ".mp3", "/a.mp3/", "a."})
        EXPECT_EQ(typeOf(ways, none), "") << none;
    EXPECT_EQ(titleOf(ways, ".mp3"), ".mp3") << "a hidden file, of no type";
    EXPECT_EQ(typeOf(ways, "/a/..mp3"), "MP3");
}

/// CMD-04: A piece counts when what follows its first dot, in capitals, is one of the 26 accepted kinds
/// DROP-03
TEST(Names, TwentySixExtensionsAreAccepted) {
    for (const char* each :
         {"CDA", "BMP", "JPEG", "JPG",  "GIF", "AVI", "MOV", "QT",  "MID", "RMI", "MPG", "MPV",  "MP2",
          "WAV", "MP3", "M1V",  "MPEG", "RA",  "RM",  "RAM", "RMM", "SND", "AU",  "AIF", "AIFC", "AIFF"}) {
        EXPECT_TRUE(MediaTypes().knows(each)) << each;
    }
    for (const char* each : {"", "TXT", "mp3", "MP", "MP33", "OGG", "PNG", "MUSIC/SONG.WAV"}) {
        EXPECT_FALSE(MediaTypes().knows(each)) << each;
    }
}

/// CMD-07, DROP-05
TEST(Names, ADoubledSeparatorAtTheThirdCharacterLosesOne) {
    EXPECT_EQ(withoutDoubledSeparator("C:\\\\a.mid", '\\'), "C:\\a.mid");
    EXPECT_EQ(withoutDoubledSeparator("C:\\\\a\\\\b.mid", '\\'), "C:\\a\\\\b.mid");
    EXPECT_EQ(withoutDoubledSeparator("C:\\a\\\\b.mid", '\\'), "C:\\a\\\\b.mid");
    EXPECT_EQ(withoutDoubledSeparator("\\\\s\\\\b.mid", '\\'), "\\\\s\\\\b.mid");
    EXPECT_EQ(withoutDoubledSeparator("/a//b.mid", '/'), "/a/b.mid");
    EXPECT_EQ(withoutDoubledSeparator("a", '/'), "a");
}

TEST(Names, ZeroPaddedKeepsTheSignInFront) {
    EXPECT_EQ(zeroPadded(7, 3), "007");
    EXPECT_EQ(zeroPadded(1234, 3), "1234");
    EXPECT_EQ(zeroPadded(-7, 2), "-07");
    EXPECT_EQ(zeroPadded(0, 2), "00");
    EXPECT_EQ(zeroPadded(5, -1), "5");
}

/// SET-28: A number counts only when the whole text is one, blanks around it allowed
TEST(Numbers, AreWholeTextsWithBlanksAroundThem) {
    EXPECT_EQ(parseNumber("500"), 500);
    EXPECT_EQ(parseNumber(" \t-12 "), -12);
    EXPECT_EQ(parseNumber("+3"), 3);
    EXPECT_EQ(parseNumber("007"), 7);
    for (const char* text : {"",  " ",  "x",     "5x",    "5 6", "--5",  "+",   ".",   "e5",   "1e",  "1e+",
                             "&", "&H", "&Hxyz", "&H1 2", "1,5", "0x10", "inf", "nan", "-&H5", "&O8", "1.2.3"}) {
        EXPECT_EQ(parseNumber(text), std::nullopt) << text;
    }
}

/// SET-27
TEST(Numbers, RoundHalvesToEven) {
    EXPECT_EQ(parseNumber("2.5"), 2);
    EXPECT_EQ(parseNumber("3.5"), 4);
    EXPECT_EQ(parseNumber("-2.5"), -2);
    EXPECT_EQ(parseNumber("-3.5"), -4);
    EXPECT_EQ(parseNumber("0.5"), 0);
    EXPECT_EQ(parseNumber("2.50001"), 3);
    EXPECT_EQ(parseNumber(".9"), 1);
    EXPECT_EQ(parseNumber("9."), 9);
    EXPECT_EQ(parseNumber("0.04"), 0);
}

/// SET-65: Numbers may have an exponent, be hexadecimal or octal, and are held inside 32 bits
TEST(Numbers, TakeAnExponent) {
    EXPECT_EQ(parseNumber("1e3"), 1000);
    EXPECT_EQ(parseNumber("25E-1"), 2);
    EXPECT_EQ(parseNumber("35e-1"), 4);
    EXPECT_EQ(parseNumber("0.0005D+4"), 5);
    EXPECT_EQ(parseNumber("1e-99999999999999999999"), 0);
    EXPECT_EQ(parseNumber("0e99999999999999999999"), 0);
}

/// SET-65
TEST(Numbers, AreHeldInside32Bits) {
    EXPECT_EQ(parseNumber("2147483647"), 2147483647);
    EXPECT_EQ(parseNumber("2147483648"), 2147483647);
    EXPECT_EQ(parseNumber("-2147483648"), -2147483647 - 1);
    EXPECT_EQ(parseNumber("-99999999999"), -2147483647 - 1);
    EXPECT_EQ(parseNumber("1e400"), 2147483647);
    EXPECT_EQ(parseNumber(std::string(100'000, '9')), 2147483647);
    EXPECT_EQ(parseNumber(std::string(100'000, '0') + "12"), 12);
    EXPECT_EQ(parseNumber("0." + std::string(100'000, '0') + "1e100001"), 1);
}

/// SET-65
TEST(Numbers, MayBeHexadecimalOrOctal) {
    EXPECT_EQ(parseNumber("&HFF"), 255);
    EXPECT_EQ(parseNumber("&hff00"), 65280);
    EXPECT_EQ(parseNumber("&HFF&"), 255);
    EXPECT_EQ(parseNumber("&O17"), 15);
    EXPECT_EQ(parseNumber("&HFFFFFFFF"), -1);
    EXPECT_EQ(parseNumber("&H1FFFFFFFFF"), 2147483647);
    EXPECT_EQ(parseNumber("&H" + std::string(1000, 'F')), 2147483647);
}

}  // namespace
}  // namespace corvane::mdlPublicFunction
