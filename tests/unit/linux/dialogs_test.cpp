// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/qt_dialogs.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>

#include "linux/qt_loop.h"
#include "unit/linux/offscreen.h"

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

/// COM-04: A box shows its text and answers with its button
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

/// COM-03: A box that is closed answers its refusal
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

TEST_F(DesktopDialogs, AManualClosedInsideANestedLoopLivesUntilThatIsOver) {
    dialogs.help();
    QPointer<QWidget> manual;
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each->windowTitle() == "Corvane - Help" && each->isVisible()) manual = each;
    }
    ASSERT_FALSE(manual.isNull());
    bool livedOn = false;
    QEventLoop outer;
    QTimer::singleShot(0, &outer, [&] {
        QEventLoop dragging;  // a text is dragged out of it
        QTimer::singleShot(0, &dragging, [&] {
            manual->close();
            QTimer::singleShot(50, &dragging, &QEventLoop::quit);
        });
        dragging.exec();
        livedOn = !manual.isNull();
        QTimer::singleShot(0, &outer, &QEventLoop::quit);
    });
    outer.exec();
    EXPECT_TRUE(livedOn);
    EXPECT_TRUE(test::waitUntil([&] { return manual.isNull(); })) << "it is kept";
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

/// MENU-01
TEST_F(PopUpMenu, ShowsTheTreeAndReturnsAtOnce) {
    play.Enabled = false;
    dialogs.popUp(top);
    ASSERT_NE(menu(), nullptr);
    const auto actions = menu()->actions();
    ASSERT_EQ(actions.size(), 3);
    EXPECT_EQ(actions[0]->text().remove('&'), "Play");
    EXPECT_FALSE(actions[0]->isEnabled());
    EXPECT_TRUE(actions[1]->isSeparator());
    ASSERT_NE(actions[2]->menu(), nullptr);
    EXPECT_TRUE(actions[2]->menu()->actions()[0]->isChecked());
    EXPECT_EQ(clicks, 0);
    actions[2]->menu()->actions()[0]->trigger();
    EXPECT_TRUE(test::waitUntil([this] { return clicks > 0; }));
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(menu(), nullptr) << "closed when its command runs";
    EXPECT_EQ(depth, 1) << "counted by the loop";
}

/// The menu's own key handler must be over: it would go on behind a box that the command puts up.
TEST_F(PopUpMenu, ACommandIsAnEventOfItsOwnOnceTheMenuIsClosed) {
    bool inMenu = false;
    bool ranInMenu = false;
    const QPointer<QMenu> up = [this] {
        dialogs.popUp(top);
        return menu();
    }();
    ASSERT_NE(up, nullptr);
    play.Click.tie([&] {
        ++clicks;
        ranInMenu = inMenu;
        EXPECT_FALSE(up && up->isVisible());
        whenUp([&](QMessageBox& box) { box.accept(); });
        dialogs.messageBox("text", "Corvane", Buttons::Ok, Icon::Stop);
    });
    for (const int code : {Qt::Key_Down, Qt::Key_Return}) {
        QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier);
        inMenu = true;
        QCoreApplication::sendEvent(up, &press);
        inMenu = false;
    }
    EXPECT_EQ(clicks, 0);
    EXPECT_TRUE(test::waitUntil([this] { return clicks > 0 && loop.depth() == 0; }));
    EXPECT_FALSE(ranInMenu);
    EXPECT_TRUE(test::waitUntil([&] { return up.isNull(); })) << "the menu is kept";
}

TEST_F(PopUpMenu, EachEntryOfALevelHasALetterOfItsOwn) {
    MenuItem pause{&form, "mnuPause"};
    pause.Caption = "Pause";
    top.children = {&play, &pause, &line, &mode};
    dialogs.popUp(top);
    ASSERT_NE(menu(), nullptr);
    const auto actions = menu()->actions();
    EXPECT_EQ(actions[0]->text(), "&Play");
    EXPECT_EQ(actions[1]->text(), "P&ause");
    EXPECT_EQ(actions[3]->text(), "Play &Mode");
    menu()->close();
}

/// MENU-02
TEST_F(PopUpMenu, WhatIsOnOrOffIsCheckableAlsoWhileItIsOff) {
    repeat.Checkable = true;
    for (const bool on : {false, true}) {
        repeat.Checked = on;
        dialogs.popUp(top);
        ASSERT_NE(menu(), nullptr);
        const QAction& entry = *menu()->actions()[2]->menu()->actions()[0];
        EXPECT_TRUE(entry.isCheckable());
        EXPECT_EQ(entry.isChecked(), on);
        QAccessibleInterface* const told =
            QAccessible::queryAccessibleInterface(menu()->actions()[2]->menu())->child(0);
        EXPECT_TRUE(told->state().checkable);
        EXPECT_EQ(told->state().checked, on);
        EXPECT_FALSE(menu()->actions()[0]->isCheckable());
        menu()->close();
    }
}

/// MENU-04
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
