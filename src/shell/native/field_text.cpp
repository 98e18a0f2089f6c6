// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/native/field_text.h"

#include <algorithm>
#include <cstddef>

namespace corvane {

namespace {

constexpr char32_t kFirstPair = 0x10000;

std::size_t unitsAt(std::u16string_view text, std::size_t at) {
    const auto lies = [&](std::size_t place, char16_t from) {
        return place < text.size() && text[place] >= from && text[place] < from + 0x400;
    };
    return lies(at, 0xD800) && lies(at + 1, 0xDC00) ? 2 : 1;
}

char32_t characterAt(std::u16string_view text, std::size_t at) {
    if (unitsAt(text, at) == 1) return text[at];
    return kFirstPair + ((text[at] & 0x3FFU) << 10U) + (text[at + 1] & 0x3FFU);
}

void append(std::u16string& text, char32_t character) {
    if (character < kFirstPair) {
        text += static_cast<char16_t>(character);
    } else {
        text += static_cast<char16_t>(0xD800U + ((character - kFirstPair) >> 10U));
        text += static_cast<char16_t>(0xDC00U + ((character - kFirstPair) & 0x3FFU));
    }
}

}  // namespace

int charactersIn(std::u16string_view text, int units) {
    const auto end = std::min(text.size(), static_cast<std::size_t>(std::max(0, units)));
    int count = 0;
    for (std::size_t at = 0; at < end; at += unitsAt(text, at)) ++count;
    return count;
}

int unitsIn(std::u16string_view text, int characters) {
    std::size_t at = 0;
    for (int i = 0; i < characters && at < text.size(); ++i) at += unitsAt(text, at);
    return static_cast<int>(at);
}

FieldText takenByKeys(const FieldText& given, const std::function<int(int)>& keyPress) {
    constexpr int kLastCharacter = 0x10FFFF;
    FieldText taken;
    for (std::size_t at = 0; at < given.text.size(); at += unitsAt(given.text, at)) {
        const int character = keyPress(static_cast<int>(characterAt(given.text, at)));
        if (character > 0 && character <= kLastCharacter) append(taken.text, static_cast<char32_t>(character));
        if (static_cast<int>(at) < given.cursor) taken.cursor = static_cast<int>(taken.text.size());
    }
    return taken;
}

}  // namespace corvane
