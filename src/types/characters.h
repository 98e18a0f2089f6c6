// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Characters of texts in UTF-8, as strangers write them.
namespace corvane::text {

struct Character {
    std::uint32_t code = 0;  ///< of Unicode
    std::size_t bytes = 0;   ///< that it takes; 0: the text does not begin with a character
};

/// The character that the text begins with. Longer forms than need be, halves of pairs and what lies behind the last
/// code point are none; an empty text has none.
Character firstCharacter(std::string_view text);
/// Control characters, line and paragraph separators among them.
constexpr bool isControl(std::uint32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029;
}
/// Embeddings, overrides and isolates: what follows them would be shown in another order.
constexpr bool turnsAround(std::uint32_t code) {
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

}  // namespace corvane::text
