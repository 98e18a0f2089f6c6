// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/sound/sound_engines.h"

#include <algorithm>
#include <cstdint>

#include "winapi/text.h"

namespace corvane {

namespace {

using namespace std::string_view_literals;
using Engines = std::vector<SoundEngine>;

/// What the first bytes of a file say of whose it is.
struct Kind {
    bool (*is)(std::string_view start, MediaContent content);
    Engines engines;
};

bool isMidi(std::string_view /*start*/, MediaContent content) { return content == MediaContent::Midi; }
bool isWave(std::string_view /*start*/, MediaContent content) { return content == MediaContent::Wave; }
bool isAny(std::string_view /*start*/, MediaContent /*content*/) { return true; }

/// FLAC, Ogg, MP4, ASF, Matroska, and AAC without a container.
bool isOfToday(std::string_view start, MediaContent /*content*/) {
    const auto byte = [start](std::size_t at) { return at < start.size() ? static_cast<std::uint8_t>(start[at]) : 0U; };
    const bool adts = byte(0) == 0xFFU && (byte(1) & 0xF6U) == 0xF0U;
    return adts || start.starts_with("fLaC") || start.starts_with("OggS") || start.starts_with("\x1A\x45\xDF\xA3"sv) ||
           start.starts_with("\x30\x26\xB2\x75"sv) || (start.size() > 8 && start.substr(4, 4) == "ftyp");
}

/// The one table of which engine plays what: the first line that holds.
const std::vector<Kind>& kinds() {
    using enum SoundEngine;
    static const std::vector<Kind> all{
        {isMidi, {Sequencer}},
        {isWave, {WaveAudio, MpegVideo, ByName, MediaFoundation}},
        {isOfToday, {MediaFoundation, MpegVideo, ByName}},
        {isAny, {MpegVideo, ByName, MediaFoundation}},
    };
    return all;
}

bool hasHandler(const std::string& extension) {
    const std::wstring key =
        L"SOFTWARE\\Microsoft\\Windows Media Foundation\\ByteStreamHandlers\\." + toWide(extension);
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        HKEY found = nullptr;
        if (RegOpenKeyExW(root, key.c_str(), 0, KEY_READ, &found) != ERROR_SUCCESS) continue;
        RegCloseKey(found);
        return true;
    }
    return false;
}

bool hasDecoder(const MfLibrary& library, const GUID& codec) {
    const MfUse use(library);
    if (!use) return false;
    const MFT_REGISTER_TYPE_INFO wanted{MFMediaType_Audio, codec};
    IMFActivate** found = nullptr;
    UINT32 count = 0;
    const auto flags = static_cast<UINT32>(MFT_ENUM_FLAG_SYNCMFT | MFT_ENUM_FLAG_ASYNCMFT);
    if (FAILED(library.enumerate(MFT_CATEGORY_AUDIO_DECODER, flags, &wanted, nullptr, &found, &count))) return false;
    for (UINT32 i = 0; i < count; ++i) found[i]->Release();
    CoTaskMemFree(static_cast<void*>(found));
    return count > 0;
}

}  // namespace

Engines enginesFor(std::string_view start, MediaContent content, bool changed) {
    const auto kind =
        std::find_if(kinds().begin(), kinds().end(), [&](const Kind& each) { return each.is(start, content); });
    Engines engines = kind->engines;
    const auto able = std::find(engines.begin(), engines.end(), SoundEngine::MediaFoundation);
    if (changed && able != engines.end()) std::rotate(engines.begin(), able, able + 1);
    return engines;
}

const std::vector<SoundOfToday>& soundsOfToday() {
    static const std::vector<SoundOfToday> all{
        {"FLAC", &MFAudioFormat_FLAC}, {"OGG", &MFAudioFormat_Vorbis},    {"OGA", &MFAudioFormat_Vorbis},
        {"OPUS", &MFAudioFormat_Opus}, {"M4A", &MFAudioFormat_AAC},       {"M4B", &MFAudioFormat_AAC},
        {"AAC", &MFAudioFormat_AAC},   {"WMA", &MFAudioFormat_WMAudioV8}, {"MKA", nullptr},
    };
    return all;
}

bool playsToday(std::string_view extension, const MfAnswers& answers) {
    const auto& all = soundsOfToday();
    const auto row = std::find_if(all.begin(), all.end(),
                                  [extension](const SoundOfToday& each) { return each.extension == extension; });
    if (row == all.end()) return false;
    return answers.opens(row->extension) || (row->codec != nullptr && answers.decodes(*row->codec));
}

MfAnswers MfAnswers::ofSystem(const MfLibrary& library) {
    return {[&library](const std::string& extension) { return library.isThere() && hasHandler(extension); },
            [&library](const GUID& codec) { return hasDecoder(library, codec); }};
}

}  // namespace corvane
