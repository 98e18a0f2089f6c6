// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ports.h"

namespace corvane {

/// Files of a Windows system. Files and folders that are marked hidden are found by look-up and left out of lists.
class WindowsFiles : public Files {
public:
    char separator() const override { return '\\'; }
    std::optional<std::string> lookUp(const std::string& path) override;
    std::vector<std::optional<std::string>> lookUpAll(const std::vector<std::string>& paths) override;
    std::vector<std::string> list(const std::string& folder, const std::string& patterns) override;
    std::vector<std::string> folders(const std::string& folder) override;
    bool readable(const std::string& folder) override;
    std::vector<Drive> drives() override;
    std::optional<std::string> read(const std::string& path, std::size_t limit) override;
    bool replace(const std::string& path, std::string_view bytes) override;
};

/// Removes what replacements left beside their files when the program was killed in the middle of one. Call it while no
/// other instance uses the folder.
void removeUnfinishedFiles(const std::string& folder);

/// A path as the system takes it, also beyond its usual 260 characters.
std::wstring systemPath(const std::string& path);

}  // namespace corvane
