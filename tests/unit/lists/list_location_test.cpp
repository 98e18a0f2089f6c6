// SPDX-License-Identifier: GPL-3.0-or-later
#include "lists/list_location.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

Texts onLinux(std::string_view location, bool isAddress = false) {
    const ListLocation found = locate(location, "/m/list", '/', isAddress);
    return found.network ? Texts{"network"} : found.paths;
}

Texts onWindows(std::string_view location, bool isAddress = false) {
    const ListLocation found = locate(location, "C:\\m\\list", '\\', isAddress);
    return found.network ? Texts{"network"} : found.paths;
}

/// LIST-53: Names of a list are relative to its folder; separators of both systems divide
TEST(ListLocations, Paths) {
    EXPECT_EQ(onLinux("a.mp3"), Texts{"/m/list/a.mp3"});
    EXPECT_EQ(onLinux("./b/../c d.mp3"), Texts{"/m/list/c d.mp3"});
    EXPECT_EQ(onLinux("../../../../x.mp3"), Texts{"/x.mp3"});
    EXPECT_EQ(onLinux("/x//y.mp3"), Texts{"/x/y.mp3"});
    EXPECT_EQ(onLinux("sub\\a.mp3"), (Texts{"/m/list/sub/a.mp3", "/m/list/sub\\a.mp3"}));
    EXPECT_EQ(onLinux("100%25.mp3"), (Texts{"/m/list/100%25.mp3", "/m/list/100%.mp3"}));
    EXPECT_EQ(onLinux("AC: DC.mp3"), Texts{"/m/list/AC: DC.mp3"});
    EXPECT_EQ(onLinux("C:\\Music\\a.mp3"), (Texts{"/m/list/C:/Music/a.mp3", "/m/list/C:\\Music\\a.mp3"}));
    EXPECT_EQ(onWindows("sub/a.mp3"), Texts{"C:\\m\\list\\sub\\a.mp3"});
    EXPECT_EQ(onWindows("..\\a.mp3"), Texts{"C:\\m\\a.mp3"});
    EXPECT_EQ(onWindows("\\x\\a.mp3"), Texts{"C:\\x\\a.mp3"});
    EXPECT_EQ(onWindows("D:\\..\\a.mp3"), Texts{"D:\\a.mp3"});
    EXPECT_EQ(onLinux(""), Texts{});
    EXPECT_EQ(onLinux(std::string_view("a\0b", 3)), Texts{});
    EXPECT_EQ(onLinux(std::string(5000, 'a')), Texts{});
}

/// LIST-54: Addresses of files lead to this machine, with or without characters written as numbers
TEST(ListLocations, AddressesOfFiles) {
    EXPECT_EQ(onLinux("file:///x/a%20b.mp3"), (Texts{"/x/a b.mp3", "/x/a%20b.mp3"}));
    EXPECT_EQ(onLinux("FILE://localhost/x/a.mp3"), Texts{"/x/a.mp3"});
    EXPECT_EQ(onLinux("file:/x/a.mp3"), Texts{"/x/a.mp3"});
    EXPECT_EQ(onLinux("file:///caf%E9.mp3"), (Texts{"/caf\xE9.mp3", "/caf%E9.mp3"}));
    EXPECT_EQ(onLinux("file:///x/%00a"), Texts{"/x/%00a"});
    EXPECT_EQ(onWindows("file:///C:/x/a%20b.mp3"), (Texts{"C:\\x\\a b.mp3", "C:\\x\\a%20b.mp3"}));
    EXPECT_EQ(onWindows("file://D:/a.mp3"), Texts{"D:\\a.mp3"});
    EXPECT_EQ(onLinux("a%20b.mp3", true), (Texts{"/m/list/a b.mp3", "/m/list/a%20b.mp3"}));
    EXPECT_EQ(onLinux("100%.mp3", true), Texts{"/m/list/100%.mp3"});
}

/// LIST-55: What leads to another machine is left out, whatever its protocol
TEST(ListLocations, TheNetwork) {
    for (const char* away : {"http://x/a.mp3", "HTTPS://x", "mms://x", "rtsp://x/y", "ftp://x/a.mp3", "smb://x/y",
                             "icy+tls://x", "file://box/share/a.mp3", "\\\\box\\share\\a.mp3"}) {
        EXPECT_EQ(onLinux(away), Texts{"network"}) << away;
        EXPECT_EQ(onWindows(away), Texts{"network"}) << away;
    }
    EXPECT_EQ(onWindows("//box/share/a.mp3"), Texts{"network"});
    EXPECT_EQ(onWindows("file:////box/share/a.mp3"), Texts{"network"});
    EXPECT_EQ(onWindows("%5C%5Cbox%5Cshare%5Ca.mp3", true), Texts{"network"});
    EXPECT_EQ(onLinux("://x"), Texts{"/m/list/:/x"});
}

TEST(ListLocations, Folders) {
    EXPECT_EQ(folderOf("/m/a.m3u", '/'), "/m");
    EXPECT_EQ(folderOf("/a.m3u", '/'), "/");
    EXPECT_EQ(folderOf("a.m3u", '/'), "");
    EXPECT_EQ(folderOf("C:\\a.m3u", '\\'), "C:\\");
    EXPECT_EQ(folderOf("C:\\m\\a.m3u", '\\'), "C:\\m");
    EXPECT_EQ(locate("a.mp3", "/", '/', false).paths, Texts{"/a.mp3"});
    EXPECT_EQ(locate("a.mp3", "C:\\", '\\', false).paths, Texts{"C:\\a.mp3"});
}

}  // namespace
}  // namespace corvane
