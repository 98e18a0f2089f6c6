// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/file_texts.h"

namespace corvane {

struct Player;

/// What files say of themselves, as far as it has been read, and the title of the panel that is made of it. Nothing
/// waits for it: until it is there, a file's name stands. Without the convenience nothing is read, and names stand.
class KnownTexts {
public:
    /// The player outlives it.
    explicit KnownTexts(Player& player) : player_(player) {}

    /// Has a file read whose title is likely to be shown soon.
    void expect(const std::string& path);
    /// What is known, in UTF-8 and as it may be shown; null: nothing (yet). Valid until the next call.
    const FileTexts* find(const std::string& path) const;
    /// The title of the panel from now on: the file's title and artist, else the name. What comes later replaces the
    /// name on the panel. A file that was shown before is read again meanwhile: it may have changed.
    std::string show(const std::string& path, const std::string& name);
    void showNothing() { shown_.clear(); }

    /// Has the words of all these files read, one after the other, behind whatever is to be shown, and keeps them until
    /// others are gathered. What is known already is not read again. `more` is called for each file that was read.
    void gather(const std::vector<std::string>& paths, std::function<void(const std::string& path)> more);
    /// Reads no further; what has been gathered stays.
    void stopGathering();
    std::size_t leftToGather() const { return toGather_.size() + (gathering_.empty() ? 0U : 1U); }
    /// Title, artist and album, a line each, where they are known by the panel or were gathered; "": nothing (yet).
    std::string words(const std::string& path) const;

    static constexpr std::size_t kMostKnown = 16;    ///< files; their covers are kept with them
    static constexpr std::size_t kMostWaiting = 3;   ///< files; those that were asked for first are given up
    static constexpr std::size_t kMostWords = 1024;  ///< bytes of a file's words that are kept

private:
    struct Known {
        std::string path;
        FileTexts texts;
        bool wasShown = false;
    };
    bool isRead(const std::string& path) const;
    Known* known(const std::string& path);
    void ask(const std::string& path);
    void readNext();
    void take(const std::string& path, FileTexts texts);
    void gatherNext();

    Player& player_;
    std::deque<Known> known_;          ///< the latest first
    std::deque<std::string> waiting_;  ///< the latest first
    std::string reading_;              ///< "": nothing is being read, or something is gathered
    std::deque<std::string> toGather_;
    std::string gathering_;  ///< "": nothing is being gathered
    std::unordered_map<std::string, std::string> words_;
    std::function<void(const std::string& path)> more_;
    std::string shown_, shownName_;  ///< what the panel's title stands for; "": nothing
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace corvane
