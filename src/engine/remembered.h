// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// Where a long file was left.
struct LeftPlace {
    std::string path;
    std::int64_t us = 0;
    bool operator==(const LeftPlace&) const = default;
};

/// What is kept from one run to the next, for Conveniences::resume.
struct Remembered {
    std::vector<LeftPlace> places;  ///< the file left last first
    /// The list's present entry was open when the run before ended, and stood there: it is opened again. Empty: it was
    /// not, or another list came first.
    std::optional<std::int64_t> openAtUs;
    bool canBeKept = false;  ///< what was kept has been read, or there was nothing: it may be written over
};

}  // namespace corvane
