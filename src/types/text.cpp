// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/text.h"

#include <array>
#include <cstdint>

namespace corvane::text {

namespace {

/// Small letters first to last. Step 1: each one's capital lies `distance` away. Step 2: small and capital letters take
/// turns, and every second one is meant.
struct SmallLetters {
    std::uint32_t first, last, step;
    std::int32_t distance;
};

constexpr std::array<SmallLetters, 37> kSmall = {{
    {0x0E0, 0x0F6, 1, -0x20},   {0x0F8, 0x0FE, 1, -0x20},   {0x0FF, 0x0FF, 1, 0x79},  {0x101, 0x12F, 2, -1},
    {0x133, 0x137, 2, -1},      {0x13A, 0x148, 2, -1},      {0x14B, 0x177, 2, -1},    {0x17A, 0x17E, 2, -1},
    {0x1CE, 0x1DC, 2, -1},      {0x1DF, 0x1EF, 2, -1},      {0x1F5, 0x1F5, 1, -1},    {0x1F9, 0x21F, 2, -1},
    {0x223, 0x233, 2, -1},      {0x3AC, 0x3AC, 1, -0x26},   {0x3AD, 0x3AF, 1, -0x25}, {0x3B1, 0x3C1, 1, -0x20},
    {0x3C2, 0x3C2, 1, -0x1F},   {0x3C3, 0x3CB, 1, -0x20},   {0x3CC, 0x3CC, 1, -0x40}, {0x3CD, 0x3CE, 1, -0x3F},
    {0x3D9, 0x3EF, 2, -1},      {0x430, 0x44F, 1, -0x20},   {0x450, 0x45F, 1, -0x50}, {0x461, 0x481, 2, -1},
    {0x48B, 0x4BF, 2, -1},      {0x4C2, 0x4CE, 2, -1},      {0x4CF, 0x4CF, 1, -0x0F}, {0x4D1, 0x52F, 2, -1},
    {0x561, 0x586, 1, -0x30},   {0x1E01, 0x1E95, 2, -1},    {0x1EA1, 0x1EFF, 2, -1},  {0x2170, 0x217F, 1, -0x10},
    {0x24D0, 0x24E9, 1, -0x1A}, {0x2C30, 0x2C5E, 1, -0x30}, {0x2C81, 0x2CE3, 2, -1},  {0xA641, 0xA66D, 2, -1},
    {0xFF41, 0xFF5A, 1, -0x20},
}};

std::uint32_t capital(std::uint32_t letter) {
    for (const SmallLetters& row : kSmall) {
        if (letter < row.first || letter > row.last || (letter - row.first) % row.step != 0) continue;
        return static_cast<std::uint32_t>(static_cast<std::int32_t>(letter) + row.distance);
    }
    return letter;
}

std::uint32_t bits(char byte, unsigned mask) { return static_cast<unsigned char>(byte) & mask; }

bool follows(std::string_view text, std::size_t at) { return at < text.size() && bits(text[at], 0xC0) == 0x80; }

/// Bytes of the character of two or three bytes that begins here; 0: another one, or none.
std::size_t lengthAt(std::string_view text, std::size_t at) {
    if (bits(text[at], 0xE0) == 0xC0 && follows(text, at + 1)) return 2;
    if (bits(text[at], 0xF0) == 0xE0 && follows(text, at + 1) && follows(text, at + 2)) return 3;
    return 0;
}

}  // namespace

std::string capitals(std::string_view text) {
    std::string result(text);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = lengthAt(text, at);
        if (length == 0) {
            result[at] = upper(text[at]);
            ++at;
            continue;
        }
        std::uint32_t letter = bits(text[at], length == 2 ? 0x1F : 0x0F);
        for (std::size_t i = 1; i < length; ++i) letter = letter << 6U | bits(text[at + i], 0x3F);
        const std::uint32_t large = capital(letter);  // takes as many bytes
        if (large != letter) {
            result[at + length - 1] = static_cast<char>(0x80U | (large & 0x3FU));
            result[at + length - 2] =
                static_cast<char>(length == 2 ? 0xC0U | large >> 6U : 0x80U | (large >> 6U & 0x3FU));
        }
        at += length;
    }
    return result;
}

std::string onOneLine(std::string name) {
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return name;
}

}  // namespace corvane::text
