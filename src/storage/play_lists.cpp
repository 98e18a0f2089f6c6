// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/play_lists.h"

#include <algorithm>
#include <utility>

#include "engine/mdlPublicFunction.h"
#include "engine/opened_lists.h"
#include "storage/profile_file.h"
#include "storage/resume.h"
#include "types/numbers.h"

namespace corvane {

using mdlDefinePublic::kMaxFiles;
using mdlDefinePublic::kMaxLongFiles;
using mdlDefinePublic::maxFiles;
using mdlPublicFunction::giveAtStart;
using mdlPublicFunction::showList;
using mdlPublicFunction::titleOf;

namespace {

constexpr const char* kListSection = "FILELIST";
constexpr const char* kListNameKey = "LISTNAME";

std::string entryKey(int index) { return "LIST" + zeroPadded(index, 3); }

bool continuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

std::string storedEntry(ListEntry entry) {
    std::replace(entry.name.begin(), entry.name.end(), '|', '_');
    const std::size_t room = kProfileBuffer - 1;
    const std::size_t rest = entry.path.size() + 1;
    // A path that leaves no room is cut when it is read; the bar must not be, for it would end the list there.
    const std::size_t forName = rest < room ? room - rest : room / 2;
    if (entry.name.size() > forName) {
        std::size_t length = forName;
        while (length > 1 && continuesCharacter(entry.name[length])) --length;
        entry.name.resize(length);
    }
    return entry.name + '|' + entry.path;
}

/// What the file holds behind the list's end would be read as more of it.
void emptyBehind(Player& player, const std::string& file, std::size_t end, std::vector<ProfileKey>& keys) {
    const std::string text = readProfileFile(player.ports.files, file);
    const ProfileSection section(text, kListSection);
    for (std::size_t i = end; i < kMaxLongFiles; ++i) {
        std::string key = entryKey(static_cast<int>(i));
        if (section.get(key).empty()) break;
        keys.emplace_back(std::move(key), storedEntry({}));
    }
}

/// Puts an entry at the next free index.
class ListFiller {
public:
    explicit ListFiller(Player& player) : player_(player) {}
    void add(std::string title, std::string path) {
        player_.gFileTitle[count_] = std::move(title);
        player_.gFilePath[count_] = std::move(path);
        ++count_;
    }
    void finish() {
        if (count_ == 0) return;
        player_.gFileCount = static_cast<std::int16_t>(count_);
        showList(player_);
    }

private:
    Player& player_;
    std::size_t count_ = 0;
};

void fillFromCommandLine(Player& player, std::string_view commandLine) {
    std::vector<std::string> names;
    while (!commandLine.empty()) {
        const std::size_t blank = std::min(commandLine.find(' '), commandLine.size());
        const std::string_view piece = commandLine.substr(0, blank);
        commandLine.remove_prefix(std::min(blank + 1, commandLine.size()));
        names.emplace_back(piece);
    }
    if (isReadElsewhere(player, names)) return giveAtStart(player, names, false);
    ListFiller filler(player);
    for (TakenFile& file : filesTaken(player, names, maxFiles(player)).files) {
        filler.add(std::move(file.title), std::move(file.path));
    }
    filler.finish();
}

void fillFromFile(Player& player) {
    ListFiller filler(player);
    const std::string file = listFileName(player, player.gPageNumber, player.gListNumber);
    for (ListEntry& entry : readPlayList(player, file).entries) {
        filler.add(titleOf(player.conveniences, entry.name), std::move(entry.path));
    }
    filler.finish();
}

}  // namespace

std::string listFileName(const Player& player, int page, int list) {
    return player.gListFileStem + zeroPadded(page * 10 + list, 2) + ".INI";
}

std::optional<ListEntry> splitEntry(std::string_view value) {
    std::size_t separator = value.find('|');
    if (separator == std::string_view::npos) separator = value.find(',');
    if (separator == std::string_view::npos || separator == 0) return std::nullopt;
    return ListEntry{std::string(value.substr(0, separator)), std::string(value.substr(separator + 1))};
}

PlayList readPlayList(Player& player, const std::string& file) {
    const std::string text = readProfileFile(player.ports.files, file);
    const ProfileSection section(text, kListSection);
    PlayList list{section.get(kListNameKey), {}};
    const auto take = [&](int from, int end) {
        for (int i = from; i < end; ++i) {
            auto entry = splitEntry(section.get(entryKey(i)));
            if (!entry) break;
            list.entries.push_back(std::move(*entry));
        }
    };
    take(0, kMaxFiles);
    take(kMaxFiles, static_cast<int>(maxFiles(player)));
    return list;
}

bool writePlayList(Player& player, const std::string& file, const PlayList& list) {
    std::vector<ProfileKey> keys{{kListNameKey, list.listName}};
    const auto add = [&](std::size_t index) {
        keys.emplace_back(entryKey(static_cast<int>(index)),
                          storedEntry(index < list.entries.size() ? list.entries[index] : ListEntry{}));
    };
    for (std::size_t i = 0; i < kMaxFiles; ++i) add(i);
    const std::size_t most = maxFiles(player);
    if (most > kMaxFiles) {
        for (std::size_t i = kMaxFiles; i < std::min(list.entries.size(), most); ++i) add(i);
        emptyBehind(player, file, std::max<std::size_t>(list.entries.size(), kMaxFiles), keys);
    }
    return writeProfileFile(player.ports.files, file, kListSection, keys);
}

bool canBeStored(std::string_view path) { return path.size() + 1 < kProfileBuffer - 1; }

void loadListAtStart(Player& player) {
    const std::string commandLine = player.ports.process.commandLine();
    const std::vector<std::string> opened = player.ports.process.filesToOpen();
    const bool isGiven = !commandLine.empty() || !opened.empty();
    const bool isRemembered = takeRemembered(player, !isGiven);
    if (!commandLine.empty()) {
        fillFromCommandLine(player, commandLine);
    } else if (!isRemembered) {
        fillFromFile(player);
    }
    if (!opened.empty()) giveAtStart(player, opened, true);
}

}  // namespace corvane
