// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "contract/linux/movie_rig.h"

namespace corvane::test {

/// A stretch of one tone, or of silence (0 hertz).
struct Tone {
    double hertz = 0;
    double seconds = 0;
};

/// A sound server of our own with an output that nobody hears, and a recorder of what is played to it.
class HeardServer {
public:
    static bool exists() {
        return !QStandardPaths::findExecutable("pulseaudio").isEmpty() &&
               !QStandardPaths::findExecutable("parec").isEmpty();
    }

    HeardServer() {
        offscreenApplication();
        qputenv("PULSE_SERVER", ("unix:" + socket()).toUtf8());
        QObject::connect(&recorder_, &QProcess::readyReadStandardOutput, [this] { take(); });
    }
    HeardServer(const HeardServer&) = delete;
    HeardServer& operator=(const HeardServer&) = delete;
    ~HeardServer() { kill(); }

    /// Starts the server and, unless told otherwise, the recorder; false when they do not come up. A recorder shortens
    /// the output's delay for everybody.
    bool start(bool record = true) {
        samples_.clear();
        begun_ = Steady::time_point::max();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_RUNTIME_DIR", folder_.path());
        environment.remove("PULSE_SERVER");
        // Not on any bus, nor on one found through the display: another server may hold the name there.
        environment.insert("DBUS_SESSION_BUS_ADDRESS", "disabled:");
        server_.setProcessEnvironment(environment);
        server_.setStandardErrorFile(QProcess::nullDevice());
        // Without shared memory: with it the server ends itself now and then as a program that played leaves.
        server_.start("pulseaudio",
                      {"-n", "--disable-shm=yes", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "-L",
                       "module-native-protocol-unix auth-anonymous=1 socket=" + socket(), "-L",
                       "module-null-sink sink_name=nul rate=44100"});
        if (!record) return MovieRig::until([this] { return QFileInfo::exists(socket()); }, 10'000);
        recorder_.setStandardErrorFile(QProcess::nullDevice());
        return MovieRig::until(
            [this] {
                if (recorder_.state() == QProcess::NotRunning) {
                    recorder_.start("parec", {"-d", "nul.monitor", "--format=s16le", "--rate=44100", "--channels=1",
                                              "--latency-msec=" + QString::number(kPieceMs)});
                }
                take();
                return !samples_.empty();
            },
            10'000);
    }
    std::int64_t process() const { return server_.processId(); }
    /// Stopped, it says nothing: whoever connects is taken by the system and waits.
    void hang(bool on) const { ::kill(static_cast<pid_t>(server_.processId()), on ? SIGSTOP : SIGCONT); }
    void kill() {
        for (QProcess* process : {&recorder_, &server_}) {
            process->kill();
            process->waitForFinished(5000);
        }
    }

    using Steady = std::chrono::steady_clock;
    static constexpr int kRate = 44100;

    void forget() {
        take();
        begun_ += std::chrono::microseconds(static_cast<std::int64_t>(samples_.size()) * 1'000'000 / kRate);
        samples_.clear();
    }
    /// All that was heard since forget(), and when the first sample was. Samples come at their pace, in pieces that the
    /// recorder gets as their first sample is played; some come late, none early.
    const std::vector<std::int16_t>& samples() {
        take();
        return samples_;
    }
    Steady::time_point begun() const { return begun_ + std::chrono::milliseconds(kPieceMs); }
    /// What was heard since forget(), silences at both ends left out. Neighbouring stretches within 2 % are one.
    std::vector<Tone> heard() {
        take();
        std::vector<Tone> tones;
        for (std::size_t at = 0; at + kBlock <= samples_.size(); at += kBlock) {
            const auto [hertz, seconds] = toneAt(at);
            if (!tones.empty() && std::abs(tones.back().hertz - hertz) <= 0.02 * hertz) {
                tones.back().seconds += seconds;
            } else {
                tones.push_back({hertz, seconds});
            }
        }
        // The blocks in which one tone gives way to another have neither's pitch.
        std::erase_if(tones, [](const Tone& tone) { return tone.hertz > 0 && tone.seconds < 0.08; });
        bridge(tones);
        while (!tones.empty() && tones.back().hertz == 0) tones.pop_back();
        if (!tones.empty() && tones.front().hertz == 0) tones.erase(tones.begin());
        return tones;
    }

private:
    static constexpr int kPieceMs = 20;
    static constexpr std::size_t kBlock = 1764;  // 40 ms

    QString socket() const { return folder_.filePath("socket"); }

    void take() {
        const QByteArray bytes = recorder_.readAllStandardOutput();
        if (bytes.isEmpty()) return;
        const auto count = static_cast<std::size_t>(bytes.size()) / 2;
        const std::size_t before = samples_.size();
        samples_.resize(before + count);
        std::memcpy(samples_.data() + before, bytes.constData(), count * 2);
        const std::chrono::microseconds length(static_cast<std::int64_t>(samples_.size()) * 1'000'000 / kRate);
        begun_ = std::min(begun_, Steady::now() - length);
    }

    /// A busy machine may drop a moment of a tone: it is one all the same.
    static void bridge(std::vector<Tone>& tones) {
        constexpr double kDropped = 0.1;
        for (std::size_t i = 2; i < tones.size();) {
            const Tone &before = tones[i - 2], &gap = tones[i - 1], &after = tones[i];
            const bool same = before.hertz > 0 && std::abs(before.hertz - after.hertz) <= 0.02 * before.hertz;
            if (!same || gap.hertz > 0 || gap.seconds > kDropped) {
                ++i;
                continue;
            }
            tones[i - 2].seconds += gap.seconds + after.seconds;
            tones.erase(tones.begin() + static_cast<std::ptrdiff_t>(i) - 1,
                        tones.begin() + static_cast<std::ptrdiff_t>(i) + 1);
        }
    }

    /// A tone of a block's part is as long as that part.
    Tone toneAt(std::size_t start) const {
        constexpr double kBlockSeconds = double{kBlock} / kRate;
        std::size_t first = 0;
        std::size_t last = 0;
        std::size_t begin = 0;
        std::size_t end = 0;
        int crossings = 0;
        int peak = 0;
        for (std::size_t i = start + 1; i < start + kBlock; ++i) {
            peak = std::max(peak, std::abs(int{samples_[i]}));
            if (samples_[i] != 0) begin = begin == 0 ? i : begin, end = i;
            if (samples_[i - 1] >= 0 || samples_[i] < 0) continue;
            if (crossings++ == 0) first = i;
            last = i;
        }
        if (peak < 300 || crossings < 3) return {0, kBlockSeconds};
        return {(crossings - 1) * double{kRate} / static_cast<double>(last - first),
                std::min(static_cast<double>(end - begin + 2) / kRate, kBlockSeconds)};
    }

    QTemporaryDir folder_;
    QProcess server_;
    QProcess recorder_;
    std::vector<std::int16_t> samples_;
    Steady::time_point begun_ = Steady::time_point::max();
};

}  // namespace corvane::test
