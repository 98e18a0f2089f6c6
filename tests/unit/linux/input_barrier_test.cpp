// SPDX-License-Identifier: GPL-3.0-or-later
// A box that leaves the keyboard to another program: the other windows are shut all the same.
#include "linux/windowing/input_barrier.h"

#include <gtest/gtest.h>

#include <QCloseEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QWindow>
#include <memory>
#include <vector>

#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

class Watched : public QWidget {
public:
    explicit Watched(QApplication& /*first*/) {
        setAcceptDrops(true);
        show();
        test::waitUntil([this] { return isActiveWindow(); });
        seen.clear();
    }
    std::vector<QEvent::Type> seen;
    bool has(QEvent::Type type) const { return std::find(seen.begin(), seen.end(), type) != seen.end(); }

protected:
    bool event(QEvent* event) override {
        seen.push_back(event->type());
        return QWidget::event(event);
    }
};

struct Shut : ::testing::Test {
    Watched panel{test::offscreenApplication()};
    Watched box{test::offscreenApplication()};

    /// As the tool kit hands it over. True: it was taken.
    static bool give(QWidget& to, QEvent&& event) {
        return QCoreApplication::sendEvent(to.windowHandle(), &event) && event.isAccepted();
    }
    static void use(QWidget& to) {
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease}) {
            give(to, QMouseEvent(type, {5, 5}, to.mapToGlobal(QPoint(5, 5)), Qt::LeftButton, Qt::LeftButton, {}));
        }
        give(to, QKeyEvent(QEvent::KeyPress, Qt::Key_P, {}, "p"));
        give(to, QKeyEvent(QEvent::KeyRelease, Qt::Key_P, {}, "p"));
    }
};

/// COM-28: A box that comes while another program has the keyboard is seen and leaves it there; the player's other
///     windows are shut, and whoever turns to one has the box
TEST_F(Shut, MouseAndKeysReachTheOpenWindowAlone) {
    {
        const InputBarrier barrier(box);
        EXPECT_TRUE(panel.has(QEvent::WindowBlocked)) << "what is held there is let go";
        EXPECT_FALSE(box.has(QEvent::WindowBlocked));
        use(panel);
        use(box);
    }
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::KeyPress}) {
        EXPECT_FALSE(panel.has(type)) << type;
        EXPECT_TRUE(box.has(type)) << type;
    }
    use(panel);
    EXPECT_TRUE(panel.has(QEvent::MouseButtonPress)) << "open again";
    EXPECT_TRUE(panel.has(QEvent::KeyPress));
}

/// COM-28
TEST_F(Shut, NeitherADropNorARequestToCloseIsTaken) {
    const InputBarrier barrier(box);
    QMimeData files;
    files.setText("file");
    EXPECT_FALSE(give(panel, QDragEnterEvent({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, {})));
    EXPECT_FALSE(give(panel, QDropEvent({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, {})));
    EXPECT_FALSE(give(panel, QCloseEvent()));
    EXPECT_FALSE(panel.has(QEvent::DragEnter) || panel.has(QEvent::Drop) || panel.has(QEvent::Close));
    EXPECT_TRUE(panel.isVisible());
}

/// COM-28
TEST_F(Shut, WhoeverTurnsToAShutWindowIsShownTheOpenOne) {
    const InputBarrier barrier(box);
    panel.activateWindow();
    EXPECT_TRUE(test::waitUntil([this] { return box.isActiveWindow(); }));
    EXPECT_FALSE(panel.isActiveWindow());
}

}  // namespace
}  // namespace corvane
