// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace corvane {

inline constexpr int kHoldMs = 750;     ///< a shorter press is a click
inline constexpr int kFastStepMs = 50;  ///< shortest step of a hold; each step is a second of the medium

// A volume button that is held turns on.
inline constexpr int kVolumeHoldMs = 400;
inline constexpr int kVolumeRepeatMs = 120;

}  // namespace corvane
