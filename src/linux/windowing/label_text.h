// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QString>

namespace corvane {

/// The font of a label that is `height` logical pixels high. Its digits are all of one width, so that a running time
/// stands still.
QFont labelFont(double height);

/// The text as it fits: whole, or cut with an ellipsis.
QString fittingText(const QString& text, const QFont& font, double width);

}  // namespace corvane
