// SPDX-License-Identifier: GPL-3.0-or-later
// What reads and writes files, on a drive whose calls do not come back (tests/stall/).
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QImage>
#include <chrono>
#include <cstdlib>
#include <future>
#include <thread>

#include "contract/linux/mci_rig.h"
#include "contract/linux/movie_rig.h"
#include "drives/drive_file.h"
#include "files/posix_files.h"
#include "linux/media/desktop_station.h"
#include "linux/pictures/qt_pictures.h"
#include "media/discs/cd_folder.h"
#include "media/midi/midi_sound.h"
#include "media/movies/movie_duration.h"
#include "media/sound/file_sound.h"
#include "unit/linux/cd_image.h"
#include "unit/linux/midi_score.h"
#include "unit/linux/offscreen.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kSlack{1'500};  ///< a busy machine
constexpr milliseconds kAtOnce{1'000};

std::string littleEndian(std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text.push_back(static_cast<char>(value >> (8 * i) & 0xFFU));
    return text;
}

/// A silent sound of so many frames, mono.
std::string wave(std::uint32_t frames) {
    return "RIFF" + littleEndian(36 + frames * 2, 4) + "WAVEfmt " + littleEndian(16, 4) + littleEndian(1, 2) +
           littleEndian(1, 2) + littleEndian(44100, 4) + littleEndian(88200, 4) + littleEndian(2, 2) +
           littleEndian(16, 2) + "data" + littleEndian(frames * 2, 4) + std::string(frames * 2, '\0');
}

const std::string kSequence("MThd\0\0\0\6\0\0\0\1\0\140MTrk\0\0\0\4\0\377\57\0", 26);

class StalledDrive : public ::testing::Test {
protected:
    StalledDrive() {
        test::offscreenApplication();
        std::filesystem::create_directory(folder_.in("drive"));
        setenv("CORVANE_STALL_FOLDER", folder_.in("drive").c_str(), 1);
        setenv("CORVANE_STALL_SWITCH", folder_.in("switch").c_str(), 1);
    }
    /// What hangs comes back before the folder goes.
    ~StalledDrive() override {
        letGo();
        EXPECT_TRUE(answersAgain());
        unsetenv("CORVANE_STALL_FOLDER");
        unsetenv("CORVANE_STALL_SWITCH");
    }

    std::string on(const std::string& name) const { return folder_.in("drive/" + name); }
    void put(const std::string& name, const std::string& bytes) { folder_.write("drive/" + name, bytes); }
    void stall(const std::string& word) { folder_.write("switch", word); }
    void letGo() { std::filesystem::remove(folder_.in("switch")); }
    bool answersAgain() {
        put("probe", "there");
        return test::waitUntil([this] { return files_.lookUp(on("probe")) && files_.read(on("probe"), 100); }, 5'000);
    }

    test::TemporaryFolder folder_;
    PosixFiles files_;
};

class StalledCalls : public StalledDrive, public ::testing::WithParamInterface<const char*> {};

/// FAULT-19
TEST_P(StalledCalls, AFileIsReadInTimeOrNotAtAllAndTheDriveIsNotAskedAgain) {
    put("list.ini", "[LIST]\n");
    folder_.write("other.ini", "[OTHER]\n");
    ASSERT_EQ(files_.read(on("list.ini"), 100), "[LIST]\n");
    stall(GetParam());
    const test::Stopwatch clock;
    EXPECT_EQ(files_.read(on("list.ini"), 100), std::nullopt);
    EXPECT_GE(clock.passed(), DriveCalls::kPatience);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(files_.read(on("list.ini"), 100), std::nullopt);
    EXPECT_EQ(files_.lookUp(on("list.ini")), std::nullopt);
    EXPECT_FALSE(files_.replace(on("list.ini"), "new"));
    EXPECT_LT(clock.own(), DriveCalls::kPatience + kSlack);
    EXPECT_EQ(files_.read(folder_.in("other.ini"), 100), "[OTHER]\n") << "other places go on";
    letGo();
    EXPECT_TRUE(answersAgain());
    EXPECT_EQ(files_.read(on("list.ini"), 100), "[LIST]\n");
}

/// FAULT-19
TEST_P(StalledCalls, APictureFailsInTimeWithThatReason) {
    QImage plain(300, 200, QImage::Format_RGB32);
    plain.fill(Qt::red);
    ASSERT_TRUE(plain.save(QString::fromStdString(on("a.jpg")), "JPG"));
    QtPictures pictures;
    ASSERT_FALSE(pictures.decode(on("a.jpg")).picture.empty());
    stall(GetParam());
    const test::Stopwatch clock;
    const auto decoded = pictures.decode(on("a.jpg"));
    EXPECT_TRUE(decoded.picture.empty());
    EXPECT_EQ(decoded.reason, DriveCalls::kNoAnswer);
    EXPECT_GE(clock.passed(), DriveCalls::kPatience);
    EXPECT_EQ(pictures.decode(on("a.jpg")).reason, DriveCalls::kNoAnswer);
    EXPECT_LT(clock.own(), DriveCalls::kPatience + kSlack);
    letGo();
    EXPECT_TRUE(answersAgain());
    EXPECT_FALSE(pictures.decode(on("a.jpg")).picture.empty());
}

/// FAULT-19
TEST_P(StalledCalls, APictureThatIsHintedAtHoldsNobodyUp) {
    put("a.jpg", "no picture");
    stall(GetParam());
    const test::Stopwatch clock;
    {
        QtPictures pictures;
        pictures.decodeAhead(on("a.jpg"));
        EXPECT_LT(clock.own(), kAtOnce);
        EXPECT_EQ(pictures.decode(on("a.jpg")).reason, DriveCalls::kNoAnswer);
        EXPECT_LT(clock.own(), DriveCalls::kPatience + kSlack);
        letGo();
        ASSERT_TRUE(answersAgain());
        stall(GetParam());
        pictures.decodeAhead(on("b.jpg"));
        pictures.decodeAhead(on("a.jpg"));
        const test::Stopwatch ending;
        while (ending.passed() < milliseconds(200)) QCoreApplication::processEvents();  // until it waits for the drive
    }
    EXPECT_LT(clock.own(), DriveCalls::kPatience + kSlack + milliseconds(5'000));
}

/// FAULT-19
TEST_P(StalledCalls, SoundsFailInTimeWithThatReason) {
    put("a.wav", wave(44100));
    put("a.mid", kSequence);
    const auto synthesizer = std::make_shared<Synthesizer>();
    const std::string disc = test::writeImage(on(""), "disc", {{440, 75}});
    ASSERT_NE(FileSound::open(on("a.wav")).sound, nullptr);
    ASSERT_TRUE(holdsMidi(on("a.mid")));
    ASSERT_NE(openCdSound(disc).sound, nullptr);
    stall(GetParam());
    const test::Stopwatch clock;
    const auto inWorker = [](auto open) { return std::async(std::launch::async, open); };
    auto sound = inWorker([&] { return FileSound::open(on("a.wav")).reason; });
    auto sequence = inWorker([&] { return MidiSound::open(on("a.mid"), synthesizer).reason; });
    auto counted = inWorker([&] { return countedLength(on("a.wav"), std::atomic<bool>{false}); });
    EXPECT_EQ(sound.get(), DriveCalls::kNoAnswer);
    EXPECT_EQ(sequence.get(), DriveCalls::kNoAnswer);
    EXPECT_EQ(counted.get(), std::nullopt);
    EXPECT_GE(clock.passed(), DriveCalls::kLongPatience);
    EXPECT_EQ(openCdSound(disc).reason, DriveCalls::kNoAnswer) << "it is not asked again";
    EXPECT_LT(clock.own(), DriveCalls::kLongPatience + kSlack);
}

class LinksToAStalledDrive : public StalledDrive {
protected:
    LinksToAStalledDrive() {
        put("list.ini", "[LIST]\n");
        put("more.ini", "[MORE]\n");
        std::filesystem::create_directory(folder_.in("links"));
        folder_.write("links/good.ini", "[GOOD]\n");
        folder_.write("other.ini", "[OTHER]\n");
        link("stalled.ini", on("list.ini"));
        link("more.ini", on("more.ini"));
        link("fine.ini", "../other.ini");
        link("drive", "../drive");
    }
    void link(const std::string& name, const std::string& to) { std::filesystem::create_symlink(to, by(name)); }
    std::string by(const std::string& name) const { return folder_.in("links/" + name); }
    std::optional<std::string> read(const std::string& path) { return files_.read(path, 100); }
};

class StalledLinks : public LinksToAStalledDrive, public ::testing::WithParamInterface<const char*> {};

TEST_P(StalledLinks, BlockTheDriveAndNotTheFolderTheyLieIn) {
    ASSERT_EQ(read(by("stalled.ini")), "[LIST]\n");
    stall(GetParam());
    const test::Stopwatch stalled;
    EXPECT_EQ(read(by("stalled.ini")), std::nullopt);
    EXPECT_GE(stalled.passed(), DriveCalls::kPatience);
    const test::Stopwatch clock;
    EXPECT_EQ(read(by("good.ini")), "[GOOD]\n");
    EXPECT_EQ(read(by("fine.ini")), "[OTHER]\n");
    EXPECT_EQ(read(by("stalled.ini")), std::nullopt) << "it is not asked again";
    EXPECT_EQ(read(by("more.ini")), std::nullopt) << "by another link neither";
    EXPECT_EQ(read(by("drive/more.ini")), std::nullopt);
    EXPECT_EQ(read(on("more.ini")), std::nullopt) << "nor by its own name";
    EXPECT_LT(clock.own(), kAtOnce);
    letGo();
    ASSERT_TRUE(answersAgain());
    EXPECT_EQ(read(by("stalled.ini")), "[LIST]\n");
}

TEST_P(StalledLinks, OfAFolderCountAsTheDriveToo) {
    stall(GetParam());
    EXPECT_EQ(read(by("drive/list.ini")), std::nullopt);
    const test::Stopwatch clock;
    EXPECT_EQ(read(by("good.ini")), "[GOOD]\n");
    EXPECT_EQ(read(by("drive/more.ini")), std::nullopt);
    EXPECT_EQ(read(on("list.ini")), std::nullopt);
    EXPECT_LT(clock.own(), kAtOnce);
}

TEST_F(LinksToAStalledDrive, AreLeftOutOfAList) {
    for (int i = 0; i < 50; ++i) link("a" + std::to_string(i) + ".ini", on("list.ini"));
    ASSERT_EQ(files_.list(by(""), "*.ini").size(), 54U);
    ASSERT_EQ(files_.folders(by("")), std::vector<std::string>{"drive"});
    stall("all");
    const test::Stopwatch clock;
    EXPECT_EQ(files_.list(folder_.in("links"), "*.ini"), (std::vector<std::string>{"fine.ini", "good.ini"}));
    EXPECT_LT(clock.own(), DriveCalls::kPatience + kAtOnce);
}

TEST_F(LinksToAStalledDrive, LoopsEnd) {
    link("one", "two");
    link("two", "one");
    link("self", "self/self");
    const test::Stopwatch clock;
    for (const char* name : {"one", "two/list.ini", "self"}) EXPECT_EQ(read(by(name)), std::nullopt) << name;
    EXPECT_EQ(read(by("good.ini")), "[GOOD]\n");
    EXPECT_LT(clock.own(), kAtOnce);
}

INSTANTIATE_TEST_SUITE_P(From, StalledLinks, ::testing::Values("open", "all"),
                         [](const auto& each) { return std::string(each.param); });

INSTANTIATE_TEST_SUITE_P(From, StalledCalls, ::testing::Values("read", "open", "all"),
                         [](const auto& each) { return std::string(each.param); });

/// FAULT-19
TEST_F(StalledDrive, ADiscFailsInTimeWithThatReason) {
    const std::string disc = test::writeImage(on(""), "disc", {{440, 75}});
    stall("open");
    const test::Stopwatch clock;
    EXPECT_EQ(openCdSound(disc).reason, DriveCalls::kNoAnswer);
    EXPECT_GE(clock.passed(), DriveCalls::kLongPatience);
    EXPECT_LT(clock.own(), DriveCalls::kLongPatience + kSlack);
}

/// As a drive that has to spin up first: what is asked for before the disc is open cannot know its tracks' lengths.
TEST_F(StalledDrive, ADiscThatOpensLatePlaysItsTrackWhole) {
    test::RigLoop loop;
    DesktopStation station(loop, true);
    const std::string disc = test::writeImage(on(""), "disc", {{440, 75}, {660, 75}, {880, 75}});
    {
        OutputMciControl control(station);
        std::vector<int> done;
        control.Done.tie([&](int code) { done.push_back(code); });
        control.DeviceType("CDAudio");
        control.FileName(disc);
        stall("open");
        control.Command("Open");
        control.TimeFormat(kFormatTmsf);
        control.Track(2);
        EXPECT_EQ(control.TrackLength(), 0) << "it is not open yet";
        control.From(2);
        control.To(control.TrackLength() * 256 + 2);
        control.Command("Play");
        letGo();
        EXPECT_TRUE(test::MovieRig::until([&] { return !done.empty(); }, 10'000));
        EXPECT_EQ(done, std::vector<int>{kNotifySuccessful});
        EXPECT_EQ(control.Position(), 3) << "its end is the next one's start";
    }
    station.post.stop();
}

/// FAULT-20
TEST_F(StalledDrive, ASoundThatIsAbandonedComesBackFromItsRead) {
    put("a.wav", wave(44100 * 60));
    const std::string disc = test::writeImage(on(""), "disc", {{440, 750}});
    std::shared_ptr<SoundBackend> sound = FileSound::open(on("a.wav")).sound;
    ASSERT_NE(sound, nullptr);
    std::vector<float> samples(44100 * 60);
    ASSERT_EQ(sound->read(samples.data(), 100), 100U);
    stall("read");
    auto read = std::async(std::launch::async, [&] { return sound->read(samples.data(), samples.size()); });
    EXPECT_EQ(read.wait_for(milliseconds(300)), std::future_status::timeout) << "it waits for the drive";
    const test::Stopwatch clock;
    sound->abandoned = true;
    EXPECT_LT(read.get(), samples.size());
    sound.reset();
    EXPECT_LT(clock.own(), kAtOnce);
}

/// FAULT-20
TEST_F(StalledDrive, WhatWasGivenUpEarlyDoesNotRefuseTheNextQuestion) {
    put("a.ini", "there");
    stall("read");
    std::atomic<bool> giveUp{false};
    std::string reason;
    const auto file = DriveFile::open(on("a.ini"), {DriveCalls::kLongPatience, &giveUp}, reason);
    ASSERT_NE(file, nullptr);
    char letter = ' ';
    auto read = std::async(std::launch::async, [&] { return file->read(0, &letter, 1); });
    EXPECT_EQ(read.wait_for(milliseconds(200)), std::future_status::timeout);
    giveUp = true;
    EXPECT_EQ(read.get(), -1);
    auto next = std::async(std::launch::async, [&] { return files_.read(on("a.ini"), 100); });
    EXPECT_EQ(next.wait_for(milliseconds(200)), std::future_status::timeout) << "it waits for the one before";
    letGo();
    EXPECT_EQ(next.get(), "there");
}

/// FAULT-21: A save that is not answered in time is refused, and the old file stays also when the drive comes back
TEST_F(StalledDrive, ASaveThatIsNotAnsweredIsRefusedForGood) {
    put("list.ini", "old");
    stall("write");
    const test::Stopwatch clock;
    EXPECT_FALSE(files_.replace(on("list.ini"), "new"));
    EXPECT_GE(clock.passed(), DriveCalls::kLongPatience);
    EXPECT_LT(clock.own(), DriveCalls::kLongPatience + kSlack);
    letGo();
    ASSERT_TRUE(answersAgain());
    EXPECT_EQ(folder_.bytes("drive/list.ini"), "old") << "also when the drive comes back";
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& each : std::filesystem::directory_iterator(folder_.in("drive"))) ++count;
    EXPECT_EQ(count, 2U) << "the list and the probe: nothing half written";
    EXPECT_TRUE(files_.replace(on("list.ini"), "new"));
}

/// FAULT-22
TEST_F(StalledDrive, PipesAndDevicesAreNoFilesAndHoldNobodyUp) {
    for (const char* const name : {"pipe.wav", "pipe.mid", "pipe.jpg", "pipe.cue"}) {
        ASSERT_EQ(mkfifo(on(name).c_str(), 0600), 0);
    }
    const test::Stopwatch clock;
    for (const std::string& path : {on("pipe.wav"), std::string("/dev/zero"), std::string("/dev/tty")}) {
        EXPECT_EQ(FileSound::open(path).reason, "This is not a file.");
        EXPECT_EQ(MidiSound::open(path, std::make_shared<Synthesizer>()).reason, "This is not a file.");
        EXPECT_EQ(QtPictures().decode(path).reason, "This is not a file.");
        EXPECT_EQ(files_.read(path, 100), std::nullopt);
        EXPECT_EQ(files_.lookUp(path), std::nullopt);
        EXPECT_EQ(countedLength(path, std::atomic<bool>{false}), std::nullopt);
    }
    EXPECT_NE(openCdSound(on("pipe.cue")).reason, "");
    EXPECT_NE(openCdSound("/dev/zero").reason, "");
    EXPECT_LT(clock.own(), kAtOnce);
}

/// The sounds for MIDI lie where the environment says.
class NamedSoundFont {
public:
    explicit NamedSoundFont(const std::string& path) { setenv("CORVANE_SOUNDFONT", path.c_str(), 1); }
    NamedSoundFont(const NamedSoundFont&) = delete;
    NamedSoundFont& operator=(const NamedSoundFont&) = delete;
    ~NamedSoundFont() { unsetenv("CORVANE_SOUNDFONT"); }
};

constexpr const char* kFont = "/usr/share/sounds/sf2/TimGM6mb.sf2";

/// FAULT-62: The soundfont is waited for like every file, and one that is none is told
TEST_F(StalledDrive, ASoundFontIsWaitedForLikeEveryFile) {
    std::filesystem::copy_file(kFont, on("a.sf2"));
    const NamedSoundFont named(on("a.sf2"));
    for (const char* const how : {"open", "read"}) {
        stall(how);
        Synthesizer synthesizer;
        const test::Stopwatch clock;
        EXPECT_NE(synthesizer.load().find(DriveCalls::kNoAnswer), std::string::npos) << how;
        EXPECT_LT(clock.own(), DriveCalls::kPatience * 2 + kSlack) << how;
        letGo();
        ASSERT_TRUE(answersAgain());
        EXPECT_EQ(synthesizer.load(), "") << how;
    }
}

/// FAULT-62
TEST_F(StalledDrive, InstrumentsAreThereWhenTheirDriveStopsAnswering) {
    std::filesystem::copy_file(kFont, on("a.sf2"));
    const NamedSoundFont named(on("a.sf2"));
    put("a.mid", test::Score().after(0, {0xC0, 19}).after(10, {0x90, 60, 100}).file());
    OpenedSound opened = MidiSound::open(on("a.mid"), std::make_shared<Synthesizer>());
    ASSERT_TRUE(opened.sound) << opened.reason;
    stall("read");
    std::vector<float> samples(2 * 44100);
    const test::Stopwatch clock;
    EXPECT_EQ(opened.sound->read(samples.data(), 4410), 4410U);
    EXPECT_LT(clock.own(), DriveCalls::kPatience + kSlack);
}

/// FAULT-62
TEST_F(StalledDrive, ASoundFontThatIsNoneIsToldAtOnce) {
    ASSERT_EQ(mkfifo(folder_.in("pipe").c_str(), 0600), 0);
    folder_.write("text.sf2", "RIFF of a song");
    for (const std::string& path : {folder_.in("pipe"), folder_.path(), folder_.in("none"), folder_.in("text.sf2"),
                                    std::string("/dev/zero"), std::string("/dev/stdin"), std::string()}) {
        const NamedSoundFont named(path);
        const test::Stopwatch clock;
        const std::string reason = Synthesizer().load();
        EXPECT_NE(reason.find("The sounds for MIDI cannot be read: " + path), std::string::npos) << reason;
        EXPECT_LT(clock.own(), kAtOnce) << path;
    }
}

/// All of a soundfont is held in memory: one of another size than any has is refused before it is read.
TEST_F(StalledDrive, ASoundFontThatIsTooLargeIsRefusedUnread) {
    folder_.write("giant.sf2", std::string("RIFF\xFF\xFF\xFF\xFFsfbk", 12));
    const NamedSoundFont named(folder_.in("giant.sf2"));
    constexpr std::uintmax_t kMost = std::uintmax_t{1} << 30;
    std::filesystem::resize_file(folder_.in("giant.sf2"), kMost + 1);
    const test::Stopwatch clock;
    EXPECT_EQ(Synthesizer().load(),
              "The sounds for MIDI cannot be read: " + folder_.in("giant.sf2") + "\r\nIt is larger than 1 GiB.");
    EXPECT_LT(clock.own(), kAtOnce);
}

/// The soundfont's name makes no line of its own in the reason.
TEST_F(StalledDrive, ASoundFontsNameMakesNoLineInAReason) {
    folder_.write("odd\nPress Ignore.sf2", std::string("RIFF\x04\0\0\0sfbk", 12));
    const NamedSoundFont named(folder_.in("odd\nPress Ignore.sf2"));
    EXPECT_EQ(Synthesizer().load(), "The sounds for MIDI cannot be read: " + folder_.in("odd Press Ignore.sf2") +
                                        "\r\nIt is not a whole soundfont.");
}

/// What is asked of a disc that is being opened is done when it is open.
TEST_F(StalledDrive, ADiscThatIsOpeningKeepsThePlaceOfItsFirstPlay) {
    test::writeImage(folder_.in("drive"), "tones", {{440, 300}, {660, 300}, {880, 300}});
    put("Track02.cda", "");
    test::RigLoop loop;
    DesktopStation station(loop, true);
    {
        OutputMciControl control(station);
        control.DeviceType("CDAudio");
        control.FileName(on("Track02.cda"));
        stall("open");
        control.Command("Open");
        control.TimeFormat(kFormatTmsf);
        control.From(2);
        control.To(2);
        control.Command("Play");
        EXPECT_EQ(control.Position(), 2) << "a target is read at once";
        control.Command("Pause");
        control.To(2);
        control.Command("Play");
        letGo();
        EXPECT_TRUE(test::waitUntil([&] { return control.Position() > 2 && control.Position() != 1; }, 8'000));
        EXPECT_EQ(control.Position() & 0xFF, 2);

        control.Command("Close");
        stall("open");
        control.Command("Open");
        control.From(3 | 1 << 16);
        control.To(3);
        control.Command("Play");
        control.Command("Pause");
        letGo();
        EXPECT_TRUE(test::waitUntil([&] { return control.Length() > 0; }, 8'000));
        EXPECT_EQ(control.Position(), 3 | 1 << 16) << "held where it was to be played from";
        EXPECT_FALSE(test::waitUntil([&] { return control.Position() != (3 | 1 << 16); }, 500)) << "and it stays there";
        control.To(1 | 2 << 16);
        control.Command("Seek");
        EXPECT_EQ(control.Position(), 1 | 2 << 16);
    }
    station.post.stop();
}

TEST_F(StalledDrive, ATracksEndIsNotShownAsTheNextOnesStart) {
    test::writeImage(folder_.in("drive"), "tones", {{440, 75}, {660, 75}});
    put("Track01.cda", "");
    test::RigLoop loop;
    DesktopStation station(loop, true);
    {
        OutputMciControl control(station);
        int done = 0;
        control.Done.tie([&done](int) { ++done; });
        control.DeviceType("CDAudio");
        control.FileName(on("Track01.cda"));
        control.Command("Open");
        control.TimeFormat(kFormatTmsf);
        control.From(1);
        control.To(1 | 1 << 16);
        control.Command("Play");
        test::waitUntil([&] { return control.Position() > 1; }, 5'000);
        // No event runs: the end is on its way.
        const auto until = Clock::now() + milliseconds(3'000);
        std::int32_t last = 0;
        while (Clock::now() < until) last = control.Position();
        EXPECT_EQ(last & 0xFF, 1);
        EXPECT_EQ(last, 1 | 74 << 24) << "its last place";
        EXPECT_TRUE(test::waitUntil([&] { return done == 1; }, 5'000));
    }
    station.post.stop();
}

}  // namespace
}  // namespace corvane
