// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "drives/descriptor.h"

namespace corvane {

/// A plain file opened for reading. What is none (a pipe, a device, a socket, a folder) is not opened.
struct PlainFile {
    Descriptor descriptor;  ///< none: it cannot be opened
    std::int64_t size = 0;  ///< bytes, when it was opened
    std::string reason;     ///< why it cannot, in words
};

/// Neither waits for a pipe's writer nor for whoever holds a lease on the file; a drive that hangs it does wait for.
PlainFile openPlainFile(const std::string& path);

/// Copies up to `count` bytes from a place; fewer before the end, 0 at the end, -1 when they cannot be read.
std::int64_t readAt(const Descriptor& file, char* to, std::size_t count, std::int64_t from);

}  // namespace corvane
