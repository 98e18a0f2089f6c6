// SPDX-License-Identifier: GPL-3.0-or-later
#include <QEventLoop>
#include <QTimer>

#include "linux/socket_instance.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <ctime>
#include <thread>

#include "drives/spare_descriptors.h"
#include "unit/linux/fork_alone.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

struct Instances : ::testing::Test {
    Instances() { test::offscreenApplication(); }
    test::TemporaryFolder runtime;
    Texts got;
    void listenTo(Instance& instance) {
        instance.onCall([this](const Texts& files) { got = files; });
    }
};

/// START-02: Two folders run side by side
/// START-01
TEST_F(Instances, OneAFolder) {
    SocketInstance first("/some/folder", runtime.path());
    EXPECT_TRUE(first.acquire());
    EXPECT_TRUE(first.acquire());
    EXPECT_FALSE(SocketInstance("/some/folder", runtime.path()).acquire());
    EXPECT_FALSE(SocketInstance("/some/./folder/", runtime.path()).acquire());
    EXPECT_TRUE(SocketInstance("/other/folder", runtime.path()).acquire());
}

/// START-03: The next one may start when the first has gone
TEST_F(Instances, TheNextMayStartWhenTheFirstHasGone) {
    { EXPECT_TRUE(SocketInstance("/some/folder", runtime.path()).acquire()); }
    EXPECT_TRUE(SocketInstance("/some/folder", runtime.path()).acquire());
}

/// CMD-16: A second start hands them to the player that runs, and ends
TEST_F(Instances, ALaterOneHandsItsFilesOver) {
    SocketInstance first("/some/folder", runtime.path());
    listenTo(first);
    ASSERT_TRUE(first.acquire());
    SocketInstance second("/some/folder", runtime.path());
    ASSERT_FALSE(second.acquire());
    ASSERT_TRUE(second.call({"/a b.mp3", "/\xE9.wav"}));
    EXPECT_TRUE(test::waitUntil([this] { return !got.empty(); }));
    EXPECT_EQ(got, (Texts{"/a b.mp3", "/\xE9.wav"}));
}

/// CMD-16
TEST_F(Instances, ManyFilesAreHandedOverWhole) {
    SocketInstance first("/some/folder", runtime.path());
    listenTo(first);
    ASSERT_TRUE(first.acquire());
    const Texts many(2000, "/a/folder/with/a/rather/long/name/song.mp3");
    ASSERT_TRUE(SocketInstance("/some/folder", runtime.path()).call(many));
    EXPECT_TRUE(test::waitUntil([this] { return !got.empty(); }));
    EXPECT_EQ(got, many);
}

/// DESK-08
TEST_F(Instances, ALaterOneKnowsWhereTheFirstIsSeen) {
    const auto display = [](const char* x11, const char* wayland) {
        return SessionDisplay::of({"", x11, wayland, ""});
    };
    SocketInstance first("/some/folder", runtime.path(), display(":1.0", "wayland-1"));
    ASSERT_TRUE(first.acquire());
    EXPECT_EQ(first.elsewhere(), "");
    const auto seenFrom = [&](const SessionDisplay& here) {
        SocketInstance later("/some/folder", runtime.path(), here);
        EXPECT_FALSE(later.acquire());
        return later.elsewhere();
    };
    for (const char* same : {":1", ":1.1", "unix:1"}) EXPECT_EQ(seenFrom(display(same, "")), "") << same;
    EXPECT_EQ(seenFrom(display(":1", "wayland-0")), "") << "one display of both kinds is enough";
    EXPECT_EQ(seenFrom(display("", "wayland-1")), "");
    EXPECT_EQ(seenFrom(display("", "")), "") << "nobody can tell";
    for (const char* other : {":10", ":2", "far:1"}) EXPECT_EQ(seenFrom(display(other, "")), ":1") << other;
    EXPECT_EQ(seenFrom(display("", "wayland-0")), ":1");
}

/// DESK-09: A lock that says nothing, or nothing that makes sense, is one of the same session
TEST_F(Instances, ALockThatSaysNothingIsOfTheSameSession) {
    SocketInstance first("/some/folder", runtime.path());
    ASSERT_TRUE(first.acquire());
    const auto seen = [&](const std::string& said) {
        runtime.write(first.fileName(".lock"), said);
        SocketInstance later("/some/folder", runtime.path(), SessionDisplay::of({"", ":5", "wayland-5", ""}));
        EXPECT_FALSE(later.acquire());
        return later.elsewhere();
    };
    EXPECT_EQ(seen(""), "");
    EXPECT_EQ(seen(std::string(5000, 'x')), "");
    EXPECT_EQ(seen("X11"), "");
    EXPECT_EQ(seen("X11 :5"), "");
    EXPECT_EQ(seen("\nX11 :6"), ":6");
    EXPECT_EQ(seen("X11 :6\x1b[2J\n"), ":6?[2J");
}

TEST_F(Instances, OneThatHasOnlyJustBegunTakesFilesAsWell) {
    std::atomic<bool> done = false;
    bool taken = false;
    std::thread sender([&] {
        taken = SocketInstance("/some/folder", runtime.path()).call({"/a.mp3"});
        done = true;
    });
    EXPECT_FALSE(test::waitUntil([&] { return done.load(); }, 200)) << "it did not wait for the first one to listen";
    SocketInstance first("/some/folder", runtime.path());
    listenTo(first);
    EXPECT_TRUE(first.acquire());
    EXPECT_TRUE(test::waitUntil([this] { return !got.empty(); }));
    sender.join();
    EXPECT_TRUE(taken);
    EXPECT_EQ(got, Texts{"/a.mp3"});
}

/// CMD-19: A second start without files is a call all the same, and the panel comes to the front
TEST_F(Instances, ALaterOneWithoutFilesIsACallAllTheSame) {
    SocketInstance first("/some/folder", runtime.path());
    int calls = 0;
    first.onCall([&](const Texts& files) { calls += files.empty() ? 1 : 100; });
    ASSERT_TRUE(first.acquire());
    ASSERT_TRUE(SocketInstance("/some/folder", runtime.path()).call({}));
    EXPECT_TRUE(test::waitUntil([&] { return calls > 0; }));
    EXPECT_EQ(calls, 1);
}

/// CMD-16
TEST_F(Instances, MoreThanAMegabyteIsHandedOverWholeAndWhatDoesNotFitIsCounted) {
    SocketInstance first("/some/folder", runtime.path());
    listenTo(first);
    ASSERT_TRUE(first.acquire());
    const Texts many(8000, std::string(400, 'x'));
    EXPECT_EQ(first.fitting(many), many.size());
    bool taken = false;
    std::thread sender([&] { taken = SocketInstance("/some/folder", runtime.path()).call(many); });
    EXPECT_TRUE(test::waitUntil([this] { return !got.empty(); }));
    sender.join();
    EXPECT_TRUE(taken);
    EXPECT_EQ(got, many);

    const Texts tooMany(12'000, std::string(400, 'x'));
    EXPECT_EQ(first.fitting(tooMany), first.mostBytes() / 401);
    EXPECT_FALSE(SocketInstance("/some/folder", runtime.path()).call(tooMany));
}

/// Connects as a later start does; -1 when it cannot.
int callerOf(const std::string& folder) {
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() != ".socket") continue;
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        entry.path().string().copy(address.sun_path, sizeof address.sun_path - 1);
        const int caller = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (::connect(caller, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) return caller;
        close(caller);
    }
    return -1;
}

/// CMD-21: Callers that say nothing, say too much or come when no descriptor is left are turned away, and the next is
///     heard
TEST_F(Instances, CallersThatSayNothingOrTooMuchAreDroppedAndTheNextIsHeard) {
    SocketInstance first("/some/folder", runtime.path());
    int calls = 0;
    first.onCall([&](const Texts&) { ++calls; });
    ASSERT_TRUE(first.acquire());
    const int loud = callerOf(runtime.path());
    ASSERT_GE(loud, 0);
    std::vector<int> silent;  // no more than wait to be answered, as nobody answers before the events run
    for (int i = 0; i < 6; ++i) silent.push_back(callerOf(runtime.path()));
    const std::string noise(1U << 20U, 'x');
    std::thread talker([&] {
        for (std::size_t sent = 0; sent < 3 * first.mostBytes(); sent += noise.size()) {
            if (send(loud, noise.data(), noise.size(), MSG_NOSIGNAL) < 0) return;
        }
    });
    EXPECT_FALSE(test::waitUntil([&] { return calls > 0; }, 2'500)) << "nobody has closed";
    talker.join();
    ASSERT_TRUE(SocketInstance("/some/folder", runtime.path()).call({"/a.mp3"}));
    EXPECT_TRUE(test::waitUntil([&] { return calls > 0; }));
    for (const int caller : silent) close(caller);
    close(loud);
}

/// CMD-21
TEST_F(Instances, WithoutADescriptorLeftACallIsTurnedAwayAndDoesNotSpin) {
    SpareDescriptors::keep();
    SocketInstance first("/some/folder", runtime.path());
    int calls = 0;
    first.onCall([&](const Texts&) { ++calls; });
    ASSERT_TRUE(first.acquire());
    const int caller = callerOf(runtime.path());
    ASSERT_GE(caller, 0);
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none{static_cast<rlim_t>(dup(caller)), before.rlim_max};  // no higher number is given
    setrlimit(RLIMIT_NOFILE, &none);
    const std::clock_t began = std::clock();
    QEventLoop events;  // sleeps between events, which waiting for a condition does not
    QTimer::singleShot(500, &events, &QEventLoop::quit);
    events.exec();
    const double busy = static_cast<double>(std::clock() - began) / CLOCKS_PER_SEC;
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_LT(busy, 0.3) << "it is told of the caller again and again";
    char byte = 0;
    EXPECT_EQ(read(caller, &byte, 1), 0) << "the caller is turned away";
    ASSERT_TRUE(SocketInstance("/some/folder", runtime.path()).call({"/a.mp3"}));
    EXPECT_TRUE(test::waitUntil([&] { return calls > 0; })) << "the next one is heard";
    close(caller);
}

TEST_F(Instances, OneThatTakesNothingIsGivenUp) {
    SocketInstance first("/some/folder", runtime.path());
    ASSERT_TRUE(first.acquire());
    const Texts many(16'000, std::string(240, 'x'));  // more than a socket holds while nobody reads
    QElapsedTimer passed;
    passed.start();
    EXPECT_FALSE(SocketInstance("/some/folder", runtime.path()).call(many));
    EXPECT_LT(passed.elapsed(), 10000);
}

TEST_F(Instances, NobodyIsThereToHandFilesTo) {
    EXPECT_FALSE(SocketInstance("/some/folder", runtime.path()).call({"/a.mp3"}));
}

/// START-44: A start without a place for its lock runs all the same
TEST_F(Instances, WithoutAPlaceForTheLockAPlayerStartsAllTheSame) {
    EXPECT_TRUE(SocketInstance("/some/folder", "").acquire());
    EXPECT_TRUE(SocketInstance("/some/folder", runtime.in("nowhere")).acquire());
}

struct RuntimeFolders : ::testing::Test {
    /// What is chosen with that variable; "" unset.
    std::string chosen(const std::string& given) {
        const char* const value = std::getenv("XDG_RUNTIME_DIR");
        const std::string before = value == nullptr ? "" : value;
        setenv("XDG_RUNTIME_DIR", given.c_str(), 1);
        std::string folder_ = runtimeFolder(folder.in("program"));
        before.empty() ? unsetenv("XDG_RUNTIME_DIR") : setenv("XDG_RUNTIME_DIR", before.c_str(), 1);
        return folder_;
    }
    test::TemporaryFolder folder;
    const std::string own = "/tmp/corvane-" + std::to_string(geteuid());
};

constexpr uid_t kNeighbour = 65501, kVictim = 65502;

/// START-60: Lock and socket lie in a folder that is the user's alone; what a neighbour on the machine has put in its
///     place is not used, and nothing of the user's changes
TEST_F(RuntimeFolders, OnlyAFolderOfTheUsersAloneIsTaken) {
    fs::create_directory(folder.in("run"));
    fs::create_directory(folder.in("program"));
    chmod(folder.in("run").c_str(), 0700);
    const std::string inIt = folder.in("run/corvane");
    EXPECT_EQ(chosen(folder.in("run")), inIt);
    for (const mode_t mode : {0777U, 0755U, 0710U, 0701U, 0720U}) {
        chmod(folder.in("run").c_str(), mode);
        EXPECT_NE(chosen(folder.in("run")), inIt) << std::oct << mode;
    }
    chmod(folder.in("run").c_str(), 0700);
    if (geteuid() == 0) {  // others cannot open one that is somebody else's alone
        ASSERT_EQ(chown(folder.in("run").c_str(), kNeighbour, kNeighbour), 0);
        EXPECT_NE(chosen(folder.in("run")), inIt);
        ASSERT_EQ(chown(folder.in("run").c_str(), 0, 0), 0);
        EXPECT_EQ(chosen(folder.in("run")), inIt);
    }
    fs::create_symlink(folder.in("run"), folder.in("link"));
    fs::create_symlink("circle", folder.in("circle"));
    folder.write("file", "");
    ASSERT_EQ(mkfifo(folder.in("pipe").c_str(), 0600), 0);
    for (const char* const name : {"link", "link/", "link//", "circle", "file", "pipe", "gone"}) {
        EXPECT_NE(chosen(folder.in(name)), folder.in(name) + "/corvane") << name;
    }
    EXPECT_NE(chosen("."), "./corvane");
}

/// The kernel lets the player write in it, and so in nothing else of what other programs keep there.
TEST_F(RuntimeFolders, WithinTheSystemsItIsOneOfItsOwn) {
    fs::create_directory(folder.in("program"));
    chmod(folder.path().c_str(), 0700);
    ASSERT_EQ(chosen(folder.path()), folder.in("corvane"));
    struct stat status {};
    ASSERT_EQ(lstat(folder.in("corvane").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode, S_IFDIR | 0700U);
    EXPECT_EQ(chosen(folder.path()), folder.in("corvane")) << "it is there already";

    fs::remove(folder.in("corvane"));
    fs::create_directory_symlink(folder.in("program"), folder.in("corvane"));
    EXPECT_NE(chosen(folder.path()), folder.in("corvane")) << "what is led elsewhere is not used";
}

/// Ends with 0 when two players of that user on a folder keep apart in a place of their own.
[[noreturn]] void endAsVictim(uid_t victim, const std::string& program) {
    const bool isVictim = setresgid(victim, victim, victim) == 0 && setresuid(victim, victim, victim) == 0;
    unsetenv("XDG_RUNTIME_DIR");
    const std::string place = runtimeFolder(program);
    SocketInstance first(program, place);
    SocketInstance second(program, place);
    const bool apart = first.acquire() && !second.acquire();
    _exit(isVictim && apart && place == program + "/.corvane-run" ? 0 : 1);
}

/// A neighbour on the machine has made what the player of a user without a run-time folder would use. Asked as really
/// two users.
/// START-60
TEST_F(RuntimeFolders, ANeighboursFolderIsNotUsedAndNothingOfTheVictimsChanges) {
    if (geteuid() != 0) GTEST_SKIP() << "only the superuser can be two users";
    const fs::path squatted = "/tmp/corvane-" + std::to_string(kVictim);
    ASSERT_FALSE(fs::exists(fs::symlink_status(squatted)));
    for (const char* const way : {"folder", "open folder", "link"}) {
        test::TemporaryFolder home;
        chmod(home.path().c_str(), 0755);
        fs::create_directory(home.in("program"));
        fs::create_directory(home.in("private"));
        home.write("private/precious", "whole");
        home.write("program/.corvane-save-a1B2c3", "another start is writing it");
        for (const char* const name : {"program", "private", "private/precious", "program/.corvane-save-a1B2c3"})
            ASSERT_EQ(chown(home.in(name).c_str(), kVictim, kVictim), 0);
        chmod(home.in("private").c_str(), 0700);
        const bool link = std::string(way) == "link";
        if (link) {
            fs::create_symlink(home.in("private"), squatted);
        } else {
            fs::create_directory(squatted);
            chmod(squatted.c_str(), std::string(way) == "folder" ? 0700 : 0777);
        }
        ASSERT_EQ(lchown(squatted.c_str(), kNeighbour, kNeighbour), 0);
        if (!link) {  // every name that the lock or the socket could have
            const std::string name = SocketInstance(home.in("program"), "").fileName(".lock");
            fs::create_symlink(home.in("private/precious"), squatted / name);
        }
        test::leaveThreads();
        EXPECT_EXIT(endAsVictim(kVictim, home.in("program")), ::testing::ExitedWithCode(0), "") << way;
        EXPECT_EQ(home.bytes("private/precious"), "whole") << way;
        EXPECT_EQ(std::distance(fs::directory_iterator(home.in("private")), fs::directory_iterator()), 1) << way;
        fs::remove_all(squatted);
    }
}

}  // namespace
}  // namespace corvane
