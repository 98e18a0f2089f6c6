// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

class Volume : public PlayerFixture {
protected:
    void setUp(std::int16_t device, std::int16_t level) {
        machine.sound.aux = {{AuxCaps{1, 2, "Line"}, 0}, {AuxCaps{1, 8, "CD"}, 0}};
        player.gAuxType = device;
        setUpPanel();
        player.gVolume = level;
        player.gVolumeX = 450;
        player.gVolumeY = 440;
        player.gVolumeRadius = 300;
        panel().imgMainPanel[kKnobImage].Move(4500, 150);
        machine.clearCalls();
    }
    using Calls = std::vector<std::string>;
};

/// VOL-01: A step down lowers the level above 0, a step up raises it below 15
/// VOL-06: A device setting of -1 sets the wave output, 0 and up that auxiliary device
TEST_F(Volume, GoesOneStepUpOrDown) {
    setUp(-1, 7);
    SetVolume(player, 0);
    EXPECT_EQ(player.gVolume, 8);
    SetVolume(player, 1);
    SetVolume(player, 5);
    EXPECT_EQ(player.gVolume, 6);
    EXPECT_EQ(machine.calls("sound"), (Calls{"sound.waveOutSetVolume 88888888", "sound.waveOutSetVolume 77777777",
                                             "sound.waveOutSetVolume 66666666"}));
}

/// VOL-02: At either end the level stays, and device and indicator are set all the same
/// VOL-03: From 14 up is 15 with the word FFFFFFFF, and stays there
TEST_F(Volume, StaysAtItsEndsButStillSetsTheDevice) {
    setUp(-1, 0);
    SetVolume(player, 1);
    EXPECT_EQ(player.gVolume, 0);
    player.gVolume = 14;
    SetVolume(player, 0);
    SetVolume(player, 0);
    EXPECT_EQ(player.gVolume, 15);
    EXPECT_EQ(machine.calls("sound"), (Calls{"sound.waveOutSetVolume 00000000", "sound.waveOutSetVolume ffffffff",
                                             "sound.waveOutSetVolume ffffffff"}));
}

/// VOL-06
TEST_F(Volume, SetsTheChosenAuxiliaryDevice) {
    setUp(1, 3);
    SetVolume(player, 0);
    EXPECT_EQ(machine.calls("sound"), Calls{"sound.auxSetVolume 1 44444444"});
    EXPECT_EQ(readVolume(player), 0x44444444U);
}

/// VOL-04: The indicator stands at the level's angle of its table, with 3.14 as the circle's number
/// VOL-05: A level's word is level × 11111111, hexadecimal: both channels
TEST_F(Volume, PlacesTheIndicatorAtEachLevelsAngle) {
    // The angle used and the signs of its two terms, level 0 to 15.
    const int rows[16][3] = {{45, -1, 1},  {27, -1, 1},  {9, -1, 1},  {9, -1, -1}, {27, -1, -1}, {45, -1, -1},
                             {63, -1, -1}, {81, -1, -1}, {81, 1, -1}, {63, 1, -1}, {45, 1, -1},  {27, 1, -1},
                             {9, 1, -1},   {9, 1, 1},    {27, 1, 1},  {45, 1, 1}};
    setUp(-1, 0);
    for (int level = 0; level < 16; ++level) {
        SCOPED_TRACE(level);
        setVolumeLevel(player, static_cast<std::int16_t>(level));
        const double angle = rows[level][0] * 3.14 / 180;
        EXPECT_EQ(panel().shpVolume.Left, static_cast<float>(4500 + 450 - 45 + rows[level][1] * 300 * std::cos(angle)));
        EXPECT_EQ(panel().shpVolume.Top, static_cast<float>(150 + 440 - 45 + rows[level][2] * 300 * std::sin(angle)));
        EXPECT_EQ(volumeWord(static_cast<std::int16_t>(level)), static_cast<std::uint32_t>(level) * 0x11111111U);
        EXPECT_EQ(volumeLevel(volumeWord(static_cast<std::int16_t>(level))), level);
    }
}

/// VOL-08: It is the number of the fifteen thresholds that the word reaches, as a number without sign
/// VOL-09: 80008000 is level 8, 7FFF7FFF level 7
/// VOL-10: Of unequal channels the right one decides
TEST_F(Volume, ALevelIsTheNumberOfThresholdsReached) {
    const std::uint32_t thresholds[15] = {0x08880889, 0x1999199A, 0x2AAA2AAB, 0x3BBB3BBC, 0x4CCC4CCD,
                                          0x5DDD5DDE, 0x6EEE6EEF, 0x7FFF8000, 0x91119112, 0xA222A223,
                                          0xB333B334, 0xC444C445, 0xD555D556, 0xE666E667, 0xF777F778};
    for (std::int16_t level = 0; level < 15; ++level) {
        EXPECT_EQ(volumeLevel(thresholds[level] - 1), level);
        EXPECT_EQ(volumeLevel(thresholds[level]), level + 1);
    }
    EXPECT_EQ(volumeLevel(0x80008000), 8);
    EXPECT_EQ(volumeLevel(0x7FFF7FFF), 7);
    EXPECT_EQ(volumeLevel(0xFFFF0000), 15) << "the right channel dominates";
    EXPECT_EQ(volumeLevel(0x0000FFFF), 0);
}

/// VOL-12: The automatic choice takes the last device of the product, or the first device
TEST_F(Volume, TheAutomaticChoiceTakesTheLastDeviceOfTheProductOrTheFirst) {
    machine.sound.aux = {{AuxCaps{8, 1, "a"}, 0}, {AuxCaps{1, 8, "b"}, 0}, {AuxCaps{1, 8, "c"}, 0}, {std::nullopt, 0}};
    player.gAuxType = -2;
    chooseVolumeDevice(player);
    EXPECT_EQ(player.gAuxType, 2);
    machine.sound.aux.resize(1);
    player.gAuxType = -2;
    chooseVolumeDevice(player);
    EXPECT_EQ(player.gAuxType, 0);
    player.gAuxType = -1;
    chooseVolumeDevice(player);
    EXPECT_EQ(player.gAuxType, -1) << "only -2 asks for a choice";
}

/// VOL-23: At the end it is put back on the output where it was found; another one is left alone, and a device chosen
///     meanwhile too
TEST_F(Volume, IsPutBackOnTheOutputWhereItWasFound) {
    machine.sound.wave = 0xAAAA5555;
    player.gAuxType = -1;
    setUpPanel();
    machine.sound.useOutput("headphones");
    machine.settle();
    SetVolume(player, 1);
    const std::uint32_t chosen = *machine.sound.wave;
    putVolumeBack(player);
    EXPECT_EQ(machine.sound.wave, chosen) << "another output is left alone";
    EXPECT_EQ(machine.sound.others.at("speakers"), 0xAAAA5555);
    machine.clearCalls();
    putVolumeBack(player);
    EXPECT_EQ(machine.calls("sound"), Calls{}) << "once";
}

/// VOL-23
TEST_F(Volume, IsNotPutBackWhereItsOutputIsGone) {
    player.gAuxType = -1;
    setUpPanel();
    machine.sound.useOutput("headphones");
    machine.sound.removeOutput("speakers");
    machine.sound.wave = 0x44444444;
    putVolumeBack(player);
    EXPECT_EQ(machine.sound.wave, 0x44444444U);
}

/// VOL-23
TEST_F(Volume, IsPutBackOnTheDeviceThatWasChosenThen) {
    machine.sound.aux = {{AuxCaps{1, 2, "Line"}, 0x12345678}, {AuxCaps{1, 8, "CD"}, 0}};
    player.gAuxType = 0;
    setUpPanel();
    SetVolume(player, 0);
    player.gAuxType = -1;
    putVolumeBack(player);
    EXPECT_EQ(machine.sound.aux[0].volume, 0x12345678U);
}

/// VOL-24: The knob follows what other programs do to the wave output, and which one is in use; nothing is set by that
TEST_F(Volume, TheKnobFollowsWhatOtherProgramsDo) {
    setUp(-1, 15);
    const float before = panel().shpVolume.Left;
    machine.sound.setByAnother(0x33333333);
    machine.settle();
    EXPECT_EQ(player.gVolume, 3);
    EXPECT_NE(panel().shpVolume.Left, before);
    EXPECT_EQ(machine.calls("sound"), Calls{}) << "nothing is set";
    SetVolume(player, 0);
    EXPECT_EQ(machine.sound.wave, 0x44444444U) << "the next step goes on from there";
    machine.sound.useOutput("headphones");
    machine.settle();
    EXPECT_EQ(player.gVolume, 15) << "the output that is in use now";
}

/// VOL-24
TEST_F(Volume, TheKnobOfAnAuxiliaryDeviceStaysWhereItIs) {
    setUp(0, 7);
    machine.sound.setByAnother(0x33333333);
    machine.settle();
    EXPECT_EQ(player.gVolume, 7);
}

/// VOL-24
TEST_F(Volume, NothingFollowsWhenThePanelIsGone) {
    setUp(-1, 7);
    player.forms.unload(FormId::MainPanel);
    machine.sound.setByAnother(0x33333333);
    machine.settle();
    EXPECT_FALSE(machine.sound.WaveOutChanged.isTied());
}

// --- The knob --------------------------------------------------------------------------------------------------------

/// A pointer at 100 units to the side and this many tangents up or down.
struct Pointer {
    float dx, dy;
    std::optional<std::int16_t> level;
};

/// VOL-13: The level follows from the pointer's direction as seen from the knob's middle
/// VOL-15: Left below: 1.2, 0.73 and 0.32 part levels 0, 1 and 2
/// VOL-16: Left above: 0.32, 0.73, 1.38 and 3.08 part levels 3 to 7
/// VOL-17: Right above: 3.08, 1.38, 0.73 and 0.32 part levels 8 to 12
/// VOL-18: Right below: 0.32, 0.73 and 1.2 part levels 13, 14 and 15
/// VOL-14
TEST_F(Volume, TheKnobChoosesTheLevelByThePointersDirection) {
    setUp(-1, 5);
    const std::optional<std::int16_t> none;
    const std::vector<Pointer> rows = {
        {0, 0, none},    {-100, 121, none}, {-100, 120, 0},  {-100, 74, 0},   {-100, 72, 1},    {-100, 33, 1},
        {-100, 31, 2},   {-100, 1, 2},      {-100, -1, 3},   {-100, -32, 3},  {-100, -33, 4},   {-100, -72, 4},
        {-100, -74, 5},  {-100, -137, 5},   {-100, -139, 6}, {-100, -307, 6}, {-100, -309, 7},  {-1, -9000, 7},
        {1, -9000, 8},   {100, -309, 8},    {100, -307, 9},  {100, -139, 9},  {100, -137, 10},  {100, -74, 10},
        {100, -72, 11},  {100, -33, 11},    {100, -31, 12},  {100, -1, 12},   {100, 1, 13},     {100, 31, 13},
        {100, 33, 14},   {100, 72, 14},     {100, 74, 15},   {100, 119, 15},  {100, 121, none}, {0, 100, none},
        {1, 9000, none}, {-1, 9000, none}};
    for (const Pointer& row : rows) {
        EXPECT_EQ(knobLevel(player, 450 + row.dx, 440 + row.dy), row.level) << row.dx << ", " << row.dy;
    }
}

/// VOL-19: On a border the first row of the table counts
TEST_F(Volume, OnABorderTheFirstRowWins) {
    setUp(-1, 5);
    const std::vector<Pointer> rows = {{-100, 73, 0},   {-100, 32, 1},   {-100, -32, 3}, {-100, -73, 4},
                                       {-100, -138, 5}, {-100, -308, 6}, {100, -308, 9}, {100, -138, 9},
                                       {100, -73, 10},  {100, -32, 11},  {100, 32, 13},  {100, 73, 14}};
    for (const Pointer& row : rows) {
        EXPECT_EQ(knobLevel(player, 450 + row.dx, 440 + row.dy), row.level) << row.dx << ", " << row.dy;
    }
}

/// VOL-20: On an axis the neighbour nearer the present level counts
TEST_F(Volume, OnTheAxesTheNearerNeighbourWins) {
    setUp(-1, 0);
    EXPECT_EQ(knobLevel(player, 450, 300), 7);
    EXPECT_EQ(knobLevel(player, 350, 440), 2);
    EXPECT_EQ(knobLevel(player, 550, 440), 12);
    player.gVolume = 15;
    EXPECT_EQ(knobLevel(player, 450, 300), 8);
    EXPECT_EQ(knobLevel(player, 350, 440), 3);
    EXPECT_EQ(knobLevel(player, 550, 440), 13);
}

}  // namespace
}  // namespace corvane
