// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/lone_drawing.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace corvane {

namespace {

using std::string_view;

constexpr string_view kSpaces = " \t\r\n";

bool isOneOf(string_view text, const auto& all) { return std::find(all.begin(), all.end(), text) != all.end(); }

/// What stands in quotes from a place on, behind blanks; its place in the text. Empty: no quote stands there.
struct Quoted {
    std::size_t from = 0, count = 0;
};
std::optional<Quoted> quotedAt(string_view text, std::size_t at) {
    at = text.find_first_not_of(kSpaces, at);
    if (at == string_view::npos || (text[at] != '"' && text[at] != '\'')) return std::nullopt;
    const std::size_t end = std::min(text.find(text[at], at + 1), text.size());
    return Quoted{at + 1, end - at - 1};
}

/// Whether all that counts in the text stands there in ASCII, as far as the text says itself.
bool holdsAscii(string_view text) {
    constexpr std::array<string_view, 5> kThatHold = {"utf-8", "us-ascii", "ascii", "iso-8859-1", "windows-1252"};
    if (text.find('\0') != string_view::npos) return false;
    const std::size_t declared = text.find("<?xml");
    if (declared == string_view::npos) return true;
    const string_view declaration = text.substr(declared, text.find("?>", declared) - declared);
    const std::size_t name = declaration.find("encoding");
    if (name == string_view::npos) return true;
    const std::size_t equals = declaration.find_first_not_of(kSpaces, name + string_view("encoding").size());
    if (equals == string_view::npos || declaration[equals] != '=') return false;
    const auto quoted = quotedAt(declaration, equals + 1);
    if (!quoted) return false;
    std::string encoding(declaration.substr(quoted->from, quoted->count));
    for (char& c : encoding) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return isOneOf(encoding, kThatHold);
}

/// Whether declarations may put something into the text that does not stand there.
bool hasHiddenText(string_view text) {
    constexpr string_view kEntity = "<!ENTITY";
    if (text.find("<!ATTLIST") != string_view::npos) return true;
    for (std::size_t at = text.find(kEntity); at != string_view::npos; at = text.find(kEntity, at)) {
        at = text.find_first_of("\"'", at);
        if (at == string_view::npos) return true;
        const auto value = quotedAt(text, at);
        if (text.substr(value->from, value->count).find_first_of("<&%") != string_view::npos) return true;
        at = value->from + value->count;
    }
    return false;
}

/// A part of the drawing itself, or a picture of a bounded kind that stands in its text. The kind that is told there
/// is not believed.
bool isInside(string_view value) {
    // How the first bytes of PNG, JPEG and GIF begin in that writing.
    constexpr std::array<string_view, 3> kPictures = {"iVBORw0KGgo", "/9j/", "R0lGOD"};
    constexpr string_view kWriting = "base64,";
    const std::size_t first = value.find_first_not_of(kSpaces);
    if (first == string_view::npos) return true;
    value.remove_prefix(first);
    if (value.starts_with('#')) return true;
    const std::size_t writing = value.find(kWriting);
    if (!value.starts_with("data:") || writing == string_view::npos) return false;
    const string_view bytes = value.substr(writing + kWriting.size());
    return std::any_of(kPictures.begin(), kPictures.end(), [&](string_view each) { return bytes.starts_with(each); });
}

}  // namespace

std::optional<std::string> loneDrawing(std::string bytes) {
    constexpr string_view kName = "href", kCompressed = "\x1F\x8B";
    if (static_cast<std::int64_t>(bytes.size()) > kMostDrawingBytes ||
        std::count(bytes.begin(), bytes.end(), '<') > kMostDrawingTags) {
        return std::nullopt;
    }
    if (bytes.starts_with(kCompressed) || !holdsAscii(bytes) || hasHiddenText(bytes)) return std::nullopt;
    for (std::size_t at = bytes.find(kName); at != std::string::npos; at = bytes.find(kName, at)) {
        at = bytes.find_first_not_of(kSpaces, at + kName.size());
        if (at == std::string::npos) break;
        if (bytes[at] != '=') continue;
        const auto value = quotedAt(bytes, at + 1);
        if (!value) continue;
        if (!isInside(string_view(bytes).substr(value->from, value->count))) {
            bytes.replace(value->from, value->count, value->count, ' ');
        }
        at = value->from;
    }
    return bytes;
}

}  // namespace corvane
