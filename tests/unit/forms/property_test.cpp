// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <vector>

#include "forms/form.h"
#include "forms/lists.h"

namespace corvane {
namespace {

/// Remembers what it was told.
class Told : public ControlObserver {
public:
    void propertyChanged(Control& control, PropertyId property) override {
        properties.push_back(property);
        last = &control;
        if (leaves) control.removeObserver(this);
    }
    std::vector<PropertyId> properties;
    Control* last = nullptr;
    bool leaves = false;
};

class SampleForm : public Form {
public:
    SampleForm() : Form("frmSample", FormStyle::Dialog) {}
    Label lblText{this, "lblText"};
    std::array<CommandButton, 3> cmdMany = controlArray<CommandButton, 3>(this, "cmdMany");
};

using PropertyIds = std::vector<PropertyId>;

/// COM-13: Setting a property tells of a change, and nothing when it stays the same
TEST(Property, TellsObserversOfAChange) {
    SampleForm form;
    Told told;
    form.lblText.addObserver(&told);
    form.lblText.Caption = "new";
    EXPECT_EQ(told.properties, PropertyIds{PropertyId::Caption});
    EXPECT_EQ(told.last, &form.lblText);
}

/// COM-13
TEST(Property, IsSilentWhenTheValueStaysTheSame) {
    SampleForm form;
    form.lblText.Caption = "same";
    Told told;
    form.lblText.addObserver(&told);
    form.lblText.Caption = "same";
    form.lblText.Visible = true;
    EXPECT_TRUE(told.properties.empty());
}

TEST(Property, CopiesTheValueNotThePlace) {
    SampleForm form;
    Told told;
    form.cmdMany[1].Caption = "one";
    form.cmdMany[0].addObserver(&told);
    form.cmdMany[0].Caption = form.cmdMany[1].Caption;
    EXPECT_EQ(form.cmdMany[0].Caption.get(), "one");
    EXPECT_EQ(told.last, &form.cmdMany[0]);
}

TEST(Property, TellsAfterTheChange) {
    SampleForm form;
    class Reads : public ControlObserver {
    public:
        void propertyChanged(Control& control, PropertyId) override {
            seen = static_cast<Label&>(control).Caption.get();
        }
        std::string seen;
    } reads;
    form.lblText.addObserver(&reads);
    form.lblText.Caption = "after";
    EXPECT_EQ(reads.seen, "after");
}

TEST(Property, AnObserverMayLeaveWhileItIsTold) {
    SampleForm form;
    Told first;
    first.leaves = true;
    Told second;
    form.lblText.addObserver(&first);
    form.lblText.addObserver(&second);
    form.lblText.Caption = "a";
    form.lblText.Caption = "b";
    EXPECT_EQ(first.properties.size(), 1U);
    EXPECT_EQ(second.properties.size(), 2U);
}

TEST(Property, AnObserverThatAnotherOneRemovedIsNotTold) {
    SampleForm form;
    Told removed;
    class Removes : public ControlObserver {
    public:
        explicit Removes(Told& other) : other_(other) {}
        void propertyChanged(Control& control, PropertyId) override { control.removeObserver(&other_); }

    private:
        Told& other_;
    } removes(removed);
    form.lblText.addObserver(&removes);
    form.lblText.addObserver(&removed);
    form.lblText.Caption = "a";
    EXPECT_TRUE(removed.properties.empty());
}

TEST(Property, MoveAndSizeTellEachPart) {
    SampleForm form;
    Told told;
    form.lblText.addObserver(&told);
    form.lblText.Move(15, 30);
    form.lblText.SetSize(150, 0);
    EXPECT_EQ(told.properties, (PropertyIds{PropertyId::Left, PropertyId::Top, PropertyId::Width}));
}

TEST(PictureBox, TellsEachPaintingEvenOfTheSameSize) {
    Form form("frmSample", FormStyle::Media);
    PictureBox box(&form, "pctImage");
    Told told;
    box.addObserver(&told);
    box.setPainted(20, 10);
    box.setPainted(20, 10);
    EXPECT_EQ(told.properties, (PropertyIds{PropertyId::Painted, PropertyId::Painted}));
    EXPECT_EQ(box.paintedWidth(), 20);
    EXPECT_EQ(box.paintedHeight(), 10);
}

TEST(Form, KnowsItsControlsInPaintOrder) {
    SampleForm form;
    ASSERT_EQ(form.controls().size(), 4U);
    EXPECT_EQ(form.controls().front(), &form.lblText);
    form.raise(form.lblText);
    EXPECT_EQ(form.controls().size(), 4U);
    EXPECT_EQ(form.controls().back(), &form.lblText);
}

TEST(Form, FindsAControlByNameAndIndex) {
    SampleForm form;
    EXPECT_EQ(form.control("lblText"), &form.lblText);
    EXPECT_EQ(form.control("cmdMany", 2), &form.cmdMany[2]);
    EXPECT_EQ(form.control("cmdMany", 3), nullptr);
    EXPECT_EQ(form.control("cmdMany"), nullptr);
    EXPECT_EQ(form.cmdMany[2].index(), 2);
    EXPECT_EQ(form.cmdMany[2].form(), &form);
}

TEST(Form, ForgetsAControlThatDies) {
    SampleForm form;
    {
        const Label passing(&form, "lblPassing");
        EXPECT_EQ(form.controls().size(), 5U);
    }
    EXPECT_EQ(form.controls().size(), 4U);
}

TEST(Form, IsHiddenUntilShown) {
    SampleForm form;
    EXPECT_FALSE(form.Visible);
    form.Show();
    EXPECT_TRUE(form.Visible);
    form.Hide();
    EXPECT_FALSE(form.Visible);
}

TEST(Timer, IsOffAndCanBeRestarted) {
    Form form("frmSample", FormStyle::Hidden);
    Timer timer(&form, "tmrSample");
    EXPECT_FALSE(timer.Enabled);
    timer.Enabled = true;
    Told told;
    timer.addObserver(&told);
    timer.Enabled = true;
    EXPECT_TRUE(told.properties.empty());
    timer.restart();
    EXPECT_EQ(told.properties, (PropertyIds{PropertyId::Enabled, PropertyId::Enabled}));
    EXPECT_TRUE(timer.Enabled);
}

}  // namespace
}  // namespace corvane
