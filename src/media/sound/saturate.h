// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace corvane {

/// Sums of what a file says of its times, held inside 64 bits.
inline std::int64_t saturatedSum(std::int64_t a, std::int64_t b) {
    std::int64_t sum = 0;
    return __builtin_add_overflow(a, b, &sum) ? (b < 0 ? INT64_MIN : INT64_MAX) : sum;
}
inline std::int64_t saturatedDifference(std::int64_t a, std::int64_t b) {
    std::int64_t difference = 0;
    return __builtin_sub_overflow(a, b, &difference) ? (b < 0 ? INT64_MAX : INT64_MIN) : difference;
}

}  // namespace corvane
