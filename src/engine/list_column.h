// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>

namespace corvane::mdlDefinePublic {

inline constexpr int kMaxFiles = 256;       ///< entries of a play list
inline constexpr int kMaxLongFiles = 9999;  ///< the same where long lists are on

/// One column of the play list: paths, titles or positions. It holds kMaxFiles entries from the beginning and grows up
/// to kMaxLongFiles with what is written to it; what nobody wrote is "" or 0. What a list leaves behind its own end
/// stays there, as it does in an array, and a reference to an entry stays whole while the column grows.
template <typename T>
class ListColumn {
public:
    T& operator[](std::size_t index) {
        if (index >= kMaxLongFiles) return nowhere_ = T();
        if (index >= entries_.size()) entries_.resize(index + 1);
        return entries_[index];
    }
    const T& operator[](std::size_t index) const {
        static const T kNothing{};
        return index < entries_.size() ? entries_[index] : kNothing;
    }

    /// All entries, those behind the list's end as well.
    void fill(const T& value) { std::fill(entries_.begin(), entries_.end(), value); }

    std::size_t size() const { return entries_.size(); }
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

private:
    std::deque<T> entries_ = std::deque<T>(kMaxFiles);
    T nowhere_{};  ///< what is written behind the last entry that there can be
};

}  // namespace corvane::mdlDefinePublic
