// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/text.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

/// WIN-09
TEST(WindowsTexts, GoAndComeBack) {
    for (const char* text : {"", "plain",
                             "Gr\xC3\xBC\xC3\x9F"
                             "e",
                             "\xE6\x97\xA5\xE6\x9C\xAC", "\xF0\x9F\x8E\xB5 song"}) {
        EXPECT_EQ(fromWide(toWide(text)), text);
    }
    EXPECT_EQ(toWide("\xF0\x9F\x8E\xB5"), L"\xD83C\xDFB5");
}

/// WIN-09
TEST(WindowsTexts, ANameThatIsNoValidTextComesBackTheSame) {
    for (const wchar_t* name : {L"a\xD800", L"\xDC00z", L"\xDC00\xD800"}) EXPECT_EQ(toWide(fromWide(name)), name);
}

/// WIN-10: Bytes that are no UTF-8 are read in the system's code page
TEST(WindowsTexts, OtherBytesAreReadInTheSystemsCodePage) {
    EXPECT_FALSE(isUtf8("Gr\xFC\xDF"));
    EXPECT_EQ(toWide("Gr\xFC\xDF"), L"Gr\x00FC\x00DF") << "the tests' system is a western one";
    EXPECT_FALSE(isUtf8("\xC0\x80")) << "more bytes than it takes";
    EXPECT_FALSE(isUtf8("cut \xE6\x97"));
}

}  // namespace
}  // namespace corvane
