// SPDX-License-Identifier: GPL-3.0-or-later
#include "players/movie_chapters.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr double kHardlyBegun = 3;    // seconds
constexpr double kAtItsStart = 0.02;  // seconds: positions are told in hundredths

}  // namespace

std::optional<std::size_t> chapterBeside(const std::vector<MovieChapter>& chapters, double seconds, bool back) {
    const auto begun = std::count_if(chapters.begin(), chapters.end(), [seconds](const MovieChapter& chapter) {
        return chapter.seconds <= seconds + kAtItsStart;
    });
    const auto next = static_cast<std::size_t>(begun);
    if (!back) return next < chapters.size() ? std::optional(next) : std::nullopt;
    if (next == 0) return std::nullopt;
    const std::size_t present = next - 1;
    const bool hardlyBegun = seconds - chapters[present].seconds < kHardlyBegun;
    return hardlyBegun && present > 0 ? present - 1 : present;
}

std::string chapterText(const std::vector<MovieChapter>& chapters, std::optional<std::size_t> chapter) {
    if (chapters.empty()) return "No chapters";
    if (!chapter) return "No further chapter";
    const std::string& title = chapters[*chapter].title;
    return "Chapter " + std::to_string(*chapter + 1) + " of " + std::to_string(chapters.size()) +
           (title.empty() ? "" : ": " + title);
}

}  // namespace corvane
