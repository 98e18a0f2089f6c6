// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "platform/ports.h"
#include "storage/private_profile.h"

namespace corvane {

/// A longer settings or play-list file is not one of ours: it reads as empty and is never written. The longest list
/// that reads back whole takes 5 MiB.
inline constexpr std::size_t kMostProfileBytes = std::size_t{8} * 1024 * 1024;

/// The file's text; empty when it is missing, too long or cannot be read.
std::string readProfileFile(Files& files, const std::string& path);

/// Sets the keys, once those of `gone` have been taken out, with one replacement of the file, which is made when it is
/// missing. False: nothing was written, because the file exists but cannot be read, because it would become too long to
/// be read, or because the replacement failed.
bool writeProfileFile(Files& files, const std::string& path, std::string_view section,
                      const std::vector<ProfileKey>& keys, const std::vector<std::string>& gone = {});

}  // namespace corvane
