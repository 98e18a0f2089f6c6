// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/label_text.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>

#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

struct LabelText : ::testing::Test {
    LabelText() { test::offscreenApplication(); }
};

/// SKIN-54: A text longer than its place ends in an ellipsis, with the whole in its tool tip
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
