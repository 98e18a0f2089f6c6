// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace corvane {

inline constexpr int kProgramIcon = 1;  ///< as src/main/corvane.rc numbers it

}  // namespace corvane
