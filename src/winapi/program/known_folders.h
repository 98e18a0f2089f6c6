// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "program/program_folder.h"

namespace corvane {

/// The machine's folders.
class KnownFolders : public Folders {
public:
    bool isFolder(const std::string& path) override;
    bool isFile(const std::string& path) override;
    /// Asked by doing it: rights alone do not say it.
    bool canBeWritten(const std::string& folder) override;
    void make(const std::string& folder) override;
    std::string whole(const std::string& path) override;
};

/// By CORVANE_FOLDER and the user's local application data; skins and manual lie beside the program.
FolderChoice folderChoiceOfSystem();

/// A variable of the environment; "" when it is not set.
std::string variable(const wchar_t* name);

/// A path made full, with back slashes and without "." and "..": their dots would count as the first dot of the path.
std::string fullPath(const std::string& path);

}  // namespace corvane
