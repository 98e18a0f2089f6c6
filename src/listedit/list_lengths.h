// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/player.h"

namespace corvane {

/// How long the files of the editor's list play: asked one after the other, each path once, kept while the editor is
/// open.
class ListLengths {
public:
    /// Of all rows together.
    struct Total {
        std::int64_t milliseconds = 0;  ///< of those that are known
        int unknown = 0;                ///< asked, and nobody knows
        int waiting = 0;                ///< not asked yet
        bool operator==(const Total&) const = default;
    };

    /// `changed` is called when more is known. The player outlives it.
    ListLengths(Player& player, std::function<void()> changed) : player_(player), changed_(std::move(changed)) {}
    ListLengths(const ListLengths&) = delete;
    ListLengths& operator=(const ListLengths&) = delete;
    ~ListLengths() { stop(); }

    /// These are the list's files now: those that nobody was asked about are asked about.
    void take(const std::vector<std::string>& paths);
    /// Asks no further; what is known stays.
    void stop();
    bool isReading() const { return reading_; }
    /// Empty: not known, or a picture, which has none.
    std::optional<std::int64_t> of(const std::string& path) const;
    const Total& total() const { return total_; }

private:
    /// How many answers are taken before the total is counted again: counting takes time of its own in a long list.
    static constexpr std::size_t kAtOnce = 64;

    void next();
    void count();
    std::optional<std::int16_t> kindOf(const std::string& path) const;

    Player& player_;
    std::function<void()> changed_;
    std::vector<std::string> paths_;
    std::deque<std::string> waiting_;
    std::unordered_map<std::string, std::optional<std::int64_t>> known_;
    std::size_t answers_ = 0;  ///< since the total was counted
    bool reading_ = false;
    Total total_;
};

/// "3:05", "1:02:03"; whole seconds.
std::string lengthText(std::int64_t milliseconds);

/// What the editor's last line says of them: "3 files, 12:05", "1 file, 1 of unknown length" …
std::string lengthText(int count, const ListLengths::Total& total, bool reading);

}  // namespace corvane
