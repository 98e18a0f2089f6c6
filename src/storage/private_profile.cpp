// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/private_profile.h"

#include <algorithm>
#include <map>
#include <optional>

#include "types/text.h"

namespace corvane {

namespace {

using text::LessWithoutCase;
using text::sameWithoutCase;
using text::takeLine;
using text::trimmed;

constexpr std::string_view kLineEnd = "\r\n";

bool isQuote(char c) { return c == '"' || c == '\''; }

/// What reading makes of the text behind the "=", before it is cut to the buffer.
std::string_view readValue(std::string_view text) {
    text = trimmed(text);
    if (text.size() >= 2 && isQuote(text.front()) && text.back() == text.front()) {
        text = text.substr(1, text.size() - 2);
    }
    return text.substr(0, text.find('\0'));
}

/// What is written behind the "=" so that reading gives the value.
std::string writtenValue(std::string_view value) {
    std::string written(value.substr(0, value.find('\0')));
    std::replace_if(
        written.begin(), written.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return readValue(written) == written ? written : '"' + written + '"';
}

/// The name in a "[name]" line; empty for any other line.
std::optional<std::string_view> sectionName(std::string_view line) {
    line = trimmed(line);
    if (line.empty() || line.front() != '[') return std::nullopt;
    const std::size_t end = line.find(']');
    if (end == std::string_view::npos) return std::nullopt;
    return trimmed(line.substr(1, end - 1));
}

struct KeyLine {
    std::string_view key;
    std::string_view value;  ///< all that follows the "="
};

std::optional<KeyLine> keyLine(std::string_view line) {
    line = trimmed(line);
    if (line.empty() || line.front() == ';') return std::nullopt;
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return std::nullopt;
    return KeyLine{trimmed(line.substr(0, equals)), line.substr(equals + 1)};
}

/// The keys to set, each once.
class Wanted {
public:
    explicit Wanted(const std::vector<ProfileKey>& keys) {
        for (const auto& [key, value] : keys) {
            const auto [place, isNew] = places_.try_emplace(key, lines_.size());
            if (isNew) lines_.push_back({key, {}, false});
            lines_[place->second].value = writtenValue(value);  // of two values the later one stays
        }
    }

    /// The key's line under the spelling it is found with; empty when it is not wanted or was taken before.
    std::optional<std::string> take(std::string_view key) {
        const auto place = places_.find(key);
        if (place == places_.end() || lines_[place->second].taken) return std::nullopt;
        lines_[place->second].taken = true;
        return line(key, lines_[place->second].value);
    }

    /// The lines of all keys that were not taken, in the order given.
    std::string rest() const {
        std::string text;
        for (const Line& each : lines_) {
            if (!each.taken) text += line(each.key, each.value);
        }
        return text;
    }

private:
    struct Line {
        std::string key;
        std::string value;
        bool taken;
    };

    static std::string line(std::string_view key, const std::string& value) {
        return std::string(key).append("=").append(value).append(kLineEnd);
    }

    std::vector<Line> lines_;
    std::map<std::string, std::size_t, LessWithoutCase> places_;
};

}  // namespace

ProfileSection::ProfileSection(std::string_view text, std::string_view section) {
    text = text::withoutMark(text);
    bool inside = false;
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        if (const auto name = sectionName(line)) {
            if (inside) break;
            inside = sameWithoutCase(*name, section);
        } else if (inside) {
            if (const auto found = keyLine(line)) entries_.push_back({found->key, found->value});
        }
    }
    std::stable_sort(entries_.begin(), entries_.end(),
                     [](const Entry& a, const Entry& b) { return LessWithoutCase{}(a.key, b.key); });
}

std::string ProfileSection::get(std::string_view key, std::string_view byDefault, std::size_t bufferSize) const {
    const auto found = std::lower_bound(entries_.begin(), entries_.end(), key, [](const Entry& entry, auto wanted) {
        return LessWithoutCase{}(entry.key, wanted);
    });
    const bool exists = found != entries_.end() && sameWithoutCase(found->key, key);
    const std::string_view value = exists ? readValue(found->value) : byDefault;
    return std::string(value.substr(0, std::max<std::size_t>(bufferSize, 1) - 1));
}

std::string withProfileKeys(std::string_view text, std::string_view section, const std::vector<ProfileKey>& keys) {
    if (keys.empty()) return std::string(text);
    Wanted wanted(keys);
    std::string result;
    result.reserve(text.size() + text.size() / 8);
    result = text.substr(0, text.size() - text::withoutMark(text).size());
    text = text::withoutMark(text);

    enum class Place { Before, Inside, After } place = Place::Before;
    std::size_t sectionEnd = 0;  // in the result, behind the section's last line that is not blank
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        if (const auto name = sectionName(line)) {
            if (place == Place::Inside) {
                place = Place::After;
            } else if (place == Place::Before && sameWithoutCase(*name, section)) {
                place = Place::Inside;
            }
        }
        std::optional<std::string> changed;
        if (place == Place::Inside) {
            if (const auto found = keyLine(line)) changed = wanted.take(found->key);
        }
        if (changed) {
            result += *changed;
        } else {
            result.append(line).append(kLineEnd);
        }
        if (place == Place::Inside && !trimmed(line).empty()) sectionEnd = result.size();
    }

    if (place == Place::Before) {
        result.append("[").append(section).append("]").append(kLineEnd);
        sectionEnd = result.size();
    }
    result.insert(sectionEnd, wanted.rest());
    return result;
}

std::string withoutProfileKeys(std::string_view text, std::string_view section, const std::vector<std::string>& keys) {
    if (keys.empty()) return std::string(text);
    const auto isGone = [&keys](std::string_view line) {
        const auto found = keyLine(line);
        return found && std::any_of(keys.begin(), keys.end(),
                                    [&](const std::string& each) { return sameWithoutCase(each, found->key); });
    };
    std::string result(text.substr(0, text.size() - text::withoutMark(text).size()));
    text = text::withoutMark(text);
    bool inside = false;
    while (!text.empty()) {
        const std::string_view before = text;
        const std::string_view line = takeLine(text);
        if (const auto name = sectionName(line)) inside = sameWithoutCase(*name, section);
        if (!inside || !isGone(line)) result.append(before.substr(0, before.size() - text.size()));
    }
    return result;
}

}  // namespace corvane
