// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <optional>

#include "files/posix_files.h"
#include "linux/command_line.h"
#include "linux/posix_folders.h"
#include "linux/window_system.h"
#include "unit/linux/fork_alone.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

TEST(WindowSystem, IsX11WhereverItHasADisplayUnlessTheUserChose) {
    EXPECT_EQ(platformToAskFor({"", ":0", "", ""}), "xcb");
    EXPECT_EQ(platformToAskFor({"", ":0", "wayland-0", ""}), "xcb") << "through XWayland";
    EXPECT_EQ(platformToAskFor({"wayland", ":0", "", ""}), "") << "the user's choice stands";
    EXPECT_EQ(platformToAskFor({"", "", "wayland-0", ""}), "") << "a Wayland without X11";
}

TEST(WindowSystem, IsWaylandWhereXWindowsAreNotPlacedEither) {
    EXPECT_EQ(platformToAskFor({"", ":0", "wayland-1", "/run/sway.sock"}), "wayland;xcb");
    EXPECT_EQ(platformToAskFor({"", ":0", "", "/run/sway.sock"}), "xcb") << "another display than its own";
    EXPECT_EQ(platformToAskFor({"xcb", ":0", "wayland-1", "/run/sway.sock"}), "") << "the user's choice stands";
}

TEST(WindowSystem, IsToldWithWhatItCannot) {
    const auto placedByPlayer = [](const Displays& there) {
        return windowsTold(there) == "placed by the player (X11)";
    };
    const auto placedByOther = [](const Displays& there) {
        return windowsTold(there).find("none stays on top") != std::string::npos;
    };
    EXPECT_TRUE(placedByPlayer({"", ":0", "wayland-0", ""}));
    EXPECT_TRUE(placedByPlayer({"xcb", ":0", "wayland-1", "/run/sway.sock"}));
    EXPECT_TRUE(placedByOther({"", "", "wayland-0", ""}));
    EXPECT_TRUE(placedByOther({"", ":0", "wayland-1", "/run/sway.sock"}));
    EXPECT_TRUE(placedByOther({"wayland", ":0", "wayland-0", ""}));
    EXPECT_EQ(windowsTold({"", "", "", ""}), "there is no display");
    EXPECT_EQ(windowsTold({"offscreen", ":0", "", ""}), "shown by offscreen");
}

/// CMD-02: They are joined by blanks
TEST(CommandLines, NamesAreJoinedByBlanks) {
    const CommandLine line = readCommandLine({"/a.mid", "b c.wav"}, "/here");
    EXPECT_EQ(line.names, "/a.mid b c.wav");
    EXPECT_EQ(line.files, Texts{});
    EXPECT_FALSE(line.help || line.version);
}

/// CMD-15: Behind --open each argument is one file, taken as a drop
TEST(CommandLines, EachArgumentBehindOpenIsOneFile) {
    const CommandLine line =
        readCommandLine({"x.mid", "--open", "/a b.mid", "c.wav", "file:///d%20e.mp3", "--help"}, "/here");
    EXPECT_EQ(line.names, "x.mid");
    EXPECT_EQ(line.files, (Texts{"/a b.mid", "/here/c.wav", "/d e.mp3", "/here/--help"}));
    EXPECT_FALSE(line.help);
    EXPECT_EQ(readCommandLine({"--open", "a.mid"}, "/").files, Texts{"/a.mid"});
    EXPECT_EQ(readCommandLine({"--open"}, "/").names, "") << "started from the desktop's menu: the saved list";
}

/// CMD-20: Names that are left out, and options that there are not, are told on the error stream, a line each that
///     steers no terminal
TEST(CommandLines, WhatLooksLikeAnOptionIsNoName) {
    const CommandLine line = readCommandLine({"--opne", "/a.mid", "-x", "-b.mid", "-"}, "/");
    EXPECT_EQ(line.unknown, (Texts{"--opne", "-x"}));
    EXPECT_EQ(line.names, "/a.mid -b.mid -");
    EXPECT_EQ(readCommandLine({"--opne"}, "/").names, "") << "the saved list stays";
}

/// CMD-18: --help and --version are options
/// MEDIA-43
TEST(CommandLines, Options) {
    EXPECT_TRUE(readCommandLine({"--help"}, "/").help);
    EXPECT_TRUE(readCommandLine({"-h"}, "/").help);
    EXPECT_TRUE(readCommandLine({"--version"}, "/").version);
    for (const char* name : {"--open [FILE...]", "--help", "--version", "CORVANE_FOLDER", "CORVANE_CDROM",
                             "CORVANE_SOUNDFONT", "CORVANE_SCALE"}) {
        EXPECT_NE(helpText().find(name), std::string::npos) << name;
    }
}

struct ProgramFolders : ::testing::Test {
    ProgramFolders() { fs::create_directories(folder.in("bin")); }
    void ship(const std::string& place) {
        fs::create_directories(folder.in(place + "/PANELSET"));
        folder.write(place + "/PANELSET/DEFAULT.CSV", "skin");
    }
    FolderChoice choice() const {
        return {"", userFolder("", folder.in("home")), {folder.in("bin"), folder.in("share/corvane")}};
    }
    std::string ready(FolderChoice chosen) { return ProgramFolder(std::move(chosen), folders, files).ready(); }

    test::TemporaryFolder folder;
    PosixFolders folders;
    PosixFiles files;
};

/// START-43: The program's folder is the one chosen by the environment, else its own with skins beside it, else the
///     user's
TEST_F(ProgramFolders, TheChosenOneWins) {
    ship("bin");
    FolderChoice wanted = choice();
    wanted.chosen = folder.in("chosen/");
    EXPECT_EQ(ready(wanted), folder.in("chosen"));
    EXPECT_FALSE(fs::exists(folder.in("chosen"))) << "nothing is put there";
}

/// START-43
TEST_F(ProgramFolders, TheProgramsOwnWithSkinsBeside) {
    ship("bin");
    EXPECT_EQ(ready(choice()), folder.in("bin"));
}

/// START-43
TEST_F(ProgramFolders, ElseTheUsersFilledWithTheShippedSkinsOnce) {
    ship("share/corvane");
    EXPECT_EQ(ready(choice()), folder.in("home/.local/share/corvane"));
    EXPECT_EQ(folder.bytes("home/.local/share/corvane/PANELSET/DEFAULT.CSV"), "skin");
    folder.write("home/.local/share/corvane/PANELSET/DEFAULT.CSV", "mine");
    ready(choice());
    EXPECT_EQ(folder.bytes("home/.local/share/corvane/PANELSET/DEFAULT.CSV"), "mine");
}

/// FAULT-12: Where the user's folder cannot be made, an installed program plays with the shipped skins and writes
///     nothing among them
TEST_F(ProgramFolders, WithoutAPlaceOfTheUsersTheShippedSkinsAreUsed) {
    ship("share/corvane");
    FolderChoice homeless = choice();
    homeless.user = "/proc/none/corvane";  // where not even root can make a folder
    EXPECT_EQ(ready(homeless), folder.in("share/corvane"));
    EXPECT_FALSE(fs::exists(folder.in("share/corvane/PANELSET/.shipped"))) << "nothing is written there";
}

/// A variable of the environment as a test wants it, for its life; null: not set.
class Variable {
public:
    Variable(const char* name, const char* value) : name_(name) {
        if (const char* const before = std::getenv(name); before != nullptr) before_ = before;
        set(value);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { set(before_ ? before_->c_str() : nullptr); }

private:
    void set(const char* value) { value != nullptr ? setenv(name_, value, 1) : unsetenv(name_); }
    const char* name_;
    std::optional<std::string> before_;
};

/// FAULT-13: A home that the environment does not name is the one that the system has recorded
TEST(ProgramFolder, WithoutAHomeInTheEnvironmentTheRecordedOneIsTaken) {
    const Variable noData("XDG_DATA_HOME", nullptr);
    {
        const Variable given("HOME", "/somewhere/else");
        EXPECT_EQ(folderChoiceOfEnvironment().user, "/somewhere/else/.local/share/corvane");
    }
    const passwd* const user = getpwuid(getuid());
    ASSERT_NE(user, nullptr);
    for (const char* const missing : {static_cast<const char*>(nullptr), ""}) {
        const Variable none("HOME", missing);
        EXPECT_EQ(folderChoiceOfEnvironment().user, std::string(user->pw_dir) + "/.local/share/corvane");
    }
}

/// The user's skins, by an installed program that ships some.
struct GivenSkins : ProgramFolders {
    GivenSkins() {
        fs::create_directories(folder.in("share/corvane/PANELSET"));
        ship("DEFAULT.BMP", "picture");
        ship("DEFAULT.CSV", "records");
    }
    void ship(const std::string& name, const std::string& bytes) {
        folder.write("share/corvane/PANELSET/" + name, bytes);
    }
    std::string own(const std::string& name) const { return "home/.local/share/corvane/PANELSET/" + name; }
    bool has(const std::string& name) const { return fs::exists(folder.in(own(name))); }
    void start() { ready(choice()); }
};

TEST_F(GivenSkins, ASkinThatIsNewComesToAFolderThatHasOthers) {
    start();
    folder.write(own("MINE.CSV"), "mine");
    ship("BRASS.BMP", "brass");
    ship("BRASS.CSV", "brass records");
    start();
    EXPECT_EQ(folder.bytes(own("BRASS.BMP")), "brass");
    EXPECT_EQ(folder.bytes(own("BRASS.CSV")), "brass records");
    EXPECT_EQ(folder.bytes(own("MINE.CSV")), "mine");
}

TEST_F(GivenSkins, WhatTheUserDeletedStaysDeleted) {
    start();
    fs::remove(folder.in(own("DEFAULT.BMP")));
    ship("BRASS.BMP", "brass");
    start();
    EXPECT_FALSE(has("DEFAULT.BMP"));
    EXPECT_TRUE(has("BRASS.BMP"));
    fs::remove(folder.in(own("BRASS.BMP")));
    start();
    EXPECT_FALSE(has("BRASS.BMP"));
}

TEST_F(GivenSkins, WhatTheUserChangedIsKeptAndGetsNothingBeside) {
    start();
    folder.write(own("DEFAULT.BMP"), "painted");
    ship("DEFAULT.BMP", "newer picture");
    ship("DEFAULT@2X.BMP", "twice");
    start();
    EXPECT_EQ(folder.bytes(own("DEFAULT.BMP")), "painted");
    EXPECT_FALSE(has("DEFAULT@2X.BMP")) << "it would not fit the user's picture";
}

TEST_F(GivenSkins, AnUnchangedSkinGetsWhatIsNewOfIt) {
    start();
    ship("DEFAULT@2X.BMP", "twice");
    start();
    EXPECT_TRUE(has("DEFAULT@2X.BMP"));
}

TEST_F(GivenSkins, AFolderOfAnEarlierVersionGetsWhatIsMissing) {
    fs::create_directories(folder.in(own("")));
    folder.write(own("DEFAULT.BMP"), "picture");
    ship("SLIM.BMP", "slim");
    start();
    EXPECT_TRUE(has("DEFAULT.CSV"));
    EXPECT_TRUE(has("SLIM.BMP"));
}

TEST_F(GivenSkins, HaveTheModesOfTheUsersOwnFiles) {
    for (const char* name : {"DEFAULT.BMP", "DEFAULT.CSV"}) {
        fs::permissions(folder.in(std::string("share/corvane/PANELSET/") + name), fs::perms::owner_read);
    }
    const auto old = umask(022);
    start();
    umask(old);
    using fs::perms;
    EXPECT_EQ(fs::status(folder.in(own("DEFAULT.BMP"))).permissions(),
              perms::owner_read | perms::owner_write | perms::group_read | perms::others_read);
}

TEST_F(GivenSkins, NothingButSkinsIsGiven) {
    ship("LICENSE", "words");
    start();
    EXPECT_FALSE(has("LICENSE"));
}

TEST(UserFolders, TheDataHomeCountsWhenItIsAbsolute) {
    EXPECT_EQ(userFolder("/data/", "/home"), "/data/corvane");
    EXPECT_EQ(userFolder("data", "/home"), "/home/.local/share/corvane");
}

/// Ends the process, 0 if the check holds for a user to whom rights apply: root, who may write everywhere, first
/// becomes "nobody", who is given the folder that the test lies in.
[[noreturn]] void endAsUserWith(const fs::path& folder, const std::function<bool()>& holds) {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0) {
        bool given = chown(folder.c_str(), kNobody, kNobody) == 0;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
            given = chown(entry.path().c_str(), kNobody, kNobody) == 0 && given;
        }
        if (!given || setresgid(kNobody, kNobody, kNobody) != 0 || setresuid(kNobody, kNobody, kNobody) != 0) _exit(2);
    }
    _exit(holds() ? 0 : 1);
}

/// START-43
TEST_F(ProgramFolders, AReadOnlyProgramFolderIsNotOne) {
    ship("bin");
    fs::permissions(folder.in("bin"), fs::perms::owner_read | fs::perms::owner_exec);
    test::leaveThreads();
    EXPECT_EXIT(
        endAsUserWith(folder.path(), [this] { return ready(choice()) == folder.in("home/.local/share/corvane"); }),
        ::testing::ExitedWithCode(0), "");
    fs::permissions(folder.in("bin"), fs::perms::owner_all);
}

}  // namespace
}  // namespace corvane
