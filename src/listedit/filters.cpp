// SPDX-License-Identifier: GPL-3.0-or-later
#include "listedit/filters.h"

#include <algorithm>

namespace corvane {

std::vector<TypeFilter> typeFilters(const MediaTypes& types) {
    // A filter whose entry tells its patterns: "MP3 File(*.MP3)".
    // Of more types than are always there it tells those alone.
    const MediaTypes always;
    const auto told = [&](const std::string& name, TypeGroup group) {
        const std::string all = types.patternsOf(group), shown = always.patternsOf(group);
        return TypeFilter{name + "(" + shown + (all == shown ? ")" : ";\u2026)"), types.filterOf(group)};
    };
    return {
        {"All Files(MultiMediaFiles)", types.patterns()},
        told("CD Audio", TypeGroup::CdAudio),
        {"Image Files(*.BMP;*.JPG;*.JPEG)", types.filterOf(TypeGroup::Image)},
        told("MIDI Files", TypeGroup::Midi),
        told("MP3 File", TypeGroup::Mp3),
        told("Mpeg Files", TypeGroup::Mpeg),
        told("Quick Time Files", TypeGroup::QuickTime),
        told("Sound Files", TypeGroup::Sound),
        told("Video File", TypeGroup::Video),
    };
}

int findTypeFilter(const std::vector<TypeFilter>& filters, const std::string& entry) {
    const auto found =
        std::find_if(filters.begin(), filters.end(), [&](const TypeFilter& each) { return entry == each.entry; });
    return found == filters.end() ? -1 : static_cast<int>(found - filters.begin());
}

}  // namespace corvane
