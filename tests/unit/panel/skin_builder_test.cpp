// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/skin_builder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fake/fake_machine.h"

namespace corvane {
namespace {

constexpr int kSide = 200;  ///< pixels of the skin's bitmap

/// A bitmap in which each pixel tells where it stands.
class SkinBuilder : public ::testing::Test {
protected:
    SkinBuilder() {
        player.gTextPath = "/skin.csv";
        player.forms.registerForm(FormId::MenuWindow, [] { return std::make_unique<MenuWindowControls>(); });
        std::vector<std::uint32_t> pixels;
        for (int y = 0; y < kSide; ++y) {
            for (int x = 0; x < kSide; ++x) pixels.push_back(place(x, y));
        }
        player.forms.load<MenuWindowControls>().pcpMainPanel.Picture = makePicture(kSide, kSide, pixels);
    }

    static std::uint32_t place(int x, int y) { return static_cast<std::uint32_t>(y * 1000 + x); }

    bool build(const std::string& records) {
        machine.files.add("/skin.csv", records);
        return buildPanel(player, panel);
    }

    /// The record at 10, 20 on the panel with the picture of 5 by 6 pixels at 30, 40 of the bitmap.
    static std::string record(int number, const std::string& use = "1") {
        return "x," + std::to_string(number) + ",10,20,30,40,5,6," + use + "\n";
    }

    static testing::AssertionResult shows(const Picture& picture, int x, int y, int width, int height) {
        if (picture.empty()) return testing::AssertionFailure() << "no picture";
        if (picture.width() != width || picture.height() != height || picture.data()->pixel(0, 0) != place(x, y)) {
            return testing::AssertionFailure()
                   << picture.width() << " by " << picture.height() << ", first pixel " << picture.data()->pixel(0, 0);
        }
        return testing::AssertionSuccess();
    }
    static testing::AssertionResult isCell(const Picture& picture) { return shows(picture, 30, 40, 5, 6); }
    static testing::AssertionResult isPlaced(const Control& control) {
        if (control.Left == 150 && control.Top == 300 && control.Width == 75 && control.Height == 90) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure()
               << control.Left << " " << control.Top << " " << control.Width << " " << control.Height;
    }

    Image& image(int index) { return panel.imgMainPanel.at(static_cast<std::size_t>(index)); }
    Label& label(int index) { return panel.lblMainPanel.at(static_cast<std::size_t>(index)); }
    CommandButton& button(int index) { return panel.cmdMainPanel.at(static_cast<std::size_t>(index)); }

    FakeMachine machine;
    Ports ports = machine.ports();
    Player player{ports};
    MainPanelControls panel;
};

/// SKIN-24: Record 1 gives the window its background and a place that the panel's own move replaces
TEST_F(SkinBuilder, Record1GivesTheWindowItsBackgroundAndPlace) {
    ASSERT_TRUE(build(record(1)));
    EXPECT_TRUE(isCell(panel.Picture));
    EXPECT_EQ(panel.Left, 150);
    EXPECT_EQ(panel.Top, 300);
    EXPECT_EQ(panel.Width, 0) << "the panel sizes itself";
}

/// SKIN-06: Places and sizes are pixels; on the panel they count 15 twips
/// SKIN-25: Records 2, 4, 5, 7, 8, 10, 12, 13, 15, 17, 19 and 20 give the twelve buttons place, size and normal picture
/// SKIN-44: A used one gets its cell of the bitmap, its size and its place
TEST_F(SkinBuilder, EachButtonHasItsRecordOfTheNormalPicture) {
    const std::vector<std::pair<int, int>> buttons = {{2, 0},  {4, 1},  {5, 2},  {7, 3},  {8, 4},   {10, 5},
                                                      {12, 6}, {13, 7}, {15, 8}, {17, 9}, {19, 10}, {20, 11}};
    for (const auto& [number, index] : buttons) {
        button(index).Visible = false;
        ASSERT_TRUE(build(record(number)));
        EXPECT_TRUE(isCell(button(index).Picture)) << number;
        EXPECT_TRUE(button(index).DownPicture.get().empty()) << number;
        EXPECT_TRUE(isPlaced(button(index))) << number;
        EXPECT_TRUE(button(index).Visible) << number;
    }
}

/// SKIN-26: Records 3, 6, 9, 11, 14, 16 and 18 give their buttons place, size and pressed picture
TEST_F(SkinBuilder, SevenButtonsHaveARecordOfThePressedPicture) {
    const std::vector<std::pair<int, int>> buttons = {{3, 0}, {6, 2}, {9, 4}, {11, 5}, {14, 7}, {16, 8}, {18, 9}};
    for (const auto& [number, index] : buttons) {
        ASSERT_TRUE(build(record(number)));
        EXPECT_TRUE(isCell(button(index).DownPicture)) << number;
        EXPECT_TRUE(button(index).Picture.get().empty()) << number;
        EXPECT_TRUE(isPlaced(button(index))) << number;
    }
}

/// SKIN-28: Of a pair of records with different places the later one's place counts
TEST_F(SkinBuilder, TheLaterRecordOfAPairPlacesTheButton) {
    const std::string normal = "n,2,1,1,0,0,10,10,1\n";
    const std::string pressed = "p,3,2,3,20,0,12,13,1\n";
    ASSERT_TRUE(build(normal + pressed));
    EXPECT_EQ(button(kPower).Left, 30);
    EXPECT_EQ(button(kPower).Height, 195);
    EXPECT_TRUE(shows(button(kPower).Picture, 0, 0, 10, 10));
    EXPECT_TRUE(shows(button(kPower).DownPicture, 20, 0, 12, 13));
    ASSERT_TRUE(build(pressed + normal));
    EXPECT_EQ(button(kPower).Left, 15);
    EXPECT_EQ(button(kPower).Height, 150);
}

/// SKIN-27: Records 5 and 6 are also kept as repeat's off and on pictures
TEST_F(SkinBuilder, RepeatsPicturesAreAlsoStored) {
    ASSERT_TRUE(build("n,5,0,0,0,0,9,9,1\np,6,0,0,9,0,9,9,1\n"));
    EXPECT_TRUE(shows(image(kRepeatOffImage).Picture, 0, 0, 9, 9));
    EXPECT_TRUE(shows(image(kRepeatOnImage).Picture, 9, 0, 9, 9));
    EXPECT_FALSE(image(kRepeatOffImage).Visible);
}

/// SKIN-29: Record 21 places and fills the display picture
TEST_F(SkinBuilder, TheDisplayPictureIsPlacedAndFilled) {
    ASSERT_TRUE(build(record(21)));
    EXPECT_TRUE(isCell(panel.pctMainPanel.Picture));
    EXPECT_TRUE(isPlaced(panel.pctMainPanel));
}

/// SKIN-30: Records 22 and 23 place and fill images 7 and 8
/// SKIN-31: Record 24 is the knob: it places and fills image 6 and gives the knob's middle and radius
/// SKIN-34: Record 25 places and fills image 0 and is kept in image 1
/// SKIN-39: Records 34, 36 and 38 place and fill the lamps 9, 12 and 15 and are kept as their off pictures
TEST_F(SkinBuilder, ImagesArePlacedAndFilled) {
    for (const auto& [number, index] :
         std::vector<std::pair<int, int>>{{22, 7}, {23, 8}, {24, 6}, {25, 0}, {34, 9}, {36, 12}, {38, 15}}) {
        ASSERT_TRUE(build(record(number)));
        EXPECT_TRUE(isCell(image(index).Picture)) << number;
        EXPECT_TRUE(isPlaced(image(index))) << number;
        EXPECT_TRUE(image(index).Visible) << number;
    }
}

/// SKIN-35: Records 26 and 27 fill images 2 and 3, which are never seen themselves
/// SKIN-40: Records 35, 37 and 39 are the lamps' on pictures, kept in images 11, 14 and 17
/// SKIN-34, SKIN-39
TEST_F(SkinBuilder, StoredPicturesAreFilledAndStayUnseen) {
    for (const auto& [number, index] : std::vector<std::pair<int, int>>{
             {25, 1}, {26, 2}, {27, 3}, {34, 10}, {35, 11}, {36, 13}, {37, 14}, {38, 16}, {39, 17}}) {
        ASSERT_TRUE(build(record(number)));
        EXPECT_TRUE(isCell(image(index).Picture)) << number;
        EXPECT_FALSE(image(index).Visible) << number;
        EXPECT_EQ(image(index).Width, 0) << number;
    }
}

/// SKIN-17: The colour of a text is the text's own, of the slider its fill
/// SKIN-36: Records 28 to 31 place and colour labels 0, 3, 4 and 2
/// SKIN-37: Records 32 and 33 place, size and colour labels 1 and 5
TEST_F(SkinBuilder, LabelsArePlacedAndColoured) {
    for (const auto& [number, index] :
         std::vector<std::pair<int, int>>{{28, 0}, {29, 3}, {30, 4}, {31, 2}, {32, 1}, {33, 5}}) {
        ASSERT_TRUE(build(record(number, "yellow")));
        EXPECT_TRUE(isPlaced(label(index))) << number;
        EXPECT_EQ(label(index).ForeColor, 0x00FFFF) << number;
    }
}

/// SKIN-38: A label whose record gives no size is 16 pixels high and keeps its width
/// SKIN-14
TEST_F(SkinBuilder, ALabelWithoutASizeIs16PixelsHigh) {
    label(kTimeLabel).Width = 300;
    ASSERT_TRUE(build("t,31,1,2,0,0,0,0,&HFF\n"));
    EXPECT_EQ(label(kTimeLabel).Height, 240);
    EXPECT_EQ(label(kTimeLabel).Width, 300);
    EXPECT_EQ(label(kTimeLabel).ForeColor, 255);
}

/// SKIN-16: 0 hides a text rather than making it black; BLACK makes it black
TEST_F(SkinBuilder, ZeroHidesALabelRatherThanMakingItBlack) {
    label(kTimeLabel).ForeColor = kWhite;
    ASSERT_TRUE(build(record(31, "0")));
    EXPECT_FALSE(label(kTimeLabel).Visible);
    EXPECT_EQ(label(kTimeLabel).ForeColor, kWhite);
    ASSERT_TRUE(build(record(31, "BLACK")));
    EXPECT_TRUE(label(kTimeLabel).Visible);
    EXPECT_EQ(label(kTimeLabel).ForeColor, kBlack);
}

/// SKIN-15
TEST_F(SkinBuilder, AnUnknownColourLeavesTheOneDesigned) {
    label(kTimeLabel).ForeColor = 0x123456;
    ASSERT_TRUE(build(record(31, "nice")));
    EXPECT_EQ(label(kTimeLabel).ForeColor, 0x123456);
}

/// SKIN-45: Texts and slider need no cell
TEST_F(SkinBuilder, LabelsAndSliderNeedNoPicture) {
    EXPECT_TRUE(build("t,31,1,2,900,900,50,10,RED\ns,40,1,2,-1,-1,150,4,RED\n"));
}

/// SKIN-41: Record 40 places and colours the slider; its width is the slider's travel
/// SKIN-06, SKIN-17
TEST_F(SkinBuilder, TheSliderStartsNarrowAndKnowsItsTravel) {
    ASSERT_TRUE(build("s,40,3,4,0,0,150,8,CYAN\n"));
    EXPECT_EQ(panel.pctSlide.Left, 45);
    EXPECT_EQ(panel.pctSlide.Top, 60);
    EXPECT_EQ(panel.pctSlide.Width, 15);
    EXPECT_EQ(panel.pctSlide.Height, 120);
    EXPECT_EQ(panel.pctSlide.BackColor, 0xFFFF00);
    EXPECT_EQ(panel.pctSlide.hitWidth, 2250);
    EXPECT_EQ(player.gSlideWidth, 2250);
    ASSERT_TRUE(build("s,40,3,4,0,0,-150,8,CYAN\n"));
    EXPECT_EQ(panel.pctSlide.hitWidth, 0) << "less than nothing is no travel";
    EXPECT_EQ(player.gSlideWidth, 0);
    ASSERT_TRUE(build(record(40, "0")));
    EXPECT_FALSE(panel.pctSlide.Visible);
}

/// SKIN-43: An element that is not used is hidden and nothing is cut for it
/// SKIN-07
TEST_F(SkinBuilder, ZeroHidesEveryElementAndCutsNothing) {
    std::string records;
    for (int number = 1; number <= 40; ++number) records += "x," + std::to_string(number) + ",0,0,999,999,999,999,0\n";
    ASSERT_TRUE(build(records));
    EXPECT_EQ(machine.log.allCalls("pictures").size(), 0U);
    for (Control* control : panel.controls()) {
        EXPECT_FALSE(control->Visible) << control->name() << " " << control->index();
    }
    EXPECT_TRUE(panel.Picture.get().empty());
}

/// SKIN-46
TEST_F(SkinBuilder, ARecordAfterAZeroShowsTheElementAgain) {
    ASSERT_TRUE(build(record(12, "0") + record(12)));
    EXPECT_TRUE(button(kStop).Visible);
    ASSERT_TRUE(build(record(12) + record(12, "0")));
    EXPECT_FALSE(button(kStop).Visible);
}

/// SKIN-46: Records may come in any order and any number of times; each is applied in its turn, so the last one wins
TEST_F(SkinBuilder, TheLastRecordOfAnElementWins) {
    ASSERT_TRUE(build("a,12,1,1,0,0,9,9,1\n" + record(20) + "b,12,5,5,50,60,7,7,1\n"));
    EXPECT_EQ(button(kStop).Left, 75);
    EXPECT_TRUE(shows(button(kStop).Picture, 50, 60, 7, 7));
}

/// SKIN-46
TEST_F(SkinBuilder, EachRecordIsAppliedInItsTurn) {
    ASSERT_TRUE(build("t,31,1,2,0,0,50,20,RED\nt,31,3,4,0,0,0,0,nice\n"));
    EXPECT_EQ(label(kTimeLabel).ForeColor, 255) << "a text that is no colour leaves the one before";
    EXPECT_EQ(label(kTimeLabel).Width, 750) << "so does a missing width";
    EXPECT_EQ(label(kTimeLabel).Left, 45);

    ASSERT_TRUE(build("k,24,0,0,0,0,60,60,1\n" + record(24, "0")));
    EXPECT_EQ(player.gVolumeX, 450) << "a hidden element keeps what it was given";
    EXPECT_FALSE(image(kKnobImage).Visible);
}

/// SKIN-47: A hidden element keeps the picture that an earlier record gave it
TEST_F(SkinBuilder, AHiddenElementKeepsThePictureOfAnEarlierRecord) {
    ASSERT_TRUE(build(record(35) + record(35, "0")));
    EXPECT_TRUE(isCell(image(kAutoPlayLamp + 2).Picture));
}

/// SKIN-03: The first field is for the skin's author and means nothing
/// SKIN-42: The text is read from its start for the elements; record 0 is skipped
/// SKIN-05, PANEL-02
TEST_F(SkinBuilder, RecordsComeInAnyOrderWithHeadingsBetween) {
    ASSERT_TRUE(
        build("NAME,NO,L,T,X,Y,W,H,USE\n" + record(40, "RED") + "part two\n" + record(1) + record(0) + record(41)));
    EXPECT_EQ(panel.pctSlide.BackColor, 255);
    EXPECT_TRUE(isCell(panel.Picture));
}

/// SKIN-31
TEST_F(SkinBuilder, TheKnobsCentreIsTheMiddleOfItsPicture) {
    ASSERT_TRUE(build("k,24,10,20,0,0,60,40,1\n"));
    EXPECT_EQ(player.gVolumeX, 450);
    EXPECT_EQ(player.gVolumeY, 300);
    EXPECT_EQ(player.gVolumeRadius, 300 - 45 - 60) << "the indicator stays inside the smaller side";
    EXPECT_TRUE(panel.shpVolume.Visible);
}

/// SKIN-31
TEST_F(SkinBuilder, ATinyKnobTurnsOnItsCentre) {
    ASSERT_TRUE(build("k,24,10,20,0,0,5,5,1\n"));
    EXPECT_EQ(player.gVolumeRadius, 0);
}

/// SKIN-32: A knob record of 0 hides knob and indicator
/// SKIN-33: A skin without record 24 keeps the volume indicator as designed
TEST_F(SkinBuilder, WithoutAKnobRecordTheIndicatorStaysAsDesigned) {
    player.gVolumeX = 77;
    ASSERT_TRUE(build(record(1)));
    EXPECT_EQ(player.gVolumeX, 77);
    EXPECT_TRUE(panel.shpVolume.Visible);
    ASSERT_TRUE(build(record(24, "0")));
    EXPECT_FALSE(panel.shpVolume.Visible);
}

/// SKIN-48: A cell outside the bitmap is an error, also where a later record would win
TEST_F(SkinBuilder, ACellOutsideTheBitmapIsAnError) {
    EXPECT_TRUE(build("x,12,0,0,0,0,200,200,1\n"));
    EXPECT_FALSE(build("x,12,0,0,1,0,200,200,1\n"));
    EXPECT_FALSE(build("x,12,0,0,0,195,5,6,1\n"));
    EXPECT_FALSE(build("x,12,0,0,-1,0,5,5,1\n"));
    EXPECT_FALSE(build("x,12,0,0,0,0,0,5,1\n"));
    EXPECT_FALSE(build("x,12,0,0,0,0,5,-5,1\n"));
    EXPECT_FALSE(build("x,12,0,0,32767,32767,32767,32767,1\n" + record(12))) << "also when a later one would win";
}

/// SKIN-08
TEST_F(SkinBuilder, AMalformedRecordIsAnError) {
    EXPECT_FALSE(build(record(1) + "x,12,zero,0,0,0,5,5,1\n"));
    EXPECT_FALSE(build("x,12,0,0,0,0,5\n"));
}

/// SKIN-49: A text file that is missing or absurdly large is an error; an empty one is a bare panel
TEST_F(SkinBuilder, AMissingOrAbsurdTextFileIsAnError) {
    EXPECT_FALSE(buildPanel(player, panel));
    EXPECT_FALSE(build(std::string(5 * 1024 * 1024, '\n')));
    EXPECT_TRUE(build("")) << "an empty skin is a bare panel";
}

/// SKIN-50: Without a bitmap nothing can be cut
TEST_F(SkinBuilder, WithoutABitmapNothingCanBeCut) {
    player.forms.find<MenuWindowControls>()->pcpMainPanel.Picture = Picture();
    EXPECT_FALSE(build(record(12)));
    EXPECT_TRUE(build(record(31, "RED")));
    player.forms.unload<MenuWindowControls>();
    EXPECT_FALSE(build(record(31, "RED")));
}

/// SKIN-51: A skin of many lines costs no picture a line
TEST_F(SkinBuilder, ManyRecordsOfOneElementCutOnePicture) {
    std::string records;
    for (int i = 0; i < 50'000; ++i) records += "x,12,0,0,0,0,200,200,1\n";
    ASSERT_TRUE(build(records));
    EXPECT_EQ(machine.log.allCalls("pictures").size(), 1U);
}

class PanelRecord : public SkinBuilder {
protected:
    void read(const std::string& records) {
        machine.files.add("/skin.csv", records);
        readPanelRecord(player, background);
    }
    std::string size() { return std::to_string(player.gPanelWidth) + " " + std::to_string(player.gPanelHeight); }

    Form window{"window", FormStyle::Painted};
    Image background{&window, "imgDummyPanel"};
};

/// SKIN-20: Its fields 7 and 8 are the panel's width and height
/// SKIN-21: Unless its ninth field is 0, its cell is the opening's picture, at its place in twips
TEST_F(PanelRecord, GivesThePanelsSizeAndBackground) {
    read("NAME,NO,L,T,X,Y,W,H,USE\n" + record(12) + "p,0,1,2,3,4,150,60,1\n");
    EXPECT_EQ(size(), "150 60");
    EXPECT_TRUE(shows(background.Picture, 3, 4, 150, 60));
    EXPECT_EQ(background.Left, 15);
    EXPECT_EQ(background.Top, 30);
}

/// SKIN-21
TEST_F(PanelRecord, ZeroGivesTheSizeAlone) {
    read("p,0,1,2,3,4,150,60,0\n");
    EXPECT_EQ(size(), "150 60");
    EXPECT_TRUE(background.Picture.get().empty());
    EXPECT_EQ(background.Left, 0);
}

/// SKIN-19: The first record 0 counts and ends the reading
TEST_F(PanelRecord, TheFirstOneCounts) {
    read("p,0,0,0,0,0,150,60,1\np,0,0,0,0,0,90,90,1\n");
    EXPECT_EQ(size(), "150 60");
}

/// START-17: Without a panel record the panel is 512 by 128 pixels and nothing is cut
/// SKIN-18: Before it is read the panel is 512 by 128 pixels
/// SKIN-22: Without record 0 there are 512 by 128 pixels and no picture
TEST_F(PanelRecord, WithoutOneThePanelIs512By128) {
    player.gPanelWidth = 1;
    read(record(1) + "x\n");
    EXPECT_EQ(size(), "512 128");
    EXPECT_TRUE(background.Picture.get().empty());
}

TEST_F(PanelRecord, ATextLongerThanALimitIsNotRead) {
    std::string records = "p,0,0,0,0,0,150,60,0\n";
    records.resize(kMostSkinTextBytes, '\n');
    read(records);
    EXPECT_EQ(size(), "150 60");
    read(records + "\n");
    EXPECT_EQ(size(), "512 128");
}

/// SKIN-23: A reading error ends the reading silently, with what was set so far
/// SKIN-55
TEST_F(PanelRecord, AReadingErrorIsSilent) {
    for (const char* records : {"", "p,0,0,0,0,0,wide,60,1\n", "p,0,0,0\n", "p,0,0,0,0,0,0,60,1\n",
                                "p,0,0,0,0,0,-5,60,1\n", "p,0,0,0,0,0,30000,60,1\n", "p,0,0,0,0,0,99999,60,1\n"}) {
        read(records);
        EXPECT_EQ(size(), "512 128") << records;
    }
    machine.files.remove("/skin.csv");
    readPanelRecord(player, background);
    EXPECT_EQ(size(), "512 128");
    EXPECT_TRUE(machine.dialogs.boxes.empty());
}

/// SKIN-23
TEST_F(PanelRecord, ACellOutsideTheBitmapGivesTheSizeAlone) {
    read("p,0,1,2,100,0,150,60,1\n");
    EXPECT_EQ(size(), "150 60");
    EXPECT_TRUE(background.Picture.get().empty());
}

}  // namespace
}  // namespace corvane
