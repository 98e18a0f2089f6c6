// SPDX-License-Identifier: GPL-3.0-or-later
// Albums of one long tone that was cut into three tracks, each coded by itself (tests/data/sound/seams): played by
// their tags, they come back whole. Tags of loudness change the samples, and nothing else does.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "contract/linux/mci_rig.h"
#include "media/sound/file_sound.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

constexpr std::int64_t kCuts[] = {0, 20001, 41234, 66150};  ///< samples at kRate
constexpr int kRate = 44100, kHertz = 441;
constexpr double kAmplitude = 16000.0 / 32768;
constexpr double kMostError = 0.06;  ///< root mean square: some three samples too early or late make as much

std::unique_ptr<SoundBackend> opened(const std::string& path, SoundLevel level) {
    OpenedSound sound = FileSound::open(path, std::make_shared<std::atomic<bool>>(false), level);
    EXPECT_TRUE(sound.sound) << path << ": " << sound.reason;
    if (sound.sound) sound.sound->measure();
    return std::move(sound.sound);
}

/// The first channel of all that there is.
std::vector<float> readAll(SoundBackend& sound) {
    const auto width = static_cast<std::size_t>(sound.format().channels);
    std::vector<float> samples, piece(777 * width);
    for (std::size_t got = 777; got == 777;) {
        got = sound.read(piece.data(), 777);
        for (std::size_t i = 0; i < got; ++i) samples.push_back(piece[i * width]);
    }
    return samples;
}

std::string trackOf(const std::string& kind, int number) {
    std::string name = kind;
    return test::soundData("seams/" + name.replace(name.find('#'), 1, std::to_string(number)));
}

class Seams : public testing::TestWithParam<const char*> {};

/// LOUD-05: What a coder put before and behind a sound is left out to the sample, so that a tone cut into tracks comes
///     back whole
TEST_P(Seams, AToneCutIntoTracksComesBackWhole) {
    for (int number = 0; number < 3; ++number) {
        const auto sound = opened(trackOf(GetParam(), number), SoundLevel::OfAlbum);
        ASSERT_TRUE(sound);
        const int rate = sound->format().rate;
        const auto samples = readAll(*sound);
        const std::int64_t wanted = ((kCuts[number + 1] - kCuts[number]) * rate + kRate - 1) / kRate;
        EXPECT_EQ(static_cast<std::int64_t>(samples.size()), wanted) << number;
        EXPECT_EQ(sound->frames(), wanted) << number;
        double error = 0;
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const double seconds = static_cast<double>(kCuts[number]) / kRate + static_cast<double>(i) / rate;
            error += std::pow(samples[i] - kAmplitude * std::sin(2 * M_PI * kHertz * seconds), 2);
        }
        EXPECT_LT(std::sqrt(error / static_cast<double>(samples.size())), kMostError) << number;
    }
}

/// LOUD-05
TEST_P(Seams, APlaceInATrackIsTheSameAfterASeek) {
    const auto sound = opened(trackOf(GetParam(), 1), SoundLevel::OfTrack);
    ASSERT_TRUE(sound);
    const auto whole = readAll(*sound);
    for (const std::int64_t frame : {15000, 0, 20000}) {
        sound->seek(frame);
        const auto rest = readAll(*sound);
        ASSERT_EQ(rest.size(), whole.size() - static_cast<std::size_t>(frame)) << frame;
        double error = 0;
        for (std::size_t i = 0; i < rest.size(); ++i)
            error += std::abs(rest[i] - whole[i + static_cast<std::size_t>(frame)]);
        EXPECT_LT(error / static_cast<double>(rest.size()), 0.02) << frame;
    }
}

INSTANTIATE_TEST_SUITE_P(Albums, Seams, testing::Values("#.mp3", "#.m4a", "tagged_#.m4a", "#.opus", "#.ogg", "#.flac"),
                         [](const auto& kind) {
                             std::string name;
                             for (const char c : std::string(kind.param)) name += std::isalnum(c) != 0 ? c : '_';
                             return name;
                         });

/// A flac file's comments in place of those that it has.
std::string withComments(const std::string& path, const std::vector<std::string>& comments) {
    std::ostringstream all;
    all << std::ifstream(path, std::ios::binary).rdbuf();
    const std::string bytes = all.str();
    const auto little = [](std::size_t value) {
        std::string text;
        for (int i = 0; i < 4; ++i) text += static_cast<char>(value >> (8 * i) & 0xFFU);
        return text;
    };
    std::string block = little(0) + little(comments.size());
    for (const std::string& comment : comments) block += little(comment.size()) + comment;
    std::string result = bytes.substr(0, 4 + 4 + 34);
    result[4] = '\0';  // the first block, which is not the last
    const std::size_t size = block.size();
    result += {'\x84', static_cast<char>(size >> 16U & 0xFFU), static_cast<char>(size >> 8U & 0xFFU),
               static_cast<char>(size & 0xFFU)};
    result += block;
    std::size_t at = 4;
    for (bool last = false; !last;) {
        last = (static_cast<unsigned char>(bytes[at]) & 0x80U) != 0;
        const auto byte = [&](std::size_t i) {
            return static_cast<std::size_t>(static_cast<unsigned char>(bytes[at + i]));
        };
        at += 4 + (byte(1) << 16U | byte(2) << 8U | byte(3));
    }
    return result + bytes.substr(at);
}

class LoudFiles : public testing::Test {
protected:
    float loudest(SoundLevel level) {
        const auto sound = opened(folder_.in("a.flac"), level);
        float most = 0;
        if (sound) {
            for (const float sample : readAll(*sound)) most = std::max(most, std::abs(sample));
        }
        return most / static_cast<float>(kAmplitude);
    }
    void put(const std::vector<std::string>& comments) {
        folder_.write("a.flac", withComments(test::soundData("seams/0.flac"), comments));
    }
    test::TemporaryFolder folder_;
};

/// LOUD-06: The tags of a file change its samples where they are asked for, and nothing where they are not
TEST_F(LoudFiles, TagsChangeTheSamplesWhereTheyAreAskedFor) {
    put({"REPLAYGAIN_TRACK_GAIN=-6.0206 dB", "REPLAYGAIN_ALBUM_GAIN=-12.0412 dB", "replaygain_track_peak=0.488"});
    EXPECT_NEAR(loudest(SoundLevel::AsRecorded), 1, 0.001);
    EXPECT_NEAR(loudest(SoundLevel::OfTrack), 0.5, 0.001);
    EXPECT_NEAR(loudest(SoundLevel::OfAlbum), 0.25, 0.001);
    put({"REPLAYGAIN_TRACK_GAIN=+20 dB", "REPLAYGAIN_TRACK_PEAK=0.488281"});
    EXPECT_NEAR(loudest(SoundLevel::OfTrack) * kAmplitude, 1, 0.001) << "up to full scale";
    put({"R128_TRACK_GAIN=-2821"});
    EXPECT_NEAR(loudest(SoundLevel::OfTrack), 0.5, 0.001);
    put({"TITLE=a", "REPLAYGAIN_TRACK_GAIN=loud"});
    EXPECT_NEAR(loudest(SoundLevel::OfTrack), 1, 0.001);
}

/// Without being asked a sound is read as it always was, also where the list of edits rounds its end.
/// LOUD-06
TEST(SoundAsRecorded, EndsWhereItsListOfEditsSays) {
    const std::int64_t stated[] = {19977, 21212, 24917};
    for (int number = 0; number < 3; ++number) {
        const auto sound = opened(trackOf("#.m4a", number), SoundLevel::AsRecorded);
        ASSERT_TRUE(sound);
        EXPECT_EQ(static_cast<std::int64_t>(readAll(*sound).size()), stated[number]);
    }
}

}  // namespace
}  // namespace corvane
