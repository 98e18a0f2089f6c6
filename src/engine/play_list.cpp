// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <utility>
#include <vector>

#include "engine/left_out.h"
#include "engine/mdlPublicFunction.h"
#include "engine/opened_lists.h"
#include "engine/panel_texts.h"
#include "engine/remaining.h"
#include "types/kind_facts.h"

namespace corvane::mdlPublicFunction {

using mdlDefinePublic::maxFiles;

void clearCustomPositions(Player& player) {
    player.gStartPosition.fill(0);
    player.gStopPosition.fill(0);
}

namespace {

/// What plays movies takes long to be made ready: that is done while the list waits that begins with one. A later one
/// is expected when the entry before it opens.
void expectFirstMovie(Player& player) {
    if (player.gFileCount == 0) return;
    const auto kinds = player.types.kindsThatMayBeThere();  // asks no decoder
    const auto kind = kinds.find(typeOf(player.conveniences, player.gFilePath[0]));
    if (kind != kinds.end() && isMovie(kind->second)) player.ports.media.expectMovie(player.gFilePath[0]);
}

}  // namespace

void showList(Player& player) {
    const bool any = player.gFileCount > 0;
    setPanelCaption(player, kNumberLabel, any ? "001" : "");
    if (!any) player.texts.showNothing();
    setPanelCaption(player, kTitleLabel, any ? player.texts.show(player.gFilePath[0], player.gFileTitle[0]) : "");
    setPanelCaption(player, kTotalLabel, any ? std::to_string(player.gFileCount) : "");
    expectFirstMovie(player);
}

namespace {

void replaceList(Player& player, std::vector<TakenFile> entries) {
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
    prepareOtherNext(player);
}

}  // namespace

int takeFiles(Player& player, const DropData& dropped) {
    replaceList(player, dropped.hasFiles ? filesTaken(player, dropped.files, maxFiles(player)).files
                                         : std::vector<TakenFile>());
    return player.gFileCount;
}

namespace {

void playInstead(Player& player, std::vector<TakenFile> entries) {
    CloseFile(player, false);
    replaceList(player, std::move(entries));
    PlayFile(player);
}

void addToList(Player& player, std::vector<TakenFile> entries) {
    const bool wasEmpty = player.gFileCount == 0;
    auto count = static_cast<std::size_t>(player.gFileCount);
    for (TakenFile& entry : entries) {
        if (count == maxFiles(player)) break;
        player.gFileTitle[count] = std::move(entry.title);
        player.gFilePath[count] = std::move(entry.path);
        player.gStartPosition[count] = player.gStopPosition[count] = 0;
        ++count;
    }
    player.gFileCount = static_cast<std::int16_t>(count);
    if (wasEmpty) return showList(player);
    setPanelCaption(player, kTotalLabel, std::to_string(count));
    prepareOtherNext(player);  // what plays may have been the last one
}

/// What the files that were found become.
void take(Player& player, FoundFiles found, Given how) {
    found = takeFound(player, std::move(found));
    const bool any = !found.files.empty();
    if (how == Given::AsList) {
        tellLeftOut(player, found.leftOut);
        return replaceList(player, std::move(found.files));
    }
    // Who opens files means each of them; what is dropped is often all that a folder shows.
    tellLeftOut(player, found, how == Given::AtStart || how == Given::ToOpen);
    if (how == Given::AtStart) {
        replaceList(player, std::move(found.files));
        player.playsAtStart = player.playsAtStart || any;
        // Before the panel is there, the start goes on with the list by itself.
        if (any && player.forms.find<MainPanelControls>() != nullptr) PlayFile(player);
    } else if (!any) {
        return;
    } else if (how == Given::ToAdd) {
        addToList(player, std::move(found.files));
    } else {
        playInstead(player, std::move(found.files));
    }
}

/// What replaces the list takes the place of whatever was to replace it, and gives way to what replaces it meanwhile.
bool readElsewhere(Player& player, const std::vector<std::string>& named, Given how) {
    const bool replaces = how != Given::ToAdd;
    if (replaces) player.reading.stop();
    // What is added comes behind what is being read.
    const bool isBehind = !replaces && player.reading.isReading();
    if (!isBehind && !isReadElsewhere(player, named)) return false;
    const auto taken = [&player, how, replaces, list = player.lists](FoundFiles found) {
        if (!replaces || list == player.lists) take(player, std::move(found), how);
    };
    if (player.reading.begin(openingRules(player), named, maxFiles(player), taken)) return true;
    if (isBehind) tellLeftOut(player, {"What was dropped was left out, because too much is being read already."});
    return isBehind;
}

}  // namespace

void giveFiles(Player& player, const std::vector<std::string>& named, Given how) {
    if (readElsewhere(player, named, how)) return;
    take(player, findFiles(player, named, maxFiles(player)), how);
}

void giveAtStart(Player& player, const std::vector<std::string>& named, bool plays) {
    if (isReadElsewhere(player, named)) replaceList(player, {});
    giveFiles(player, named, plays || player.gAutoPlay ? Given::AtStart : Given::AsList);
}

bool openFiles(Player& player, const std::vector<std::string>& files) {
    if (readElsewhere(player, files, Given::ToOpen)) return true;
    FoundFiles found = filesTaken(player, files, maxFiles(player));
    if (found.files.empty()) return false;
    playInstead(player, std::move(found.files));
    return true;
}

void playDropped(Player& player, const DropData& dropped) {
    if (dropped.hasFiles) return giveFiles(player, dropped.files, dropped.toAdd ? Given::ToAdd : Given::ToPlay);
    messageBox(player, "What was dropped holds no files.", Buttons::Ok, Icon::Information);
}

std::string filesText(std::size_t count) { return std::to_string(count) + (count == 1 ? " file" : " files"); }

void stopAll(Player& player) {
    player.reading.stop();
    CloseFile(player, false);
}

void showReading(Player& player) {
    const auto* panel = player.forms.find<MainPanelControls>();
    const std::string now = panel != nullptr ? panel->lblMainPanel[kTextLabel].Caption.get() : std::string();
    if (player.readingText.empty() || now != player.readingText) player.textBefore = now;
    if (panel == nullptr || !player.reading.isTold()) {
        // What stood there comes back, unless something else has come meanwhile.
        const std::string told = std::exchange(player.readingText, {});
        if (panel != nullptr && !told.empty() && now == told) setPanelCaption(player, kTextLabel, player.textBefore);
        return;
    }
    player.readingText = "Reading… " + filesText(player.reading.found());
    setPanelCaption(player, kTextLabel, player.readingText);
}

void ShuffleList(Player& player) {
    if (player.gFileCount == 0) return;
    Random& random = player.ports.random;
    random.seedFromClock();
    player.shuffled = true;
    clearCustomPositions(player);
    ++player.shuffles;

    const auto count = static_cast<std::size_t>(player.gFileCount);
    std::vector<std::pair<std::string, std::string>> before;  // paths and titles
    before.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        before.emplace_back(std::move(player.gFilePath[i]), std::move(player.gFileTitle[i]));
    }
    Remaining<> left(count);
    auto picked = static_cast<std::size_t>(player.gFileIndex);
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) picked = static_cast<std::size_t>(static_cast<double>(left.left()) * random.next());
        auto& [path, title] = before[left.take(picked)];
        player.gFilePath[i] = std::move(path);
        player.gFileTitle[i] = std::move(title);
    }
    player.gFileIndex = 0;
    prepareOtherNext(player);
}

}  // namespace corvane::mdlPublicFunction
