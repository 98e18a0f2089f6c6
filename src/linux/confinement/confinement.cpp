// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/confinement/confinement.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "drives/drive_calls.h"
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

/// The folder of what a name is a link to; "" when it is none.
std::string linkedFolder(const std::string& name) {
    std::error_code failed;
    if (!fs::is_symlink(fs::symlink_status(name, failed))) return {};
    const fs::path target = fs::weakly_canonical(name, failed);
    return failed ? std::string() : target.parent_path().string();
}

/// The folders of those files that are links: a save follows them. A link's name comes from the user alone. A place
/// that does not answer in time is left out: what cannot be asked about cannot be saved either.
void addLinked(std::vector<std::string>& places, const fs::path& folder) {
    std::vector<DriveCalls::Each> names{{(folder / "KADO.INI").string(), DriveCalls::kPatience}};
    for (int number = 0; number < kLists; ++number) {
        std::array<char, 16> name{};
        std::snprintf(name.data(), name.size(), "FILE%02d.INI", number);
        names.push_back({(folder / name.data()).string(), DriveCalls::kPatience});
    }
    const auto linked = DriveCalls::all().askEach<std::string>(names, kAllLinks, linkedFolder);
    for (const std::optional<std::string>& place : linked) {
        if (place && !place->empty()) places.push_back(*place);
    }
}

std::string firstOf(const std::string& value, const std::string& otherwise) {
    return value.empty() ? otherwise : value;
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
    const fs::path caches = firstOf(variables("XDG_CACHE_HOME"), variables("HOME") + "/.cache");
    for (const char* kept : {"fontconfig", "mesa_shader_cache", "mesa_shader_cache_db"}) {
        places.push_back((caches / kept).string());
    }
    // What tells programs that the desktop's settings have changed: each of them marks it.
    if (const std::string shared = variables("XDG_RUNTIME_DIR"); !shared.empty()) places.push_back(shared + "/dconf");
    places.emplace_back("/dev/null");
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
    Worker::leaveKept();  // what a thread gives up, one that runs already keeps
    confinement.writing = boundWriting(places);
    confinement.calls = refuseCalls(confinement.network);
    return confinement;
}

}  // namespace corvane
