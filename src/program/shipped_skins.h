// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/ports.h"

namespace corvane {

/// Gives a user's folder of skins, which exists, those shipped files that it was never given: what the user deletes
/// stays deleted. A skin of which the user has changed a file gets none: its files belong together. Each file is
/// replaced whole, so that an interrupted start leaves no half of one; what could not be given is tried again the next
/// time.
void giveSkins(Files& files, const std::string& shipped, const std::string& own);

}  // namespace corvane
