// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace corvane {

/// Where the user keeps pictures, by the desktop's own record ("user-dirs.dirs" in XDG_CONFIG_HOME), else "Pictures" in
/// HOME. "" where that is no folder, does not answer, or is the home itself or a folder around it: that is no place in
/// which a program may make what it wants. `variable` gives the value of a variable, "" when it is not set.
std::string picturesFolder(const std::function<std::string(const char* name)>& variable);

/// The folder that such a record names; "" none.
std::string recordedPictures(std::string_view record, const std::string& home);

}  // namespace corvane
