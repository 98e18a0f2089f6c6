// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/movies/movie_text.h"

#include <QColor>
#include <algorithm>
#include <utility>

#include "linux/windowing/shown_text.h"

namespace corvane {

namespace {

constexpr int kLinesOfPicture = 20;                      // that fit one under the other
constexpr int kSmallest = 11, kLargest = 40, kTiny = 7;  // pixels
constexpr QRgb kBehind = 0xB4000000;
constexpr int kLines = Qt::AlignLeft | Qt::AlignTop | Qt::TextWrapAnywhere;

}  // namespace

MovieText::MovieText(std::function<void()> changed) : changed_(std::move(changed)) {
    over_.setSingleShot(true);
    over_.setInterval(kShownMs);
    QObject::connect(&over_, &QTimer::timeout, &over_, [this] { clear(); });
}

void MovieText::show(const std::string& text) {
    text_ = shownText(text);
    over_.start();
    changed_();
}

void MovieText::clear() {
    over_.stop();
    if (text_.isEmpty()) return;
    text_.clear();
    changed_();
}

void MovieText::paint(QPainter& painter, const QRect& area) const {
    if (text_.isEmpty()) return;
    QFont font = painter.font();
    int height = std::clamp(area.height() / kLinesOfPicture, kSmallest, kLargest);
    QRect place, words;
    // Smaller letters where a long text would hide the picture.
    for (; height >= kTiny; --height) {
        font.setPixelSize(height);
        painter.setFont(font);
        const int edge = height / 2;
        place = area.adjusted(2 * edge, 2 * edge, -2 * edge, -edge);
        words = painter.boundingRect(place, kLines, text_);
        if (words.height() <= place.height()) break;
    }
    const int edge = height / 2;
    painter.fillRect(words.adjusted(-edge, -edge / 2, edge, edge / 2) & area, QColor::fromRgba(kBehind));
    painter.setPen(Qt::white);
    painter.drawText(place, kLines, text_);
}

}  // namespace corvane
