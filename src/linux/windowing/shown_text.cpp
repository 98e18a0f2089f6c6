// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/shown_text.h"

#include <QFontMetrics>

#include "linux/windowing/form_window.h"
#include "shell/shown_text.h"

namespace corvane {

namespace {

constexpr qsizetype kOneLineOfTip = 100;  ///< characters; longer ones are wrapped

std::u16string unitsOf(const std::string& text) { return toQString(text).toStdU16String(); }

}  // namespace

QString shownText(const std::string& text) { return QString::fromStdU16String(shownLine(unitsOf(text))); }

QString shownRow(const std::string& text) { return QString::fromStdU16String(shownRow(unitsOf(text))); }

QString shownLines(const std::string& text, const QFont& font, int widthPixels) {
    const QFontMetrics metrics(font);
    const auto fits = [&](const std::u16string& word) {
        return metrics.horizontalAdvance(QString::fromStdU16String(word)) <= widthPixels;
    };
    return QString::fromStdU16String(shownLines(unitsOf(text), fits));
}

QString shownTitle(const std::string& text) {
    return shownText(text).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

QString plainTip(const QString& text) {
    if (text.isEmpty()) return {};
    const QString shown = QString::fromStdU16String(shownTip(text.toStdU16String()));
    const QString wrapping = shown.size() > kOneLineOfTip ? QStringLiteral("pre-wrap") : QStringLiteral("pre");
    return QStringLiteral("<p style='white-space:%1'>").arg(wrapping) + shown.toHtmlEscaped() + QStringLiteral("</p>");
}

}  // namespace corvane
