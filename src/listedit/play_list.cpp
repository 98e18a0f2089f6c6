// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

#include "engine/mdlPublicFunction.h"
#include "engine/opened_lists.h"
#include "listedit/frmFileList.h"
#include "storage/play_lists.h"
#include "types/text.h"

// The editor's list: reading, saving, adding, removing, and its way into the player.

namespace corvane {

using mdlDefinePublic::maxFiles;
using mdlPublicFunction::listReplaced;
using mdlPublicFunction::messageBox;
using mdlPublicFunction::showList;
using mdlPublicFunction::titleOf;

std::string frmFileList::currentListFile() const {
    return listFileName(player_, player_.gPageNumber, player_.gListNumber);
}

void frmFileList::reload() {
    dropped_.stop();  // it was dropped on another list
    PlayList list = readPlayList(player_, currentListFile());
    reading_ = true;
    txtListName.Text = std::move(list.listName);
    setRows(std::move(list.entries));
    reading_ = false;
    listIsRead();
}

void frmFileList::save() {
    const std::string question = "PLAY PAGE " + std::to_string(player_.gPageNumber + 1) + " LIST " +
                                 std::to_string(player_.gListNumber + 1) + " Save OK?";
    if (messageBox(player_, question, Buttons::OkCancel, Icon::Question) != Answer::Ok) return;

    PlayList list{txtListName.Text, {}};
    const int count = std::min(lstFileList[0].count(), static_cast<int>(maxFiles(player_)));
    for (int i = 0; i < count; ++i) list.entries.push_back({lstFileList[0].item(i), lstFileList[1].item(i)});
    const std::string file = currentListFile();
    const auto told = [this](const std::string& text) { messageBox(player_, text, Buttons::Ok, Icon::Stop); };
    if (!writePlayList(player_, file, list)) return told(text::onOneLine(file) + " Can't save!!");
    const int left = lstFileList[0].count() - count;
    if (left == 0) history_.markSaved();
    savedName_ = txtListName.Text;
    showState();
    if (left > 0 && player_.conveniences.longLists) {
        told("A list takes " + std::to_string(count) + " entries. The last " + std::to_string(left) +
             " of this one are not saved.");
    }

    std::erase_if(list.entries, [](const ListEntry& entry) { return canBeStored(entry.path); });
    if (list.entries.empty()) return;
    const std::size_t others = list.entries.size() - 1;
    told(text::onOneLine(list.entries.front().path) + " Can't save!!\r\nThe path is longer than a list can keep." +
         (others > 0 ? " So are " + std::to_string(others) + " more." : ""));
}

ListEntry frmFileList::entryOf(const std::string& name) const {
    return {name, text::joinPath(fleFileList.Path, name, player_.ports.files.separator())};
}

void frmFileList::addSelected() {
    if (fleFileList.ListIndex < 0) return;
    std::vector<ListEntry> added;
    for (const int index : fleFileList.selectedIndices()) added.push_back(entryOf(fleFileList.item(index)));
    leaveFiles();
    insertRows(std::move(added));
}

/// What was added is not added again by the next command.
void frmFileList::leaveFiles() {
    fleFileList.ListIndex = -1;
    fleFileList.clearSelection();
}

void frmFileList::addAll() {
    std::vector<ListEntry> added;
    for (const std::string& name : fleFileList.items()) added.push_back(entryOf(name));
    if (added.empty()) return;
    leaveFiles();
    insertRows(std::move(added));
}

void frmFileList::fleFileList_DblClick() {
    const int index = fleFileList.ListIndex;
    if (index < 0 || index >= fleFileList.count()) return;
    ListEntry added = entryOf(fleFileList.item(index));
    leaveFiles();
    insertRows({std::move(added)});
}

void frmFileList::deleteSelected() {
    if (lstFileList[0].ListIndex >= 0) removeRows(lstFileList[0].selectedIndices());
}

void frmFileList::clearList() {
    std::vector<int> all(static_cast<std::size_t>(lstFileList[0].count()));
    std::iota(all.begin(), all.end(), 0);
    make({ListChange::Kind::Went, rows(), std::move(all), txtListName.Text, {}});
}

void frmFileList::lstFileList_DblClick() {
    const int index = lstFileList[0].ListIndex;
    if (index >= 0 && index < lstFileList[0].count()) removeRows({index});
}

/// Behind what is being read already, in the order of the drops.
void frmFileList::lstFileList_OLEDragDrop(const DropData& dropped) {
    if (!dropped.hasFiles) return;
    constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();  // the save tells what does not fit
    const bool isBehind = dropped_.isReading();
    const auto taken = [this](FoundFiles found) { insertFound(std::move(found)); };
    if (isBehind || isReadElsewhere(player_, dropped.files)) {
        if (dropped_.begin(openingRules(player_), dropped.files, kAnyNumber, taken)) return showState();
        if (isBehind) return;
    }
    insertFound(findFiles(player_, dropped.files, kAnyNumber));
}

void frmFileList::insertFound(FoundFiles found) {
    found = takeFound(player_, std::move(found));
    tellLeftOut(player_, found);
    std::vector<ListEntry> added;
    added.reserve(found.files.size());
    for (TakenFile& file : found.files) {
        // A row's title is its name up to the type.
        added.push_back(
            {file.named ? file.title + file.name.substr(std::min(file.name.find('.'), file.name.size())) : file.name,
             std::move(file.path)});
    }
    insertRows(std::move(added));
}

void frmFileList::fitHorizontalRange() {
    constexpr int kRoomPixels = 80;
    constexpr std::size_t kMostKept = 65'536;
    if (widths_.size() > kMostKept) widths_.clear();
    if (!layout_.details().empty()) {
        lstFileList[0].HorizontalExtent = 0;  // names are shortened in front of the columns
        return;
    }
    int widest = 0;
    for (const std::string& name : lstFileList[0].items()) {
        const auto [width, isNew] = widths_.try_emplace(name, 0);
        if (isNew) width->second = player_.ports.windows.textWidth(*this, name);
        widest = std::max(widest, width->second);
    }
    lstFileList[0].HorizontalExtent = widest + kRoomPixels;
}

void frmFileList::takeListIntoPlayer() {
    player_.gFilePath.fill("");
    player_.gFileTitle.fill("");
    const int count = std::min(lstFileList[0].count(), static_cast<int>(maxFiles(player_)));
    for (int i = 0; i < count; ++i) {
        player_.gFileTitle[static_cast<std::size_t>(i)] = titleOf(player_.conveniences, lstFileList[0].item(i));
        player_.gFilePath[static_cast<std::size_t>(i)] = lstFileList[1].item(i);
    }
    player_.gFileCount = static_cast<std::int16_t>(count);
    player_.gFileIndex = 0;
    listReplaced(player_);
    showList(player_);
}

}  // namespace corvane
