// SPDX-License-Identifier: GPL-3.0-or-later
// What a painted form's window draws, what it draws anew, and what its labels say.
#include "unit/shell/drawn_rig.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;
using test::plain;

struct PaintedForm : test::DrawnRig {
    PaintedForm() : DrawnRig(FormStyle::Painted) {
        place(title, 100, 10, 60, 20);
        place(dot, 5, 50, 20, 20);
        place(button, 10, 10, 40, 20);
        button.Picture = plain(40, 20);
        attach();
        toldNow();
    }
    Texts drawn() {
        FakeBrush brush;
        window->paint(brush);
        return brush.drawn;
    }

    Label title{&form, "lblTitle"};
    Shape dot{&form, "shpDot"};
    CommandButton button{&form, "cmdTried"};
};

TEST_F(PaintedForm, TextsAndDiscsLieOnTheSkinBehindThePicturesAboveThem) {
    title.Caption = "A title";
    EXPECT_EQ(drawn(), (Texts{"skin cmdTried", "text A title at 100 10 60 20 but 10 10 40 20",
                              "disc 5 50 20 20 but 10 10 40 20"}));
    button.Visible = false;
    EXPECT_EQ(drawn().back(), "disc 5 50 20 20") << "nothing lies above it";
    button.Visible = true;
    form.Picture = plain(200, 100);
    button.Picture = surface->glass = plain(40, 20);
    EXPECT_EQ(drawn(), (Texts{"skin on a picture cmdTried", "text A title at 100 10 60 20", "disc 5 50 20 20"}));
    button.Visible = false;
    dot.Visible = false;
    title.Caption = "";
    EXPECT_EQ(drawn(), Texts{"skin on a picture"});
    screens.scale = 2;
    title.Caption = "A title";
    EXPECT_EQ(drawn().back(), "text A title at 200 20 120 40");
}

TEST_F(PaintedForm, OnlyWhatHasChangedIsDrawnAnew) {
    button.Picture = plain(40, 20);
    EXPECT_EQ(toldNow(), Texts{"paint 10 10 40 20"});
    button.Left = 60 * kTwipsPerPixel;
    EXPECT_EQ(toldNow(), (Texts{"paint 10 10 40 20", "paint 60 10 40 20"}));
    button.Visible = false;
    EXPECT_EQ(toldNow(), Texts{"paint 60 10 40 20"});
    button.Left = 70 * kTwipsPerPixel;
    EXPECT_EQ(toldNow(), Texts{}) << "nobody sees it";
    button.Visible = true;
    EXPECT_EQ(toldNow(), Texts{"paint 70 10 40 20"});
    button.Enabled = false;
    button.ToolTipText = "Play";
    EXPECT_EQ(toldNow(), Texts{});
    screens.scale = 1.25;
    dot.FillColor = kWhite;
    EXPECT_EQ(toldNow(), Texts{"paint 6 62 26 26"}) << "the pixels that it touches";
    form.Picture = plain(200, 100);
    EXPECT_EQ(toldNow(), Texts{"paint all"});
}

TEST_F(PaintedForm, WhatGrowsByLessThanAPixelOfTheSkinIsNotDrawnAnew) {
    CommandButton& bar = button;
    place(bar, 10, 60, 20, 5);
    toldNow();
    for (const bool doubled : {false, true}) {
        screens.scale = doubled ? 2 : 1;
        bar.Width = 20.4F * kTwipsPerPixel;
        EXPECT_EQ(toldNow(), Texts{});
        bar.Width = 20.6F * kTwipsPerPixel;
        EXPECT_EQ(toldNow().size(), 2U) << "as it was, and as it is";
        bar.Width = 21.2F * kTwipsPerPixel;
        EXPECT_EQ(toldNow(), Texts{});
        bar.Left = 10.7F * kTwipsPerPixel;
        EXPECT_EQ(toldNow().size(), 2U);
        place(bar, 10, 60, 20, 5);
        toldNow();
    }
    title.Caption = "A title";
    toldNow();
    title.Left = 100.2F * kTwipsPerPixel;
    EXPECT_NE(toldNow(), Texts{}) << "letters lie on parts of pixels";
}

TEST_F(PaintedForm, AHeldButtonIsDrawnAnew) {
    press(20, 20);
    EXPECT_EQ(toldNow(), Texts{"paint 10 10 40 20"});
    moveTo(90, 90);
    release(90, 90);
    EXPECT_EQ(toldNow(), Texts{"paint 10 10 40 20"});
}

TEST_F(PaintedForm, ALabelsPlaceBoundsItsNeighbours) {
    Label left(&form, "lblLeft");
    left.Move(10 * kTwipsPerPixel, 10 * kTwipsPerPixel);
    left.Height = 20 * kTwipsPerPixel;
    title.Caption = "A title";
    toldNow();
    title.Caption = "Another";
    EXPECT_EQ(toldNow(), Texts{"paint 100 10 60 20"}) << "a text alone";
    title.Left = 120 * kTwipsPerPixel;
    const Texts told = toldNow();
    EXPECT_NE(std::find(told.begin(), told.end(), "paint 10 10 106 20"), told.end()) << "up to the other one";
}

TEST_F(PaintedForm, ALabelThatIsCutSaysAllInItsTip) {
    title.Caption = "title";
    EXPECT_EQ(window->tipAt({110, 15}).text, "");
    title.Caption = "A title";
    EXPECT_EQ(window->tipAt({110, 15}).text, "A title");
    EXPECT_EQ(toText(window->tipAt({110, 15}).place), "100 10 60 20");
    title.ToolTipText = "Frame";
    EXPECT_EQ(window->tipAt({110, 15}).text, "Frame");
    EXPECT_EQ(window->tipAt({190, 90}).text, "") << "the form itself";
}

/// DISP-13: A number of four digits is drawn smaller where a skin has room for three; anything else keeps its size
TEST_F(PaintedForm, ANumberOfMoreDigitsIsDrawnSmallerRatherThanCut) {
    title.Caption = "1234";
    EXPECT_EQ(drawn()[1], "text 1234 at 100 10 60 20 but 10 10 40 20") << "it fits";
    title.Width = 32 * kTwipsPerPixel;
    EXPECT_EQ(drawn()[1], "text 1234 at 100 12 32 16 but 10 10 40 20");
    EXPECT_EQ(window->tipAt({110, 15}).text, "") << "nothing of it is cut";
    title.Caption = "123a";
    EXPECT_EQ(drawn()[1], "text 123a at 100 10 32 20 but 10 10 40 20");
    title.Width = 10 * kTwipsPerPixel;
    title.Caption = "123";
    EXPECT_EQ(drawn()[1], "text 123 at 100 10 10 20 but 10 10 40 20");
    title.Caption = "123456";
    EXPECT_EQ(drawn()[1], "text 123456 at 100 10 10 20 but 10 10 40 20") << "no size that can be read would do";
    EXPECT_EQ(window->tipAt({105, 15}).text, "123456");
}

TEST_F(PaintedForm, ALabelWithoutAWidthTakesTheMouseAsWideAsItsText) {
    title.Width = 0;
    title.Caption = "1234";
    EXPECT_EQ(toText(window->pixelsOf(title)), "100 10 40 20");
    screens.scale = 2;
    EXPECT_EQ(toText(window->pixelsOf(title)), "200 20 40 40") << "letters are pixels of the screen";
}

TEST_F(PaintedForm, AssistiveProgramsAreToldOfChangesThatNobodySees) {
    title.Caption = "A title";
    button.Checked = true;
    EXPECT_EQ(surface->announced, (Texts{"lblTitle", "cmdTried"}));
    EXPECT_EQ(toldNow(), Texts{"paint 100 10 60 20"});
}

}  // namespace
}  // namespace corvane
