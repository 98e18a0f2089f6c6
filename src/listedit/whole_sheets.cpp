// SPDX-License-Identifier: GPL-3.0-or-later
#include "listedit/whole_sheets.h"

#include <algorithm>
#include <map>
#include <utility>

#include "engine/mdlPublicFunction.h"
#include "engine/opened_lists.h"
#include "lists/list_location.h"
#include "types/text.h"

namespace corvane {

namespace {

constexpr std::string_view kTrackEnding = ".cda", kSheetEnding = ".cue";

bool endsWith(std::string_view text, std::string_view ending) {
    return text.size() > ending.size() && text::sameWithoutCase(text.substr(text.size() - ending.size()), ending);
}

/// The tracks of sheets, as this player opens them.
class Sheets {
public:
    explicit Sheets(const Player& player) : player_(player) {}

    /// The sheet whose tracks begin at an entry and all follow; "": none does.
    std::string wholeAt(const std::vector<ExportedEntry>& entries, std::size_t at, std::size_t& count) {
        if (!isTrackOfDisc(entries[at].path)) return {};
        const std::string sheet = folderOf(entries[at].path, player_.ports.files.separator());
        if (!endsWith(sheet, kSheetEnding)) return {};
        const std::vector<OpenedFile>& tracks = tracksOf(sheet);
        count = tracks.size();
        if (tracks.empty() || count > entries.size() - at) return {};
        const auto begin = entries.begin() + static_cast<std::ptrdiff_t>(at);
        const bool isWhole =
            std::equal(tracks.begin(), tracks.end(), begin,
                       [](const OpenedFile& track, const ExportedEntry& entry) { return track.path == entry.path; });
        return isWhole ? sheet : std::string();
    }

private:
    const std::vector<OpenedFile>& tracksOf(const std::string& sheet) {
        const auto [known, isNew] = tracks_.try_emplace(sheet);
        if (isNew && tracks_.size() <= kMostSheetsRead) known->second = openedAs(player_, {sheet}).files;
        return known->second;
    }

    const Player& player_;
    std::map<std::string, std::vector<OpenedFile>> tracks_;
};

}  // namespace

bool isTrackOfDisc(const std::string& path) { return endsWith(path, kTrackEnding); }

std::vector<ExportedEntry> withWholeSheets(const Player& player, std::vector<ExportedEntry> entries) {
    Sheets sheets(player);
    std::vector<ExportedEntry> result;
    result.reserve(entries.size());
    for (std::size_t at = 0; at < entries.size();) {
        std::size_t count = 1;
        std::string sheet = sheets.wholeAt(entries, at, count);
        if (sheet.empty()) {
            result.push_back(std::move(entries[at++]));
            continue;
        }
        int seconds = 0;
        for (std::size_t end = at + count; at < end; ++at) {
            seconds = seconds < 0 || entries[at].seconds < 0 ? -1 : seconds + entries[at].seconds;
        }
        const std::size_t name = sheet.rfind(player.ports.files.separator()) + 1;
        std::string title = mdlPublicFunction::titleOf(player.conveniences, sheet.substr(name));
        result.push_back({std::move(sheet), std::move(title), seconds});
    }
    return result;
}

}  // namespace corvane
