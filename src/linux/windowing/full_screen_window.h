// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <QWidget>

namespace corvane {

class MediaCanvas;

/// The whole-screen surface of a movie. What is typed or clicked on it is the media window's, as if the movie control
/// filled that. The pointer goes away when it rests.
class FullScreenWindow : public QWidget {
public:
    explicit FullScreenWindow(MediaCanvas& owner);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    bool mouse(QEvent* event);

    MediaCanvas& owner_;
    QTimer rest_;
};

}  // namespace corvane
