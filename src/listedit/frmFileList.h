// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/player.h"
#include "forms/item_tips.h"
#include "forms/row_habits.h"
#include "listedit/edit_history.h"
#include "listedit/file_boxes.h"
#include "listedit/layout.h"
#include "listedit/list_lengths.h"
#include "platform/file_texts.h"
#include "platform/seen_files.h"
#include "storage/exported_lists.h"

namespace corvane {

/// The editor's own list: it takes keys, its rows can be dragged, and they show more than their names.
class PlayListBox : public TippedListBox, public TakesKeys, public MovesRows, public ShowsDetails {
public:
    using TippedListBox::TippedListBox;
};

/// The controls of the play-list editor with their captions, choices and tab order.
class FileListControls : public Form, public TakesKeys {
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
    enum Edit { kUndo = 0, kRedo, kStopReading, kFindNext, kExport };
    enum Sort { kByName = 0, kByPath, kByLength };

    /// Of the types, the filters are offered.
    explicit FileListControls(const MediaTypes& types);

    std::array<Label, 8> lblFileList;
    DriveBox drvFileList;
    FolderBox dirFileList;
    Image imgFileList;  ///< the splitter between the folders and the files
    TippedFileBox fleFileList;
    std::array<ComboBox, 4> cboFileList;
    std::array<PlayListBox, 2> lstFileList;  ///< names, and line for line the paths (never seen)
    TextBox txtListName;
    ScrollBar hscrFileList;
    ScrollBar hscrPageList;
    std::array<CommandButton, 10> cmdFileList;

    std::array<Label, 4> lblDetail;  ///< above the columns of a wide list, by RowDetail
    std::array<CommandButton, 5> cmdEdit;
    Label lblSort;
    ComboBox cboSort;
    TextBox txtFind;
    Label lblStatus;  ///< how many files, how long, whether they are saved

private:
    void nameControls();
    void nameEditing();
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
    void insertFound(FoundFiles found);
    void addAll();
    void deleteSelected();
    void clearList();
    void ok();
    void cancel();

    void tieEditing();
    static void takeEnter(CommandButton& taker, CommandButton& other);
    void stopReading();
    bool takeFormKey(const KeyArgs& key);
    bool takeListKey(const KeyArgs& key);
    void cmdEdit_Click(int index);
    void deleteByKey();
    void stepSelected(int by);
    void moveSelected(int before);
    void sortRows(int by);
    void sortAgain();
    void find(int step);
    // Changes of the list, each of which can be taken back.
    void insertRows(std::vector<ListEntry> rows);
    void removeRows(std::vector<int> places);
    void reorder(std::vector<int> order);
    void make(ListChange change);
    void takeBack();
    void makeAgain();
    void showAgain(const ListChange& change);
    bool show(const ListChange& change);
    std::vector<ListEntry> rows() const;
    void setRows(std::vector<ListEntry> rows);
    void selectRows(const std::vector<int>& places, int current);
    void listIsRead();
    void rowsChanged();
    bool losesChanges() const;
    bool mayLoseChanges();
    void turnTo(ScrollBar& bar, std::int16_t& number, int value);
    void exportList();
    std::vector<ExportedEntry> exportedEntries();
    void showState();
    bool isSaved() const { return history_.isSaved() && txtListName.Text.get() == savedName_; }

    void tieDetails();
    void showDetails();
    std::string detail(int row, int column) const;
    void wantTexts();
    void readTexts(const std::string& file, const std::function<void(FileTexts)>& done);

    ListEntry entryOf(const std::string& name) const;
    void fitHorizontalRange();
    std::string currentListFile() const;
    void writeChoices();
    std::optional<std::int16_t> interval() const;  ///< chosen or typed, held in its range; empty: not a number
    void takeListIntoPlayer();

    Player& player_;
    FileBoxes boxes_;
    EditorLayout layout_;
    std::unordered_map<std::string, int> widths_;  ///< of names, pixels: measuring a long list again takes its time
    EditHistory history_;
    ListLengths lengths_{player_, [this] {
                             sortAgain();
                             showState();
                             lstFileList[0].detailsChanged();
                         }};
    ListReading dropped_{player_.ports, [this] { showState(); }};
    SeenFiles<FileTexts> texts_{[this](const std::string& file, const auto& done) { readTexts(file, done); },
                                {},
                                [this] { lstFileList[0].detailsChanged(); }};
    int firstSeen_ = 0, lastSeen_ = -1;  ///< rows that are seen
    std::string savedName_;              ///< of the list, as it was read or saved last
    bool reading_ = false;               ///< a list is being read
    bool sorting_ = false;
    bool asking_ = false;       ///< whether changes may be lost: a stepper that is held down asks once
    bool turningBack_ = false;  ///< a stepper goes back to the list that is shown
    bool splitting_ = false;    ///< the splitter is held
};

}  // namespace corvane
