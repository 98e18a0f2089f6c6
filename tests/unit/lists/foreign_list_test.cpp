// SPDX-License-Identifier: GPL-3.0-or-later
#include "lists/foreign_list.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

Texts m3u(std::string_view text) { return readForeignList(ListFormat::M3u, text).locations; }
Texts pls(std::string_view text) { return readForeignList(ListFormat::Pls, text).locations; }
Texts xspf(std::string_view text) { return readForeignList(ListFormat::Xspf, text).locations; }
Texts asx(std::string_view text) { return readForeignList(ListFormat::Asx, text).locations; }

TEST(ForeignLists, AreKnownByTheirExtension) {
    EXPECT_EQ(listFormatOf("M3U"), ListFormat::M3u);
    EXPECT_EQ(listFormatOf("M3U8"), ListFormat::M3u);
    EXPECT_EQ(listFormatOf("PLS"), ListFormat::Pls);
    EXPECT_EQ(listFormatOf("XSPF"), ListFormat::Xspf);
    EXPECT_EQ(listFormatOf("ASX"), ListFormat::Asx);
    EXPECT_EQ(listFormatOf("WAX"), ListFormat::Asx);
    EXPECT_EQ(listFormatOf("MP3"), std::nullopt);
    EXPECT_EQ(listFormatOf(""), std::nullopt);
}

/// LIST-48: M3U and M3U8: a name a line, whatever ends the lines; lines that begin with "#" are remarks
TEST(ForeignLists, M3u) {
    EXPECT_EQ(m3u("#EXTM3U\r\n#EXTINF:12,One\r\n one.mp3 \r\r\n\nb c.mp3\n#\nlast.mp3"),
              (Texts{"one.mp3", "b c.mp3", "last.mp3"}));
    EXPECT_EQ(m3u("a.mp3\rb.mp3\r"), (Texts{"a.mp3", "b.mp3"}));
    EXPECT_EQ(m3u(""), Texts{});
}

TEST(ForeignLists, AreReadInAnyEncoding) {
    EXPECT_EQ(m3u("\xEF\xBB\xBF"
                  "caf\xC3\xA9.mp3"),
              Texts{"café.mp3"});
    EXPECT_EQ(m3u("caf\xE9.mp3"), Texts{"café.mp3"});
    EXPECT_EQ(m3u("\x96\xE9\x82\xCC\x89\xCC.mp3\r\n"), Texts{"夜の歌.mp3"});
    EXPECT_EQ(m3u(std::string("\xFF\xFE"
                              "a\0\n\0b\0",
                              8)),
              (Texts{"a", "b"}));
}

/// LIST-49: PLS: File1, File2 and on by their numbers, in whatever order they stand
TEST(ForeignLists, Pls) {
    EXPECT_EQ(pls("[playlist]\nNumberOfEntries=3\nFile10=ten.mp3\nTitle10=Ten\nfile2= two.mp3 "
                  "\nFile1=one.mp3\nFile=x\nFileA=x\n"
                  "Filename1=x\nFile99999999999=x\nVersion=2\n"),
              (Texts{"one.mp3", "two.mp3", "ten.mp3"}));
}

/// LIST-50: XSPF: of each track the first location
TEST(ForeignLists, Xspf) {
    EXPECT_EQ(
        xspf("<?xml version=\"1.0\"?><playlist xmlns=\"http://xspf.org/ns/0/\"><location>list</location><trackList>"
             "<track><title>T</title><location>\n a%20b.mp3 \n</location><location>other</location></track>"
             "<!-- <track><location>no</location></track> -->"
             "<x:TRACK><x:location>R&amp;B &#x591C;&#33;.mp3</x:location></x:TRACK>"
             "<track><location><![CDATA[a&amp;b.mp3]]></location></track><track><title>none</title></track>"
             "</trackList></playlist>"),
        (Texts{"a%20b.mp3", "R&B 夜!.mp3", "a&amp;b.mp3"}));
    EXPECT_TRUE(readForeignList(ListFormat::Xspf, "").areAddresses);
}

/// LIST-51: ASX: of each entry the first place, and the lists it leads to; it need not be XML
TEST(ForeignLists, Asx) {
    EXPECT_EQ(
        asx("<ASX Version = \"3.0\">\n<Title>R & B > all</Title><Entry><Ref HREF = \"a & b.wma\" /><ref href='c.wma'/>"
            "</Entry>\n<ENTRY><REF HREF=d.wma></ENTRY><EntryRef href=\"more.asx\"/><entry><param name=\"href\" "
            "value=\"x\"/>"
            "<ref other=\"y\" href=\"e.wma\"/></entry></ASX>"),
        (Texts{"a & b.wma", "d.wma", "more.asx", "e.wma"}));
    EXPECT_EQ(asx("[Reference]\r\nRef2=b.wma\r\nRef1=a.wma\r\n"), (Texts{"a.wma", "b.wma"}));
}

/// LIST-52: A list that is cut off, nested without end or of a million entries gives what can be read of it
TEST(ForeignLists, WhatIsCutOff) {
    const std::string whole = "<playlist><trackList><track><location>a.mp3</location></track><track><location>b.mp3";
    EXPECT_EQ(xspf(whole), Texts{"a.mp3"});
    for (std::size_t size = 0; size <= whole.size(); ++size) EXPECT_LE(xspf(whole.substr(0, size)).size(), 1U);
    EXPECT_EQ(asx("<asx><entry><ref href=\"a.wma\"/></entry><entry><ref href=\"b"), (Texts{"a.wma", "b"}));
    EXPECT_EQ(asx("<entry><ref href"), Texts{});
    EXPECT_EQ(asx("<entry><ref href="), Texts{});
    EXPECT_EQ(asx("<"), Texts{});
    EXPECT_EQ(asx("</"), Texts{});
    EXPECT_EQ(asx("<!DOCTYPE x [ <!ENTITY a \"<ref href='x'/>\"> ]><entry><ref href=\"&a;\"/></entry>"), Texts{"&a;"})
        << "what is declared means nothing";
    EXPECT_EQ(asx("<!--"), Texts{});
    EXPECT_EQ(asx("<![CDATA["), Texts{});
}

TEST(ForeignLists, AMillionEntriesAreManyTooMany) {
    std::string lines, numbered, tracks, entries;
    for (int i = 0; i < 1'000'000; ++i) lines += "a\n";
    for (int i = 0; i < 50'000; ++i) {
        numbered += "File" + std::to_string(i) + "=a\n";
        tracks += "<track><location>a</location></track>";
        entries += "<entry><ref href=\"a\"/></entry>";
    }
    EXPECT_EQ(m3u(lines).size(), kMostForeignEntries);
    EXPECT_EQ(pls(numbered).size(), kMostForeignEntries);
    EXPECT_EQ(xspf(tracks).size(), kMostForeignEntries);
    EXPECT_EQ(asx(entries).size(), kMostForeignEntries);
    EXPECT_EQ(m3u(std::string(kMostForeignBytes, '#') + "\na.mp3\n").size(), 0U) << "what stands behind so much";
    EXPECT_EQ(xspf(std::string(1'000'000, '<') + "track>").size(), 0U);
}

TEST(ForeignLists, NamesOfCharacters) {
    EXPECT_EQ(asx("<ref href=\"&lt;&gt;&quot;&apos;&amp;&#65;&#x41;&nbsp;&#0;&#x110000;&#;&#x;&;&\"/>"),
              Texts{"<>\"'&AA&nbsp;&#0;&#x110000;&#;&#x;&;&"});
    EXPECT_EQ(asx("<ref href=\"&amp;lt;\"/>"), Texts{"&lt;"}) << "once";
}

}  // namespace
}  // namespace corvane
