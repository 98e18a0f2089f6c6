// SPDX-License-Identifier: GPL-3.0-or-later
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>

#include "linux/native/native_form_window.h"
#include "linux/windowing/shown_text.h"

// Labels and images: what has no keyboard and hands the mouse to its control.

namespace corvane {

namespace {

/// What hands the mouse to its control.
class MouseWidget : public WidgetControl {
public:
    using WidgetControl::WidgetControl;

protected:
    bool mouse(const QMouseEvent& event) override {
        events().mouse(nativeMouse(event, widget()));
        return true;
    }
};

class LabelWidget : public MouseWidget, public NativeLabel {
public:
    LabelWidget(NativeWindow& window, const Label& label, NativeEvents& told)
        : MouseWidget(window, new QLabel(&window.holderOf(label)), label, told) {
        text().setTextFormat(Qt::PlainText);
        text().setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
    void setText(const std::string& shown) override { text().setText(shownText(shown)); }
    void leadTo(const Control& field) override { text().setBuddy(window().widgetOf(field)); }

private:
    QLabel& text() const { return static_cast<QLabel&>(widget()); }
};

/// The handle between two lists.
class SplitterHandle : public QWidget {
public:
    explicit SplitterHandle(QWidget* parent) : QWidget(parent) { setCursor(Qt::SplitHCursor); }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().color(QPalette::Mid));
        constexpr double kRadius = 1.4, kStep = 7;
        const QPointF middle = QRectF(rect()).center();
        for (const double down : {-kStep, 0.0, kStep}) painter.drawEllipse(middle + QPointF(0, down), kRadius, kRadius);
    }
};

/// A small mark that points at the field beside it.
class HighlightMark : public QWidget {
public:
    using QWidget::QWidget;
    bool lit = false;

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        if (!lit) return;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().color(QPalette::Highlight));
        const double half = 0.4 * std::min(width(), height());
        const QPointF middle = QRectF(rect()).center();
        painter.drawPolygon(QPolygonF(
            {middle + QPointF(-half * 0.7, -half), middle + QPointF(half, 0), middle + QPointF(-half * 0.7, half)}));
    }
};

class HandleWidget : public MouseWidget, public NativeMark {
public:
    HandleWidget(NativeWindow& window, const Image& image, NativeEvents& told)
        : MouseWidget(window, new SplitterHandle(&window.holderOf(image)), image, told) {}
    void light(bool /*lit*/) override {}
};

class MarkWidget : public MouseWidget, public NativeMark {
public:
    MarkWidget(NativeWindow& window, const Image& image, NativeEvents& told)
        : MouseWidget(window, new HighlightMark(&window.holderOf(image)), image, told) {}
    void light(bool lit) override {
        static_cast<HighlightMark&>(widget()).lit = lit;
        widget().update();
    }
};

}  // namespace

std::unique_ptr<NativeLabel> NativeWindow::makeLabel(const Label& label, NativeEvents& events) {
    return std::make_unique<LabelWidget>(*this, label, events);
}

std::unique_ptr<NativeMark> NativeWindow::makeMark(const Image& image, NativeEvents& events) {
    // An image that follows the mouse is a handle to drag.
    if (image.MouseMove.isTied()) return std::make_unique<HandleWidget>(*this, image, events);
    return std::make_unique<MarkWidget>(*this, image, events);
}

}  // namespace corvane
