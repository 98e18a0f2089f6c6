// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/media/media_file.h"

#include <array>

#include "windows/files/plain_file.h"

namespace corvane {

namespace {

constexpr DWORD kStart = 1024;             ///< bytes that tell what a file is
constexpr std::size_t kLongestName = 127;  ///< what MCI takes

}  // namespace

MediaContent contentOfFile(const std::wstring& path) {
    const Handle file = openPlainFile(path);
    if (!file) return MediaContent::Missing;
    std::array<char, kStart> bytes{};
    DWORD count = 0;
    const bool read = ReadFile(file.get(), bytes.data(), kStart, &count, nullptr) != 0;
    return read ? contentOf({bytes.data(), count}) : MediaContent::Missing;
}

std::wstring pathForMci(const std::wstring& path) {
    if (path.size() <= kLongestName) return path;
    std::array<wchar_t, MAX_PATH> brief{};
    const DWORD length = GetShortPathNameW(path.c_str(), brief.data(), static_cast<DWORD>(brief.size()));
    return length > 0 && length < brief.size() ? std::wstring(brief.data(), length) : path;
}

std::wstring discDriveOf(const std::wstring& path) {
    const auto isDisc = [](const std::wstring& drive) { return GetDriveTypeW((drive + L"\\").c_str()) == DRIVE_CDROM; };
    if (path.size() >= 2 && path[1] == L':' && isDisc(path.substr(0, 2))) return path.substr(0, 2);
    const DWORD drives = GetLogicalDrives();
    for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) {
        const std::wstring drive{letter, L':'};
        if ((drives >> (letter - L'A') & 1U) != 0 && isDisc(drive)) return drive;
    }
    return {};
}

}  // namespace corvane
