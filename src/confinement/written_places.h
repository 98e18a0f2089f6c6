// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace corvane {

/// What became of the bounds of writing.
struct WrittenPlaces {
    int version = 0;                  ///< of the kernel's bounds; 0: none are in force
    std::vector<std::string> places;  ///< where writing stays possible
    std::string why;                  ///< when none are in force, in words
};

/// From here on the calling thread, and those that it starts, can read everywhere as before, but make, change, rename
/// and remove files only in these folders and these single files. In the folders `added` files can be made and written,
/// but neither removed, renamed nor emptied. What of them does not exist is left out; what is open already stays so. No
/// program can be started. It cannot be undone. Where the kernel has no such bounds, nothing changes.
WrittenPlaces boundWriting(const std::vector<std::string>& places, const std::vector<std::string>& added = {});

}  // namespace corvane
