// SPDX-License-Identifier: GPL-3.0-or-later
#include "drives/plain_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "drives/spare_descriptors.h"

namespace corvane {

namespace {
constexpr const char* kNoFile = "This is not a file.";
constexpr const char* kUnreadable = "The file cannot be read.";

PlainFile refused(const char* why) { return {{}, 0, why}; }
}  // namespace

PlainFile openPlainFile(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return refused("The file cannot be found.");
    // A device may do something when it is opened.
    if (!S_ISREG(status.st_mode)) return refused(kNoFile);
    Descriptor opened(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    // What came free for a window is not for a file.
    if (opened ? SpareDescriptors::lent() : SpareDescriptors::refused()) return refused(SpareDescriptors::kNoneLeft);
    if (!opened || fstat(opened.get(), &status) != 0) return refused(kUnreadable);
    // It may have been replaced since.
    if (!S_ISREG(status.st_mode)) return refused(kNoFile);
    return {std::move(opened), status.st_size, {}};
}

std::int64_t readAt(const Descriptor& file, char* to, std::size_t count, std::int64_t from) {
    ssize_t got = -1;
    do {
        got = pread(file.get(), to, count, from);
    } while (got < 0 && errno == EINTR);
    return got;
}

}  // namespace corvane
