// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/media_file.h"

#include <array>
#include <optional>

#include "controls/sound_header.h"
#include "winapi/files/plain_file.h"

namespace corvane {

namespace {

constexpr std::size_t kStart = 1024;       ///< bytes that tell what a file is
constexpr std::size_t kLongestName = 127;  ///< what MCI takes

/// Fewer bytes where the file ends; empty: it cannot be read.
std::optional<std::string> readAt(const Handle& file, std::uint64_t place, std::size_t count) {
    LARGE_INTEGER from{};
    from.QuadPart = static_cast<LONGLONG>(place);
    std::string bytes(count, '\0');
    DWORD got = 0;
    if (SetFilePointerEx(file.get(), from, nullptr, FILE_BEGIN) == 0 ||
        ReadFile(file.get(), bytes.data(), static_cast<DWORD>(count), &got, nullptr) == 0) {
        return std::nullopt;
    }
    bytes.resize(got);
    return bytes;
}

}  // namespace

std::string startOfFile(const std::wstring& path) {
    const Handle file = openPlainFile(path);
    return file ? readAt(file, 0, kStart).value_or("") : std::string();
}

MediaContent contentOfFile(const std::wstring& path) {
    const Handle file = openPlainFile(path);
    if (!file) return MediaContent::Missing;
    const auto start = readAt(file, 0, kStart);
    return start ? contentOf(*start) : MediaContent::Missing;
}

std::string refusalOfFile(const std::wstring& path) {
    std::string refusal = refusalOf(contentOfFile(path));
    if (!refusal.empty()) return refusal;
    const Handle file = openPlainFile(path);
    return refusalOfSamples(
        [&file](std::uint64_t place, std::size_t count) { return readAt(file, place, count).value_or(""); });
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
