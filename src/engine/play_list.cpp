// SPDX-License-Identifier: GPL-3.0-or-later
#include <utility>
#include <vector>

#include "engine/list_look_up.h"
#include "engine/mdlPublicFunction.h"

namespace corvane::mdlPublicFunction {

void clearCustomPositions(Player& player) {
    player.gStartPosition.fill(0);
    player.gStopPosition.fill(0);
}

void showList(Player& player) {
    const bool any = player.gFileCount > 0;
    setPanelCaption(player, kNumberLabel, any ? "001" : "");
    setPanelCaption(player, kTitleLabel, any ? player.gFileTitle[0] : "");
    setPanelCaption(player, kTotalLabel, any ? std::to_string(player.gFileCount) : "");
}

namespace {

struct Entry {
    std::string title;
    std::string path;
};

/// The files that a list takes, in order, by the rules of a drop.
std::vector<Entry> usable(Player& player, const std::vector<std::string>& files) {
    std::vector<std::string> paths;
    for (const std::string& file : files) {
        if (!player.types.knows(GetExtension(file))) continue;
        paths.push_back(withoutDoubledSeparator(file, player.ports.files.separator()));
    }
    const auto names = lookUpForList(player.ports.files, paths);
    std::vector<Entry> entries;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i]) entries.push_back({GetBaseName(*names[i]), std::move(paths[i])});
    }
    return entries;
}

void replaceList(Player& player, std::vector<Entry> entries) {
    const std::size_t taken = entries.size();
    for (std::size_t i = 0; i < taken; ++i) {
        player.gFileTitle[i] = std::move(entries[i].title);
        player.gFilePath[i] = std::move(entries[i].path);
    }
    player.gFileCount = static_cast<std::int16_t>(taken);
    player.gFileIndex = 0;
    listReplaced(player);
    showList(player);
    setPanelCaption(player, kTotalLabel, std::to_string(taken));
    setPanelCaption(player, kTimeLabel, "");
    if (auto* panel = player.forms.find<MainPanelControls>()) {
        panel->lblMainPanel[kTimeLabel].ToolTipText = "";
    }
}

}  // namespace

int takeFiles(Player& player, const DropData& dropped) {
    replaceList(player, dropped.hasFiles ? usable(player, dropped.files) : std::vector<Entry>());
    return player.gFileCount;
}

bool openFiles(Player& player, const std::vector<std::string>& files) {
    std::vector<Entry> entries = usable(player, files);
    if (entries.empty()) return false;
    CloseFile(player, false);
    replaceList(player, std::move(entries));
    PlayFile(player);
    return true;
}

void ShuffleList(Player& player) {
    if (player.gFileCount == 0) return;
    Random& random = player.ports.random;
    random.seedFromClock();
    clearCustomPositions(player);

    const auto count = static_cast<std::size_t>(player.gFileCount);
    std::vector<std::pair<std::string, std::string>> left;  // path and title of the entries not yet drawn
    for (std::size_t i = 0; i < count; ++i) left.emplace_back(player.gFilePath[i], player.gFileTitle[i]);

    auto picked = static_cast<std::size_t>(player.gFileIndex);
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) picked = static_cast<std::size_t>(static_cast<double>(left.size()) * random.next());
        player.gFilePath[i] = std::move(left[picked].first);
        player.gFileTitle[i] = std::move(left[picked].second);
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(picked));
    }
    player.gFileIndex = 0;
}

}  // namespace corvane::mdlPublicFunction
