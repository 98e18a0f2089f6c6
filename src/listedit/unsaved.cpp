// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "engine/mdlPublicFunction.h"
#include "listedit/export_name.h"
#include "listedit/frmFileList.h"
#include "listedit/whole_sheets.h"
#include "storage/exported_lists.h"
#include "types/text.h"

// What becomes of a list that was changed: the question before changes are lost, and the list for other players.

namespace corvane {

using mdlPublicFunction::messageBox;

/// Without today's hands changes go unasked, as they always have.
bool frmFileList::losesChanges() const { return player_.conveniences.hands && !isSaved(); }

/// Asks, where the next step would lose what has been changed. False: it is not to be done, or the editor has gone.
bool frmFileList::mayLoseChanges() {
    if (!losesChanges()) return true;
    const std::string question = "PLAY PAGE " + std::to_string(player_.gPageNumber + 1) + " LIST " +
                                 std::to_string(player_.gListNumber + 1) + " is not saved. Lose its changes?";
    const Answer answer = messageBox(player_, question, Buttons::OkCancel, Icon::Question);
    return answer == Answer::Ok && player_.forms.find(kId) == this;
}

/// Shows another list or page. The stepper's own signal is still running: a question comes when that is over.
void frmFileList::turnTo(ScrollBar& bar, std::int16_t& number, int value) {
    if (turningBack_) return;
    if (value != number && losesChanges()) {
        turningBack_ = true;
        bar.Value = number;
        turningBack_ = false;
        if (asking_) return;
        asking_ = true;
        player_.ports.loop.post([&player = player_, this, &bar, value] {
            if (player.forms.find(kId) != this) return;
            const bool lose = mayLoseChanges();
            if (player.forms.find(kId) != this) return;
            asking_ = false;
            if (!lose) return;
            listIsRead();
            bar.Value = value;
        });
        return;
    }
    number = static_cast<std::int16_t>(value);
    showListNumber();
    showPageNumber();
    reload();
}

std::vector<ExportedEntry> frmFileList::exportedEntries() {
    std::vector<ExportedEntry> entries;
    for (const ListEntry& each : rows()) {
        const auto length = lengths_.of(each.path);
        entries.push_back({each.path, mdlPublicFunction::titleOf(player_.conveniences, each.name),
                           length ? static_cast<int>((*length + 500) / 1000) : -1});
    }
    return withWholeSheets(player_, std::move(entries));
}

void frmFileList::exportList() {
    const int count = lstFileList[0].count();
    if (count == 0) return;
    std::string name = exportName(txtListName.Text.get());
    if (name.empty()) {
        name = "PAGE " + std::to_string(player_.gPageNumber + 1) + " LIST " + std::to_string(player_.gListNumber + 1);
    }
    const std::string folder = player_.ports.process.programFolder();
    Files& files = player_.ports.files;
    const std::string path = text::joinPath(folder, name, files.separator());
    const bool isThere = files.lookUp(path + ".m3u8") || files.lookUp(path + ".xspf");
    std::vector<ExportedEntry> entries = exportedEntries();
    const auto tracks = static_cast<std::size_t>(
        std::count_if(entries.begin(), entries.end(), [](const auto& each) { return isTrackOfDisc(each.path); }));
    const std::string question =
        "Export " + std::to_string(count) + (count == 1 ? " file" : " files") + " to\r\n" + text::onOneLine(path) +
        ".m3u8\r\n" + text::onOneLine(path) + ".xspf" + (isThere ? "\r\nWhat is there is replaced." : "") +
        (tracks == 0
             ? std::string()
             : "\r\n" + std::to_string(tracks) + (tracks == 1 ? " track of a disc is" : " tracks of discs are") +
                   " written as Corvane alone can open " + (tracks == 1 ? "it." : "them."));
    if (messageBox(player_, question, Buttons::OkCancel, Icon::Question) != Answer::Ok) return;

    const auto written = [&](const std::string& file, const std::string& bytes) {
        if (files.replace(file, bytes)) return true;
        messageBox(player_, text::onOneLine(file) + " Can't save!!", Buttons::Ok, Icon::Stop);
        return false;
    };
    if (!written(path + ".m3u8", writeM3u8(txtListName.Text, entries, folder, files.separator()))) return;
    written(path + ".xspf", writeXspf(txtListName.Text, entries, folder, files.separator()));
}

}  // namespace corvane
