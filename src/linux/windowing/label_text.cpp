// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/label_text.h"

#include <QFontMetricsF>
#include <QStringList>
#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr double kFontShare = 0.75;  ///< of a label's height

}  // namespace

QFont labelFont(double height) {
    QFont font;
    font.setFamilies(
        QStringList{QStringLiteral("DejaVu Sans"), QStringLiteral("VL PGothic"), QStringLiteral("VL Gothic")});
    font.setPixelSize(std::max(6, static_cast<int>(std::lround(height * kFontShare))));
    font.setHintingPreference(QFont::PreferVerticalHinting);
    return font;
}

QString fittingText(const QString& text, const QFont& font, double width) {
    return QFontMetricsF(font).elidedText(text, Qt::ElideRight, width);
}

}  // namespace corvane
