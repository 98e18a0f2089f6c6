// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace corvane::text {

/// The character that two bytes stand for in Shift-JIS, with the characters that Windows added; 0: none.
char32_t shiftJis(unsigned first, unsigned second);

}  // namespace corvane::text
