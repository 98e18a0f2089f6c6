// SPDX-License-Identifier: GPL-3.0-or-later
#include "drives/graphics_devices.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

namespace corvane {

namespace {

namespace fs = std::filesystem;

void addThose(std::vector<std::string>& found, const std::string& folder, std::string_view start) {
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed)) {
        if (entry->path().filename().string().starts_with(start)) found.push_back(entry->path().string());
    }
}

}  // namespace

std::vector<std::string> graphicsDevices(const std::string& devices) {
    std::vector<std::string> found;
    addThose(found, devices + "/dri", "renderD");
    addThose(found, devices, "nvidia");
    std::sort(found.begin(), found.end());
    return found;
}

}  // namespace corvane
