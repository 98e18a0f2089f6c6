// SPDX-License-Identifier: GPL-3.0-or-later
#include "listedit/filters.h"

#include <algorithm>

#include "types/media_types.h"

namespace corvane {

namespace {

/// A filter whose entry tells its patterns: "MP3 File(*.MP3)".
TypeFilter told(const std::string& name, TypeGroup group) {
    return {name + "(" + patternsOf(group) + ")", patternsOf(group)};
}

}  // namespace

const std::vector<TypeFilter>& typeFilters() {
    static const std::vector<TypeFilter> kFilters = {
        {"All Files(MultiMediaFiles)", patternsOf(TypeGroup::None)},
        told("CD Audio", TypeGroup::CdAudio),
        {"Image Files(*.BMP;*.JPG;*.JPEG)", patternsOf(TypeGroup::Image)},
        told("MIDI Files", TypeGroup::Midi),
        told("MP3 File", TypeGroup::Mp3),
        told("Mpeg Files", TypeGroup::Mpeg),
        told("Quick Time Files", TypeGroup::QuickTime),
        // The last pattern ends with the parenthesis, so this filter shows no ".AIFF" file.
        {told("Sound Files", TypeGroup::Sound).entry, patternsOf(TypeGroup::Sound) + ")"},
        told("Video File", TypeGroup::Video),
    };
    return kFilters;
}

std::vector<std::string> typeFilterEntries() {
    std::vector<std::string> entries;
    for (const TypeFilter& each : typeFilters()) entries.emplace_back(each.entry);
    return entries;
}

int findTypeFilter(const std::string& entry) {
    const auto& filters = typeFilters();
    const auto found =
        std::find_if(filters.begin(), filters.end(), [&](const TypeFilter& each) { return entry == each.entry; });
    return found == filters.end() ? -1 : static_cast<int>(found - filters.begin());
}

}  // namespace corvane
