// SPDX-License-Identifier: GPL-3.0-or-later
// Which of today's kinds the decoding libraries say that they play.
#include "media/sound/av_kinds.h"

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "media/sound/av_library.h"

namespace corvane {
namespace {

/// Libraries that were built with less; the whole ones are back afterwards.
struct AvKinds : ::testing::Test {
    AvKinds() : there(loadAv()), library(const_cast<AvLibrary&>(av())), whole(library) {}
    ~AvKinds() override { library = whole; }

    const bool there;
    AvLibrary& library;
    const AvLibrary whole;
};

const AVInputFormat* noMatroska(const char* name) {
    static const AVInputFormat some{};
    return std::strcmp(name, "matroska") == 0 ? nullptr : &some;
}

const AVInputFormat* anyFormat(const char* /*name*/) {
    static const AVInputFormat some{};
    return &some;
}

const AVCodec* noDecoder(const char* /*name*/) { return nullptr; }

std::string askedFor;

const AVCodec* anyDecoder(const char* name) {
    static const AVCodec some{};
    askedFor = name;
    return &some;
}

/// KIND-27: A kind is played where the libraries have its format's reader and its decoder, not where they lack one
TEST_F(AvKinds, AreAskedOfTheLibraries) {
    if (!there) GTEST_SKIP() << "no decoding libraries";
    for (const char* kind : {"FLAC", "OPUS", "MKA", "WEBM", "MP4"}) EXPECT_TRUE(avPlays(kind)) << kind;
    EXPECT_FALSE(avPlays("EXE")) << "a kind that nobody knows";
    library.avcodec_find_decoder_by_name = noDecoder;
    for (const char* kind : {"FLAC", "OPUS", "MKA", "WEBM", "MP4"}) EXPECT_FALSE(avPlays(kind)) << kind;
    library = whole;
    library.av_find_input_format = noMatroska;
    for (const char* kind : {"MKA", "WEBM", "MKV"}) EXPECT_FALSE(avPlays(kind)) << kind;
    EXPECT_TRUE(avPlays("FLAC")) << "the others are there as before";
}

/// KIND-28: The decoder that is asked for is the one of what files of that kind hold as a rule
TEST_F(AvKinds, EachIsAskedForByItsUsualDecoder) {
    if (!there) GTEST_SKIP() << "no decoding libraries";
    library.av_find_input_format = anyFormat;
    library.avcodec_find_decoder_by_name = anyDecoder;
    for (const auto& [decoder, kinds] : std::initializer_list<std::pair<const char*, std::vector<const char*>>>{
             {"flac", {"FLAC"}},
             {"vorbis", {"OGG", "OGA", "MKA"}},
             {"opus", {"OPUS"}},
             {"aac", {"AAC", "M4A", "M4B"}},
             {"wmav2", {"WMA"}},
             {"theora", {"OGV"}},
             {"vp9", {"WEBM"}},
             {"wmv2", {"WMV"}},
             {"mpeg2video", {"VOB"}},
             {"mpeg4", {"DIVX"}},
             {"h263", {"3GP", "3G2"}},
             {"h264", {"MP4", "M4V", "MKV", "TS", "M2TS", "MTS"}},
             {"", {"MOD", "S3M", "XM", "IT"}}}) {
        for (const char* kind : kinds) {
            askedFor.clear();
            EXPECT_TRUE(avPlays(kind)) << kind;
            EXPECT_EQ(askedFor, decoder) << kind;
        }
    }
}

}  // namespace
}  // namespace corvane
