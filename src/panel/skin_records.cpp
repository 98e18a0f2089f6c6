// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/skin_records.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <utility>

#include "engine/mdlPublicFunction.h"
#include "types/numbers.h"
#include "types/text.h"

namespace corvane {

namespace {

constexpr std::int32_t kAllColourBits = 0xFFFFFF;

using text::isBlank;
using text::takeLine;
using text::trimmed;

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

/// False: not a 16-bit number. A blank field is 0.
bool readLength(std::string_view field, int& length) {
    using Limits = std::numeric_limits<std::int16_t>;
    if (trimmed(field).empty()) return true;
    const auto number = parseNumber(field);
    if (!number || *number < Limits::min() || *number > Limits::max()) return false;
    length = *number;
    return true;
}

}  // namespace

SkinLine::SkinLine(std::string_view line) {
    bool more = true;
    for (; more && count < kSkinFields; ++count) fields[count] = takeField(line, more);
    tooMany = more;
    number = parseNumber(fields[1]);
}

std::optional<std::size_t> readSkinRecord(const SkinLine& line, SkinRecord& record) {
    record.number = line.number.value_or(0);
    record.use = trimmed(line.fields[8]);
    record.used = record.use != "0";
    if (line.count < kSkinFields) return line.count;
    if (!record.used && record.number != kPanelRecord) return std::nullopt;
    const std::array<int*, 6> lengths = {&record.left,  &record.top,   &record.clipX,
                                         &record.clipY, &record.width, &record.height};
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        if (!readLength(line.fields[i + 2], *lengths[i])) return i + 2;
    }
    return std::nullopt;
}

SkinRecords::SkinRecords(std::string_view text) : rest_(text::withoutMark(text)) {}

std::optional<SkinRecord> SkinRecords::next(int first, int last) {
    while (!failed_ && !rest_.empty()) {
        ++line_;
        const SkinLine line(takeLine(rest_));
        if (!line.number || *line.number < first || *line.number > last) continue;
        SkinRecord record;
        failed_ = readSkinRecord(line, record).has_value();
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
    const auto number = parseNumber(colour);
    if (!number) return std::nullopt;
    return *number & kAllColourBits;
}

}  // namespace corvane
