// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/cd_folder.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <system_error>

#include "desktop/drive_calls.h"
#include "desktop/media/cd_disc.h"

namespace corvane {

namespace {

namespace fs = std::filesystem;

constexpr const char* kPlaceFile = "disc-place";
constexpr const char* kDefaultDevice = "/dev/cdrom";
constexpr std::uint32_t kStubBytes = 44;
constexpr int kDiscSectorOffset = 150;  ///< minute 0, second 2 is sector 0

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// Where the folders of discs lie: a folder without a dot in its path that is ours alone.
std::string discRoot() {
    const std::string user = "corvane-cd-" + std::to_string(getuid());
    const std::string runtime = environment("XDG_RUNTIME_DIR");
    const bool fits = runtime.starts_with('/') && runtime.find('.') == std::string::npos;
    return (fits ? fs::path(runtime) / "corvane-cd" : fs::path("/tmp") / user).string();
}

bool makePrivateFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error || !fs::is_directory(fs::symlink_status(folder, error))) return false;
    fs::permissions(folder, fs::perms::owner_all, error);
    return !error;  // another user's folder cannot be changed
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

std::string trackName(int number) {
    std::array<char, 20> name{};
    std::snprintf(name.data(), name.size(), "Track%02d.cda", number % 100);
    return name.data();
}

void put(std::string& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i) bytes.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
}

std::string stub(const CdTrack& track) {
    const auto clock = [](std::int64_t sectors) {  // frame in the lowest byte, then second, minute
        const auto length = static_cast<std::uint32_t>(packLength(sectors));
        return (length >> 16 & 0xFF) | (length & 0xFF00) | (length & 0xFF) << 16;
    };
    std::string bytes = "RIFF";
    put(bytes, kStubBytes - 8, 4);
    bytes += "CDDAfmt ";
    put(bytes, kStubBytes - 20, 4);
    put(bytes, 1, 2);
    put(bytes, static_cast<std::uint32_t>(track.number), 2);
    put(bytes, 0, 4);
    put(bytes, static_cast<std::uint32_t>(track.start), 4);
    put(bytes, static_cast<std::uint32_t>(track.length), 4);
    put(bytes, clock(track.start + kDiscSectorOffset), 4);
    put(bytes, clock(track.length), 4);
    return bytes;
}

std::optional<std::string> readAll(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

bool writeWhenChanged(const fs::path& path, const std::string& bytes) {
    if (readAll(path) == bytes) return true;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << bytes;
    file.flush();
    return static_cast<bool>(file);
}

void writeStubs(const fs::path& folder, const std::string& place) {
    std::vector<std::string> names{kPlaceFile};
    const OpenedDisc opened = discReady(place) ? openDisc(place) : OpenedDisc{};
    if (opened.disc) {
        for (const CdTrack& track : opened.disc->tracks()) {
            if (!track.audio) continue;
            names.push_back(trackName(track.number));
            writeWhenChanged(folder / names.back(), stub(track));
        }
    }
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        const std::string name = entry.path().filename().string();
        if (std::find(names.begin(), names.end(), name) == names.end()) fs::remove(entry.path(), error);
    }
}

bool isImageName(const fs::path& path) {
    std::string extension = path.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension == ".cue" || extension == ".bin";
}

/// The first image by name that lies in a folder.
std::string imageIn(const fs::path& folder) {
    std::string first;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        const std::string path = entry.path().string();
        if (entry.path().extension() == ".cue" && (first.empty() || path < first)) first = path;
    }
    return first;
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

std::string driveText(const std::string& place) { return "CD (" + fs::path(place).filename().string() + ")"; }

}  // namespace

std::string makeDiscFolder(const std::string& place) {
    std::error_code error;
    const fs::path whole = fs::absolute(place, error);
    const fs::path folder = fs::path(discRoot()) / folderName(whole.string());
    if (error || !makePrivateFolder(discRoot()) || !makePrivateFolder(folder)) return "";
    if (!writeWhenChanged(folder / kPlaceFile, whole.string() + "\n")) return "";
    writeStubs(folder, whole.string());
    return folder.string();
}

std::vector<Drive> discDrives() {
    std::vector<Drive> drives;
    for (const std::string& place : knownPlaces()) {
        const std::string folder =
            DriveCalls::all()
                .ask<std::string>(place, DriveCalls::kLongPatience, [place] { return makeDiscFolder(place); })
                .value_or("");
        if (!folder.empty()) drives.push_back({driveText(place), folder});
    }
    return drives;
}

bool isDiscPath(const std::string& path) { return path.starts_with(discRoot() + "/"); }

void refreshDiscPath(const std::string& path) {
    if (!isDiscPath(path)) return;
    const std::string root = discRoot() + "/";
    const fs::path folder = fs::path(root) / path.substr(root.size(), path.find('/', root.size()) - root.size());
    std::error_code error;
    if (const auto place = readAll(folder / kPlaceFile)) {
        // A list of many tracks looks each one up: what is there is only read again when the folder itself is asked.
        if (path.find('/', root.size()) == std::string::npos || !fs::exists(path, error))
            writeStubs(folder, place->substr(0, place->find('\n')));
        return;
    }
    for (const std::string& place : knownPlaces()) {
        if (fs::path(root) / folderName(fs::absolute(place, error).string()) == folder) makeDiscFolder(place);
    }
}

std::string discPlace(const std::string& entry) {
    std::error_code error;
    const fs::path path(entry);
    if (isImageName(path) || fs::is_block_file(path, error)) return entry;
    const fs::path folder = fs::is_directory(path, error) ? path : path.parent_path();
    if (!entry.empty()) {
        if (std::string image = imageIn(folder); !image.empty()) return image;
        if (const auto place = readAll(folder / kPlaceFile)) return place->substr(0, place->find('\n'));
    }
    if (std::string chosen = environment("CORVANE_CDROM"); !chosen.empty()) return chosen;
    if (fs::exists(kDefaultDevice, error)) return kDefaultDevice;
    const std::vector<std::string> devices = discDevices();
    return devices.empty() ? "" : devices.front();
}

}  // namespace corvane
