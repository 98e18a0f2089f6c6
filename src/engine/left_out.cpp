// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/left_out.h"

#include <algorithm>

#include "engine/list_look_up.h"
#include "engine/mdlPublicFunction.h"

namespace corvane {

std::vector<std::string> filesForList(Files& files, const std::vector<std::string>& named,
                                      const std::function<void(const std::string& line)>& tell) {
    std::vector<std::string> taken;
    ListLookUp lookUp(files);
    for (std::size_t i = 0; i < named.size(); ++i) {
        const std::string& name = named[i];
        if (taken.size() == std::size_t{mdlDefinePublic::kMaxFiles} || lookUp.isOver()) {
            tell("The last " + std::to_string(named.size() - i) + " names: left out, because " +
                 (lookUp.isOver() ? "too many have no file" : "the list is full"));
            break;
        }
        if (name.empty()) continue;
        if (!mdlPublicFunction::isAcceptedExtension(mdlPublicFunction::GetExtension(name))) {
            tell(name + ": left out, because it is none of the kinds that are played");
        } else if (!lookUp.name(name)) {
            tell(name + ": left out, because there is no such file");
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
