// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "contract/windows/media_rig.h"
#include "winapi/files/windows_files.h"
#include "winapi/handle.h"

namespace corvane::test {

inline void writeFile(const std::string& path, const std::string& bytes) {
    const Handle file(CreateFileW(systemPath(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    DWORD written = 0;
    ASSERT_NE(WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr), 0) << path;
}

/// A scratch folder that tells its own path.
class TriedFolder : public ScratchFolder {
public:
    std::string path() const {
        std::string own = in("");
        while (own.ends_with('\\')) own.pop_back();
        return own;
    }
};

}  // namespace corvane::test
