// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/painted_layout.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

struct LabelPlaces : ::testing::Test {
    LabelPlaces() {
        form.Width = 3000;
        label.Move(150, 300);
        label.Height = 240;
        next.Move(900, 300);
        next.Height = 240;
    }
    Form form{"frmTried", FormStyle::Painted};
    Label label{&form, "lblTried"};
    Label next{&form, "lblNext"};
};

/// SKIN-57
TEST_F(LabelPlaces, ALabelsOwnWidthIsItsPlace) {
    label.Width = 1200;
    EXPECT_EQ(labelPlace(form, label), (Rectangle{150, 300, 1200, 240}));
}

/// SKIN-57: A label without a width reaches to the next label or the panel's edge
TEST_F(LabelPlaces, WithoutAWidthItReachesToTheNextLabel) {
    EXPECT_EQ(labelPlace(form, label).right(), 900 - 60);
    next.Visible = false;
    EXPECT_EQ(labelPlace(form, label).right(), 3000);
    next.Visible = true;
    next.Top = 900;
    EXPECT_EQ(labelPlace(form, label).right(), 3000) << "a label of another line is not in the way";
    EXPECT_EQ(labelPlace(form, next).right(), 3000);
}

TEST_F(LabelPlaces, ALabelWithoutAHeightHasTheUsualOne) {
    label.Height = 0;
    EXPECT_EQ(labelPlace(form, label).height, 16 * 15);
}

}  // namespace
}  // namespace corvane
