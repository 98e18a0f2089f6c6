// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "engine/player.h"
#include "fake/fake_machine.h"
#include "fuzz.h"
#include "storage/play_lists.h"
#include "storage/private_profile.h"

namespace corvane {
namespace {

using fuzz::require;

constexpr const char* kFile = "/app/FILE00.INI";

bool same(const std::vector<ListEntry>& a, const std::vector<ListEntry>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const ListEntry& x, const ListEntry& y) { return x.name == y.name && x.path == y.path; });
}

void checkLimits(const PlayList& list) {
    require(list.entries.size() <= mdlDefinePublic::kMaxFiles, "at most 256 entries");
    require(list.listName.size() < kProfileBuffer, "the list's name fits its buffer");
    for (const ListEntry& entry : list.entries) {
        require(!entry.name.empty(), "an entry has a name");
        require(entry.name.size() + 1 + entry.path.size() < kProfileBuffer, "an entry fits its buffer");
    }
}

/// What was read is written and read again as it was, and then loaded into the player.
void checkFile(Player& player, const std::string& file) {
    const PlayList list = readPlayList(player, file);
    checkLimits(list);
    require(writePlayList(player, file, list), "a list can be written");
    const PlayList again = readPlayList(player, file);
    require(again.listName == list.listName, "the list's name comes back");
    require(same(again.entries, list.entries), "each entry comes back");
}

/// The player starts with what the file holds.
void checkStart(Player& player, const std::string& file) {
    const PlayList list = readPlayList(player, file);
    loadListAtStart(player);
    require(player.gFileCount == static_cast<std::int16_t>(list.entries.size()), "the player has the whole list");
    for (std::size_t i = 0; i < list.entries.size(); ++i) {
        require(player.gFilePath[i] == list.entries[i].path, "the player has each path");
    }
}

bool isPlain(const std::string& text) { return text.find_first_of(std::string_view("\0\r\n", 3)) == std::string::npos; }

/// Names and paths of files with any bytes that a system allows in them.
void checkEntries(Player& player, fuzz::Input& input) {
    PlayList list;
    while (!input.empty() && list.entries.size() < 300) {
        ListEntry entry{input.until('\n'), input.until('\n')};
        if (!entry.name.empty() && isPlain(entry.name) && isPlain(entry.path)) list.entries.push_back(std::move(entry));
    }
    require(writePlayList(player, kFile, list), "a list can be written");
    const PlayList again = readPlayList(player, kFile);
    checkLimits(again);
    require(again.entries.size() == std::min<std::size_t>(list.entries.size(), mdlDefinePublic::kMaxFiles),
            "no entry is lost");
    for (std::size_t i = 0; i < again.entries.size(); ++i) {
        const std::string& path = list.entries[i].path;
        // A path that leaves no room for a name is cut; no other is.
        if (path.size() + 2 < kProfileBuffer) require(again.entries[i].path == path, "a path stays whole");
    }
}

}  // namespace
}  // namespace corvane

/// A list's file, or the names and paths of its entries, behind a byte that says what is done with them. Writing takes
/// long: it is done with one in four.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    FakeMachine machine;
    Ports ports = machine.ports();
    Player player(ports);
    player.gListFileStem = "/app/FILE";
    machine.files.addFolder("/app");
    fuzz::Input input(data, size);
    const int kind = input.byte() % 8;
    if (kind == 1) {
        checkEntries(player, input);
        return 0;
    }
    machine.files.add(kFile, std::string(input.rest()));
    if (kind == 0) {
        checkFile(player, kFile);
    } else if (kind == 2) {
        checkStart(player, kFile);
    } else {
        checkLimits(readPlayList(player, kFile));
    }
    return 0;
}
