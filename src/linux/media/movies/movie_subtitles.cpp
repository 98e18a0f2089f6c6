// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/movies/movie_subtitles.h"

#include <QStringList>
#include <algorithm>
#include <string_view>

#include "linux/windowing/shown_text.h"

namespace corvane {

namespace {

constexpr int kLinesOfPicture = 15;                      // that fit one under the other
constexpr int kSmallest = 12, kLargest = 90, kTiny = 6;  // pixels
constexpr int kFlags = Qt::AlignHCenter | Qt::AlignBottom | Qt::TextWordWrap;

/// Up to a whole character.
std::string_view start(std::string_view text, std::size_t most) {
    if (text.size() <= most) return text;
    while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0U) == 0x80U) --most;
    return text.substr(0, most);
}

}  // namespace

bool MovieSubtitles::show(const std::string& text) {
    QStringList lines;
    std::string_view left = start(text, kMostBytes);
    while (!left.empty() && lines.size() < kMostLines) {
        const std::string_view line = left.substr(0, left.find('\n'));
        left.remove_prefix(std::min(left.size(), line.size() + 1));
        lines.append(shownText(std::string(line)));
    }
    QString shown = lines.join('\n').trimmed();
    const bool changes = shown != text_;
    text_ = std::move(shown);
    return changes;
}

void MovieSubtitles::paint(QPainter& painter, const QRect& area) const {
    if (text_.isEmpty() || area.isEmpty()) return;
    QFont font = painter.font();
    QRect place;
    // Smaller letters where a long text would hide the picture.
    for (int height = std::clamp(area.height() / kLinesOfPicture, kSmallest, kLargest); height >= kTiny; --height) {
        font.setPixelSize(height);
        painter.setFont(font);
        place = area.adjusted(height, height / 2, -height, -height / 2);
        if (painter.boundingRect(place, kFlags, text_).height() <= area.height() / 2) break;
    }
    const int edge = std::max(font.pixelSize() / 16, 1);
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    painter.setPen(Qt::black);
    for (const QPoint& side : {QPoint(-edge, -edge), QPoint(0, -edge), QPoint(edge, -edge), QPoint(-edge, 0),
                               QPoint(edge, 0), QPoint(-edge, edge), QPoint(0, edge), QPoint(edge, edge)}) {
        painter.drawText(place.translated(side), kFlags, text_);
    }
    painter.setPen(Qt::white);
    painter.drawText(place, kFlags, text_);
    painter.restore();
}

}  // namespace corvane
