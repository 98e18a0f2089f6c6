// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz.h"

namespace corvane::fuzz {

/// The bytes as a file without a name.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* data, std::size_t size) : file_(memfd_create("made-up", MFD_CLOEXEC)) {
        require(file_ >= 0 && write(file_, data, size) == static_cast<ssize_t>(size), "there is memory for the file");
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { close(file_); }
    std::string path() const { return "/proc/self/fd/" + std::to_string(file_); }

private:
    int file_;
};

}  // namespace corvane::fuzz
