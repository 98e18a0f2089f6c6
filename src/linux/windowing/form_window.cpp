// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/form_window.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QScreen>
#include <QStringDecoder>
#include <QWindow>
#include <cmath>

#include "platform/ports.h"

namespace corvane {

namespace {

Rectangle areaOf(const QRect& pixels) {
    return {static_cast<double>(pixels.x()), static_cast<double>(pixels.y()), static_cast<double>(pixels.width()),
            static_cast<double>(pixels.height())};
}

Rectangle areaOf(const QScreen* screen) { return screen != nullptr ? areaOf(screen->geometry()) : Rectangle(); }

}  // namespace

QScreen* DesktopContext::screen() const {
    if (panel && panel->screen() != nullptr) return panel->screen();
    return QGuiApplication::primaryScreen();
}

Rectangle DesktopContext::ofPanel() const { return areaOf(screen()); }

Rectangle DesktopContext::primary() const { return areaOf(QGuiApplication::primaryScreen()); }

std::vector<ScreenArea> DesktopContext::areas() const {
    std::vector<ScreenArea> all;
    for (const QScreen* const each : QGuiApplication::screens()) {
        all.push_back({areaOf(each), areaOf(each->availableGeometry())});
    }
    return all;
}

void QtFrame::activate() {
    widget_.raise();
    widget_.activateWindow();
}

int QtFrame::textWidth(const std::string& text) {
    const int width = QFontMetrics(widget_.font()).horizontalAdvance(toQString(text));
    return static_cast<int>(std::ceil(width / context_.scale));
}

void QtFrame::stack(int insertAfter, std::uint32_t /*flags*/) {
    if (insertAfter != kTopMost && insertAfter != kNotTopMost) return;
    Qt::WindowFlags wanted = widget_.windowFlags();
    wanted.setFlag(Qt::WindowStaysOnTopHint, insertAfter == kTopMost);
    // A widget that is given new flags is hidden and made anew; its window takes them while it is shown.
    widget_.overrideWindowFlags(wanted);
    if (widget_.windowHandle() != nullptr) widget_.windowHandle()->setFlags(wanted);
}

QString toQString(const std::string& text) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString decoded = decoder.decode(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
    if (!decoder.hasError()) return decoded;
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace corvane
