// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/media_content.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using namespace std::string_literals;

/// WIN-17: A sound's device is chosen by its content, whatever its name
TEST(MediaContents, ASoundIsKnownByItsBytes) {
    EXPECT_EQ(contentOf("MThd\0\0\0\x06"s), MediaContent::Midi);
    EXPECT_EQ(contentOf("RIFF....RMIDdata"), MediaContent::Midi);
    EXPECT_EQ(contentOf("RIFF....WAVEfmt "), MediaContent::Wave);
    EXPECT_EQ(contentOf("RIFF....WAVE"), MediaContent::Wave) << "no more than that is looked at";
    EXPECT_EQ(contentOf("RIFF....WEBP"), MediaContent::Picture);
    EXPECT_EQ(contentOf("RIFF....WAV"), MediaContent::Text);
    EXPECT_EQ(contentOf("RIFF....AVI LIST\0"s), MediaContent::Other);
    EXPECT_EQ(contentOf("ID3\x03\0\0"s), MediaContent::Other);
    EXPECT_EQ(contentOf("\xFF\xFB\x90\0"s), MediaContent::Other);
    EXPECT_EQ(contentOf("\xFF\xFE\x90\xFF\0"s), MediaContent::Other) << "a sound's header, not a text's mark";
}

/// What leads elsewhere is text: it must not reach a player, which would go there.
/// WIN-18: Lists and descriptions inside media files are not followed
TEST(MediaContents, ListsAndDescriptionsAreRefused) {
    for (const std::string& text : {"#EXTM3U\r\nhttp://example.invalid/a.mp3\r\n"s, "[playlist]\nFile1=http://x/\n"s,
                                    "<asx version=\"3.0\"><entry><ref href=\"http://x/a.wma\"/></entry></asx>"s,
                                    "v=0\no=- 0 0 IN IP4 127.0.0.1\n"s, "http://127.0.0.1/a.ra\n"s, ""s,
                                    "\xFF\xFE<\0a\0s\0x\0"s, "\xEF\xBB\xBF<asx/>"s}) {
        EXPECT_EQ(contentOf(text), MediaContent::Text) << text;
        EXPECT_NE(refusalOf(contentOf(text)), "");
    }
    EXPECT_EQ(refusalOf(MediaContent::Other), "");
    EXPECT_NE(refusalOf(MediaContent::Missing), "");
}

/// The system's players decode a picture of any size, and go on doing so.
/// WIN-59: A picture is neither a sound nor a movie
TEST(MediaContents, PicturesAreNoSounds) {
    for (const std::string& bytes :
         {"\x89PNG\r\n\x1A\n\0\0"s, "\xFF\xD8\xFF\xE0\0\x10"s, "GIF89a\x01\0"s, "II*\0\x08\0"s, "MM\0*\0\0"s,
          "BM\x36\0\0\0\0\0\0\0\x36\0\0\0\x28\0"s, "RIFF\x10\0\0\0WEBPVP8 "s, "\0\0\x01\0\x01\0"s}) {
        EXPECT_EQ(contentOf(bytes), MediaContent::Picture) << bytes;
    }
    EXPECT_NE(refusalOf(MediaContent::Picture), "");
    EXPECT_EQ(contentOf("\0\0\x01\xBA\x44\0"s), MediaContent::Other) << "a movie of packs";
    EXPECT_EQ(contentOf("\0\0\0\x18"
                        "ftypmp42"s),
              MediaContent::Other);
    EXPECT_EQ(contentOf("BMxx\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C"s), MediaContent::Other);
}

}  // namespace
}  // namespace corvane
