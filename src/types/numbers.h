// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// Format "000" or "00": at least that many digits, the sign kept in front.
std::string zeroPadded(long long number, int digits);

/// A whole text that is a number (blanks around it aside), rounded to the nearest whole number, halves to even; empty
/// otherwise. Decimal with sign, fraction and exponent, or hexadecimal or octal behind "&H" or "&O". Held inside the
/// 32-bit range.
std::optional<std::int32_t> parseNumber(std::string_view text);

/// A floating-point number as the platform's number-to-text conversion gives it (15 significant digits, no padding).
std::string numberText(double number);

}  // namespace corvane
