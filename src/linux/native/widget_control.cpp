// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/native/widget_control.h"

#include <QFocusEvent>

#include "linux/native/native_form_window.h"
#include "linux/windowing/shown_text.h"

namespace corvane {

WidgetControl::WidgetControl(NativeWindow& window, QWidget* widget, const Control& control, NativeEvents& events)
    : window_(window), widget_(widget), events_(events) {
    const QString index = control.index() < 0 ? QString() : QString::number(control.index());
    widget->setObjectName(QString::fromStdString(control.name()) + index);
    widget->setAccessibleName(toQString(control.AccessibleName));
    if (control.TabIndex < 0) widget->setFocusPolicy(Qt::NoFocus);
    window.add(control, *widget);
    widget->installEventFilter(this);
}

void WidgetControl::place(const PixelRect& room) { widget_->setGeometry(room.left, room.top, room.width, room.height); }

void WidgetControl::setTip(const std::string& text) { widget_->setToolTip(plainTip(shownText(text))); }

PixelSize WidgetControl::textSize(const std::string& text) const {
    const QFontMetrics metrics = widget_->fontMetrics();
    return {metrics.horizontalAdvance(shownText(text)), metrics.height()};
}

PixelSize WidgetControl::ownSize() const {
    const QSize hint = widget_->sizeHint();
    return {hint.width(), hint.height()};
}

bool WidgetControl::eventFilter(QObject* /*watched*/, QEvent* event) {
    if (!window_.bound()) return false;
    switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:  // a field keeps the release for itself
            window_.watchAlt(*static_cast<QKeyEvent*>(event));
            return false;
        case QEvent::FocusIn:
        case QEvent::FocusOut: {
            // Another window in front, or a list that drops down, takes nothing from the field.
            const auto reason = static_cast<QFocusEvent*>(event)->reason();
            if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) return false;
            events_.focused(event->type() == QEvent::FocusIn);
            return false;
        }
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
            window_.dragStep(*static_cast<QMouseEvent*>(event));
            return mouse(*static_cast<QMouseEvent*>(event));
        default:
            return false;
    }
}

}  // namespace corvane
