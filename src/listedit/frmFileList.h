// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "engine/player.h"
#include "forms/item_tips.h"
#include "listedit/file_boxes.h"
#include "listedit/layout.h"

namespace corvane {

/// The controls of the play-list editor with their captions, choices and tab order.
class FileListControls : public Form {
public:
    static constexpr FormId kId = FormId::FileList;
    enum Button { kList = 0, kSave, kAdd, kAddAll, kDelete, kClear, kOk, kCancel, kUnused, kPage };
    enum Choice { kPattern = 0, kMovieZoom, kImageZoom, kInterval };
    enum Heading {
        kDriveHeading = 0,
        kPatternHeading,
        kMovieHeading,
        kImageHeading,
        kIntervalHeading,
        kFolderHeading,
        kFilesHeading,
        kPlayListHeading
    };

    /// Of the types, the filters are offered.
    explicit FileListControls(const MediaTypes& types);

    std::array<Label, 8> lblFileList;
    DriveBox drvFileList;
    FolderBox dirFileList;
    Image imgFileList;  ///< the splitter between the folders and the files
    TippedFileBox fleFileList;
    std::array<ComboBox, 4> cboFileList;
    std::array<TippedListBox, 2> lstFileList;  ///< names, and line for line the paths (never seen)
    TextBox txtListName;
    ScrollBar hscrFileList;
    ScrollBar hscrPageList;
    std::array<CommandButton, 10> cmdFileList;

private:
    void nameControls();
    void fillChoices(const MediaTypes& types);
    void orderTabs();
};

/// The play-list editor.
class frmFileList : public FileListControls {
public:
    explicit frmFileList(Player& player);

private:
    void tieButtons();
    void tieBoxes();
    void tieWindow();

    void Form_Load();
    void Form_Unload();
    void cmdFileList_Click(int index);
    void cboFileList_Click(int index);
    void hscrFileList_Change();
    void hscrPageList_Change();
    void drvFileList_Change();
    void fleFileList_DblClick();
    void lstFileList_DblClick();
    void lstFileList_OLEDragDrop(const DropData& dropped);
    void imgFileList_MouseMove(const MouseArgs& mouse);
    void dragWindow(const MouseArgs& mouse);

    void showSettings();
    void showListNumber();
    void showPageNumber();
    void reload();
    void save();
    void addSelected();
    void leaveFiles();
    void addAll();
    void deleteSelected();
    void clearList();
    void ok();
    void cancel();

    void addRow(std::string name, std::string path);
    void addFile(const std::string& name);
    void fitHorizontalRange();
    std::string currentListFile() const;
    void writeChoices();
    std::optional<std::int16_t> interval() const;  ///< chosen or typed, held in its range; empty: not a number
    void takeListIntoPlayer();

    Player& player_;
    FileBoxes boxes_;
    EditorLayout layout_;
    bool splitting_ = false;  ///< the splitter is held
};

}  // namespace corvane
