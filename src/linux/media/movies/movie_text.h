// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPainter>
#include <QRect>
#include <QString>
#include <QTimer>
#include <functional>
#include <string>

namespace corvane {

/// A text that stands on a movie's picture for a moment.
class MovieText {
public:
    static constexpr int kShownMs = 2000;

    /// changed: the picture is to be painted anew.
    explicit MovieText(std::function<void()> changed);

    void show(const std::string& text);  ///< made by strangers or not; instead of the one before
    void clear();
    bool empty() const { return text_.isEmpty(); }
    /// Over the picture, above and left in the area, in as many lines as it needs.
    void paint(QPainter& painter, const QRect& area) const;

private:
    QString text_;
    QTimer over_;
    std::function<void()> changed_;
};

}  // namespace corvane
