// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/fake_files.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), lower);
    return text;
}

bool matches(std::string_view name, std::string_view pattern) {
    if (pattern.empty()) return name.empty();
    if (pattern[0] == '*') {
        return matches(name, pattern.substr(1)) || (!name.empty() && matches(name.substr(1), pattern));
    }
    if (name.empty()) return false;
    return (pattern[0] == '?' || lower(pattern[0]) == lower(name[0])) && matches(name.substr(1), pattern.substr(1));
}

}  // namespace

bool matchesPatterns(std::string_view name, std::string_view patterns) {
    while (true) {
        const std::size_t end = patterns.find(';');
        if (matches(name, patterns.substr(0, end))) return true;
        if (end == std::string_view::npos) return false;
        patterns.remove_prefix(end + 1);
    }
}

std::string FakeFiles::key(std::string path) const {
    while (path.size() > 1 && path.back() == slash) path.pop_back();
    return caseSensitive ? path : lowered(path);
}

std::string FakeFiles::parent(const std::string& path) const {
    const std::size_t end = path.rfind(slash);
    if (end == std::string::npos) return "";
    return end == 0 ? std::string(1, slash) : path.substr(0, end);
}

std::string FakeFiles::name(const std::string& path) const { return path.substr(path.rfind(slash) + 1); }

std::vector<std::string> FakeFiles::sorted(std::vector<std::string> names) const {
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        return std::pair(lowered(a), a) < std::pair(lowered(b), b);
    });
    return names;
}

std::optional<std::string> FakeFiles::lookUp(const std::string& path) {
    log_.asked("files.lookUp " + path);
    const auto found = files_.find(key(path));
    if (found == files_.end() || locked_.count(key(parent(path))) > 0) return std::nullopt;
    return name(found->second.path);
}

std::vector<std::optional<std::string>> FakeFiles::lookUpAll(const std::vector<std::string>& paths) {
    log_.asked("files.lookUpAll " + std::to_string(paths.size()));
    std::vector<std::optional<std::string>> names;
    for (const std::string& path : paths) names.push_back(lookUp(path));
    return names;
}

std::vector<std::string> FakeFiles::list(const std::string& folder, const std::string& patterns) {
    log_.asked("files.list " + folder + " " + patterns);
    std::vector<std::string> names;
    if (!readable(folder)) return names;
    for (const auto& [path, file] : files_) {
        if (key(parent(file.path)) != key(folder) || file.hidden) continue;
        if (matchesPatterns(name(file.path), patterns)) names.push_back(name(file.path));
    }
    return sorted(std::move(names));
}

std::vector<std::string> FakeFiles::folders(const std::string& folder) {
    log_.asked("files.folders " + folder);
    std::vector<std::string> names;
    if (!readable(folder)) return names;
    for (const auto& [path, shown] : folders_) {
        if (path != key(folder) && key(parent(shown)) == key(folder)) names.push_back(name(shown));
    }
    return sorted(std::move(names));
}

bool FakeFiles::readable(const std::string& folder) {
    return folders_.count(key(folder)) > 0 && locked_.count(key(folder)) == 0;
}

std::optional<std::string> FakeFiles::read(const std::string& path, std::size_t limit) {
    log_.asked("files.read " + path);
    const auto found = files_.find(key(path));
    if (found == files_.end() || found->second.bytes.size() > limit) return std::nullopt;
    return found->second.bytes;
}

bool FakeFiles::replace(const std::string& path, std::string_view bytes) {
    log_.did("files.replace " + path);
    if (failReplace || !readable(parent(path)) || folders_.count(key(path)) > 0) return false;
    File& file = files_[key(path)];
    if (file.path.empty()) file.path = path;
    file.bytes = bytes;
    return true;
}

void FakeFiles::add(const std::string& path, std::string bytes) {
    const bool hidden = slash == '/' && name(path).substr(0, 1) == ".";
    files_[key(path)] = {path, std::move(bytes), hidden};
    addFolder(parent(path));
}

void FakeFiles::addHidden(const std::string& path, std::string bytes) {
    add(path, std::move(bytes));
    files_[key(path)].hidden = true;
}

void FakeFiles::addFolder(const std::string& path) {
    for (std::string folder = path; !folder.empty(); folder = parent(folder)) {
        if (!folders_.emplace(key(folder), folder).second) return;
    }
}

void FakeFiles::lockFolder(const std::string& path) {
    addFolder(path);
    locked_.insert(key(path));
}

void FakeFiles::remove(const std::string& path) { files_.erase(key(path)); }

bool FakeFiles::has(const std::string& path) const { return files_.count(key(path)) > 0; }

std::string FakeFiles::bytes(const std::string& path) const { return files_.at(key(path)).bytes; }

}  // namespace corvane
