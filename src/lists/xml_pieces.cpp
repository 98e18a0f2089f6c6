// SPDX-License-Identifier: GPL-3.0-or-later
#include "lists/xml_pieces.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "types/text.h"
#include "types/text_encoding.h"

namespace corvane {

namespace {

bool isSpace(char c) { return text::isBlank(c) || c == '\r' || c == '\n'; }

bool endsName(char c) { return isSpace(c) || c == '/' || c == '>' || c == '=' || c == '<'; }

std::string_view takeName(std::string_view& text) {
    const auto end = std::find_if(text.begin(), text.end(), endsName);
    const std::string_view name = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(name.size());
    return name;
}

void passSpaces(std::string_view& text) {
    while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
}

/// A value in quotes of either kind, or without any, up to a space.
std::string_view takeValue(std::string_view& text) {
    const bool isQuoted = !text.empty() && (text.front() == '"' || text.front() == '\'');
    std::size_t end = 0;
    if (isQuoted) {
        end = std::min(text.find(text.front(), 1), text.size());
    } else {
        while (end < text.size() && !isSpace(text[end])) ++end;
    }
    const std::size_t from = isQuoted ? 1 : 0;
    const std::string_view value = text.substr(from, end - from);
    text.remove_prefix(std::min(text.size(), end + from));
    return value;
}

std::optional<char32_t> numbered(std::string_view digits) {
    const bool isHex = !digits.empty() && (digits.front() == 'x' || digits.front() == 'X');
    if (isHex) digits.remove_prefix(1);
    if (digits.empty() || digits.size() > 8) return std::nullopt;
    std::uint64_t number = 0;
    for (const char c : digits) {
        const char small = text::lower(c);
        const bool isDigit = small >= '0' && small <= '9';
        if (!isDigit && !(isHex && small >= 'a' && small <= 'f')) return std::nullopt;
        number = number * (isHex ? 16 : 10) + static_cast<std::uint64_t>(isDigit ? small - '0' : small - 'a' + 10);
    }
    if (number == 0 || number > 0x10FFFF) return std::nullopt;
    return static_cast<char32_t>(number);
}

/// What stands between "&" and ";".
std::optional<char32_t> characterOf(std::string_view name) {
    struct Named {
        std::string_view name;
        char32_t character;
    };
    constexpr std::array<Named, 5> kNamed = {
        {{"amp", U'&'}, {"lt", U'<'}, {"gt", U'>'}, {"quot", U'"'}, {"apos", U'\''}}};
    if (!name.empty() && name.front() == '#') return numbered(name.substr(1));
    for (const Named& each : kNamed) {
        if (each.name == name) return each.character;
    }
    return std::nullopt;
}

}  // namespace

std::string withoutXmlNames(std::string_view text) {
    constexpr std::size_t kLongestName = 10;
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text[at] == '&' ? text.substr(at, kLongestName + 2).find(';') : std::string_view::npos;
        const auto character = end == std::string_view::npos ? std::nullopt : characterOf(text.substr(at + 1, end - 1));
        if (character) {
            text::appendUtf8(result, *character);
            at += end + 1;
        } else {
            result += text[at++];
        }
    }
    return result;
}

bool XmlPieces::next() {
    if (ended_) {
        ended_ = false;
        kind_ = Kind::End;
        return true;
    }
    while (!rest_.empty()) {
        if (rest_.front() != '<') {
            kind_ = Kind::Text;
            isLiteral_ = false;
            inner_ = rest_.substr(0, rest_.find('<'));
            rest_.remove_prefix(inner_.size());
            return true;
        }
        if (rest_.starts_with("<!--")) {
            passBy("-->");
        } else if (rest_.starts_with("<![CDATA[")) {
            rest_.remove_prefix(9);
            kind_ = Kind::Text;
            isLiteral_ = true;
            inner_ = rest_.substr(0, rest_.find("]]>"));
            rest_.remove_prefix(std::min(rest_.size(), inner_.size() + 3));
            return true;
        } else if (rest_.starts_with("<?")) {
            passBy("?>");
        } else if (rest_.starts_with("<!")) {
            passDeclaration();
        } else if (takeTag()) {
            return true;
        }
    }
    return false;
}

void XmlPieces::passBy(std::string_view end) {
    const std::size_t found = rest_.find(end);
    rest_.remove_prefix(found == std::string_view::npos ? rest_.size() : found + end.size());
}

/// With all that it declares between "[" and "]".
void XmlPieces::passDeclaration() {
    bool inside = false;
    std::size_t at = 0;
    for (; at < rest_.size() && (inside || rest_[at] != '>'); ++at) {
        if (rest_[at] == '[') inside = true;
        if (rest_[at] == ']') inside = false;
    }
    rest_.remove_prefix(std::min(rest_.size(), at + 1));
}

/// False: what begins with "<" here is none.
bool XmlPieces::takeTag() {
    rest_.remove_prefix(1);
    const bool isEnd = !rest_.empty() && rest_.front() == '/';
    if (isEnd) rest_.remove_prefix(1);
    const std::string_view name = takeName(rest_);
    if (name.empty()) return false;
    name_ = text::lower(std::string(name.substr(name.rfind(':') + 1)));
    char quote = '\0';
    std::size_t end = 0;
    for (; end < rest_.size() && (quote != '\0' || rest_[end] != '>'); ++end) {
        const char c = rest_[end];
        if (c == quote) {
            quote = '\0';
        } else if (quote == '\0' && (c == '"' || c == '\'')) {
            quote = c;
        }
    }
    inner_ = rest_.substr(0, end);
    rest_.remove_prefix(std::min(rest_.size(), end + 1));
    ended_ = !isEnd && !inner_.empty() && inner_.back() == '/';
    if (ended_) inner_.remove_suffix(1);
    kind_ = isEnd ? Kind::End : Kind::Begin;
    return true;
}

std::string XmlPieces::text() const { return isLiteral_ ? std::string(inner_) : withoutXmlNames(inner_); }

std::string XmlPieces::attribute(std::string_view name) const {
    for (std::string_view rest = inner_; !rest.empty();) {
        passSpaces(rest);
        const std::string_view found = takeName(rest);
        passSpaces(rest);
        if (rest.empty()) break;
        if (rest.front() != '=') {
            if (found.empty()) rest.remove_prefix(1);
            continue;
        }
        rest.remove_prefix(1);
        passSpaces(rest);
        const std::string_view value = takeValue(rest);
        if (text::sameWithoutCase(found, name)) return withoutXmlNames(value);
    }
    return {};
}

}  // namespace corvane
