// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAbstractSlider>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyleOptionButton>
#include <QStyleOptionFocusRect>

#include "linux/native/native_form_window.h"

namespace corvane {

namespace {

/// Two arrow buttons side by side that step a number; held, they step on. Arrow keys and the wheel step it too.
class Stepper : public QAbstractSlider {
public:
    Stepper(QWidget* parent, NativeEvents& events) : QAbstractSlider(parent), events_(events) {
        setOrientation(Qt::Horizontal);
        setPageStep(1);
        setFocusPolicy(Qt::StrongFocus);
        setAttribute(Qt::WA_Hover);
    }

protected:
    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() != Qt::LeftButton) return;
        pressed_ = partAt(event->position().toPoint());
        const SliderAction action = pressed_ == Part::Less ? SliderSingleStepSub : SliderSingleStepAdd;
        constexpr int kFirstMs = 400, kNextMs = 120;
        update();
        triggerAction(action);
        setRepeatAction(action, kFirstMs, kNextMs);
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Home || event->key() == Qt::Key_End) {
            events_.stepToEnd(event->key() == Qt::Key_End);
        } else {
            QAbstractSlider::keyPressEvent(event);
        }
    }
    void mouseReleaseEvent(QMouseEvent* /*event*/) override { letGo(); }
    /// What its step puts up gets the release.
    void focusOutEvent(QFocusEvent* event) override {
        letGo();
        QAbstractSlider::focusOutEvent(event);
    }
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const Part under = underMouse() ? partAt(mapFromGlobal(QCursor::pos())) : Part::None;
        drawPart(painter, Part::Less, under);
        drawPart(painter, Part::More, under);
        if (!hasFocus()) return;
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = rect().adjusted(2, 2, -2, -2);
        focus.state |= QStyle::State_KeyboardFocusChange;
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
    void sliderChange(SliderChange change) override {
        QAbstractSlider::sliderChange(change);
        update();
    }

private:
    enum class Part { None, Less, More };

    void letGo() {
        setRepeatAction(SliderNoAction);
        pressed_ = Part::None;
        update();
    }

    QRect partRect(Part part) const {
        const int half = width() / 2;
        return part == Part::Less ? QRect(0, 0, half, height()) : QRect(half, 0, width() - half, height());
    }
    Part partAt(QPoint point) const { return point.x() < width() / 2 ? Part::Less : Part::More; }

    void drawPart(QPainter& painter, Part part, Part under) const {
        QStyleOptionButton button;
        button.initFrom(this);
        button.rect = partRect(part);
        button.state &= ~(QStyle::State_HasFocus | QStyle::State_MouseOver);
        button.state |= pressed_ == part ? QStyle::State_Sunken : QStyle::State_Raised;
        if (under == part) button.state |= QStyle::State_MouseOver;
        style()->drawControl(QStyle::CE_PushButtonBevel, &button, &painter, this);

        QStyleOption arrow;
        arrow.initFrom(this);
        const int side = std::min(button.rect.width(), button.rect.height()) / 2;
        arrow.rect = QRect(0, 0, side, side);
        arrow.rect.moveCenter(button.rect.center());
        style()->drawPrimitive(part == Part::Less ? QStyle::PE_IndicatorArrowLeft : QStyle::PE_IndicatorArrowRight,
                               &arrow, &painter, this);
    }

    NativeEvents& events_;
    Part pressed_ = Part::None;
};

class StepperWidget : public WidgetControl, public NativeStepper {
public:
    StepperWidget(NativeWindow& window, const ScrollBar& bar, NativeEvents& told)
        : WidgetControl(window, new Stepper(&window.holderOf(bar), told), bar, told) {
        QObject::connect(&slider(), &QAbstractSlider::valueChanged, &slider(),
                         [this](int value) { events().stepTo(value); });
    }
    void setRange(int least, int most) override {
        const QSignalBlocker quiet(slider());
        slider().setRange(least, most);
    }
    void setValue(int value) override {
        const QSignalBlocker quiet(slider());
        slider().setValue(value);
    }

private:
    QAbstractSlider& slider() const { return static_cast<QAbstractSlider&>(widget()); }
};

}  // namespace

std::unique_ptr<NativeStepper> NativeWindow::makeStepper(const ScrollBar& bar, NativeEvents& events) {
    return std::make_unique<StepperWidget>(*this, bar, events);
}

}  // namespace corvane
