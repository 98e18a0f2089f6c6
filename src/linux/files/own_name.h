// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace corvane {

/// The name that the file at the path bears in its folder, which is not what was asked for where the file system
/// ignores case. The asked name where that cannot be told, as in folders of more than `kMostEntriesRead` entries. Asks
/// the drive: for a thread of its own.
std::string ownName(const std::string& path);

/// So many take some milliseconds; a drop asks for hundreds of names.
constexpr int kMostEntriesRead = 4096;

}  // namespace corvane
