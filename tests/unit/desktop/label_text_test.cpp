// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/label_text.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>

#include "unit/desktop/offscreen.h"

namespace corvane {
namespace {

struct LabelText : ::testing::Test {
    LabelText() {
        test::offscreenApplication();
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

TEST_F(LabelText, ALabelsOwnWidthIsItsPlace) {
    label.Width = 1200;
    EXPECT_EQ(labelPlace(form, label), QRectF(150, 300, 1200, 240));
}

TEST_F(LabelText, WithoutAWidthItReachesToTheNextLabel) {
    EXPECT_EQ(labelPlace(form, label).right(), 900 - 60);
    next.Visible = false;
    EXPECT_EQ(labelPlace(form, label).right(), 3000);
    next.Visible = true;
    next.Top = 900;
    EXPECT_EQ(labelPlace(form, label).right(), 3000) << "a label of another line is not in the way";
    EXPECT_EQ(labelPlace(form, next).right(), 3000);
}

TEST_F(LabelText, ALabelWithoutAHeightHasTheUsualOne) {
    label.Height = 0;
    EXPECT_EQ(labelPlace(form, label).height(), kDefaultLabelHeight);
}

TEST_F(LabelText, LongTextsEndInAnEllipsis) {
    const QFont font = labelFont(20);
    const QFontMetricsF metrics(font);
    const QString text = "A title that is far too long";
    const QString cut = fittingText(text, font, metrics.horizontalAdvance(text) / 2);
    EXPECT_TRUE(cut.endsWith(QChar(0x2026)));
    EXPECT_LE(metrics.horizontalAdvance(cut), metrics.horizontalAdvance(text) / 2);
    EXPECT_EQ(fittingText(text, font, metrics.horizontalAdvance(text) + 1), text);
}

TEST_F(LabelText, TheFontFitsTheLabelAndItsDigitsAreOfOneWidth) {
    const QFont font = labelFont(20);
    EXPECT_EQ(font.pixelSize(), 15);
    const QFontMetricsF metrics(font);
    for (const char digit : std::string("0123456789")) {
        EXPECT_EQ(metrics.horizontalAdvance(QChar(digit)), metrics.horizontalAdvance('0')) << digit;
    }
}

}  // namespace
}  // namespace corvane
