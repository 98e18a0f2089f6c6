// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/player.h"

namespace corvane {

/// A file that a list may take.
struct OpenedFile {
    std::string path;
    std::string title;     ///< "" where its name says it
    std::string name;      ///< its own, where its folder has told it: then it is there; else ""
    bool isGiven = false;  ///< it is one of the names itself
};

struct OpenedFiles {
    std::vector<OpenedFile> files;
    std::vector<std::string> leftOut;  ///< lines for a person: what a list names and none can take, and why
    std::string firstMany;             ///< the first name that stood for many; "": none did
};

/// Bounds of what one drop, one start or one opening may lead to.
inline constexpr int kMostListDepth = 4;         ///< lists that name lists
inline constexpr int kMostLists = 64;            ///< lists and sheets that are read
inline constexpr int kMostFolderDepth = 16;      ///< folders in folders
inline constexpr int kMostFolders = 2048;        ///< that are looked into
inline constexpr int kMostFolderQuestions = 64;  ///< names that may be folders, beside those of folders that are
inline constexpr int kMostFolderMs = 8000;       ///< after so long no further folder is looked into while all wait
inline constexpr int kMostReadingMs = 60'000;    ///< and where nobody waits
inline constexpr std::size_t kMostOpened = 20'000;

/// What of the player decides what names stand for. A worker has a copy.
struct OpeningRules {
    Conveniences ways;
    /// Kinds of what is played, or may be, because nobody was asked yet, by extension.
    std::unordered_map<std::string, std::int16_t> types;
};
OpeningRules openingRules(const Player& player);

/// Where names are looked for, on the thread that looks.
struct Looking {
    Files& files;
    std::function<bool()> isGivenUp;             ///< nobody wants what is found
    std::function<bool()> isLate;                ///< no further folder is looked into
    std::function<void(std::size_t)> tell = {};  ///< so many files were found so far
};

/// Whether the name is that of a list of another player or of the sheet of a disc image, which `lists` opens. Asks
/// nobody.
bool isNameOfList(const Player& player, const std::string& path);
/// Whether the path leads to a folder, which `lists` opens, however it is named.
bool opensAsFolder(const Player& player, const std::string& path);

/// What the names stand for, in order. With `lists`, a list of another player, the sheet of a disc image and a folder
/// are what is in them; anything else is itself, and so is all without it. Whether there are such files is not asked
/// where nothing depends on it. It ends by the bounds above, however lists and folders lead to each other.
OpenedFiles openedAs(const OpeningRules& rules, const Looking& looking, const std::vector<std::string>& named);
/// The same while all wait.
OpenedFiles openedAs(const Player& player, const std::vector<std::string>& named);

/// A file that a list takes.
struct TakenFile {
    std::string path;
    std::string name;    ///< its own, as the folder gives it
    std::string title;   ///< what is shown for it
    bool named = false;  ///< the title is not the name's: what it was opened by says it
};

/// Files that are there.
struct FoundFiles {
    std::vector<TakenFile> files;
    std::vector<std::string> leftOut;  ///< lines for a person: what lists and folders hold and none can take
    std::vector<std::string> reasons;  ///< a line for each name that is no such file, why not
};

/// Those of the files that the names stand for which are there and may be played, in order, at most `room`.
FoundFiles findFiles(const OpeningRules& rules, const Looking& looking, const std::vector<std::string>& named,
                     std::size_t room);
/// The same while all wait.
FoundFiles findFiles(const Player& player, const std::vector<std::string>& named, std::size_t room);
/// Those of them that are played; where there is none, the reasons of the others too.
FoundFiles takeFound(Player& player, FoundFiles found);
/// The same of names. A person is told what was left out of lists and folders.
FoundFiles filesTaken(Player& player, const std::vector<std::string>& named, std::size_t room);

/// Whether what the names stand for is looked for where nobody waits: they may be lists or folders, or are many.
bool isReadElsewhere(const Player& player, const std::vector<std::string>& named);
inline constexpr std::size_t kFewNames = 64;  ///< so many plain files are looked up at once

/// A person is told, by one box when the present handler is over, what was left out of lists and folders; with PLAYS
/// also why nothing is played, or with `eachName` each name that is not.
void tellLeftOut(Player& player, const FoundFiles& found, bool eachName = false);
/// A person is told what was left out of what was opened, by a box when the present handler is over.
void tellLeftOut(Player& player, const std::vector<std::string>& lines);

}  // namespace corvane
