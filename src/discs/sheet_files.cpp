// SPDX-License-Identifier: GPL-3.0-or-later
#include "discs/sheet_files.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "types/folding.h"
#include "types/kind_facts.h"
#include "types/media_types.h"
#include "types/text.h"

namespace corvane {

namespace {

std::string_view stemOf(std::string_view name) { return name.substr(0, name.rfind('.')); }

std::string endingOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string() : text::upper(std::string(name.substr(dot + 1)));
}

/// Endings of sounds that a disc's sound may have become; those that keep it whole first.
std::vector<std::string> soundEndings() {
    const std::vector<MediaType> today = typesOfToday();
    const MediaTypes always;
    std::vector<std::string> endings;
    const auto addOf = [&endings](const std::vector<MediaType>& types, auto&& isOne) {
        for (const MediaType& type : types) {
            const bool isSound = isSoundFile(type.kind) && type.family.name != "modules" &&
                                 (type.group == TypeGroup::Sound || type.group == TypeGroup::Mp3);
            if (isSound && isOne(type)) endings.push_back(type.extension);
        }
    };
    const auto isWhole = [](const MediaType& type) { return type.family.name == "lossless sound"; };
    addOf(today, isWhole);
    addOf(always.all(), [](const MediaType& type) { return type.group == TypeGroup::Sound; });
    addOf(today, [&isWhole](const MediaType& type) { return !isWhole(type); });
    addOf(always.all(), [](const MediaType& type) { return type.group != TypeGroup::Sound; });
    return endings;
}

/// The files of a folder, as they are looked for.
class Beside {
public:
    explicit Beside(const std::vector<std::string>& names) : endings_(soundEndings()) {
        for (std::size_t i = 0; i < std::min(names.size(), kMostNamesBeside); ++i) {
            const std::string& name = names[i];
            const auto ending = std::find(endings_.begin(), endings_.end(), endingOf(name));
            files_.push_back({&name, text::folded(name), text::folded(stemOf(name)), text::capitals(stemOf(name)),
                              static_cast<std::size_t>(ending - endings_.begin())});
        }
    }

    bool has(std::string_view name) const {
        return std::any_of(files_.begin(), files_.end(), [name](const File& file) { return *file.name == name; });
    }

    /// The same name, written otherwise; null: there is none.
    const std::string* sameName(std::string_view name) const {
        return best(stemOf(name), [wanted = text::folded(name)](const File& file) { return file.folded == wanted; });
    }

    /// A sound with that stem; null: there is none.
    const std::string* soundOf(std::string_view stem) const {
        const auto isOne = [this, wanted = text::folded(stem)](const File& file) {
            return file.rank < endings_.size() && file.foldedStem == wanted;
        };
        return best(stem, isOne);
    }

private:
    struct File {
        const std::string* name;
        std::string folded, foldedStem;
        std::string stem;  ///< in capitals
        std::size_t rank;  ///< of its ending among endings_; their count: it is no sound
    };

    /// Of those that `isOne` finds, one with the same accents before others, then by its ending, then by name.
    template <typename IsOne>
    const std::string* best(std::string_view stem, IsOne isOne) const {
        const std::string capitals = text::capitals(stem);
        const auto order = [&capitals](const File& file) {
            return std::pair(file.stem != capitals, std::pair(file.rank, std::string_view(*file.name)));
        };
        const File* found = nullptr;
        for (const File& file : files_) {
            if (isOne(file) && (found == nullptr || order(file) < order(*found))) found = &file;
        }
        return found == nullptr ? nullptr : found->name;
    }

    std::vector<std::string> endings_;
    std::vector<File> files_;
};

}  // namespace

void standInForMissing(CueSheet& sheet, const std::string& sheetName, const std::vector<std::string>& names) {
    const Beside beside(names);
    for (CueFile& file : sheet.files) {
        if (beside.has(file.name)) continue;
        const std::string* found = beside.sameName(file.name);
        if (found == nullptr && file.kind == CueFile::Kind::Sound) {
            found = beside.soundOf(stemOf(file.name));
            if (found == nullptr && sheet.files.size() == 1) found = beside.soundOf(stemOf(sheetName));
        }
        if (found != nullptr) file.name = *found;
    }
}

}  // namespace corvane
