// SPDX-License-Identifier: GPL-3.0-or-later
#include "drives/drive_file.h"

#include <sys/stat.h>
#include <sys/uio.h>

#include <algorithm>
#include <cstring>

#include "drives/plain_file.h"

namespace corvane {

namespace {

constexpr std::size_t kPiece = 256 * 1024;  ///< most bytes of one question
constexpr std::size_t kBeyond = 4096;       ///< bytes asked for behind the end that was told
constexpr const char* kUnreadable = "The file cannot be read.";

}  // namespace

/// What is held of an open file by each question about it.
struct DriveFile::Handle {
    PlainFile file;
};

DriveFile::DriveFile(std::string path, DriveCalls::Wait wait, std::shared_ptr<Handle> handle)
    : path_(std::move(path)), wait_(wait), handle_(std::move(handle)), size_(handle_->file.size) {}

/// Closing asks some drives as well.
DriveFile::~DriveFile() { DriveCalls::release(std::move(handle_)); }

std::unique_ptr<DriveFile> DriveFile::open(const std::string& path, DriveCalls::Wait wait, std::string& reason) {
    const auto opened = DriveCalls::all().ask<std::shared_ptr<Handle>>(
        path, wait, [path] { return std::make_shared<Handle>(Handle{openPlainFile(path)}); });
    if (!opened) return reason = DriveCalls::kNoAnswer, nullptr;
    if (!(*opened)->file.descriptor) return reason = (*opened)->file.reason, nullptr;
    return std::unique_ptr<DriveFile>(new DriveFile(path, wait, *opened));
}

std::unique_ptr<DriveFile> DriveFile::again() const {
    return std::unique_ptr<DriveFile>(new DriveFile(path_, wait_, handle_));
}

std::int64_t DriveFile::read(std::int64_t from, char* to, std::size_t count) {
    count = std::min(count, kPiece);
    // What lies in memory needs no drive.
    iovec part{to, count};
    const ssize_t there = preadv2(handle_->file.descriptor.get(), &part, 1, from, RWF_NOWAIT);
    if (there >= 0) return there;
    struct Piece {
        std::int64_t got = -1;
        std::unique_ptr<char[]> bytes;
    };
    auto read = DriveCalls::all().ask<Piece>(path_, wait_, [handle = handle_, from, count] {
        Piece piece{-1, std::unique_ptr<char[]>(new char[count])};
        piece.got = readAt(handle->file.descriptor, piece.bytes.get(), count, from);
        return piece;
    });
    if (!read || read->got < 0) return failure_ = read ? kUnreadable : DriveCalls::kNoAnswer, -1;
    std::memcpy(to, read->bytes.get(), static_cast<std::size_t>(read->got));
    return read->got;
}

std::optional<std::chrono::milliseconds> DriveFile::untouchedFor() {
    using std::chrono::system_clock;
    const auto written = DriveCalls::all().ask<std::optional<timespec>>(path_, wait_, [handle = handle_] {
        struct stat told {};
        const bool answered = fstat(handle->file.descriptor.get(), &told) == 0;
        return answered ? std::optional(told.st_mtim) : std::nullopt;
    });
    if (!written || !*written) return std::nullopt;
    const auto at = std::chrono::seconds((*written)->tv_sec) + std::chrono::nanoseconds((*written)->tv_nsec);
    return std::chrono::duration_cast<std::chrono::milliseconds>(system_clock::now().time_since_epoch() - at);
}

std::optional<std::string> DriveFile::readWhole(std::size_t limit) {
    if (static_cast<std::size_t>(size_) > limit) return std::nullopt;
    std::string bytes;
    // Until nothing more comes: it may be growing, and has no size at all in some file systems.
    for (std::size_t had = 0;;) {
        bytes.resize(std::max(static_cast<std::size_t>(size_), had) + kBeyond);
        const std::int64_t got = read(static_cast<std::int64_t>(had), bytes.data() + had, bytes.size() - had);
        if (got < 0) return std::nullopt;
        had += static_cast<std::size_t>(got);
        if (had > limit) return std::nullopt;
        if (got > 0) continue;
        bytes.resize(had);
        return bytes;
    }
}

std::optional<std::string> DriveFile::readAll(const std::string& path, DriveCalls::Wait wait, std::size_t limit) {
    std::string reason;
    const auto file = open(path, wait, reason);
    return file ? file->readWhole(limit) : std::nullopt;
}

}  // namespace corvane
