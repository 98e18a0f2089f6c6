// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/focus_ring.h"

#include <QPainter>

namespace corvane {

namespace {
constexpr int kWidth = 2;  // logical pixels
}

FocusRing::FocusRing(QWidget& window) : QWidget(&window) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
}

void FocusRing::surround(const QRectF& control) {
    setGeometry(control.toAlignedRect().adjusted(-kWidth, -kWidth, kWidth, kWidth) & parentWidget()->rect());
    raise();
    show();
}

/// Black under white dashes: it is seen on every skin.
void FocusRing::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRect line = rect().adjusted(kWidth / 2, kWidth / 2, -kWidth / 2, -kWidth / 2);
    painter.setPen(QPen(Qt::black, kWidth));
    painter.drawRect(line);
    painter.setPen(QPen(Qt::white, kWidth, Qt::DashLine, Qt::FlatCap));
    painter.drawRect(line);
}

}  // namespace corvane
