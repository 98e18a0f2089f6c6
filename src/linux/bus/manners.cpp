// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/bus/manners.h"

#include <QStringList>
#include <algorithm>
#include <array>

namespace corvane {

namespace {

enum class Manner { Motion, Scheme, Dark, Theme, Contrast, Font, TextScale, DoubleClick, Drag, Blink, BlinkTime };

struct Source {
    Manner manner;
    SettingPlace place;
};

constexpr const char* kAppearance = "org.freedesktop.appearance";
constexpr const char* kGnome = "org.gnome.desktop.interface";
constexpr const char* kGnomeMouse = "org.gnome.desktop.peripherals.mouse";
constexpr const char* kKde = "org.kde.kdeglobals.KDE";
constexpr const char* kKdeGeneral = "org.kde.kdeglobals.General";
constexpr const char* kX = kBySettingsManager;
constexpr const char* kGtk4 = "gtk-4.0/settings.ini";
constexpr const char* kGtk3 = "gtk-3.0/settings.ini";

/// Of one manner in the order in which they count.
constexpr auto kSources = std::to_array<Source>({
    {Manner::Motion, {nullptr, kAppearance, "reduced-motion"}},
    {Manner::Motion, {nullptr, kKde, "AnimationDurationFactor"}},
    {Manner::Motion, {kX, "", "Gtk/EnableAnimations"}},
    {Manner::Motion, {nullptr, kGnome, "enable-animations"}},
    {Manner::Motion, {kGtk4, "Settings", "gtk-enable-animations"}},
    {Manner::Motion, {kGtk3, "Settings", "gtk-enable-animations"}},
    {Manner::Motion, {"kdeglobals", "KDE", "AnimationDurationFactor"}},
    {Manner::Scheme, {nullptr, kAppearance, "color-scheme"}},
    {Manner::Scheme, {"kdeglobals", "General", "ColorScheme"}},
    {Manner::Dark, {kGtk4, "Settings", "gtk-application-prefer-dark-theme"}},
    {Manner::Dark, {kGtk3, "Settings", "gtk-application-prefer-dark-theme"}},
    {Manner::Theme, {kX, "", "Net/ThemeName"}},
    {Manner::Theme, {nullptr, kGnome, "gtk-theme"}},
    {Manner::Theme, {kGtk4, "Settings", "gtk-theme-name"}},
    {Manner::Theme, {kGtk3, "Settings", "gtk-theme-name"}},
    {Manner::Contrast, {nullptr, kAppearance, "contrast"}},
    {Manner::Contrast, {nullptr, "org.gnome.desktop.a11y.interface", "high-contrast"}},
    {Manner::Font, {nullptr, kKdeGeneral, "font"}},
    {Manner::Font, {kX, "", "Gtk/FontName"}},
    {Manner::Font, {nullptr, kGnome, "font-name"}},
    {Manner::Font, {"kdeglobals", "General", "font"}},
    {Manner::Font, {kGtk4, "Settings", "gtk-font-name"}},
    {Manner::Font, {kGtk3, "Settings", "gtk-font-name"}},
    {Manner::TextScale, {nullptr, kGnome, "text-scaling-factor"}},
    {Manner::DoubleClick, {nullptr, kKde, "DoubleClickInterval"}},
    {Manner::DoubleClick, {kX, "", "Net/DoubleClickTime"}},
    {Manner::DoubleClick, {nullptr, kGnomeMouse, "double-click"}},
    {Manner::DoubleClick, {"kdeglobals", "KDE", "DoubleClickInterval"}},
    {Manner::DoubleClick, {kGtk4, "Settings", "gtk-double-click-time"}},
    {Manner::DoubleClick, {kGtk3, "Settings", "gtk-double-click-time"}},
    {Manner::Drag, {nullptr, kKde, "StartDragDist"}},
    {Manner::Drag, {kX, "", "Net/DndDragThreshold"}},
    {Manner::Drag, {nullptr, kGnomeMouse, "drag-threshold"}},
    {Manner::Drag, {"kdeglobals", "KDE", "StartDragDist"}},
    {Manner::Drag, {kGtk4, "Settings", "gtk-dnd-drag-threshold"}},
    {Manner::Drag, {kGtk3, "Settings", "gtk-dnd-drag-threshold"}},
    {Manner::Blink, {kX, "", "Net/CursorBlink"}},
    {Manner::Blink, {nullptr, kGnome, "cursor-blink"}},
    {Manner::Blink, {kGtk4, "Settings", "gtk-cursor-blink"}},
    {Manner::Blink, {kGtk3, "Settings", "gtk-cursor-blink"}},
    {Manner::BlinkTime, {nullptr, kKde, "CursorBlinkRate"}},
    {Manner::BlinkTime, {kX, "", "Net/CursorBlinkTime"}},
    {Manner::BlinkTime, {nullptr, kGnome, "cursor-blink-time"}},
    {Manner::BlinkTime, {"kdeglobals", "KDE", "CursorBlinkRate"}},
    {Manner::BlinkTime, {kGtk4, "Settings", "gtk-cursor-blink-time"}},
    {Manner::BlinkTime, {kGtk3, "Settings", "gtk-cursor-blink-time"}},
});

constexpr double kMostPoints = 48, kLeastPoints = 5;
constexpr double kMostScale = 3, kLeastScale = 0.5;
constexpr double kMostClickMs = 3000, kLeastClickMs = 100;
constexpr double kMostDrag = 200, kMostFlashMs = 10'000;
constexpr double kPointsToPixel = 0.75;

std::optional<double> number(const QVariant& value) {
    const QString text = value.toString().trimmed();
    if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) return 1;
    if (text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0) return 0;
    bool isNumber = false;
    const double found = text.toDouble(&isNumber);
    return isNumber ? std::optional(found) : std::nullopt;
}

/// All that is said of a manner, in order.
QVariantList said(const QVariantMap& values, Manner manner) {
    QVariantList all;
    for (const Source& each : kSources) {
        const auto found = each.manner == manner ? values.constFind(each.place.name()) : values.constEnd();
        if (found != values.constEnd()) all << *found;
    }
    return all;
}

/// The first number in a range.
std::optional<double> first(const QVariantMap& values, Manner manner, double least, double most) {
    for (const QVariant& each : said(values, manner)) {
        const auto found = number(each);
        if (found && *found >= least && *found <= most) return found;
    }
    return std::nullopt;
}

/// Any of them asks for it: one that does not may belong to a program that nobody uses.
bool asksForLessMotion(const QVariantMap& values) {
    for (const Source& each : kSources) {
        if (each.manner != Manner::Motion || !values.contains(each.place.name())) continue;
        const bool isWish = QLatin1String(each.place.key) == QLatin1String("reduced-motion");
        if (number(values.value(each.place.name())) == (isWish ? 1.0 : 0.0)) return true;
    }
    return false;
}

QString theme(const QVariantMap& values) {
    for (const QVariant& each : said(values, Manner::Theme)) {
        if (!each.toString().isEmpty()) return each.toString().toLower();
    }
    return {};
}

std::optional<bool> dark(const QVariantMap& values, const QString& theme) {
    for (const QVariant& each : said(values, Manner::Scheme)) {
        const auto wish = number(each);  // 1: dark, 2: light, 0: no wish
        if (wish == 1.0 || wish == 2.0) return wish == 1.0;
        if (!wish && each.toString().contains(QLatin1String("dark"), Qt::CaseInsensitive)) return true;
    }
    if (first(values, Manner::Dark, 1, 1)) return true;
    const bool isDark = theme.contains(QLatin1String("dark")) || theme.contains(QLatin1String("inverse"));
    return isDark ? std::optional(true) : std::nullopt;
}

/// "Noto Sans,10,-1,5,50,…" of KDE, "Noto Sans Bold 10" of the others: family and size; how heavy it is the dialogs
/// decide.
bool takeFont(const QString& text, Manners& manners) {
    const bool isKde = text.contains(QLatin1Char(','));
    QStringList parts = isKde ? text.split(QLatin1Char(',')) : text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (parts.size() < 2) return false;
    QString size = isKde ? parts[1] : parts.takeLast();
    const bool isPixels = size.endsWith(QLatin1String("px"));
    if (isPixels) size.chop(2);
    bool isNumber = false;
    const double points = size.toDouble(&isNumber) * (isPixels ? kPointsToPixel : 1);
    if (!isNumber || !(points >= kLeastPoints && points <= kMostPoints)) return false;
    static const QStringList styles = {"bold", "semi-bold", "medium", "light", "regular", "italic", "oblique", "book"};
    while (!isKde && parts.size() > 1 && styles.contains(parts.last().toLower())) parts.removeLast();
    manners.fontFamily = isKde ? parts.front() : parts.join(QLatin1Char(' '));
    manners.fontPoints = points;
    return true;
}

}  // namespace

std::vector<SettingPlace> mannersPlaces() {
    std::vector<SettingPlace> places;
    for (const Source& each : kSources) places.push_back(each.place);
    return places;
}

Manners mannersBy(const QVariantMap& values) {
    Manners manners;
    const QString named = theme(values);
    manners.lessMotion = asksForLessMotion(values);
    manners.dark = dark(values, named);
    manners.highContrast = first(values, Manner::Contrast, 1, 1) || named.startsWith(QLatin1String("highcontrast"));
    for (const QVariant& each : said(values, Manner::Font)) {
        if (takeFont(each.toString(), manners)) break;
    }
    manners.textScale = first(values, Manner::TextScale, kLeastScale, kMostScale).value_or(1);
    const auto whole = [&](Manner manner, double least, double most) {
        return static_cast<int>(first(values, manner, least, most).value_or(0));
    };
    manners.doubleClickMs = whole(Manner::DoubleClick, kLeastClickMs, kMostClickMs);
    manners.dragPixels = whole(Manner::Drag, 1, kMostDrag);
    const auto flash = first(values, Manner::BlinkTime, 0, kMostFlashMs);
    if (flash) manners.cursorFlashMs = static_cast<int>(*flash);
    if (first(values, Manner::Blink, 0, 1) == 0.0) manners.cursorFlashMs = 0;
    return manners;
}

}  // namespace corvane
