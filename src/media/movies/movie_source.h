// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

struct mpv_handle;

namespace corvane {

/// Gives a player of the movie library its files: they are read through DriveFile, so that the library never hangs with
/// a drive. Outlives the library's player.
class MovieSource {
public:
    /// Made known to the library, before the player is used. False: refused.
    bool attach(mpv_handle* player);

    /// A file is to be opened next; returns the address that the library is told. The one before is given up.
    std::string begin(const std::string& path);
    /// Bytes that are to be read beside the file begun last, as if they were a file of that name; returns the address
    /// that the library is told. They go with the file.
    std::string lend(const std::string& name, std::string bytes);
    /// The file is not wanted any more: reads of it that wait for its drive come back.
    void giveUp();
    /// The file begun last plays: it may be read as far as it goes. Before, reading ends after kMostToOpen bytes, so
    /// that no covers, fonts and tables are taken that fill the memory.
    void opened();
    static constexpr std::int64_t kMostToOpen = std::int64_t{96} << 20;

    /// Why the file begun last cannot be read, in words; empty while it can.
    std::string failure() const;
    std::int64_t size() const;  ///< bytes of the file begun last; 0 until it was opened

private:
    struct File;
    struct Stream;
    struct Lent;
    static int open(void* self, char* address, void* info);
    static int openLent(File& file, const char* address, void* info);

    mutable std::mutex mutex_;
    std::shared_ptr<File> file_;  ///< begun last
    std::uint64_t number_ = 0;    ///< of it
};

}  // namespace corvane
