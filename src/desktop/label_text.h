// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

#include "forms/form.h"

namespace corvane {

inline constexpr Twips kDefaultLabelHeight = 16 * kTwipsPerPixel;  ///< of a label that has no height

/// Where a label's text may go, in twips of the form: its own rectangle; a label without a width reaches to the next
/// visible label on its right, or to the form's right edge.
QRectF labelPlace(const Form& form, const Label& label);

/// The font of a label that is `height` logical pixels high. Its digits are all of one width, so that a running time
/// stands still.
QFont labelFont(double height);

/// The text as it fits: whole, or cut with an ellipsis.
QString fittingText(const QString& text, const QFont& font, double width);

}  // namespace corvane
