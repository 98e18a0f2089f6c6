// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "windows/text.h"
#include "windows/windows_loop.h"

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

/// A folder for a test's own files, gone with it.
class ScratchFolder {
public:
    ScratchFolder()
        : path_(std::filesystem::temp_directory_path() /
                ("corvane-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++made_))) {
        std::filesystem::create_directories(path_);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }

    std::string in(const std::string& name) const { return fromWide((path_ / toWide(name)).wstring()); }
    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream(path_ / toWide(name), std::ios::binary) << bytes;
        return in(name);
    }

private:
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
