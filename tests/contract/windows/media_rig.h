// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "winapi/program/windows_loop.h"
#include "winapi/text.h"

namespace corvane::test {

/// A file of the source tree by its full path on this system.
inline std::string sourceFile(const std::string& name) {
    const std::wstring path = toWide(std::string(CORVANE_SOURCE_DIR) + "/" + name);
    std::array<wchar_t, MAX_PATH> full{};
    GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    return fromWide(full.data());
}
inline std::string sample(const std::string& name) { return sourceFile("samples/" + name); }

/// Wine stands in for Windows where there is none; it lacks some of it.
inline bool onWine() { return GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr; }

/// A new folder for a test's own files, gone with it, also where paths in it are very long or files read-only.
class ScratchFolder {
public:
    ScratchFolder() {
        // Processes get the numbers of ended ones again: what such a one may have left is another folder.
        do {
            path_ = std::filesystem::temp_directory_path() /
                    ("corvane-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++made_));
        } while (!std::filesystem::create_directory(path_));
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() { removeAll(L"\\\\?\\" + path_.wstring()); }

    std::string in(const std::string& name) const { return fromWide((path_ / toWide(name)).wstring()); }
    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream(path_ / toWide(name), std::ios::binary) << bytes;
        return in(name);
    }

private:
    /// By the system's own calls: those of the standard library know neither long paths nor attributes.
    static void removeAll(const std::wstring& path) {
        WIN32_FIND_DATAW found{};
        const HANDLE search = FindFirstFileW((path + L"\\*").c_str(), &found);
        if (search != INVALID_HANDLE_VALUE) {
            do {
                const std::wstring name = found.cFileName;
                const std::wstring each = path + L'\\' + name;
                if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
                    SetFileAttributesW(each.c_str(), FILE_ATTRIBUTE_NORMAL);
                    DeleteFileW(each.c_str());
                } else if (name != L"." && name != L"..") {
                    removeAll(each);
                }
            } while (FindNextFileW(search, &found) != 0);
            FindClose(search);
        }
        RemoveDirectoryW(path.c_str());
    }

    inline static int made_ = 0;
    std::filesystem::path path_;
};

inline std::string bytesOf(const std::string& path) {
    std::ifstream file(std::filesystem::path(toWide(path)), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Any contract's stage over this desktop's event loop.
template <class S>
class LoopStage : public S {
public:
    EventLoop& loop() override { return loop_; }
    bool waitFor(const std::function<bool()>& condition, int atMostMs) override {
        return loop_.runUntil(condition, atMostMs);
    }

protected:
    WindowsLoop loop_;
};

}  // namespace corvane::test
