// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>

#include "engine/opened_lists.h"
#include "fake/fake_machine.h"
#include "fuzz.h"
#include "lists/foreign_list.h"
#include "lists/list_location.h"
#include "storage/exported_lists.h"
#include "types/text_encoding.h"

namespace corvane {
namespace {

using fuzz::require;

void checkLocation(const std::string& location, bool isAddress, char separator) {
    const std::string folder = separator == '/' ? "/m/list" : "C:\\m\\list";
    const ListLocation found = locate(location, folder, separator, isAddress);
    require(!found.network || found.paths.empty(), "what is away is nowhere here");
    require(found.paths.size() <= 4, "a name has a few readings");
    for (const std::string& path : found.paths) {
        require(path.find('\0') == std::string::npos && path.size() <= 4096, "a path that a system takes");
        require(separator == '/' ? path.front() == '/' : path.substr(1, 2) == ":\\", "a whole path of this machine");
        const std::string inside = std::string(1, separator) + ".." + separator;
        require((path + separator).find(inside) == std::string::npos, "no step leads back");
    }
}

constexpr std::size_t kExported = 1000;  ///< entries: what a run has time for

/// What is written for others is read back as it was.
void checkExport(const std::vector<std::string>& paths) {
    std::vector<ExportedEntry> entries;
    for (const std::string& path : paths) entries.push_back({path, path, -1});
    const auto back = [&](ListFormat format, const std::string& text) {
        const ForeignList list = readForeignList(format, text);
        require(list.locations.size() == paths.size(), "each entry is written once");
        for (std::size_t i = 0; i < paths.size(); ++i) {
            const auto found = locate(list.locations[i], "/m/list", '/', list.areAddresses).paths;
            require(std::find(found.begin(), found.end(), paths[i]) != found.end(), "a path comes back");
        }
    };
    back(ListFormat::M3u, writeM3u8("name", entries, "/m/list", '/'));
    back(ListFormat::Xspf, writeXspf("name", entries, "/m/list", '/'));
}

}  // namespace
}  // namespace corvane

/// The format, then a list that another player wrote.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    fuzz::Input input(data, size);
    constexpr std::array<const char*, 5> kEndings = {"m3u", "pls", "xspf", "asx", "cue"};
    const std::size_t kind = input.byte() % kEndings.size();
    const std::string bytes(input.rest());
    fuzz::require(text::isUtf8(text::toUtf8(bytes)), "every text becomes UTF-8");

    FakeMachine machine;
    Ports ports = machine.ports();
    Player player(ports);
    player.conveniences = kAllConveniences;
    const std::string path = std::string("/m/list/l.") + kEndings[kind];
    if (kind < 4) {
        const ForeignList list = readForeignList(static_cast<ListFormat>(kind), bytes);
        fuzz::require(list.locations.size() <= kMostForeignEntries, "a list ends");
        std::vector<std::string> local;
        for (const std::string& location : list.locations) {
            fuzz::require(!location.empty(), "an entry is something");
            checkLocation(location, list.areAddresses, '/');
            checkLocation(location, list.areAddresses, '\\');
            for (std::string& each : locate(location, "/m/list", '/', list.areAddresses).paths) {
                if (each != "/" && each != path) local.push_back(std::move(each));
            }
        }
        if (local.size() > kExported) local.resize(kExported);
        checkExport(local);
        // Some hold the list once more; in all of twenty thousand it would fill the memory.
        constexpr std::size_t kLists = 8, kFiles = 500;
        for (std::size_t i = 0; i < std::min(local.size(), kFiles); ++i) {
            machine.files.add(local[i], i < kLists ? bytes : "");
        }
    }
    machine.files.add(path, bytes);
    const OpenedFiles opened = openedAs(player, {path});
    fuzz::require(opened.files.size() <= kMostOpened, "what is opened ends");
    const auto taken = filesTaken(player, {path}, 9999).files;
    for (const TakenFile& file : taken)
        fuzz::require(machine.files.lookUp(file.path).has_value(), "what is taken is there");
    return 0;
}
