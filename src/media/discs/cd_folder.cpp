// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/discs/cd_folder.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <mutex>
#include <string_view>
#include <system_error>

#include "drives/drive_calls.h"
#include "media/discs/cd_disc.h"
#include "media/discs/cd_image.h"
#include "types/text.h"

namespace corvane {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

/// Nobody but the system's owner could make a folder of that name.
constexpr const char* kRoot = "/corvane-cd/";
constexpr const char* kFolderName = "corvane-cd";  ///< in every path below
constexpr const char* kDefaultDevice = "/dev/cdrom";
/// A list of many tracks looks each one up: for so long the drives and their tracks are taken from memory.
constexpr std::chrono::seconds kTracksKept{3};

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// Lists of earlier versions name the folders by where files stood for the tracks.
std::vector<std::string> roots() {
    std::vector<std::string> all{kRoot, "/tmp/corvane-cd-" + std::to_string(getuid()) + '/'};
    const std::string runtime = environment("XDG_RUNTIME_DIR");
    if (runtime.starts_with('/')) all.push_back((fs::path(runtime) / "corvane-cd/").string());
    return all;
}

struct DiscPath {
    std::string folder;  ///< its name
    std::string track;   ///< a name in it; "" for the folder itself
};

std::optional<DiscPath> discPathOf(const std::string& path) {
    // Every file of a drop is asked about, and hardly any is one.
    if (path.find(kFolderName) == std::string::npos) return std::nullopt;
    for (const std::string& root : roots()) {
        if (!path.starts_with(root) || path.size() == root.size()) continue;
        const std::size_t end = std::min(path.find('/', root.size()), path.size());
        return DiscPath{path.substr(root.size(), end - root.size()), path.substr(std::min(end + 1, path.size()))};
    }
    return std::nullopt;
}

/// The same for the same place, in every session.
std::string folderName(const std::string& place) {
    std::uint32_t hash = 2166136261U;
    for (const char c : place) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    std::string name = fs::path(place).stem().string();
    for (char& c : name) {
        if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '-';
    }
    std::array<char, 12> digits{};
    std::snprintf(digits.data(), digits.size(), "-%08x", hash);
    return name.substr(0, 40) + digits.data();
}

std::string wholePath(const std::string& place) {
    std::error_code failed;
    const fs::path whole = fs::absolute(place, failed);
    return failed ? place : whole.string();
}

std::string trackName(int number) {
    std::array<char, 20> name{};
    std::snprintf(name.data(), name.size(), "Track%02d.cda", number % 100);
    return name.data();
}

std::vector<std::string> knownPlaces() {
    std::vector<std::string> places =
        DriveCalls::all()
            .ask<std::vector<std::string>>(kDefaultDevice, DriveCalls::kLongPatience, discDevices)
            .value_or(std::vector<std::string>());
    if (const std::string chosen = environment("CORVANE_CDROM"); !chosen.empty()) {
        std::erase(places, chosen);
        places.insert(places.begin(), chosen);
    }
    return places;
}

/// What is remembered of drives.
class Shelf {
public:
    static Shelf& all() {
        static auto* const shelf = new Shelf;  // never destroyed: a question may be answered at any time
        return *shelf;
    }

    /// The drive or image with a folder of that name; "" when there is none.
    std::string placeOf(const std::string& folder) {
        const std::string chosen = wholePath(environment("CORVANE_CDROM"));
        if (folderName(chosen) == folder) return chosen;
        {
            const std::lock_guard lock(mutex_);
            if (const auto found = places_.find(folder); found != places_.end()) return found->second;
        }
        refreshKnown();
        const std::lock_guard lock(mutex_);
        for (const std::string& place : known_) {
            const std::string whole = wholePath(place);
            if (folderName(whole) == folder) return places_[folder] = whole;
        }
        return {};
    }

    /// Of a drive that holds a disc, or of a sheet; `ask` reads them.
    std::vector<int> audioTracks(const std::string& drive, std::vector<int> (*ask)(const std::string&)) {
        {
            const std::lock_guard lock(mutex_);
            const auto kept = read_.find(drive);
            if (kept != read_.end() && Clock::now() < kept->second.until) return kept->second.tracks;
        }
        const std::vector<int> tracks = ask(drive);
        const std::lock_guard lock(mutex_);
        read_[drive] = {tracks, Clock::now() + kTracksKept};
        return tracks;
    }

private:
    /// Names that nothing has may come by the thousand: the system is asked once for all of them.
    void refreshKnown() {
        {
            const std::lock_guard lock(mutex_);
            if (Clock::now() < knownUntil_) return;
        }
        std::vector<std::string> known = knownPlaces();
        const std::lock_guard lock(mutex_);
        known_ = std::move(known);
        knownUntil_ = Clock::now() + kTracksKept;
    }

    struct Read {
        std::vector<int> tracks;
        Clock::time_point until;
    };
    std::mutex mutex_;  ///< guards what follows
    std::map<std::string, std::string> places_;
    std::map<std::string, Read> read_;
    std::vector<std::string> known_;  ///< places of all drives
    Clock::time_point knownUntil_;
};

/// The first image by name that lies in a folder.
std::string imageIn(const fs::path& folder) {
    std::string first;
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed)) {
        const std::string path = entry->path().string();
        if (entry->path().extension() == ".cue" && (first.empty() || path < first)) first = path;
    }
    return first;
}

std::string driveText(const std::string& place) { return "CD (" + fs::path(place).filename().string() + ")"; }

}  // namespace

std::string discFolder(const std::string& place) { return kRoot + folderName(wholePath(place)); }

std::vector<Drive> discDrives() {
    std::vector<Drive> drives;
    for (const std::string& place : knownPlaces()) drives.push_back({driveText(place), discFolder(place)});
    return drives;
}

bool isDiscPath(const std::string& path) { return discPathOf(path).has_value(); }

std::optional<std::vector<std::string>> discTracks(const std::string& folder) {
    const auto path = discPathOf(folder);
    const std::string place = path && path->track.empty() ? Shelf::all().placeOf(path->folder) : "";
    if (place.empty()) return std::nullopt;
    std::vector<std::string> names;
    if (isDiscImage(place)) {
        for (const int number : audioTracksOfImage(place)) names.push_back(trackName(number));
    } else if (driveHoldsDisc(place)) {
        for (const int number : Shelf::all().audioTracks(place, audioTracksOfDrive)) names.push_back(trackName(number));
    }
    return names;
}

bool isDiscTrack(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const auto tracks = discTracks(path.substr(0, slash));
    return tracks && std::find(tracks->begin(), tracks->end(), path.substr(slash + 1)) != tracks->end();
}

std::string sheetOfTrack(const std::string& path) {
    constexpr std::string_view kEnding = ".cue";
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos || slash <= kEnding.size()) return {};
    const std::string_view ending = std::string_view(path).substr(slash - kEnding.size(), kEnding.size());
    return text::sameWithoutCase(ending, kEnding) ? path.substr(0, slash) : std::string();
}

bool isSheetTrack(const std::string& path) {
    const std::string sheet = sheetOfTrack(path);
    std::error_code failed;
    if (sheet.empty() || !fs::is_regular_file(sheet, failed)) return false;
    const std::vector<int> tracks = Shelf::all().audioTracks(sheet, audioTracksOfImage);
    const std::string name = fs::path(path).filename().string();
    return std::any_of(tracks.begin(), tracks.end(), [&](int number) { return trackName(number) == name; });
}

std::string discPlace(const std::string& entry) {
    if (const auto disc = discPathOf(entry)) {
        if (std::string place = Shelf::all().placeOf(disc->folder); !place.empty()) return place;
    } else if (!entry.empty()) {
        std::error_code failed;
        const fs::path path(entry);
        if (isDiscImage(entry) || fs::is_block_file(path, failed)) return entry;
        if (const std::string sheet = sheetOfTrack(entry); fs::is_regular_file(sheet, failed)) return sheet;
        const fs::path folder = fs::is_directory(path, failed) ? path : path.parent_path();
        if (std::string image = imageIn(folder); !image.empty()) return image;
    }
    if (std::string chosen = environment("CORVANE_CDROM"); !chosen.empty()) return chosen;
    std::error_code failed;
    if (fs::exists(kDefaultDevice, failed)) return kDefaultDevice;
    const std::vector<std::string> devices = discDevices();
    return devices.empty() ? "" : devices.front();
}

}  // namespace corvane
