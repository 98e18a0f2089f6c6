// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/list_look_up.h"

#include <algorithm>
#include <utility>

namespace corvane {

std::vector<std::optional<std::string>> lookUpForList(Files& files, const std::vector<std::string>& paths,
                                                      std::size_t room) {
    std::vector<std::optional<std::string>> names;
    std::size_t missing = 0;
    while (names.size() < paths.size() && room > 0 && missing < kMostMissing) {
        // Never more at once than may be looked up whatever comes of them.
        const std::size_t count = std::min({paths.size() - names.size(), room, kMostMissing - missing});
        const auto begin = paths.begin() + static_cast<std::ptrdiff_t>(names.size());
        for (auto& name : files.lookUpAll({begin, begin + static_cast<std::ptrdiff_t>(count)})) {
            if (name) {
                --room;
            } else {
                ++missing;
            }
            names.push_back(std::move(name));
        }
    }
    return names;
}

}  // namespace corvane
