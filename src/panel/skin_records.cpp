// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/skin_records.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <utility>

#include "engine/mdlPublicFunction.h"
#include "engine/text.h"

namespace corvane {

namespace {

constexpr std::size_t kFields = 9;
constexpr std::int32_t kAllColourBits = 0xFFFFFF;

using text::isBlank;
using text::takeLine;
using text::trimmed;

using Fields = std::array<std::string_view, kFields>;

/// Takes the next field and the comma behind it off the line. A quoted field ends at its quote: what stands between
/// that and the comma is dropped. A doubled quote, as spreadsheets write one, does not end it.
std::string_view takeField(std::string_view& line, bool& more) {
    while (!line.empty() && isBlank(line.front())) line.remove_prefix(1);
    const bool quoted = !line.empty() && line.front() == '"';
    std::size_t end = 0;
    if (quoted) {
        end = line.find('"', 1);
        while (end != std::string_view::npos && line.substr(end, 2) == "\"\"") end = line.find('"', end + 2);
        end = std::min(end, line.size());
    }
    const std::size_t comma = std::min(line.find(',', end), line.size());
    const std::string_view field = quoted ? line.substr(1, end - 1) : trimmed(line.substr(0, comma));
    more = comma < line.size();
    line.remove_prefix(more ? comma + 1 : comma);
    return field;
}

/// How many of the nine fields the line has.
std::size_t split(std::string_view line, Fields& fields) {
    std::size_t count = 0;
    for (bool more = true; more && count < kFields; ++count) fields[count] = takeField(line, more);
    return count;
}

/// False: not a 16-bit number. A blank field is 0.
bool readLength(std::string_view field, int& length) {
    using Limits = std::numeric_limits<std::int16_t>;
    if (trimmed(field).empty()) return true;
    const auto number = mdlPublicFunction::parseNumber(field);
    if (!number || *number < Limits::min() || *number > Limits::max()) return false;
    length = *number;
    return true;
}

}  // namespace

SkinRecords::SkinRecords(std::string_view text) : rest_(text::withoutMark(text)) {}

std::optional<SkinRecord> SkinRecords::next(int first, int last) {
    while (!failed_ && !rest_.empty()) {
        Fields fields;
        const std::size_t count = split(takeLine(rest_), fields);
        const auto number = mdlPublicFunction::parseNumber(fields[1]);
        if (!number || *number < first || *number > last) continue;

        SkinRecord record;
        record.number = *number;
        record.use = trimmed(fields[8]);
        record.used = record.use != "0";
        failed_ = count < kFields;
        if (!failed_ && (record.used || record.number == kPanelRecord)) {
            failed_ = !(readLength(fields[2], record.left) && readLength(fields[3], record.top) &&
                        readLength(fields[4], record.clipX) && readLength(fields[5], record.clipY) &&
                        readLength(fields[6], record.width) && readLength(fields[7], record.height));
        }
        if (!failed_) return record;
    }
    return std::nullopt;
}

std::optional<Colour> skinColour(std::string_view written) {
    static constexpr std::array<std::pair<std::string_view, Colour>, 8> kNames = {{
        {"BLACK", kBlack},
        {"RED", 0x0000FF},
        {"GREEN", 0x00FF00},
        {"YELLOW", 0x00FFFF},
        {"BLUE", 0xFF0000},
        {"MAGENTA", 0xFF00FF},
        {"CYAN", 0xFFFF00},
        {"WHITE", kWhite},
    }};
    const std::string_view colour = trimmed(written);
    const auto named = std::find_if(kNames.begin(), kNames.end(),
                                    [&](const auto& each) { return text::sameWithoutCase(colour, each.first); });
    if (named != kNames.end()) return named->second;
    const auto number = mdlPublicFunction::parseNumber(colour);
    if (!number) return std::nullopt;
    return *number & kAllColourBits;
}

}  // namespace corvane
