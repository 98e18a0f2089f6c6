// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/shown_text.h"

#include <QFontMetrics>
#include <QStringList>

#include "linux/windowing/form_window.h"

namespace corvane {

namespace {

constexpr qsizetype kMostInLine = 300;  ///< characters
constexpr qsizetype kMostInTip = 600;
constexpr qsizetype kOneLineOfTip = 100;  ///< longer ones are wrapped
constexpr qsizetype kMostLines = 12;
constexpr QChar kEllipsis(0x2026);

bool isBreak(QChar c) {
    return c == u'\n' || c == u'\r' || c == u'\t' || c == u'\v' || c == u'\f' || c == QChar(0x85) ||
           c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

/// Embeddings, overrides and isolates: what follows them would be drawn in another order.
bool turnsAround(QChar c) {
    return (c >= QChar(0x202A) && c <= QChar(0x202E)) || (c >= QChar(0x2066) && c <= QChar(0x2069));
}

QString oneLine(QString text) {
    for (QChar& c : text) {
        if (isBreak(c)) {
            c = u' ';
        } else if (c.category() == QChar::Other_Control || turnsAround(c)) {
            c = QChar::ReplacementCharacter;
        }
    }
    return text;
}

QString cutInMiddle(const QString& text, qsizetype most) {
    if (text.size() <= most) return text;
    qsizetype head = (most - 1) / 2;
    qsizetype tail = most - 1 - head;
    if (text[head - 1].isHighSurrogate()) --head;
    if (text[text.size() - tail].isLowSurrogate()) --tail;
    return text.left(head) + kEllipsis + text.right(tail);
}

QString fittingWords(const QString& line, const QFontMetrics& metrics, int width) {
    QStringList words = line.split(u' ');
    for (QString& each : words) each = metrics.elidedText(each, Qt::ElideMiddle, width);
    return words.join(u' ');
}

}  // namespace

QString shownText(const std::string& text) { return oneLine(toQString(text)); }

QString shownLines(const std::string& text, const QFont& font, int widthPixels) {
    const QFontMetrics metrics(font);
    QStringList lines = toQString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")).split(u'\n');
    const bool tooMany = lines.size() > kMostLines;
    if (tooMany) lines = lines.mid(0, kMostLines);
    for (QString& each : lines) each = fittingWords(cutInMiddle(oneLine(each), kMostInLine), metrics, widthPixels);
    if (tooMany) lines.append(QString(kEllipsis));
    return lines.join(u'\n');
}

QString shownTitle(const std::string& text) {
    return shownText(text).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

QString plainTip(const QString& text) {
    if (text.isEmpty()) return {};
    const QString shown = cutInMiddle(oneLine(text), kMostInTip);
    const QString wrapping = shown.size() > kOneLineOfTip ? QStringLiteral("pre-wrap") : QStringLiteral("pre");
    return QStringLiteral("<p style='white-space:%1'>").arg(wrapping) + shown.toHtmlEscaped() + QStringLiteral("</p>");
}

}  // namespace corvane
