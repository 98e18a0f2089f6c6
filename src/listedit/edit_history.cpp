// SPDX-License-Identifier: GPL-3.0-or-later
#include "listedit/edit_history.h"

#include <utility>

namespace corvane {

namespace {

std::size_t bytesOf(const ListChange& change) {
    std::size_t bytes = sizeof(ListChange) + change.nameBefore.size() + change.nameAfter.size() +
                        change.at.size() * sizeof(int) + change.rows.size() * sizeof(ListEntry);
    for (const ListEntry& each : change.rows) bytes += each.name.size() + each.path.size();
    return bytes;
}

bool isRising(const std::vector<int>& places, std::size_t below) {
    int before = -1;
    for (const int each : places) {
        if (each <= before || static_cast<std::size_t>(each) >= below) return false;
        before = each;
    }
    return true;
}

bool isOrder(const std::vector<int>& order, std::size_t count) {
    std::vector<bool> seen(count);
    if (order.size() != count) return false;
    for (const int each : order) {
        if (each < 0 || static_cast<std::size_t>(each) >= count || seen[static_cast<std::size_t>(each)]) return false;
        seen[static_cast<std::size_t>(each)] = true;
    }
    return true;
}

std::vector<ListEntry> withRows(std::vector<ListEntry> rows, const ListChange& change) {
    std::vector<ListEntry> all;
    all.reserve(rows.size() + change.rows.size());
    std::size_t old = 0;
    std::size_t fresh = 0;
    while (all.size() < rows.size() + change.rows.size()) {
        const bool isFresh = fresh < change.at.size() && change.at[fresh] == static_cast<int>(all.size());
        all.push_back(isFresh ? change.rows[fresh++] : std::move(rows[old++]));
    }
    return all;
}

std::vector<ListEntry> withoutRows(std::vector<ListEntry> rows, const std::vector<int>& places) {
    std::vector<ListEntry> kept;
    kept.reserve(rows.size() - places.size());
    std::size_t next = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (next < places.size() && places[next] == static_cast<int>(i)) {
            ++next;
        } else {
            kept.push_back(std::move(rows[i]));
        }
    }
    return kept;
}

std::vector<ListEntry> inOrder(std::vector<ListEntry> rows, const std::vector<int>& order) {
    std::vector<ListEntry> all;
    all.reserve(rows.size());
    for (const int each : order) all.push_back(std::move(rows[static_cast<std::size_t>(each)]));
    return all;
}

}  // namespace

ListChange reversed(const ListChange& change) {
    ListChange back{change.kind, change.rows, change.at, change.nameAfter, change.nameBefore};
    if (change.kind == ListChange::Kind::CameIn) back.kind = ListChange::Kind::Went;
    if (change.kind == ListChange::Kind::Went) back.kind = ListChange::Kind::CameIn;
    if (change.kind == ListChange::Kind::Reordered) {
        for (std::size_t i = 0; i < change.at.size(); ++i) {
            back.at[static_cast<std::size_t>(change.at[i])] = static_cast<int>(i);
        }
    }
    return back;
}

bool applyChange(std::vector<ListEntry>& rows, const ListChange& change) {
    switch (change.kind) {
        case ListChange::Kind::CameIn:
            if (change.at.size() != change.rows.size()) return false;
            if (!isRising(change.at, rows.size() + change.rows.size())) return false;
            rows = withRows(std::move(rows), change);
            return true;
        case ListChange::Kind::Went:
            if (!isRising(change.at, rows.size())) return false;
            rows = withoutRows(std::move(rows), change.at);
            return true;
        default:
            if (!isOrder(change.at, rows.size())) return false;
            rows = inOrder(std::move(rows), change.at);
            return true;
    }
}

void EditHistory::clear() {
    changes_.clear();
    done_ = bytes_ = 0;
    first_ = saved_ = ++numbers_;
}

void EditHistory::add(ListChange change) {
    dropFrom(done_);
    const std::size_t bytes = bytesOf(change);
    changes_.push_back({std::move(change), bytes, ++numbers_});
    bytes_ += bytes;
    done_ = changes_.size();
    while (changes_.size() > kMostChanges || (bytes_ > kMostBytes && changes_.size() > 1)) {
        first_ = changes_.front().number;
        bytes_ -= changes_.front().bytes;
        changes_.pop_front();
        --done_;
    }
}

const ListChange* EditHistory::undo() { return canUndo() ? &changes_[--done_].change : nullptr; }

const ListChange* EditHistory::redo() { return canRedo() ? &changes_[done_++].change : nullptr; }

void EditHistory::dropFrom(std::size_t place) {
    while (changes_.size() > place) {
        bytes_ -= changes_.back().bytes;
        changes_.pop_back();
    }
}

}  // namespace corvane
