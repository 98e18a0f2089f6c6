// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/shipped_skins.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace corvane {

namespace {

constexpr std::size_t kMostSkinFileBytes = std::size_t{64} * 1024 * 1024;
constexpr std::size_t kMostRecordBytes = std::size_t{1} * 1024 * 1024;

/// Names of the shipped files that the folder was ever given, one a line.
constexpr const char* kRecord = ".shipped";

/// Files of one skin begin alike: "BRASS" of BRASS.BMP, BRASS.CSV and BRASS@2X.BMP.
std::string skinName(const std::string& file) { return file.substr(0, file.find_first_of(".@")); }

std::set<std::string> linesOf(const std::string& text) {
    std::set<std::string> lines;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find('\n', from), text.size());
        if (end > from) lines.insert(text.substr(from, end - from));
        from = end + 1;
    }
    return lines;
}

}  // namespace

void giveSkins(Files& files, const std::string& shipped, const std::string& own) {
    const auto in = [&](const std::string& folder, const std::string& name) {
        return folder + files.separator() + name;
    };
    std::set<std::string> given = linesOf(files.read(in(own, kRecord), kMostRecordBytes).value_or(""));
    const auto isNew = [&](const std::string& name) { return !given.contains(name); };
    const std::vector<std::string> names = files.list(shipped, "*.BMP;*.CSV");
    if (std::none_of(names.begin(), names.end(), isNew)) return;

    std::map<std::string, std::string> contents;
    std::set<std::string> changed;
    for (const std::string& name : names) {
        auto bytes = files.read(in(shipped, name), kMostSkinFileBytes);
        if (!bytes) continue;
        if (files.lookUp(in(own, name)) && files.read(in(own, name), bytes->size()) != bytes) {
            changed.insert(skinName(name));
        }
        contents.emplace(name, std::move(*bytes));
    }
    for (const auto& [name, bytes] : contents) {
        const bool copy = isNew(name) && !changed.contains(skinName(name)) && !files.lookUp(in(own, name));
        if (copy && !files.replace(in(own, name), bytes)) return;
    }
    given.insert(names.begin(), names.end());
    std::string lines;
    for (const std::string& name : given) lines += name + '\n';
    files.replace(in(own, kRecord), lines);
}

}  // namespace corvane
