// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/subtitle_files.h"

#include <algorithm>
#include <array>

#include "drives/drive_file.h"

namespace corvane {

namespace {

constexpr std::size_t kLookedAt = 64U << 10U;  // bytes: long heads are fonts and styles
constexpr std::array kEndings{".srt", ".SRT", ".ass", ".ASS", ".vtt", ".VTT"};

/// Without the zeroes that stand beside each letter in texts of two bytes a character.
std::string plainStart(std::string_view bytes) {
    std::string start(bytes.substr(0, kLookedAt));
    start.erase(std::remove(start.begin(), start.end(), '\0'), start.end());
    return start;
}

std::string_view nameOf(std::string_view path) { return path.substr(path.rfind('/') + 1); }

/// The path up to the dot of the file's ending.
std::string_view stemOf(std::string_view path) {
    const std::size_t dot = path.rfind('.');
    const std::size_t slash = path.rfind('/');
    const bool ends = dot != std::string_view::npos && (slash == std::string_view::npos || dot > slash + 1);
    return ends ? path.substr(0, dot) : path;
}

}  // namespace

bool areSubtitles(std::string_view bytes) {
    const std::string start = plainStart(bytes);
    if (start.starts_with("#EXTM3U")) return false;
    return start.find("-->") != std::string::npos || start.find("[Script Info]") != std::string::npos ||
           start.find("[Events]") != std::string::npos;
}

std::vector<SubtitleFile> subtitlesBeside(const std::string& movie, const std::atomic<bool>& stop) {
    std::vector<SubtitleFile> found;
    for (const char* const ending : kEndings) {
        if (stop) break;
        const std::string path = std::string(stemOf(movie)) + ending;
        std::string unread;
        const auto file = DriveFile::open(path, {DriveCalls::kPatience, &stop}, unread);
        if (!file) continue;
        SubtitleFile one{std::string(nameOf(path)), "", ""};
        if (file->size() > static_cast<std::int64_t>(kMostSubtitleBytes)) {
            one.reason = "is too large";
        } else if (auto bytes = file->readWhole(kMostSubtitleBytes); !bytes) {
            one.reason = "cannot be read";
        } else if (!areSubtitles(*bytes)) {
            one.reason = "holds no subtitles";
        } else {
            one.bytes = std::move(*bytes);
        }
        found.push_back(std::move(one));
    }
    return found;
}

}  // namespace corvane
