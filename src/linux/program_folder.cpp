// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/program_folder.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <initializer_list>

#include "linux/files/qt_files.h"
#include "shell/shipped_skins.h"

namespace corvane {

namespace fs = std::filesystem;

namespace {

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string trimmed(const fs::path& folder) {
    std::string text = folder.lexically_normal().string();
    while (text.size() > 1 && text.back() == '/') text.pop_back();
    return text;
}

/// Where the user is at home when the environment does not say it.
std::string recordedHome() {
    const passwd* const user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

fs::path userFolder(const FolderChoice& choice) {
    // A data home that is not absolute is to be ignored.
    const bool own = !choice.dataHome.empty() && choice.dataHome.front() == '/';
    return (own ? fs::path(choice.dataHome) : fs::path(choice.home) / ".local/share") / "corvane";
}

/// Where the shipped skins lie, beside the program or where it is installed; empty when nowhere.
fs::path shippedSkins(const FolderChoice& choice) {
    std::error_code failed;
    for (const fs::path& shipped : {fs::path(choice.program) / kSkinFolder,
                                    fs::path(choice.program) / ".." / "share" / "corvane" / kSkinFolder}) {
        if (fs::is_directory(shipped, failed)) return shipped;
    }
    return {};
}

/// The chosen folder, or the program's own; "" when it is the user's.
std::string givenFolder(const FolderChoice& choice) {
    std::error_code failed;
    if (!choice.chosen.empty()) return trimmed(fs::absolute(choice.chosen, failed));
    const bool skinsBeside = fs::is_directory(fs::path(choice.program) / kSkinFolder, failed);
    if (skinsBeside && access(choice.program.c_str(), W_OK) == 0) return trimmed(choice.program);
    return {};
}

}  // namespace

FolderChoice folderChoiceOfEnvironment() {
    std::error_code failed;
    const fs::path program = fs::read_symlink("/proc/self/exe", failed).parent_path();
    std::string home = variable("HOME");
    if (home.empty()) home = recordedHome();
    return {program.string(), variable("CORVANE_FOLDER"), variable("XDG_DATA_HOME"), home};
}

std::string namedFolder(const FolderChoice& choice) {
    const std::string given = givenFolder(choice);
    return given.empty() ? trimmed(userFolder(choice)) : given;
}

std::string programFolder(const FolderChoice& choice) {
    if (std::string given = givenFolder(choice); !given.empty()) return given;
    const fs::path folder = userFolder(choice);
    std::error_code failed;
    fs::create_directories(folder, failed);
    const fs::path shipped = shippedSkins(choice);
    if (shipped.empty()) return trimmed(folder);
    fs::create_directories(folder / kSkinFolder, failed);
    // No place of the user's: it plays with the shipped skins, and nothing can be stored.
    if (!fs::is_directory(folder / kSkinFolder, failed)) return trimmed(shipped.parent_path());
    QtFiles files;
    giveSkins(files, shipped.string(), (folder / kSkinFolder).string());
    return trimmed(folder);
}

std::string skinFolderOf(const FolderChoice& choice, const std::string& folder) {
    std::error_code failed;
    const fs::path own = fs::path(folder) / kSkinFolder;
    const bool first = choice.chosen.empty() && !fs::is_directory(own, failed);
    return trimmed(first ? shippedSkins(choice) : own);
}

std::string manualFile(const std::string& program) {
    const fs::path base(program);
    std::error_code failed;
    for (const fs::path& path : {base / "manual/index.html", base / "../share/corvane/manual/index.html"}) {
        if (fs::is_regular_file(path, failed)) return path.lexically_normal().string();
    }
    return {};
}

}  // namespace corvane
