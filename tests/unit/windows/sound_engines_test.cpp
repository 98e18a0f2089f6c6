// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/sound/sound_engines.h"

#include <gtest/gtest.h>

#include <set>

#include "types/media_types.h"

namespace corvane {
namespace {

using enum SoundEngine;
using Engines = std::vector<SoundEngine>;
using namespace std::string_literals;

Engines enginesOf(const std::string& start, bool changed = false) {
    return enginesFor(start, contentOf(start), changed);
}

/// WIN-84: One table says which engine plays what, by a file's first bytes
TEST(SoundEngines, AreChosenByTheFirstBytes) {
    EXPECT_EQ(enginesOf("MThd\0\0\0\6"s), Engines{Sequencer});
    EXPECT_EQ(enginesOf("RIFF\0\0\0\0WAVE"s), (Engines{WaveAudio, MpegVideo, ByName, MediaFoundation}));
    EXPECT_EQ(enginesOf("\xFF\xFB\x90\0"s), (Engines{MpegVideo, ByName, MediaFoundation})) << "MP3";
    EXPECT_EQ(enginesOf("ID3\3\0"s), (Engines{MpegVideo, ByName, MediaFoundation}));
    for (const std::string& start :
         {"fLaC\0"s, "OggS\0"s,
          "\0\0\0\x20"
          "ftypM4A "s,
          "\x30\x26\xB2\x75\x8E"s, "\x1A\x45\xDF\xA3"s, "\xFF\xF1\x50\x80"s, "\xFF\xF9\x50\x80"s}) {
        EXPECT_EQ(enginesOf(start), (Engines{MediaFoundation, MpegVideo, ByName})) << start;
    }
    EXPECT_EQ(enginesOf(""), (Engines{MpegVideo, ByName, MediaFoundation}));
}

/// WIN-84
TEST(SoundEngines, WhatIsPlayedLouderIsNotLeftToMci) {
    EXPECT_EQ(enginesOf("RIFF\0\0\0\0WAVE"s, true), (Engines{MediaFoundation, WaveAudio, MpegVideo, ByName}));
    EXPECT_EQ(enginesOf("\xFF\xFB\x90\0"s, true), (Engines{MediaFoundation, MpegVideo, ByName}));
    EXPECT_EQ(enginesOf("MThd\0\0\0\6"s, true), Engines{Sequencer}) << "there is nothing else";
}

/// WIN-85: Kinds of today are played where the system says that it has something for them, and are none elsewhere
TEST(SoundEngines, TheSystemIsAskedForTheKindsOfToday) {
    const auto no = [](const auto&) { return false; };
    EXPECT_FALSE(playsToday("FLAC", {no, no}));
    EXPECT_TRUE(playsToday("FLAC", {[](const std::string& ending) { return ending == "FLAC"; }, no}));
    const auto flac = [](const GUID& codec) { return codec == MFAudioFormat_FLAC; };
    EXPECT_TRUE(playsToday("FLAC", {no, flac}));
    EXPECT_FALSE(playsToday("M4A", {no, flac}));
    const auto yes = [](const auto&) { return true; };
    EXPECT_FALSE(playsToday("APE", {yes, yes})) << "nobody would be asked to play it";
    EXPECT_FALSE(playsToday("MP4", {yes, yes})) << "a movie";
}

/// WIN-85
TEST(SoundEngines, WhatIsAskedAboutIsASoundOfToday) {
    std::set<std::string> sounds;
    for (const MediaType& type : typesOfToday()) {
        if (type.kind == mdlDefinePublic::mkMciFile) sounds.insert(type.extension);
    }
    for (const SoundOfToday& each : soundsOfToday()) EXPECT_EQ(sounds.count(each.extension), 1U) << each.extension;
}

}  // namespace
}  // namespace corvane
