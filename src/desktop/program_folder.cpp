// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/program_folder.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <map>
#include <set>

#include "desktop/qt_files.h"

namespace corvane {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMostSkinFileBytes = std::size_t{64} * 1024 * 1024;

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string trimmed(const fs::path& folder) {
    std::string text = folder.lexically_normal().string();
    while (text.size() > 1 && text.back() == '/') text.pop_back();
    return text;
}

/// Names of the shipped files that the user's folder was ever given, one a line: what the user deletes stays deleted.
constexpr const char* kGivenSkins = ".shipped";

/// Files of one skin begin alike: "BRASS" of BRASS.BMP, BRASS.CSV and BRASS@2X.BMP.
std::string skinName(const std::string& file) { return file.substr(0, file.find_first_of(".@")); }

bool hasBytes(const fs::path& file, const std::string& bytes) {
    const auto own = QtFiles().read(file.string(), bytes.size());
    return own && *own == bytes;
}

/// Files of the shipped skins by name.
std::map<std::string, std::string> shippedFiles(const fs::path& from) {
    std::map<std::string, std::string> files;
    std::error_code failed;
    for (const auto& entry : fs::directory_iterator(from, failed)) {
        const std::string name = entry.path().filename().string();
        const std::string ending = entry.path().extension().string();
        if ((ending != ".BMP" && ending != ".CSV") || !entry.is_regular_file(failed)) continue;
        if (auto bytes = QtFiles().read(entry.path().string(), kMostSkinFileBytes)) files[name] = std::move(*bytes);
    }
    return files;
}

std::set<std::string> givenFiles(const fs::path& record) {
    std::set<std::string> given;
    std::ifstream lines(record);
    for (std::string line; std::getline(lines, line);) given.insert(line);
    return given;
}

std::set<std::string> namesIn(const fs::path& folder) {
    std::set<std::string> names;
    std::error_code failed;
    for (const auto& entry : fs::directory_iterator(folder, failed)) names.insert(entry.path().filename().string());
    return names;
}

/// Gives the folder those shipped files that it was never given. A skin of which the user has changed a file gets none:
/// its files belong together. Each file is replaced whole, so that an interrupted start leaves no half of one.
void giveSkins(const fs::path& from, const fs::path& to) {
    const fs::path record = to / kGivenSkins;
    std::set<std::string> given = givenFiles(record);
    const std::set<std::string> names = namesIn(from);
    const auto isNew = [&](const std::string& name) { return !given.contains(name); };
    if (std::none_of(names.begin(), names.end(), isNew)) return;

    std::error_code failed;
    fs::create_directories(to, failed);
    const auto shipped = shippedFiles(from);
    std::set<std::string> changed;
    for (const auto& [name, bytes] : shipped) {
        if (fs::exists(to / name, failed) && !hasBytes(to / name, bytes)) changed.insert(skinName(name));
    }
    for (const auto& [name, bytes] : shipped) {
        const bool copy = isNew(name) && !changed.contains(skinName(name)) && !fs::exists(to / name, failed);
        if (copy && !QtFiles().replace((to / name).string(), bytes)) return;  // tried again at the next start
    }
    given.insert(names.begin(), names.end());
    std::string lines;
    for (const std::string& name : given) lines += name + '\n';
    QtFiles().replace(record.string(), lines);
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
    giveSkins(shipped, folder / kSkinFolder);
    // No place of the user's: it plays with the shipped skins, and nothing can be stored.
    return trimmed(fs::is_directory(folder / kSkinFolder, failed) ? folder : shipped.parent_path());
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
