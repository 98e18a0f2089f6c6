// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/movie_control.h"

namespace corvane {

/// Which chapter a step leads to from a position: the next one; back, to the beginning of the present one, or to the
/// one before when that has hardly begun. Empty where there is none: behind the last chapter nothing lies.
std::optional<std::size_t> chapterBeside(const std::vector<MovieChapter>& chapters, double seconds, bool back);

/// What is said of a step to that chapter.
std::string chapterText(const std::vector<MovieChapter>& chapters, std::optional<std::size_t> chapter);

}  // namespace corvane
