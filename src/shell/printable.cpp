// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/printable.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace corvane {

namespace {

/// What a first byte says: how many bytes follow it, and the least code point that needs so many.
struct Form {
    unsigned char mask, mark;
    std::size_t following;
    std::uint32_t least;
};
constexpr std::array<Form, 4> kForms{
    {{0x80, 0x00, 0, 0}, {0xE0, 0xC0, 1, 0x80}, {0xF0, 0xE0, 2, 0x800}, {0xF8, 0xF0, 3, 0x10000}}};

/// Bytes of the character that the text begins with, when it may be shown; 0 else.
std::size_t shownLength(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    const auto* const form =
        std::find_if(kForms.begin(), kForms.end(), [&](const Form& one) { return (first & one.mask) == one.mark; });
    if (form == kForms.end() || text.size() <= form->following) return 0;
    std::uint32_t code = first & static_cast<unsigned char>(~form->mask);
    for (std::size_t i = 1; i <= form->following; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0U) != 0x80U) return 0;
        code = code << 6U | (next & 0x3FU);
    }
    const bool control = code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029;
    const bool turns = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    const bool none = code < form->least || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000);
    return control || turns || none ? 0 : form->following + 1;
}

}  // namespace

std::string printable(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const std::size_t length = shownLength(text);
        shown += length == 0 ? std::string_view("?") : text.substr(0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return shown;
}

}  // namespace corvane
