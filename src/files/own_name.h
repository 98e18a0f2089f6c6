// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <mutex>
#include <string>

namespace corvane {

/// The name that the file at the path bears in its folder, which is not what was asked for where the file system
/// ignores case. The asked name where that cannot be told, as in folders of more than `kMostEntriesRead` entries. Asks
/// the drive: for a thread of its own.
std::string ownName(const std::string& path);

/// The same of many paths, one after the other: where the file system minds the case of one file of a folder, it does
/// of the next one there. Any thread.
class OwnNames {
public:
    std::string of(const std::string& path);

private:
    std::mutex mutex_;
    std::string mindsCase_;  ///< a folder, with its separator
};

/// So many take some milliseconds; a drop asks for hundreds of names.
constexpr int kMostEntriesRead = 4096;

}  // namespace corvane
