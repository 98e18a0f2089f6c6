// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/characters.h"

#include <algorithm>
#include <array>

namespace corvane::text {

namespace {

/// What a first byte says: how many bytes follow it, and the least code point that needs so many.
struct Form {
    unsigned char mask, mark;
    std::size_t following;
    std::uint32_t least;
};
constexpr std::array<Form, 4> kForms{
    {{0x80, 0x00, 0, 0}, {0xE0, 0xC0, 1, 0x80}, {0xF0, 0xE0, 2, 0x800}, {0xF8, 0xF0, 3, 0x10000}}};

}  // namespace

Character firstCharacter(std::string_view text) {
    if (text.empty()) return {};
    const auto first = static_cast<unsigned char>(text.front());
    const auto* const form =
        std::find_if(kForms.begin(), kForms.end(), [&](const Form& one) { return (first & one.mask) == one.mark; });
    if (form == kForms.end() || text.size() <= form->following) return {};
    std::uint32_t code = first & static_cast<unsigned char>(~form->mask);
    for (std::size_t i = 1; i <= form->following; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0U) != 0x80U) return {};
        code = code << 6U | (next & 0x3FU);
    }
    const bool none = code < form->least || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000);
    return none ? Character{} : Character{code, form->following + 1};
}

}  // namespace corvane::text
