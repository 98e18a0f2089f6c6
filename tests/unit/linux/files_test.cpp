// SPDX-License-Identifier: GPL-3.0-or-later
#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>

#include "drives/descriptor.h"
#include "files/posix_files.h"
#include "types/file_patterns.h"
#include "unit/linux/fork_alone.h"
#include "unit/linux/offscreen.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

struct DesktopFiles : ::testing::Test {
    test::TemporaryFolder folder;
    PosixFiles files;
};

TEST_F(DesktopFiles, ReplacingKeepsTheModeAndTheLink) {
    folder.write("real.ini", "old");
    chmod(folder.in("real.ini").c_str(), 0640);
    ASSERT_EQ(symlink("real.ini", folder.in("link.ini").c_str()), 0);
    ASSERT_TRUE(files.replace(folder.in("link.ini"), "new"));
    EXPECT_TRUE(fs::is_symlink(folder.in("link.ini")));
    EXPECT_EQ(folder.bytes("real.ini"), "new");
    struct stat status {};
    ASSERT_EQ(stat(folder.in("real.ini").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST_F(DesktopFiles, ReplacingFillsALinkWhoseTargetIsNotThereYet) {
    ASSERT_EQ(symlink("later.ini", folder.in("link.ini").c_str()), 0);
    ASSERT_TRUE(files.replace(folder.in("link.ini"), "new"));
    EXPECT_TRUE(fs::is_symlink(folder.in("link.ini")));
    EXPECT_EQ(folder.bytes("later.ini"), "new");
}

/// Each is a question of its own, which the panel waits for.
TEST_F(DesktopFiles, OfACrowdOfLinksNoMoreAreFollowedThanTimeAllows) {
    folder.write("song.mp3", "");
    for (int i = 0; i < 10'000; ++i) {
        std::filesystem::create_symlink("song.mp3", folder.in("link" + std::to_string(i) + ".mp3"));
    }
    EXPECT_EQ(files.list(folder.in(""), "*.mp3").size(), 4097U);
}

TEST_F(DesktopFiles, LinksThatCircleAreNoFile) {
    ASSERT_EQ(symlink("b.ini", folder.in("a.ini").c_str()), 0);
    ASSERT_EQ(symlink("a.ini", folder.in("b.ini").c_str()), 0);
    EXPECT_FALSE(files.replace(folder.in("a.ini"), "new"));
    EXPECT_EQ(files.lookUp(folder.in("a.ini")), std::nullopt);
}

TEST_F(DesktopFiles, ANewFileHasTheUsualMode) {
    const mode_t mask = umask(027);
    ASSERT_TRUE(files.replace(folder.in("fresh.ini"), "x"));
    umask(mask);
    struct stat status {};
    ASSERT_EQ(stat(folder.in("fresh.ini").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

/// From now on this process is killed when it asks for the mask by setting it. False: that cannot be arranged.
bool forbidUmask() {
    std::array<sock_filter, 4> rules = {{BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                                         BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_umask, 0, 1),
                                         BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
                                         BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)}};
    const sock_fprog program = {static_cast<unsigned short>(rules.size()), rules.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

TEST_F(DesktopFiles, TheMaskOfAllThreadsIsLeftAlone) {
    constexpr int kCannotForbid = 77;
    const pid_t child = test::forkAlone();
    if (child == 0) {
        if (!forbidUmask()) _exit(kCannotForbid);
        _exit(files.replace(folder.in("fresh.ini"), "x") ? 0 : 1);
    }
    int result = -1;
    ASSERT_EQ(waitpid(child, &result, 0), child);
    if (WIFEXITED(result) && WEXITSTATUS(result) == kCannotForbid) GTEST_SKIP() << "no filter of system calls here";
    EXPECT_EQ(result, 0);
}

TEST_F(DesktopFiles, AGroupThatCannotBeKeptLeavesNothingToAnotherGroup) {
    if (geteuid() != 0) GTEST_SKIP() << "only the superuser can make such a file";
    constexpr uid_t kNobody = 65534;
    folder.write("shared.ini", "old");
    ASSERT_EQ(chmod(folder.in("shared.ini").c_str(), 0676), 0);
    ASSERT_EQ(chown(folder.path().c_str(), kNobody, kNobody), 0);
    const pid_t child = test::forkAlone();
    if (child == 0) {
        const bool ready = setgroups(0, nullptr) == 0 && setgid(kNobody) == 0 && setuid(kNobody) == 0;
        _exit(ready && files.replace(folder.in("shared.ini"), "new") ? 0 : 1);
    }
    int result = -1;
    ASSERT_EQ(waitpid(child, &result, 0), child);
    ASSERT_EQ(result, 0);
    struct stat status {};
    ASSERT_EQ(stat(folder.in("shared.ini").c_str(), &status), 0);
    EXPECT_EQ(status.st_gid, kNobody);
    EXPECT_EQ(status.st_mode & 07777U, 0606U);
}

/// MEDIA-35
TEST_F(DesktopFiles, AFailedReplacementLeavesNothingBeside) {
    folder.write("old.ini", "old");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit none = before;
    none.rlim_cur = 1;
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &none);
    const bool replaced = files.replace(folder.in("old.ini"), "new");
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_DFL);
    EXPECT_FALSE(replaced);
    EXPECT_EQ(folder.bytes("old.ini"), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 1);
}

TEST_F(DesktopFiles, HiddenFilesAreNotListed) {
    folder.write(".hidden.wav", "");
    folder.write("seen.wav", "");
    EXPECT_EQ(files.list(folder.path(), "*"), Texts{"seen.wav"});
}

TEST_F(DesktopFiles, ListsLinkedFilesAndKeepsForeignBytes) {
    folder.write("real.wav", "");
    ASSERT_EQ(symlink("real.wav", folder.in("link.wav").c_str()), 0);
    ASSERT_EQ(symlink("nowhere", folder.in("dead.wav").c_str()), 0);
    folder.write("b\xE9.wav", "");
    EXPECT_EQ(files.list(folder.path(), "*.wav"), (Texts{"b\xE9.wav", "link.wav", "real.wav"}));
    EXPECT_EQ(files.lookUp(folder.in("b\xE9.wav")), "b\xE9.wav");
}

TEST_F(DesktopFiles, APipeIsNotRead) {
    ASSERT_EQ(mkfifo(folder.in("pipe.ini").c_str(), 0600), 0);
    EXPECT_EQ(files.read(folder.in("pipe.ini"), 100), std::nullopt);
    EXPECT_FALSE(files.replace(folder.in("pipe.ini"), "x"));
}

TEST_F(DesktopFiles, ListsTwentyThousandFilesQuickly) {
    for (int i = 0; i < 20000; ++i) folder.write("track" + std::to_string(i) + (i % 2 == 0 ? ".mp3" : ".txt"), "");
    const test::Stopwatch clock;
    EXPECT_EQ(files.list(folder.path(), "*.wav;*.mp3").size(), 10000U);
    EXPECT_LT(clock.own().count(), 1000);
}

/// What is listed fills a box that the panel waits for.
TEST_F(DesktopFiles, OfACrowdOfFilesNoMoreAreLookedAtThanTheBound) {
    const Descriptor at(open(folder.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_TRUE(at);
    for (std::size_t i = 0; i < kMostEntries + 100; ++i) {
        const std::string name = "track" + std::to_string(i) + ".mp3";
        ASSERT_TRUE(Descriptor(openat(at.get(), name.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600))) << i;
    }
    const std::size_t listed = files.list(folder.path(), "*.mp3").size();
    EXPECT_LE(listed, kMostEntries);
    EXPECT_GE(listed, kMostEntries - 2) << "the folder's own two names count";
}

}  // namespace
}  // namespace corvane
