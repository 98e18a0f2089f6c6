// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/instance_call.h"

namespace corvane {

std::string callOf(const std::vector<std::string>& files) {
    std::string text;
    for (const std::string& file : files) text += file + '\0';
    return text;
}

std::size_t fittingInCall(const std::vector<std::string>& files, std::size_t mostBytes) {
    std::size_t bytes = 0, count = 0;
    while (count < files.size() && (bytes += files[count].size() + 1) <= mostBytes) ++count;
    return count;
}

bool CallReader::take(std::string_view piece) {
    if (piece.size() > most_ - text_.size()) {
        text_.clear();
        return false;
    }
    text_ += piece;
    return true;
}

std::vector<std::string> CallReader::files() const {
    std::vector<std::string> files;
    std::string_view left = text_;
    for (std::size_t end = left.find('\0'); end != std::string_view::npos; end = left.find('\0')) {
        if (end > 0) files.emplace_back(left.substr(0, end));
        left.remove_prefix(end + 1);
    }
    return files;
}

}  // namespace corvane
