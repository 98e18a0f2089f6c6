// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/label_text.h"

#include <QFontMetricsF>
#include <QStringList>
#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr double kFontShare = 0.75;         ///< of a label's height
constexpr Twips kGap = 4 * kTwipsPerPixel;  ///< between a text and the label it runs up to

Twips heightOf(const Label& label) { return label.Height > 0 ? label.Height.get() : kDefaultLabelHeight; }

bool sharesALine(const Label& a, const Label& b) { return a.Top < b.Top + heightOf(b) && b.Top < a.Top + heightOf(a); }

}  // namespace

QRectF labelPlace(const Form& form, const Label& label) {
    Twips width = label.Width;
    if (width <= 0) {
        Twips edge = form.Width;
        for (const Control* control : form.controls()) {
            if (control == &label || control->kind() != ControlKind::Label || !control->Visible) continue;
            const auto& other = static_cast<const Label&>(*control);
            if (other.Left > label.Left && sharesALine(label, other)) edge = std::min(edge, other.Left - kGap);
        }
        width = std::max(0.0F, edge - label.Left);
    }
    return {static_cast<double>(label.Left), static_cast<double>(label.Top), static_cast<double>(width),
            static_cast<double>(heightOf(label))};
}

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
