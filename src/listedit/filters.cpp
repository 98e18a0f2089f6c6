// SPDX-License-Identifier: GPL-3.0-or-later
#include "listedit/filters.h"

#include <algorithm>

namespace corvane {

const std::vector<TypeFilter>& typeFilters() {
    static const std::vector<TypeFilter> kFilters = {
        {"All Files(MultiMediaFiles)",
         "*.CDA;*.BMP;*.JPEG;*.JPG;*.GIF;*.AVI;*.MOV;*.QT;*.MID;*.RMI;*.MPG;*.MPV;*.MP2;*.WAV;*.MP3;*.M1V;*.MPEG;*.RA;"
         "*.RM;*.RAM;*.RMM;*.SND;*.AU;*.AIF;*.AIFC;*.AIFF"},
        {"CD Audio(*.CDA)", "*.CDA"},
        {"Image Files(*.BMP;*.JPG;*.JPEG)", "*.BMP;*.JPEG;*.JPG;*.GIF"},
        {"MIDI Files(*.MID;*.RMI)", "*.MID;*.RMI"},
        {"MP3 File(*.MP3)", "*.MP3"},
        {"Mpeg Files(*.MPG;*.MPV;*.MP2;*.M1V;*.MPEG)", "*.MPG;*.MPV;*.MP2;*.M1V;*.MPEG"},
        {"Quick Time Files(*.MOV;*.QT)", "*.MOV;*.QT"},
        // The last pattern ends with the parenthesis, so this filter shows no ".AIFF" file.
        {"Sound Files(*.WAV;*.SND;*.AU;*.AIF;*.AIFC;*.AIFF)", "*.WAV;*.SND;*.AU;*.AIF;*.AIFC;*.AIFF)"},
        {"Video File(*.AVI)", "*.AVI"},
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
