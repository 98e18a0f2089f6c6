// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/shown_text.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

constexpr std::size_t kMostInLine = 300;
constexpr std::size_t kMostInTip = 600;
constexpr std::size_t kMostInRow = 800;
constexpr std::size_t kMostPicturesInRow = 100;  ///< signs of two units: most are as wide as high, and costly to draw
constexpr int kMostLines = 12;
constexpr char16_t kEllipsis = 0x2026;
constexpr char16_t kReplacement = 0xFFFD;

bool isBreak(char16_t c) { return (c >= u'\t' && c <= u'\r') || c == 0x85 || c == 0x2028 || c == 0x2029; }

bool isControl(char16_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }

/// Embeddings, overrides and isolates: what follows them would be drawn in another order.
bool turnsAround(char16_t c) { return (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069); }

bool isHighSurrogate(char16_t c) { return c >= 0xD800 && c < 0xDC00; }
bool isLowSurrogate(char16_t c) { return c >= 0xDC00 && c < 0xE000; }

using Fits = std::function<bool(const std::u16string& word)>;

/// As much of both ends of a word as fits.
std::u16string fittingWord(const std::u16string& word, const Fits& fits) {
    if (fits(word)) return word;
    std::size_t least = 1;
    std::size_t most = word.size();
    while (least < most) {
        const std::size_t half = (least + most + 1) / 2;
        if (fits(cutInMiddle(word, half))) {
            least = half;
        } else {
            most = half - 1;
        }
    }
    return cutInMiddle(word, least);
}

std::u16string fittingWords(const std::u16string& line, const Fits& fits) {
    std::u16string shown;
    for (std::size_t begin = 0; begin <= line.size();) {
        const std::size_t end = std::min(line.find(u' ', begin), line.size());
        if (begin > 0) shown += u' ';
        shown += fittingWord(line.substr(begin, end - begin), fits);
        begin = end + 1;
    }
    return shown;
}

}  // namespace

std::u16string shownLine(std::u16string text) {
    for (char16_t& c : text) {
        if (isBreak(c)) {
            c = u' ';
        } else if (isControl(c) || turnsAround(c)) {
            c = kReplacement;
        }
    }
    return text;
}

std::u16string cutInMiddle(const std::u16string& text, std::size_t most) {
    if (text.size() <= most || most == 0) return text;
    std::size_t head = (most - 1) / 2;
    std::size_t tail = most - 1 - head;
    if (head > 0 && isHighSurrogate(text[head - 1])) --head;
    if (tail > 0 && isLowSurrogate(text[text.size() - tail])) --tail;
    return text.substr(0, head) + kEllipsis + text.substr(text.size() - tail);
}

std::u16string shownLines(std::u16string_view text, const Fits& fits) {
    std::u16string shown;
    for (int lines = 0;; ++lines) {
        const std::size_t end = text.find(u'\n');
        std::u16string_view line = text.substr(0, end);
        if (end != std::u16string_view::npos && line.ends_with(u'\r')) line.remove_suffix(1);
        if (lines == kMostLines) return shown + kEllipsis;
        shown += fittingWords(cutInMiddle(shownLine(std::u16string(line)), kMostInLine), fits);
        if (end == std::u16string_view::npos) return shown;
        shown += u'\n';
        text.remove_prefix(end + 1);
    }
}

std::u16string shownRow(std::u16string text) {
    text = cutInMiddle(shownLine(std::move(text)), kMostInRow);
    const auto pictures = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isHighSurrogate));
    return pictures <= kMostPicturesInRow ? text : cutInMiddle(text, text.size() * kMostPicturesInRow / pictures);
}

std::u16string shownTip(std::u16string text) { return cutInMiddle(shownLine(std::move(text)), kMostInTip); }

}  // namespace corvane
