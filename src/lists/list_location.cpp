// SPDX-License-Identifier: GPL-3.0-or-later
#include "lists/list_location.h"

#include <algorithm>
#include <cstddef>

#include "types/text.h"

namespace corvane {

namespace {

constexpr std::size_t kMostPathBytes = 4096;

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isSlash(char c) { return c == '/' || c == '\\'; }
bool hasDrive(std::string_view path) { return path.size() >= 2 && isLetter(path[0]) && path[1] == ':'; }

int digit(char c) {
    c = text::lower(c);
    if (c >= '0' && c <= '9') return c - '0';
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

/// What stands before "://"; "" when nothing does that could be a protocol.
std::string protocolOf(std::string_view location) {
    const std::size_t end = location.find("://");
    if (end == std::string_view::npos || end < 2 || !isLetter(location.front())) return {};
    const auto fits = [](char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.'; };
    const std::string_view name = location.substr(0, end);
    return std::all_of(name.begin(), name.end(), fits) ? text::lower(std::string(name)) : std::string();
}

/// Without empty steps, "." and "..", which goes no higher than the root.
std::string followed(std::string_view root, std::string_view path, char separator) {
    std::vector<std::string_view> steps;
    while (!path.empty()) {
        const std::string_view step = path.substr(0, path.find(separator));
        path.remove_prefix(std::min(path.size(), step.size() + 1));
        if (step == "..") {
            if (!steps.empty()) steps.pop_back();
        } else if (!step.empty() && step != ".") {
            steps.push_back(step);
        }
    }
    std::string result(root);
    for (const std::string_view step : steps) result = text::joinPath(std::move(result), step, separator);
    return result;
}

class Locating {
public:
    Locating(std::string_view folder, char separator) : folder_(folder), separator_(separator) {}

    /// A path of this machine, or relative to the list's folder.
    void add(std::string path) {
        if (path.empty() || path.find('\0') != std::string::npos || path.size() > kMostPathBytes) return;
        if (separator_ == '\\') return addOfWindows(std::move(path));
        if (path.find('\\') != std::string::npos) {
            std::string slashes = path;
            std::replace(slashes.begin(), slashes.end(), '\\', '/');
            push(slashes);
        }
        push(path);
    }
    ListLocation found;

private:
    void push(std::string_view path) {
        const bool isWhole = path.front() == '/';
        std::string whole(isWhole ? "" : folder_);
        keep(followed("/", whole.append("/").append(path), '/'));
    }

    void addOfWindows(std::string path) {
        std::replace(path.begin(), path.end(), '/', '\\');
        if (path.starts_with("\\\\")) {  // a share
            found.network = true;
        } else if (hasDrive(path)) {
            keep(followed(path.substr(0, 2) + '\\', std::string_view(path).substr(2), '\\'));
        } else if (hasDrive(folder_)) {
            std::string whole(path.front() == '\\' ? "" : folder_.substr(2));
            keep(followed(std::string(folder_.substr(0, 2)) + '\\', whole.append("\\").append(path), '\\'));
        }
    }

    void keep(std::string path) {
        if (path.size() <= kMostPathBytes &&
            std::find(found.paths.begin(), found.paths.end(), path) == found.paths.end())
            found.paths.push_back(std::move(path));
    }

    std::string_view folder_;
    char separator_;
};

/// What is behind "file://": of this machine, or of another one.
ListLocation locateFile(std::string_view rest, std::string_view folder, char separator) {
    const std::size_t hostEnd = std::min(rest.find_first_of("/\\"), rest.size());
    const std::string_view host = rest.substr(0, hostEnd);
    // Some write a drive where the host should be, and none before it.
    if (!host.empty() && !text::sameWithoutCase(host, "localhost") && !hasDrive(host)) return {true, {}};
    std::string_view path = hasDrive(host) ? rest : rest.substr(hostEnd);
    if (separator == '\\' && path.size() > 2 && isSlash(path[0]) && hasDrive(path.substr(1))) path.remove_prefix(1);
    Locating locating(folder, separator);
    locating.add(withoutPercents(path));
    locating.add(std::string(path));
    return std::move(locating.found);
}

}  // namespace

std::string withoutPercents(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isNumber =
            text[at] == '%' && at + 2 < text.size() && digit(text[at + 1]) >= 0 && digit(text[at + 2]) >= 0;
        result += isNumber ? static_cast<char>(digit(text[at + 1]) * 16 + digit(text[at + 2])) : text[at];
        if (isNumber) at += 2;
    }
    return result;
}

std::string folderOf(std::string_view path, char separator) {
    const std::size_t last = path.rfind(separator);
    if (last == std::string_view::npos) return {};
    const bool isRoot = last == 0 || (separator == '\\' && last == 2 && hasDrive(path));
    return std::string(path.substr(0, last + (isRoot ? 1 : 0)));
}

ListLocation locate(std::string_view location, std::string_view folder, char separator, bool isAddress) {
    const std::string protocol = protocolOf(location);
    if (protocol == "file") return locateFile(location.substr(7), folder, separator);
    if (!protocol.empty() || location.starts_with("\\\\")) return {true, {}};
    constexpr std::string_view kFile = "file:";
    if (text::sameWithoutCase(location.substr(0, kFile.size()), kFile)) {
        return locateFile(location.substr(kFile.size()), folder, separator);
    }
    Locating locating(folder, separator);
    const std::string decoded = withoutPercents(location);
    if (isAddress) locating.add(decoded);
    locating.add(std::string(location));
    if (!isAddress) locating.add(decoded);
    return std::move(locating.found);
}

}  // namespace corvane
