// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/qt_dialogs.h"

#include <QApplication>
#include <QCursor>
#include <QEventLoop>
#include <QFile>
#include <QMenu>
#include <QMessageBox>
#include <QScreen>
#include <QWindow>
#include <algorithm>

#include "linux/windowing/foreign_focus.h"
#include "linux/windowing/help_window.h"
#include "linux/windowing/input_barrier.h"
#include "linux/windowing/shown_text.h"
#include "shell/access_keys.h"

namespace corvane {

namespace {

QMessageBox::Icon toIcon(Icon icon) {
    switch (icon) {
        case Icon::Stop:
            return QMessageBox::Critical;
        case Icon::Question:
            return QMessageBox::Question;
        case Icon::Exclamation:
            return QMessageBox::Warning;
        case Icon::Information:
            break;
    }
    return QMessageBox::Information;
}

/// Adds the buttons; the refusal is what Escape and closing answer.
void addButtons(QMessageBox& box, Buttons buttons) {
    switch (buttons) {
        case Buttons::Ok:
            box.setStandardButtons(QMessageBox::Ok);
            box.setEscapeButton(QMessageBox::Ok);
            break;
        case Buttons::OkCancel:
            box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
            box.setEscapeButton(QMessageBox::Cancel);
            break;
        case Buttons::AbortRetryIgnore:
            box.setStandardButtons(QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore);
            box.setDefaultButton(QMessageBox::Abort);
            box.setEscapeButton(QMessageBox::Abort);
            break;
    }
}

Answer refusal(Buttons buttons) {
    if (buttons == Buttons::Ok) return Answer::Ok;
    return buttons == Buttons::OkCancel ? Answer::Cancel : Answer::Abort;
}

Answer toAnswer(int button, Buttons buttons) {
    switch (button) {
        case QMessageBox::Ok:
            return Answer::Ok;
        case QMessageBox::Cancel:
            return Answer::Cancel;
        case QMessageBox::Abort:
            return Answer::Abort;
        case QMessageBox::Retry:
            return Answer::Retry;
        case QMessageBox::Ignore:
            return Answer::Ignore;
        default:
            return refusal(buttons);
    }
}

QWidget* parentForBox(const DesktopContext& context) {
    if (QWidget* const active = QApplication::activeWindow()) return active;
    return context.panel && context.panel->isVisible() ? context.panel.data() : nullptr;
}

QRect screenOf(const QWidget* parent) {
    const QScreen* const screen = parent != nullptr ? parent->screen() : QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->availableGeometry() : QRect();
}

/// A box is as wide as its widest word, and the tool kit cuts it off at this width less icon and margins.
int widestWord(const QRect& screen) {
    constexpr int kMost = 850, kLeast = 200, kBeside = 600;
    return std::clamp(screen.width() - kBeside, kLeast, kMost);
}

/// As exec(), but another program keeps the keyboard. The window manager marks the box as one that waits.
int execBeside(QMessageBox& box) {
    box.winId();
    const InputBarrier barrier(box);
    QEventLoop loop;
    QObject::connect(&box, &QDialog::finished, &loop, &QEventLoop::quit);
    box.show();
    box.raise();
    QApplication::alert(&box);
    loop.exec(QEventLoop::DialogExec);
    return box.result();
}

}  // namespace

QtDialogs::QtDialogs(DesktopContext& context) : context_(context) {}

QtDialogs::~QtDialogs() { closeMenu(); }

void QtDialogs::closeMenu() {
    if (menu_) menu_->close();
}

Answer QtDialogs::messageBox(const std::string& text, const std::string& title, Buttons buttons, Icon icon) {
    closeMenu();
    QWidget* const parent = parentForBox(context_);
    // Without an owner in Qt's sense: the parent's window may go while the box is up.
    QMessageBox box;
    box.setIcon(toIcon(icon));
    box.setWindowTitle(shownTitle(title));
    box.setTextFormat(Qt::PlainText);  // before there is a text: what looks like mark-up is obeyed at once
    box.setText(shownLines(text, box.font(), widestWord(screenOf(parent))));
    const bool leavesFocus = willLeaveFocus(box);
    box.setWindowModality(leavesFocus ? Qt::NonModal : Qt::ApplicationModal);
    box.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    addButtons(box, buttons);
    if (parent != nullptr) {
        if (parent->windowFlags().testFlag(Qt::WindowStaysOnTopHint)) box.setWindowFlag(Qt::WindowStaysOnTopHint);
        box.winId();  // makes the window, so that it can be told whom it belongs to
        box.windowHandle()->setTransientParent(parent->windowHandle());
        box.adjustSize();
        const QRect screen = screenOf(parent);
        QRect place = box.rect();
        place.moveCenter(parent->frameGeometry().center());
        place.moveRight(std::min(place.right(), screen.right()));
        place.moveBottom(std::min(place.bottom(), screen.bottom()));
        place.moveLeft(std::max(place.left(), screen.left()));
        place.moveTop(std::max(place.top(), screen.top()));
        box.move(place.topLeft());
    }
    context_.box = &box;
    return toAnswer(leavesFocus ? execBeside(box) : box.exec(), buttons);
}

void QtDialogs::refuse() {
    closeMenu();
    if (context_.box) static_cast<QDialog&>(*context_.box).reject();
}

void QtDialogs::fill(QMenu& menu, const MenuItem& parent) {
    const AccessKeys keys(parent);
    for (MenuItem* const item : parent.children) {
        if (!item->Visible) continue;
        const QString caption = toQString(keys.marked(*item, item->Caption));
        if (item->isSeparator()) {
            menu.addSeparator();
            continue;
        }
        if (!item->children.empty()) {
            QMenu* const sub = menu.addMenu(caption);
            sub->setEnabled(item->Enabled);
            fill(*sub, *item);
            continue;
        }
        QAction* const action = menu.addAction(caption);
        action->setEnabled(item->Enabled);
        action->setCheckable(item->Checkable || item->Checked);  // a mark alone says nothing where it is missing
        action->setChecked(item->Checked);
        // A command is an event of its own: here the menu's key or mouse handler still runs, and it would go on running
        // behind a box that the command puts up.
        QObject::connect(action, &QAction::triggered, &menu, [this, item] {
            context_.loop.post([this, item] {
                closeMenu();  // an assistive program chooses without closing it
                item->Click.raise();
            });
        });
    }
}

void QtDialogs::popUp(MenuItem& menu) {
    if (isBoxUp()) return;
    closeMenu();
    menu_ = std::make_unique<QMenu>();
    fill(*menu_, menu);
    QObject::connect(menu_.get(), &QMenu::aboutToHide, menu_.get(),
                     [this] { context_.graveyard.lay(std::shared_ptr<QMenu>(std::move(menu_))); });
    menu_->popup(QCursor::pos());
}

void QtDialogs::help() {
    if (!manualWindow_) {
        manualWindow_ = std::make_unique<HelpWindow>(QFile::decodeName(QByteArray::fromStdString(manual_)));
        manualWindow_->closed = [this] {
            context_.graveyard.lay(std::shared_ptr<HelpWindow>(std::move(manualWindow_)));
        };
    }
    manualWindow_->show();
    manualWindow_->raise();
    manualWindow_->activateWindow();
}

}  // namespace corvane
