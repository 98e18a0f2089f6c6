// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "engine/player.h"
#include "forms/item_tips.h"

namespace corvane {

/// The controls of the window that finds an entry of the list, with their captions and tab order.
class FindControls : public Form {
public:
    static constexpr FormId kId = FormId::Find;
    enum Button { kPlayFound = 0, kClose };

    FindControls();

    Label lblFind;
    TextBox txtFind;
    TippedListBox lstFind;
    Label lblCount;
    std::array<CommandButton, 2> cmdFind;

protected:
    void place();  ///< for the window's size: the list takes what there is more
};

/// Finds entries by what is typed and plays the chosen one. It stands beside the panel and follows its list.
class frmFind : public FindControls {
public:
    explicit frmFind(Player& player);

private:
    void Form_Load();
    void txtFind_KeyDown(const KeyArgs& key);
    void takeList();
    void takeWords(const std::string& path);
    void showMore();
    /// Title, name and tags of an entry, as they are looked for.
    struct Folded {
        std::string text;
        std::size_t named = 0;  ///< so many bytes of it are title and name
        std::string_view name() const { return std::string_view(text).substr(0, named); }
    };
    Folded foldedOf(std::size_t entry) const;
    std::vector<int> found(const std::vector<std::string>& words) const;
    void showCount();
    void narrow();
    void show(const std::vector<int>& entries, int current);
    void followList();
    void playChosen();
    std::string row(int entry, const std::vector<std::string>& words) const;
    std::string foundBy(int entry, const std::vector<std::string>& words) const;

    /// What the shown rows were made of.
    struct Seen {
        std::uint32_t lists = 0, shuffles = 0;
        int count = 0;
        bool operator==(const Seen&) const = default;
    };
    Seen seenNow() const;

    Player& player_;
    std::vector<Folded> folded_;             ///< of each entry
    std::unordered_set<std::string> fresh_;  ///< paths whose tags were read since the rows were made
    std::int64_t shownAt_ = 0;               ///< by the clock
    std::vector<int> rows_;                  ///< entry of each row
    Seen seen_;
    EventLoop::Watch still_;
};

}  // namespace corvane
