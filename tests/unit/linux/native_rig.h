// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>
#include <memory>

#include "dialogs/forms.h"
#include "dialogs/frmCustom.h"
#include "fake/fake_machine.h"
#include "linux/qt_loop.h"
#include "linux/windowing/qt_windows.h"
#include "listedit/forms.h"
#include "listedit/frmFileList.h"
#include "unit/linux/offscreen.h"

namespace corvane::test {

/// The real dialogs in real widgets without a display; the rest of the machine is in memory.
class NativeRig : public ::testing::Test {
protected:
    NativeRig() : app_(offscreenApplication()) {
        registerListEditForms(player);
        registerDialogForms(player);
        for (const char* name : {"apple.wav", "banana.mid", "blue.mp3", "cherry.gif"}) {
            machine.files.add(std::string("/home/ann/Music/") + name);
        }
        machine.files.addFolder("/home/ann/Videos");
        machine.files.addFolder("/app");
        machine.files.offeredDrives = {{"Computer", "/"}, {"Home", "/home/ann", true}};
        player.gIniFile = "/app/KADO.INI";
        player.gListFileStem = "/app/FILE";
        player.editorFolder = "/home/ann/Music";
    }
    ~NativeRig() override {
        player.forms.clear();
        settle();
    }

    void settle() {
        waitUntil([this] { return loop.idle(); });
        // What the handlers changed is shown by timers of no time: this one comes behind them.
        bool shown = false;
        QTimer::singleShot(0, qApp, [&] { shown = true; });
        waitUntil([&] { return shown && loop.idle(); });
    }
    FileListControls& openEditor() {
        loop.enter([this] { player.forms.load<FileListControls>().Show(); });
        settle();
        return *player.forms.find<FileListControls>();
    }
    CustomControls& openSettings() {
        loop.enter([this] { player.forms.load<CustomControls>().Show(); });
        settle();
        return *player.forms.find<CustomControls>();
    }
    QWidget& windowOf(const Form& form) { return *windows.widgetOf(form); }
    /// The widget of a control.
    template <class W>
    W& widget(const Control& control) {
        const QString index = control.index() < 0 ? QString() : QString::number(control.index());
        auto* const found = windowOf(*control.form()).findChild<W*>(QString::fromStdString(control.name()) + index);
        if (found == nullptr) throw std::logic_error("no widget of " + control.name());
        return *found;
    }

    static void key(QWidget& to, int code, const QString& text = {}, Qt::KeyboardModifiers modifiers = {}) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, code, modifiers, text);
            QCoreApplication::sendEvent(&to, &event);
        }
    }
    static void type(QWidget& to, const QString& text) {
        for (const QChar each : text) key(to, each.toUpper().unicode(), each);
    }
    static void mouse(QWidget& to, QEvent::Type type, QPoint at, Qt::KeyboardModifiers modifiers = {}) {
        const bool up = type == QEvent::MouseButtonRelease;
        const bool move = type == QEvent::MouseMove;
        QMouseEvent event(type, at, to.mapToGlobal(at), move ? Qt::NoButton : Qt::LeftButton,
                          up ? Qt::NoButton : Qt::LeftButton, modifiers);
        QCoreApplication::sendEvent(&to, &event);
    }
    /// The keys go down and up as well: lists of Qt 6.8 ask what is held, not the press alone.
    void click(QWidget& to, QPoint at, Qt::KeyboardModifiers modifiers = {}) {
        QWindow* const window = to.window()->windowHandle();
        const Qt::Key held = modifiers == Qt::ShiftModifier ? Qt::Key_Shift : Qt::Key_Control;
        if (modifiers != Qt::NoModifier) QTest::keyPress(window, held, modifiers);
        mouse(to, QEvent::MouseButtonPress, at, modifiers);
        mouse(to, QEvent::MouseButtonRelease, at, modifiers);
        if (modifiers != Qt::NoModifier) QTest::keyRelease(window, held);
        settle();
    }
    static QPoint rowOf(QAbstractItemView& view, int row) {
        return view.visualRect(view.model()->index(row, 0)).center();
    }
    void clickRow(QAbstractItemView& view, int row, Qt::KeyboardModifiers modifiers = {}) {
        click(*view.viewport(), rowOf(view, row), modifiers);
    }
    void doubleClickRow(QAbstractItemView& view, int row) {
        clickRow(view, row);
        mouse(*view.viewport(), QEvent::MouseButtonDblClick, rowOf(view, row));
        mouse(*view.viewport(), QEvent::MouseButtonRelease, rowOf(view, row));
        settle();
    }
    static std::vector<int> selectedRows(const QAbstractItemView& view) {
        std::vector<int> rows;
        for (const QModelIndex& each : view.selectionModel()->selectedIndexes()) rows.push_back(each.row());
        std::sort(rows.begin(), rows.end());
        return rows;
    }

private:
    QApplication& app_;

protected:
    FakeMachine machine;
    QtLoop loop;
    DesktopContext context{loop, 1.0, {}};
    QtWindows windows{context};
    Ports ports{loop,           machine.media, machine.pictures, machine.sound,   machine.files, windows,
                machine.timers, machine.clock, machine.dialogs,  machine.process, machine.random};
    Player player{ports};
};

}  // namespace corvane::test
