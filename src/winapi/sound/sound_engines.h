// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/media_content.h"
#include "winapi/sound/mf_library.h"

namespace corvane {

/// What the system plays sounds with.
enum class SoundEngine {
    Sequencer,        ///< MCI, for MIDI
    WaveAudio,        ///< MCI
    MpegVideo,        ///< MCI over the filter graph
    ByName,           ///< what MCI itself chooses by the file's name
    MediaFoundation,  ///< the system's decoders of today, on the wave output
};

/// Which engines are tried for a sound, in this order: the first that takes it plays it, and where none does the first
/// one's reason is told.
/// start: the file's first bytes; content: what they are; changed: it is to be played louder or softer than recorded,
/// which no device of MCI does.
std::vector<SoundEngine> enginesFor(std::string_view start, MediaContent content, bool changed);

/// Sounds of today that Media Foundation is asked about.
struct SoundOfToday {
    const char* extension;
    const GUID* codec;  ///< what must be decoded in such a file, as a rule
};
const std::vector<SoundOfToday>& soundsOfToday();

/// What the system answers.
struct MfAnswers {
    std::function<bool(const std::string& extension)> opens;  ///< something is registered that opens such files
    std::function<bool(const GUID& codec)> decodes;           ///< something is registered that decodes it
    static MfAnswers ofSystem(const MfLibrary& library = MfLibrary::installed());
};

/// Whether files of that extension (in capitals) may be played here: they are among those of today, and the system says
/// that it has something for them. What it cannot decode after all fails when it is opened.
bool playsToday(std::string_view extension, const MfAnswers& answers);

}  // namespace corvane
