// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace corvane {

/// Name of the folder that holds the skins.
inline constexpr const char* kSkinFolder = "PANELSET";

/// What decides where the program keeps its files.
struct FolderChoice {
    std::string program;   ///< the folder the program lies in
    std::string chosen;    ///< CORVANE_FOLDER; "" when not set
    std::string dataHome;  ///< XDG_DATA_HOME; "" when not set
    std::string home;      ///< HOME, else what the system has recorded of the user
};

FolderChoice folderChoiceOfEnvironment();

/// The folder that programFolder() takes where it can; nothing is made.
std::string namedFolder(const FolderChoice& choice);

/// Where the skins of that folder lie: in it, or, before its first use, where they come from.
std::string skinFolderOf(const FolderChoice& choice, const std::string& folder);

/// The program folder, without a trailing separator: the chosen one; else the program's own when the skins lie beside
/// the program and it can be written; else a folder of the user's, made on its first use. That one is given the shipped
/// skins, later those that are new, each once: what the user changed or deleted is left alone. Where it cannot be made,
/// the folder with the shipped skins.
std::string programFolder(const FolderChoice& choice);

/// The first page of the manual, beside the program or where it is installed; "" when there is none.
std::string manualFile(const std::string& program);

}  // namespace corvane
