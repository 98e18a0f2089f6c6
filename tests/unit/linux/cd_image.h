// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <string>
#include <vector>

#include "discs/cd_arithmetic.h"

namespace corvane::test {

/// One track of an image: a tone (hertz) of some sectors. 0 hertz: a data track.
struct ImageTrack {
    double hertz = 0;
    int sectors = 0;
};

/// A folder of its own that is gone afterwards.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "corvane-disc-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    std::filesystem::path path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// Writes NAME.cue and NAME.bin into the folder; each track's tone starts at its zero, half of full scale.
/// Returns the path of the .cue file.
inline std::string writeImage(const std::filesystem::path& folder, const std::string& name,
                              const std::vector<ImageTrack>& tracks) {
    std::ofstream cue(folder / (name + ".cue"), std::ios::binary);
    std::ofstream bin(folder / (name + ".bin"), std::ios::binary);
    cue << "FILE \"" << name << ".bin\" BINARY\n";
    int sector = 0;
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        char line[100];
        std::snprintf(line, sizeof line, "  TRACK %02d %s\n    INDEX 01 %02d:%02d:%02d\n", static_cast<int>(i) + 1,
                      tracks[i].hertz > 0 ? "AUDIO" : "MODE1/2352", sector / kCdSectorsPerMinute,
                      sector / kCdSectorsPerSecond % 60, sector % kCdSectorsPerSecond);
        cue << line;
        const int frames = tracks[i].sectors * kCdFramesPerSector;
        for (int frame = 0; frame < frames; ++frame) {
            // A data track holds bytes that would sound.
            const double hertz = tracks[i].hertz > 0 ? tracks[i].hertz : 1000;
            const double phase = 2 * std::numbers::pi * hertz * frame / kCdSampleRate;
            const auto value = static_cast<std::int16_t>(std::lround(16384 * std::sin(phase)));
            const auto low = static_cast<char>(value & 0xFF);
            const auto high = static_cast<char>(value >> 8 & 0xFF);
            const char both[4] = {low, high, low, high};
            bin.write(both, sizeof both);
        }
        sector += tracks[i].sectors;
    }
    return (folder / (name + ".cue")).string();
}

/// The tone of interleaved stereo samples, hertz, by the zero crossings of the left channel; 0 for silence.
inline double toneOf(const std::vector<float>& samples) {
    std::size_t first = 0;
    std::size_t last = 0;
    int crossings = 0;
    for (std::size_t i = 2; i + 1 < samples.size(); i += 2) {
        if (samples[i - 2] < 0 && samples[i] >= 0) {
            if (crossings++ == 0) first = i / 2;
            last = i / 2;
        }
    }
    return crossings < 2 ? 0 : (crossings - 1) * double{kCdSampleRate} / static_cast<double>(last - first);
}

}  // namespace corvane::test
