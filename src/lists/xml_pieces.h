// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane {

/// Takes the tags and texts of a text with XML's marks one after the other, well formed or not: what has no end ends
/// with the text. Remarks, declarations and instructions are passed over; nothing that they declare means anything. Of
/// the named characters only XML's own five are known. The text must outlive it.
class XmlPieces {
public:
    explicit XmlPieces(std::string_view text) : rest_(text) {}

    enum class Kind { Begin, End, Text };

    /// Goes to the next piece; a tag that ends itself is a begin, then an end. False: there is none.
    bool next();

    Kind kind() const { return kind_; }
    /// Of a tag: its name in small letters, without what is before a colon.
    const std::string& name() const { return name_; }
    /// Of a text: what it says.
    std::string text() const;
    /// Of a begin: the value of an attribute, whose name is given in small letters and found without regard to case;
    /// "" when it has none.
    std::string attribute(std::string_view name) const;

private:
    bool takeTag();
    void passBy(std::string_view end);
    void passDeclaration();

    std::string_view rest_;
    Kind kind_ = Kind::Text;
    std::string name_;
    std::string_view inner_;  ///< of a text: all of it; of a begin: what follows the name
    bool isLiteral_ = false;  ///< of a text: nothing in it stands for a character
    bool ended_ = false;      ///< the tag ends itself, and its end is still to come
};

/// The text with XML's five named characters and all numbered ones; what names no character stays as it stands.
std::string withoutXmlNames(std::string_view text);

}  // namespace corvane
