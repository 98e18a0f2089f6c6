// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "unit/linux/offscreen.h"

namespace corvane::test {

inline std::string soundSample(const std::string& name) { return std::string(CORVANE_SOURCE_DIR) + "/samples/" + name; }
inline std::string soundData(const std::string& name) {
    return std::string(CORVANE_SOURCE_DIR) + "/tests/data/sound/" + name;
}

}  // namespace corvane::test
