// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/play_lists.h"

#include <algorithm>
#include <utility>

#include "engine/list_look_up.h"
#include "engine/mdlPublicFunction.h"
#include "storage/profile_file.h"
#include "types/numbers.h"

namespace corvane {

using mdlDefinePublic::kMaxFiles;
using mdlPublicFunction::GetBaseName;
using mdlPublicFunction::GetExtension;
using mdlPublicFunction::showList;
using mdlPublicFunction::takeFiles;
using mdlPublicFunction::withoutDoubledSeparator;

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
    const char separator = player.ports.files.separator();
    std::vector<std::string> paths;
    while (!commandLine.empty()) {
        const std::size_t blank = std::min(commandLine.find(' '), commandLine.size());
        const std::string_view piece = commandLine.substr(0, blank);
        commandLine.remove_prefix(std::min(blank + 1, commandLine.size()));
        if (!player.types.knows(GetExtension(piece))) continue;
        paths.push_back(withoutDoubledSeparator(std::string(piece), separator));
    }
    const auto names = lookUpForList(player.ports.files, paths);
    ListFiller filler(player);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i]) filler.add(GetBaseName(*names[i]), std::move(paths[i]));
    }
    filler.finish();
}

void fillFromFile(Player& player) {
    ListFiller filler(player);
    const std::string file = listFileName(player, player.gPageNumber, player.gListNumber);
    for (ListEntry& entry : readPlayList(player, file).entries) {
        filler.add(GetBaseName(entry.name), std::move(entry.path));
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
    for (int i = 0; i < kMaxFiles; ++i) {
        auto entry = splitEntry(section.get(entryKey(i)));
        if (!entry) break;
        list.entries.push_back(std::move(*entry));
    }
    return list;
}

bool writePlayList(Player& player, const std::string& file, const PlayList& list) {
    std::vector<ProfileKey> keys{{kListNameKey, list.listName}};
    for (int i = 0; i < kMaxFiles; ++i) {
        const auto index = static_cast<std::size_t>(i);
        keys.emplace_back(entryKey(i), storedEntry(index < list.entries.size() ? list.entries[index] : ListEntry{}));
    }
    return writeProfileFile(player.ports.files, file, kListSection, keys);
}

bool canBeStored(std::string_view path) { return path.size() + 1 < kProfileBuffer - 1; }

void loadListAtStart(Player& player) {
    const std::string commandLine = player.ports.process.commandLine();
    if (commandLine.empty()) {
        fillFromFile(player);
    } else {
        fillFromCommandLine(player, commandLine);
    }
    const std::vector<std::string> opened = player.ports.process.filesToOpen();
    if (!opened.empty()) player.playsAtStart = takeFiles(player, DropData{true, opened}) > 0;
}

}  // namespace corvane
