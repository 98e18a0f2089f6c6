// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/drive_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "desktop/descriptor.h"

namespace corvane {

namespace {

constexpr std::size_t kPiece = 256 * 1024;  ///< most bytes of one question
constexpr std::size_t kBeyond = 4096;       ///< bytes asked for behind the end that was told
constexpr const char* kUnreadable = "The file cannot be read.";

std::int64_t readPiece(int file, char* to, std::size_t count, std::int64_t from) {
    ssize_t got = -1;
    do {
        got = pread(file, to, count, from);
    } while (got < 0 && errno == EINTR);
    return got;
}

}  // namespace

struct DriveFile::Handle {
    Descriptor descriptor;
    std::int64_t size = -1;  ///< -1: it is not open, and why not:
    std::string reason;

    void open(const std::string& path) {
        struct stat status {};
        if (stat(path.c_str(), &status) != 0) return fail("The file cannot be found.");
        // A pipe would wait for its writer, and a device may do something when it is opened.
        if (!S_ISREG(status.st_mode)) return fail("This is not a file.");
        descriptor = Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        if (!descriptor || fstat(descriptor.get(), &status) != 0) return fail(kUnreadable);
        if (!S_ISREG(status.st_mode)) return fail("This is not a file.");
        size = status.st_size;
    }
    void fail(const char* why) { reason = why; }
};

DriveFile::DriveFile(std::string path, DriveCalls::Wait wait, std::shared_ptr<Handle> handle)
    : path_(std::move(path)), wait_(wait), handle_(std::move(handle)), size_(handle_->size) {}

/// Closing asks some drives as well.
DriveFile::~DriveFile() { DriveCalls::release(std::move(handle_)); }

std::unique_ptr<DriveFile> DriveFile::open(const std::string& path, DriveCalls::Wait wait, std::string& reason) {
    const auto opened = DriveCalls::all().ask<std::shared_ptr<Handle>>(path, wait, [path] {
        auto handle = std::make_shared<Handle>();
        handle->open(path);
        return handle;
    });
    if (!opened) return reason = DriveCalls::kNoAnswer, nullptr;
    if ((*opened)->size < 0) return reason = (*opened)->reason, nullptr;
    return std::unique_ptr<DriveFile>(new DriveFile(path, wait, *opened));
}

std::int64_t DriveFile::read(std::int64_t from, char* to, std::size_t count) {
    count = std::min(count, kPiece);
    // What lies in memory needs no drive.
    iovec part{to, count};
    const ssize_t there = preadv2(handle_->descriptor.get(), &part, 1, from, RWF_NOWAIT);
    if (there >= 0) return there;
    struct Piece {
        std::int64_t got = -1;
        std::unique_ptr<char[]> bytes;
    };
    auto read = DriveCalls::all().ask<Piece>(path_, wait_, [handle = handle_, from, count] {
        Piece piece{-1, std::unique_ptr<char[]>(new char[count])};
        piece.got = readPiece(handle->descriptor.get(), piece.bytes.get(), count, from);
        return piece;
    });
    if (!read || read->got < 0) return failure_ = read ? kUnreadable : DriveCalls::kNoAnswer, -1;
    std::memcpy(to, read->bytes.get(), static_cast<std::size_t>(read->got));
    return read->got;
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

qint64 DriveDevice::readData(char* data, qint64 most) {
    qint64 given = 0;
    while (given < most) {
        const std::int64_t at = pos() + given;
        const std::int64_t offset = at - pieceAt_;
        if (offset < 0 || offset >= static_cast<std::int64_t>(piece_.size())) {
            piece_.resize(kPiece);
            pieceAt_ = at;
            const std::int64_t got = file_.read(at, piece_.data(), kPiece);
            piece_.resize(static_cast<std::size_t>(std::max<std::int64_t>(got, 0)));
            if (got <= 0) return given > 0 ? given : got;
            continue;
        }
        const qint64 part = std::min<qint64>(most - given, static_cast<std::int64_t>(piece_.size()) - offset);
        std::memcpy(data + given, piece_.data() + offset, static_cast<std::size_t>(part));
        given += part;
    }
    return given;
}

}  // namespace corvane
