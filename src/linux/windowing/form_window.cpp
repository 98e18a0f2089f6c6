// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/form_window.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QScreen>
#include <QStringDecoder>
#include <algorithm>
#include <cmath>

namespace corvane {

QScreen* DesktopContext::screen() const {
    if (panel && panel->screen() != nullptr) return panel->screen();
    return QGuiApplication::primaryScreen();
}

QPoint DesktopContext::origin(const Form& form) const {
    const QScreen* const counted = form.style() == FormStyle::Painted ? QGuiApplication::primaryScreen() : screen();
    return counted != nullptr ? counted->geometry().topLeft() : QPoint();
}

int DesktopContext::toPixels(Twips twips) const {
    return static_cast<int>(std::lround(static_cast<double>(twips) / static_cast<double>(kTwipsPerPixel) * scale));
}

Twips DesktopContext::toTwips(double pixels) const {
    return static_cast<Twips>(pixels / scale * static_cast<double>(kTwipsPerPixel));
}

FormWindow::FormWindow(Form& form, DesktopContext& context) : form_(&form), context_(context) {}

FormWindow::~FormWindow() { stopObserving(); }

void FormWindow::bind() {
    form_->addObserver(this);
    for (Control* control : form_->controls()) control->addObserver(this);
    observing_ = true;
    onBound();
}

void FormWindow::unbind() {
    if (!bound()) return;
    stopObserving();
    onUnbinding();
    widget()->hide();
    form_ = nullptr;
    alive_.reset();
}

void FormWindow::stopObserving() {
    if (!observing_) return;
    observing_ = false;
    form_->removeObserver(this);
    for (Control* control : form_->controls()) control->removeObserver(this);
}

void FormWindow::refresh() { widget()->repaint(); }

int FormWindow::textWidth(const std::string& text) {
    const int width = QFontMetrics(widget()->font()).horizontalAdvance(toQString(text));
    return static_cast<int>(std::ceil(width / context_.scale));
}

void FormWindow::activate() {
    widget()->raise();
    widget()->activateWindow();
}

void FormWindow::enter(const EventLoop::Handler& handler) {
    if (bound()) context_.loop.enter(handler);
}

void FormWindow::post(EventLoop::Handler handler) {
    context_.loop.post([handler = std::move(handler), alive = std::weak_ptr<bool>(alive_)] {
        if (!alive.expired()) handler();
    });
}

QString toQString(const std::string& text) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString decoded = decoder.decode(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
    if (!decoder.hasError()) return decoded;
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace corvane
