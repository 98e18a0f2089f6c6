// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/profile_file.h"

namespace corvane {

std::string readProfileFile(Files& files, const std::string& path) {
    return files.read(path, kMostProfileBytes).value_or(std::string());
}

bool writeProfileFile(Files& files, const std::string& path, std::string_view section,
                      const std::vector<ProfileKey>& keys) {
    const auto text = files.read(path, kMostProfileBytes);
    // What cannot be read must not be lost by a setting written over it.
    if (!text && files.lookUp(path)) return false;
    return files.replace(path, withProfileKeys(text.value_or(std::string()), section, keys));
}

}  // namespace corvane
