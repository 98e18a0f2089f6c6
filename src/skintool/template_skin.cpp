// SPDX-License-Identifier: GPL-3.0-or-later
#include "skintool/template_skin.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>

#include "panel/skin_records.h"
#include "skintool/skin_check.h"

namespace corvane {

namespace {

constexpr QSize kPanel(400, 120);
/// Behind all texts and lamps. The display, record 21, is the part of it above the lamps: it would cover them.
constexpr QRect kGlassPlace(44, 8, 250, 48);
constexpr int kGap = 1;  ///< pixels between pictures, so that an enlarged panel shows nothing of the neighbour
const QColor kPlate(0x2F, 0x36, 0x40), kEdge(0x4A, 0x55, 0x63), kGlass(0x10, 0x1A, 0x24), kKey(0x56, 0x62, 0x73);
const QColor kKeyDown(0xD9, 0x77, 0x06), kInk(0xF1, 0xF5, 0xF9), kDark(0x33, 0x41, 0x50), kLit(0x4A, 0xDE, 0x80);

/// How a part is drawn.
enum class Drawing { Panel, Key, Badge, Legend, Knob, Indicator, Lamp, None };

struct Part {
    int number;
    QRect place;
    Drawing drawing;
    bool atRest;  ///< seen while nothing plays and nothing is pressed: its picture is part of the whole panel's
    const char* use = "1";
};

// The lines of the panel's parts, in the order of their numbers.
const std::array<Part, kLastRecord + 1> kParts = {{
    {0, {0, 0, 400, 120}, Drawing::Panel, true},
    {1, {0, 0, 400, 120}, Drawing::Panel, false},
    {2, {376, 6, 18, 18}, Drawing::Key, true},
    {3, {376, 6, 18, 18}, Drawing::Key, false},
    {4, {354, 6, 18, 18}, Drawing::Key, true},
    {5, {204, 84, 28, 26}, Drawing::Key, true},
    {6, {204, 84, 28, 26}, Drawing::Key, false},
    {7, {234, 84, 28, 26}, Drawing::Key, true},
    {8, {44, 84, 46, 26}, Drawing::Key, true},
    {9, {44, 84, 46, 26}, Drawing::Key, false},
    {10, {92, 84, 34, 26}, Drawing::Key, true},
    {11, {92, 84, 34, 26}, Drawing::Key, false},
    {12, {128, 84, 34, 26}, Drawing::Key, true},
    {13, {8, 84, 34, 26}, Drawing::Key, true},
    {14, {8, 84, 34, 26}, Drawing::Key, false},
    {15, {164, 84, 34, 26}, Drawing::Key, true},
    {16, {164, 84, 34, 26}, Drawing::Key, false},
    {17, {264, 84, 28, 26}, Drawing::Key, true},
    {18, {264, 84, 28, 26}, Drawing::Key, false},
    {19, {306, 90, 22, 20}, Drawing::Key, true},
    {20, {370, 90, 22, 20}, Drawing::Key, true},
    {21, {44, 8, 250, 33}, Drawing::None, true},
    {22, {300, 8, 48, 14}, Drawing::Badge, true},
    {23, {331, 93, 36, 14}, Drawing::Legend, true},
    {24, {320, 28, 58, 58}, Drawing::Knob, true},
    {25, {8, 8, 32, 48}, Drawing::Indicator, true},
    {26, {8, 8, 32, 48}, Drawing::Indicator, false},
    {27, {8, 8, 32, 48}, Drawing::Indicator, false},
    {28, {72, 41, 7, 14}, Drawing::None, true, "WHITE"},
    {29, {82, 41, 30, 14}, Drawing::None, true, "WHITE"},
    {30, {48, 41, 24, 14}, Drawing::None, true, "WHITE"},
    {31, {228, 24, 62, 16}, Drawing::None, true, "YELLOW"},
    {32, {48, 9, 242, 15}, Drawing::None, true, "CYAN"},
    {33, {48, 24, 176, 16}, Drawing::None, true, "WHITE"},
    {34, {130, 43, 46, 11}, Drawing::Lamp, true},
    {35, {130, 43, 46, 11}, Drawing::Lamp, false},
    {36, {180, 43, 46, 11}, Drawing::Lamp, true},
    {37, {180, 43, 46, 11}, Drawing::Lamp, false},
    {38, {230, 43, 46, 11}, Drawing::Lamp, true},
    {39, {230, 43, 46, 11}, Drawing::Lamp, false},
    {40, {8, 66, 284, 8}, Drawing::None, true, "&H80DE4A"},
}};

/// The sign on a key, round the middle of a square of about ten pixels.
QPainterPath keySign(int number) {
    QPainterPath path;
    const auto triangle = [&path](double x, bool right) {
        path.addPolygon(QPolygonF({{x, -5.0}, {x + (right ? 7.0 : -7.0), 0.0}, {x, 5.0}, {x, -5.0}}));
    };
    const auto bar = [&path](double x, double y, double w, double h) { path.addRect(x, y, w, h); };
    switch (number) {
        case 2:  // power: a stroke in a ring
            path.addEllipse(QPointF(0, 1), 5, 5);
            path.addEllipse(QPointF(0, 1), 3.4, 3.4);
            bar(-0.8, -6, 1.6, 6);
            break;
        case 4:
            bar(-4, 3, 8, 2);
            break;
        case 5:  // repeat: an arrow there and one back
            bar(-6, -4, 7, 2);
            path.addPolygon(QPolygonF({{1, -6.5}, {6, -3}, {1, 0.5}, {1, -6.5}}));
            bar(-1, 2, 7, 2);
            path.addPolygon(QPolygonF({{-1, -0.5}, {-6, 3}, {-1, 6.5}, {-1, -0.5}}));
            break;
        case 7: {  // shuffle: two crossing strokes
            QPainterPath falling;
            falling.addPolygon(QPolygonF({{-6, -4}, {-4.5, -5.5}, {6, 4}, {4.5, 5.5}, {-6, -4}}));
            path = falling.united(QTransform::fromScale(1, -1).map(falling));
            break;
        }
        case 8:
            triangle(-3, true);
            break;
        case 10:
            bar(-5, -5, 3.5, 10);
            bar(1.5, -5, 3.5, 10);
            break;
        case 12:
            bar(-5, -5, 10, 10);
            break;
        case 13:
            bar(-6, -5, 2, 10);
            triangle(4, false);
            break;
        case 15:
            bar(4, -5, 2, 10);
            triangle(-4, true);
            break;
        case 17:
            for (const double y : {-5.0, -1.0, 3.0}) bar(-6, y, 12, 2);
            break;
        case 20:
            bar(-1, -4, 2, 3);
            bar(-1, 1, 2, 3);
            [[fallthrough]];
        case 19:
            bar(-4, -1, 8, 2);
            break;
        default:
            break;
    }
    return path;
}

void drawKey(QPainter& painter, const Part& part) {
    painter.setBrush(part.atRest ? kKey : kKeyDown);
    painter.drawRoundedRect(QRectF(part.place).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    painter.setBrush(kInk);
    painter.translate(QRectF(part.place).center());
    // The pressed picture follows the normal one; 6, 9, 11 and so on bear the sign of the record before.
    painter.drawPath(keySign(part.atRest ? part.number : part.number - 1));
}

void drawIndicator(QPainter& painter, const Part& part) {
    static constexpr std::array<std::array<int, 4>, 3> kLevels = {{{6, 10, 14, 8}, {18, 30, 22, 12}, {28, 16, 34, 24}}};
    const auto& levels = kLevels[static_cast<std::size_t>(part.number - 25)];
    painter.setBrush(kGlass);
    painter.drawRect(part.place);
    painter.setBrush(kLit);
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const int x = part.place.left() + 4 + static_cast<int>(i) * 6;
        painter.drawRect(x, part.place.bottom() - 4 - levels[i], 5, levels[i]);
    }
}

void draw(QPainter& painter, const Part& part) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF place(part.place);
    switch (part.drawing) {
        case Drawing::Panel:
            painter.fillRect(part.place, kEdge);
            painter.fillRect(part.place.adjusted(1, 1, -1, -1), kPlate);
            painter.fillRect(kGlassPlace, kGlass);
            painter.fillRect(kParts[40].place, kGlass);  // the slider's channel
            break;
        case Drawing::Key:
            drawKey(painter, part);
            break;
        case Drawing::Badge:
            painter.setBrush(kKeyDown);
            painter.drawRoundedRect(place, 4, 4);
            break;
        case Drawing::Legend:  // a wedge that grows with the volume
            painter.setBrush(kKey);
            painter.drawPolygon(QPolygonF({place.bottomLeft(), place.topRight(), place.bottomRight()}));
            break;
        case Drawing::Knob:
            painter.setBrush(kDark);
            painter.drawEllipse(place.adjusted(1, 1, -1, -1));
            painter.setBrush(kKey);
            painter.drawEllipse(place.adjusted(14, 14, -14, -14));
            break;
        case Drawing::Indicator:
            drawIndicator(painter, part);
            break;
        case Drawing::Lamp:
            painter.setBrush(part.atRest ? kDark : kLit);
            painter.drawRoundedRect(place.adjusted(1, 2, -1, -2), 3, 3);
            break;
        case Drawing::None:
            break;
    }
    painter.restore();
}

QImage plate() {
    QImage image(kPanel, QImage::Format_RGB32);
    QPainter painter(&image);
    draw(painter, kParts[0]);
    return image;
}

/// Lays pictures out below two pictures of the panel, row by row.
class Sheet {
public:
    Sheet() : image_(kPanel.width(), kPanel.height() * 4, QImage::Format_RGB32), at_(0, 2 * (kPanel.height() + kGap)) {
        image_.fill(kEdge);
    }

    void put(QPoint at, const QImage& picture) { QPainter(&image_).drawImage(at, picture); }

    QPoint add(const QImage& picture) {
        if (at_.x() + picture.width() > image_.width()) {
            at_ = QPoint(0, at_.y() + row_ + kGap);
            row_ = 0;
        }
        const QPoint place = at_;
        put(place, picture);
        at_.rx() += picture.width() + kGap;
        row_ = std::max(row_, picture.height());
        return place;
    }

    QImage finished() const { return image_.copy(0, 0, image_.width(), at_.y() + row_); }

private:
    QImage image_;
    QPoint at_;
    int row_ = 0;
};

}  // namespace

TemplateSkin templateSkin() {
    const QImage ground = plate();
    QImage whole = ground;
    Sheet sheet;
    TemplateSkin skin;
    skin.text = "Element,Record,Left,Top,Clip X,Clip Y,Width,Height,Use\r\n";
    const QPoint groundAt(0, kPanel.height() + kGap);
    for (const Part& part : kParts) {
        QPoint clip = part.place.topLeft();  // in the picture of the whole panel
        if (part.number == 1) {
            clip = groundAt;
        } else if (part.drawing == Drawing::None) {
            clip += groundAt;
        } else if (part.number > 1 && part.atRest) {
            QPainter painter(&whole);
            draw(painter, part);
        } else if (part.number > 1) {
            QImage picture = ground;
            QPainter painter(&picture);
            draw(painter, part);
            painter.end();
            clip = sheet.add(picture.copy(part.place));
        }
        skin.text += std::string(skinPartName(part.number));
        for (const int number : {part.number, part.place.left(), part.place.top(), clip.x(), clip.y(),
                                 part.place.width(), part.place.height()}) {
            skin.text += ',' + std::to_string(number);
        }
        skin.text += ',' + std::string(part.use) + "\r\n";
    }
    sheet.put({0, 0}, whole);
    sheet.put(groundAt, ground);
    skin.bitmap = sheet.finished();
    return skin;
}

}  // namespace corvane
