// SPDX-License-Identifier: GPL-3.0-or-later
#include "listedit/row_order.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <numeric>
#include <string_view>

#include "types/folding.h"
#include "types/text.h"

namespace corvane {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The digits at the text's front, without leading zeros; the text goes on behind them.
std::string_view takeNumber(std::string_view& text) {
    std::size_t length = 0;
    while (length < text.size() && isDigit(text[length])) ++length;
    std::string_view number = text.substr(0, length);
    text.remove_prefix(length);
    while (number.size() > 1 && number.front() == '0') number.remove_prefix(1);
    return number;
}

/// Below, alike or above, numbers by their value: "Track 9" comes before "Track 10".
int compared(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        if (isDigit(a.front()) && isDigit(b.front())) {
            const std::string_view x = takeNumber(a);
            const std::string_view y = takeNumber(b);
            if (x.size() != y.size()) return x.size() < y.size() ? -1 : 1;
            if (const int digits = x.compare(y); digits != 0) return digits;
        } else if (a.front() != b.front()) {
            return static_cast<unsigned char>(a.front()) < static_cast<unsigned char>(b.front()) ? -1 : 1;
        } else {
            a.remove_prefix(1);
            b.remove_prefix(1);
        }
    }
    return a.empty() == b.empty() ? 0 : a.empty() ? -1 : 1;
}

std::vector<int> orderBy(const std::vector<ListEntry>& rows, std::string ListEntry::*what) {
    std::vector<std::string> keys;
    keys.reserve(rows.size());
    for (const ListEntry& each : rows) keys.push_back(text::capitals(each.*what));
    std::vector<int> order(rows.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&keys](int a, int b) {
        return compared(keys[static_cast<std::size_t>(a)], keys[static_cast<std::size_t>(b)]) < 0;
    });
    return order;
}

std::vector<bool> marks(int count, const std::vector<int>& chosen) {
    std::vector<bool> marked(static_cast<std::size_t>(count));
    for (const int each : chosen) marked.at(static_cast<std::size_t>(each)) = true;
    return marked;
}

}  // namespace

std::vector<int> orderByName(const std::vector<ListEntry>& rows) { return orderBy(rows, &ListEntry::name); }

std::vector<int> orderByPath(const std::vector<ListEntry>& rows) { return orderBy(rows, &ListEntry::path); }

std::vector<int> orderByLength(const std::vector<std::optional<std::int64_t>>& milliseconds) {
    constexpr std::int64_t kLast = std::numeric_limits<std::int64_t>::max();
    std::vector<int> order(milliseconds.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        return milliseconds[static_cast<std::size_t>(a)].value_or(kLast) <
               milliseconds[static_cast<std::size_t>(b)].value_or(kLast);
    });
    return order;
}

std::vector<int> orderMoved(int count, const std::vector<int>& chosen, int before) {
    const std::vector<bool> marked = marks(count, chosen);
    std::vector<int> order;
    order.reserve(static_cast<std::size_t>(count));
    const auto takeOthers = [&](int from, int to) {
        for (int row = from; row < to; ++row) {
            if (!marked[static_cast<std::size_t>(row)]) order.push_back(row);
        }
    };
    const int place = std::clamp(before, 0, count);
    takeOthers(0, place);
    order.insert(order.end(), chosen.begin(), chosen.end());
    takeOthers(place, count);
    return order;
}

std::vector<int> orderStepped(int count, const std::vector<int>& chosen, int by) {
    std::vector<bool> marked = marks(count, chosen);
    std::vector<int> order(static_cast<std::size_t>(count));
    std::iota(order.begin(), order.end(), 0);
    for (int i = 0; i < count; ++i) {
        const int row = by < 0 ? i : count - 1 - i;
        const int to = row + by;
        if (!marked[static_cast<std::size_t>(row)] || to < 0 || to >= count) continue;
        if (marked[static_cast<std::size_t>(to)]) continue;
        std::swap(order[static_cast<std::size_t>(row)], order[static_cast<std::size_t>(to)]);
        marked[static_cast<std::size_t>(row)] = false;
        marked[static_cast<std::size_t>(to)] = true;
    }
    return order;
}

bool isUnchanged(const std::vector<int>& order) { return std::is_sorted(order.begin(), order.end()); }

std::vector<int> placesAfter(const std::vector<int>& order, const std::vector<int>& rows) {
    const std::vector<bool> marked = marks(static_cast<int>(order.size()), rows);
    std::vector<int> places;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (marked[static_cast<std::size_t>(order[i])]) places.push_back(static_cast<int>(i));
    }
    return places;
}

int findRow(const std::vector<std::string>& names, const std::vector<std::string>& paths, const std::string& text,
            int from) {
    const std::vector<std::string> words = text::wordsToFind(text);
    if (words.empty()) return -1;
    for (const auto* texts : {&names, &paths}) {
        const std::size_t count = texts->size();
        const std::size_t first = from < 0 ? 0 : static_cast<std::size_t>(from);
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t row = (first + i) % count;
            if (text::holdsAll(text::folded((*texts)[row]), words)) return static_cast<int>(row);
        }
    }
    return -1;
}

}  // namespace corvane
