// SPDX-License-Identifier: GPL-3.0-or-later
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>

#include "linux/native/binder.h"
#include "linux/native/native_form_window.h"
#include "linux/windowing/input_map.h"
#include "linux/windowing/shown_text.h"

// Labels and images: what has no keyboard and hands the mouse to its control.

namespace corvane {

namespace {

class MouseBinder : public Binder {
public:
    MouseBinder(NativeWindow& window, MouseControl& control, QWidget* widget)
        : Binder(window, control, widget), mouse_(control) {}

    bool mouse(const QMouseEvent& event) override {
        const bool isMove = event.type() == QEvent::MouseMove;
        const MouseArgs args = window().mouseArgs(widget(), event, isMove);
        window().run([&] {
            if (isMove) {
                mouse_.MouseMove.raise(args);
            } else if (event.type() == QEvent::MouseButtonRelease) {
                const bool inside = widget().rect().contains(event.position().toPoint());
                if (args.button == kLeftButton && inside) mouse_.Click.raise();
                if (window().bound()) mouse_.MouseUp.raise(args);
            } else {
                mouse_.MouseDown.raise(args);
                if (event.type() == QEvent::MouseButtonDblClick && window().bound()) mouse_.DblClick.raise();
            }
        });
        return true;
    }

private:
    MouseControl& mouse_;
};

class LabelBinder : public MouseBinder {
public:
    LabelBinder(NativeWindow& window, Label& label, QWidget& parent)
        : MouseBinder(window, label, new QLabel(&parent)), label_(label) {
        text().setTextFormat(Qt::PlainText);
        text().setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
    void changed(PropertyId property) override {
        if (property == PropertyId::Caption) {
            // Without a buddy Qt would show the mark itself.
            const bool hasKey = label_.Labels != nullptr;
            text().setText(hasKey ? marked(label_.Caption) : shownText(label_.Caption));
        }
        Binder::changed(property);
    }
    void takeAll() override {
        changed(PropertyId::Caption);
        if (label_.Labels != nullptr) text().setBuddy(window().widgetOf(*label_.Labels));
        Binder::takeAll();
    }
    QSize wanted() const override {
        return {text().fontMetrics().horizontalAdvance(shownText(label_.Caption)) + 2, text().fontMetrics().height()};
    }

private:
    QLabel& text() const { return static_cast<QLabel&>(widget()); }
    Label& label_;
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

/// The mark takes clicks for its field whether it is seen or not: only that field's focus lets it be seen.
class HighlightBinder : public MouseBinder {
public:
    HighlightBinder(NativeWindow& window, Image& image, QWidget& parent)
        : MouseBinder(window, image, new HighlightMark(&parent)) {}

    void changed(PropertyId property) override {
        if (property != PropertyId::Visible) {
            Binder::changed(property);
            return;
        }
        static_cast<HighlightMark&>(widget()).lit = control().Visible;
        widget().update();
    }
};

}  // namespace

std::unique_ptr<Binder> makeLabelBinder(NativeWindow& window, Label& label, QWidget& parent) {
    return std::make_unique<LabelBinder>(window, label, parent);
}

std::unique_ptr<Binder> makeImageBinder(NativeWindow& window, Image& image, QWidget& parent) {
    // An image that follows the mouse is a handle to drag.
    if (image.MouseMove.isTied()) return std::make_unique<MouseBinder>(window, image, new SplitterHandle(&parent));
    return std::make_unique<HighlightBinder>(window, image, parent);
}

}  // namespace corvane
