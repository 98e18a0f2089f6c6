// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <algorithm>
#include <atomic>
#include <csignal>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "contract/linux/mci_rig.h"
#include "contract/sound_devices_contract.h"
#include "linux/media/desktop_station.h"
#include "linux/qt_post.h"
#include "media/sound/sound_devices.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

bool haveServer() { return !QStandardPaths::findExecutable("pulseaudio").isEmpty(); }

/// A sound server of our own, whose only output is heard by nobody.
class Server {
public:
    Server() {
        test::offscreenApplication();
        qputenv("PULSE_SERVER", ("unix:" + socket()).toUtf8());
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    ~Server() { kill(); }

    void start() {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_RUNTIME_DIR", folder_.path());
        environment.remove("PULSE_SERVER");
        // Not on any bus, nor on one found through the display: another server may hold the name there.
        environment.insert("DBUS_SESSION_BUS_ADDRESS", "disabled:");
        process_.setProcessEnvironment(environment);
        process_.setStandardErrorFile(QProcess::nullDevice());
        // Without shared memory: with it the server ends itself now and then as a program that played leaves.
        process_.start("pulseaudio",
                       {"-n", "--disable-shm=yes", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "-L",
                        "module-native-protocol-unix auth-anonymous=1 socket=" + socket(), "-L",
                        "module-null-sink sink_name=nul"});
        ASSERT_TRUE(test::waitUntil([this] { return pactl({"info"}).contains("nul"); }, 10'000));
    }
    void hang(bool on) const { ::kill(static_cast<pid_t>(process_.processId()), on ? SIGSTOP : SIGCONT); }
    void kill() {
        process_.kill();
        process_.waitForFinished(5000);
    }
    QString pactl(const QStringList& arguments) const {
        QProcess tool;
        tool.setStandardErrorFile(QProcess::nullDevice());
        tool.start("pactl", arguments);
        tool.waitForFinished(5000);
        return QString::fromUtf8(tool.readAllStandardOutput());
    }
    int streams() const { return static_cast<int>(pactl({"list", "short", "sink-inputs"}).count('\n')); }

private:
    QString socket() const { return folder_.filePath("socket"); }

    QTemporaryDir folder_;
    QProcess process_;
};

class ServedSoundStage : public SoundStage {
public:
    ServedSoundStage(bool reached) : reached_(reached && haveServer()) {
        if (reached_) server_.start();
        sound_ = std::make_unique<PulseSoundDevices>(QtPost(loop_));
    }
    EventLoop& loop() override { return loop_; }
    bool waitFor(const std::function<bool()>& condition, int atMostMs) override {
        return test::waitUntil(condition, atMostMs);
    }
    SoundDevices& sound() override { return *sound_; }
    bool reached() override { return reached_; }
    bool setByAnother(std::uint32_t volume) override {
        // What was set here must not come behind it. No event runs meanwhile.
        const QString before = ' ' + share(sound_->waveOutGetVolume().value_or(0) & 0xFFFFU) + ' ';
        const test::Stopwatch clock;
        while (!server_.pactl({"get-sink-volume", "@DEFAULT_SINK@"}).contains(before)) {
            if (clock.passed() > std::chrono::seconds(10)) return ADD_FAILURE() << "it was not set", true;
        }
        server_.pactl({"set-sink-volume", "@DEFAULT_SINK@", share(volume & 0xFFFFU), share(volume >> 16U)});
        return true;
    }
    bool useOutput(const std::string& name) override {
        const QString wanted = QString::fromStdString(name);
        if (!server_.pactl({"list", "short", "sinks"}).contains(wanted))
            server_.pactl({"load-module", "module-null-sink", "sink_name=" + wanted});
        server_.pactl({"set-default-sink", wanted});
        return true;
    }

private:
    /// A channel of a volume word as the server counts it, where 65536 is full.
    static QString share(std::uint32_t half) { return QString::number((half * 65536ULL + 32767) / 65535); }

    Server server_;
    test::RigLoop loop_;
    bool reached_;
    std::unique_ptr<SoundDevices> sound_;
};

INSTANTIATE_TEST_SUITE_P(Desktop, SoundDevicesContract,
                         testing::Values(
                             +[]() -> std::unique_ptr<SoundStage> { return std::make_unique<ServedSoundStage>(true); },
                             +[]() -> std::unique_ptr<SoundStage> {
                                 return std::make_unique<ServedSoundStage>(false);
                             }));

class SoundServerTest : public testing::Test {
protected:
    void SetUp() override {
        if (!haveServer()) GTEST_SKIP() << "no sound server to start";
    }
    static constexpr int kLongMs = 60'000;
    /// The scale of four seconds, over and over: no busy machine comes to its end meanwhile.
    std::string longSound() const {
        std::ostringstream all;
        all << std::ifstream(test::soundSample("scale.wav"), std::ios::binary).rdbuf();
        constexpr std::size_t kHead = 44, kRiffSize = 4, kDataSize = 40;
        std::string head = all.str().substr(0, kHead), samples;
        for (int i = 0; i < kLongMs / 4000; ++i) samples += all.str().substr(kHead);
        for (const std::size_t at : {kRiffSize, kDataSize}) {
            const std::size_t size = samples.size() + (at == kRiffSize ? kHead - 8 : 0);
            for (std::size_t byte = 0; byte < 4; ++byte) head[at + byte] = static_cast<char>(size >> 8U * byte);
        }
        folder.write("long.wav", head + samples);
        return folder.in("long.wav");
    }
    /// The volume that the server tells once it is asked for the first time.
    static std::optional<std::uint32_t> firstVolume(SoundDevices& sound) {
        EXPECT_TRUE(test::waitUntil([&] { return sound.waveOutGetVolume().has_value(); }, 5000));
        return sound.waveOutGetVolume();
    }
    test::TemporaryFolder folder;
    Server server;
};

/// PANEL-18
TEST_F(SoundServerTest, WhatWasReadIsRestoredExactly) {
    server.start();
    server.pactl({"set-sink-volume", "nul", "12345", "80000"});
    {
        PulseSoundDevices sound;
        const std::optional<std::uint32_t> before = firstVolume(sound);
        ASSERT_TRUE(before);
        sound.waveOutSetVolume(0x88888888);
        ASSERT_TRUE(test::waitUntil([&] { return server.pactl({"get-sink-volume", "nul"}).contains("34953"); }, 3000));
        sound.waveOutSetVolume(*before);
    }
    QString after;
    EXPECT_TRUE(test::waitUntil([&] {
        after = server.pactl({"get-sink-volume", "nul"});
        return after.contains("12345") && after.contains("80000");
    })) << after.toStdString();
}

/// MEDIA-32: Another program's change is seen
TEST_F(SoundServerTest, SeesWhatOtherProgramsSet) {
    server.start();
    PulseSoundDevices sound;
    ASSERT_TRUE(firstVolume(sound));
    server.pactl({"set-sink-volume", "nul", "65536", "32768"});
    EXPECT_TRUE(test::waitUntil([&] { return sound.waveOutGetVolume() == 0x8000FFFFU; }, 3000));
}

/// VOL-07
TEST_F(SoundServerTest, AVolumeIsFoundAgainWhenTheServerReturns) {
    server.start();
    PulseSoundDevices sound;
    ASSERT_TRUE(firstVolume(sound));
    server.kill();
    EXPECT_TRUE(test::waitUntil([&] { return !sound.waveOutGetVolume(); }, 3000));
    server.start();
    EXPECT_TRUE(test::waitUntil([&] { return sound.waveOutGetVolume().has_value(); }, 5000));
}

/// MEDIA-14: Without a sound server it plays on in silence and is heard again when one comes
/// FAULT-01: A sound server that is killed in the middle of a file: time goes on, and the sound when it is back
TEST_F(SoundServerTest, PlaysOnInSilenceAndIsHeardAgain) {
    server.start();
    test::RigLoop loop;
    DesktopStation station(loop, false);
    {
        OutputMciControl control(station);
        int done = 0;
        control.Done.tie([&](int /*code*/) { ++done; });
        control.FileName(longSound());
        control.Command("Open");
        control.Command("Play");
        ASSERT_TRUE(test::waitUntil([&] { return server.streams() == 1; }, 3000));
        server.kill();
        const int lost = control.Position();
        EXPECT_TRUE(test::waitUntil([&] { return control.Position() > lost + 500; }, 3000));
        server.start();
        EXPECT_TRUE(test::waitUntil([&] { return server.streams() == 1; }, 5000));
        EXPECT_EQ(done, 0);
        control.From(kLongMs - 1000);
        control.Command("Play");
        EXPECT_TRUE(test::waitUntil([&] { return done == 1; }, 10'000));
        EXPECT_EQ(control.Position(), kLongMs);
    }
    station.post.stop();
}

/// MEDIA-71: A sound server that hangs holds nothing up: the clock goes on, and it is heard again
TEST_F(SoundServerTest, AServerThatHangsHoldsNothingUpAndIsHeardWhenItGoesOn) {
    server.start();
    test::RigLoop loop;
    DesktopStation station(loop, false);
    {
        OutputMciControl control(station);
        int done = 0;
        control.Done.tie([&](int /*code*/) { ++done; });
        control.FileName(longSound());
        control.Command("Open");
        control.Command("Play");
        ASSERT_TRUE(test::waitUntil([&] { return control.Position() > 100; }, 5000));
        server.hang(true);
        const test::Stopwatch clock;
        const int hung = control.Position();
        EXPECT_TRUE(test::waitUntil([&] { return control.Position() > hung + 1000; }, 10'000)) << "the clock goes on";
        control.Command("Pause");
        control.Command("Play");
        EXPECT_LT(clock.own().count(), 12'000);
        server.hang(false);
        control.From(kLongMs - 4000);
        control.Command("Play");
        EXPECT_TRUE(test::waitUntil([&] { return done == 1; }, 15'000));
    }
    {
        server.hang(true);
        const test::Stopwatch clock;
        OutputMciControl control(station);
        control.FileName(test::soundSample("scale.wav"));
        control.Command("Open");
        control.Command("Play");
        PulseSoundDevices sound(QtPost{loop});
        EXPECT_EQ(sound.waveOutGetVolume(), std::nullopt);
        EXPECT_LT(clock.own().count(), 2'000) << "nobody waits for it";
        EXPECT_TRUE(test::waitUntil([&] { return control.Position() > 500; }, 10'000)) << "it plays by the clock";
    }
    station.post.stop();
    server.hang(false);
}

TEST_F(SoundServerTest, AStreamIsGivenBackWhenNothingPlays) {
    server.start();
    test::RigLoop loop;
    DesktopStation station(loop, false);
    station.output.warmUp();
    EXPECT_TRUE(test::waitUntil([&] { return server.streams() == 1; }, 3000));
    EXPECT_TRUE(test::waitUntil([&] { return server.streams() == 0; }, 15'000));
    station.post.stop();
}

/// A short sound, one of silence.
class ShortSound final : public SoundBackend {
public:
    explicit ShortSound(PcmFormat format) : format_(format) {}
    PcmFormat format() const override { return format_; }
    std::int64_t frames() const override { return format_.rate * 3 / 10; }
    std::size_t read(float* samples, std::size_t count) override {
        const auto frames = std::min(count, static_cast<std::size_t>(this->frames() - at_));
        std::fill_n(samples, frames * static_cast<std::size_t>(format_.channels), 0.0F);
        at_ += static_cast<std::int64_t>(frames);
        return frames;
    }
    void seek(std::int64_t frame) override { at_ = frame; }

private:
    PcmFormat format_;
    std::int64_t at_ = 0;
};

/// The end of each is told while its last tenth of a second is still to be heard; the next one's stream begins behind
/// it.
TEST_F(SoundServerTest, SoundsOfOtherFormatsFollowEachOtherToTheLast) {
    server.start();
    SoundOutput output(false);
    output.warmUp();
    for (const PcmFormat format : {PcmFormat{44100, 2}, PcmFormat{48000, 2}, PcmFormat{22050, 1}, PcmFormat{44100, 1},
                                   PcmFormat{8000, 1}, PcmFormat{44100, 2}}) {
        std::atomic<bool> ended{false};
        const std::uint64_t part = output.play({std::make_shared<ShortSound>(format), 0, SoundOutput::kToEnd, 0.1,
                                                [&ended](std::int64_t) { ended = true; }});
        EXPECT_TRUE(test::waitUntil([&] { return ended.load(); }, 10'000)) << format.rate;
        EXPECT_GT(output.position(part), 0) << format.rate;
    }
}

}  // namespace
}  // namespace corvane
