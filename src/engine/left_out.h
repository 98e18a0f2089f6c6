// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/ports.h"

namespace corvane {

/// Why a play list takes a file that was named at the start no further, "NAME: left out, because …", for who started
/// the program; empty: it takes it, or nothing was named.
std::string whyLeftOut(Files& files, const std::string& name);

}  // namespace corvane
