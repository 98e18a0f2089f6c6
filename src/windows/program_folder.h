// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace corvane {

/// Name of the folder that holds the skins.
inline constexpr const char* kSkinFolder = "PANELSET";

/// What decides where the program keeps its files.
struct FolderChoice {
    std::string program;  ///< the folder the program lies in
    std::string chosen;   ///< CORVANE_FOLDER; "" when not set
    std::string data;     ///< the user's local application data
};

FolderChoice folderChoiceOfSystem();

/// The program folder, without a trailing separator unless it is a root: the chosen one; else the program's own when
/// the skins lie beside the program and it can be written; else a folder of the user's, made where there is none and
/// given the shipped skins that it was never given.
std::string programFolder(const FolderChoice& choice);
/// The same folder, without making it or giving it anything.
std::string namedFolder(const FolderChoice& choice);
/// Asked by doing it: rights alone do not say it.
bool canBeWritten(const std::string& folder);

/// The first page of the manual beside the program; "" when there is none.
std::string manualFile(const std::string& program);

/// A path made full, with back slashes and without "." and "..": their dots would count as the first dot of the path.
std::string fullPath(const std::string& path);

}  // namespace corvane
