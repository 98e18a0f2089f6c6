// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/canvas_window.h"

#include <QAccessible>
#include <QApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QWindow>

#include "linux/pictures/qt_pictures.h"
#include "linux/windowing/accessible_form.h"
#include "linux/windowing/focus_ring.h"
#include "linux/windowing/foreign_focus.h"
#include "linux/windowing/label_text.h"
#include "linux/windowing/qt_brush.h"
#include "linux/windowing/shown_text.h"

namespace corvane {

namespace {

constexpr int kSettlingMs = 1000;

bool placesItself() { return !QGuiApplication::platformName().startsWith(QLatin1String("wayland")); }

}  // namespace

CanvasWindow::CanvasWindow(DesktopContext& context) : QtFrame(*this, context) {
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_InputMethodEnabled, false);  // every key reaches the form as it is
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    setMouseTracking(true);
    settling_.setSingleShot(true);
    connect(&settling_, &QTimer::timeout, this, [this] { settles_ = false; });
}

CanvasWindow::~CanvasWindow() = default;

void CanvasWindow::setCaption(const std::string& text) { setWindowTitle(shownTitle(text)); }

/// Nobody types into a window that came up by itself: a file that begins while the user is in another program.
void CanvasWindow::showUp() {
    const bool leavesFocus = willLeaveFocus(*this);
    wanted_ = pos();
    settles_ = true;
    settling_.start(kSettlingMs);
    show();
    if (!leavesFocus) activate();
}

/// Window managers that count a border first, which they then leave away, put what is shown beside its place. Asked
/// once more, they put it there; what they answer then counts.
bool CanvasWindow::asksAgain() {
    if (!settles_ || !isVisible() || pos() == wanted_) return false;
    settles_ = false;
    move(wanted_);
    return true;
}

void CanvasWindow::showMinimised() {
    away_ = !placesItself();
    showMinimized();
}

void CanvasWindow::restore() {
    if (away_) hide();  // a program cannot bring such a window back, only show it anew
    away_ = false;
    showNormal();
    activate();
}

bool CanvasWindow::takesInput() const {
    return isEnabled() && context().box.isNull() && QApplication::activePopupWidget() == nullptr;
}

bool CanvasWindow::isAltDown() const { return QGuiApplication::queryKeyboardModifiers().testFlag(Qt::AltModifier); }

PixelPlace CanvasWindow::place() const { return {x(), y(), width(), height()}; }

/// One request to the window manager for place and size: between two the window would stand where nobody put it.
void CanvasWindow::setPlace(const PixelPlace& place) {
    const QRect wanted(place.x, place.y, place.width, place.height);
    if (wanted.size() != size()) {
        setMinimumSize(0, 0);
        setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    }
    setGeometry(wanted);
    setFixedSize(wanted.size());
    wanted_ = wanted.topLeft();
}

void CanvasWindow::moveTo(PixelPoint corner) {
    wanted_ = QPoint(corner.x, corner.y);
    move(wanted_);
}

void CanvasWindow::placeWanted() {
    if (DrawnWindow* const window = live()) window->settlePlace();
}

bool CanvasWindow::isDrag(int across, int down) const {
    return QPoint(across, down).manhattanLength() >= QApplication::startDragDistance();
}

/// Where a window cannot place itself (Wayland) the other side moves it, and leaves the way so far out.
bool CanvasWindow::dragBySystem() {
    return !placesItself() && windowHandle() != nullptr && windowHandle()->startSystemMove();
}

void CanvasWindow::later(EventLoop::Handler handler) {
    QMetaObject::invokeMethod(this, std::move(handler), Qt::QueuedConnection);
}

// --- Painting ----------------------------------------------------------------------------------------------------

void CanvasWindow::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    paintForm(painter, event->region());
}

void CanvasWindow::paintForm(QPainter& painter, const QRegion& region) {
    if (DrawnWindow* const window = live()) {
        QtBrush brush(painter, region, *this, scaled_);
        window->paint(brush);
    } else {
        painter.fillRect(region.boundingRect(), Qt::black);
    }
}

void CanvasWindow::showRing(const Rectangle& place) {
    if (place.empty()) {
        if (ring_ != nullptr) ring_->hide();
        return;
    }
    if (ring_ == nullptr) ring_ = new FocusRing(*this);
    ring_->surround({place.x, place.y, place.width, place.height});
}

double CanvasWindow::labelWidth(const std::string& text, double height) const {
    return QFontMetricsF(labelFont(height)).horizontalAdvance(shownText(text));
}

bool CanvasWindow::labelFits(const std::string& text, double height, double width) const {
    const QString shown = shownText(text);
    return fittingText(shown, labelFont(height), width) == shown;
}

bool CanvasWindow::isOpaque(const Picture& picture) const { return !imageOf(picture).hasAlphaChannel(); }

// --- Assistive programs ------------------------------------------------------------------------------------------

void CanvasWindow::controlChanged(Control& control, PropertyId property) {
    if (QAccessible::isActive()) announce(*this, control, property);
}

void CanvasWindow::focusChanged() {
    if (QAccessible::isActive() && bound()) announceFocus(*this);
}

void CanvasWindow::formGoes() {
    if (isKnown_) forgetControls(*this);
}

}  // namespace corvane
