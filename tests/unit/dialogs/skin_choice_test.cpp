// SPDX-License-Identifier: GPL-3.0-or-later
// A skin chosen in the settings is tried before it is stored.
#include "unit/dialogs/custom_fixture.h"

namespace corvane {
namespace {

using Custom = CustomControls;

class SkinChoice : public CustomDialog {
protected:
    SkinChoice() {
        machine.addPicture("/app/PANELSET/DAY.BMP", 100, 50);
        machine.addPicture("/app/PANELSET/TINY.BMP", 10, 10);
        machine.addBrokenPicture("/app/PANELSET/BAD.BMP", "no picture in it");
        machine.files.add("/app/PANELSET/DAY.CSV",
                          "panel,0,0,0,0,0,100,50,1\r\nwindow,1,0,0,0,0,100,50,1\r\nplay,8,0,0,10,10,20,20,1\r\n");
        machine.files.add("/app/PANELSET/WRONG.CSV", "heading\r\nwindow,1,0,0,0,0,100,x,1\r\n");
        machine.files.add("/app/PANELSET/LONG.CSV", std::string(5 << 20, '\n'));
    }
    void choose(const char* bitmap, const char* text) {
        if (found() == nullptr) open();
        dialog().cboCustom[Custom::kBitmaps].Text = bitmap;
        dialog().cboCustom[Custom::kTexts].Text = text;
        machine.dialogs.boxes.clear();
        push(Custom::kOk);
    }
};

TEST_F(SkinChoice, F1AloneOpensTheManualMeanwhile) {
    constexpr int kKeyF1 = 112, kKeyF2 = 113;
    open();
    for (const KeyArgs& other : {KeyArgs{kKeyF2, 0}, KeyArgs{kKeyF1, kShiftMask}}) {
        machine.loop.enter([&] { found()->KeyDown.raise(other); });
        EXPECT_EQ(machine.log.count("dialogs.help"), 0);
    }
    machine.loop.enter([&] { found()->KeyDown.raise({kKeyF1, 0}); });
    EXPECT_EQ(machine.log.count("dialogs.help"), 1);
}

/// DIAL-38: A pair that cannot be shown is told in one box, nothing is stored and the dialog stays open
/// COM-29
TEST_F(SkinChoice, IsToldInOneBoxAndTheDialogStays) {
    struct Wrong {
        const char* bitmap;
        const char* text;
        const char* told;
    };
    const std::vector<Wrong> all = {
        {"NONE.BMP", "DAY.CSV", "/app/PANELSET/NONE.BMP Not found!!"},
        {"DAY.BMP", "NONE.CSV", "/app/PANELSET/NONE.CSV Not found!!"},
        {"BAD.BMP", "DAY.CSV", "/app/PANELSET/BAD.BMP\r\nno picture in it"},
        {"TINY.BMP", "DAY.CSV", "/app/PANELSET/DAY.CSV\r\nLine 2: this part does not lie inside the bitmap (10 x 10)."},
        {"DAY.BMP", "WRONG.CSV", "/app/PANELSET/WRONG.CSV\r\nLine 2: a field is missing, or is no number."},
        {"DAY.BMP", "LONG.CSV", "/app/PANELSET/LONG.CSV\r\nThis file cannot be read, or is too long."},
        {"", "DAY.CSV", "/app/PANELSET/DEFAULT.BMP\r\nno such file"},
        {"NO\nNE.BMP", "DAY.CSV", "/app/PANELSET/NO NE.BMP Not found!!"},
        {"DAY.BMP", "NO\r\nNE.CSV", "/app/PANELSET/NO  NE.CSV Not found!!"},
    };
    player.gAutoPlay = true;
    for (const Wrong& each : all) {
        choose(each.bitmap, each.text);
        ASSERT_EQ(machine.dialogs.boxes.size(), 1U) << each.told;
        if (*each.bitmap != 0) {
            EXPECT_EQ(machine.dialogs.boxes[0].text, each.told);
        }
        EXPECT_EQ(machine.dialogs.boxes[0].icon, Icon::Stop);
        EXPECT_EQ(machine.dialogs.boxes[0].buttons, Buttons::Ok);
        EXPECT_NE(found(), nullptr);
        EXPECT_FALSE(panel().Visible);
        EXPECT_EQ(written("BITMAPFILE"), "(none)") << "nothing is stored";
        EXPECT_EQ(player.gBitmapFileName, "DEFAULT.BMP");
    }
}

/// DIAL-38
TEST_F(SkinChoice, OneThatCanBeShownIsStored) {
    choose("TINY.BMP", "DAY.CSV");
    choose("DAY.BMP", "DAY.CSV");
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    EXPECT_EQ(found(), nullptr);
    EXPECT_EQ(written("BITMAPFILE"), "DAY.BMP");
    EXPECT_EQ(written("TEXTFILE"), "DAY.CSV");
}

/// DIAL-38
TEST_F(SkinChoice, CancelLeavesAfterAChoiceThatCannotBeShown) {
    choose("NONE.BMP", "DAY.CSV");
    push(Custom::kCancel);
    EXPECT_EQ(found(), nullptr);
    EXPECT_EQ(player.gBitmapFileName, "DEFAULT.BMP");
}

}  // namespace
}  // namespace corvane
