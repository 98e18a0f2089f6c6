// SPDX-License-Identifier: GPL-3.0-or-later
#include "confinement/written_places.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

#include "drives/descriptor.h"

namespace corvane {

namespace {

// Younger than the headers of the oldest system that this is built on.
constexpr std::uint64_t kTruncate = 1U << 14U;
constexpr std::uint64_t kScopeSignals = 1U << 1U;
constexpr int kRenameVersion = 2, kTruncateVersion = 3, kScopeVersion = 6;

/// landlock_ruleset_attr as it has been since that version.
struct Ruleset {
    std::uint64_t files, network, scoped;
};

constexpr std::uint64_t kOfFiles = LANDLOCK_ACCESS_FS_WRITE_FILE;
constexpr std::uint64_t kInFolders = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
                                     LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_DIR |
                                     LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SOCK;
constexpr std::uint64_t kAdding = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_MAKE_REG;
constexpr std::uint64_t kNowhere = LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_MAKE_CHAR |
                                   LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO |
                                   LANDLOCK_ACCESS_FS_MAKE_SYM;

/// What this version of the kernel can tell apart.
struct Rights {
    explicit Rights(int version) {
        // Between folders, files are not moved; up to the second version that cannot be allowed at all.
        if (version >= kRenameVersion) nowhere |= LANDLOCK_ACCESS_FS_REFER;
        if (version >= kTruncateVersion) {
            files |= kTruncate;
            folders |= kTruncate;
        }
    }
    std::uint64_t files = kOfFiles;
    std::uint64_t folders = kInFolders;
    std::uint64_t nowhere = kNowhere;
};

int versionOfKernel() {
    const long version = syscall(SYS_landlock_create_ruleset, nullptr, std::size_t{0}, LANDLOCK_CREATE_RULESET_VERSION);
    return static_cast<int>(version);
}

bool allow(int rules, const std::string& place, std::uint64_t inFolder, std::uint64_t ofFile) {
    const Descriptor at(open(place.c_str(), O_PATH | O_CLOEXEC));
    struct stat status {};
    if (!at || fstat(at.get(), &status) != 0) return false;
    landlock_path_beneath_attr rule{};
    rule.allowed_access = S_ISDIR(status.st_mode) ? inFolder : ofFile;
    rule.parent_fd = at.get();
    return syscall(SYS_landlock_add_rule, rules, LANDLOCK_RULE_PATH_BENEATH, &rule, 0U) == 0;
}

std::string reason() { return errno == ENOSYS || errno == EOPNOTSUPP ? "not in this kernel" : std::strerror(errno); }

}  // namespace

WrittenPlaces boundWriting(const std::vector<std::string>& places, const std::vector<std::string>& added) {
    const int version = versionOfKernel();
    if (version < 1) return {0, {}, reason()};
    const Rights rights(version);
    // Signals stay among the program's own threads, whichever way they go.
    const Ruleset all{rights.folders | rights.nowhere, 0, version >= kScopeVersion ? kScopeSignals : 0};
    const std::size_t known = version >= kScopeVersion ? sizeof all : sizeof all.files;
    const Descriptor rules(static_cast<int>(syscall(SYS_landlock_create_ruleset, &all, known, 0U)));
    if (!rules) return {0, {}, reason()};
    WrittenPlaces bounds{version, {}, ""};
    for (const std::string& place : places) {
        if (allow(rules.get(), place, rights.folders, rights.files)) bounds.places.push_back(place);
    }
    for (const std::string& place : added) {
        if (allow(rules.get(), place, kAdding, LANDLOCK_ACCESS_FS_WRITE_FILE)) bounds.places.push_back(place);
    }
    const bool inForce =
        prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && syscall(SYS_landlock_restrict_self, rules.get(), 0U) == 0;
    return inForce ? bounds : WrittenPlaces{0, {}, reason()};
}

}  // namespace corvane
