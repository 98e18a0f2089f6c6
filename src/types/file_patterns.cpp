// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/file_patterns.h"

#include "types/text.h"

namespace corvane {

namespace {

using text::lower;

bool matches(std::string_view name, std::string_view pattern) {
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t star = std::string_view::npos;  // the last "*" seen, and where its run began
    std::size_t run = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            run = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || lower(pattern[p]) == lower(name[n]))) {
            ++n;
            ++p;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++run;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

}  // namespace

bool matchesAnyPattern(std::string_view name, std::string_view patterns) {
    while (true) {
        const std::size_t end = patterns.find(';');
        const std::string_view pattern = patterns.substr(0, end);
        if (pattern == "*.*" || (!pattern.empty() && matches(name, pattern))) return true;
        if (end == std::string_view::npos) return false;
        patterns.remove_prefix(end + 1);
    }
}

}  // namespace corvane
