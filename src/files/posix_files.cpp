// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/posix_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <mntent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <memory>

#include "drives/drive_file.h"
#include "files/own_name.h"
#include "media/discs/cd_folder.h"
#include "types/file_patterns.h"
#include "types/text.h"

namespace corvane {

namespace {

enum class Kind { File, Folder, Link, Other };

Kind kindOf(mode_t mode) {
    if (S_ISREG(mode)) return Kind::File;
    if (S_ISLNK(mode)) return Kind::Link;
    return S_ISDIR(mode) ? Kind::Folder : Kind::Other;
}

/// Asks the file system only where the folder itself does not say what an entry is. A link is not followed.
Kind kindOf(int folder, const dirent& entry) {
    if (entry.d_type == DT_REG) return Kind::File;
    if (entry.d_type == DT_DIR) return Kind::Folder;
    if (entry.d_type == DT_LNK) return Kind::Link;
    if (entry.d_type != DT_UNKNOWN) return Kind::Other;
    struct stat status {};
    return fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 ? kindOf(status.st_mode) : Kind::Other;
}

/// What a link leads to; nothing where that is not there or does not answer.
Kind kindBehind(const std::string& link, DriveCalls::Patience patience) {
    const auto look = [link] {
        struct stat status {};
        return stat(link.c_str(), &status) == 0 ? kindOf(status.st_mode) : Kind::Other;
    };
    return DriveCalls::all().ask<Kind>(link, patience, look).value_or(Kind::Other);
}

std::vector<std::string> sortedWithoutCase(std::vector<std::string> names) {
    std::vector<std::pair<std::string, std::string>> keyed;
    keyed.reserve(names.size());
    for (std::string& name : names) {
        std::string key = text::lower(name);
        keyed.emplace_back(std::move(key), std::move(name));
    }
    std::sort(keyed.begin(), keyed.end());
    names.clear();
    for (auto& [key, name] : keyed) names.push_back(std::move(name));
    return names;
}

template <class Wanted>
std::vector<std::string> tracksOf(const std::string& folder, const Wanted& wanted) {
    std::vector<std::string> names = discTracks(folder).value_or(std::vector<std::string>());
    std::erase_if(names, [&](const std::string& name) { return !wanted(std::string_view(name)); });
    return names;
}

struct Entries {
    std::vector<std::string> names, links;
};

/// Ends early when nobody waits for it any more.
template <class Wanted>
Entries entriesOf(const std::string& folder, Kind kind, const Wanted& wanted, const std::atomic<bool>& givenUp) {
    if (isDiscPath(folder)) return {kind == Kind::File ? tracksOf(folder, wanted) : std::vector<std::string>(), {}};
    const std::unique_ptr<DIR, int (*)(DIR*)> dir(opendir(folder.c_str()), closedir);
    Entries found;
    if (!dir) return found;
    const int descriptor = dirfd(dir.get());
    for (std::size_t seen = 0; seen < kMostEntries && !givenUp; ++seen) {
        const dirent* const entry = readdir(dir.get());
        if (entry == nullptr) break;
        if (entry->d_name[0] == '.' || !wanted(std::string_view(entry->d_name))) continue;
        const Kind is = kindOf(descriptor, *entry);
        if (is == kind) found.names.emplace_back(entry->d_name);
        if (is == Kind::Link) found.links.emplace_back(entry->d_name);
    }
    return found;
}

/// Links in a folder that are followed, each by a question of its own; as many take less than a second.
constexpr std::size_t kMostLinks = 4096;

/// The entries of that kind, in order. Links are asked about one by one: one that leads to a drive that does not answer
/// keeps none of the others away. All of them
/// together have a bound of their own.
template <class Wanted>
std::vector<std::string> entries(const std::string& folder, Kind kind, const Wanted& wanted) {
    using Clock = std::chrono::steady_clock;
    const auto givenUp = std::make_shared<std::atomic<bool>>(false);
    const auto look = [folder, kind, wanted, givenUp] { return entriesOf(folder, kind, wanted, *givenUp); };
    std::optional<Entries> answer = DriveCalls::all().ask<Entries>(folder, DriveCalls::kLongPatience, look);
    *givenUp = !answer;
    Entries found = std::move(answer).value_or(Entries());
    found.links.resize(std::min(found.links.size(), kMostLinks));
    const Clock::time_point due = Clock::now() + 2 * DriveCalls::kPatience;  // one that hangs, and the rest
    for (std::string& link : found.links) {
        const auto left = std::chrono::duration_cast<DriveCalls::Patience>(due - Clock::now());
        if (left.count() <= 0) break;
        if (kindBehind(folder + '/' + link, std::min(left, DriveCalls::kPatience)) == kind)
            found.names.push_back(std::move(link));
    }
    return sortedWithoutCase(std::move(found.names));
}

bool startsWith(std::string_view text, std::string_view prefix) { return text.substr(0, prefix.size()) == prefix; }

bool isFile(const std::string& path) {
    if (isDiscPath(path)) return isDiscTrack(path);
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) return S_ISREG(status.st_mode);
    return errno == ENOTDIR && isSheetTrack(path);
}

bool isReadableFolder(const std::string& folder) {
    if (isDiscPath(folder)) return discTracks(folder).has_value();
    struct stat status {};
    return stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && access(folder.c_str(), R_OK | X_OK) == 0;
}

using Name = std::optional<std::string>;

/// The file's own name; empty when there is no such file.
template <class OwnName>
Name nameOf(const std::string& path, const std::function<bool(const std::string& path)>& isFile,
            const OwnName& ownName) {
    if (!isFile(path)) return std::nullopt;
    return isDiscPath(path) || isSheetTrack(path) ? path.substr(path.rfind('/') + 1) : ownName(path);
}

/// A disc may have to start turning.
DriveCalls::Patience patienceWith(const std::string& path) {
    return isDiscPath(path) ? DriveCalls::kLongPatience : DriveCalls::kPatience;
}

}  // namespace

PosixFiles::PosixFiles() : PosixFiles(isFile) {}

std::optional<std::string> PosixFiles::lookUp(const std::string& path) {
    const auto look = [path, isFile = isFile_] { return nameOf(path, isFile, ownName); };
    return DriveCalls::all().ask<Name>(path, {patienceWith(path), &DriveCalls::hurried}, look).value_or(Name());
}

std::vector<std::optional<std::string>> PosixFiles::lookUpAll(const std::vector<std::string>& paths) {
    std::vector<DriveCalls::Each> asked;
    asked.reserve(paths.size());
    for (const std::string& path : paths) asked.push_back({path, patienceWith(path)});
    const auto look = [isFile = isFile_, names = std::make_shared<OwnNames>()](const std::string& path) {
        return nameOf(path, isFile, [&names](const std::string& one) { return names->of(one); });
    };
    const auto found = DriveCalls::all().askEach<Name>(asked, {DriveCalls::kLongPatience, &DriveCalls::hurried}, look);
    std::vector<Name> names;
    for (const std::optional<Name>& each : found) names.push_back(each.value_or(Name()));
    return names;
}

std::vector<std::string> PosixFiles::list(const std::string& folder, const std::string& patterns) {
    const auto matches = [patterns](std::string_view name) { return matchesAnyPattern(name, patterns); };
    return entries(folder, Kind::File, matches);
}

std::vector<std::string> PosixFiles::folders(const std::string& folder) {
    return entries(folder, Kind::Folder, [](std::string_view) { return true; });
}

bool PosixFiles::readable(const std::string& folder) {
    return DriveCalls::all()
        .ask<bool>(folder, patienceWith(folder), [folder] { return isReadableFolder(folder); })
        .value_or(false);
}

std::vector<Drive> PosixFiles::drives() {
    std::vector<Drive> found{{"/", "/"}};
    if (const char* home = std::getenv("HOME"); home != nullptr && *home == '/') found.push_back({home, home, true});
    const std::unique_ptr<FILE, int (*)(FILE*)> mounts(setmntent("/proc/self/mounts", "re"), endmntent);
    mntent mount{};
    std::array<char, 8192> buffer{};
    while (mounts && getmntent_r(mounts.get(), &mount, buffer.data(), static_cast<int>(buffer.size())) != nullptr) {
        const std::string place = mount.mnt_dir;
        if (startsWith(place, "/media/") || startsWith(place, "/run/media/") || startsWith(place, "/mnt/")) {
            found.push_back({place, place});
        }
    }
    for (Drive& disc : discDrives()) found.push_back(std::move(disc));
    return found;
}

std::optional<std::string> PosixFiles::read(const std::string& path, std::size_t limit) {
    return DriveFile::readAll(path, DriveCalls::kPatience, limit);
}

}  // namespace corvane
