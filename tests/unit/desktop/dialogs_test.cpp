// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/qt_dialogs.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>

#include "desktop/qt_loop.h"
#include "unit/desktop/offscreen.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

struct DesktopDialogs : ::testing::Test {
    DesktopDialogs() { test::offscreenApplication(); }
    QtLoop loop;
    DesktopContext context{loop, 1.0, {}};
    QtDialogs dialogs{context};

    static QMessageBox* box() { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }
    /// Does something to the box once it is up.
    static void whenUp(const std::function<void(QMessageBox&)>& act) {
        QTimer::singleShot(0, qApp, [act] {
            ASSERT_NE(box(), nullptr);
            act(*box());
        });
    }
};

TEST_F(DesktopDialogs, ABoxShowsItsTextAndAnswersItsButton) {
    QString text;
    QString title;
    int buttons = 0;
    whenUp([&](QMessageBox& up) {
        text = up.text();
        title = up.windowTitle();
        buttons = static_cast<int>(up.buttons().size());
        EXPECT_EQ(up.icon(), QMessageBox::Critical);
        EXPECT_EQ(up.textFormat(), Qt::PlainText);
        up.button(QMessageBox::Retry)->click();
    });
    EXPECT_EQ(dialogs.messageBox("<b>あ</b> Not found!!", "Corvane", Buttons::AbortRetryIgnore, Icon::Stop),
              Answer::Retry);
    EXPECT_EQ(text, QStringLiteral("<b>あ</b> Not found!!"));
    EXPECT_EQ(title, "Corvane");
    EXPECT_EQ(buttons, 3);
}

TEST_F(DesktopDialogs, AClosedBoxAnswersItsRefusal) {
    for (const auto& [buttons, answer] : {std::pair{Buttons::Ok, Answer::Ok},
                                          {Buttons::OkCancel, Answer::Cancel},
                                          {Buttons::AbortRetryIgnore, Answer::Abort}}) {
        whenUp([](QMessageBox& up) { up.close(); });
        EXPECT_EQ(dialogs.messageBox("text", "Corvane", buttons, Icon::Question), answer);
        whenUp([this](QMessageBox&) { dialogs.refuse(); });
        EXPECT_EQ(dialogs.messageBox("text", "Corvane", buttons, Icon::Question), answer);
    }
    EXPECT_FALSE(dialogs.isBoxUp());
}

struct PopUpMenu : DesktopDialogs {
    Form form{"frmMenu", FormStyle::Hidden};
    MenuItem top{&form, "mnuTop"};
    MenuItem play{&form, "mnuPlay"};
    MenuItem line{&form, "mnuLine"};
    MenuItem mode{&form, "mnuMode"};
    MenuItem repeat{&form, "mnuRepeat"};
    int clicks = 0;
    int depth = -1;

    PopUpMenu() {
        play.Caption = "Play";
        line.Caption = "-";
        mode.Caption = "Play Mode";
        repeat.Caption = "Repeat";
        repeat.Checked = true;
        top.children = {&play, &line, &mode};
        mode.children = {&repeat};
        repeat.Click.tie([this] {
            ++clicks;
            depth = loop.depth();
        });
    }
    static QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
};

TEST_F(PopUpMenu, ShowsTheTreeAndReturnsAtOnce) {
    play.Enabled = false;
    dialogs.popUp(top);
    ASSERT_NE(menu(), nullptr);
    const auto actions = menu()->actions();
    ASSERT_EQ(actions.size(), 3);
    EXPECT_EQ(actions[0]->text(), "Play");
    EXPECT_FALSE(actions[0]->isEnabled());
    EXPECT_TRUE(actions[1]->isSeparator());
    ASSERT_NE(actions[2]->menu(), nullptr);
    EXPECT_TRUE(actions[2]->menu()->actions()[0]->isChecked());
    EXPECT_EQ(clicks, 0);
    actions[2]->menu()->actions()[0]->trigger();
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(depth, 1) << "counted by the loop";
}

TEST_F(PopUpMenu, LeavesOutWhatIsNotVisible) {
    play.Visible = false;
    dialogs.popUp(top);
    ASSERT_NE(menu(), nullptr);
    EXPECT_EQ(menu()->actions().size(), 2);
}

TEST_F(PopUpMenu, ASecondOneTakesTheFirstOnesPlace) {
    dialogs.popUp(top);
    dialogs.popUp(top);
    ASSERT_NE(menu(), nullptr);
    menu()->close();
    EXPECT_TRUE(test::waitUntil([] { return menu() == nullptr; }));
}

}  // namespace
}  // namespace corvane
