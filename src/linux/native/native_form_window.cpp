// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/native/native_form_window.h"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QRadioButton>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <cmath>

#include "linux/native/quiet_mnemonic_style.h"
#include "linux/windowing/input_map.h"
#include "linux/windowing/shown_text.h"

namespace corvane {

namespace {

QString sampleText() { return QStringLiteral("Aa Gg 0123456789 Page List"); }

Qt::WindowFlags flagsOf(const Form& form) {
    Qt::WindowFlags flags = Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                            Qt::WindowCloseButtonHint;
    if (form.Resizable) flags |= Qt::WindowMaximizeButtonHint;
    return flags;
}

}  // namespace

NativeWindow::NativeWindow(Form& form, DesktopContext& context)
    : QDialog(nullptr, flagsOf(form)), FormWindow(*this, form, context), style_(std::make_unique<QuietMnemonicStyle>()) {
    setObjectName(QString::fromStdString(form.name()));
    if (context.scale > 1.0) {
        QFont larger = font();
        larger.setPointSizeF(larger.pointSizeF() * context.scale);
        setFont(larger);
    }
}

NativeWindow::~NativeWindow() {
    // Widgets go before the style and the binders that they use.
    for (QObject* child : QObjectList(children())) {
        if (child->isWidgetType()) delete child;
    }
}

int NativeWindow::textWidth(const std::string& text) {
    return static_cast<int>(std::ceil(fontMetrics().horizontalAdvance(toQString(text)) / scale_.across()));
}

void NativeWindow::run(const EventLoop::Handler& handler) {
    enter(handler);
    if (bound() && context().loop.depth() == 0) flush();
}

void NativeWindow::command(const Event<>& event) {
    if (bound() && !context().loop.held()) post([&event] { event.raise(); });
}

void NativeWindow::flushSoon(Binder& binder) {
    if (std::find(waiting_.begin(), waiting_.end(), &binder) != waiting_.end()) return;
    if (waiting_.empty()) QTimer::singleShot(0, this, [this] { flush(); });
    waiting_.push_back(&binder);
}

void NativeWindow::flush() {
    if (!bound()) return;
    const auto stale = std::exchange(waiting_, {});
    for (Binder* each : stale) each->flush();
}

QWidget* NativeWindow::widgetOf(const Control& control) const {
    const auto found = byControl_.find(&control);
    return found == byControl_.end() ? nullptr : &found->second->widget();
}

MouseArgs NativeWindow::mouseArgs(const QWidget& /*widget*/, const QMouseEvent& event, bool isMove) const {
    return {isMove ? 0 : buttonCode(event.button()), shiftState(event.modifiers()),
            scale_.twipsAcross(event.position().x()), scale_.twipsDown(event.position().y())};
}

// --- Binding -----------------------------------------------------------------------------------------------------

void NativeWindow::onBound() {
    keys_ = AccessKeys(form());
    makeWidgets();
    takeScale();
    for (const auto& each : binders_) each->takeAll();
    orderTabs();
    for (const PropertyId each : {PropertyId::Caption, PropertyId::Enabled, PropertyId::Width, PropertyId::Visible}) {
        formChanged(each);
    }
}

void NativeWindow::onUnbinding() {
    for (const auto& each : binders_) each->release();
}

void NativeWindow::makeWidgets() {
    // Frames first: they are the parents of what they hold.
    for (const bool frames : {true, false}) {
        for (Control* control : form().controls()) {
            if ((control->kind() == ControlKind::Frame) != frames) continue;
            QWidget* const parent = control->Container != nullptr ? widgetOf(*control->Container) : nullptr;
            auto binder = makeBinder(*this, *control, parent != nullptr ? *parent : *this);
            if (!binder) continue;
            binder->widget().setStyle(style_.get());
            binder->widget().installEventFilter(this);
            byControl_[control] = binder.get();
            binders_.push_back(std::move(binder));
        }
    }
}

void NativeWindow::takeScale() {
    const QFontMetrics metrics = fontMetrics();
    scale_ =
        FormScale(std::max(1.0, metrics.horizontalAdvance(sampleText()) / static_cast<double>(FormScale::kLetters)),
                  std::max(1.0, metrics.height() / static_cast<double>(FormScale::kLine)));
    for (const auto& each : binders_) scale_.makeRoom(each->wanted(), each->designWidth(), each->designHeight());
}

void NativeWindow::orderTabs() {
    std::vector<Binder*> reached;
    for (const auto& each : binders_) {
        if (each->control().TabIndex >= 0) reached.push_back(each.get());
    }
    std::sort(reached.begin(), reached.end(),
              [](const Binder* a, const Binder* b) { return a->control().TabIndex < b->control().TabIndex; });
    for (std::size_t i = 1; i < reached.size(); ++i) setTabOrder(&reached[i - 1]->widget(), &reached[i]->widget());
    if (!reached.empty()) reached.front()->widget().setFocus();
}

void NativeWindow::propertyChanged(Control& control, PropertyId property) {
    if (&control == &form()) {
        formChanged(property);
    } else if (const auto found = byControl_.find(&control); found != byControl_.end()) {
        found->second->changed(property);
    }
}

void NativeWindow::formChanged(PropertyId property) {
    if (taking_) return;
    switch (property) {
        case PropertyId::Caption:
            setWindowTitle(shownTitle(form().Caption));
            break;
        case PropertyId::Enabled:
            setEnabled(form().Enabled);
            break;
        case PropertyId::Width:
        case PropertyId::Height:
            takeSize();
            break;
        case PropertyId::Visible:
            if (form().Visible && !shownBefore_) putInPlace();
            setVisible(form().Visible);
            break;
        case PropertyId::WindowState:
            setWindowState(form().WindowState == WindowState::Minimized   ? Qt::WindowMinimized
                           : form().WindowState == WindowState::Maximized ? Qt::WindowMaximized
                                                                          : Qt::WindowNoState);
            break;
        default:
            break;
    }
}

// --- Size and place ----------------------------------------------------------------------------------------------

void NativeWindow::takeSize() {
    const QSize wanted = scale_.size(form().Width, form().Height);
    if (form().Resizable) {
        setMinimumSize(scale_.size(form().MinWidth, form().MinHeight));
        resize(wanted);
    } else {
        setFixedSize(wanted);
    }
}

void NativeWindow::putInPlace() {
    shownBefore_ = true;
    takeSize();
    const QScreen* const on = context().screen();
    if (on == nullptr) return;
    constexpr int kTitleBar = 40;  // room for what the window manager puts around it
    const QRect room = on->availableGeometry().adjusted(0, kTitleBar, 0, 0);
    if (form().Resizable) resize(size().boundedTo(room.size()));
    QRect place(QPoint(), size());
    // Around the form's middle: the window may be larger than the form says, when the font is.
    place.moveCenter(context().origin(form()) + QPoint(context().toPixels(form().Left + form().Width / 2),
                                                       context().toPixels(form().Top + form().Height / 2)));
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    place.moveLeft(std::max(place.left(), room.left()));
    place.moveTop(std::max(place.top(), room.top()));
    move(place.topLeft());
    focusFirst();
}

void NativeWindow::focusFirst() {
    QWidget* const first = focusWidget();
    if (qobject_cast<QRadioButton*>(first) == nullptr || first->parentWidget() == nullptr) return;
    for (QRadioButton* each : first->parentWidget()->findChildren<QRadioButton*>(Qt::FindDirectChildrenOnly)) {
        if (each->isChecked()) each->setFocus();
    }
}

void NativeWindow::moveEvent(QMoveEvent* event) {
    QDialog::moveEvent(event);
    if (!bound() || !isVisible()) return;
    taking_ = true;
    const QPoint at = frameGeometry().topLeft() - context().origin(form());
    form().Move(context().toTwips(at.x()), context().toTwips(at.y()));
    taking_ = false;
}

void NativeWindow::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    if (!bound() || size() == scale_.size(form().Width, form().Height)) return;
    run([this] {
        taking_ = true;
        form().SetSize(scale_.twipsAcross(width()), scale_.twipsDown(height()));
        taking_ = false;
        form().Resize.raise();
    });
}

void NativeWindow::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (!bound() || binders_.empty()) return;
    if (event->type() == QEvent::WindowStateChange) {
        taking_ = true;
        form().WindowState = isMinimized()   ? WindowState::Minimized
                             : isMaximized() ? WindowState::Maximized
                                             : WindowState::Normal;
        taking_ = false;
    } else if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        takeScale();
        takeSize();
        for (const auto& each : binders_) each->flush();
    }
}

// --- Input -------------------------------------------------------------------------------------------------------

void NativeWindow::reject() {
    if (!bound()) return;
    for (Control* each : form().controls()) {
        if (each->kind() != ControlKind::CommandButton) continue;
        auto& button = static_cast<CommandButton&>(*each);
        if (button.Cancel && button.Enabled) return command(button.Click);
    }
}

void NativeWindow::closeEvent(QCloseEvent* event) {
    event->ignore();  // the form decides
    const bool alt = QGuiApplication::queryKeyboardModifiers().testFlag(Qt::AltModifier);
    post([this, alt] { form().CloseRequest.raise(alt); });
}

bool NativeWindow::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
            watchAlt(*static_cast<QKeyEvent*>(event));
            if (takeHelpKey(*static_cast<QKeyEvent*>(event))) return true;
            break;
        case QEvent::WindowActivate:
            if (bound() && form().Activate.isTied()) run([this] { form().Activate.raise(); });
            break;
        case QEvent::WindowDeactivate:
            showMnemonics(false);
            break;
        default:
            break;
    }
    return QDialog::event(event);
}

/// Of the keys, the form is told of F1 alone: the others are its controls'.
bool NativeWindow::takeHelpKey(const QKeyEvent& event) {
    if (event.type() != QEvent::KeyPress || event.key() != Qt::Key_F1 || !bound()) return false;
    if (event.isAutoRepeat() || !form().KeyDown.isTied()) return false;
    post([this, key = keyArgs(event)] { form().KeyDown.raise(key); });
    return true;
}

void NativeWindow::watchAlt(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Alt) showMnemonics(event.type() == QEvent::KeyPress);
}

void NativeWindow::showMnemonics(bool shown) {
    auto& style = static_cast<QuietMnemonicStyle&>(*style_);
    if (style.underline == shown) return;
    style.underline = shown;
    for (const auto& each : binders_) each->widget().update();
}

bool NativeWindow::eventFilter(QObject* watched, QEvent* event) {
    if (!bound()) return QDialog::eventFilter(watched, event);
    const auto found = std::find_if(binders_.begin(), binders_.end(),
                                    [watched](const auto& each) { return &each->widget() == watched; });
    if (found == binders_.end()) return QDialog::eventFilter(watched, event);
    Binder& binder = **found;
    switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:  // a field keeps the release for itself
            watchAlt(*static_cast<QKeyEvent*>(event));
            break;
        case QEvent::FocusIn:
        case QEvent::FocusOut: {
            // Another window in front, or a list that drops down, takes nothing from the field.
            const auto reason = static_cast<QFocusEvent*>(event)->reason();
            if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) break;
            const bool got = event->type() == QEvent::FocusIn;
            if (got && reason == Qt::MouseFocusReason) binder.focusByMouse();
            run([&] { (got ? binder.control().GotFocus : binder.control().LostFocus).raise(); });
            break;
        }
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
            dragStep(*static_cast<QMouseEvent*>(event));
            return binder.mouse(*static_cast<QMouseEvent*>(event));
        default:
            break;
    }
    return QDialog::eventFilter(watched, event);
}

void NativeWindow::mousePressEvent(QMouseEvent* event) {
    dragStep(*event);
    const MouseArgs args = mouseArgs(*this, *event, false);
    run([&] { form().MouseDown.raise(args); });
}

void NativeWindow::mouseMoveEvent(QMouseEvent* event) {
    dragStep(*event);
    const MouseArgs args = mouseArgs(*this, *event, true);
    run([&] { form().MouseMove.raise(args); });
}

void NativeWindow::mouseReleaseEvent(QMouseEvent* event) {
    dragStep(*event);
    const MouseArgs args = mouseArgs(*this, *event, false);
    run([&] { form().MouseUp.raise(args); });
}

void NativeWindow::beginDrag() { dragging_ = true; }

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
