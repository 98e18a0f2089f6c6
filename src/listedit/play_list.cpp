// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <limits>
#include <utility>

#include "engine/list_look_up.h"
#include "engine/mdlPublicFunction.h"
#include "listedit/frmFileList.h"
#include "storage/play_lists.h"
#include "types/text.h"

// The editor's list: reading, saving, adding, removing, and its way into the player.

namespace corvane {

using mdlDefinePublic::kMaxFiles;
using mdlPublicFunction::GetBaseName;
using mdlPublicFunction::GetExtension;
using mdlPublicFunction::listReplaced;
using mdlPublicFunction::messageBox;
using mdlPublicFunction::showList;
using mdlPublicFunction::withoutDoubledSeparator;

std::string frmFileList::currentListFile() const {
    return listFileName(player_, player_.gPageNumber, player_.gListNumber);
}

void frmFileList::reload() {
    PlayList list = readPlayList(player_, currentListFile());
    for (ListBox& box : lstFileList) box.clear();
    txtListName.Text = std::move(list.listName);
    for (ListEntry& entry : list.entries) addRow(std::move(entry.name), std::move(entry.path));
    fitHorizontalRange();
}

void frmFileList::save() {
    const std::string question = "PLAY PAGE " + std::to_string(player_.gPageNumber + 1) + " LIST " +
                                 std::to_string(player_.gListNumber + 1) + " Save OK?";
    if (messageBox(player_, question, Buttons::OkCancel, Icon::Question) != Answer::Ok) return;

    PlayList list{txtListName.Text, {}};
    const int count = std::min(lstFileList[0].count(), kMaxFiles);
    for (int i = 0; i < count; ++i) list.entries.push_back({lstFileList[0].item(i), lstFileList[1].item(i)});
    const std::string file = currentListFile();
    const auto told = [this](const std::string& text) { messageBox(player_, text, Buttons::Ok, Icon::Stop); };
    if (!writePlayList(player_, file, list)) return told(text::onOneLine(file) + " Can't save!!");

    std::erase_if(list.entries, [](const ListEntry& entry) { return canBeStored(entry.path); });
    if (list.entries.empty()) return;
    const std::size_t others = list.entries.size() - 1;
    told(text::onOneLine(list.entries.front().path) + " Can't save!!\r\nThe path is longer than a list can keep." +
         (others > 0 ? " So are " + std::to_string(others) + " more." : ""));
}

void frmFileList::addRow(std::string name, std::string path) {
    lstFileList[0].addItem(std::move(name));
    lstFileList[1].addItem(std::move(path));
}

void frmFileList::addFile(const std::string& name) {
    addRow(name, text::joinPath(fleFileList.Path, name, player_.ports.files.separator()));
}

void frmFileList::addSelected() {
    if (fleFileList.ListIndex < 0) return;
    for (const int index : fleFileList.selectedIndices()) addFile(fleFileList.item(index));
    leaveFiles();
    fitHorizontalRange();
}

/// What was added is not added again by the next command.
void frmFileList::leaveFiles() {
    fleFileList.ListIndex = -1;
    fleFileList.clearSelection();
}

void frmFileList::addAll() {
    if (fleFileList.count() == 0) return;
    for (const std::string& name : fleFileList.items()) addFile(name);
    leaveFiles();
    fitHorizontalRange();
}

void frmFileList::fleFileList_DblClick() {
    const int index = fleFileList.ListIndex;
    if (index < 0 || index >= fleFileList.count()) return;
    addFile(fleFileList.item(index));
    leaveFiles();
    fitHorizontalRange();
}

void frmFileList::deleteSelected() {
    if (lstFileList[0].ListIndex < 0) return;
    std::array<std::vector<std::string>, 2> kept;
    for (int i = 0; i < lstFileList[0].count(); ++i) {
        if (lstFileList[0].isSelected(i)) continue;
        kept[0].push_back(lstFileList[0].item(i));
        kept[1].push_back(lstFileList[1].item(i));
    }
    for (std::size_t i = 0; i < kept.size(); ++i) lstFileList[i].setItems(std::move(kept[i]));
    fitHorizontalRange();
}

void frmFileList::clearList() {
    for (ListBox& list : lstFileList) list.clear();
    txtListName.Text = "";
    fitHorizontalRange();
}

void frmFileList::lstFileList_DblClick() {
    const int index = lstFileList[0].ListIndex;
    for (ListBox& list : lstFileList) list.removeItem(index);
    lstFileList[0].ListIndex = -1;
    fitHorizontalRange();
}

void frmFileList::lstFileList_OLEDragDrop(const DropData& dropped) {
    if (!dropped.hasFiles) return;
    Files& files = player_.ports.files;
    std::vector<std::string> paths;
    for (const std::string& file : dropped.files) {
        if (player_.types.knows(GetExtension(file))) paths.push_back(withoutDoubledSeparator(file, files.separator()));
    }
    constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();  // the save tells what does not fit
    auto names = lookUpForList(files, paths, kAnyNumber);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i]) addRow(std::move(*names[i]), std::move(paths[i]));
    }
    fitHorizontalRange();
}

void frmFileList::fitHorizontalRange() {
    constexpr int kRoomPixels = 80;
    int widest = 0;
    for (const std::string& name : lstFileList[0].items()) {
        widest = std::max(widest, player_.ports.windows.textWidth(*this, name));
    }
    lstFileList[0].HorizontalExtent = widest + kRoomPixels;
}

void frmFileList::takeListIntoPlayer() {
    player_.gFilePath.fill("");
    player_.gFileTitle.fill("");
    const int count = std::min(lstFileList[0].count(), kMaxFiles);
    for (int i = 0; i < count; ++i) {
        player_.gFileTitle[static_cast<std::size_t>(i)] = GetBaseName(lstFileList[0].item(i));
        player_.gFilePath[static_cast<std::size_t>(i)] = lstFileList[1].item(i);
    }
    player_.gFileCount = static_cast<std::int16_t>(count);
    player_.gFileIndex = 0;
    listReplaced(player_);
    showList(player_);
}

}  // namespace corvane
