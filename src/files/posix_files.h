// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "drives/drive_calls.h"
#include "platform/ports.h"

namespace corvane {

/// Files of a POSIX system. Files whose name begins with "." are hidden: found by look-up, left out of lists. What lies
/// on a drive that does not answer counts as not being there, and cannot be read or written.
class PosixFiles : public Files {
public:
    PosixFiles();
    /// `isFile` looks a path up; it is called on threads of its own.
    explicit PosixFiles(std::function<bool(const std::string& path)> isFile) : isFile_(std::move(isFile)) {}

    char separator() const override { return '/'; }
    std::optional<std::string> lookUp(const std::string& path) override;
    std::vector<std::optional<std::string>> lookUpAll(const std::vector<std::string>& paths) override;
    std::vector<std::string> list(const std::string& folder, const std::string& patterns) override;
    std::vector<std::string> folders(const std::string& folder) override;
    bool readable(const std::string& folder) override;
    std::vector<Drive> drives() override;
    std::optional<std::string> read(const std::string& path, std::size_t limit) override;
    bool replace(const std::string& path, std::string_view bytes) override;

private:
    std::function<bool(const std::string& path)> isFile_;
};

/// Removes what replacements left beside their files when the program was killed in the middle of one. Call it while no
/// other instance uses the folder.
void removeUnfinishedFiles(const std::string& folder);

}  // namespace corvane
