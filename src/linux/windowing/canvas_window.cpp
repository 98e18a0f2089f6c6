// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/canvas_window.h"

#include <QAccessible>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QScreen>
#include <QToolTip>
#include <QWindow>
#include <algorithm>
#include <vector>

#include "linux/windowing/accessible_form.h"
#include "linux/windowing/foreign_focus.h"
#include "linux/windowing/shown_text.h"
#include "shell/window_place.h"

namespace corvane {

CanvasWindow::CanvasWindow(Form& form, DesktopContext& context) : FormWindow(form, context) {
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_InputMethodEnabled, false);  // every key reaches the form as it is
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    setMouseTracking(true);
}

CanvasWindow::~CanvasWindow() = default;

QRectF CanvasWindow::toWidget(const Rectangle& twips) const {
    const Rectangle scaled = twips.scaled(context().scale / static_cast<double>(kTwipsPerPixel));
    return {scaled.x, scaled.y, scaled.width, scaled.height};
}

void CanvasWindow::onBound() {
    setWindowTitle(shownTitle(form().Caption));
    takeGeometry();
    takeVisibility();
    takeWindowState();
}

void CanvasWindow::onUnbinding() {
    pointer_.forget();
    setFocused(nullptr);
    if (isKnown_) forgetControls(*this);
}

void CanvasWindow::propertyChanged(Control& control, PropertyId property) {
    if (&control == &form()) {
        formChanged(property);
        return;
    }
    if (property == PropertyId::Focus) {
        setFocus();
        post([&control] { control.GotFocus.raise(); });
        return;
    }
    if (QAccessible::isActive()) announce(*this, control, property);
    if (&control == keyboard_.control()) showFocus();
    if (property == PropertyId::Value || property == PropertyId::Checked) return;  // seen by nobody
    pointer_.controlChanged(control, property);
    controlChanged(control, property);
}

void CanvasWindow::formChanged(PropertyId property) {
    switch (property) {
        case PropertyId::Caption:
            setWindowTitle(shownTitle(form().Caption));
            break;
        case PropertyId::Left:
        case PropertyId::Top:
        case PropertyId::Width:
        case PropertyId::Height:
            takeGeometry();
            break;
        case PropertyId::Visible:
            takeVisibility();
            break;
        case PropertyId::WindowState:
            takeWindowState();
            break;
        case PropertyId::Focus:
            activate();
            break;
        case PropertyId::Enabled:
            setEnabled(form().Enabled);
            break;
        default:
            break;
    }
    controlChanged(form(), property);
}

void CanvasWindow::takeGeometry() {
    if (taking_) return;
    const QRect wanted = geometryOfForm();
    // One request to the window manager for place and size: between two the window would stand where nobody put it.
    if (wanted.size() != size()) {
        setMinimumSize(0, 0);
        setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    }
    setGeometry(wanted);
    setFixedSize(wanted.size());
}

QRect CanvasWindow::geometryOfForm() const {
    const QPoint corner(context().toPixels(form().Left), context().toPixels(form().Top));
    const QSize size(std::max(1, context().toPixels(form().Width)), std::max(1, context().toPixels(form().Height)));
    return {context().origin(form()) + corner, size};
}

void CanvasWindow::takeVisibility() {
    if (form().Visible == isVisible()) return;
    if (!form().Visible) {
        pointer_.lose();
        hide();
        return;
    }
    if (form().WindowState == WindowState::Minimized) {
        showMinimized();
    } else {
        showBeside();
    }
}

/// Nobody types into a window that came up by itself: a file that begins while the user is in another program.
void CanvasWindow::showBeside() {
    const bool leavesFocus = willLeaveFocus(*this);
    show();
    if (!leavesFocus) activate();
}

void CanvasWindow::takeWindowState() {
    if (taking_ || !isVisible()) return;
    const bool minimise = form().WindowState == WindowState::Minimized;
    if (minimise == isMinimized()) return;
    if (minimise) {
        pointer_.lose();
        showMinimized();
    } else {
        showNormal();
        activate();
    }
}

void CanvasWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    keepInSight(Sight::Screens);
}

/// A window that no screen shows could not be brought back: it has no title bar.
void CanvasWindow::keepInSight(Sight sight) {
    if (!bound() || !isVisible() || isMinimized()) return;
    const auto area = [](const QRect& pixels) {
        return Rectangle{double(pixels.x()), double(pixels.y()), double(pixels.width()), double(pixels.height())};
    };
    std::vector<ScreenArea> screens;
    for (const QScreen* const screen : QGuiApplication::screens()) {
        const Rectangle room = area(screen->availableGeometry());
        screens.push_back({sight == Sight::Screens ? area(screen->geometry()) : room, room});
    }
    const Rectangle place = placeInSight(area(geometry()), screens);
    const QPoint corner(qRound(place.x), qRound(place.y));
    if (corner != geometry().topLeft()) move(corner);
}

void CanvasWindow::screensChanged() {
    keepInSight(Sight::FreeOfBars);
    tellPlace();  // it counts from the primary screen, which may be another one
    update();
}

void CanvasWindow::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    tellPlace();
}

void CanvasWindow::tellPlace() {
    if (!bound() || taking_ || !isVisible() || isMinimized()) return;
    const QPoint place = pos() - context().origin(form());
    taking_ = true;
    // Whole twips stay as the form set them unless the window really is elsewhere.
    if (context().toPixels(form().Left) != place.x()) form().Left = context().toTwips(place.x());
    if (context().toPixels(form().Top) != place.y()) form().Top = context().toTwips(place.y());
    taking_ = false;
}

void CanvasWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (!bound()) return;
    if (event->type() == QEvent::WindowStateChange) {
        if (isMinimized()) pointer_.lose();  // by the window manager: no release will come
        taking_ = true;
        form().WindowState = isMinimized() ? WindowState::Minimized : WindowState::Normal;
        taking_ = false;
        keepInSight(Sight::Screens);  // the screens may have changed meanwhile
    } else if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        post([this] { form().Activate.raise(); });
    }
}

void CanvasWindow::closeEvent(QCloseEvent* event) {
    event->ignore();  // the form decides
    requestClose();
}

void CanvasWindow::requestClose() {
    const bool alt = QGuiApplication::queryKeyboardModifiers().testFlag(Qt::AltModifier);
    post([this, alt] { form().CloseRequest.raise(alt); });
}

bool CanvasWindow::event(QEvent* event) {
    if (bound() && event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const Control& control = *pointer_.hit(toForm(help->pos()));
        const QString text = toolTip(control);
        if (text.isEmpty()) {
            QToolTip::hideText();
        } else {
            QToolTip::showText(help->globalPos(), plainTip(text), this, placeOf(control).toAlignedRect());
        }
        return true;
    }
    if (event->type() == QEvent::ScreenChangeInternal) update();  // it may be denser or less dense
    if (event->type() == QEvent::WindowBlocked) pointer_.lose();  // a box is up: it gets the release
    return QWidget::event(event);
}

QString CanvasWindow::toolTip(const Control& control) const { return shownText(control.ToolTipText); }

bool CanvasWindow::focusNextPrevChild(bool /*next*/) { return false; }  // Tab is a key like any other

void CanvasWindow::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (bound()) post([this] { form().GotFocus.raise(); });
}

void CanvasWindow::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    focusLost(event->reason());
}

void CanvasWindow::focusLost(Qt::FocusReason reason) {
    if (reason == Qt::PopupFocusReason) pointer_.lose();  // a menu is up: it gets the release
    if (bound()) post([this] { form().LostFocus.raise(); });
}

}  // namespace corvane
