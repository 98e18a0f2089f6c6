// SPDX-License-Identifier: GPL-3.0-or-later
#include "lists/natural_order.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "types/text.h"

namespace corvane {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Takes the digits at the front, without leading zeros.
std::string_view takeNumber(std::string_view& text) {
    while (text.size() > 1 && text[0] == '0' && isDigit(text[1])) text.remove_prefix(1);
    std::size_t length = 0;
    while (length < text.size() && isDigit(text[length])) ++length;
    const std::string_view number = text.substr(0, length);
    text.remove_prefix(length);
    return number;
}

/// Below 0: a comes first; 0: they are the same but for zeros in front of numbers. Both are in capitals.
int compare(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        if (isDigit(a.front()) && isDigit(b.front())) {
            const std::string_view left = takeNumber(a), right = takeNumber(b);
            if (left.size() != right.size()) return left.size() < right.size() ? -1 : 1;
            if (const int order = left.compare(right); order != 0) return order;
            continue;
        }
        if (a.front() != b.front()) {
            return static_cast<unsigned char>(a.front()) < static_cast<unsigned char>(b.front()) ? -1 : 1;
        }
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    return a.empty() ? (b.empty() ? 0 : -1) : 1;
}

}  // namespace

bool isBeforeNaturally(std::string_view a, std::string_view b) {
    const int order = compare(text::capitals(a), text::capitals(b));
    return order != 0 ? order < 0 : a < b;
}

void sortNaturally(std::vector<std::string>& names) {
    std::vector<std::pair<std::string, std::string>> keyed;
    keyed.reserve(names.size());
    for (std::string& name : names) {
        std::string key = text::capitals(name);
        keyed.emplace_back(std::move(key), std::move(name));
    }
    std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
        const int order = compare(a.first, b.first);
        return order != 0 ? order < 0 : a.second < b.second;
    });
    names.clear();
    for (auto& [key, name] : keyed) names.push_back(std::move(name));
}

}  // namespace corvane
