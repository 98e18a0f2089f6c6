// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "contract/linux/mci_rig.h"
#include "contract/linux/movie_sound_rig.h"
#include "contract/linux/tone_steps.h"
#include "linux/media/desktop_station.h"
#include "media/midi/midi_sound.h"
#include "media/sound/file_sound.h"
#include "unit/linux/cd_image.h"
#include "unit/linux/midi_score.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

using test::HeardServer;
using test::Step;

constexpr double kStepSeconds = 0.25;
constexpr int kSteps = 12;
constexpr int kToleranceMs = 50;

/// A sequence of a note after the other; none rings out.
std::string stairs() {
    test::Score score;
    score.after(0, {0xC0, 80}).after(0, {0xB0, 91, 0}).after(0, {0xB0, 93, 0});  // a plain wave, without any echo
    for (int step = 0; step < kSteps; ++step) {
        score.after(0, {0x90, 50 + 2 * step, 110}).after(250, {0xB0, 120, 0});
    }
    return score.file();
}

double hertzOfNote(int step) { return 440 * std::pow(2, (50 + 2 * step - 69) / 12.0); }
double hertzOfFile(int step) { return 330 * std::pow(2, step / 8.0); }

struct StairsFile {
    const char* name;
    double (*hertz)(int);
    double begins;  ///< where its first step is, seconds: coders delay
};

std::ostream& operator<<(std::ostream& out, const StairsFile& file) { return out << file.name; }

/// What the control says against what is heard at that moment.
class PositionHeard : public testing::TestWithParam<StairsFile> {
protected:
    void SetUp() override {
        if (!HeardServer::exists()) GTEST_SKIP() << "no sound server to start";
        ASSERT_TRUE(server.start());
        std::ofstream(folder.path() / "stairs.mid", std::ios::binary) << stairs();
        station = std::make_unique<DesktopStation>(loop, false);
        control = std::make_unique<OutputMciControl>(*station);
        control->FileName(GetParam().begins < 0 ? (folder.path() / "stairs.mid").string()
                                                : test::soundData(GetParam().name));
        control->Command("Open");
        control->TimeFormat(kFormatMilliseconds);
        ASSERT_TRUE(test::waitUntil([this] { return control->Length() >= 3000; }, 5000));
        server.forget();
        clock.emplace(server.process());
    }
    void TearDown() override {
        control.reset();
        if (station) station->post.stop();
    }

    void play(int from = -1) {
        if (from >= 0) control->From(from);
        control->Command("Play");
    }
    static double milliseconds(HeardServer::Steady::duration time) {
        return std::chrono::duration<double, std::milli>(time).count();
    }
    /// Lets it play until it says so, and notes what it says on the way.
    void until(int position) {
        EXPECT_TRUE(test::waitUntil(
            [&] {
                last = {HeardServer::Steady::now(), control->Position()};
                if (milliseconds(HeardServer::Steady::now() - last.first) < 2) notes.push_back(last);
                return last.second >= position;
            },
            5000));
    }
    /// Where it stands from then on is where it said last, or as far behind as time has passed since.
    int pause() {
        control->Command("Pause");
        const double most = last.second + milliseconds(HeardServer::Steady::now() - last.first) + kToleranceMs;
        const int held = control->Position();
        EXPECT_GE(held, last.second);
        EXPECT_LE(held, most);
        return held;
    }
    /// What it said at a moment, -1 where it did not play. Where this program was held up, it went on at the pace of
    /// the time or is not known.
    double saidAt(HeardServer::Steady::time_point moment) const {
        constexpr double kLongGap = 30, kPace = 5;
        for (std::size_t i = 1; i < notes.size(); ++i) {
            if (notes[i - 1].first > moment || notes[i].first < moment) continue;
            const double gap = milliseconds(notes[i].first - notes[i - 1].first);
            const double step = notes[i].second - notes[i - 1].second;
            if (gap > kLongGap && std::abs(step - gap) > kPace) return -1;
            return notes[i - 1].second + milliseconds(moment - notes[i - 1].first) / gap * step;
        }
        return -1;
    }
    /// At each step that was heard from one tone to the next: the position is that step's place in the file.
    void expectSteps(int atLeast) {
        server.samples();
        test::waitUntil([] { return false; }, 200);  // what is on its way to the recorder
        std::vector<double> hertz;
        for (int step = 0; step < kSteps; ++step) hertz.push_back(GetParam().hertz(step));
        // As much later as nobody let the player or the server run.
        const double tolerance = kToleranceMs + static_cast<double>(clock->heldUp().count());
        int compared = 0;
        for (const Step& step : test::stepsIn(server.samples(), HeardServer::kRate, hertz)) {
            const auto moment =
                server.begun() + std::chrono::microseconds(static_cast<std::int64_t>(step.seconds * 1e6));
            const double said = saidAt(moment);
            if (said < 0) continue;
            const double place = 1000 * (std::max(GetParam().begins, 0.0) + kStepSeconds * step.to);
            EXPECT_NEAR(said, place, tolerance) << "as step " << step.to << " begins";
            ++compared;
        }
        EXPECT_GE(compared, atLeast);
        notes.clear();
        server.forget();
        clock.emplace(server.process());
    }

    HeardServer server;
    test::ScratchFolder folder;
    test::RigLoop loop;
    std::unique_ptr<DesktopStation> station;
    std::unique_ptr<OutputMciControl> control;
    using Note = std::pair<HeardServer::Steady::time_point, int>;
    Note last;
    std::optional<test::Stopwatch> clock;
    std::vector<Note> notes;
};

/// MEDIA-37: While it plays, the position is what is heard at that moment, to 50 ms, also after a pause and a seek
TEST_P(PositionHeard, IsWhatIsHeardAlsoAfterASeekAndAPause) {
    play();
    until(1400);
    const int held = pause();
    expectSteps(4);
    EXPECT_EQ(control->Position(), held) << "where it was paused";
    play();
    until(2150);
    control->Command("Pause");
    expectSteps(2);
    play(400);
    until(1150);
    control->Command("Pause");
    expectSteps(2);
    control->To(1900);
    control->Command("Seek");
    play();
    until(2700);
    expectSteps(2);
}

INSTANTIATE_TEST_SUITE_P(Files, PositionHeard,
                         testing::Values(StairsFile{"pcm.wav", hertzOfFile, 0},
                                         StairsFile{"vbr_bare.mp3", hertzOfFile, 1105.0 / 22050},
                                         StairsFile{"stairs.mid", hertzOfNote, -1}),
                         [](const auto& file) {
                             const std::string name = file.param.name;
                             return name.substr(name.rfind('.') + 1);
                         });

/// MEDIA-38
TEST(PositionOfASequence, IsKeptToFiveMillisecondsThroughSeeksAndPauses) {
    constexpr int kExact = 5;
    test::offscreenApplication();
    test::RigLoop loop;
    DesktopStation station(loop, true);
    {
        OutputMciControl control(station);
        control.FileName(test::soundSample("chime.mid"));
        control.Command("Open");
        control.TimeFormat(kFormatMilliseconds);
        ASSERT_TRUE(test::waitUntil([&] { return control.Length() > 0; }, 5000));
        EXPECT_NEAR(control.Length(), 4000, kExact);
        for (const int target : {1234, 7, 3999, 2500}) {
            control.To(target);
            control.Command("Seek");
            EXPECT_NEAR(control.Position(), target, kExact);
            control.From(target);
            control.Command("Play");  // heard from the next event on
            EXPECT_NEAR(control.Position(), target, kExact);
            control.Command("Pause");
            test::waitUntil([] { return false; }, 50);
            EXPECT_NEAR(control.Position(), target, kExact);
        }
        control.From(1000);
        control.Command("Play");
        for (int round = 1; round <= 5; ++round) {
            ASSERT_TRUE(test::waitUntil([&] { return control.Position() >= 1000 + 200 * round; }, 3000));
            control.Command("Pause");
            const int held = control.Position();
            test::waitUntil([] { return false; }, 100);
            EXPECT_NEAR(control.Position(), held, kExact);
            const auto begin = HeardServer::Steady::now();
            control.Command("Play");
            const int gone = control.Position() - held;
            EXPECT_GE(gone, -kExact);
            EXPECT_LE(std::chrono::milliseconds(gone - kExact), HeardServer::Steady::now() - begin);
        }
    }
    station.post.stop();
}

}  // namespace
}  // namespace corvane
