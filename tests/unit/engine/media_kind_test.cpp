// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

struct Row {
    std::string path;
    std::int16_t kind;
    std::string device;  ///< what is set before the open; "-": left as it is
    std::string text;
    std::string tip;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.path; }

class MediaKind : public PlayerFixture, public ::testing::WithParamInterface<Row> {};

/// KIND-05: BMP, JPEG, JPG and GIF are pictures; label 1 is the extension and " IMAGE"
/// KIND-06: AVI is a movie: "Video File Now On Play"
/// KIND-07: MOV and QT are movies: "Quick Time File Now On Play"
/// KIND-08: MPG, MPV, M1V and MPEG are movies: "Mpeg File Now On Play"
/// KIND-09: MP2 has the movies' text and the tip "Time", and is played as sound
/// KIND-10: MID and RMI are sound with the device "Sequencer": "MIDI File Now On Play"
/// KIND-11: WAV, SND, AU, AIF, AIFC and AIFF are sound; the device type is left as it is: "Sound File Now On Play"
/// KIND-12: CDA is a disc's track with the device "CDAudio": "CD Audio Now On Play"
/// KIND-13: MP3 is sound; the device type is left as it is: "MP3 File Now On Play"
/// KIND-14: Anything else is sound with an empty device type; label 1 is the extension and " Now On Play": RA, RM, RAM
///     and RMM among them
/// KIND-15: A folder with a dot makes a clip of it such another: V2/CLIP.AVI Now On Play
/// KIND-16: picture.jpeg.bmp is no picture: its extension is JPEG.BMP
/// KIND-17: Label 2's tip is "Frame" for movies and "Time" for all else
/// KIND-18: Each kind plays in its own window and in no other
/// OPEN-16: Kind, device type and label 1 come from the extension
/// KIND-03
TEST_P(MediaKind, FollowsFromTheExtension) {
    const Row& row = GetParam();
    machine.addSound(row.path, 5000);
    machine.addMovie(row.path, 5, 320, 240);
    machine.addPicture(row.path, 20, 20);
    machine.media.discs[""] = {{75 * 60}};
    setUpPanel();
    setList({row.path});

    PlayFile(player);

    EXPECT_EQ(player.gMediaKind, row.kind);
    EXPECT_EQ(label(kTextLabel), row.text);
    EXPECT_EQ(panel().lblMainPanel[kTimeLabel].ToolTipText.get(), row.tip);
    std::string device = "-";
    for (const std::string& call : machine.calls("mci")) {
        if (call.rfind("mci.DeviceType ", 0) == 0) device = call.substr(15);
        if (call == "mci.Command Open") break;
    }
    EXPECT_EQ(device, row.device);
    EXPECT_EQ(imageWindow() != nullptr, row.kind == mkImage);
    EXPECT_EQ(movieWindow() != nullptr, row.kind == mkMovie);
    EXPECT_EQ(mciWindow() != nullptr, row.kind == mkMciFile || row.kind == mkCDTrack);
}

INSTANTIATE_TEST_SUITE_P(Table, MediaKind,
                         ::testing::Values(Row{"/m/a.bmp", mkImage, "-", "BMP IMAGE", "Time"},
                                           Row{"/m/a.jpeg", mkImage, "-", "JPEG IMAGE", "Time"},
                                           Row{"/m/a.JPG", mkImage, "-", "JPG IMAGE", "Time"},
                                           Row{"/m/a.Gif", mkImage, "-", "GIF IMAGE", "Time"},
                                           Row{"/m/a.avi", mkMovie, "-", "Video File Now On Play", "Frame"},
                                           Row{"/m/a.mov", mkMovie, "-", "Quick Time File Now On Play", "Frame"},
                                           Row{"/m/a.qt", mkMovie, "-", "Quick Time File Now On Play", "Frame"},
                                           Row{"/m/a.mpg", mkMovie, "-", "Mpeg File Now On Play", "Frame"},
                                           Row{"/m/a.mpv", mkMovie, "-", "Mpeg File Now On Play", "Frame"},
                                           Row{"/m/a.m1v", mkMovie, "-", "Mpeg File Now On Play", "Frame"},
                                           Row{"/m/a.mpeg", mkMovie, "-", "Mpeg File Now On Play", "Frame"},
                                           Row{"/m/a.mp2", mkMciFile, "-", "Mpeg File Now On Play", "Time"},
                                           Row{"/m/a.mid", mkMciFile, "Sequencer", "MIDI File Now On Play", "Time"},
                                           Row{"/m/a.rmi", mkMciFile, "Sequencer", "MIDI File Now On Play", "Time"},
                                           Row{"/m/a.wav", mkMciFile, "-", "Sound File Now On Play", "Time"},
                                           Row{"/m/a.snd", mkMciFile, "-", "Sound File Now On Play", "Time"},
                                           Row{"/m/a.au", mkMciFile, "-", "Sound File Now On Play", "Time"},
                                           Row{"/m/a.aif", mkMciFile, "-", "Sound File Now On Play", "Time"},
                                           Row{"/m/a.aifc", mkMciFile, "-", "Sound File Now On Play", "Time"},
                                           Row{"/m/a.aiff", mkMciFile, "-", "Sound File Now On Play", "Time"},
                                           Row{"/m/Track01.cda", mkCDTrack, "CDAudio", "CD Audio Now On Play", "Time"},
                                           Row{"/m/song.Mp3", mkMciFile, "-", "MP3 File Now On Play", "Time"},
                                           Row{"/m/a.ra", mkMciFile, "", "RA Now On Play", "Time"},
                                           Row{"/m/a.rm", mkMciFile, "", "RM Now On Play", "Time"},
                                           Row{"/m/a.ram", mkMciFile, "", "RAM Now On Play", "Time"},
                                           Row{"/m/a.rmm", mkMciFile, "", "RMM Now On Play", "Time"},
                                           Row{"/m/a.flac", mkMciFile, "", "FLAC Now On Play", "Time"},
                                           Row{"/m/picture.jpeg.bmp", mkMciFile, "", "JPEG.BMP Now On Play", "Time"},
                                           Row{"/Data.v2/clip.avi", mkMciFile, "", "V2/CLIP.AVI Now On Play", "Time"},
                                           Row{"/m/nodot", mkMciFile, "", "/M/NODOT Now On Play", "Time"}));

}  // namespace
}  // namespace corvane
