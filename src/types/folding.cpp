// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/folding.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "types/text.h"

namespace corvane::text {

namespace {

using Letter = std::uint32_t;

/// The letter beneath the accents of each capital; ".": it has none, or is no letter of Latin.
constexpr Letter kLatinFirst = 0xC0, kVietnameseFirst = 0x1E00;
constexpr std::string_view kLatin =
    "AAAAAAACEEEEIIIIDNOOOOO.OUUUUY.SAAAAAA.CEEEEIIII.NOOOOO..UUUUY.YAAAAAACCCCCCCCDD"
    "D.EEEEEEEEEEGGGGGGGGHHH.IIIIIIIIIIIIJJKK.LLLLLLLLL.NNNNNN.N.OOOOOOO.RRRRRRSSSSSS"
    "SSTTTTT.UUUUUUUUUUUUWWYYYZZZZZZS................................OO.............U"
    "U...................DDDLLLNNNAAIIOOUUUUUUUUUU.AAAA....GGKKOOOO..JDDDGG..NNAA...."
    "AAAAEEEEIIIIOOOORRRRUUUUSSTT..HH......AAEEOOOOOOOOYY............................";
constexpr std::string_view kVietnamese =
    "AABBBBBBCCDDDDDDDDDDEEEEEEEEEEFFGGHHHHHHHHHHIIIIKKKKKKLLLLLLLLMMMMMMNNNNNNNNOOOO"
    "OOOOPPPPRRRRRRRRSSSSSSSSSSTTTTTTTTUUUUUUUUUUVVVVWWWWWWWWWWXXXXYYZZZZZZHTWYAS...."
    "AAAAAAAAAAAAAAAAAAAAAAAAEEEEEEEEEEEEEEEEIIIIOOOOOOOOOOOOOOOOOOOOOOOOUUUUUUUUUUUU"
    "UUYYYYYYYY......";

/// The kana that narrow ones stand for.
constexpr Letter kNarrowFirst = 0xFF66;
constexpr std::array<std::uint16_t, 56> kNarrow = {{
    0x3092, 0x3041, 0x3043, 0x3045, 0x3047, 0x3049, 0x3083, 0x3085, 0x3087, 0x3063, 0x30FC, 0x3042, 0x3044, 0x3046,
    0x3048, 0x304A, 0x304B, 0x304D, 0x304F, 0x3051, 0x3053, 0x3055, 0x3057, 0x3059, 0x305B, 0x305D, 0x305F, 0x3061,
    0x3064, 0x3066, 0x3068, 0x306A, 0x306B, 0x306C, 0x306D, 0x306E, 0x306F, 0x3072, 0x3075, 0x3078, 0x307B, 0x307E,
    0x307F, 0x3080, 0x3081, 0x3082, 0x3084, 0x3086, 0x3088, 0x3089, 0x308A, 0x308B, 0x308C, 0x308D, 0x308F, 0x3093,
}};

constexpr Letter kNothing = 0;

struct Letters {
    Letter first, last, plain;
};
/// Capitals with accents (and small ones whose capital is not one letter), points and marks that stand at a letter,
/// forms of a letter. In order.
constexpr std::array kPlain = std::to_array<Letters>({
    {0xAD, 0xAD, kNothing},
    {0x300, 0x36F, kNothing},
    {0x386, 0x386, 0x391},
    {0x388, 0x388, 0x395},
    {0x389, 0x389, 0x397},
    {0x38A, 0x38A, 0x399},
    {0x38C, 0x38C, 0x39F},
    {0x38E, 0x38E, 0x3A5},
    {0x38F, 0x38F, 0x3A9},
    {0x390, 0x390, 0x399},
    {0x3AA, 0x3AA, 0x399},
    {0x3AB, 0x3AB, 0x3A5},
    {0x3B0, 0x3B0, 0x3A5},
    {0x400, 0x401, 0x415},
    {0x403, 0x403, 0x413},
    {0x407, 0x407, 0x406},
    {0x40C, 0x40C, 0x41A},
    {0x40D, 0x40D, 0x418},
    {0x40E, 0x40E, 0x423},
    {0x419, 0x419, 0x418},
    {0x483, 0x487, kNothing},
    // Hebrew points; Arabic vowels and the stroke that only widens.
    {0x591, 0x5BD, kNothing},
    {0x5BF, 0x5BF, kNothing},
    {0x5C1, 0x5C2, kNothing},
    {0x5C4, 0x5C5, kNothing},
    {0x5C7, 0x5C7, kNothing},
    {0x610, 0x61A, kNothing},
    {0x622, 0x623, 0x627},
    {0x624, 0x624, 0x648},
    {0x625, 0x625, 0x627},
    {0x626, 0x626, 0x64A},
    {0x629, 0x629, 0x647},
    {0x640, 0x640, kNothing},
    {0x649, 0x649, 0x64A},
    {0x64B, 0x65F, kNothing},
    {0x670, 0x670, kNothing},
    {0x671, 0x671, 0x627},
    {0x6A9, 0x6A9, 0x643},
    {0x6C0, 0x6C0, 0x6D5},
    {0x6C2, 0x6C2, 0x6C1},
    {0x6CC, 0x6CC, 0x64A},
    {0x6D3, 0x6D3, 0x6D2},
    {0x6D6, 0x6DC, kNothing},
    {0x6DF, 0x6E4, kNothing},
    {0x6E7, 0x6E8, kNothing},
    {0x6EA, 0x6ED, kNothing},
    {0x8D3, 0x8E1, kNothing},
    {0x8E3, 0x8FF, kNothing},
    {0x1AB0, 0x1AFF, kNothing},
    {0x1DC0, 0x1DFF, kNothing},
    {0x1F00, 0x1F0F, 0x391},
    {0x1F10, 0x1F1F, 0x395},
    {0x1F20, 0x1F2F, 0x397},
    {0x1F30, 0x1F3F, 0x399},
    {0x1F40, 0x1F4F, 0x39F},
    {0x1F50, 0x1F5F, 0x3A5},
    {0x1F60, 0x1F6F, 0x3A9},
    {0x1F70, 0x1F71, 0x391},
    {0x1F72, 0x1F73, 0x395},
    {0x1F74, 0x1F75, 0x397},
    {0x1F76, 0x1F77, 0x399},
    {0x1F78, 0x1F79, 0x39F},
    {0x1F7A, 0x1F7B, 0x3A5},
    {0x1F7C, 0x1F7D, 0x3A9},
    {0x1F80, 0x1F8F, 0x391},
    {0x1F90, 0x1F9F, 0x397},
    {0x1FA0, 0x1FAF, 0x3A9},
    {0x1FB0, 0x1FBC, 0x391},
    {0x1FC2, 0x1FCC, 0x397},
    {0x1FD0, 0x1FDB, 0x399},
    {0x1FE0, 0x1FE3, 0x3A5},
    {0x1FE4, 0x1FE5, 0x3A1},
    {0x1FE6, 0x1FEB, 0x3A5},
    {0x1FEC, 0x1FEC, 0x3A1},
    {0x1FF2, 0x1FFC, 0x3A9},
    {0x200B, 0x200F, kNothing},
    {0x20D0, 0x20FF, kNothing},
    {0x3000, 0x3000, ' '},
    {0x3099, 0x309A, kNothing},
    {0xFB1D, 0xFB1D, 0x5D9},
    {0xFB1E, 0xFB1E, kNothing},
    {0xFB1F, 0xFB1F, 0x5F2},
    {0xFB20, 0xFB20, 0x5E2},
    {0xFB2A, 0xFB2D, 0x5E9},
    {0xFB2E, 0xFB2F, 0x5D0},
    {0xFB4B, 0xFB4B, 0x5D5},
    {0xFB4C, 0xFB4C, 0x5D1},
    {0xFB4D, 0xFB4D, 0x5DB},
    {0xFB4E, 0xFB4E, 0x5E4},
    {0xFE20, 0xFE2F, kNothing},
    {0xFF9E, 0xFF9F, kNothing},
});
static_assert(std::is_sorted(kPlain.begin(), kPlain.end(),
                             [](const Letters& a, const Letters& b) { return a.last < b.first; }));
/// Hebrew letters with a point inside, one after the other as the plain ones are.
constexpr Letter kPointedFirst = 0xFB30, kPointedLast = 0xFB4A, kHebrewFirst = 0x5D0;

/// Letters that are written as one; each is as long in bytes, or shorter.
struct Joined {
    Letter first, last;
    std::string_view letters;
};
constexpr std::array kJoined = std::to_array<Joined>({
    {0xC6, 0xC6, "AE"},
    {0xDF, 0xDF, "SS"},
    {0x132, 0x133, "IJ"},
    {0x152, 0x153, "OE"},
    {0x1C4, 0x1C6, "DZ"},
    {0x1C7, 0x1C9, "LJ"},
    {0x1CA, 0x1CC, "NJ"},
    {0x1E2, 0x1E3, "AE"},
    {0x1F1, 0x1F3, "DZ"},
    {0x1FC, 0x1FD, "AE"},
    {0x1E9E, 0x1E9E, "SS"},
    {0xFB00, 0xFB00, "FF"},
    {0xFB01, 0xFB01, "FI"},
    {0xFB02, 0xFB02, "FL"},
    {0xFB03, 0xFB03, "FFI"},
    {0xFB04, 0xFB04, "FFL"},
    {0xFB05, 0xFB06, "ST"},
});

/// Hiragana without its voicing mark: the letters of one sound stand beside each other.
Letter voiceless(Letter letter) {
    if (letter == 0x3094) return 0x3046;
    if (letter >= 0x304B && letter <= 0x3062 && letter % 2 == 0) return letter - 1;
    if (letter >= 0x3064 && letter <= 0x3069 && letter % 2 == 1) return letter - 1;
    if (letter >= 0x306F && letter <= 0x307D) return letter - (letter - 0x306F) % 3;
    return letter;
}

/// Of a capital.
Letter plainLetter(Letter letter) {
    if (letter >= 0xFF01 && letter <= 0xFF5E) return letter - 0xFEE0;
    if (letter == 0xA0) return ' ';
    if (letter >= kPointedFirst && letter <= kPointedLast) return letter - kPointedFirst + kHebrewFirst;
    if (letter >= kNarrowFirst && letter < kNarrowFirst + kNarrow.size())
        return voiceless(kNarrow[letter - kNarrowFirst]);
    if (letter >= 0x30A1 && letter <= 0x30F6) return voiceless(letter - 0x60);
    if (letter >= 0x3041 && letter <= 0x3096) return voiceless(letter);
    for (const auto& [first, letters] : {std::pair(kLatinFirst, kLatin), std::pair(kVietnameseFirst, kVietnamese)}) {
        if (letter < first || letter >= first + letters.size()) continue;
        const char plain = letters[letter - first];
        return plain != '.' ? static_cast<Letter>(plain) : letter;
    }
    const auto* const row = std::lower_bound(kPlain.begin(), kPlain.end(), letter,
                                             [](const Letters& each, Letter wanted) { return each.last < wanted; });
    return row != kPlain.end() && row->first <= letter ? row->plain : letter;
}

/// The letters that are written as one; empty: it is one.
std::string_view joinedLetters(Letter letter) {
    const auto* const row = std::find_if(kJoined.begin(), kJoined.end(), [letter](const Joined& each) {
        return letter >= each.first && letter <= each.last;
    });
    return row != kJoined.end() ? row->letters : std::string_view();
}

Letter bits(char byte, unsigned mask) { return static_cast<unsigned char>(byte) & mask; }

/// Takes the next character of two or three bytes off the text; empty bytes: it is another one, which stays.
struct Taken {
    Letter letter = 0;
    std::size_t bytes = 0;
};
Taken takeLetter(std::string_view text) {
    const auto follows = [&](std::size_t at) { return at < text.size() && bits(text[at], 0xC0) == 0x80; };
    if (bits(text[0], 0xE0) == 0xC0 && follows(1)) return {bits(text[0], 0x1F) << 6U | bits(text[1], 0x3F), 2};
    if (bits(text[0], 0xF0) == 0xE0 && follows(1) && follows(2)) {
        return {bits(text[0], 0x0F) << 12U | bits(text[1], 0x3F) << 6U | bits(text[2], 0x3F), 3};
    }
    return {};
}

/// The Korean syllable that begins with a letter which was taken: its parts follow each other, or it is whole already.
Taken takeSyllable(Taken taken, std::string_view text) {
    constexpr Letter kFirst = 0xAC00, kLast = 0xD7A3, kLeads = 0x1100, kVowels = 0x1161, kTails = 0x11A7;
    constexpr Letter kLeadCount = 19, kVowelCount = 21, kTailCount = 28;
    const auto next = [&]() { return taken.bytes < text.size() ? takeLetter(text.substr(taken.bytes)) : Taken{}; };
    if (taken.letter >= kLeads && taken.letter < kLeads + kLeadCount) {
        const Taken vowel = next();
        if (vowel.letter < kVowels || vowel.letter >= kVowels + kVowelCount) return taken;
        taken.letter = kFirst + ((taken.letter - kLeads) * kVowelCount + vowel.letter - kVowels) * kTailCount;
        taken.bytes += vowel.bytes;
    }
    if (taken.letter < kFirst || taken.letter > kLast || (taken.letter - kFirst) % kTailCount != 0) return taken;
    const Taken tail = next();
    if (tail.letter <= kTails || tail.letter >= kTails + kTailCount) return taken;
    return {taken.letter + tail.letter - kTails, taken.bytes + tail.bytes};
}

void append(std::string& text, Letter letter) {
    const auto tail = [letter](unsigned shift) { return static_cast<char>(0x80U | (letter >> shift & 0x3FU)); };
    if (letter < 0x80) {
        text += static_cast<char>(letter);
    } else if (letter < 0x800) {
        text += {static_cast<char>(0xC0U | letter >> 6U), tail(0)};
    } else {
        text += {static_cast<char>(0xE0U | letter >> 12U), tail(6), tail(0)};
    }
}

}  // namespace

std::string folded(std::string_view text) {
    const std::string large = capitals(text);
    std::string result;
    result.reserve(large.size());
    for (std::string_view rest = large; !rest.empty();) {
        const Taken taken = takeLetter(rest);
        if (taken.bytes == 0) {
            result += rest.front();
            rest.remove_prefix(1);
            continue;
        }
        if (const Taken syllable = takeSyllable(taken, rest); syllable.bytes > taken.bytes) {
            append(result, syllable.letter);
            rest.remove_prefix(syllable.bytes);
            continue;
        }
        const Letter plain = plainLetter(taken.letter);
        if (const std::string_view letters = joinedLetters(taken.letter); !letters.empty()) {
            result += letters;
        } else if (plain == taken.letter) {
            result.append(rest.substr(0, taken.bytes));
        } else if (plain != kNothing) {
            append(result, plain);
        }
        rest.remove_prefix(taken.bytes);
    }
    return result;
}

std::vector<std::string> wordsToFind(std::string_view wanted) {
    const std::string plain = folded(wanted);
    std::vector<std::string> words;
    for (std::string_view rest = plain; !rest.empty();) {
        const auto end = static_cast<std::size_t>(std::find_if(rest.begin(), rest.end(), isBlank) - rest.begin());
        if (end > 0) words.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return words;
}

bool holdsAll(std::string_view foldedText, const std::vector<std::string>& words) {
    return std::all_of(words.begin(), words.end(), [foldedText](const std::string& word) {
        return foldedText.find(word) != std::string_view::npos;
    });
}

}  // namespace corvane::text
