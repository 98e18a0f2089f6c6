// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "contract/linux/mci_rig.h"
#include "contract/linux/network_lures.h"
#include "contract/linux/network_takers.h"
#include "linux/media/desktop_station.h"
#include "unit/linux/cd_image.h"

namespace corvane {
namespace {

using test::Listener;
using test::Taker;

struct Lure {
    const char* name;
    const char* text;  ///< @ stands for the port
    Taker taker = Taker::Nobody;
};

/// Writes the lure for that listener; returns its path.
std::string layOut(const Lure& lure, const test::ScratchFolder& folder, const Listener& listener) {
    const std::string path = folder.path() / lure.name;
    std::string text = lure.text;
    for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at))
        text.replace(at, 1, listener.port());
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

class SoundNetworkTest : public testing::TestWithParam<Lure> {};

/// OPEN-50: No file leads to the network or to another file
/// MEDIA-13: No file opens a connection
/// FAULT-18: No list and no media file opens a connection
TEST_P(SoundNetworkTest, OpensNoConnection) {
    test::offscreenApplication();
    test::RigLoop loop;
    DesktopStation station(loop, true);
    const Listener listener;
    const test::ScratchFolder folder;
    const std::string path = layOut(GetParam(), folder, listener);

    bool failed = false;
    OutputMciControl control(station);
    control.Failed.tie([&](const std::string& reason) {
        failed = true;
        EXPECT_NE(reason, "");
    });
    control.FileName(path);
    control.Command("Open");
    control.Command("Play");
    EXPECT_TRUE(test::waitUntil([&] { return failed; }, 5000));
    EXPECT_FALSE(listener.wasReached(100));
    station.post.stop();
}

/// The control: a library that nothing is forbidden calls there, so that it is the player that does not.
class SoundNetworkControl : public testing::TestWithParam<Lure> {};

TEST_P(SoundNetworkControl, CallsWhereALibraryMayDoWhatItLikes) {
    test::offscreenApplication();
    Listener listener;
    const test::ScratchFolder folder;
    EXPECT_TRUE(test::takes(GetParam().taker, layOut(GetParam(), folder, listener), listener));
}

constexpr Lure kLures[] = {
    {"list.m3u", "#EXTM3U\nhttp://127.0.0.1:@/a.mp3\n", Taker::Movies},
    {"stream.m3u8", "#EXTM3U\n#EXT-X-TARGETDURATION:10\n#EXTINF:10,\nhttp://127.0.0.1:@/a.ts\n#EXT-X-ENDLIST\n",
     Taker::Sounds},
    {"stream.mp3", "#EXTM3U\n#EXT-X-TARGETDURATION:10\n#EXTINF:10,\nhttp://127.0.0.1:@/a.ts\n#EXT-X-ENDLIST\n",
     test::kMisnamedLists},
    {"list.pls", "[playlist]\nFile1=http://127.0.0.1:@/a.mp3\nNumberOfEntries=1\n", Taker::Movies},
    {"session.sdp",
     "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nt=0 0\nm=audio @ RTP/AVP 0\n"
     "a=control:rtsp://127.0.0.1:@/a\n"},
    {"parts.wav", "ffconcat version 1.0\nfile http://127.0.0.1:@/a.wav\n"},
    {"show.ram", "http://127.0.0.1:@/a.ra\n"},
    {"show.asx", "<asx version=\"3.0\"><entry><ref href=\"http://127.0.0.1:@/a.wma\"/></entry></asx>\n"},
    {"plan.mpd",
     "<?xml version=\"1.0\"?><MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\" type=\"static\"><Period>"
     "<AdaptationSet mimeType=\"audio/mp4\"><Representation id=\"a\" bandwidth=\"1\"><BaseURL>"
     "http://127.0.0.1:@/a.mp4</BaseURL></Representation></AdaptationSet></Period></MPD>\n"}};

const auto kNames = [](const testing::TestParamInfo<Lure>& lure) { return test::testName(lure.param.name); };
INSTANTIATE_TEST_SUITE_P(Lures, SoundNetworkTest, testing::ValuesIn(kLures), kNames);
INSTANTIATE_TEST_SUITE_P(Lures, SoundNetworkControl, testing::ValuesIn(test::takenOf(kLures)), kNames);

/// MEDIA-13
TEST(SoundNetworkNameTest, ANameLikeAnAddressIsAFilesName) {
    test::offscreenApplication();
    test::RigLoop loop;
    DesktopStation station(loop, true);
    const Listener listener;
    OutputMciControl control(station);
    bool failed = false;
    control.Failed.tie([&](const std::string& /*reason*/) { failed = true; });
    control.FileName("http://127.0.0.1:" + listener.port() + "/a.mp3");
    control.Command("Open");
    EXPECT_TRUE(test::waitUntil([&] { return failed; }, 5000));
    EXPECT_FALSE(listener.wasReached(100));
    station.post.stop();
}

}  // namespace
}  // namespace corvane
