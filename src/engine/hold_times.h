// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace corvane {

inline constexpr int kHoldMs = 750;     ///< a shorter press is a click
inline constexpr int kFastStepMs = 50;  ///< shortest step of a hold; each step is a second of the medium

}  // namespace corvane
