// SPDX-License-Identifier: GPL-3.0-or-later
// What the kernel refuses: tried in processes of their own, because it cannot be undone.
#include "confinement/confinement.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <map>
#include <sstream>
#include <thread>

#include "confined/attempts.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

using test::Attempt;
using test::By;
using Refusals = std::map<std::string, int>;  ///< errors by the attempts' names; 0: let through

/// Every attempt, in a process that has given up what `giveUp` gives up. Empty when that fails or ends by itself.
Refusals tryAll(const std::function<bool(const test::AttemptPlaces&)>& giveUp) {
    const test::TemporaryFolder folder;
    const test::AttemptPlaces places{folder.in("inside"), folder.in("outside"), 0};
    EXPECT_TRUE(test::layDown(places));
    int pipes[2] = {-1, -1};
    EXPECT_EQ(pipe(pipes), 0);
    const pid_t child = fork();
    if (child == 0) {
        if (!giveUp(places)) _exit(1);
        for (const Attempt& one : test::attempts()) dprintf(pipes[1], "%d %s\n", one.attempt(places), one.name);
        _exit(0);
    }
    close(pipes[1]);
    std::string told;
    char letter = 0;
    while (read(pipes[0], &letter, 1) == 1) told += letter;
    close(pipes[0]);
    int result = -1;
    EXPECT_EQ(waitpid(child, &result, 0), child);
    EXPECT_EQ(result, 0);
    Refusals refusals;
    std::istringstream lines(told);
    int error = 0;
    for (std::string name; lines >> error && std::getline(lines >> std::ws, name);) refusals[name] = error;
    return refusals;
}

Refusals freely() {
    return tryAll([](const test::AttemptPlaces&) { return true; });
}

/// What is let through to a free process, kind by kind.
std::vector<std::string> possible(const Refusals& refusals, By by) {
    std::vector<std::string> names;
    for (const Attempt& one : test::attempts()) {
        const auto found = refusals.find(one.name);
        if (one.by == by && found != refusals.end() && found->second == 0) names.emplace_back(one.name);
    }
    return names;
}

bool kernelBoundsWriting() {
    const Refusals refusals = tryAll([](const test::AttemptPlaces& p) {
        boundWriting({p.inside});
        return true;
    });
    return refusals.at("write outside") != 0;
}

TEST(Confinement, AFreeProcessCanDoNearlyAllOfIt) {
    const Refusals refusals = freely();
    EXPECT_EQ(refusals.size(), test::attempts().size());
    // What not even the machine's master may, or what this kernel lacks, proves nothing below.
    EXPECT_GE(possible(refusals, By::Calls).size(), std::size_t{getuid() == 0 ? 30U : 15U});
    EXPECT_EQ(possible(refusals, By::Bounds).size(), 11U);
    EXPECT_EQ(possible(refusals, By::Kept).size(), 11U);
}

TEST(Confinement, RefusedCallsAreErrorsAndTheRestGoesOn) {
    const std::vector<std::string> control = possible(freely(), By::Calls);
    const Refusals refusals = tryAll([](const test::AttemptPlaces&) { return refuseCalls(false).rules > 100; });
    for (const std::string& name : control) EXPECT_EQ(refusals.at(name), name == "clone3" ? ENOSYS : EPERM) << name;
    for (const By by : {By::Bounds, By::Kept}) {
        for (const Attempt& one : test::attempts()) {
            if (one.by == by) {
                EXPECT_EQ(refusals.at(one.name), 0) << one.name;
            }
        }
    }
}

TEST(Confinement, TheNetworkIsKeptWhereAServerHasAHost) {
    const Refusals refusals = tryAll([](const test::AttemptPlaces&) { return refuseCalls(true).rules > 100; });
    for (const char* name : {"connect", "socket AF_INET", "socket AF_INET6", "socket AF_UNIX"}) {
        EXPECT_EQ(refusals.at(name), 0) << name;
    }
    EXPECT_EQ(refusals.at("socket AF_PACKET"), EPERM);
    EXPECT_EQ(refusals.at("fork"), EPERM);
}

TEST(Confinement, ThreadsThatRunAlreadyAreRefusedAsWell) {
    const pid_t child = fork();
    if (child == 0) {
        std::atomic<int> turn{0};
        int before = -1;
        int after = -1;
        std::thread other([&] {
            before = chown("/", static_cast<uid_t>(-1), static_cast<gid_t>(-1)) == 0 ? 0 : errno;
            turn = 1;
            turn.notify_all();
            turn.wait(1);
            after = chown("/", static_cast<uid_t>(-1), static_cast<gid_t>(-1)) == 0 ? 0 : errno;
        });
        turn.wait(0);
        const bool refused = refuseCalls(false).rules > 0;
        turn = 2;
        turn.notify_all();
        other.join();
        _exit(refused && after == EPERM && (before == 0 || getuid() != 0) ? 0 : 1);
    }
    int result = -1;
    ASSERT_EQ(waitpid(child, &result, 0), child);
    EXPECT_EQ(result, 0);
}

TEST(Confinement, WritingIsBoundToItsPlacesAndReadingIsNot) {
    if (!kernelBoundsWriting()) GTEST_SKIP() << "this kernel has no Landlock";
    const Refusals refusals = tryAll([](const test::AttemptPlaces& p) {
        const WrittenPlaces bounds = boundWriting({p.inside, p.inside + "/not there"});
        return bounds.version > 0 && bounds.places == std::vector<std::string>{p.inside};
    });
    for (const std::string& name : possible(freely(), By::Bounds)) EXPECT_EQ(refusals.at(name), EACCES) << name;
    for (const std::string& name : possible(freely(), By::Kept)) EXPECT_EQ(refusals.at(name), 0) << name;
    EXPECT_EQ(refusals.at("execve"), EACCES);
}

TEST(Confinement, ASingleFileCanBeWrittenAndNothingBesideIt) {
    if (!kernelBoundsWriting()) GTEST_SKIP() << "this kernel has no Landlock";
    const Refusals refusals =
        tryAll([](const test::AttemptPlaces& p) { return boundWriting({p.outside + "/file"}).places.size() == 1; });
    EXPECT_EQ(refusals.at("write outside"), 0);
    EXPECT_EQ(refusals.at("cut off outside"), 0);
    EXPECT_EQ(refusals.at("create outside"), EACCES);
    EXPECT_EQ(refusals.at("write inside"), EACCES);
}

/// MEDIA-79: Where the user keeps pictures files can be added, and nothing of what is there removed, renamed or emptied
TEST(Confinement, WherePicturesAreKeptFilesCanOnlyBeAdded) {
    if (!kernelBoundsWriting()) GTEST_SKIP() << "this kernel has no Landlock";
    const Refusals refusals =
        tryAll([](const test::AttemptPlaces& p) { return boundWriting({p.inside}, {p.outside}).places.size() == 2; });
    for (const char* const add : {"create outside", "write outside"}) EXPECT_EQ(refusals.at(add), 0) << add;
    for (const char* const other : {"cut off outside", "remove outside", "make a folder outside",
                                    "remove a folder outside", "rename outside", "socket outside"}) {
        EXPECT_EQ(refusals.at(other), EACCES) << other;
    }
}

/// The environment as a table.
Variables variables(std::map<std::string, std::string> values) {
    return [values = std::move(values)](const char* name) {
        const auto found = values.find(name);
        return found == values.end() ? std::string() : found->second;
    };
}

TEST(Confinement, AHostIsToldFromAServerOfThisMachine) {
    for (const char* here : {"", ":0", ":10.0", "unix:0", "/tmp/launch-x/display:0", "unix/:0"}) {
        EXPECT_FALSE(namesHost(variables({{"DISPLAY", here}}))) << here;
    }
    for (const char* there : {"localhost:10.0", "other:0", "192.168.1.5:0.0", "tcp/other:0"}) {
        EXPECT_TRUE(namesHost(variables({{"DISPLAY", there}}))) << there;
    }
    for (const char* here :
         {"", "unix:/run/user/1000/pulse/native", "/run/pulse", "{abc}unix:/run/pulse", "{abc}unix:/a unix:/b"}) {
        EXPECT_FALSE(namesHost(variables({{"PULSE_SERVER", here}}))) << here;
    }
    for (const char* there : {"other", "tcp:other:4713", "tcp6:other", "unix:/a other", "{abc}unix:/a tcp:other"}) {
        EXPECT_TRUE(namesHost(variables({{"PULSE_SERVER", there}}))) << there;
    }
    EXPECT_FALSE(namesHost(variables({{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/run/bus;unix:abstract=/x"}})));
    EXPECT_TRUE(namesHost(variables({{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/run/bus;tcp:host=a,port=1"}})));
    EXPECT_TRUE(namesHost(variables({{"AT_SPI_BUS_ADDRESS", "tcp:host=a,port=1"}})));
}

TEST(Confinement, ASavedFileThatIsALinkIsWrittenWhereItLies) {
    const test::TemporaryFolder folder;
    std::filesystem::create_directory(folder.in("own"));
    std::filesystem::create_directory(folder.in("kept"));
    std::filesystem::create_directory(folder.in("loose"));
    folder.write("kept/list", "");
    std::filesystem::create_symlink("../kept/list", folder.in("own/FILE07.INI"));
    std::filesystem::create_symlink("../loose/list", folder.in("own/OTHER.INI"));
    const auto places = placesToWrite(folder.in("own"), "/run/user/own",
                                      variables({{"XDG_CACHE_HOME", "/caches"}, {"XDG_RUNTIME_DIR", "/run/user"}}));
    const auto holds = [&](const std::string& place) {
        return std::find(places.begin(), places.end(), place) != places.end();
    };
    EXPECT_TRUE(holds(folder.in("own")));
    EXPECT_TRUE(holds("/run/user/own"));
    EXPECT_TRUE(holds(std::filesystem::canonical(folder.in("kept")).string()));
    EXPECT_FALSE(holds(std::filesystem::canonical(folder.in("loose")).string()));
    EXPECT_TRUE(holds("/caches/fontconfig"));
    EXPECT_FALSE(holds("/caches"));
    EXPECT_TRUE(holds("/run/user/dconf"));
    for (const std::string odd : {"here", ".", "", "here\nand there"}) {
        for (const std::string& each : placesToWrite(
                 folder.in("own"), "", variables({{"XDG_CACHE_HOME", odd}, {"XDG_RUNTIME_DIR", odd}, {"HOME", odd}}))) {
            EXPECT_EQ(each.front(), '/') << each << " is another place wherever the program is started";
        }
    }
    EXPECT_FALSE(holds("/run/user"));
}

}  // namespace
}  // namespace corvane
