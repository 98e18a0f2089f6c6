// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace corvane {

/// Whether the decoding libraries that are there have what files of that type need ("FLAC", "MKV"): a reader of the
/// format and a decoder of what usually is in it. Loads them. False for a type that is not known here.
bool avPlays(const std::string& extension);

/// A reader that only files named for it may get: it takes any bytes for music, and is no reader for files of others.
/// Null: the name asks for none.
const char* formatByName(const std::string& path);

}  // namespace corvane
