// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "drives/drive_calls.h"

namespace corvane {

/// A plain file, read on a drive that may stop answering: every look at it is put through DriveCalls, so that no
/// caller waits longer than it wants to. Used from one thread at a time.
class DriveFile {
public:
    /// Null when it is no plain file, cannot be read or does not answer in time; `reason` says which, in words. The
    /// wait counts for each look; its flag outlives the file.
    static std::unique_ptr<DriveFile> open(const std::string& path, DriveCalls::Wait wait, std::string& reason);
    /// The whole file; empty when it cannot be read in time or is longer than limit bytes.
    static std::optional<std::string> readAll(const std::string& path, DriveCalls::Wait wait, std::size_t limit);

    /// Another reader of the same open file, with the same wait: the name is not asked for again, and means the same
    /// file whatever lies there now. Any thread.
    std::unique_ptr<DriveFile> again() const;

    DriveFile(const DriveFile&) = delete;
    DriveFile& operator=(const DriveFile&) = delete;
    ~DriveFile();

    const std::string& path() const { return path_; }
    std::int64_t size() const { return size_; }  ///< bytes, when it was opened
    /// Copies up to `count` bytes from a place; fewer also before the end, 0 at the end. -1: it cannot be read, or the
    /// wait was over.
    std::int64_t read(std::int64_t from, char* to, std::size_t count);
    /// How long ago it was written to last, as its drive tells; none when that does not answer.
    std::optional<std::chrono::milliseconds> untouchedFor();
    /// All of it; empty when it cannot be read or is longer than limit bytes.
    std::optional<std::string> readWhole(std::size_t limit);
    /// Why a read has failed, in words; empty while none has. A decoder may have made something of the rest.
    const std::string& failure() const { return failure_; }

private:
    struct Handle;
    DriveFile(std::string path, DriveCalls::Wait wait, std::shared_ptr<Handle> handle);

    std::string path_;
    DriveCalls::Wait wait_;
    std::shared_ptr<Handle> handle_;  ///< held by each question about it as well
    std::int64_t size_;
    std::string failure_;
};

}  // namespace corvane
