// SPDX-License-Identifier: GPL-3.0-or-later
#include "lists/foreign_list.h"

#include <algorithm>
#include <array>
#include <utility>

#include "lists/xml_pieces.h"
#include "types/text.h"
#include "types/text_encoding.h"

namespace corvane {

namespace {

using Locations = std::vector<std::string>;

std::string_view trimmedAll(std::string_view text) {
    const auto isEdge = [](char c) { return text::isBlank(c) || c == '\r' || c == '\n'; };
    while (!text.empty() && isEdge(text.front())) text.remove_prefix(1);
    while (!text.empty() && isEdge(text.back())) text.remove_suffix(1);
    return text;
}

/// Takes what is left of a list, until it is full.
class Taken {
public:
    void add(std::string_view location) {
        location = trimmedAll(location);
        if (!location.empty() && !full()) locations_.emplace_back(location);
    }
    bool full() const { return locations_.size() >= kMostForeignEntries; }
    Locations take() { return std::move(locations_); }

private:
    Locations locations_;
};

Locations readM3u(std::string_view text) {
    Taken taken;
    while (!text.empty() && !taken.full()) {
        const std::string_view line = text::trimmed(text::takeLine(text));
        if (!line.starts_with('#')) taken.add(line);
    }
    return taken.take();
}

/// The number behind a key's name, such as 12 of "File12"; empty: it is another key.
std::optional<std::size_t> numberBehind(std::string_view key, std::string_view name) {
    constexpr std::size_t kMostDigits = 9;
    if (key.size() <= name.size() || key.size() > name.size() + kMostDigits) return std::nullopt;
    if (!text::sameWithoutCase(key.substr(0, name.size()), name)) return std::nullopt;
    std::size_t number = 0;
    for (const char digit : key.substr(name.size())) {
        if (digit < '0' || digit > '9') return std::nullopt;
        number = number * 10 + static_cast<std::size_t>(digit - '0');
    }
    return number;
}

/// Lines "NAME1=…", by their numbers, whatever their order.
Locations readNumbered(std::string_view text, std::string_view name) {
    std::vector<std::pair<std::size_t, std::string_view>> found;
    while (!text.empty() && found.size() < kMostForeignEntries) {
        const std::string_view line = text::takeLine(text);
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) continue;
        if (const auto number = numberBehind(text::trimmed(line.substr(0, equals)), name)) {
            found.emplace_back(*number, line.substr(equals + 1));
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    Taken taken;
    for (const auto& each : found) taken.add(each.second);
    return taken.take();
}

/// Of a track the first location: the others are the same elsewhere.
Locations readXspf(std::string_view text) {
    Taken taken;
    bool inTrack = false, inLocation = false, has = false;
    std::string location;
    for (XmlPieces pieces(text); !taken.full() && pieces.next();) {
        if (pieces.kind() == XmlPieces::Kind::Text) {
            if (inLocation) location += pieces.text();
            continue;
        }
        const bool begins = pieces.kind() == XmlPieces::Kind::Begin;
        if (pieces.name() == "track") {
            inTrack = begins;
            has = inLocation = false;
        } else if (pieces.name() == "location" && inTrack) {
            if (!begins && inLocation && !has) {
                taken.add(location);
                has = true;
            }
            inLocation = begins;
            location.clear();
        }
    }
    return taken.take();
}

/// Of an entry the first place: the others are the same elsewhere. "entryref" leads to another list.
Locations readAsx(std::string_view text) {
    if (text.find('<') == std::string_view::npos) return readNumbered(text, "Ref");
    Taken taken;
    bool has = false;
    for (XmlPieces pieces(text); !taken.full() && pieces.next();) {
        if (pieces.kind() != XmlPieces::Kind::Begin) continue;
        if (pieces.name() == "entry") {
            has = false;
        } else if (pieces.name() == "entryref" || (pieces.name() == "ref" && !has)) {
            taken.add(pieces.attribute("href"));
            has = has || pieces.name() == "ref";
        }
    }
    return taken.take();
}

struct Row {
    std::string_view extension;
    ListFormat format;
};
constexpr std::array<Row, 7> kRows = {{{"M3U", ListFormat::M3u},
                                       {"M3U8", ListFormat::M3u},
                                       {"PLS", ListFormat::Pls},
                                       {"XSPF", ListFormat::Xspf},
                                       {"ASX", ListFormat::Asx},
                                       {"WAX", ListFormat::Asx},
                                       {"WVX", ListFormat::Asx}}};

}  // namespace

std::optional<ListFormat> listFormatOf(std::string_view extension) {
    for (const Row& row : kRows) {
        if (row.extension == extension) return row.format;
    }
    return std::nullopt;
}

std::vector<std::string> listExtensions() {
    std::vector<std::string> all;
    for (const Row& row : kRows) all.emplace_back(row.extension);
    return all;
}

std::vector<std::string> listMimeTypes() {
    return {"audio/x-mpegurl", "application/vnd.apple.mpegurl",
            "audio/x-scpls",   "application/xspf+xml",
            "audio/x-ms-asx",  "application/x-cue"};
}

ForeignList readForeignList(ListFormat format, std::string_view bytes) {
    const std::string text = text::toUtf8(bytes.substr(0, kMostForeignBytes));
    switch (format) {
        case ListFormat::Pls:
            return {readNumbered(text, "File"), false};
        case ListFormat::Xspf:
            return {readXspf(text), true};
        case ListFormat::Asx:
            return {readAsx(text), false};
        case ListFormat::M3u:
            break;
    }
    return {readM3u(text), false};
}

}  // namespace corvane
