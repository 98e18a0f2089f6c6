// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/lone_drawing.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

std::string withImage(const std::string& address) {
    return "<svg xmlns=\"http://www.w3.org/2000/svg\"><image xlink:href=" + address + "/></svg>";
}

/// PIC-82: A drawing is drawn without what it names beside itself: other files, itself as a file, other drawings in its
///     text; one that cannot be looked through is not drawn
TEST(LoneDrawing, WhatItNamesBesideItselfIsBlankedOut) {
    for (const std::string address :
         {"evil.svg", "/home/ann/evil.svg", "file:///dev/zero", "http://example.org/a.png", " evil.svg",
          "&#101;vil.svg", "&name;", "data:image/svg+xml;base64,PHN2Zz4=", "data:image/png;base64,PHN2Zz4=",
          "data:image/png;base64,!iVBORw0KGgo", "data:,iVBORw0KGgo", "DATA:image/png;base64,iVBORw0KGgo", "\n#\"x"}) {
        for (const std::string quote : {"\"", "'"}) {
            if (address.find(quote) != std::string::npos) continue;
            const std::string written = withImage(quote + address + quote);
            const auto drawing = loneDrawing(written);
            ASSERT_TRUE(drawing) << address;
            if (address.front() == '\n') {
                EXPECT_EQ(*drawing, written);
            } else {
                EXPECT_EQ(*drawing, withImage(quote + std::string(address.size(), ' ') + quote)) << address;
            }
        }
    }
    EXPECT_EQ(loneDrawing("<a href = \n 'b' x='c'/><a x:href=\"d\"/>"), "<a href = \n ' ' x='c'/><a x:href=\" \"/>");
    EXPECT_EQ(loneDrawing("<?xml-stylesheet href=\"/dev/zero\" type=\"text/css\"?><svg/>"),
              "<?xml-stylesheet href=\"         \" type=\"text/css\"?><svg/>");
    EXPECT_EQ(loneDrawing("<a href=\"never ends"), "<a href=\"          ");
}

/// PIC-82
TEST(LoneDrawing, WhatStandsInItStays) {
    for (const std::string address : {"#part", " #part", "", "  ", "data:image/png;base64,iVBORw0KGgoAAA",
                                      "data:image/jpeg;base64,/9j/4AAQ", "data:image/gif;base64,R0lGODlh"}) {
        EXPECT_EQ(loneDrawing(withImage("'" + address + "'")), withImage("'" + address + "'")) << address;
    }
    for (const std::string text :
         {"", "<svg>href evil.svg href=</svg>", "hrefhref", "<svg a=\"hre\" f=\"b\"/>",
          "<?xml version='1.0' encoding='UTF-8'?><svg/>", "<?xml encoding = \"Iso-8859-1\"?><svg/>",
          "<!DOCTYPE svg [<!ENTITY ns \"http://example.org/ns\">]><svg/>"}) {
        EXPECT_EQ(loneDrawing(text), text);
    }
}

/// PIC-82
TEST(LoneDrawing, OneThatCannotBeLookedThroughIsNotDrawn) {
    using namespace std::string_literals;
    for (const std::string& text :
         {"\x1F\x8B\x08"s, "<\0s\0v\0g\0"s, "<?xml encoding='UTF-7'?><svg/>"s, "<?xml encoding='UTF-16'?><svg/>"s,
          "<?xml encoding UTF-8?><svg/>"s, "<!DOCTYPE svg [<!ATTLIST image xlink:href CDATA 'evil.svg'>]>"s,
          "<!DOCTYPE svg [<!ENTITY x '<image xlink:href=&#34;evil.svg&#34;/>'>]>"s,
          "<!ENTITY ok 'a'><!ENTITY x '&ok;&ok;'>"s, "<!ENTITY % x '%y;'>"s, "<!ENTITY x"s}) {
        EXPECT_EQ(loneDrawing(text), std::nullopt) << text;
    }
    EXPECT_TRUE(loneDrawing(std::string(kMostDrawingBytes, ' ')));
    EXPECT_FALSE(loneDrawing(std::string(kMostDrawingBytes + 1, ' ')));
    EXPECT_TRUE(loneDrawing(std::string(kMostDrawingTags, '<')));
    EXPECT_FALSE(loneDrawing(std::string(kMostDrawingTags + 1, '<')));
}

}  // namespace
}  // namespace corvane
