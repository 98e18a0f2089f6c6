// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/native/native_form_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFontMetrics>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTimer>

#include "linux/native/quiet_mnemonic_style.h"
#include "linux/windowing/input_map.h"
#include "linux/windowing/shown_text.h"

namespace corvane {

namespace {

Qt::WindowFlags flagsOf(const Form& form) {
    Qt::WindowFlags flags = Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                            Qt::WindowCloseButtonHint;
    if (form.Resizable) flags |= Qt::WindowMaximizeButtonHint;
    return flags;
}

}  // namespace

NativeWindow::NativeWindow(Form& form, DesktopContext& context)
    : QDialog(nullptr, flagsOf(form)),
      DialogWindow(form, context.loop, context, native_, *this, context),
      style_(std::make_unique<QuietMnemonicStyle>()),
      thumbnails_(context.loop),
      native_(context.loop, *this) {
    setObjectName(QString::fromStdString(form.name()));
}

NativeWindow::~NativeWindow() {
    widgets_.clear();
    // Widgets go before the style and the objects that they tell.
    for (QObject* child : QObjectList(children())) {
        if (child->isWidgetType()) delete child;
    }
}

// --- Controls ----------------------------------------------------------------------------------------------------

void NativeWindow::add(const Control& control, QWidget& widget) {
    widgets_[&control] = &widget;
    widget.setStyle(style_.get());
}

QWidget* NativeWindow::widgetOf(const Control& control) const {
    const auto found = widgets_.find(&control);
    return found == widgets_.end() ? nullptr : found->second;
}

QWidget& NativeWindow::holderOf(const Control& control) {
    QWidget* const frame = control.Container != nullptr ? widgetOf(*control.Container) : nullptr;
    return frame != nullptr ? *frame : *this;
}

PixelSize NativeWindow::textSize(const std::string& text) const {
    const QFontMetrics metrics = fontMetrics();
    return {metrics.horizontalAdvance(toQString(text)), metrics.height()};
}

void NativeWindow::setTextShare(double share) {
    const QScopedValueRollback changing(fontIsOurs_, true);
    QFont wanted;  // nothing of its own: what is not set follows the desktop
    const double times = std::max(1.0, context().scale) * share;
    if (times != 1.0) wanted.setPointSizeF(QApplication::font(this).pointSizeF() * times);
    setFont(wanted);
}

void NativeWindow::orderTabs(const std::vector<const Control*>& order) {
    QWidget* before = nullptr;
    for (const Control* each : order) {
        QWidget* const widget = each->TabIndex >= 0 ? widgetOf(*each) : nullptr;
        if (widget == nullptr) continue;
        if (before != nullptr) setTabOrder(before, widget);
        before = widget;
    }
}

void NativeWindow::focusFirst(const Control& control) {
    if (QWidget* const first = widgetOf(control)) first->setFocus();
}

// --- The window --------------------------------------------------------------------------------------------------

void NativeWindow::setTitle(const std::string& text) { setWindowTitle(shownTitle(text)); }

/// Where nobody manages the windows, nobody else gives it the keyboard.
void NativeWindow::show(bool shown) {
    setVisible(shown);
    if (shown) activateWindow();
}

void NativeWindow::setState(WindowState state) {
    setWindowState(state == WindowState::Minimized   ? Qt::WindowMinimized
                   : state == WindowState::Maximized ? Qt::WindowMaximized
                                                     : Qt::WindowNoState);
}

void NativeWindow::setInner(PixelSize size, PixelSize least) {
    if (form().Resizable) {
        setMinimumSize(least.width, least.height);
        resize(size.width, size.height);
    } else {
        setFixedSize(size.width, size.height);
    }
}

void NativeWindow::moveOuter(const PixelRect& place) {
    if (form().Resizable) resize(place.width, place.height);
    move(place.left, place.top);
}

PixelRect NativeWindow::room() const {
    const QScreen* const on = context().screen();
    if (on == nullptr) return {};
    constexpr int kTitleBar = 40;  // room for what the window manager puts around it, from the place on that it is told
    const QRect free = on->availableGeometry().adjusted(0, 0, 0, -kTitleBar);
    return {free.x(), free.y(), free.width(), free.height()};
}

void NativeWindow::soon(EventLoop::Handler handler) { QTimer::singleShot(0, this, std::move(handler)); }

void NativeWindow::moveEvent(QMoveEvent* event) {
    QDialog::moveEvent(event);
    if (!bound() || !isVisible()) return;
    cornerIs({frameGeometry().x(), frameGeometry().y()});
}

void NativeWindow::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    native_.sized({width(), height()});
}

void NativeWindow::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        native_.stateIs(isMinimized()   ? WindowState::Minimized
                        : isMaximized() ? WindowState::Maximized
                                        : WindowState::Normal);
    } else if (!fontIsOurs_ && (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)) {
        native_.rescale();
    }
}

void NativeWindow::closeEvent(QCloseEvent* event) {
    event->ignore();  // the form decides
    native_.askToClose(QGuiApplication::queryKeyboardModifiers().testFlag(Qt::AltModifier));
}

// --- Input -------------------------------------------------------------------------------------------------------

bool NativeWindow::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
            watchAlt(*static_cast<QKeyEvent*>(event));
            if (takeHelpKey(*static_cast<QKeyEvent*>(event))) return true;
            if (event->type() == QEvent::KeyPress && native_.key(keyArgs(*static_cast<QKeyEvent*>(event)))) return true;
            break;
        case QEvent::ApplicationFontChange:  // the size of its own hides the desktop's
            native_.rescale();
            break;
        case QEvent::WindowActivate:
            native_.activated();
            break;
        case QEvent::WindowDeactivate:
            showMnemonics(false);
            break;
        default:
            break;
    }
    return QDialog::event(event);
}

bool NativeWindow::takeHelpKey(const QKeyEvent& event) {
    if (event.type() != QEvent::KeyPress || event.key() != Qt::Key_F1 || event.isAutoRepeat()) return false;
    return native_.helpKey(shiftState(event.modifiers()));
}

void NativeWindow::watchAlt(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Alt) showMnemonics(event.type() == QEvent::KeyPress);
}

void NativeWindow::showMnemonics(bool shown) {
    auto& style = static_cast<QuietMnemonicStyle&>(*style_);
    if (style.underline == shown) return;
    style.underline = shown;
    for (const auto& [control, widget] : widgets_) widget->update();
}

NativeMouse nativeMouse(const QMouseEvent& event, const QWidget& widget) {
    const bool isMove = event.type() == QEvent::MouseMove;
    return {isMove                                        ? NativeMouse::Act::Move
            : event.type() == QEvent::MouseButtonRelease  ? NativeMouse::Act::Release
            : event.type() == QEvent::MouseButtonDblClick ? NativeMouse::Act::DoubleClick
                                                          : NativeMouse::Act::Press,
            isMove ? 0 : buttonCode(event.button()),
            shiftState(event.modifiers()),
            event.position().x(),
            event.position().y(),
            widget.rect().contains(event.position().toPoint())};
}

void NativeWindow::mouse(const QMouseEvent& event) {
    dragStep(event);
    native_.mouse(nativeMouse(event, *this));
}

// The window manager is not asked to move the window: after a quick click it would begin when the button is up again.
void NativeWindow::dragStep(const QMouseEvent& event) {
    const QPoint at = event.globalPosition().toPoint();
    if (event.type() == QEvent::MouseMove) {
        if (dragging_) move(windowAt_ + at - pressedAt_);
        return;
    }
    dragging_ = false;
    pressedAt_ = at;
    windowAt_ = pos();
}

}  // namespace corvane
