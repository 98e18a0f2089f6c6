// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace corvane {

/// The mark around the drawn control that has the keyboard focus. It lies over the window, so that what is composed
/// beneath it stays as it is.
class FocusRing : public QWidget {
public:
    explicit FocusRing(QWidget& window);
    void surround(const QRectF& control);  ///< logical pixels of the window

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace corvane
