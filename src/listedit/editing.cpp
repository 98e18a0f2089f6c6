// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <numeric>
#include <utility>

#include "engine/mdlPublicFunction.h"
#include "listedit/frmFileList.h"
#include "listedit/row_order.h"

// How the editor's list is changed by hand: every change can be taken back and made again.

namespace corvane {

using mdlPublicFunction::filesText;

namespace {

// Key codes.
constexpr int kKeyDelete = 46, kKeyF3 = 114;

}  // namespace

void frmFileList::tieEditing() {
    for (CommandButton& button : cmdEdit) {
        button.Click.tie([this, index = button.index()] { cmdEdit_Click(index); });
    }
    cboSort.Click.tie([this] { sortRows(cboSort.ListIndex); });
    txtFind.Change.tie([this] { find(0); });
    // Enter means the next one there, not the editor's OK.
    txtFind.GotFocus.tie([this] { takeEnter(cmdEdit[kFindNext], cmdFileList[kOk]); });
    txtFind.LostFocus.tie([this] { takeEnter(cmdFileList[kOk], cmdEdit[kFindNext]); });
    txtListName.Change.tie([this] { showState(); });
    takeKey = [this](const KeyArgs& key) { return takeFormKey(key); };
    lstFileList[0].takeKey = [this](const KeyArgs& key) { return takeListKey(key); };
    lstFileList[0].moveRows = [this](int before) { moveSelected(before); };
}

void frmFileList::takeEnter(CommandButton& taker, CommandButton& other) {
    other.Default = false;
    taker.Default = true;
}

void frmFileList::cmdEdit_Click(int index) {
    if (index == kUndo) takeBack();
    if (index == kRedo) makeAgain();
    if (index == kFindNext) find(1);
    if (index == kExport) exportList();
    if (index == kStopReading) stopReading();
}

void frmFileList::stopReading() {
    dropped_.stop();
    lengths_.stop();
    showState();
}

bool frmFileList::takeFormKey(const KeyArgs& key) {
    const bool plainCtrl = key.shift == kCtrlMask;
    if (plainCtrl && key.keyCode == 'Z') {
        takeBack();
    } else if ((plainCtrl && key.keyCode == 'Y') || (key.keyCode == 'Z' && key.shift == (kCtrlMask | kShiftMask))) {
        makeAgain();
    } else if (plainCtrl && key.keyCode == 'F') {
        txtFind.SetFocus();
    } else if (key.shift == 0 && key.keyCode == kKeyF3) {
        find(1);
    } else if (key.shift == 0 && key.keyCode == kKeyEscape && dropped_.isReading()) {
        stopReading();  // the next one leaves the editor
    } else {
        return false;
    }
    return true;
}

bool frmFileList::takeListKey(const KeyArgs& key) {
    if (key.shift == 0 && key.keyCode == kKeyDelete) {
        deleteByKey();
    } else if (key.shift == kAltMask && key.keyCode == kKeyUp) {
        stepSelected(-1);
    } else if (key.shift == kAltMask && key.keyCode == kKeyDown) {
        stepSelected(1);
    } else {
        return false;
    }
    return true;
}

// --- Changes -----------------------------------------------------------------------------------------------------

std::vector<ListEntry> frmFileList::rows() const {
    std::vector<ListEntry> all;
    const int count = std::min(lstFileList[0].count(), lstFileList[1].count());
    all.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) all.push_back({lstFileList[0].item(i), lstFileList[1].item(i)});
    return all;
}

void frmFileList::setRows(std::vector<ListEntry> rows) {
    std::vector<std::string> names;
    std::vector<std::string> paths;
    names.reserve(rows.size());
    paths.reserve(rows.size());
    for (ListEntry& each : rows) {
        names.push_back(std::move(each.name));
        paths.push_back(std::move(each.path));
    }
    lstFileList[0].setItems(std::move(names));
    lstFileList[1].setItems(std::move(paths));
    if (!sorting_) cboSort.ListIndex = -1;  // what is not in that order any more can be sorted again
    rowsChanged();
}

void frmFileList::rowsChanged() {
    lengths_.take(lstFileList[1].items());
    showDetails();
}

void frmFileList::insertRows(std::vector<ListEntry> rows) {
    std::vector<int> places(rows.size());
    std::iota(places.begin(), places.end(), lstFileList[0].count());
    const std::vector<int> selected = lstFileList[0].selectedIndices();
    const int current = lstFileList[0].ListIndex;
    make({ListChange::Kind::CameIn, std::move(rows), std::move(places), txtListName.Text, txtListName.Text});
    selectRows(selected, current);
}

void frmFileList::removeRows(std::vector<int> places) {
    std::vector<ListEntry> gone;
    gone.reserve(places.size());
    for (const int each : places) gone.push_back({lstFileList[0].item(each), lstFileList[1].item(each)});
    make({ListChange::Kind::Went, std::move(gone), std::move(places), txtListName.Text, txtListName.Text});
}

void frmFileList::reorder(std::vector<int> order) {
    if (isUnchanged(order)) return;
    const std::vector<int> selected = placesAfter(order, lstFileList[0].selectedIndices());
    make({ListChange::Kind::Reordered, {}, std::move(order), txtListName.Text, txtListName.Text});
    selectRows(selected, selected.empty() ? -1 : selected.front());
}

void frmFileList::make(ListChange change) {
    const bool changesNothing = change.at.empty() && change.nameBefore == change.nameAfter;
    if (changesNothing || !show(change)) return;
    history_.add(std::move(change));
    showState();
}

/// Brings the list on the screen behind the change.
bool frmFileList::show(const ListChange& change) {
    std::vector<ListEntry> all = rows();
    if (!applyChange(all, change)) return false;
    setRows(std::move(all));
    if (change.nameAfter != change.nameBefore) txtListName.Text = std::string(change.nameAfter);
    return true;
}

void frmFileList::takeBack() {
    if (const ListChange* const change = history_.undo()) showAgain(reversed(*change));
}

void frmFileList::makeAgain() {
    if (const ListChange* const change = history_.redo()) showAgain(*change);
}

/// Selects what an undone or a repeated change has brought.
void frmFileList::showAgain(const ListChange& change) {
    if (!show(change)) history_.clear();
    if (change.kind == ListChange::Kind::CameIn && !change.at.empty()) selectRows(change.at, change.at.front());
    showState();
}

void frmFileList::selectRows(const std::vector<int>& places, int current) {
    ListBox& list = lstFileList[0];
    for (const int each : places) list.select(each, true);
    list.ListIndex = current;
}

// --- By hand -----------------------------------------------------------------------------------------------------

/// The entry that takes the place of the first one is current then: the key can be pressed again.
void frmFileList::deleteByKey() {
    const std::vector<int> selected = lstFileList[0].selectedIndices();
    if (selected.empty()) return;
    const int first = selected.front();
    removeRows(selected);
    const int next = std::min(first, lstFileList[0].count() - 1);
    if (next >= 0) selectRows({next}, next);
}

void frmFileList::stepSelected(int by) {
    const std::vector<int> selected = lstFileList[0].selectedIndices();
    if (!selected.empty()) reorder(orderStepped(lstFileList[0].count(), selected, by));
}

void frmFileList::moveSelected(int before) {
    const std::vector<int> selected = lstFileList[0].selectedIndices();
    if (!selected.empty()) reorder(orderMoved(lstFileList[0].count(), selected, before));
}

void frmFileList::sortRows(int by) {
    sorting_ = true;
    if (by == kByName) reorder(orderByName(rows()));
    if (by == kByPath) reorder(orderByPath(rows()));
    if (by == kByLength) {
        std::vector<std::optional<std::int64_t>> lengths;
        for (const std::string& each : lstFileList[1].items()) lengths.push_back(lengths_.of(each));
        reorder(orderByLength(lengths));
    }
    sorting_ = false;
}

/// Lengths that were not known when the list was put in their order have come.
void frmFileList::sortAgain() {
    if (!sorting_ && !lengths_.isReading() && cboSort.ListIndex == kByLength) sortRows(kByLength);
}

/// The first entry that holds the text, from the current one on, or from the one `step` places behind it.
void frmFileList::find(int step) {
    const int from = lstFileList[0].ListIndex;
    const int found = findRow(lstFileList[0].items(), lstFileList[1].items(), txtFind.Text, from < 0 ? 0 : from + step);
    if (found < 0) return;
    lstFileList[0].clearSelection();
    selectRows({found}, found);
}

// --- What the last line says -------------------------------------------------------------------------------------

void frmFileList::listIsRead() {
    history_.clear();
    savedName_ = txtListName.Text;
    showState();
}

void frmFileList::showState() {
    if (reading_) return;
    cmdEdit[kUndo].Enabled = history_.canUndo();
    cmdEdit[kRedo].Enabled = history_.canRedo();
    cmdEdit[kStopReading].Enabled = lengths_.isReading() || dropped_.isReading();
    std::string text = lengthText(lstFileList[0].count(), lengths_.total(), lengths_.isReading());
    if (dropped_.isReading()) text += ", reading folders: " + filesText(dropped_.found());
    lblStatus.Caption = isSaved() ? text : "● " + text + ", not saved";
}

}  // namespace corvane
