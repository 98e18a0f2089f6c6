// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/opened_lists.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <set>
#include <unordered_map>
#include <utility>

#include "discs/cue_sheet.h"
#include "engine/left_out.h"
#include "engine/list_look_up.h"
#include "engine/mdlPublicFunction.h"
#include "lists/foreign_list.h"
#include "lists/list_location.h"
#include "lists/natural_order.h"
#include "types/kind_facts.h"
#include "types/numbers.h"
#include "types/text.h"
#include "types/text_encoding.h"

namespace corvane {

namespace {

using mdlDefinePublic::mkNone;

std::string extensionOf(std::string_view path) {
    Conveniences byLastDot;
    byLastDot.names = true;
    return mdlPublicFunction::typeOf(byLastDot, path);
}

bool isSheet(const std::string& path) { return extensionOf(path) == "CUE"; }

class Unfolding {
public:
    Unfolding(const OpeningRules& rules, const Looking& looking)
        : rules_(rules), looking_(looking), files_(looking.files) {}

    void add(const std::string& path, int depth) {
        if (looking_.isGivenUp()) return;
        const auto format = listFormatOf(extensionOf(path));
        const bool isList = isSheet(path) || format;
        if (!isList && (kindOf(path) != mkNone || !isFolder(path))) {
            addFile({path, "", "", depth == 0});
            return;
        }
        if (opened_.firstMany.empty()) opened_.firstMany = path;
        if (isSheet(path)) {
            addSheet(path);
        } else if (format) {
            addList(path, *format, depth);
        } else {
            addFolder(path, {}, true);
        }
    }
    void addFolder(const std::string& path) {
        opened_.firstMany = path;
        addFolder(path, {}, true);
    }
    OpenedFiles take() { return std::move(opened_); }

private:
    struct Shown {
        std::vector<std::string> files, folders;
        bool operator==(const Shown&) const = default;
    };

    bool full() const { return opened_.files.size() >= kMostOpened; }
    void leaveOut(const std::string& path, const std::string& why) {
        opened_.leftOut.push_back(text::onOneLine(path) + ": " + why);
    }
    void addFile(OpenedFile file) {
        if (full()) return;
        opened_.files.push_back(std::move(file));
        if (looking_.tell) looking_.tell(opened_.files.size());
    }

    bool isFolder(const std::string& path) {
        return !path.empty() && ++folderQuestions_ <= kMostFolderQuestions && files_.readable(path);
    }

    std::optional<std::string> read(const std::string& path, std::size_t most) {
        if (++lists_ > kMostLists) return std::nullopt;
        auto bytes = files_.read(path, most);
        if (!bytes) leaveOut(path, "left out, because it cannot be read, or is too long for a list");
        return bytes;
    }

    void addList(const std::string& path, ListFormat format, int depth);
    void addSheet(const std::string& path);
    void addFolder(const std::string& path, std::vector<Shown> above, bool withPictures);
    /// mkNone: it is not played.
    std::int16_t kindOf(std::string_view path) const {
        const auto found = rules_.types.find(mdlPublicFunction::typeOf(rules_.ways, path));
        return found == rules_.types.end() ? mkNone : found->second;
    }

    const OpeningRules& rules_;
    const Looking& looking_;
    Files& files_;
    OpenedFiles opened_;
    int lists_ = 0, folders_ = 0, folderQuestions_ = 0;
    std::set<std::string> reading_;  ///< lists whose names are being opened
};

/// Of each place with several paths, the first one that is there; else the last.
std::vector<std::string> choose(Files& files, std::vector<ListLocation> places) {
    std::vector<std::string> chosen(places.size());
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (places[i].paths.empty()) continue;
        chosen[i] = places[i].paths.front();
        if (places[i].paths.size() > 1) open.push_back(i);
    }
    for (std::size_t turn = 0; !open.empty(); ++turn) {
        std::vector<std::string> asked;
        asked.reserve(open.size());
        for (const std::size_t i : open) asked.push_back(places[i].paths[turn]);
        const auto names = lookUpForList(files, asked, asked.size());
        std::vector<std::size_t> left;
        for (std::size_t k = 0; k < open.size(); ++k) {
            const std::size_t i = open[k];
            if (k < names.size() && names[k]) continue;
            chosen[i] = places[i].paths[turn + 1];
            if (turn + 2 < places[i].paths.size()) left.push_back(i);
        }
        open = std::move(left);
    }
    return chosen;
}

void Unfolding::addList(const std::string& path, ListFormat format, int depth) {
    if (depth >= kMostListDepth || full() || !reading_.insert(path).second) return;
    if (const auto bytes = read(path, kMostForeignBytes)) {
        const ForeignList list = readForeignList(format, *bytes);
        const std::string folder = folderOf(path, files_.separator());
        std::vector<ListLocation> places;
        std::size_t away = 0;
        for (const std::string& location : list.locations) {
            places.push_back(locate(location, folder, files_.separator(), list.areAddresses));
            if (places.back().network) ++away;
        }
        for (const std::string& each : choose(files_, std::move(places))) {
            if (!each.empty()) add(each, depth + 1);
        }
        if (away > 0) {
            leaveOut(path, away == 1 ? "one entry left out, because it leads to the network"
                                     : std::to_string(away) + " entries left out, because they lead to the network");
        }
    }
    reading_.erase(path);
}

/// Each track is a name in the sheet, as if that were a folder.
void Unfolding::addSheet(const std::string& path) {
    const auto bytes = read(path, kMostCueBytes);
    if (!bytes) return;
    const ReadCueSheet sheet = readCueSheet(text::toUtf8(*bytes));
    if (!sheet.sheet) return leaveOut(path, "left out, because it is no sheet of a disc: " + sheet.reason);
    bool isFirst = true;
    for (const CueTrack& track : sheet.sheet->tracks) {
        if (!track.audio) continue;
        const std::string name = "Track" + zeroPadded(track.number, 2) + ".cda";
        std::string inside = text::joinPath(path, name, files_.separator());
        if (std::exchange(isFirst, false) && !files_.lookUp(inside)) {
            return leaveOut(path, "left out, because its tracks are not there, or cannot be played here");
        }
        addFile({std::move(inside), track.title, "", false});
    }
}

/// Its files, then its folders, in natural order. One that shows what a folder above it shows is that folder again, by
/// a link, and ends there. Pictures beside and below sounds are their covers: one of them would stand until it is sent
/// away, and no sound play.
void Unfolding::addFolder(const std::string& path, std::vector<Shown> above, bool withPictures) {
    if (full() || above.size() >= kMostFolderDepth || ++folders_ > kMostFolders) return;
    if (looking_.isLate() || looking_.isGivenUp()) return;
    Shown shown{files_.list(path, "*"), files_.folders(path)};
    if (std::find(above.begin(), above.end(), shown) != above.end()) return;
    above.push_back(shown);
    sortNaturally(shown.files);
    sortNaturally(shown.folders);
    const char separator = files_.separator();
    const std::size_t before = opened_.files.size();
    std::vector<std::pair<std::string, std::int16_t>> played;  // paths and their kinds
    std::vector<std::string> sheets;
    for (const std::string& name : shown.files) {
        std::string inside = text::joinPath(path, name, separator);
        const std::int16_t kind = kindOf(inside);
        if (kind != mkNone) {
            played.emplace_back(std::move(inside), kind);
        } else if (isSheet(name)) {
            sheets.push_back(std::move(inside));
        }
    }
    const auto holdsPicture = [](const auto& each) { return isPicture(each.second); };
    const auto holdsSound = [](const auto& each) { return isSoundFile(each.second); };
    if (std::all_of(played.begin(), played.end(), holdsPicture)) {  // a disc's image plays only by its sheet
        for (const std::string& sheet : sheets) addSheet(sheet);
    }
    withPictures =
        withPictures && opened_.files.size() == before && std::none_of(played.begin(), played.end(), holdsSound);
    for (auto& [inside, kind] : played) {
        if (withPictures || !isPicture(kind)) {
            std::string name = inside.substr(inside.rfind(separator) + 1);
            addFile({std::move(inside), "", std::move(name), false});
        }
    }
    for (const std::string& name : shown.folders) {
        addFolder(text::joinPath(path, name, separator), above, withPictures);
    }
}

}  // namespace

bool isNameOfList(const Player& player, const std::string& path) {
    return player.conveniences.lists && (isSheet(path) || listFormatOf(extensionOf(path)));
}

bool opensAsFolder(const Player& player, const std::string& path) {
    return player.conveniences.lists && player.ports.files.readable(path);
}

OpeningRules openingRules(const Player& player) { return {player.conveniences, player.types.kindsThatMayBeThere()}; }

OpenedFiles openedAs(const OpeningRules& rules, const Looking& looking, const std::vector<std::string>& named) {
    if (!rules.ways.lists) {
        OpenedFiles plain;
        for (const std::string& each : named) plain.files.push_back({each, "", "", true});
        return plain;
    }
    Unfolding opening(rules, looking);
    for (const std::string& each : named) opening.add(each, 0);
    return opening.take();
}

namespace {

Looking lookingWhileAllWait(const Player& player) {
    Clock& clock = player.ports.clock;
    const auto isLate = [&clock, until = clock.milliseconds() + kMostFolderMs] {
        return clock.milliseconds() >= until;
    };
    return {player.ports.files, [] { return false; }, isLate};
}

/// The own name of each file that is to be looked up, or nothing; those behind a full list or behind too many missing
/// ones have no answer.
std::vector<std::optional<std::string>> namesOf(Files& files, const std::vector<OpenedFile>& opened, std::size_t room) {
    std::vector<std::string> asked;
    for (const OpenedFile& each : opened) {
        if (each.name.empty()) asked.push_back(each.path);
    }
    return lookUpForList(files, asked, room);
}

/// What became of the names that stand for no list or folder.
class Reasons {
public:
    void add(const OpenedFile& file, const std::string& why) {
        if (file.isGiven && !file.path.empty()) lines_.push_back(file.path + ": left out, because " + why);
    }
    void addUnanswered(std::size_t count) {
        if (count > 0)
            lines_.push_back("The last " + std::to_string(count) + " names: left out, because too many have no file");
    }
    std::vector<std::string> take() { return std::move(lines_); }

private:
    std::vector<std::string> lines_;
};

/// Those that may be played; the reasons of the others.
std::vector<OpenedFile> playedOf(const OpeningRules& rules, std::vector<OpenedFile> opened, char separator,
                                 Reasons& reasons) {
    std::vector<OpenedFile> played;
    played.reserve(opened.size());
    for (OpenedFile& file : opened) {
        const bool isListed = !file.name.empty();
        if (!isListed && rules.types.count(mdlPublicFunction::typeOf(rules.ways, file.path)) == 0) {
            reasons.add(file, whyOfNoKind(rules.ways, file.path));
            continue;
        }
        file.path = mdlPublicFunction::withoutDoubledSeparator(std::move(file.path), separator);
        played.push_back(std::move(file));
    }
    return played;
}

}  // namespace

OpenedFiles openedAs(const Player& player, const std::vector<std::string>& named) {
    return openedAs(openingRules(player), lookingWhileAllWait(player), named);
}

namespace {

FoundFiles foundAmong(const OpeningRules& rules, const Looking& looking, OpenedFiles opened, std::size_t room);

/// What a folder holds that is named as files are which are played ("Live.mp3"); nothing when it is none.
std::optional<FoundFiles> foundInFolder(const OpeningRules& rules, const Looking& looking, const std::string& path,
                                        std::size_t room) {
    if (!rules.ways.lists || !looking.files.readable(path)) return std::nullopt;
    Unfolding opening(rules, looking);
    opening.addFolder(path);
    return foundAmong(rules, looking, opening.take(), room);
}

template <typename T>
void moveBehind(std::vector<T>& to, std::vector<T> from) {
    std::move(from.begin(), from.end(), std::back_inserter(to));
}

FoundFiles foundAmong(const OpeningRules& rules, const Looking& looking, OpenedFiles opened, std::size_t room) {
    Reasons reasons;
    std::vector<OpenedFile> played = playedOf(rules, std::move(opened.files), looking.files.separator(), reasons);
    const auto names = namesOf(looking.files, played, room);
    auto name = names.begin();
    FoundFiles found{{}, std::move(opened.leftOut), {}};
    std::size_t unanswered = 0;
    int folderQuestions = 0;
    for (OpenedFile& file : played) {
        if (found.files.size() >= room) break;
        if (file.name.empty()) {
            if (name == names.end()) {
                ++unanswered;
                continue;
            }
            const std::optional<std::string>& own = *name++;
            if (!own) {
                auto inside = ++folderQuestions > kMostFolderQuestions
                                  ? std::nullopt
                                  : foundInFolder(rules, looking, file.path, room - found.files.size());
                if (inside) {
                    moveBehind(found.files, std::move(inside->files));
                    moveBehind(found.leftOut, std::move(inside->leftOut));
                } else {
                    reasons.add(file, "there is no such file");
                }
                continue;
            }
            file.name = *own;
        }
        const bool isNamed = !file.title.empty();
        if (!isNamed) file.title = mdlPublicFunction::titleOf(rules.ways, file.name);
        found.files.push_back({std::move(file.path), std::move(file.name), std::move(file.title), isNamed});
    }
    reasons.addUnanswered(unanswered);
    found.reasons = reasons.take();
    if (found.files.empty() && found.leftOut.empty() && !opened.firstMany.empty()) {
        found.leftOut.push_back(text::onOneLine(opened.firstMany) +
                                ": left out, because nothing in it can be played here");
    }
    return found;
}

}  // namespace

FoundFiles findFiles(const OpeningRules& rules, const Looking& looking, const std::vector<std::string>& named,
                     std::size_t room) {
    return foundAmong(rules, looking, openedAs(rules, looking, named), room);
}

FoundFiles findFiles(const Player& player, const std::vector<std::string>& named, std::size_t room) {
    return findFiles(openingRules(player), lookingWhileAllWait(player), named, room);
}

FoundFiles takeFound(Player& player, FoundFiles found) {
    std::unordered_map<std::string, bool> plays;  // by type: looking for one takes its time in a long list
    std::vector<std::string> others;
    std::erase_if(found.files, [&](const TakenFile& file) {
        const auto [known, isNew] = plays.try_emplace(mdlPublicFunction::typeOf(player.conveniences, file.path), false);
        if (isNew) known->second = player.types.knows(known->first);
        if (!known->second) {
            others.push_back(file.path + ": left out, because " + whyOfNoKind(player.conveniences, file.path));
        }
        return !known->second;
    });
    if (found.files.empty()) std::move(others.begin(), others.end(), std::back_inserter(found.reasons));
    return found;
}

FoundFiles filesTaken(Player& player, const std::vector<std::string>& named, std::size_t room) {
    FoundFiles found = takeFound(player, findFiles(player, named, room));
    tellLeftOut(player, found.leftOut);
    return found;
}

bool isReadElsewhere(const Player& player, const std::vector<std::string>& named) {
    if (player.ports.work == nullptr || !player.conveniences.lists) return false;
    return named.size() > kFewNames || !std::all_of(named.begin(), named.end(), [&](const std::string& each) {
               return mdlPublicFunction::isPlayed(player, each);
           });
}

void tellLeftOut(Player& player, const FoundFiles& found, bool eachName) {
    if (!player.conveniences.plays || found.reasons.empty() || !(eachName || found.files.empty())) {
        return tellLeftOut(player, found.leftOut);
    }
    std::vector<std::string> lines = found.leftOut;
    lines.insert(lines.end(), found.reasons.begin(), found.reasons.end());
    tellInBox(player, reasonText(lines));
}

void tellLeftOut(Player& player, const std::vector<std::string>& lines) {
    constexpr std::size_t kMostLines = 10;
    if (lines.empty()) return;
    std::string text;
    for (std::size_t i = 0; i < std::min(lines.size(), kMostLines); ++i) text += (i > 0 ? "\r\n" : "") + lines[i];
    if (lines.size() > kMostLines) text += "\r\nand " + std::to_string(lines.size() - kMostLines) + " more.";
    tellInBox(player, std::move(text));
}

}  // namespace corvane
