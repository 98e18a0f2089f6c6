// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/files/links.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "unit/windows/folder_rig.h"
#include "winapi/files/far_drives.h"
#include "winapi/files/plain_file.h"

namespace corvane {
namespace {

using Texts = std::vector<std::wstring>;

/// Drives that hold links, each by its path.
struct Links : ::testing::Test {
    Lead follow(const std::wstring& path, FarAway away = FarAway::Entered) {
        asked.clear();
        return leadOf(path, away, [this](const std::wstring& at) {
            asked.push_back(at);
            const auto found = there.find(at);
            return found == there.end() ? Link() : found->second;
        });
    }
    bool leadsOut(const std::wstring& path) { return follow(path).out; }
    void put(const std::wstring& path, const std::wstring& target, Link::Kind kind = Link::Kind::Absolute) {
        there[path] = {kind, target};
    }

    std::map<std::wstring, Link> there;
    Texts asked;
};

/// WIN-64: A link to a share or a device, wherever it stands in a path, is read and not followed
TEST_F(Links, EachFolderIsAskedFromTheRootOnAndTheFirstThatLeadsOutIsTheLast) {
    EXPECT_FALSE(leadsOut(L"C:\\a\\b\\c.wav"));
    EXPECT_EQ(asked, (Texts{L"C:\\a", L"C:\\a\\b", L"C:\\a\\b\\c.wav"}));
    put(L"C:\\a\\b", L"\\??\\UNC\\host\\share");
    EXPECT_TRUE(leadsOut(L"C:\\a\\b\\c.wav"));
    EXPECT_TRUE(leadsOut(L"C:/a/./x/../b/c.wav"));
    EXPECT_EQ(asked, (Texts{L"C:\\a", L"C:\\a\\b"})) << "what lies behind it would be asked of the other machine";
    put(L"\\\\?\\C:\\a", L"\\??\\UNC\\host\\share");
    EXPECT_TRUE(leadsOut(L"\\\\?\\C:\\a\\b\\c.wav"));
}

/// WIN-64
TEST_F(Links, LeadToDrivesOrOut) {
    for (const wchar_t* target :
         {L"\\??\\UNC\\host\\share\\c.wav", L"\\??\\unc\\host\\share", L"\\??\\pipe\\a",
          L"\\??\\GLOBALROOT\\Device\\Mup\\host\\share", L"\\Device\\Mup\\host\\share", L"\\\\host\\share",
          L"//host/share", L"C:\\b", L"\\??\\\\host\\share", L"\\??\\C:\\b:stream", L"\\??\\", L""}) {
        put(L"C:\\a", target);
        EXPECT_TRUE(leadsOut(L"C:\\a\\c.wav")) << fromWide(target);
        EXPECT_TRUE(leadsOut(L"C:\\a")) << fromWide(target);
    }
    for (const wchar_t* target : {L"\\??\\D:\\b", L"\\??\\D:\\", L"\\??\\Volume{1}\\", L"\\??\\Volume{1}\\b"}) {
        put(L"C:\\a", target);
        EXPECT_FALSE(leadsOut(L"C:\\a\\c.wav")) << fromWide(target);
    }
    EXPECT_EQ(asked.back(), L"\\\\?\\Volume{1}\\b\\c.wav") << "and what they lead to is looked at again";
    put(L"C:\\a", L"\\??\\D:\\b", Link::Kind::Unknown);
    EXPECT_TRUE(leadsOut(L"C:\\a\\c.wav"));
}

/// WIN-64
TEST_F(Links, ARelativeOneStartsWhereItLies) {
    put(L"C:\\a\\b", L"..\\x\\.\\y", Link::Kind::Relative);
    EXPECT_FALSE(leadsOut(L"C:\\a\\b\\c.wav"));
    EXPECT_EQ(asked.back(), L"C:\\x\\y\\c.wav");
    put(L"C:\\a\\b", L"..\\..\\..\\x", Link::Kind::Relative);
    EXPECT_FALSE(leadsOut(L"C:\\a\\b"));
    EXPECT_EQ(asked.back(), L"C:\\x");
    put(L"C:\\a\\b", L"\\x", Link::Kind::Relative);
    EXPECT_FALSE(leadsOut(L"C:\\a\\b\\c.wav"));
    EXPECT_EQ(asked.back(), L"C:\\x\\c.wav") << "from the drive's root";
    put(L"C:\\x", L"\\??\\UNC\\host\\share");
    EXPECT_TRUE(leadsOut(L"C:\\a\\b\\c.wav")) << "one that leads to another";
    put(L"C:\\top", L"a", Link::Kind::Relative);
    EXPECT_FALSE(leadsOut(L"C:\\top"));
    EXPECT_EQ(asked.back(), L"C:\\a");
}

/// WIN-64
TEST_F(Links, WithoutAnEndAreGivenUp) {
    put(L"C:\\a", L"\\??\\C:\\b");
    put(L"\\\\?\\C:\\b", L"a", Link::Kind::Relative);
    put(L"\\\\?\\C:\\a", L"b", Link::Kind::Relative);
    EXPECT_TRUE(leadsOut(L"C:\\a"));
    EXPECT_LT(asked.size(), 100U);
    put(L"C:\\in", L"in\\in", Link::Kind::Relative);
    EXPECT_TRUE(leadsOut(L"C:\\in"));
}

/// WIN-64
TEST_F(Links, ADriveAcrossTheNetworkIsNotEnteredByWhoMayNotWait) {
    const auto usual = std::exchange(FarDrives::kindOfDrive,
                                     [](LPCWSTR root) -> UINT { return root[0] == L'Y' ? DRIVE_REMOTE : DRIVE_FIXED; });
    put(L"C:\\a", L"\\??\\Y:\\b");
    EXPECT_EQ(follow(L"C:\\a\\c.wav", FarAway::NotEntered).farDrive, L"Y:");
    EXPECT_EQ(asked, Texts{L"C:\\a"});
    put(L"\\\\?\\Y:\\b", L"\\??\\UNC\\host\\share");
    EXPECT_TRUE(follow(L"C:\\a\\c.wav", FarAway::Entered).out);
    EXPECT_TRUE(follow(L"y:\\b\\c.wav", FarAway::NotEntered).farDrive == L"Y:" && asked.empty());
    FarDrives::kindOfDrive = usual;
    there.clear();
    EXPECT_EQ(follow(L"C:\\a\\c.wav", FarAway::NotEntered).farDrive, L"");
    EXPECT_FALSE(follow(L"C:\\a\\c.wav", FarAway::NotEntered).out);
    EXPECT_TRUE(follow(L"\\\\host\\share\\c.wav", FarAway::NotEntered).out);
    EXPECT_TRUE(asked.empty());
}

std::string bytesOf(const std::wstring& text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)};
}

/// A reparse point as the system writes it. names: both of them, the one to go on with behind the one to be shown.
std::string point(std::uint32_t tag, std::uint16_t from, std::uint16_t length, const std::wstring& names,
                  std::uint32_t flags = 0) {
    std::string bytes;
    const auto add = [&](auto number) { bytes.append(reinterpret_cast<const char*>(&number), sizeof number); };
    add(tag);
    add(std::uint32_t{0});
    add(from);
    add(length);
    add(std::uint32_t{0});
    if (tag == 0xA000000C) add(flags);
    return bytes + bytesOf(names);
}

/// WIN-64
TEST(ReparsePoints, AreReadForTheNameThatTheSystemGoesOnWith) {
    const Link folder = linkIn(point(0xA0000003, 4, 12, L"C:\\??\\D:"));
    EXPECT_EQ(folder.kind, Link::Kind::Absolute);
    EXPECT_EQ(folder.target, L"\\??\\D:");
    const Link share = linkIn(point(0xA000000C, 0, 30, L"\\??\\UNC\\h\\share"));
    EXPECT_EQ(share.kind, Link::Kind::Absolute);
    EXPECT_EQ(share.target, L"\\??\\UNC\\h\\share");
    const Link beside = linkIn(point(0xA000000C, 0, 8, L"..\\bc", 1));
    EXPECT_EQ(beside.kind, Link::Kind::Relative);
    EXPECT_EQ(beside.target, L"..\\b");
}

/// WIN-64
TEST(ReparsePoints, ThatAreDamagedOrStrangeAreLinksThatCannotBeRead) {
    const std::string whole = point(0xA000000C, 0, 8, L"..\\b", 1);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_EQ(linkIn(std::string_view(whole).substr(0, length)).kind, Link::Kind::Unknown) << length;
    }
    EXPECT_EQ(linkIn(point(0xA0000003, 0xFFFE, 0xFFFE, L"C:\\")).kind, Link::Kind::Unknown);
    EXPECT_EQ(linkIn(point(0xA0000003, 0, 3, L"C:\\")).kind, Link::Kind::Unknown) << "half a letter";
    EXPECT_EQ(linkIn(point(0xA0000019, 0, 6, L"C:\\")).kind, Link::Kind::Unknown) << "stands for another name";
    EXPECT_EQ(linkIn(point(0x80000017, 0, 6, L"C:\\")).kind, Link::Kind::None) << "a file that is packed, no link";
}

/// WIN-64
TEST(ReparsePoints, WhatIsThereIsAskedWithoutThem) {
    const test::TriedFolder folder;
    test::writeFile(folder.in("a.wav"), "bytes");
    EXPECT_TRUE(isPlainPath(toWide(folder.in("a.wav"))));
    EXPECT_TRUE(isPlainPath(toWide(folder.in("gone\\a.wav"))));
    EXPECT_TRUE(isPlainPath(L"a.wav"));
    EXPECT_FALSE(isPlainPath(L"\\\\host\\share\\a.wav"));
    EXPECT_EQ(lookAtLink(toWide(folder.path())).kind, Link::Kind::None);
    EXPECT_EQ(lookAtLink(toWide(folder.in("a<.wav"))).kind, Link::Kind::Unknown) << "no such name can be";
}

}  // namespace
}  // namespace corvane
