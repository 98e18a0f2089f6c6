// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/desktop_manners.h"

#include <QApplication>
#include <QScreen>
#include <algorithm>

#include "linux/windowing/x_settings.h"

namespace corvane {

namespace {

constexpr double kPlainDensity = 96;  ///< dots to an inch where nothing is enlarged

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

struct Colours {
    QColor window, text, base, button, link, highlight, highlightedText, disabled;
};

Colours coloursOf(bool dark, bool highContrast) {
    if (highContrast) {
        if (dark) {
            return {Qt::black, Qt::white, Qt::black, Qt::black, Qt::yellow, Qt::yellow, Qt::black, QColor(0xB0B0B0)};
        }
        return {Qt::white,        Qt::black,        Qt::white, Qt::white,
                QColor(0x0000C0), QColor(0x000080), Qt::white, QColor(0x505050)};
    }
    if (dark) {
        return {QColor(0x303030), QColor(0xEEEEEC), QColor(0x1E1E1E), QColor(0x3A3A3A),
                QColor(0x78AEED), QColor(0x3584E4), Qt::white,        QColor(0x8A8A8A)};
    }
    return {QColor(0xEFEFEF), Qt::black,        Qt::white, QColor(0xEFEFEF),
            QColor(0x1A5FB4), QColor(0x308CC6), Qt::white, QColor(0x757575)};
}

}  // namespace

QPalette paletteOf(bool dark, bool highContrast) {
    const Colours of = coloursOf(dark, highContrast);
    QPalette palette(of.button, of.window);  // derives light, mid and dark of these
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, of.text);
        palette.setColor(QPalette::Disabled, role, of.disabled);
    }
    palette.setColor(QPalette::BrightText, dark ? Qt::white : Qt::black);
    for (const auto role : {QPalette::Base, QPalette::AlternateBase}) palette.setColor(role, of.base);
    palette.setColor(QPalette::ToolTipBase, of.button);
    palette.setColor(QPalette::Highlight, of.highlight);
    palette.setColor(QPalette::HighlightedText, of.highlightedText);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, of.disabled);
    for (const auto role : {QPalette::Link, QPalette::LinkVisited}) palette.setColor(role, of.link);
    QColor hint = of.text;
    hint.setAlpha(128);
    palette.setColor(QPalette::PlaceholderText, hint);
    if (!highContrast) return palette;
    // What is drawn around things is as plain as what is in them.
    for (const auto role : {QPalette::Mid, QPalette::Dark, QPalette::Shadow, QPalette::Light, QPalette::Midlight}) {
        palette.setColor(role, of.text);
    }
    return palette;
}

bool DesktopManners::looksAreChosen() {
    return !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORMTHEME") || !qEnvironmentVariableIsEmpty("QT_STYLE_OVERRIDE");
}

DesktopManners::DesktopManners(const DesktopSettings::Bus& bus, const QString& folder, bool keepsLook)
    : keepsLook_(keepsLook),
      ownPalette_(QApplication::palette()),
      ownFont_(QApplication::font()),
      ownDoubleClickMs_(QApplication::doubleClickInterval()),
      ownDragPixels_(QApplication::startDragDistance()),
      ownFlashMs_(QApplication::cursorFlashTime()),
      settings_(mannersPlaces(), bus, folder, [this] { follow(); }),
      managed_(XSettings::ofDisplay([this](const QVariantMap& told) { settings_.takeManaged(told); })) {}

DesktopManners::~DesktopManners() = default;

void DesktopManners::follow() {
    const Manners now = mannersBy(settings_.values());
    if (now == manners_) return;
    manners_ = now;
    if (!keepsLook_) applyLook();
    applyHabits();
}

/// The tool kit's own where it is of the kind that is asked for: it knows its desktop better.
QPalette DesktopManners::palette() const {
    const bool dark = manners_.dark.value_or(isDark(ownPalette_));
    if (manners_.highContrast) return paletteOf(dark, true);
    return dark == isDark(ownPalette_) ? ownPalette_ : paletteOf(dark, false);
}

void DesktopManners::applyLook() const {
    const QPalette colours = palette();
    if (colours != QApplication::palette()) QApplication::setPalette(colours);
    QFont font = ownFont_;
    if (!manners_.fontFamily.isEmpty()) font.setFamily(manners_.fontFamily);
    // Many desktops tell it besides by the density of the screen, which the tool kit obeys.
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const bool isTaken = screen != nullptr && screen->logicalDotsPerInch() > kPlainDensity + 1;
    const double points = manners_.fontPoints > 0 ? manners_.fontPoints : ownFont_.pointSizeF();
    if (points > 0) font.setPointSizeF(points * (isTaken ? 1 : manners_.textScale));
    if (font != QApplication::font()) QApplication::setFont(font);
}

void DesktopManners::applyHabits() const {
    QApplication::setDoubleClickInterval(manners_.doubleClickMs > 0 ? manners_.doubleClickMs : ownDoubleClickMs_);
    QApplication::setStartDragDistance(manners_.dragPixels > 0 ? manners_.dragPixels : ownDragPixels_);
    QApplication::setCursorFlashTime(manners_.cursorFlashMs.value_or(ownFlashMs_));
}

}  // namespace corvane
