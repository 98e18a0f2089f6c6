// SPDX-License-Identifier: GPL-3.0-or-later
#include <utility>
#include <vector>

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

int takeFiles(Player& player, const DropData& dropped) {
    const char separator = player.ports.files.separator();
    std::size_t taken = 0;
    if (dropped.hasFiles) {
        for (const std::string& file : dropped.files) {
            if (taken == mdlDefinePublic::kMaxFiles) break;
            if (!isAcceptedExtension(GetExtension(file))) continue;
            std::string path = withoutDoubledSeparator(file, separator);
            const auto name = player.ports.files.lookUp(path);
            if (!name) continue;
            player.gFileTitle[taken] = GetBaseName(*name);
            player.gFilePath[taken] = std::move(path);
            ++taken;
        }
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
    return static_cast<int>(taken);
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
