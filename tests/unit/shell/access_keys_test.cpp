// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/access_keys.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

struct AccessKeysOf : ::testing::Test {
    Form form{"frmTried", FormStyle::Dialog};
    std::string marked(const Control& control, const std::string& caption) {
        return AccessKeys(form).marked(control, caption);
    }
};

/// COM-25: A dialog's access keys are letters of its captions, none twice, first letters of words before others; Enter
///     and Escape have theirs without
TEST_F(AccessKeysOf, FirstLettersOfWordsAreTakenWhereTheyAreFree) {
    CommandButton save{&form, "cmdSave"}, saveAll{&form, "cmdAll"}, zap{&form, "cmdZap"};
    save.Caption = "Save";
    saveAll.Caption = "save all";
    zap.Caption = "[zap]";
    EXPECT_EQ(marked(save, "Save"), "&Save");
    EXPECT_EQ(marked(saveAll, "save all"), "s&ave all")
        << "S is taken, whatever its case; the first letter like the chosen one is marked";
    EXPECT_EQ(marked(zap, "[zap]"), "[&zap]") << "a sign is no letter";
}

/// COM-25
TEST_F(AccessKeysOf, ButtonsChooseBeforeOptionsAndOptionsBeforeLabels) {
    Label label{&form, "lblTitle"};
    CheckBox box{&form, "chkTitle"};
    OptionButton option{&form, "optTitle"};
    CommandButton button{&form, "cmdTitle"};
    label.Labels = &box;
    label.Caption = "Title A";
    box.Caption = "Title B";
    option.Caption = "Title C";
    button.Caption = "Title";
    EXPECT_EQ(marked(button, "Title"), "&Title");
    EXPECT_EQ(marked(box, "Title B"), "Title &B");
    EXPECT_EQ(marked(option, "Title C"), "Title &C");
    EXPECT_EQ(marked(label, "Title A"), "Title &A");
}

/// COM-25
TEST_F(AccessKeysOf, WhoGetsNoFirstLetterTakesAnotherTheShortestCaptionFirst) {
    CommandButton one{&form, "cmd1"}, two{&form, "cmd2"}, three{&form, "cmd3"}, four{&form, "cmd4"};
    one.Caption = "P";
    two.Caption = "Paper";
    three.Caption = "Pa";
    four.Caption = "P";
    EXPECT_EQ(marked(one, "P"), "&P");
    EXPECT_EQ(marked(three, "Pa"), "P&a") << "it has less to choose from";
    EXPECT_EQ(marked(two, "Paper"), "Pap&er") << "a and p are taken";
    EXPECT_EQ(marked(four, "P"), "P") << "nothing is left";
}

/// COM-25
TEST_F(AccessKeysOf, ALetterIsTakenOnceInWhateverCase) {
    CommandButton apple{&form, "cmd1"}, a{&form, "cmd2"}, zoo{&form, "cmd3"}, zi{&form, "cmd4"}, i{&form, "cmd5"};
    Label label{&form, "lbl1"};
    CheckBox box{&form, "chk1"};
    apple.Caption = "apple";
    a.Caption = "A";
    zoo.Caption = "Zoo";
    zi.Caption = "zi";
    i.Caption = "I";
    label.Labels = &box;
    label.Caption = "X";
    box.Caption = "X";
    EXPECT_EQ(marked(apple, "apple"), "&apple");
    EXPECT_EQ(marked(a, "A"), "A");
    EXPECT_EQ(marked(i, "I"), "&I") << "inside of a word it waits until the first letters are given";
    EXPECT_EQ(marked(zi, "zi"), "zi");
    EXPECT_EQ(marked(box, "X"), "&X") << "what a label names chooses before it";
    EXPECT_EQ(marked(label, "X"), "X");
}

/// COM-25
TEST_F(AccessKeysOf, SignsNextToTheLettersAreNone) {
    CommandButton brace{&form, "cmd1"}, tick{&form, "cmd2"}, at{&form, "cmd3"};
    brace.Caption = "{wet";
    tick.Caption = "`vat";
    at.Caption = "@urn";
    EXPECT_EQ(marked(brace, "{wet"), "{&wet");
    EXPECT_EQ(marked(tick, "`vat"), "`&vat");
    EXPECT_EQ(marked(at, "@urn"), "@&urn");
}

/// COM-25
TEST_F(AccessKeysOf, SomeHaveNone) {
    CommandButton ok{&form, "cmdOk"}, cancel{&form, "cmdCancel"}, hidden{&form, "cmdHidden"};
    Label plain{&form, "lblPlain"};
    PictureBox box{&form, "pctBox"};
    ok.Caption = "OK";
    ok.Default = true;
    cancel.Caption = "Leave";
    cancel.Cancel = true;
    hidden.Caption = "Hidden";
    hidden.Visible = false;
    plain.Caption = "Plain";
    for (const Control* each :
         {static_cast<const Control*>(&ok), static_cast<const Control*>(&cancel), static_cast<const Control*>(&hidden),
          static_cast<const Control*>(&plain), static_cast<const Control*>(&box)}) {
        EXPECT_EQ(marked(*each, "Text"), "Text") << each->name();
    }
    EXPECT_EQ(AccessKeys().marked(ok, "OK"), "OK");
}

/// COM-25
TEST_F(AccessKeysOf, AmpersandsOfTheCaptionStayWhatTheyAre) {
    CommandButton button{&form, "cmdBoth"};
    button.Caption = "1 & zoo";
    EXPECT_EQ(marked(button, "1 & zoo"), "1 && &zoo");
    EXPECT_EQ(marked(button, "Z & 2 & 3"), "&Z && 2 && 3") << "the caption of the moment, either case";
    EXPECT_EQ(marked(button, "1 & 2"), "1 && 2") << "without its letter";
}

}  // namespace
}  // namespace corvane
