// SPDX-License-Identifier: GPL-3.0-or-later
#include "golden/expected_panel.h"

#include <QFile>
#include <QPainter>
#include <array>
#include <map>
#include <vector>

namespace corvane::test {

namespace {

using Fields = std::vector<QString>;

std::vector<Fields> readFields(const std::string& path) {
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly)) return {};
    std::vector<Fields> lines;
    for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
        Fields fields(1);
        bool quoted = false;
        for (const QChar c : line) {
            if (c == '"') {
                quoted = !quoted;
            } else if (c == ',' && !quoted) {
                fields.emplace_back();
            } else if (c != '\r') {
                fields.back() += c;
            }
        }
        for (QString& field : fields) field = field.trimmed();
        if (fields.size() == 9) lines.push_back(fields);
    }
    return lines;
}

struct Element {
    QPoint place;
    QImage picture;
    bool shown = false;
};

QColor barColour(const QString& written) {
    static const std::map<QString, QColor> names = {{"YELLOW", QColor(255, 255, 0)}, {"WHITE", QColor(255, 255, 255)}};
    const auto named = names.find(written.toUpper());
    if (named != names.end()) return named->second;
    const int value =
        written.startsWith("&H", Qt::CaseInsensitive) ? written.mid(2).toInt(nullptr, 16) : written.toInt();
    return QColor(value & 255, value >> 8 & 255, value >> 16 & 255);
}

/// Records whose picture is seen while nothing plays and nothing is pressed, bottom to top.
const std::array<int, 22> kPaintOrder = {1, 25, 22, 23, 34, 36, 38, 21, 40, 24, 2,
                                         4, 5,  7,  8,  10, 12, 13, 15, 17, 19, 20};
/// Pressed pictures place their button too: the later of the two wins.
const std::map<int, int> kPlaces = {{3, 2}, {6, 5}, {9, 8}, {11, 10}, {14, 13}, {16, 15}, {18, 17}};

}  // namespace

QSize expectedSize(const std::string& csvPath) {
    for (const Fields& fields : readFields(csvPath)) {
        if (fields[1] == "0") return {fields[6].toInt(), fields[7].toInt()};
    }
    return {512, 128};
}

QImage expectedPanel(const std::string& csvPath, const std::string& bitmapPath) {
    const QImage bitmap = QImage(QString::fromStdString(bitmapPath)).convertToFormat(QImage::Format_RGB32);
    std::map<int, Element> elements;
    for (const Fields& fields : readFields(csvPath)) {
        bool isNumber = false;
        const int record = fields[1].toInt(&isNumber);
        if (!isNumber || record < 1 || record > 40) continue;
        const QRect cell(fields[4].toInt(), fields[5].toInt(), fields[6].toInt(), fields[7].toInt());
        const QPoint place = record == 1 ? QPoint(0, 0) : QPoint(fields[2].toInt(), fields[3].toInt());
        const auto owner = kPlaces.find(record);
        Element& element = elements[owner == kPlaces.end() ? record : owner->second];
        element.shown = fields[8] != "0";
        if (!element.shown) continue;
        element.place = place;
        if (owner != kPlaces.end()) continue;
        element.picture = bitmap.copy(cell);
        if (record == 40) {  // an empty bar is one pixel wide
            element.picture = QImage(1, cell.height(), QImage::Format_RGB32);
            element.picture.fill(barColour(fields[8]));
        }
    }
    QImage panel(expectedSize(csvPath), QImage::Format_RGB32);
    panel.fill(Qt::black);
    QPainter painter(&panel);
    for (const int record : kPaintOrder) {
        const Element& element = elements[record];
        if (element.shown) painter.drawImage(element.place, element.picture);
    }
    return panel;
}

}  // namespace corvane::test
