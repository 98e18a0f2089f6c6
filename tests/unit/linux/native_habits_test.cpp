// SPDX-License-Identifier: GPL-3.0-or-later
// The dialogs in widgets: where the tool kit has habits of its own that the forms do not share.
#include <QTimer>

#include "linux/native/items_model.h"
#include "unit/linux/native_rig.h"

namespace corvane {
namespace {

using Editor = FileListControls;
using Custom = CustomControls;
using Rows = std::vector<int>;
using Texts = std::vector<std::string>;

class NativeHabits : public test::NativeRig {
protected:
    QAbstractItemView& view(const Control& control) { return widget<QAbstractItemView>(control); }
};

/// A text that is dragged out of a field is one such loop: whatever closes the dialog meanwhile (a remote control, the
/// session's end), the field's own handler is still running.
TEST_F(NativeHabits, AWindowThatGoesInsideANestedLoopLivesUntilThatIsOver) {
    const QPointer<QWidget> window = &windowOf(openSettings());
    bool livedOn = false;
    QEventLoop outer;
    QTimer::singleShot(0, &outer, [&] {
        QEventLoop nested;
        QTimer::singleShot(0, &nested, [&] {
            loop.enter([this] { player.forms.unload<CustomControls>(); });
            QTimer::singleShot(50, &nested, &QEventLoop::quit);
        });
        nested.exec();
        livedOn = !window.isNull();
        QTimer::singleShot(0, &outer, &QEventLoop::quit);
    });
    outer.exec();
    EXPECT_TRUE(livedOn);
    EXPECT_TRUE(test::waitUntil([&] { return window.isNull(); })) << "the window is kept";
}

/// The tool kit takes what is typed for a choice when it equals an entry. It counts at OK, like every typed number.
TEST_F(NativeHabits, ATypedIntervalThatIsAnEntryCountsNoSoonerThanAnother) {
    Editor& form = openEditor();
    auto& box = widget<QComboBox>(form.cboFileList[Editor::kInterval]);
    box.setFocus();
    box.lineEdit()->selectAll();
    type(*box.lineEdit(), "20");
    view(form.fleFileList).setFocus();
    QFocusEvent left(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(box.lineEdit(), &left);
    settle();
    EXPECT_EQ(player.gInterval, 0);
    EXPECT_EQ(form.cboFileList[Editor::kInterval].Text.get(), "20");
    EXPECT_EQ(box.currentText(), "20");
    emit box.activated(4);
    settle();
    EXPECT_EQ(player.gInterval, 20) << "chosen out of the list it counts at once";
}

TEST_F(NativeHabits, HomeAndEndGoToTheFirstAndTheLastNumber) {
    Editor& form = openEditor();
    auto& list = widget<QWidget>(form.hscrFileList);
    key(list, Qt::Key_Right);
    key(list, Qt::Key_End);
    EXPECT_EQ(player.gListNumber, 9);
    key(list, Qt::Key_Home);
    EXPECT_EQ(player.gListNumber, 0);
    key(list, Qt::Key_Left);
    settle();
    EXPECT_EQ(player.gListNumber, 9) << "a step beyond the end still wraps";
}

TEST_F(NativeHabits, F1OpensTheHelpWhereverTheKeyboardIs) {
    Editor& editor = openEditor();
    key(view(editor.fleFileList), Qt::Key_F1);
    settle();
    EXPECT_EQ(machine.log.count("dialogs.help"), 1);
    key(view(editor.fleFileList), Qt::Key_F1, {}, Qt::ControlModifier);
    settle();
    EXPECT_EQ(machine.log.count("dialogs.help"), 1);
    loop.enter([this] { player.forms.unload<FileListControls>(); });
    Custom& settings = openSettings();
    key(widget<QLineEdit>(settings.txtCustom[0]), Qt::Key_F1);
    settle();
    EXPECT_EQ(machine.log.count("dialogs.help"), 2);
}

TEST_F(NativeHabits, WhatADoubleClickAddedIsNotAddedAgain) {
    Editor& form = openEditor();
    doubleClickRow(view(form.fleFileList), 1);
    EXPECT_EQ(selectedRows(view(form.fleFileList)), Rows{});
    widget<QPushButton>(form.cmdFileList[Editor::kAdd]).click();
    settle();
    EXPECT_EQ(form.lstFileList[0].items(), Texts{"banana.mid"});
}

TEST_F(NativeHabits, ATipOfTheListsSaysTheWholePath) {
    Editor& form = openEditor();
    doubleClickRow(view(form.fleFileList), 1);
    const auto tip = [this](const Control& list, int row) {
        return static_cast<ItemsModel*>(view(list).model())->tip(row, false);
    };
    EXPECT_EQ(tip(form.lstFileList[0], 0), "/home/ann/Music/banana.mid");
    EXPECT_EQ(tip(form.fleFileList, 0), "/home/ann/Music/apple.wav");
    loop.enter([&] { form.lstFileList[1].clear(); });
    EXPECT_EQ(tip(form.lstFileList[0], 0), "") << "in between of two changes";
}

TEST_F(NativeHabits, AClickBesideTheLabelGivesTheFieldTheKeyboard) {
    Custom& form = openSettings();
    windowOf(form).activateWindow();
    auto& mark = widget<QWidget>(form.imgCustom[5]);
    EXPECT_FALSE(form.imgCustom[5].Visible);
    const QColor dark = mark.grab().toImage().pixelColor(mark.width() / 2, mark.height() / 2);
    click(mark, mark.rect().center());
    EXPECT_EQ(windowOf(form).focusWidget(), &widget<QLineEdit>(form.txtCustom[5]));
    EXPECT_TRUE(form.imgCustom[5].Visible);
    EXPECT_NE(mark.grab().toImage().pixelColor(mark.width() / 2, mark.height() / 2), dark);
}

/// WIN-73: The hint of an empty field has the field's own text colour, faint, also under a theme that comes later
TEST_F(NativeHabits, AHintIsReadUnderADarkTheme) {
    Editor& form = openEditor();
    auto& field = widget<QLineEdit>(form.txtFind);
    const auto hint = [&field] { return field.palette().color(QPalette::PlaceholderText); };
    for (const QColor text : {QColor(250, 250, 250), QColor(10, 10, 10)}) {
        QPalette theme = QApplication::palette();
        theme.setColor(QPalette::Text, text);
        theme.setColor(QPalette::PlaceholderText, Qt::black);
        QApplication::setPalette(theme);
        settle();
        EXPECT_EQ(hint().rgb(), text.rgb());
        EXPECT_LT(hint().alpha(), 200);
        EXPECT_GT(hint().alpha(), 100);
    }
    QApplication::setPalette(QPalette());
}

}  // namespace
}  // namespace corvane
