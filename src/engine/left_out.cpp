// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/left_out.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "engine/list_look_up.h"
#include "engine/mdlPublicFunction.h"
#include "engine/opened_lists.h"
#include "types/media_types.h"
#include "types/text.h"

namespace corvane {

namespace {

constexpr std::size_t kMostReasons = 5;  ///< lines of a box

}  // namespace

std::string whyOfNoKind(const Conveniences& ways, const std::string& name) {
    const std::string type = mdlPublicFunction::typeOf(ways, name);
    const std::vector<MediaType> today = ways.kinds ? typesOfToday() : std::vector<MediaType>();
    const bool isKnown =
        std::any_of(today.begin(), today.end(), [&type](const MediaType& each) { return each.extension == type; });
    return isKnown ? "nothing on this machine decodes " + type : "it is none of the kinds that are played";
}

std::vector<std::string> filesForList(const Player& player, const std::vector<std::string>& named,
                                      const std::function<void(const std::string& line)>& tell) {
    const auto isPlayed = [&player](const std::string& name) {
        return mdlPublicFunction::isPlayed(player, name) || isNameOfList(player, name);
    };
    std::vector<std::string> played;
    std::copy_if(named.begin(), named.end(), std::back_inserter(played), isPlayed);
    const auto answers = lookUpForList(player.ports.files, played, mdlDefinePublic::maxFiles(player));
    auto answer = answers.begin();
    std::vector<std::string> taken;
    std::size_t missing = 0;
    int questions = 0;
    for (std::size_t i = 0; i < named.size(); ++i) {
        const std::string& name = named[i];
        if (taken.size() == mdlDefinePublic::maxFiles(player) || missing == kMostMissing) {
            tell("The last " + std::to_string(named.size() - i) + " names: left out, because " +
                 (missing == kMostMissing ? "too many have no file" : "the list is full"));
            break;
        }
        if (name.empty()) continue;
        const bool ofAKind = isPlayed(name);
        // A folder may be named as files are which are played.
        if ((ofAKind && *answer++) || (++questions <= kMostFolderQuestions && opensAsFolder(player, name))) {
            taken.push_back(name);
        } else if (!ofAKind) {
            tell(name + ": left out, because " + whyOfNoKind(player.conveniences, name));
        } else {
            tell(name + ": left out, because there is no such file");
            ++missing;
        }
    }
    return taken;
}

std::string reasonText(const std::vector<std::string>& lines) {
    std::string text;
    const std::size_t shown = std::min(lines.size(), kMostReasons);
    for (std::size_t i = 0; i < shown; ++i) text += (i == 0 ? "" : "\n") + text::onOneLine(lines[i]);
    if (lines.size() > shown) text += "\nand " + std::to_string(lines.size() - shown) + " more";
    return text;
}

void tellInBox(Player& player, std::string text) {
    if (player.forms.find<MainPanelControls>() == nullptr) return player.toTell.push_back(std::move(text));
    player.ports.loop.post([&player, text = std::move(text)] {
        if (player.ports.process.ending()) return;
        mdlPublicFunction::messageBox(player, text, Buttons::Ok, Icon::Information);
    });
}

void tellWhatWaits(Player& player) {
    for (std::string& text : std::exchange(player.toTell, {})) tellInBox(player, std::move(text));
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
