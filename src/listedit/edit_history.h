// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "storage/play_lists.h"

namespace corvane {

/// One change of the editor's list, which can be taken back and made again.
struct ListChange {
    enum class Kind { CameIn, Went, Reordered };
    Kind kind = Kind::CameIn;
    std::vector<ListEntry> rows;  ///< that came in or went
    /// Where they stand among all rows, rising. Of a reordering: for each place the row that stood there before.
    std::vector<int> at;
    std::string nameBefore;  ///< of the list; both alike where it stayed
    std::string nameAfter;
};

/// The same the other way round.
ListChange reversed(const ListChange& change);

/// The rows after the change; false: it does not fit them, and they are as they were.
bool applyChange(std::vector<ListEntry>& rows, const ListChange& change);

/// The last changes of a list, and whether it differs from what was read or saved last.
class EditHistory {
public:
    static constexpr std::size_t kMostChanges = 100;
    static constexpr std::size_t kMostBytes = std::size_t{64} << 20U;  ///< of all; the oldest ones go first

    /// Another list has been read: nothing can be taken back, and nothing is unsaved.
    void clear();
    /// A change that has been made. What had been taken back cannot be made again any more.
    void add(ListChange change);
    /// The change to take back, or to make again; null: there is none. The next call goes on from there.
    const ListChange* undo();
    const ListChange* redo();
    bool canUndo() const { return done_ > 0; }
    bool canRedo() const { return done_ < changes_.size(); }

    /// The list stands in its file as it is now.
    void markSaved() { saved_ = now(); }
    bool isSaved() const { return saved_ == now(); }

private:
    struct Kept {
        ListChange change;
        std::size_t bytes;
        std::uint64_t number;  ///< of the list's state behind it
    };
    std::uint64_t now() const { return done_ == 0 ? first_ : changes_[done_ - 1].number; }
    void dropFrom(std::size_t place);

    std::deque<Kept> changes_;
    std::size_t done_ = 0;     ///< changes that are in the list; behind them those that were taken back
    std::size_t bytes_ = 0;    ///< of all changes
    std::uint64_t first_ = 0;  ///< number of the state before all changes
    std::uint64_t numbers_ = 0;
    std::uint64_t saved_ = 0;
};

}  // namespace corvane
