// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "contract/stage.h"
#include "forms/form.h"
#include "forms/lists.h"

namespace corvane {

/// The window of a dialog form on a desktop, and the hands and eyes of its user.
class NativeStage : public Stage {
public:
    virtual void attach(Form& form) = 0;  ///< shown from now on
    virtual void detach() = 0;

    virtual void press(const CommandButton& button) = 0;
    virtual void toggle(const Control& checkOrOption) = 0;
    virtual void type(const Control& field, const std::string& letters) = 0;  ///< behind what it shows
    virtual void choose(const ItemsControl& box, int row) = 0;
    virtual void click(const ItemsControl& list, int row) = 0;
    virtual void doubleClick(const ItemsControl& list, int row) = 0;
    virtual void stepRight(const ScrollBar& bar) = 0;

    virtual std::string text(const Control& control) = 0;  ///< of a button, without marks, a field or a choice
    virtual bool isOn(const Control& checkOrOption) = 0;
    virtual bool isUsable(const Control& control) = 0;  ///< seen and enabled
    virtual std::vector<int> selected(const ItemsControl& list) = 0;
    virtual int value(const ScrollBar& bar) = 0;
    virtual int left(const Control& control) = 0;  ///< pixels
};

/// What a dialog's controls do on every desktop: the form's changes are seen and told to nobody, the user's are told
/// once.
class NativeDialogContract : public ::testing::TestWithParam<StageFactory<NativeStage>> {
protected:
    NativeDialogContract() {
        int top = 0;
        form.SetSize(6000, 6000);
        for (Control* each : form.controls()) {
            each->Move(300, static_cast<Twips>(450 * top++));
            each->SetSize(2400, 420);
            each->TabIndex = top;
        }
        list.SetSize(2400, 1500);
        list.Move(3000, 0);
        typed.Editable = true;
        list.MultiSelect = true;
        field.KeyPress = [](int character) { return character >= '0' && character <= '9' ? character : 0; };
        for (ItemsControl* each : std::initializer_list<ItemsControl*>{&choice, &typed, &list}) {
            each->setItems({"5", "10", "20"});
        }
        button.Click.tie([this] { told += "button "; });
        check.Click.tie([this] { told += "check "; });
        field.Change.tie([this] { told += "field "; });
        choice.Click.tie([this] { told += "choice "; });
        typed.Click.tie([this] { told += "typed "; });
        list.Click.tie([this] { told += "list "; });
        list.DblClick.tie([this] { told += "opened "; });
        bar.Change.tie([this] { told += "bar "; });
    }
    ~NativeDialogContract() override { stage->detach(); }
    void show() {
        stage->attach(form);
        settle();
    }
    /// What has been told since it was asked last.
    std::string settle() {
        stage->pass(60);
        return std::exchange(told, {});
    }

    std::unique_ptr<NativeStage> stage = GetParam()();
    Form form{"frmTried", FormStyle::Dialog};
    CommandButton button{&form, "cmdTried"};
    CheckBox check{&form, "chkTried"};
    OptionButton first{&form, "optFirst"};
    OptionButton second{&form, "optSecond"};
    TextBox field{&form, "txtTried"};
    ComboBox choice{&form, "cboTried"};
    ComboBox typed{&form, "cboTyped"};
    FileBox list{&form, "fleTried"};
    ScrollBar bar{&form, "hscrTried"};
    std::string told;
};

TEST_P(NativeDialogContract, AButtonIsPressedOnceAndAsAnEventOfItsOwn) {
    button.Caption = "Save";
    show();
    EXPECT_EQ(stage->text(button), "Save");
    stage->press(button);
    EXPECT_EQ(told, "") << "its own handler is over first";
    EXPECT_EQ(settle(), "button ");
    button.Caption = "R&B";
    EXPECT_EQ(stage->text(button), "R&B");
    button.Enabled = false;
    EXPECT_FALSE(stage->isUsable(button));
    button.Enabled = true;
    button.Visible = false;
    EXPECT_FALSE(stage->isUsable(button));
    EXPECT_EQ(settle(), "");
}

TEST_P(NativeDialogContract, SwitchesFollowTheFormAndTheUser) {
    show();
    check.Value = true;
    EXPECT_TRUE(stage->isOn(check));
    EXPECT_EQ(settle(), "check ") << "the form's own";
    stage->toggle(check);
    EXPECT_FALSE(check.Value);
    EXPECT_EQ(settle(), "check ");
    stage->toggle(first);
    stage->toggle(second);
    EXPECT_TRUE(second.Value);
    EXPECT_FALSE(first.Value);
    EXPECT_FALSE(stage->isOn(first));
    first.Value = true;
    EXPECT_FALSE(stage->isOn(second));
}

TEST_P(NativeDialogContract, AFieldTakesWhatItsKeysTake) {
    field.Text = "12";
    show();
    EXPECT_EQ(stage->text(field), "12");
    stage->type(field, "a3b4");
    EXPECT_EQ(field.Text.get(), "1234");
    EXPECT_EQ(stage->text(field), "1234");
    EXPECT_EQ(settle(), "field field ") << "once for each letter that is taken";
    field.Text = "7";
    field.SelStart = 0;
    field.SelLength = 1;
    EXPECT_EQ(settle(), "field ");
    EXPECT_EQ(stage->text(field), "7");
    EXPECT_EQ(field.SelLength, 1);
}

TEST_P(NativeDialogContract, AChoiceIsShownAndTaken) {
    choice.ListIndex = 1;
    show();
    EXPECT_EQ(stage->text(choice), "10");
    stage->choose(choice, 2);
    EXPECT_EQ(choice.ListIndex, 2);
    EXPECT_EQ(settle(), "choice ");
    choice.ListIndex = 0;
    EXPECT_EQ(settle(), "choice ") << "the form's own";
    EXPECT_EQ(stage->text(choice), "5");
    choice.setItems({"a", "b"});
    choice.ListIndex = 1;
    settle();
    EXPECT_EQ(stage->text(choice), "b");
}

TEST_P(NativeDialogContract, WhatIsTypedIntoAListIsNoChoice) {
    show();
    stage->type(typed, "10");
    EXPECT_EQ(typed.Text.get(), "10");
    EXPECT_EQ(typed.ListIndex, -1);
    EXPECT_EQ(settle(), "");
    EXPECT_EQ(stage->text(typed), "10");
    stage->choose(typed, 2);
    EXPECT_EQ(typed.Text.get(), "20");
    EXPECT_EQ(settle(), "typed ");
    typed.Text = "99";
    EXPECT_EQ(settle(), "");
    EXPECT_EQ(stage->text(typed), "99");
}

TEST_P(NativeDialogContract, RowsAreSelectedAndOpened) {
    show();
    stage->click(list, 1);
    EXPECT_EQ(list.ListIndex, 1);
    EXPECT_EQ(list.selectedIndices(), std::vector<int>{1});
    EXPECT_EQ(settle(), "list ");
    list.clearSelection();
    list.select(2, true);
    EXPECT_EQ(settle(), "") << "the form's own";
    EXPECT_EQ(stage->selected(list), std::vector<int>{2});
    list.setItems({"one", "two", "three", "four"});
    EXPECT_EQ(settle(), "");
    EXPECT_EQ(stage->selected(list), std::vector<int>{});
    stage->doubleClick(list, 3);
    EXPECT_EQ(told.find("opened"), std::string::npos) << "an event of its own";
    EXPECT_EQ(list.ListIndex, 3);
    EXPECT_EQ(settle(), "list opened ");
}

TEST_P(NativeDialogContract, AStepperStepsInItsRange) {
    bar.Max = 2;
    show();
    bar.Value = 1;
    EXPECT_EQ(stage->value(bar), 1);
    EXPECT_EQ(settle(), "bar ");
    stage->stepRight(bar);
    EXPECT_EQ(bar.Value, 2);
    EXPECT_EQ(settle(), "bar ");
    stage->stepRight(bar);
    EXPECT_EQ(bar.Value, 2);
    EXPECT_EQ(settle(), "");
    EXPECT_EQ(stage->value(bar), 2);
    bar.Max = 500;
    bar.Value = 300;
    EXPECT_EQ(stage->value(bar), 300);
}

TEST_P(NativeDialogContract, AChangeOfPlaceIsSeen) {
    show();
    const int before = stage->left(list);
    list.Left = 3150;
    settle();
    EXPECT_GT(stage->left(list), before);
    EXPECT_TRUE(stage->isUsable(list));
}

/// Whatever is told may end the form.
TEST_P(NativeDialogContract, NothingIsToldOnceTheFormHasGone) {
    check.Click.tie([this] { stage->detach(); });
    show();
    stage->toggle(check);
    button.Caption = "later";
    EXPECT_EQ(settle(), "");
}

}  // namespace corvane
