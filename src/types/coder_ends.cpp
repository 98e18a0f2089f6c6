// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/coder_ends.h"

#include <array>
#include <charconv>

#include "types/text.h"

namespace corvane {

std::optional<CoderEnds> coderEndsOf(std::string_view name, std::string_view value) {
    if (name != "iTunSMPB") return std::nullopt;
    std::array<std::int64_t, 4> numbers{};
    for (std::int64_t& number : numbers) {
        value = text::trimmed(value);
        const char* const end = value.data() + value.size();
        const auto read = std::from_chars(value.data(), end, number, 16);
        if (read.ec != std::errc() || number < 0 || (read.ptr != end && !text::isBlank(*read.ptr))) return std::nullopt;
        value.remove_prefix(static_cast<std::size_t>(read.ptr - value.data()));
    }
    const CoderEnds ends{numbers[1], numbers[2], numbers[3]};
    return ends.samples > 0 ? std::optional(ends) : std::nullopt;
}

}  // namespace corvane
