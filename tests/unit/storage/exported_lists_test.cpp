// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/exported_lists.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using Entries = std::vector<ExportedEntry>;

std::string lineOf(const std::string& path, const std::string& folder = "/m", char separator = '/') {
    const std::string text = writeM3u8("", {{path, "", -1}}, folder, separator);
    const std::string before = "#EXTM3U\n#EXTINF:-1,\n";
    EXPECT_EQ(text.substr(0, before.size()), before);
    return text.substr(before.size(), text.size() - before.size() - 1);
}

std::string locationOf(const std::string& path, const std::string& folder = "/m", char separator = '/') {
    const std::string text = writeXspf("", {{path, "", -1}}, folder, separator);
    const std::size_t from = text.find("<location>") + 10;
    return text.substr(from, text.find("</location>") - from);
}

/// LIST-40: A list that is written for other players names what lies below its folder from there on
TEST(ExportedLists, M3u8) {
    const Entries entries{{"/m/album/one.mp3", "One", 61}, {"/other/夜.flac", "夜", -1}};
    EXPECT_EQ(writeM3u8("Morning", entries, "/m", '/'),
              "#EXTM3U\n#PLAYLIST:Morning\n#EXTINF:61,One\nalbum/one.mp3\n#EXTINF:-1,夜\n/other/夜.flac\n");
}

TEST(ExportedLists, Xspf) {
    const Entries entries{{"/m/an album/one & two.mp3", "One & <two>", 61}, {"/other/夜.flac", "", -1}};
    EXPECT_EQ(writeXspf("A \"B\" & C", entries, "/m/", '/'),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<playlist version=\"1\" xmlns=\"http://xspf.org/ns/0/\">\n"
              "  <title>A \"B\" &amp; C</title>\n"
              "  <trackList>\n"
              "    <track>\n"
              "      <location>an%20album/one%20%26%20two.mp3</location>\n"
              "      <title>One &amp; &lt;two&gt;</title>\n"
              "      <duration>61000</duration>\n"
              "    </track>\n"
              "    <track>\n"
              "      <location>file:///other/%E5%A4%9C.flac</location>\n"
              "    </track>\n"
              "  </trackList>\n"
              "</playlist>\n");
}

TEST(ExportedLists, AFolderBesideIsNotBelow) {
    EXPECT_EQ(lineOf("/music/a.mp3", "/mus"), "/music/a.mp3");
    EXPECT_EQ(lineOf("/a.mp3", "/"), "a.mp3");
    EXPECT_EQ(lineOf("/a.mp3", ""), "/a.mp3");
    EXPECT_EQ(locationOf("/music/a.mp3", "/mus"), "file:///music/a.mp3");
}

/// LIST-41: A path that a line of M3U8 would not give back is written so that it does
TEST(ExportedLists, WhatALineWouldChange) {
    EXPECT_EQ(lineOf("/m/#1.mp3"), "./#1.mp3");
    EXPECT_EQ(lineOf("/m/http://x.mp3"), "./http://x.mp3");
    EXPECT_EQ(lineOf("/m/ a.mp3"), "file:///m/%20a.mp3");
    EXPECT_EQ(lineOf("/m/a.mp3 "), "file:///m/a.mp3%20");
    EXPECT_EQ(lineOf("/m/a\nb.mp3"), "file:///m/a%0Ab.mp3");
    EXPECT_EQ(lineOf("/m/a\\b.mp3"), "file:///m/a%5Cb.mp3");
    EXPECT_EQ(lineOf("/m/caf\xE9.mp3"), "file:///m/caf%E9.mp3");
    EXPECT_EQ(lineOf("/m/100%.mp3"), "100%.mp3") << "what is on the line is the path";
    EXPECT_EQ(lineOf("/m/\"a\".mp3"), "file:///m/%22a%22.mp3");
}

TEST(ExportedLists, PathsOfWindows) {
    EXPECT_EQ(lineOf("C:\\Music\\An album\\a.mp3", "C:\\Music", '\\'), "An album\\a.mp3");
    EXPECT_EQ(lineOf("D:\\a.mp3", "C:\\Music", '\\'), "D:\\a.mp3");
    EXPECT_EQ(locationOf("C:\\Music\\An album\\a.mp3", "C:\\Music", '\\'), "An%20album/a.mp3");
    EXPECT_EQ(locationOf("D:\\My files\\a.mp3", "C:\\Music", '\\'), "file:///D:/My%20files/a.mp3");
    EXPECT_EQ(locationOf("\\\\box\\share\\a.mp3", "C:\\", '\\'), "file://box/share/a.mp3");
}

/// LIST-42: A title stands on one line and holds nothing that ends the list early
TEST(ExportedLists, TitlesOfAnyBytes) {
    EXPECT_EQ(writeM3u8("a\r\nb", {{"/m/a.mp3", "x\ny\x01z", -5}}, "/m", '/'),
              "#EXTM3U\n#PLAYLIST:a  b\n#EXTINF:-1,x y z\na.mp3\n");
    const std::string text = writeXspf("", {{"/m/a.mp3", "x\n\x01\xFF</title>", 0}}, "/m", '/');
    EXPECT_NE(text.find("<title>x  \uFFFD&lt;/title&gt;</title>"), std::string::npos) << text;
    EXPECT_NE(text.find("<duration>0</duration>"), std::string::npos) << text;
}

}  // namespace
}  // namespace corvane
