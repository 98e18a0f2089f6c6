// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/left_out.h"

#include <algorithm>
#include <iterator>

#include "engine/list_look_up.h"
#include "engine/mdlPublicFunction.h"

namespace corvane {

std::vector<std::string> filesForList(Files& files, const std::vector<std::string>& named,
                                      const std::function<void(const std::string& line)>& tell,
                                      const MediaTypes& types) {
    const auto isPlayed = [&types](const std::string& name) {
        return types.knows(mdlPublicFunction::GetExtension(name));
    };
    std::vector<std::string> played;
    std::copy_if(named.begin(), named.end(), std::back_inserter(played), isPlayed);
    const auto answers = lookUpForList(files, played);
    auto answer = answers.begin();
    std::vector<std::string> taken;
    std::size_t missing = 0;
    for (std::size_t i = 0; i < named.size(); ++i) {
        const std::string& name = named[i];
        if (taken.size() == std::size_t{mdlDefinePublic::kMaxFiles} || missing == kMostMissing) {
            tell("The last " + std::to_string(named.size() - i) + " names: left out, because " +
                 (missing == kMostMissing ? "too many have no file" : "the list is full"));
            break;
        }
        if (name.empty()) continue;
        if (!isPlayed(name)) {
            tell(name + ": left out, because it is none of the kinds that are played");
        } else if (!*answer++) {
            tell(name + ": left out, because there is no such file");
            ++missing;
        } else {
            taken.push_back(name);
        }
    }
    return taken;
}

std::vector<std::string> namesBetweenBlanks(std::string_view text) {
    std::vector<std::string> names;
    while (!text.empty()) {
        const std::string_view name = text.substr(0, text.find(' '));
        if (!name.empty()) names.emplace_back(name);
        text.remove_prefix(std::min(text.size(), name.size() + 1));
    }
    return names;
}

}  // namespace corvane
