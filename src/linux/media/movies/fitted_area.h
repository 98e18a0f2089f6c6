// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>
#include <QSize>

namespace corvane {

/// The largest rectangle of the picture's shape in the middle of an area; empty when either is empty.
QRectF fittedInto(QSize picture, const QRectF& area);

}  // namespace corvane
