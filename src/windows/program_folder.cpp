// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/program_folder.h"

#include <filesystem>

#include "shell/shipped_skins.h"
#include "windows/api.h"
#include "windows/files/windows_files.h"
#include "windows/handle.h"
#include "windows/text.h"
// After windows.h:
#include <shlobj.h>

namespace corvane {

namespace fs = std::filesystem;

namespace {

std::string variable(const wchar_t* name) {
    std::wstring value(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
    value.resize(GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
    return fromWide(value);
}

std::string trimmed(std::string folder) {
    constexpr std::size_t kRoot = 3;  // as in C:\ .
    while (folder.size() > kRoot && folder.back() == '\\') folder.pop_back();
    return folder;
}

bool isFolder(const std::string& path) {
    const DWORD attributes = GetFileAttributesW(systemPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::string userFolder(const FolderChoice& choice) { return trimmed(choice.data) + "\\Corvane"; }

/// Makes it, with the shipped skins.
std::string readyUserFolder(const FolderChoice& choice) {
    const std::string folder = userFolder(choice);
    const std::string own = folder + '\\' + kSkinFolder;
    const std::string shipped = choice.program + '\\' + kSkinFolder;
    std::error_code failed;
    fs::create_directories(systemPath(isFolder(shipped) ? own : folder), failed);
    if (!isFolder(shipped)) return folder;
    // No place of the user's: it plays with the shipped skins, and nothing can be stored.
    if (!isFolder(own)) return trimmed(choice.program);
    WindowsFiles files;
    giveSkins(files, shipped, own);
    return folder;
}

}  // namespace

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
    FolderChoice choice{fullPath(fromWide(program)), variable(L"CORVANE_FOLDER"),
                        data != nullptr ? fromWide(data) : std::string()};
    CoTaskMemFree(data);
    return choice;
}

bool canBeWritten(const std::string& folder) {
    const std::string name = folder + "\\.corvane-" + std::to_string(GetCurrentProcessId());
    return static_cast<bool>(Handle(CreateFileW(systemPath(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                                FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr)));
}

std::string namedFolder(const FolderChoice& choice) {
    if (!choice.chosen.empty()) return trimmed(fullPath(choice.chosen));
    if (isFolder(choice.program + '\\' + kSkinFolder) && canBeWritten(choice.program)) return trimmed(choice.program);
    return userFolder(choice);
}

std::string programFolder(const FolderChoice& choice) {
    const std::string folder = namedFolder(choice);
    return choice.chosen.empty() && folder == userFolder(choice) ? readyUserFolder(choice) : folder;
}

std::string manualFile(const std::string& program) {
    const std::string page = program + "\\manual\\index.html";
    const DWORD attributes = GetFileAttributesW(systemPath(page).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES ? page : std::string();
}

}  // namespace corvane
