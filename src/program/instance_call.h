// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Bytes of all paths that one call hands over, on every desktop; what lies beyond is told and left out.
constexpr std::size_t kMostInCall = std::size_t{4} << 20U;

/// What a later start of the program says to the one that runs: each file's path with a NUL behind it. Without a file
/// it says nothing, and its call alone counts.
std::string callOf(const std::vector<std::string>& files);

/// How many of the files, from the first on, a call of at most so many bytes holds.
std::size_t fittingInCall(const std::vector<std::string>& files, std::size_t mostBytes);

/// Reads it, in whatever pieces it comes.
class CallReader {
public:
    explicit CallReader(std::size_t mostBytes) : most_(mostBytes) {}

    /// False: it is longer than it may be; nothing of it counts.
    bool take(std::string_view piece);
    /// Once all has come. What no NUL ends was cut off and does not count, and neither does an empty path.
    std::vector<std::string> files() const;

private:
    std::size_t most_;
    std::string text_;
};

}  // namespace corvane
