// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/posix_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace corvane {

namespace fs = std::filesystem;

namespace {

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// Where the user is at home when the environment does not say it.
std::string recordedHome() {
    const passwd* const user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

std::string trimmed(const fs::path& folder) {
    std::string text = folder.lexically_normal().string();
    while (text.size() > 1 && text.back() == '/') text.pop_back();
    return text;
}

}  // namespace

bool PosixFolders::isFolder(const std::string& path) {
    std::error_code failed;
    return fs::is_directory(path, failed);
}

bool PosixFolders::isFile(const std::string& path) {
    std::error_code failed;
    return fs::is_regular_file(path, failed);
}

bool PosixFolders::canBeWritten(const std::string& folder) { return access(folder.c_str(), W_OK) == 0; }

void PosixFolders::make(const std::string& folder) {
    std::error_code failed;
    fs::create_directories(folder, failed);
}

std::string PosixFolders::whole(const std::string& path) {
    std::error_code failed;
    return trimmed(fs::absolute(path, failed));
}

std::string userFolder(const std::string& dataHome, const std::string& home) {
    const bool own = !dataHome.empty() && dataHome.front() == '/';
    return trimmed((own ? fs::path(dataHome) : fs::path(home) / ".local/share") / "corvane");
}

FolderChoice folderChoiceOfEnvironment() {
    std::error_code failed;
    const fs::path program = fs::read_symlink("/proc/self/exe", failed).parent_path();
    std::string home = variable("HOME");
    if (home.empty()) home = recordedHome();
    return {variable("CORVANE_FOLDER"),
            userFolder(variable("XDG_DATA_HOME"), home),
            {trimmed(program), trimmed(program / "../share/corvane")}};
}

}  // namespace corvane
