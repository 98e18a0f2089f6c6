// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "program/program_folder.h"

namespace corvane {

/// The machine's folders, asked of the system at once.
class PosixFolders : public Folders {
public:
    bool isFolder(const std::string& path) override;
    bool isFile(const std::string& path) override;
    bool canBeWritten(const std::string& folder) override;
    void make(const std::string& folder) override;
    std::string whole(const std::string& path) override;
};

/// By CORVANE_FOLDER, XDG_DATA_HOME and HOME, else by what the system has recorded of the user; skins and manual lie
/// beside the program or where it is installed.
FolderChoice folderChoiceOfEnvironment();
/// The user's own, of the data home, which counts when it is absolute, and the home.
std::string userFolder(const std::string& dataHome, const std::string& home);

}  // namespace corvane
