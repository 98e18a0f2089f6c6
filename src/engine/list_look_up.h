// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "platform/ports.h"

namespace corvane {

/// Looks up the files that one list is to take. After kMostMissing names without a file none is looked up any more:
/// each costs time of the user interface, and another program may drop or hand over names by the hundred thousand.
class ListLookUp {
public:
    static constexpr int kMostMissing = 1024;

    explicit ListLookUp(Files& files) : files_(files) {}
    /// The file's own name; empty when there is no such file, or too many names had none.
    std::optional<std::string> name(const std::string& path) {
        if (isOver()) return {};
        std::optional<std::string> found = files_.lookUp(path);
        if (!found) ++missing_;
        return found;
    }

    /// None is looked up any more.
    bool isOver() const { return missing_ == kMostMissing; }

private:
    Files& files_;
    int missing_ = 0;
};

}  // namespace corvane
