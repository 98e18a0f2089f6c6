// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "forms/form.h"
#include "forms/lists.h"

namespace corvane {
namespace {

class Choices : public ::testing::Test {
protected:
    Form form{"frmSample", FormStyle::Dialog};
    Frame left{&form, "fraLeft"};
    Frame right{&form, "fraRight"};
    std::array<OptionButton, 3> zoom = controlArray<OptionButton, 3>(&form, "optZoom");
    OptionButton other{&form, "optOther"};
};

/// COM-16: Choosing one option clears the others of its group
TEST_F(Choices, SettingOneClearsTheOthersOfItsContainer) {
    for (OptionButton& each : zoom) each.Container = &left;
    other.Container = &right;
    zoom[0].Value = true;
    other.Value = true;
    zoom[2].Value = true;
    EXPECT_FALSE(zoom[0].Value);
    EXPECT_FALSE(zoom[1].Value);
    EXPECT_TRUE(zoom[2].Value);
    EXPECT_TRUE(other.Value);
}

TEST_F(Choices, OnlyTheChosenOneIsClicked) {
    int clicks0 = 0;
    int clicks1 = 0;
    zoom[0].Click.tie([&] { ++clicks0; });
    zoom[1].Click.tie([&] { ++clicks1; });
    zoom[0].Value = true;
    zoom[1].Value = true;
    zoom[1].Value = true;
    EXPECT_EQ(clicks0, 1);
    EXPECT_EQ(clicks1, 1);
}

TEST_F(Choices, ClearingOneChoosesNoOther) {
    zoom[0].Value = true;
    zoom[0].Value = false;
    EXPECT_FALSE(zoom[0].Value || zoom[1].Value || zoom[2].Value);
}

TEST_F(Choices, ACheckBoxIsClickedAtEachChange) {
    CheckBox box(&form, "chkSample");
    int clicks = 0;
    box.Click.tie([&] { ++clicks; });
    box.Value = true;
    box.Value = true;
    box.Value = false;
    EXPECT_EQ(clicks, 2);
}

TEST_F(Choices, AScrollBarChangesWithItsValueOnly) {
    ScrollBar bar(&form, "vsbSample");
    std::vector<int> seen;
    bar.Change.tie([&] { seen.push_back(bar.Value); });
    bar.Min = 9;
    bar.Max = 0;
    bar.Value = 3;
    bar.Value = 3;
    bar.Value = 4;
    EXPECT_EQ(seen, (std::vector<int>{3, 4}));
}

TEST_F(Choices, ATextBoxChangesWithItsText) {
    TextBox box(&form, "txtSample");
    int changes = 0;
    box.Change.tie([&] { ++changes; });
    box.Text = "a";
    box.Text = "a";
    box.SelStart = 1;
    EXPECT_EQ(changes, 1);
}

}  // namespace
}  // namespace corvane
