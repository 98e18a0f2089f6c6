// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/files/plain_file.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "winapi/files/links.h"
// After windows.h:
#include <shlobj.h>

namespace corvane {

namespace {

constexpr DWORD kLongestPath = 32768;
constexpr std::wstring_view kLongForm = L"\\\\?\\";
constexpr std::wstring_view kLongShare = L"\\\\?\\UNC\\";

bool isLetter(wchar_t each) { return (each >= L'A' && each <= L'Z') || (each >= L'a' && each <= L'z'); }

/// Where a folder lies, or leads to by a link.
std::wstring shareBehind(const std::wstring& folder) {
    std::wstring share = shareOf(folder);
    return share.empty() ? shareOf(nameOnDisk(folder)) : share;
}

/// The shares of the program, of the folder it was told to keep its files in, and of the user's data.
const std::array<std::wstring, 3>& ownShares() {
    static const std::array<std::wstring, 3> shares = [] {
        std::wstring program(kLongestPath, L'\0');
        program.resize(GetModuleFileNameW(nullptr, program.data(), kLongestPath));
        std::wstring folder(kLongestPath, L'\0');
        folder.resize(GetEnvironmentVariableW(L"CORVANE_FOLDER", folder.data(), kLongestPath));
        PWSTR data = nullptr;
        SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &data);
        const std::wstring local = data != nullptr ? data : L"";
        CoTaskMemFree(data);
        return std::array{shareBehind(program), shareBehind(folder), shareBehind(local)};
    }();
    return shares;
}

bool isOwnShare(const std::wstring& name) {
    const std::wstring share = shareOf(name);
    return !share.empty() && std::find(ownShares().begin(), ownShares().end(), share) != ownShares().end();
}

/// The system takes such a name for a device in every folder, whatever follows a dot, a colon or blanks.
bool isDeviceName(std::wstring_view name) {
    name = name.substr(0, name.find_first_of(L".:"));
    while (!name.empty() && name.back() == L' ') name.remove_suffix(1);
    std::wstring upper(name);
    CharUpperBuffW(upper.data(), static_cast<DWORD>(upper.size()));
    for (const std::wstring_view each : {L"CON", L"PRN", L"AUX", L"NUL", L"CONIN$", L"CONOUT$", L"CLOCK$"}) {
        if (upper == each) return true;
    }
    constexpr std::wstring_view kDigits = L"0123456789\xB9\xB2\xB3";  // raised ones, too
    return upper.size() == 4 && (upper.starts_with(L"COM") || upper.starts_with(L"LPT")) &&
           kDigits.find(upper[3]) != std::wstring_view::npos;
}

bool holdsDeviceName(std::wstring_view path) {
    while (true) {
        const std::size_t end = path.find(L'\\');
        if (isDeviceName(path.substr(0, end))) return true;
        if (end == std::wstring_view::npos) return false;
        path.remove_prefix(end + 1);
    }
}

}  // namespace

std::wstring shareOf(std::wstring path) {
    std::replace(path.begin(), path.end(), L'/', L'\\');
    if (path.starts_with(kLongShare)) path = L"\\\\" + path.substr(kLongShare.size());
    if (!path.starts_with(L"\\\\") || path.starts_with(kLongForm) || path.starts_with(L"\\\\.\\")) return {};
    const std::size_t name = path.find(L'\\', 2);
    if (name == std::wstring::npos || name + 1 >= path.size()) return {};
    path.resize(std::min(path.find(L'\\', name + 1), path.size()));
    CharUpperBuffW(path.data(), static_cast<DWORD>(path.size()));
    return path;
}

bool isPlainName(const std::wstring& path) {
    std::wstring name = path;
    std::replace(name.begin(), name.end(), L'/', L'\\');
    const bool isShare = name.starts_with(L"\\\\") && !name.starts_with(kLongForm);
    if (isShare || name.starts_with(kLongShare)) return isOwnShare(name);
    const bool isLong = name.starts_with(kLongForm);
    if (isLong) name.erase(0, kLongForm.size());
    if (name.empty() || name.starts_with(L"\\??")) return false;  // the system's own names of devices
    const bool hasDrive = name.size() > 1 && isLetter(name[0]) && name[1] == L':';
    if (isLong && !(hasDrive && name.size() > 2 && name[2] == L'\\')) return false;
    const std::size_t begin = hasDrive ? 2 : 0;
    if (name.find(L':', begin) != std::wstring::npos) return false;  // a device, or a part of a file
    return isLong || !holdsDeviceName(std::wstring_view(name).substr(begin));
}

std::wstring nameOnDisk(const std::wstring& path) {
    const Handle opened(CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    std::wstring name(kLongestPath, L'\0');
    const DWORD length = opened ? GetFinalPathNameByHandleW(opened.get(), name.data(), kLongestPath, 0) : 0;
    name.resize(length < kLongestPath ? length : 0);
    return name;
}

bool isPlainPath(const std::wstring& path) { return !leadOf(path, FarAway::Entered).out; }

Handle openPlainFile(const std::wstring& path, DWORD moreFlags) {
    if (!isPlainPath(path)) return Handle();
    Handle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION | moreFlags, nullptr));
    if (!file || GetFileType(file.get()) != FILE_TYPE_DISK) return Handle();
    return file;
}

}  // namespace corvane
