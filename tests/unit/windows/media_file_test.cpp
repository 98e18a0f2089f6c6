// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/media/media_file.h"

#include <gtest/gtest.h>

#include "contract/windows/media_rig.h"

namespace corvane {
namespace {

using namespace std::string_literals;

TEST(MediaFile, ASoundIsKnownByItsBytes) {
    EXPECT_EQ(contentOf("MThd\0\0\0\x06"s), MediaContent::Midi);
    EXPECT_EQ(contentOf("RIFF....RMIDdata"), MediaContent::Midi);
    EXPECT_EQ(contentOf("RIFF....WAVEfmt "), MediaContent::Wave);
    EXPECT_EQ(contentOf("RIFF....AVI LIST\0"s), MediaContent::Other);
    EXPECT_EQ(contentOf("ID3\x03\0\0"s), MediaContent::Other);
    EXPECT_EQ(contentOf("\xFF\xFB\x90\0"s), MediaContent::Other);
    EXPECT_EQ(contentOf("\xFF\xFE\x90\xFF\0"s), MediaContent::Other) << "a sound's header, not a text's mark";
}

/// What leads elsewhere is text: it must not reach a player, which would go there.
TEST(MediaFile, ListsAndDescriptionsAreRefused) {
    for (const std::string& text : {"#EXTM3U\r\nhttp://example.invalid/a.mp3\r\n"s, "[playlist]\nFile1=http://x/\n"s,
                                    "<asx version=\"3.0\"><entry><ref href=\"http://x/a.wma\"/></entry></asx>"s,
                                    "v=0\no=- 0 0 IN IP4 127.0.0.1\n"s, "http://127.0.0.1/a.ra\n"s, ""s,
                                    "\xFF\xFE<\0a\0s\0x\0"s, "\xEF\xBB\xBF<asx/>"s}) {
        EXPECT_EQ(contentOf(text), MediaContent::Text) << text;
        EXPECT_NE(refusalOf(contentOf(text)), "");
    }
    EXPECT_EQ(refusalOf(MediaContent::Other), "");
    EXPECT_NE(refusalOf(contentOfFile(L"C:\\there\\is\\no\\such.wav")), "");
}

TEST(MediaFile, ALongPathIsGivenShort) {
    const test::ScratchFolder folder;
    const std::wstring brief = toWide(folder.write("a.wav", "x"));
    EXPECT_EQ(pathForMci(brief), brief);
    const std::wstring lengthy = toWide(folder.write(std::string(120, 'n') + ".wav", "RIFF....WAVE"));
    ASSERT_GT(lengthy.size(), 127U);
    const std::wstring given = pathForMci(lengthy);
    EXPECT_LE(given.size(), 127U);
    EXPECT_EQ(contentOfFile(given), MediaContent::Wave);
}

}  // namespace
}  // namespace corvane
