// SPDX-License-Identifier: GPL-3.0-or-later
#include "listedit/frmFileList.h"

#include <algorithm>
#include <limits>

#include "engine/mdlPublicFunction.h"
#include "engine/return_to_panel.h"
#include "listedit/filters.h"
#include "storage/settings.h"
#include "types/numbers.h"
#include "types/text.h"

namespace corvane {

using mdlPublicFunction::messageBox;

frmFileList::frmFileList(Player& player)
    : FileListControls(player.types),
      player_(player),
      boxes_(player.ports.files, drvFileList, dirFileList, fleFileList),
      layout_(*this) {
    tieButtons();
    tieBoxes();
    tieEditing();
    tieDetails();
    tieWindow();
    layout_.setUp();
}

void frmFileList::tieButtons() {
    for (CommandButton& button : cmdFileList) {
        button.Click.tie([this, index = button.index()] { cmdFileList_Click(index); });
    }
    for (ComboBox& combo : cboFileList) {
        combo.Click.tie([this, index = combo.index()] { cboFileList_Click(index); });
    }
    hscrFileList.Change.tie([this] { hscrFileList_Change(); });
    hscrPageList.Change.tie([this] { hscrPageList_Change(); });
}

void frmFileList::tieBoxes() {
    drvFileList.Click.tie([this] { boxes_.takeDrive(); });
    drvFileList.Change.tie([this] { drvFileList_Change(); });
    dirFileList.DblClick.tie([this] { boxes_.enterFolder(); });
    dirFileList.Change.tie([this] { boxes_.showFolder(); });
    // Two files of one name can only be told apart by where they are.
    lstFileList[0].tipOf = [this](int index) {
        return index < lstFileList[1].count() ? lstFileList[1].item(index) : std::string();
    };
    fleFileList.tipOf = [this](int index) {
        return text::joinPath(fleFileList.Path, fleFileList.item(index), player_.ports.files.separator());
    };
    fleFileList.DblClick.tie([this] { fleFileList_DblClick(); });
    lstFileList[0].DblClick.tie([this] { lstFileList_DblClick(); });
    lstFileList[0].OLEDragDrop.tie([this](const DropData& dropped) { lstFileList_OLEDragDrop(dropped); });
}

void frmFileList::tieWindow() {
    Load.tie([this] { Form_Load(); });
    Unload.tie([this] { Form_Unload(); });
    Resize.tie([this] {
        layout_.place();
        showDetails();
    });
    CloseRequest.tie([this](bool) { cancel(); });
    KeyDown.tie([this](const KeyArgs& key) {
        if (key.keyCode == kKeyF1 && key.shift == 0) player_.ports.dialogs.help();
    });
    MouseDown.tie([this](const MouseArgs& mouse) { dragWindow(mouse); });
    for (Label& label : lblFileList) {
        label.MouseDown.tie([this](const MouseArgs& mouse) { dragWindow(mouse); });
    }
    for (Label& label : lblDetail) {
        label.MouseDown.tie([this](const MouseArgs& mouse) { dragWindow(mouse); });
    }
    imgFileList.MouseDown.tie([this](const MouseArgs& mouse) { splitting_ = mouse.button == kLeftButton; });
    imgFileList.MouseMove.tie([this](const MouseArgs& mouse) { imgFileList_MouseMove(mouse); });
    imgFileList.MouseUp.tie([this](const MouseArgs&) { splitting_ = false; });
}

void frmFileList::Form_Load() {
    Move((player_.ports.windows.screenWidth() - Width) / 2, (player_.ports.windows.screenHeight() - Height) / 2);
    boxes_.open(player_.editorFolder, player_.ports.process.programFolder());
    showSettings();
    hscrPageList.Value = player_.gPageNumber;
    hscrFileList.Value = player_.gListNumber;
}

void frmFileList::Form_Unload() { player_.editorFolder = dirFileList.Path; }

void frmFileList::showSettings() {
    cboFileList[kPattern].ListIndex = player_.gPattern;
    cboFileList[kMovieZoom].ListIndex = player_.gMovieZoom;
    cboFileList[kImageZoom].ListIndex = player_.gImageZoom;
    cboFileList[kInterval].Text = std::to_string(player_.gInterval);
    showListNumber();
    showPageNumber();
    cmdFileList_Click(kList);
}

void frmFileList::showListNumber() { cmdFileList[kList].Caption = "File " + std::to_string(player_.gListNumber + 1); }

void frmFileList::showPageNumber() { cmdFileList[kPage].Caption = "Page " + std::to_string(player_.gPageNumber + 1); }

void frmFileList::cmdFileList_Click(int index) {
    switch (index) {
        case kList:
        case kPage:
            if (mayLoseChanges()) reload();
            break;
        case kSave:
            save();
            break;
        case kAdd:
            addSelected();
            break;
        case kAddAll:
            addAll();
            break;
        case kDelete:
            deleteSelected();
            break;
        case kClear:
            clearList();
            break;
        case kOk:
            ok();
            break;
        case kCancel:
            cancel();
            break;
        default:
            break;
    }
}

void frmFileList::cboFileList_Click(int index) {
    ComboBox& combo = cboFileList[static_cast<std::size_t>(index)];
    if (index == kPattern) {
        const std::vector<TypeFilter> filters = typeFilters(player_.types);
        const int filter = findTypeFilter(filters, combo.Text);
        if (filter < 0) return;
        player_.gPattern = static_cast<std::int16_t>(filter);
        fleFileList.Pattern = filters[static_cast<std::size_t>(filter)].patterns;
        boxes_.showFiles();
    } else if (index == kMovieZoom) {
        player_.gMovieZoom = static_cast<std::int16_t>(combo.ListIndex);
    } else if (index == kImageZoom) {
        player_.gImageZoom = static_cast<std::int16_t>(combo.ListIndex);
    } else if (const auto seconds = interval()) {
        player_.gInterval = *seconds;
    }
}

std::optional<std::int16_t> frmFileList::interval() const {
    constexpr std::int32_t kMost = std::numeric_limits<std::int16_t>::max();
    const auto seconds = parseNumber(cboFileList[kInterval].Text.get());
    if (!seconds) return std::nullopt;
    return static_cast<std::int16_t>(std::clamp(*seconds, 0, kMost));
}

void frmFileList::hscrFileList_Change() {
    const int value = hscrFileList.Value;
    if (value < 0) {
        hscrFileList.Value = 9;
    } else if (value > 9) {
        hscrFileList.Value = 0;
    } else {
        turnTo(hscrFileList, player_.gListNumber, value);
    }
}

void frmFileList::hscrPageList_Change() {
    const int value = hscrPageList.Value;
    if (value < 0) {
        hscrPageList.Value = 9;
    } else if (value > 9) {
        hscrPageList.Value = 0;
    } else {
        turnTo(hscrPageList, player_.gPageNumber, value);
    }
}

void frmFileList::drvFileList_Change() {
    const auto closed = boxes_.changeDrive();
    if (!closed) return;
    // The drive box's own signal is still running: the box comes when that is over, if the editor is still there.
    player_.ports.loop.post([&player = player_, text = text::onOneLine(*closed) + " Drive Can't Open !!"] {
        if (player.forms.find<FileListControls>() != nullptr) messageBox(player, text, Buttons::Ok, Icon::Stop);
    });
}

void frmFileList::imgFileList_MouseMove(const MouseArgs& mouse) {
    if (splitting_) layout_.setSplit(imgFileList.Left + mouse.x);
}

void frmFileList::dragWindow(const MouseArgs& mouse) {
    if (mouse.button == kLeftButton) player_.ports.windows.beginDrag(*this);
}

void frmFileList::ok() {
    writeChoices();
    takeListIntoPlayer();
    returnToPanel(player_, kId);
}

void frmFileList::cancel() {
    if (mayLoseChanges()) returnToPanel(player_, kId);
}

void frmFileList::writeChoices() {
    if (const auto seconds = interval()) player_.gInterval = *seconds;  // what was typed; chosen, it counts already
    writeSettings(player_, WrittenBy::Editor);
}

}  // namespace corvane
