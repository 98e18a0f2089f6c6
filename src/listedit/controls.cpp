// SPDX-License-Identifier: GPL-3.0-or-later
#include <utility>

#include "listedit/filters.h"
#include "listedit/frmFileList.h"
#include "types/folding.h"

namespace corvane {

FileListControls::FileListControls(const MediaTypes& types)
    : Form("frmFileList", FormStyle::Dialog),
      lblFileList(controlArray<Label, 8>(this, "lblFileList")),
      drvFileList(this, "drvFileList"),
      dirFileList(this, "dirFileList"),
      imgFileList(this, "imgFileList"),
      fleFileList(this, "fleFileList"),
      cboFileList(controlArray<ComboBox, 4>(this, "cboFileList")),
      lstFileList(controlArray<PlayListBox, 2>(this, "lstFileList")),
      txtListName(this, "txtListName"),
      hscrFileList(this, "hscrFileList"),
      hscrPageList(this, "hscrPageList"),
      cmdFileList(controlArray<CommandButton, 10>(this, "cmdFileList")),
      lblDetail(controlArray<Label, 4>(this, "lblDetail")),
      cmdEdit(controlArray<CommandButton, 5>(this, "cmdEdit")),
      lblSort(this, "lblSort"),
      cboSort(this, "cboSort"),
      txtFind(this, "txtFind"),
      lblStatus(this, "lblStatus") {
    Caption = "Corvane - Play List";
    nameControls();
    fillChoices(types);
    orderTabs();
}

void FileListControls::nameControls() {
    constexpr std::array<const char*, 8> kHeadings = {"DRIVE",    "PATTERN", "MOVIE ZOOM", "IMAGE ZOOM",
                                                      "INTERVAL", "DIR",     "FILE LIST",  "PLAY LIST"};
    constexpr std::array<const char*, 10> kCaptions = {"File 1", "Save", "Add",    "Add All", "Delete",
                                                       "Clear",  "OK",   "Cancel", "",        "Page 1"};
    const std::array<Control*, 8> labelled = {&drvFileList,
                                              &cboFileList[kPattern],
                                              &cboFileList[kMovieZoom],
                                              &cboFileList[kImageZoom],
                                              &cboFileList[kInterval],
                                              &dirFileList,
                                              &fleFileList,
                                              &lstFileList[0]};
    for (std::size_t i = 0; i < kHeadings.size(); ++i) {
        lblFileList[i].Caption = kHeadings[i];
        lblFileList[i].Labels = labelled[i];
        labelled[i]->AccessibleName = kHeadings[i];
    }
    for (std::size_t i = 0; i < kCaptions.size(); ++i) cmdFileList[i].Caption = kCaptions[i];
    cmdFileList[kList].ToolTipText = "Reload the list from its file";
    cmdFileList[kPage].ToolTipText = cmdFileList[kList].ToolTipText;
    cmdFileList[kUnused].Visible = false;
    cmdFileList[kOk].Default = true;
    cmdFileList[kCancel].Cancel = true;
    txtListName.AccessibleName = "List name";
    hscrFileList.AccessibleName = "List number";
    hscrPageList.AccessibleName = "Page number";
    nameEditing();
}

void FileListControls::nameEditing() {
    constexpr std::array<const char*, 5> kCaptions = {"Undo", "Redo", "Stop", "Next", "Export…"};
    constexpr std::array<const char*, 5> kTips = {"Takes the last change back (Ctrl+Z)", "Makes it again (Ctrl+Y)",
                                                  "Reads no further lengths and folders (Esc for folders)",
                                                  "The next entry that holds the text (F3)",
                                                  "Writes the list for other players: M3U8 and XSPF"};
    for (std::size_t i = 0; i < cmdEdit.size(); ++i) {
        cmdEdit[i].Caption = kCaptions[i];
        cmdEdit[i].ToolTipText = kTips[i];
    }
    for (const Edit each : {kUndo, kRedo, kStopReading}) cmdEdit[each].Enabled = false;
    constexpr std::array<const char*, 4> kDetails = {"TITLE", "ARTIST", "ALBUM", "LENGTH"};
    for (std::size_t i = 0; i < kDetails.size(); ++i) {
        lblDetail[i].Caption = kDetails[i];
        lblDetail[i].Visible = false;
    }
    lblSort.Caption = "SORT";
    lblSort.Labels = &cboSort;
    cboSort.AccessibleName = "Sort by";
    cboSort.setItems({"Name", "Path", "Length"});
    txtFind.AccessibleName = "Find";
    txtFind.MaxLength = text::kMostToFind;
    txtFind.ToolTipText = "Any part of a name or a path (Ctrl+F)";
}

void FileListControls::fillChoices(const MediaTypes& types) {
    const std::vector<std::string> zooms = {"ORIGINAL", "DOUBLE", "1/16 CRT", "1/4 CRT", "1/2 CRT", "STRETCH"};
    std::vector<std::string> filters;
    for (const TypeFilter& each : typeFilters(types)) filters.push_back(each.entry);
    cboFileList[kPattern].setItems(std::move(filters));
    cboFileList[kMovieZoom].setItems(zooms);
    cboFileList[kImageZoom].setItems(zooms);
    cboFileList[kInterval].setItems({"0", "3", "5", "10", "20", "40", "60"});
    cboFileList[kInterval].Editable = true;
    lstFileList[0].MultiSelect = true;
    lstFileList[1].Visible = false;
    for (ScrollBar* bar : {&hscrFileList, &hscrPageList}) {
        bar->Min = -1;  // a step beyond each end, from where the number wraps
        bar->Max = 10;
    }
}

void FileListControls::orderTabs() {
    int next = 0;
    for (Control* each : std::initializer_list<Control*>{&drvFileList,
                                                         &dirFileList,
                                                         &cboFileList[kPattern],
                                                         &fleFileList,
                                                         &cmdFileList[kAdd],
                                                         &cmdFileList[kAddAll],
                                                         &cmdFileList[kDelete],
                                                         &cmdFileList[kClear],
                                                         &cmdEdit[kUndo],
                                                         &cmdEdit[kRedo],
                                                         &cmdFileList[kPage],
                                                         &hscrPageList,
                                                         &cmdFileList[kList],
                                                         &hscrFileList,
                                                         &lstFileList[0],
                                                         &txtListName,
                                                         &cmdFileList[kSave],
                                                         &cboFileList[kMovieZoom],
                                                         &cboFileList[kImageZoom],
                                                         &cboFileList[kInterval],
                                                         &cboSort,
                                                         &cmdFileList[kOk],
                                                         &cmdFileList[kCancel],
                                                         &cmdEdit[kStopReading],
                                                         &txtFind,
                                                         &cmdEdit[kFindNext],
                                                         &cmdEdit[kExport]}) {
        each->TabIndex = next++;
    }
}

}  // namespace corvane
