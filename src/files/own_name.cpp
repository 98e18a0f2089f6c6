// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/own_name.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "types/text.h"

namespace corvane {

namespace {

using FileNumber = std::pair<dev_t, ino_t>;

std::optional<FileNumber> numberOf(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) return std::nullopt;
    return FileNumber(status.st_dev, status.st_ino);
}

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

enum class Cases { Minded, Ignored, NotKnown };

/// Whether the name with a letter's case changed leads to the same file. Every name of a type that is played has one.
Cases casesOf(const std::string& folder, std::string name, const FileNumber& file) {
    const auto letter = std::find_if(name.begin(), name.end(), isLetter);
    if (letter == name.end()) return Cases::NotKnown;
    constexpr char kCaseBit = 'a' ^ 'A';
    *letter = static_cast<char>(*letter ^ kCaseBit);
    return numberOf(folder + name) == file ? Cases::Ignored : Cases::Minded;
}

std::string ownName(const std::string& path, Cases& cases) {
    const std::size_t begins = path.rfind('/') + 1;
    const std::string folder = path.substr(0, begins);
    const std::string asked = path.substr(begins);
    const auto file = numberOf(path);
    cases = file ? casesOf(folder, asked, *file) : Cases::NotKnown;
    if (cases != Cases::Ignored) return asked;

    const std::unique_ptr<DIR, int (*)(DIR*)> dir(opendir(folder.empty() ? "." : folder.c_str()), closedir);
    const std::string sought = text::capitals(asked);
    std::string found = asked;
    for (int i = 0; dir && i < kMostEntriesRead; ++i) {
        const dirent* const entry = readdir(dir.get());
        if (entry == nullptr) break;
        const std::string name = entry->d_name;
        if (name == asked) return asked;  // two names may be hard links to one file
        if (text::capitals(name) == sought && numberOf(folder + name) == file) found = name;
    }
    return found;
}

}  // namespace

std::string ownName(const std::string& path) {
    Cases cases = Cases::NotKnown;
    return ownName(path, cases);
}

std::string OwnNames::of(const std::string& path) {
    const std::size_t begins = path.rfind('/') + 1;
    {
        const std::lock_guard lock(mutex_);
        if (begins > 0 && begins == mindsCase_.size() && path.starts_with(mindsCase_)) return path.substr(begins);
    }
    Cases cases = Cases::NotKnown;
    std::string name = ownName(path, cases);
    if (cases == Cases::Minded) {
        const std::lock_guard lock(mutex_);
        mindsCase_ = path.substr(0, begins);
    }
    return name;
}

}  // namespace corvane
