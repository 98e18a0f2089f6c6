// SPDX-License-Identifier: GPL-3.0-or-later
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "drives/descriptor.h"
#include "files/posix_files.h"
#include "workers/decision.h"

namespace corvane {

namespace {

constexpr int kMaxLinks = 40;
constexpr int kAttempts = 100;  // another start may take each for a leftover until it is locked
constexpr std::string_view kBesidePrefix = ".corvane-save-";
constexpr std::string_view kBesideRandom = "XXXXXX";

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// The file that a path means: symbolic links followed, also one whose target is not there yet. "" when they circle.
std::string targetOf(std::string path) {
    for (int hops = 0; hops < kMaxLinks; ++hops) {
        std::array<char, PATH_MAX> link{};
        const ssize_t length = readlink(path.c_str(), link.data(), link.size());
        if (length < 0) return path;
        std::string target(link.data(), static_cast<std::size_t>(length));
        if (target.empty() || target.front() != '/') target.insert(0, folderOf(path) + '/');
        path = std::move(target);
    }
    return {};
}

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// The new file takes over what the old one was to other users, as far as this user may give it to them. What was
/// meant for a group that it does not get is meant for no group.
void keepOwnership(int file, const struct stat& old) {
    mode_t mode = old.st_mode & 07777U;
    struct stat own {};
    if (fstat(file, &own) != 0) return;
    // Owners are not changed, not even by the system's master: the kernel was asked to refuse it.
    const bool keepsOwner = own.st_uid == old.st_uid;
    const bool keepsGroup = own.st_gid == old.st_gid || fchown(file, static_cast<uid_t>(-1), old.st_gid) == 0;
    if (!keepsOwner) mode &= ~static_cast<mode_t>(S_ISUID);
    if (!keepsGroup) mode &= ~static_cast<mode_t>(S_ISGID | S_IRWXG);
    if (fchmod(file, mode) != 0) errno = 0;
}

/// What the user's mask leaves of a new file's mode; the owner's alone when that is not told. Asked of the system's
/// own page: the call that reads the mask sets it as well, for every thread.
mode_t defaultMode() {
    constexpr mode_t kPrivate = 0600;
    constexpr std::string_view kKey = "\nUmask:";
    const Descriptor page(open("/proc/self/status", O_RDONLY | O_CLOEXEC));
    std::array<char, 1024> told{};  // the line is among the first
    const ssize_t length = page ? read(page.get(), told.data(), told.size() - 1) : 0;
    const std::string_view text(told.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    const std::size_t at = text.find(kKey);
    if (at == std::string_view::npos) return kPrivate;
    const char* const number = told.data() + at + kKey.size();
    char* end = nullptr;
    const unsigned long mask = std::strtoul(number, &end, 8);
    return end == number ? kPrivate : 0666U & ~static_cast<mode_t>(mask);
}

/// A new file in the folder, whose path `beside` becomes. While it is held open, nobody takes it for a leftover.
Descriptor makeBeside(const std::string& folder, std::string& beside) {
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        beside = folder + '/' + std::string(kBesidePrefix) + std::string(kBesideRandom);
        Descriptor file(mkostemp(beside.data(), O_CLOEXEC));
        struct stat made {};
        if (!file) return file;
        const bool locked = flock(file.get(), LOCK_EX) == 0 || errno != EINTR;
        if (locked && fstat(file.get(), &made) == 0 && made.st_nlink > 0) return file;
        unlink(beside.c_str());  // another start took it for one, between the making and the lock
    }
    return {};
}

bool replaceFile(const std::string& path, std::string_view bytes, Decision& decision) {
    const std::string target = targetOf(path);
    if (target.empty() || target.back() == '/') return false;
    struct stat old {};
    const bool exists = stat(target.c_str(), &old) == 0;
    if (exists && (!S_ISREG(old.st_mode) || access(target.c_str(), W_OK) != 0)) return false;

    const std::string folder = folderOf(target);
    std::string beside;
    Descriptor file = makeBeside(folder, beside);
    if (!file) return false;
    if (exists) {
        keepOwnership(file.get(), old);
    } else if (fchmod(file.get(), defaultMode()) != 0) {
        errno = 0;  // a file system without modes
    }
    const bool written = writeAll(file.get(), bytes) && fsync(file.get()) == 0;
    // Held open, and with it the lock, until it has its own name: else another start could take it for a leftover.
    if (!written || !decision.take(Decision::By::Task) || std::rename(beside.c_str(), target.c_str()) != 0) {
        unlink(beside.c_str());
        return false;
    }
    const Descriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened) fsync(opened.get());
    return true;
}

}  // namespace

bool PosixFiles::replace(const std::string& path, std::string_view bytes) {
    const auto decision = std::make_shared<Decision>();
    const auto replaced = DriveCalls::all().ask<bool>(
        path, DriveCalls::kLongPatience,
        [path, text = std::string(bytes), decision] { return replaceFile(path, text, *decision); });
    // Not answered in time: from here on the old file stays, unless the new one is being put in its place just now.
    if (!replaced) decision->take(Decision::By::Waiter);
    return replaced.value_or(false);
}

namespace {
/// Who writes a file holds its lock: that of a killed program is free.
void removeLeftover(int folder, const char* name) {
    const Descriptor file(openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    struct stat status {};
    if (!file || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return;
    if (flock(file.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return;
    unlinkat(folder, name, 0);
}
}  // namespace

void removeUnfinishedFiles(const std::string& folder) {
    DIR* const entries = opendir(folder.c_str());
    if (entries == nullptr) return;
    while (const dirent* entry = readdir(entries)) {
        const std::string_view name = entry->d_name;
        if (name.starts_with(kBesidePrefix) && name.size() == kBesidePrefix.size() + kBesideRandom.size()) {
            removeLeftover(dirfd(entries), entry->d_name);
        }
    }
    closedir(entries);
}

}  // namespace corvane
