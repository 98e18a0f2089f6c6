// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <set>
#include <string>

#include "fake/fake_files.h"
#include "program/program_folder.h"

namespace corvane {

/// The folders of the files in memory.
class FakeFolders : public Folders {
public:
    explicit FakeFolders(FakeFiles& files) : files_(files) {}

    bool isFolder(const std::string& path) override { return files_.readable(path); }
    bool isFile(const std::string& path) override { return files_.has(path); }
    bool canBeWritten(const std::string& folder) override { return !readOnly.contains(folder); }
    void make(const std::string& folder) override {
        if (!noneCanBeMade) files_.addFolder(folder);
    }
    std::string whole(const std::string& path) override {
        const std::string full = path.front() == files_.separator() ? path : here + files_.separator() + path;
        const std::size_t last = full.find_last_not_of(files_.separator());
        return last == std::string::npos ? full.substr(0, 1) : full.substr(0, last + 1);
    }

    std::set<std::string> readOnly;
    bool noneCanBeMade = false;
    std::string here = "/here";  ///< what paths that are not whole are relative to

private:
    FakeFiles& files_;
};

}  // namespace corvane
