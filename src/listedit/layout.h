// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "forms/control.h"
#include "forms/row_habits.h"

namespace corvane {

class FileListControls;

/// A column of the play list.
enum RowDetail { kTitleDetail = 0, kArtistDetail, kAlbumDetail, kLengthDetail };

/// Places the editor's controls for the window's size and the splitter. The lists take what the window has more.
class EditorLayout {
public:
    static constexpr Twips kLeastSplit = 630;  ///< the splitter's limits, on the form
    static constexpr Twips kMostSplit = 3690;

    explicit EditorLayout(FileListControls& form) : form_(form) {}

    /// What there is for the columns of a wide play list: what files say of themselves, and how long they play.
    void offer(bool texts, bool lengths) { offersTexts_ = texts, offersLengths_ = lengths; }
    /// Sets the window's first size and its limits.
    void setUp();
    /// Puts every control where it belongs.
    void place();
    /// Moves the left edge of the files to x, within the limits.
    void setSplit(Twips x);
    /// The columns that the play list has room for, and where.
    const std::vector<RowDetail>& details() const { return details_; }
    const std::vector<ShowsDetails::Column>& columns() const { return columns_; }

private:
    void placeFolders();
    void placeFiles();
    void placeCommands();
    void placePlayList();
    void placeColumns();
    void placeBottom();
    void placeStatus();
    Twips filesRight() const;

    FileListControls& form_;
    Twips split_ = 0;  ///< left edge of the files
    bool offersTexts_ = false, offersLengths_ = false;
    std::vector<RowDetail> details_;
    std::vector<ShowsDetails::Column> columns_;
};

}  // namespace corvane
