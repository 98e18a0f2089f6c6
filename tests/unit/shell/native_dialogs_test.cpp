// SPDX-License-Identifier: GPL-3.0-or-later
// Boxes and menus on a desktop in memory.
#include "shell/native/native_dialogs.h"

#include <gtest/gtest.h>

#include "fake/fake_loop.h"
#include "forms/form.h"
#include "forms/menu.h"

namespace corvane {
namespace {

class MemoryDialogs : public NativeDialogs {
public:
    using NativeDialogs::chosen;
    using NativeDialogs::NativeDialogs;
    void help() override {}
    bool raiseBox() override { return isBoxUp(); }

    std::optional<Answer> answer;
    std::function<void()> whileUp = [] {};
    std::vector<MenuEntry> menu;  ///< that is up
    std::string log;
    Box last;

protected:
    std::optional<Answer> ask(const Box& box) override {
        log += "box ";
        last = box;
        whileUp();
        return answer;
    }
    void closeBox() override {
        log += "close ";
        answer.reset();
    }
    void showMenu(const std::vector<MenuEntry>& entries) override {
        log += "menu ";
        menu = entries;
    }
    void closeMenu() override { menu.clear(); }
};

struct NativeDialogsOf : ::testing::Test {
    NativeDialogsOf() {
        play.Caption = "Play";
        line.Caption = "-";
        mode.Caption = "Play Mode";
        repeat.Caption = "Repeat";
        top.children = {&play, &line, &mode};
        mode.children = {&repeat};
        for (MenuItem* each : {&play, &repeat}) {
            each->Click.tie([this, each] { seen += each->Caption.get() + (dialogs.menu.empty() ? "" : " in menu"); });
        }
    }
    FakeLoop loop;
    MemoryDialogs dialogs{loop};
    Form form{"frmMenu", FormStyle::Hidden};
    MenuItem top{&form, "mnuTop"}, play{&form, "mnuPlay"}, line{&form, "mnuLine"}, mode{&form, "mnuMode"},
        repeat{&form, "mnuRepeat"};
    std::string seen;
};

TEST_F(NativeDialogsOf, ABoxAnswersItsButtonElseItsRefusal) {
    dialogs.answer = Answer::Retry;
    EXPECT_EQ(dialogs.messageBox("text", "Corvane", Buttons::AbortRetryIgnore, Icon::Stop), Answer::Retry);
    EXPECT_EQ(dialogs.last.text + dialogs.last.title, "textCorvane");
    EXPECT_EQ(dialogs.last.icon, Icon::Stop);
    for (const auto& [buttons, refusal] : {std::pair{Buttons::Ok, Answer::Ok},
                                           {Buttons::OkCancel, Answer::Cancel},
                                           {Buttons::AbortRetryIgnore, Answer::Abort}}) {
        dialogs.answer.reset();
        dialogs.whileUp = [] {};
        EXPECT_EQ(dialogs.messageBox("text", "Corvane", buttons, Icon::Question), refusal);
        dialogs.answer = Answer::Ignore;
        dialogs.whileUp = [this] { dialogs.refuse(); };
        EXPECT_EQ(dialogs.messageBox("text", "Corvane", buttons, Icon::Question), refusal);
    }
}

TEST_F(NativeDialogsOf, ABoxIsUpFromItsQuestionToItsAnswer) {
    dialogs.whileUp = [this] {
        EXPECT_TRUE(dialogs.isBoxUp());
        if (dialogs.log == "box ") dialogs.messageBox("inner", "Corvane", Buttons::Ok, Icon::Stop);
        EXPECT_TRUE(dialogs.isBoxUp());
    };
    EXPECT_FALSE(dialogs.isBoxUp());
    dialogs.messageBox("text", "Corvane", Buttons::Ok, Icon::Stop);
    EXPECT_FALSE(dialogs.isBoxUp());
    dialogs.refuse();
    EXPECT_EQ(dialogs.log, "box box ") << "none is up that could be closed";
}

TEST_F(NativeDialogsOf, ABoxTakesThePointerAndClosesTheMenu) {
    dialogs.onTaken([this] { dialogs.log += "taken "; });
    dialogs.popUp(top);
    EXPECT_FALSE(dialogs.menu.empty());
    dialogs.whileUp = [this] {
        EXPECT_TRUE(dialogs.menu.empty());
        dialogs.popUp(top);
    };
    dialogs.messageBox("text", "Corvane", Buttons::Ok, Icon::Stop);
    EXPECT_EQ(dialogs.log, "menu taken box ") << "and none opens beside it";
}

TEST_F(NativeDialogsOf, AMenuShowsTheTreeAsItIsNow) {
    play.Enabled = false;
    repeat.Checkable = true;
    MenuItem hidden{&form, "mnuHidden"}, on{&form, "mnuOn"};
    hidden.Caption = "Hidden";
    hidden.Visible = false;
    on.Caption = "R&B";
    on.Checked = true;
    top.children = {&hidden, &play, &line, &mode, &on};
    dialogs.popUp(top);
    const auto& shown = dialogs.menu;
    ASSERT_EQ(shown.size(), 4U) << "what is not visible is left out";
    EXPECT_EQ(shown[0].caption, "&Play");
    EXPECT_FALSE(shown[0].enabled);
    EXPECT_FALSE(shown[0].checkable);
    EXPECT_EQ(shown[1].caption, "");
    EXPECT_EQ(shown[1].command, -1);
    EXPECT_EQ(shown[2].caption, "Play &Mode") << "each of a level has a letter of its own";
    EXPECT_EQ(shown[2].command, -1);
    ASSERT_EQ(shown[2].entries.size(), 1U);
    EXPECT_EQ(shown[2].entries[0].caption, "&Repeat");
    EXPECT_TRUE(shown[2].entries[0].checkable) << "on or off, also while it is off";
    EXPECT_FALSE(shown[2].entries[0].checked);
    EXPECT_EQ(shown[3].caption, "&R&&B");
    EXPECT_TRUE(shown[3].checkable && shown[3].checked);
}

TEST_F(NativeDialogsOf, ACommandIsAnEventOfItsOwnOnceTheMenuIsClosed) {
    dialogs.popUp(top);
    dialogs.chosen(dialogs.menu[2].entries[0].command);
    EXPECT_EQ(seen, "");
    loop.drain();
    EXPECT_EQ(seen, "Repeat");
    dialogs.popUp(top);
    dialogs.chosen(dialogs.menu[0].command);
    for (const int none : {-1, 2, 99}) dialogs.chosen(none);
    loop.drain();
    EXPECT_EQ(seen, "RepeatPlay");
}

}  // namespace
}  // namespace corvane
