// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <set>

#include "fake/call_log.h"
#include "platform/ports.h"

namespace corvane {

/// A tree of files in memory.
class FakeFiles : public Files {
public:
    explicit FakeFiles(CallLog& log) : log_(log) {}

    char separator() const override { return slash; }
    std::optional<std::string> lookUp(const std::string& path) override;
    std::vector<std::optional<std::string>> lookUpAll(const std::vector<std::string>& paths) override;
    std::vector<std::string> list(const std::string& folder, const std::string& patterns) override;
    std::vector<std::string> folders(const std::string& folder) override;
    bool readable(const std::string& folder) override;
    std::vector<Drive> drives() override { return offeredDrives; }
    std::optional<std::string> read(const std::string& path, std::size_t limit) override;
    bool replace(const std::string& path, std::string_view bytes) override;

    // What a test sets up.
    char slash = '/';
    bool caseSensitive = true;  ///< set before files are added
    bool failReplace = false;   ///< each replacement fails and leaves the old file
    std::vector<Drive> offeredDrives;

    /// Adds a file, and the folders above it.
    void add(const std::string& path, std::string bytes = "");
    void addHidden(const std::string& path, std::string bytes = "");
    void addFolder(const std::string& path);
    void lockFolder(const std::string& path);  ///< it stands there but cannot be read or written
    void remove(const std::string& path);
    bool has(const std::string& path) const;
    std::string bytes(const std::string& path) const;  ///< throws when there is no such file

private:
    struct File {
        std::string path;
        std::string bytes;
        bool hidden = false;
    };
    std::string key(std::string path) const;
    std::string parent(const std::string& path) const;
    std::string name(const std::string& path) const;
    std::vector<std::string> sorted(std::vector<std::string> names) const;

    CallLog& log_;
    std::map<std::string, File> files_;           ///< by key
    std::map<std::string, std::string> folders_;  ///< by key: the path as it was added
    std::set<std::string> locked_;
};

/// One of the patterns ("*.bmp;*.jpg") fits the name; letters without case.
bool matchesPatterns(std::string_view name, std::string_view patterns);

}  // namespace corvane
