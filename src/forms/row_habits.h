// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "forms/control.h"
#include "forms/input.h"

namespace corvane {

/// What takes keys of its own in a dialog: a list before the tool kit's own list does, a form what no control took.
class TakesKeys {
public:
    std::function<bool(const KeyArgs&)> takeKey;  ///< a key went down; true: it was meant for it

protected:
    ~TakesKeys() = default;
};

/// A list whose selected rows can be dragged to another place in it.
class MovesRows {
public:
    std::function<void(int before)> moveRows;  ///< the row that they are to stand in front of; the count: behind all

protected:
    ~MovesRows() = default;
};

/// A list whose rows show more than their items' texts, as far as it is known: small pictures before them, columns
/// behind them.
class ShowsDetails {
public:
    /// Twips from the list's left edge; the item's text ends before the first one.
    struct Column {
        Twips left = 0;
        Twips width = 0;
        bool operator==(const Column&) const = default;
    };

    std::function<std::string(int row)> pictureFileOf;         ///< "": a row without a picture
    std::function<std::string(int row, int column)> detailOf;  ///< "": nothing (yet)
    std::function<void(int first, int last)> rowsSeen;         ///< other rows are seen now

    const std::vector<Column>& columns() const { return columns_; }
    bool hasPictures() const { return hasPictures_; }
    /// The columns that are shown, and whether the rows leave room for pictures.
    void show(std::vector<Column> columns, bool pictures) {
        if (columns == columns_ && pictures == hasPictures_) return;
        columns_ = std::move(columns);
        hasPictures_ = pictures;
        detailsChanged();
    }
    /// Rows say something else now.
    void detailsChanged() const {
        if (shownAgain) shownAgain();
    }
    std::function<void()> shownAgain;  ///< the window's

protected:
    ~ShowsDetails() = default;

private:
    std::vector<Column> columns_;
    bool hasPictures_ = false;
};

}  // namespace corvane
