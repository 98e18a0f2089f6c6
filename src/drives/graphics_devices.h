// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace corvane {

/// The devices of graphics cards that draw, by their paths; empty without a card. A driver opens them for writing.
std::vector<std::string> graphicsDevices(const std::string& devices = "/dev");

}  // namespace corvane
