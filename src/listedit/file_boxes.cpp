// SPDX-License-Identifier: GPL-3.0-or-later
#include "listedit/file_boxes.h"

#include <algorithm>
#include <utility>

#include "types/text.h"

namespace corvane {

namespace {

bool isInside(const std::string& folder, const std::string& root, char separator) {
    if (folder.compare(0, root.size(), root) != 0) return false;
    return folder.size() == root.size() || root.back() == separator || folder[root.size()] == separator;
}

/// The folders on the way from the root to the folder, both included.
std::vector<std::string> wayTo(const std::string& folder, const std::string& root, char separator) {
    std::vector<std::string> way{root};
    std::size_t from = root.size();
    while (from < folder.size()) {
        std::size_t end = folder.find(separator, from + 1);
        if (end == std::string::npos) end = folder.size();
        way.push_back(folder.substr(0, end));
        from = end;
    }
    return way;
}

std::string lastPart(const std::string& folder, char separator) {
    const std::size_t at = folder.rfind(separator);
    return at == std::string::npos || at + 1 == folder.size() ? folder : folder.substr(at + 1);
}

/// What stands for the whole file system when no drive holds the folder.
std::string rootOf(const std::string& folder, char separator) {
    const std::size_t at = folder.find(separator);
    return at == std::string::npos ? folder : folder.substr(0, at + 1);
}

}  // namespace

void FileBoxes::open(const std::string& folder, const std::string& programFolder) {
    drives_ = files_.drives();
    std::vector<std::string> texts;
    for (const Drive& each : drives_) texts.push_back(each.text);
    const std::string start = readableFolder(folder.empty() ? startFolder(programFolder) : folder);

    opening_ = true;
    driveBox_.setItems(std::move(texts));
    driveBox_.ListIndex = driveOf(start);
    takeDrive();
    opening_ = false;
    if (folderBox_.Path.get() == start) {
        showFolder();
    } else {
        folderBox_.Path = std::string(start);
    }
}

std::string FileBoxes::startFolder(const std::string& programFolder) const {
    const auto home = std::find_if(drives_.begin(), drives_.end(), [](const Drive& each) { return each.isHome; });
    return home == drives_.end() ? programFolder : home->path;
}

std::string FileBoxes::readableFolder(std::string folder) const {
    const std::string root = rootOf(folder, files_.separator());
    while (!files_.readable(folder) && folder.size() > root.size()) {
        const std::size_t at = folder.rfind(files_.separator());
        folder.resize(std::max(at == std::string::npos ? 0 : at, root.size()));
    }
    return folder;
}

int FileBoxes::driveOf(const std::string& folder) const {
    int best = -1;
    std::size_t longest = 0;
    for (std::size_t i = 0; i < drives_.size(); ++i) {
        const std::string& root = drives_[i].path;
        if (root.size() <= longest || !isInside(folder, root, files_.separator())) continue;
        best = static_cast<int>(i);
        longest = root.size();
    }
    return best;
}

void FileBoxes::takeDrive() {
    const int index = driveBox_.ListIndex;
    if (index < 0) return;
    const std::string& root = drives_[static_cast<std::size_t>(index)].path;
    const bool again = driveBox_.Drive.get() == root;
    driveBox_.Drive = std::string(root);
    // A drive that could not be read before is tried again.
    if (again && !isInside(folderBox_.Path, root, files_.separator())) driveBox_.notify(PropertyId::Drive);
}

std::optional<std::string> FileBoxes::changeDrive() {
    const Drive* chosen = drive();
    if (opening_ || chosen == nullptr) return std::nullopt;
    if (!files_.readable(chosen->path)) return chosen->text;
    folderBox_.Path = std::string(chosen->path);
    return std::nullopt;
}

const Drive* FileBoxes::drive() const {
    const auto found = std::find_if(drives_.begin(), drives_.end(),
                                    [&](const Drive& each) { return each.path == driveBox_.Drive.get(); });
    return found == drives_.end() ? nullptr : &*found;
}

void FileBoxes::enterFolder() {
    const int index = folderBox_.ListIndex;
    if (index < 0 || index >= static_cast<int>(folderPaths_.size())) return;
    folderBox_.Path = std::string(folderPaths_[static_cast<std::size_t>(index)]);
}

void FileBoxes::showFolder() {
    const char separator = files_.separator();
    const std::string folder = folderBox_.Path;
    const Drive* on = drive();
    const std::string root =
        on != nullptr && isInside(folder, on->path, separator) ? on->path : rootOf(folder, separator);

    folderPaths_ = wayTo(folder, root, separator);
    const int current = static_cast<int>(folderPaths_.size()) - 1;
    std::vector<std::string> items;
    for (const std::string& path : folderPaths_) {
        const std::string indent(items.size() * 2, ' ');
        items.push_back(indent + (items.empty() ? path : lastPart(path, separator)));
    }
    const std::string indent(items.size() * 2, ' ');
    for (const std::string& name : files_.folders(folder)) {
        items.push_back(indent + name);
        folderPaths_.push_back(text::joinPath(folder, name, separator));
    }
    folderBox_.setItems(std::move(items));
    folderBox_.ListIndex = current;
    folderBox_.ToolTipText = std::string(folder);
    fileBox_.Path = std::string(folder);
    showFiles();
}

void FileBoxes::showFiles() { fileBox_.setItems(files_.list(fileBox_.Path, fileBox_.Pattern)); }

}  // namespace corvane
