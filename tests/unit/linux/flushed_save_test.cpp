// SPDX-License-Identifier: GPL-3.0-or-later
// A save is on the disk before it takes the old file's place, and so is its name before the save counts as done: the
// calls of the program's own library are noted in their order.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <mutex>
#include <string>
#include <vector>

#include "files/posix_files.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

struct Calls {
    std::mutex lock;  // a save is made by a worker
    bool noting = false;
    bool flushFails = false;
    std::vector<std::string> made;

    void note(const std::string& call) {
        const std::lock_guard held(lock);
        if (noting) made.push_back(call);
    }
};
Calls calls;

std::string nameOf(int file) {
    std::array<char, 4096> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t length = readlink(link.c_str(), path.data(), path.size());
    return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : "?";
}

/// Notes what a save calls.
class Noting {
public:
    explicit Noting(bool flushFails = false) {
        const std::lock_guard held(calls.lock);
        calls.made.clear();
        calls.noting = true;
        calls.flushFails = flushFails;
    }
    Noting(const Noting&) = delete;
    Noting& operator=(const Noting&) = delete;
    ~Noting() {
        const std::lock_guard held(calls.lock);
        calls.noting = calls.flushFails = false;
    }
    std::vector<std::string> made() const {
        const std::lock_guard held(calls.lock);
        return calls.made;
    }
};

}  // namespace
}  // namespace corvane

// NOLINTBEGIN: the system's own declarations. What the program defines stands before what its libraries do.
extern "C" int fsync(int file) {
    static const auto next = reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, "fsync"));
    corvane::calls.note("flush " + corvane::nameOf(file));
    {
        const std::lock_guard held(corvane::calls.lock);
        if (corvane::calls.flushFails) return errno = EIO, -1;
    }
    return next(file);
}

extern "C" int rename(const char* from, const char* to) {
    static const auto next = reinterpret_cast<int (*)(const char*, const char*)>(dlsym(RTLD_NEXT, "rename"));
    corvane::calls.note(std::string("rename ") + from + " " + to);
    return next(from, to);
}
// NOLINTEND

namespace corvane {
namespace {

/// FAULT-09
TEST(FlushedSave, TheNewFileIsFlushedThenRenamedAndThenItsFolderIsFlushed) {
    const test::TemporaryFolder folder;
    folder.write("FILE00.INI", "old");
    PosixFiles files;
    const Noting noting;
    ASSERT_TRUE(files.replace(folder.in("FILE00.INI"), "new"));
    const std::vector<std::string> made = noting.made();
    ASSERT_EQ(made.size(), 3U) << testing::PrintToString(made);
    const std::string beside = made[0].substr(made[0].find(' ') + 1);
    EXPECT_EQ(made[0], "flush " + beside);
    EXPECT_EQ(beside.rfind(folder.in(".corvane-"), 0), 0U) << beside;
    EXPECT_EQ(made[1], "rename " + beside + " " + folder.in("FILE00.INI"));
    EXPECT_EQ(made[2], "flush " + std::string(folder.path()));
    EXPECT_EQ(folder.bytes("FILE00.INI"), "new");
}

/// FAULT-09
TEST(FlushedSave, WhatCannotBeFlushedTakesNoPlace) {
    const test::TemporaryFolder folder;
    folder.write("FILE00.INI", "old");
    PosixFiles files;
    const Noting noting(true);
    EXPECT_FALSE(files.replace(folder.in("FILE00.INI"), "new"));
    EXPECT_EQ(noting.made().size(), 1U);
    EXPECT_EQ(folder.bytes("FILE00.INI"), "old");
}

}  // namespace
}  // namespace corvane
