// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "types/text.h"

namespace corvane {

namespace {

using text::upper;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// "H1F" or "O17" behind the "&", with the type mark "&" allowed at the end. 32 bits are a bit pattern.
std::optional<std::int32_t> parseBits(std::string_view text) {
    if (text.size() < 2) return std::nullopt;
    const char letter = upper(text[0]);
    if (letter != 'H' && letter != 'O') return std::nullopt;
    text.remove_prefix(1);
    if (text.back() == '&') text.remove_suffix(1);
    std::uint64_t bits = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), bits, letter == 'H' ? 16 : 8);
    if (end != text.data() + text.size() || text.empty() || error == std::errc::invalid_argument) return std::nullopt;
    if (error != std::errc{} || bits > std::numeric_limits<std::uint32_t>::max()) {
        return std::numeric_limits<std::int32_t>::max();
    }
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(bits));
}

/// The parts of a decimal number, checked character by character.
struct Decimal {
    std::string digits;   ///< without the point
    long long point = 0;  ///< place of the point in the digits, the exponent counted in
    bool negative = false;
};

std::optional<Decimal> splitDecimal(std::string_view text) {
    Decimal number;
    std::size_t at = 0;
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) number.negative = text[at++] == '-';
    for (; at < text.size() && isDigit(text[at]); ++at) number.digits += text[at];
    number.point = static_cast<long long>(number.digits.size());
    if (at < text.size() && text[at] == '.') {
        for (++at; at < text.size() && isDigit(text[at]); ++at) number.digits += text[at];
    }
    if (number.digits.empty()) return std::nullopt;
    if (at == text.size()) return number;

    const char mark = upper(text[at]);
    if (mark != 'E' && mark != 'D') return std::nullopt;
    ++at;
    bool negative = false;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) negative = text[at++] == '-';
    if (at == text.size()) return std::nullopt;
    long long exponent = 0;
    for (; at < text.size(); ++at) {
        if (!isDigit(text[at])) return std::nullopt;
        exponent = std::min(exponent * 10 + (text[at] - '0'), 1'000'000'000'000LL);
    }
    number.point += negative ? -exponent : exponent;
    return number;
}

}  // namespace

std::string zeroPadded(long long number, int digits) {
    std::string text = std::to_string(number);
    const std::size_t sign = number < 0 ? 1 : 0;
    const std::size_t wanted = static_cast<std::size_t>(std::max(digits, 0)) + sign;
    if (text.size() < wanted) text.insert(sign, wanted - text.size(), '0');
    return text;
}

std::optional<std::int32_t> parseNumber(std::string_view text) {
    text = text::trimmed(text);
    if (text.empty()) return std::nullopt;
    if (text[0] == '&') return parseBits(text.substr(1));
    std::optional<Decimal> number = splitDecimal(text);
    if (!number) return std::nullopt;

    const std::size_t zeros = std::min(number->digits.find_first_not_of('0'), number->digits.size());
    const long long whole = number->point - static_cast<long long>(zeros);  // digits in front of the point
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    if (zeros == number->digits.size() || whole < 0) return 0;
    if (whole > 10) return number->negative ? kLeast : kMost;

    std::string digits = number->digits.substr(zeros);
    digits.resize(std::max(digits.size(), static_cast<std::size_t>(whole)), '0');
    digits.insert(static_cast<std::size_t>(whole), ".");
    digits.insert(0, "0");
    double value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    double rounded = std::floor(value);
    const double rest = value - rounded;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(rounded, 2.0) != 0.0)) rounded += 1.0;
    if (number->negative) rounded = -rounded;
    return static_cast<std::int32_t>(std::clamp(rounded, static_cast<double>(kLeast), static_cast<double>(kMost)));
}

std::string numberText(double number) {
    std::array<char, 40> text{};
    constexpr int kDigits = 15;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::general, kDigits);
    std::string result(text.data(), end.ptr);
    for (char& c : result) {
        if (c == 'e') c = 'E';
    }
    return result;
}

}  // namespace corvane
