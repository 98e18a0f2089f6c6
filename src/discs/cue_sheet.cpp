// SPDX-License-Identifier: GPL-3.0-or-later
#include "discs/cue_sheet.h"

#include <algorithm>
#include <array>
#include <utility>

#include "types/text.h"

namespace corvane {

namespace {

constexpr std::string_view kBlanks = " \t\v\f";
constexpr int kMostTracks = 99;
constexpr std::size_t kMostFiles = 99;
constexpr int kMostIndex = 99;

using text::trimmed;
using text::upper;

/// Takes the first word off.
std::string_view takeWord(std::string_view& text) {
    text = trimmed(text);
    const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
    text = trimmed(text.substr(word.size()));
    return word;
}

/// A text with or without quotes around it.
std::string unquoted(std::string_view text) {
    text = trimmed(text);
    if (text.empty() || text.front() != '"') return std::string(text);
    text.remove_prefix(1);
    return std::string(text.substr(0, text.find('"')));
}

/// Digits alone, at most three of them.
std::optional<int> numberOf(std::string_view digits) {
    if (digits.empty() || digits.size() > 3) return std::nullopt;
    int value = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return value;
}

/// Sectors of a time such as 03:25:74.
std::optional<std::int64_t> timeOf(std::string_view text) {
    const std::size_t first = text.find(':');
    const std::size_t second = first == std::string_view::npos ? first : text.find(':', first + 1);
    if (second == std::string_view::npos) return std::nullopt;
    const auto minutes = numberOf(text.substr(0, first));
    const auto seconds = numberOf(text.substr(first + 1, second - first - 1));
    const auto frames = numberOf(text.substr(second + 1));
    if (!minutes || !seconds || !frames || *seconds > 59 || *frames >= kCdSectorsPerSecond) return std::nullopt;
    return std::int64_t{*minutes} * kCdSectorsPerMinute + *seconds * kCdSectorsPerSecond + *frames;
}

/// What a track's kind says of its sectors.
struct Mode {
    std::string_view word;
    bool audio;
    int sectorBytes;
};
constexpr std::array<Mode, 11> kModes{{{"AUDIO", true, 2352},
                                       {"CDG", true, 2448},
                                       {"MODE0/2352", false, 2352},
                                       {"MODE1/2048", false, 2048},
                                       {"MODE1/2352", false, 2352},
                                       {"MODE2/2048", false, 2048},
                                       {"MODE2/2324", false, 2324},
                                       {"MODE2/2336", false, 2336},
                                       {"MODE2/2352", false, 2352},
                                       {"CDI/2336", false, 2336},
                                       {"CDI/2352", false, 2352}}};

/// Reads line by line. A line that makes no sense gives the reason why.
class Reader {
public:
    /// The reason in words, null when the line is understood.
    const char* line(std::string_view text) {
        const std::string command = upper(std::string(takeWord(text)));
        if (command == "FILE") return file(text);
        if (command == "TRACK") return track(text);
        if (command == "INDEX") return index(text);
        if (command == "PREGAP") return gap(text, &CueTrack::pregap);
        if (command == "POSTGAP") return gap(text, &CueTrack::postgap);
        if (command == "TITLE") title() = unquoted(text);
        if (command == "PERFORMER") performer() = unquoted(text);
        return nullptr;
    }

    const char* finish() {
        if (sheet_.tracks.empty()) return "it names no track";
        if (!begins(sheet_.tracks.back())) return kNoBegin;
        dropUnusedFiles();
        return nullptr;
    }

    CueSheet take() { return std::move(sheet_); }

private:
    static constexpr const char* kNoBegin = "a track has no INDEX 01";

    static bool begins(const CueTrack& track) {
        return std::any_of(track.indexes.begin(), track.indexes.end(),
                           [](const CueIndex& index) { return index.number == 1; });
    }
    std::string& title() { return sheet_.tracks.empty() ? sheet_.title : sheet_.tracks.back().title; }
    std::string& performer() { return sheet_.tracks.empty() ? sheet_.performer : sheet_.tracks.back().performer; }

    const char* file(std::string_view text) {
        text = trimmed(text);
        std::string name;
        std::string_view kind;
        if (!text.empty() && text.front() == '"') {
            name = unquoted(text);
            const std::size_t end = text.find('"', 1);
            kind = trimmed(text.substr(end == std::string_view::npos ? text.size() : end + 1));
        } else {
            const std::size_t last = text.find_last_of(kBlanks);
            if (last != std::string_view::npos) {
                name = trimmed(text.substr(0, last));
                kind = text.substr(last + 1);
            }
        }
        name.erase(0, name.find_last_of("/\\") + 1);  // also of a path of the machine that it was made on
        if (name.empty() || name == "." || name == ".." || kind.empty()) return "a FILE has no name or no type";
        if (sheet_.files.size() == kMostFiles) return "it names too many files";
        const std::string word = upper(std::string(kind));
        sheet_.files.push_back({std::move(name), word == "BINARY"     ? CueFile::Kind::Raw
                                                 : word == "MOTOROLA" ? CueFile::Kind::RawSwapped
                                                                      : CueFile::Kind::Sound});
        last_ = 0;
        return nullptr;
    }

    const char* track(std::string_view text) {
        if (sheet_.files.empty()) return "a TRACK stands before any FILE";
        if (!sheet_.tracks.empty() && !begins(sheet_.tracks.back())) return kNoBegin;
        const auto number = numberOf(takeWord(text));
        const int least = sheet_.tracks.empty() ? 1 : sheet_.tracks.back().number + 1;
        if (!number || *number < least || *number > kMostTracks) return "a TRACK has no number that may follow";
        const std::string word = upper(std::string(takeWord(text)));
        const auto* const mode =
            std::find_if(kModes.begin(), kModes.end(), [&](const Mode& one) { return one.word == word; });
        if (mode == kModes.end()) return "a TRACK is of no kind that is known";
        CueTrack track;
        track.number = *number;
        track.audio = mode->audio;
        track.sectorBytes = mode->sectorBytes;
        sheet_.tracks.push_back(std::move(track));
        return nullptr;
    }

    const char* index(std::string_view text) {
        if (sheet_.tracks.empty()) return "an INDEX stands before any TRACK";
        std::vector<CueIndex>& indexes = sheet_.tracks.back().indexes;
        const auto number = numberOf(takeWord(text));
        const int least = indexes.empty() ? 0 : indexes.back().number + 1;
        if (!number || *number < least || *number > kMostIndex) return "an INDEX has no number that may follow";
        if (indexes.empty() && *number > 1) return kNoBegin;
        const auto time = timeOf(takeWord(text));
        if (!time) return "an INDEX has no time";
        if (*time < last_) return "an INDEX goes back";
        last_ = *time;
        indexes.push_back({*number, sheet_.files.size() - 1, *time});
        return nullptr;
    }

    const char* gap(std::string_view text, std::int64_t CueTrack::*which) {
        if (sheet_.tracks.empty()) return "a gap stands before any TRACK";
        const auto time = timeOf(takeWord(text));
        if (!time) return "a gap has no time";
        sheet_.tracks.back().*which = *time;
        return nullptr;
    }

    void dropUnusedFiles() {
        std::vector<std::size_t> place(sheet_.files.size(), kNoFile);
        std::vector<CueFile> used;
        for (CueTrack& track : sheet_.tracks) {
            for (CueIndex& index : track.indexes) {
                if (place[index.file] == kNoFile) {
                    place[index.file] = used.size();
                    used.push_back(std::move(sheet_.files[index.file]));
                }
                index.file = place[index.file];
            }
        }
        sheet_.files = std::move(used);
    }

    CueSheet sheet_;
    std::int64_t last_ = 0;  ///< the file's last index
};

std::string refusal(const char* why) { return std::string("The sheet of the disc cannot be used: ") + why + '.'; }

}  // namespace

ReadCueSheet readCueSheet(std::string_view text) {
    if (text.size() > kMostCueBytes) return {std::nullopt, refusal("it is too long")};
    if (text.find('\0') != std::string_view::npos) return {std::nullopt, refusal("it is no text")};
    text = text::withoutMark(text);
    Reader reader;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        if (const char* const why = reader.line(text.substr(0, end))) return {std::nullopt, refusal(why)};
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    if (const char* const why = reader.finish()) return {std::nullopt, refusal(why)};
    return {reader.take(), {}};
}

}  // namespace corvane
