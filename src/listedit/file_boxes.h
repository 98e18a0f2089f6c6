// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/lists.h"
#include "platform/ports.h"

namespace corvane {

/// Fills a drive box, a folder box and a file box through the Files port and walks between folders. The folder box
/// shows the way from the drive's root to its folder and then that folder's own folders, each level set in by two
/// blanks. None of the controls is owned.
class FileBoxes {
public:
    FileBoxes(Files& files, DriveBox& drives, FolderBox& folders, FileBox& fileBox)
        : files_(files), driveBox_(drives), folderBox_(folders), fileBox_(fileBox) {}

    /// Offers the drives and shows the folder, on the drive that holds it. Without a folder the search begins at home,
    /// or where the program is. A folder that cannot be read gives way to the nearest one above it that can.
    void open(const std::string& folder, const std::string& programFolder);
    /// The user chose an entry of the drive box: sets its Drive.
    void takeDrive();
    /// The drive box's Drive has changed: goes to its root. The drive's text when it cannot be read, and then the other
    /// boxes stay as they are.
    std::optional<std::string> changeDrive();
    /// The user went into an entry of the folder box: sets its Path.
    void enterFolder();
    /// Lists the folder box's Path in it and sets the file box's Path.
    void showFolder();
    /// Lists the files of the file box's Path and Pattern.
    void showFiles();

private:
    const Drive* drive() const;
    int driveOf(const std::string& folder) const;
    std::string startFolder(const std::string& programFolder) const;
    std::string readableFolder(std::string folder) const;

    Files& files_;
    DriveBox& driveBox_;
    FolderBox& folderBox_;
    FileBox& fileBox_;
    std::vector<Drive> drives_;
    std::vector<std::string> folderPaths_;  ///< of the folder box's items
    bool opening_ = false;                  ///< the drive follows the folder, not the other way round
};

}  // namespace corvane
