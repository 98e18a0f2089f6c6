// SPDX-License-Identifier: GPL-3.0-or-later
#include "drives/pictures_folder.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "drives/drive_calls.h"
#include "drives/drive_file.h"

namespace corvane {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostRecord = std::size_t{64} << 10U;  // bytes
constexpr std::string_view kName = "XDG_PICTURES_DIR=\"";
constexpr std::string_view kHome = "$HOME";

/// What stands between the quotation marks; a character behind a backslash is meant as it is.
std::string unquoted(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size() && value[i] != '"'; ++i) {
        if (value[i] == '\\' && i + 1 < value.size()) ++i;
        text += value[i];
    }
    return text;
}

/// The folder as the system knows it, where it is one and holds the home neither itself nor in it.
std::string usable(const std::string& folder, const std::string& home) {
    std::error_code failed;
    const fs::path whole = fs::canonical(folder, failed);
    if (failed || !fs::is_directory(whole, failed)) return {};
    const fs::path own = fs::weakly_canonical(home, failed);
    for (fs::path around = own;; around = around.parent_path()) {
        if (around == whole) return {};
        if (around == around.parent_path()) break;
    }
    return whole.string();
}

}  // namespace

std::string recordedPictures(std::string_view record, const std::string& home) {
    std::string folder;
    while (!record.empty()) {
        std::string_view line = record.substr(0, record.find('\n'));
        record.remove_prefix(std::min(record.size(), line.size() + 1));
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        if (!line.starts_with(kName)) continue;
        line.remove_prefix(kName.size());
        const bool inHome = line.starts_with(kHome);
        if (inHome) line.remove_prefix(kHome.size());
        const std::string rest = unquoted(line);
        if (inHome ? rest.empty() || rest.front() == '/' : rest.starts_with('/')) folder = (inHome ? home : "") + rest;
    }
    return folder;
}

std::string picturesFolder(const std::function<std::string(const char* name)>& variable) {
    const std::string home = variable("HOME");
    if (!home.starts_with('/')) return {};
    std::string settings = variable("XDG_CONFIG_HOME");
    if (!settings.starts_with('/')) settings = home + "/.config";
    const auto record = DriveFile::readAll(settings + "/user-dirs.dirs", DriveCalls::kPatience, kMostRecord);
    std::string folder = record ? recordedPictures(*record, home) : "";
    if (folder.empty()) folder = home + "/Pictures";
    const auto answer = DriveCalls::all().ask<std::string>(folder, DriveCalls::kPatience,
                                                           [folder, home] { return usable(folder, home); });
    return answer.value_or("");
}

}  // namespace corvane
