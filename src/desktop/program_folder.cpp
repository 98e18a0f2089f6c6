// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/program_folder.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <initializer_list>

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

/// Copied beside and renamed, so that an interrupted first start leaves no half a set behind.
void copySkins(const fs::path& from, const fs::path& folder) {
    std::error_code failed;
    const fs::path beside = folder / (std::string(kSkinFolder) + "-" + std::to_string(getpid()));
    fs::copy(from, beside, fs::copy_options::recursive, failed);
    if (!failed) fs::rename(beside, folder / kSkinFolder, failed);
    if (failed) fs::remove_all(beside, failed);
}

std::string userFolder(const FolderChoice& choice) {
    // A data home that is not absolute is to be ignored.
    const bool own = !choice.dataHome.empty() && choice.dataHome.front() == '/';
    const fs::path folder = (own ? fs::path(choice.dataHome) : fs::path(choice.home) / ".local/share") / "corvane";
    std::error_code failed;
    fs::create_directories(folder, failed);
    if (!fs::exists(folder / kSkinFolder, failed)) {
        for (const fs::path& shipped : {fs::path(choice.program) / kSkinFolder,
                                        fs::path(choice.program) / ".." / "share" / "corvane" / kSkinFolder}) {
            if (!fs::is_directory(shipped, failed)) continue;
            copySkins(shipped, folder);
            break;
        }
    }
    return trimmed(folder);
}

}  // namespace

FolderChoice folderChoiceOfEnvironment() {
    std::error_code failed;
    const fs::path program = fs::read_symlink("/proc/self/exe", failed).parent_path();
    std::string home = variable("HOME");
    if (home.empty()) home = "/";
    return {program.string(), variable("CORVANE_FOLDER"), variable("XDG_DATA_HOME"), home};
}

std::string programFolder(const FolderChoice& choice) {
    std::error_code failed;
    if (!choice.chosen.empty()) return trimmed(fs::absolute(choice.chosen, failed));
    const bool skinsBeside = fs::is_directory(fs::path(choice.program) / kSkinFolder, failed);
    if (skinsBeside && access(choice.program.c_str(), W_OK) == 0) return trimmed(choice.program);
    return userFolder(choice);
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
