// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <string>

#include "contract/linux/mci_rig.h"
#include "contract/linux/movie_rig.h"
#include "contract/linux/network_lures.h"
#include "contract/linux/network_takers.h"
#include "linux/media/desktop_station.h"
#include "linux/pictures/qt_pictures.h"
#include "unit/linux/cd_image.h"

namespace corvane {
namespace {

using test::Listener;
using test::MovieRig;
using test::Taker;

std::string bytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A file that names an address, for whoever takes it at its word.
struct Lure {
    const char* name;
    std::string (*bytes)(const std::string& host);  ///< host: with its port
    Taker taker = Taker::Nobody;
};

std::ostream& operator<<(std::ostream& out, const Lure& lure) { return out << lure.name; }

/// What is of no kind that leads anywhere plays as what it is, or fails; either way nobody is called.
class NetworkLures : public testing::TestWithParam<Lure> {
protected:
    NetworkLures() { test::offscreenApplication(); }
    std::string lure() const {
        const std::string path = folder.path() / GetParam().name;
        std::ofstream(path, std::ios::binary) << GetParam().bytes("127.0.0.1:" + listener.port());
        return path;
    }
    /// Until it is over, one way or the other, and a little longer.
    void expectNobodyCalled(const std::function<bool()>& over) const {
        bool opened = false;
        const auto looks = [&] {
            opened = opened || test::internetSockets() != before;
            return over();
        };
        EXPECT_TRUE(test::waitUntil(looks, 8000)) << "neither opened nor failed";
        test::waitUntil([&] { return looks(), false; }, 150);
        EXPECT_FALSE(opened) << "a socket of the internet";
        EXPECT_FALSE(listener.wasReached(100));
    }

    const Listener listener;
    const int before = test::internetSockets();
    const test::ScratchFolder folder;
};

/// MEDIA-13
TEST_P(NetworkLures, CallNobodyAsSounds) {
    test::RigLoop loop;
    DesktopStation station(loop, true);
    {
        OutputMciControl control(station);
        bool failed = false;
        control.Failed.tie([&](const std::string& reason) {
            failed = true;
            EXPECT_NE(reason, "");
        });
        control.FileName(lure());
        control.Command("Open");
        control.Command("Play");
        expectNobodyCalled([&] { return failed || control.Position() > 200; });
    }
    station.post.stop();
}

/// MEDIA-13
TEST_P(NetworkLures, CallNobodyAsDiscs) {
    test::RigLoop loop;
    DesktopStation station(loop, true);
    {
        OutputMciControl control(station);
        bool failed = false;
        control.Failed.tie([&](const std::string& /*reason*/) { failed = true; });
        control.DeviceType("CDAudio");
        control.FileName(lure());
        control.Command("Open");
        control.Command("Play");
        expectNobodyCalled([&] { return failed || control.Length() > 0; });
    }
    station.post.stop();
}

/// MEDIA-13
TEST_P(NetworkLures, CallNobodyAsMovies) {
    MovieRig rig;
    rig.control->FileName(lure());
    expectNobodyCalled([&] { return rig.opened > 0 || !rig.reason.empty(); });
    rig.control->Run();
    expectNobodyCalled([&] { return !rig.reason.empty() || rig.control->CurrentPosition() > 0.2; });
}

/// The control: a library that nothing is forbidden calls there, so that it is the player that does not.
class NetworkLuresControl : public testing::TestWithParam<Lure> {};

TEST_P(NetworkLuresControl, CallWhereALibraryMayDoWhatItLikes) {
    test::offscreenApplication();
    Listener listener;
    const test::ScratchFolder folder;
    const std::string path = folder.path() / GetParam().name;
    std::ofstream(path, std::ios::binary) << GetParam().bytes("127.0.0.1:" + listener.port());
    EXPECT_TRUE(test::takes(GetParam().taker, path, listener));
}

const Lure kLures[] = {
    {"cut.edl", [](const std::string& host) { return "# mpv EDL v0\nhttp://" + host + "/a.mp3,0,10\n"; },
     Taker::Movies},
    {"whole.mov", [](const std::string& host) { return test::movieElsewhere("http://" + host + "/a.mov"); }},
    {"stream.mov", [](const std::string& host) { return test::movieElsewhere("rtsp://" + host + "/a.mov"); }},
    {"data.mov",
     [](const std::string& host) {
         return test::movieWithDataElsewhere(bytesOf(MovieRig::sample("clip.mov")), "http://" + host + "/a.mov");
     }},
    {"linked.mkv", [](const std::string& host) { return test::linkedSegments("http://" + host + "/next.mkv"); }},
    {"linked.avi", [](const std::string& host) { return test::linkedSegments("http://" + host + "/next.mkv"); }},
    {"sheet.cue",
     [](const std::string& host) {
         return "FILE \"http://" + host + "/a.bin\" BINARY\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n";
     }},
    {"waves.cue",
     [](const std::string& host) {
         return "FILE \"http://" + host + "/a.wav\" WAVE\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n";
     }},
    {"show.asx",
     [](const std::string& host) {
         return "<asx version=\"3.0\"><entry><ref href=\"http://" + host + "/a.wmv\"/></entry></asx>\n";
     }},
    {"reference.asf",
     [](const std::string& host) { return "[Reference]\r\nRef1=http://" + host + "/a.asf?MSWMExt=.asf\r\n"; },
     Taker::Movies},
    {"parts.ts",
     [](const std::string& host) {
         return "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:9\n#EXTINF:9,\nhttp://" + host +
                "/a.ts\n#EXT-X-ENDLIST\n";
     },
     test::kMisnamedLists},
    {"parts.mpg",
     [](const std::string& host) { return "#EXTM3U\n#EXT-X-STREAM-INF:BANDWIDTH=1\nhttp://" + host + "/inner.m3u8\n"; },
     test::kMisnamedLists},
    {"key.m3u8",
     [](const std::string& host) {
         return "#EXTM3U\n#EXT-X-TARGETDURATION:9\n#EXT-X-KEY:METHOD=AES-128,URI=\"http://" + host +
                "/key\"\n#EXTINF:9,\na.ts\n#EXT-X-ENDLIST\n";
     },
     Taker::Sounds},
    {"list.wpl",
     [](const std::string& host) {
         return "<?wpl version=\"1.0\"?><smil><body><seq><media src=\"http://" + host +
                "/a.mp3\"/></seq></body></smil>\n";
     }},
    {"list.pls",
     [](const std::string& host) { return "[playlist]\nFile1=http://" + host + "/a.mp3\nNumberOfEntries=1\n"; },
     Taker::Movies},
    {"called.sdp",
     [](const std::string& host) {
         const std::string port = host.substr(host.find(':') + 1);
         return "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nt=0 0\nm=audio " + port +
                " RTP/AVP 0\na=rtpmap:0 PCMU/8000\n";
     }},
    {"called.avi", [](const std::string& host) {
         const std::string port = host.substr(host.find(':') + 1);
         return "v=0\r\no=- 0 0 IN IP4 127.0.0.1\r\ns=x\r\nc=IN IP4 127.0.0.1\r\nt=0 0\r\nm=video " + port +
                " RTP/AVP 96\r\na=rtpmap:96 H264/90000\r\n";
     }}};

const auto kNames = [](const testing::TestParamInfo<Lure>& lure) { return test::testName(lure.param.name); };
INSTANTIATE_TEST_SUITE_P(Files, NetworkLures, testing::ValuesIn(kLures), kNames);
INSTANTIATE_TEST_SUITE_P(Files, NetworkLuresControl, testing::ValuesIn(test::takenOf(kLures)), kNames);

/// The files that play at all, so that it is not for being broken that they call nobody.
TEST(NetworkLuresThemselves, AreReadAsFarAsTheyHoldSoundOrPicturesThemselves) {
    test::ScratchFolder folder;
    const std::string mov = folder.path() / "data.mov", mkv = folder.path() / "linked.mkv";
    std::ofstream(mov, std::ios::binary) << test::movieWithDataElsewhere(bytesOf(MovieRig::sample("clip.mov")),
                                                                         "http://127.0.0.1:1/a.mov");
    std::ofstream(mkv, std::ios::binary) << test::linkedSegments("http://127.0.0.1:1/next.mkv");
    MovieRig rig;
    EXPECT_TRUE(rig.open(mov)) << rig.reason;
    test::RigLoop loop;
    DesktopStation station(loop, true);
    {
        OutputMciControl control(station);
        control.FileName(mkv);
        control.Command("Open");
        control.TimeFormat(kFormatMilliseconds);
        EXPECT_TRUE(test::waitUntil([&] { return control.Length() > 0; }, 3000));
        EXPECT_NEAR(control.Length(), 1000, 50) << "its own second, and nothing of the file that it names";
    }
    station.post.stop();
}

/// An entry of a list that is an address is a file of that name, which is not there.
/// MEDIA-13
TEST(NetworkLuresThemselves, AnAddressInAListIsAFilesNameForMoviesAndPictures) {
    const Listener listener;
    const int before = test::internetSockets();
    MovieRig rig;
    QtPictures pictures;
    for (const char* const way : {"http", "rtsp", "rtp", "udp", "ftp", "mms", "file"}) {
        const std::string address = std::string(way) + "://127.0.0.1:" + listener.port() + "/a.avi";
        EXPECT_FALSE(rig.open(address)) << address;
        EXPECT_NE(rig.reason, "") << address;
        rig.reason.clear();
        EXPECT_NE(pictures.decode(address).reason, "") << address;
        EXPECT_EQ(test::internetSockets(), before) << address;
    }
    EXPECT_FALSE(listener.wasReached(100));
}

/// The lures' notice works: what does open a socket is seen.
TEST(NetworkLuresThemselves, ACallIsNoticed) {
    const Listener listener;
    const int before = test::internetSockets();
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(listener.port())));
    EXPECT_FALSE(listener.wasReached(0));
    const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
    EXPECT_EQ(test::internetSockets(), before + 1);
    EXPECT_EQ(::sendto(socket, "x", 1, 0, reinterpret_cast<sockaddr*>(&address), sizeof address), 1);
    ::close(socket);
    EXPECT_TRUE(listener.wasReached(1000));
}

}  // namespace
}  // namespace corvane
