// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPainter>
#include <QRect>
#include <QString>
#include <string>

namespace corvane {

/// The subtitles that are seen now, as plain lines below in the picture. Whoever made them decides neither how long
/// they take to be drawn nor what memory that takes: of a text the first kMostBytes and kMostLines are shown.
class MovieSubtitles {
public:
    static constexpr std::size_t kMostBytes = 1'200;
    static constexpr int kMostLines = 10;

    /// As a file has them; "" none. False: the same as before.
    bool show(const std::string& text);
    bool empty() const { return text_.isEmpty(); }
    void paint(QPainter& painter, const QRect& area) const;

private:
    QString text_;
};

}  // namespace corvane
