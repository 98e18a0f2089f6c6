// SPDX-License-Identifier: GPL-3.0-or-later
// What the settings of desktops mean, and what the tool kit is made to do by them.
#include "linux/bus/manners.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QByteArray>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

#include "linux/windowing/desktop_manners.h"
#include "linux/windowing/x_settings.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

const char* const kGnome = "portal|org.gnome.desktop.interface|";
const char* const kLook = "portal|org.freedesktop.appearance|";

Manners by(const QVariantMap& values) { return mannersBy(values); }
Manners byOne(const char* place, const char* key, const QVariant& value) {
    return by({{QLatin1String(place) + QLatin1String(key), value}});
}

/// DESK-20: Dialogs are dark or light as the desktop's portal asks, else as the name of its theme says, else as the
/// tool kit
///     has them
TEST(DarkAndLight, AreWhatTheDesktopAsks) {
    EXPECT_EQ(by({}).dark, std::nullopt);
    EXPECT_EQ(byOne(kLook, "color-scheme", uint{1}).dark, true);
    EXPECT_EQ(byOne(kLook, "color-scheme", uint{2}).dark, false);
    EXPECT_EQ(byOne(kLook, "color-scheme", uint{0}).dark, std::nullopt);
    EXPECT_EQ(byOne(kLook, "color-scheme", uint{7}).dark, std::nullopt);
    EXPECT_EQ(byOne(kGnome, "gtk-theme", "Adwaita-dark").dark, true);
    EXPECT_EQ(byOne(kGnome, "gtk-theme", "Adwaita").dark, std::nullopt);
    EXPECT_EQ(byOne("X||", "Net/ThemeName", "Greybird-dark").dark, true);
    EXPECT_EQ(byOne("gtk-3.0/settings.ini|Settings|", "gtk-application-prefer-dark-theme", "true").dark, true);
    EXPECT_EQ(byOne("kdeglobals|General|", "ColorScheme", "BreezeDark").dark, true);
    EXPECT_EQ(
        by({{"portal|org.freedesktop.appearance|color-scheme", uint{2}}, {"X||Net/ThemeName", "Adwaita-dark"}}).dark,
        false);
}

/// DESK-21: The strongest contrast is what the portal asks, or a theme of that name
TEST(HighContrast, IsWhatTheDesktopAsks) {
    EXPECT_FALSE(by({}).highContrast);
    EXPECT_TRUE(byOne(kLook, "contrast", uint{1}).highContrast);
    EXPECT_FALSE(byOne(kLook, "contrast", uint{0}).highContrast);
    EXPECT_TRUE(byOne("portal|org.gnome.desktop.a11y.interface|", "high-contrast", true).highContrast);
    const Manners inverse = byOne(kGnome, "gtk-theme", "HighContrastInverse");
    EXPECT_TRUE(inverse.highContrast && inverse.dark == true);
}

/// DESK-22: Family and size of the user's font, in the words of either kind of desktop; what is no size that a person
/// sets is
///     not taken
TEST(UserFont, IsReadInTheWordsOfEachDesktop) {
    const auto font = [](const char* place, const char* key, const char* text) {
        const Manners manners = byOne(place, key, text);
        return manners.fontFamily.toStdString() + " " + std::to_string(manners.fontPoints);
    };
    EXPECT_EQ(font(kGnome, "font-name", "Cantarell 11"), "Cantarell 11.000000");
    EXPECT_EQ(font(kGnome, "font-name", "Noto Sans CJK JP Semi-Bold Italic 10.5"), "Noto Sans CJK JP 10.500000");
    EXPECT_EQ(font("X||", "Gtk/FontName", "Sans 20px"), "Sans 15.000000");
    EXPECT_EQ(font("kdeglobals|General|", "font", "Noto Sans,12,-1,5,50,0,0,0,0,0"), "Noto Sans 12.000000");
    EXPECT_EQ(font("kdeglobals|General|", "font", "Noto Sans,12"), "Noto Sans 12.000000");
    for (const char* none :
         {"", "Cantarell", "Cantarell 0", "Cantarell 4000", "Cantarell -3", "Cantarell nan", "12", ",,"}) {
        EXPECT_EQ(font(kGnome, "font-name", none), " 0.000000") << none;
    }
    EXPECT_EQ(byOne(kGnome, "text-scaling-factor", 1.5).textScale, 1.5);
    for (const double odd : {0.0, -1.0, 900.0}) EXPECT_EQ(byOne(kGnome, "text-scaling-factor", odd).textScale, 1);
}

/// DESK-23: Double-click time, drag distance and blinking are what any desktop's settings say, the desktop's own before
/// those
///     for others; what no person sets is not taken
TEST(Habits, AreWhatTheSettingsSay) {
    const QVariantMap all{{"portal|org.kde.kdeglobals.KDE|DoubleClickInterval", "700"},
                          {"X||Net/DoubleClickTime", 300},
                          {"X||Net/DndDragThreshold", 30},
                          {"gtk-3.0/settings.ini|Settings|gtk-dnd-drag-threshold", "4"},
                          {"portal|org.gnome.desktop.interface|cursor-blink-time", 1200}};
    EXPECT_EQ(by(all).doubleClickMs, 700);
    EXPECT_EQ(by(all).dragPixels, 30);
    EXPECT_EQ(by(all).cursorFlashMs, 1200);
    EXPECT_EQ(byOne("X||", "Net/CursorBlink", 0).cursorFlashMs, 0);
    EXPECT_EQ(byOne(kGnome, "cursor-blink", false).cursorFlashMs, 0);
    EXPECT_EQ(byOne(kGnome, "cursor-blink", true).cursorFlashMs, std::nullopt);
    for (const int odd : {0, -5, 1'000'000}) {
        const Manners manners = by({{"X||Net/DoubleClickTime", odd}, {"X||Net/DndDragThreshold", odd}});
        EXPECT_EQ(manners.doubleClickMs, 0) << odd;
        EXPECT_EQ(manners.dragPixels, 0) << odd;
    }
    EXPECT_EQ(by({{"X||Net/DoubleClickTime", -5}, {"gtk-3.0/settings.ini|Settings|gtk-double-click-time", "450"}})
                  .doubleClickMs,
              450);
}

// --- What a manager of settings tells
// ----------------------------------------------------------------------------------

/// Bytes as a manager writes them.
struct Told {
    explicit Told(bool highFirst) : high(highFirst) {
        bytes = QByteArray(1, highFirst ? '\1' : '\0') + QByteArray(3, '\0') + number(7, 4);
    }
    QByteArray number(unsigned value, int size) const {
        QByteArray text;
        for (int i = 0; i < size; ++i)
            text += static_cast<char>(value >> (8U * static_cast<unsigned>(high ? size - 1 - i : i)));
        return text;
    }
    static QByteArray filled(QByteArray text) {
        while (text.size() % 4 != 0) text += '\0';
        return text;
    }
    QByteArray named(char kind, const char* name) const {
        return QByteArray(1, kind) + '\0' + number(static_cast<unsigned>(std::strlen(name)), 2) + filled(name) +
               number(1, 4);
    }
    QByteArray text(const char* name, const char* value) const {
        return named('\1', name) + number(static_cast<unsigned>(std::strlen(value)), 4) + filled(value);
    }
    QByteArray whole(unsigned count, const QByteArray& settings) const { return bytes + number(count, 4) + settings; }
    bool high;
    QByteArray bytes;
};

/// DESK-24: What a manager of settings tells is read in either order of bytes; what is cut off, too long or of another
/// form
///     reads as far as it makes sense
TEST(ManagedSettings, AreReadInEitherOrderOfBytes) {
    for (const bool high : {false, true}) {
        const Told told(high);
        const QByteArray number = told.named('\0', "Net/DoubleClickTime") + told.number(450, 4);
        const QByteArray colour = told.named('\2', "Net/Colour") + QByteArray(8, '\5');
        const QByteArray all = told.whole(3, number + colour + told.text("Gtk/FontName", "Sans 11"));
        const QVariantMap read = readXSettings(all);
        EXPECT_EQ(read.value("Net/DoubleClickTime").toInt(), 450);
        EXPECT_EQ(read.value("Gtk/FontName").toString(), "Sans 11");
        EXPECT_EQ(read.size(), 2);
        for (qsizetype cut = 0; cut < all.size(); ++cut) EXPECT_LE(readXSettings(all.left(cut)).size(), 2) << cut;
        EXPECT_TRUE(readXSettings(told.whole(0xFFFFFFFF, "")).isEmpty());
        EXPECT_TRUE(
            readXSettings(told.whole(1, told.named('\1', "x") + told.number(0xFFFFFFF0, 4) + "abcd")).isEmpty());
        EXPECT_TRUE(readXSettings(told.whole(1, told.named('\7', "x") + QByteArray(40, '\1'))).isEmpty());
    }
}

// --- What the tool kit does
// --------------------------------------------------------------------------------------------

double contrast(const QColor& one, const QColor& other) {
    const auto light = [](const QColor& colour) {
        const auto part = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF()) + 0.05;
    };
    return std::max(light(one), light(other)) / std::min(light(one), light(other));
}

/// DESK-25: Every text of the dialogs' own colours is read on its ground: at least seven to one, and with the strongest
///     contrast fifteen; what is disabled at least three to one
TEST(Palettes, AreRead) {
    using P = QPalette;
    for (const bool dark : {false, true}) {
        for (const bool high : {false, true}) {
            const QPalette colours = paletteOf(dark, high);
            const double least = high ? 15 : 7;
            EXPECT_GE(contrast(colours.color(P::WindowText), colours.color(P::Window)), least);
            EXPECT_GE(contrast(colours.color(P::Text), colours.color(P::Base)), least);
            EXPECT_GE(contrast(colours.color(P::ButtonText), colours.color(P::Button)), least);
            EXPECT_GE(contrast(colours.color(P::ToolTipText), colours.color(P::ToolTipBase)), least);
            EXPECT_GE(contrast(colours.color(P::HighlightedText), colours.color(P::Highlight)), high ? 15 : 3);
            EXPECT_GE(contrast(colours.color(P::Disabled, P::Text), colours.color(P::Base)), 3);
            EXPECT_GE(contrast(colours.color(P::Disabled, P::ButtonText), colours.color(P::Button)), 3);
            EXPECT_EQ(colours.color(P::Window).lightness() < 128, dark);
        }
    }
}

}  // namespace
}  // namespace corvane
