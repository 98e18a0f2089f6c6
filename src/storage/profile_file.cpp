// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/profile_file.h"

namespace corvane {

std::string readProfileFile(Files& files, const std::string& path) {
    return files.read(path, kMostProfileBytes).value_or(std::string());
}

bool writeProfileFile(Files& files, const std::string& path, std::string_view section,
                      const std::vector<ProfileKey>& keys, const std::vector<std::string>& gone) {
    const auto text = files.read(path, kMostProfileBytes);
    // What cannot be read must not be lost by a setting written over it.
    if (!text && files.lookUp(path)) return false;
    const std::string left = withoutProfileKeys(text.value_or(std::string()), section, gone);
    const std::string changed = withProfileKeys(left, section, keys);
    return changed.size() <= kMostProfileBytes && files.replace(path, changed);
}

}  // namespace corvane
