// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/program/known_folders.h"

#include <filesystem>

#include "winapi/api.h"
#include "winapi/files/windows_files.h"
#include "winapi/handle.h"
#include "winapi/text.h"
// After windows.h:
#include <shlobj.h>

namespace corvane {

namespace {

std::string trimmed(std::string folder) {
    constexpr std::size_t kRoot = 3;  // as in C:\ .
    while (folder.size() > kRoot && folder.back() == '\\') folder.pop_back();
    return folder;
}

DWORD attributesOf(const std::string& path) { return GetFileAttributesW(systemPath(path).c_str()); }

}  // namespace

std::string variable(const wchar_t* name) {
    std::wstring value(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
    value.resize(GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
    return fromWide(value);
}

std::string fullPath(const std::string& path) {
    const std::wstring wide = toWide(path);
    std::wstring full(GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    if (full.size() > 1 && full[1] == L':') CharUpperBuffW(full.data(), 1);
    return full.empty() ? path : fromWide(full);
}

FolderChoice folderChoiceOfSystem() {
    std::wstring program(MAX_PATH, L'\0');
    DWORD length = GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    while (length == program.size()) {
        program.resize(program.size() * 2);
        length = GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    }
    program.resize(length);
    program.resize(std::min(program.rfind(L'\\'), program.size()));
    PWSTR data = nullptr;
    SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &data);
    const std::string local = data != nullptr ? fromWide(data) : std::string();
    CoTaskMemFree(data);
    return {variable(L"CORVANE_FOLDER"), trimmed(local) + "\\Corvane", {trimmed(fullPath(fromWide(program)))}};
}

bool KnownFolders::isFolder(const std::string& path) {
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool KnownFolders::isFile(const std::string& path) {
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

void KnownFolders::make(const std::string& folder) {
    std::error_code failed;
    std::filesystem::create_directories(systemPath(folder), failed);
}

std::string KnownFolders::whole(const std::string& path) { return trimmed(fullPath(path)); }

bool KnownFolders::canBeWritten(const std::string& folder) {
    const std::string name = folder + "\\.corvane-" + std::to_string(GetCurrentProcessId());
    return static_cast<bool>(Handle(CreateFileW(systemPath(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                                FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr)));
}

}  // namespace corvane
