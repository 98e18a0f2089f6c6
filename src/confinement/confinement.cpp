// SPDX-License-Identifier: GPL-3.0-or-later
#include "confinement/confinement.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drives/drive_calls.h"
#include "drives/graphics_devices.h"
#include "drives/pictures_folder.h"
#include "types/numbers.h"
#include "workers/worker.h"

namespace corvane {

namespace {

namespace fs = std::filesystem;

constexpr int kLists = 100;
/// One drive that hangs, and what lies behind it in the row.
constexpr DriveCalls::Patience kAllLinks = 2 * DriveCalls::kPatience;

/// ":0", "unix:0" and the path of a socket are displays of this machine.
bool isOfHost(std::string_view display) {
    const std::string_view host = display.substr(0, display.rfind(':'));
    return !display.empty() && !host.empty() && host != "unix" && host.front() != '/' && !host.starts_with("unix/");
}

/// A list of servers that are tried in turn, divided by blanks. Each may begin with the "{machine}" it is for.
bool namesSoundHost(std::string_view servers) {
    while (!servers.empty()) {
        std::string_view one = servers.substr(0, servers.find(' '));
        servers.remove_prefix(std::min(servers.size(), one.size() + 1));
        if (one.starts_with('{')) one.remove_prefix(std::min(one.size(), one.find('}') + 1));
        if (!one.empty() && !one.starts_with("unix:") && one.front() != '/') return true;
    }
    return false;
}

/// Addresses of a message bus, divided by semicolons.
bool namesBusHost(std::string_view addresses) {
    return addresses.starts_with("tcp:") || addresses.starts_with("nonce-tcp:") ||
           addresses.find(";tcp:") != std::string_view::npos || addresses.find(";nonce-tcp:") != std::string_view::npos;
}

/// The folder of what a link leads to; "" where that cannot be told.
std::string linkedFolder(const std::string& name) {
    std::error_code failed;
    const fs::path target = fs::weakly_canonical(name, failed);
    return failed ? std::string() : target.parent_path().string();
}

/// The names of settings and lists in a folder that are links, by one look at it: a folder on a far machine answers
/// each question about a name after a while.
std::vector<std::string> linkedNames(const fs::path& folder) {
    std::set<std::string> saved{"KADO.INI"};
    for (int number = 0; number < kLists; ++number) saved.insert("FILE" + zeroPadded(number, 2) + ".INI");
    std::vector<std::string> names;
    std::error_code failed;
    for (auto each = fs::directory_iterator(folder, failed); each != fs::directory_iterator(); each.increment(failed)) {
        if (saved.count(each->path().filename().string()) > 0 && each->is_symlink(failed))
            names.push_back(each->path());
    }
    return names;
}

/// The folders of those files that are links: a save follows them. A link's name comes from the user alone. A place
/// that does not answer in time is left out: what cannot be asked about cannot be saved either.
void addLinked(std::vector<std::string>& places, const fs::path& folder) {
    const auto found = DriveCalls::all().ask<std::vector<std::string>>(folder.string(), DriveCalls::kPatience,
                                                                       [folder] { return linkedNames(folder); });
    std::vector<DriveCalls::Each> names;
    for (const std::string& name : found.value_or(std::vector<std::string>())) {
        names.push_back({name, DriveCalls::kPatience});
    }
    const auto linked = DriveCalls::all().askEach<std::string>(names, kAllLinks, linkedFolder);
    for (const std::optional<std::string>& place : linked) {
        if (place && !place->empty()) places.push_back(*place);
    }
}

/// A folder that is not named from the root counts as not set: it would be another one wherever the program is started.
bool isAbsolute(const std::string& folder) { return folder.starts_with('/'); }

std::string absoluteOf(const std::string& folder, const std::string& otherwise) {
    return isAbsolute(folder) ? folder : otherwise;
}

}  // namespace

bool namesHost(const Variables& variables) {
    return isOfHost(variables("DISPLAY")) || namesSoundHost(variables("PULSE_SERVER")) ||
           namesBusHost(variables("DBUS_SESSION_BUS_ADDRESS")) || namesBusHost(variables("AT_SPI_BUS_ADDRESS"));
}

std::vector<std::string> placesToWrite(const std::string& programFolder, const std::string& runtimeFolder,
                                       const Variables& variables) {
    std::vector<std::string> places{programFolder};
    addLinked(places, programFolder);
    if (!runtimeFolder.empty()) places.push_back(runtimeFolder);
    const fs::path caches = absoluteOf(variables("XDG_CACHE_HOME"), variables("HOME") + "/.cache");
    for (const char* kept : {"fontconfig", "mesa_shader_cache", "mesa_shader_cache_db"}) {
        if (caches.is_absolute()) places.push_back((caches / kept).string());
    }
    // What tells programs that the desktop's settings have changed: each of them marks it.
    if (const std::string shared = variables("XDG_RUNTIME_DIR"); isAbsolute(shared))
        places.push_back(shared + "/dconf");
    places.emplace_back("/dev/null");
    for (std::string& device : graphicsDevices()) places.push_back(std::move(device));
    return places;
}

Confinement confine(const std::string& programFolder, const std::string& runtimeFolder) {
    const Variables variables = [](const char* name) {
        const char* const value = std::getenv(name);
        return std::string(value != nullptr ? value : "");
    };
    Confinement confinement;
    confinement.network = namesHost(variables);
    const std::vector<std::string> places = placesToWrite(programFolder, runtimeFolder, variables);
    const std::string pictures = picturesFolder(variables);
    Worker::leaveKept();  // what a thread gives up, one that runs already keeps
    confinement.writing =
        boundWriting(places, pictures.empty() ? std::vector<std::string>() : std::vector<std::string>{pictures});
    confinement.calls = refuseCalls(confinement.network);
    return confinement;
}

}  // namespace corvane
