// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/files/windows_files.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

#include "types/file_patterns.h"
#include "winapi/api.h"
#include "winapi/files/far_drives.h"
#include "winapi/files/links.h"
#include "winapi/files/plain_file.h"
#include "winapi/handle.h"
#include "winapi/text.h"
#include "workers/decision.h"
// After windows.h:
#include <shlobj.h>

namespace corvane {

namespace {

constexpr std::size_t kUsualPath = 248;  ///< a folder's path may not be longer without the long form
constexpr std::wstring_view kBesidePrefix = L".corvane-";
constexpr int kBesideDigits = 8;

bool isFolder(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

std::string inFolder(const std::string& folder, std::string_view name) {
    const bool ends = !folder.empty() && (folder.back() == '\\' || folder.back() == '/');
    return std::string(folder).append(ends ? "" : "\\").append(name);
}

/// Calls visit with each entry that matches, up to kMostEntries; a path that cannot be listed has none.
template <class Visit>
void forEach(const std::string& pattern, const Visit& visit) {
    const std::wstring path = systemPath(pattern);
    if (!isPlainName(path)) return;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileExW(path.c_str(), FindExInfoBasic, &found, FindExSearchNameMatch, nullptr,
                                           FIND_FIRST_EX_LARGE_FETCH);
    if (search == INVALID_HANDLE_VALUE) return;
    std::size_t seen = 0;
    do {
        visit(found);
    } while (++seen < kMostEntries && FindNextFileW(search, &found) != 0);
    FindClose(search);
}

/// As the system compares names: without case, whatever the alphabet.
void sortWithoutCase(std::vector<std::string>& names) {
    std::vector<std::pair<std::wstring, std::string>> keyed;
    keyed.reserve(names.size());
    for (std::string& name : names) {
        std::wstring key = toWide(name);
        CharUpperBuffW(key.data(), static_cast<DWORD>(key.size()));
        keyed.emplace_back(std::move(key), std::move(name));
    }
    std::sort(keyed.begin(), keyed.end());
    names.clear();
    for (auto& [key, name] : keyed) names.push_back(std::move(name));
}

template <class Wanted>
std::vector<std::string> entries(const std::string& folder, bool folders, const Wanted& wanted) {
    std::vector<std::string> names;
    forEach(inFolder(folder, "*"), [&](const WIN32_FIND_DATAW& found) {
        const std::wstring_view wide = found.cFileName;
        if (wide == L"." || wide == L".." || (found.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0) return;
        if (isFolder(found.dwFileAttributes) != folders) return;
        std::string name = fromWide(wide);
        if (wanted(name)) names.push_back(std::move(name));
    });
    sortWithoutCase(names);
    return names;
}

bool writeAll(HANDLE file, std::string_view bytes) {
    constexpr std::size_t kAtOnce = 1U << 20U;
    while (!bytes.empty()) {
        const auto count = static_cast<DWORD>(std::min(bytes.size(), kAtOnce));
        DWORD written = 0;
        if (WriteFile(file, bytes.data(), count, &written, nullptr) == 0 || written == 0) return false;
        bytes.remove_prefix(written);
    }
    return FlushFileBuffers(file) != 0;
}

std::wstring besideOf(const std::wstring& path, DWORD number) {
    wchar_t digits[kBesideDigits + 1] = {};
    swprintf(digits, kBesideDigits + 1, L"%08lx", number);
    const std::size_t slash = path.find_last_of(L"\\/");
    const std::wstring folder = slash == std::wstring::npos ? std::wstring() : path.substr(0, slash + 1);
    return folder + std::wstring(kBesidePrefix) + digits;
}

/// A new file beside the path; empty handle: there cannot be one.
Handle makeBeside(const std::wstring& path, std::wstring& name) {
    constexpr int kTries = 16;
    DWORD number = GetTickCount() ^ (GetCurrentProcessId() << 16U);
    for (int i = 0; i < kTries; ++i, number += 0x9E3779B9U) {
        name = besideOf(path, number);
        Handle file(CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (file || GetLastError() != ERROR_FILE_EXISTS) return file;
    }
    return Handle();
}

std::string textOfDrive(const std::wstring& root) {
    std::string text = fromWide(root.substr(0, 2));
    wchar_t label[MAX_PATH + 1] = {};
    const UINT kind = GetDriveTypeW(root.c_str());
    // An empty disc drive or one across the network would keep the box waiting.
    if (kind != DRIVE_FIXED && kind != DRIVE_RAMDISK) return text;
    if (GetVolumeInformationW(root.c_str(), label, MAX_PATH, nullptr, nullptr, nullptr, nullptr, 0) != 0 && *label) {
        text += " [" + fromWide(label) + ']';
    }
    return text;
}

/// Somebody who reads a file may let nobody replace it: asked before anything is moved.
bool canBeReplaced(const std::wstring& path) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return static_cast<bool>(
        Handle(CreateFileW(path.c_str(), DELETE | GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr)));
}

/// The new file is to other users what the old one was, where the drive knows of them.
void keepRights(const std::wstring& of, const std::wstring& file, DWORD attributes) {
    DWORD length = 0;
    GetFileSecurityW(of.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &length);
    std::vector<std::byte> rights(length);
    if (length > 0 && GetFileSecurityW(of.c_str(), DACL_SECURITY_INFORMATION, rights.data(), length, &length) != 0) {
        SetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, rights.data());
    }
    constexpr DWORD kKept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    if ((attributes & kKept) != 0) SetFileAttributesW(file.c_str(), attributes & kKept);
}

std::optional<std::string> lookUpNow(const std::string& path) {
    // A pattern would find a file of another name.
    if (path.empty() || path.find_first_of("*?<>\"|") != std::string::npos) return std::nullopt;
    std::optional<std::string> name;
    forEach(path, [&](const WIN32_FIND_DATAW& found) {
        if (!isFolder(found.dwFileAttributes)) name = fromWide(found.cFileName);
    });
    return name;
}

bool readableNow(const std::string& folder) {
    const std::wstring path = systemPath(folder);
    const DWORD attributes = isPlainName(path) ? GetFileAttributesW(path.c_str()) : INVALID_FILE_ATTRIBUTES;
    if (attributes == INVALID_FILE_ATTRIBUTES || !isFolder(attributes)) return false;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(systemPath(inFolder(folder, "*")).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_FILE_NOT_FOUND;  // an empty root
    FindClose(search);
    return true;
}

std::optional<std::string> readNow(const std::string& path, std::size_t limit) {
    const Handle file = openPlainFile(systemPath(path), FILE_FLAG_SEQUENTIAL_SCAN);
    LARGE_INTEGER size{};
    if (!file || GetFileSizeEx(file.get(), &size) == 0) return std::nullopt;
    if (size.QuadPart < 0 || static_cast<unsigned long long>(size.QuadPart) > limit) return std::nullopt;
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(size.QuadPart));
    constexpr DWORD kAtOnce = 65536;
    const auto buffer = std::make_unique<char[]>(kAtOnce);
    while (true) {
        DWORD got = 0;
        if (ReadFile(file.get(), buffer.get(), kAtOnce, &got, nullptr) == 0) return std::nullopt;
        if (got == 0) return bytes;
        bytes.append(buffer.get(), got);
        if (bytes.size() > limit) return std::nullopt;
    }
}

bool replaceNow(const std::string& path, std::string_view bytes, Decision& decision) {
    const std::wstring target = systemPath(path);
    const DWORD attributes = GetFileAttributesW(target.c_str());
    const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
    // What cannot be looked at may well be there, and may be protected.
    if (!exists && GetLastError() != ERROR_FILE_NOT_FOUND) return false;
    constexpr DWORD kNot = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
    if (target.empty() || (exists && ((attributes & kNot) != 0 || !canBeReplaced(target)))) return false;
    std::wstring beside;
    Handle file = makeBeside(target, beside);
    if (!file) return false;
    const bool written = writeAll(file.get(), bytes);
    file.reset();
    if (exists) keepRights(target, beside, attributes);
    // Not ReplaceFile, which moves the old file away first: a program that is killed in it leaves none of that name.
    const bool replaced =
        written && decision.take(Decision::By::Task) &&
        MoveFileExW(beside.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    if (!replaced) DeleteFileW(beside.c_str());
    return replaced;
}

/// At once, or by a worker where the path leads across the network: what does not answer is as if it were not there,
/// and so is what leads out.
template <class T>
T asked(const std::string& path, std::function<T()> question,
        std::chrono::milliseconds patience = FarDrives::kPatience) {
    const std::wstring wide = systemPath(path);
    const Lead lead = leadOf(wide, FarAway::NotEntered);
    if (lead.out) return T{};
    if (lead.farDrive.empty()) return question();
    const auto further = [wide, question = std::move(question)] { return isPlainPath(wide) ? question() : T{}; };
    return FarDrives::all().ask<T>(lead.farDrive, patience, further).value_or(T{});
}

}  // namespace

std::wstring systemPath(const std::string& path) {
    std::wstring wide = toWide(path);
    std::replace(wide.begin(), wide.end(), L'/', L'\\');
    if (wide.size() < kUsualPath || wide.starts_with(L"\\\\?\\")) return wide;
    if (wide.starts_with(L"\\\\")) return L"\\\\?\\UNC" + wide.substr(1);
    const bool full = wide.size() > 2 && wide[1] == L':' && wide[2] == L'\\';
    return full ? L"\\\\?\\" + wide : wide;
}

std::optional<std::string> WindowsFiles::lookUp(const std::string& path) {
    return asked<std::optional<std::string>>(path, [path] { return lookUpNow(path); });
}

std::vector<std::optional<std::string>> WindowsFiles::lookUpAll(const std::vector<std::string>& paths) {
    std::vector<std::optional<std::string>> names;
    for (const std::string& path : paths) names.push_back(lookUp(path));
    return names;
}

std::vector<std::string> WindowsFiles::list(const std::string& folder, const std::string& patterns) {
    return asked<std::vector<std::string>>(folder, [folder, patterns] {
        return entries(folder, false, [&](const std::string& name) { return matchesAnyPattern(name, patterns); });
    });
}

std::vector<std::string> WindowsFiles::folders(const std::string& folder) {
    return asked<std::vector<std::string>>(
        folder, [folder] { return entries(folder, true, [](const std::string&) { return true; }); });
}

bool WindowsFiles::readable(const std::string& folder) {
    return asked<bool>(folder, [folder] { return readableNow(folder); });
}

std::optional<std::string> WindowsFiles::read(const std::string& path, std::size_t limit) {
    return asked<std::optional<std::string>>(path, [path, limit] { return readNow(path, limit); });
}

std::vector<Drive> WindowsFiles::drives() {
    std::vector<Drive> found;
    const DWORD present = GetLogicalDrives();
    for (unsigned i = 0; i < 26; ++i) {
        if ((present & (1U << i)) == 0) continue;
        const std::wstring root{static_cast<wchar_t>(L'A' + i), L':', L'\\'};
        found.push_back({textOfDrive(root), fromWide(root)});
    }
    // The system's own drive first: what is offered first can be opened.
    wchar_t windows[MAX_PATH] = {};
    GetWindowsDirectoryW(windows, MAX_PATH);
    const std::string own = fromWide(std::wstring_view(windows, 3));
    std::stable_partition(found.begin(), found.end(), [&](const Drive& each) { return each.path == own; });
    PWSTR home = nullptr;
    if (SHGetKnownFolderPath(FOLDERID_Profile, 0, nullptr, &home) == S_OK) {
        const std::string path = fromWide(home);
        found.push_back({path, path, true});
    }
    CoTaskMemFree(home);
    return found;
}

bool WindowsFiles::replace(const std::string& path, std::string_view bytes) {
    const auto decision = std::make_shared<Decision>();
    const bool replaced = asked<bool>(
        path, [path, text = std::string(bytes), decision] { return replaceNow(path, text, *decision); },
        FarDrives::kLongPatience);
    // Not answered in time: from here on the old file stays, unless the new one is being put in its place just now.
    if (!replaced) decision->take(Decision::By::Waiter);
    return replaced;
}

void removeUnfinishedFiles(const std::string& folder) {
    forEach(inFolder(folder, fromWide(kBesidePrefix) + '*'), [&](const WIN32_FIND_DATAW& found) {
        const std::wstring_view name = found.cFileName;
        if (isFolder(found.dwFileAttributes) || name.size() != kBesidePrefix.size() + kBesideDigits) return;
        DeleteFileW(systemPath(inFolder(folder, fromWide(name))).c_str());
    });
}

}  // namespace corvane
