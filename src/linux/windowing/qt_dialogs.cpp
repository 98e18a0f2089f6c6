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
#include "shell/native/pixels.h"

namespace corvane {

namespace {

QMessageBox::Icon toIcon(Icon icon) {
    if (icon == Icon::Stop) return QMessageBox::Critical;
    if (icon == Icon::Question) return QMessageBox::Question;
    return icon == Icon::Exclamation ? QMessageBox::Warning : QMessageBox::Information;
}

struct AnswerButton {
    Answer answer;
    QMessageBox::StandardButton button;
};

/// Of a box, the first one chosen by Enter.
std::vector<AnswerButton> buttonsOf(Buttons buttons) {
    switch (buttons) {
        case Buttons::Ok:
            break;
        case Buttons::OkCancel:
            return {{Answer::Ok, QMessageBox::Ok}, {Answer::Cancel, QMessageBox::Cancel}};
        case Buttons::AbortRetryIgnore:
            return {{Answer::Abort, QMessageBox::Abort},
                    {Answer::Retry, QMessageBox::Retry},
                    {Answer::Ignore, QMessageBox::Ignore}};
    }
    return {{Answer::Ok, QMessageBox::Ok}};
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

/// Over its parent, on the same screen.
void place(QMessageBox& box, const QWidget& parent) {
    box.winId();  // makes the window, so that it can be told whom it belongs to
    box.windowHandle()->setTransientParent(parent.windowHandle());
    box.adjustSize();
    const QRect screen = screenOf(&parent);
    const QPoint middle = parent.frameGeometry().center();
    const PixelRect at = placedInside({screen.x(), screen.y(), screen.width(), screen.height()},
                                      {middle.x(), middle.y()}, {box.width(), box.height()});
    box.move(at.left, at.top);
}

}  // namespace

QtDialogs::QtDialogs(DesktopContext& context) : NativeDialogs(context.loop), context_(context) {}

QtDialogs::~QtDialogs() { closeMenu(); }

std::optional<Answer> QtDialogs::ask(const Box& asked) {
    QWidget* const parent = parentForBox(context_);
    // Without an owner in Qt's sense: the parent's window may go while the box is up.
    QMessageBox box;
    box.setIcon(toIcon(asked.icon));
    box.setWindowTitle(shownTitle(asked.title));
    box.setTextFormat(Qt::PlainText);  // before there is a text: what looks like mark-up is obeyed at once
    box.setText(shownLines(asked.text, box.font(), widestWord(screenOf(parent))));
    const bool leavesFocus = willLeaveFocus(box);
    box.setWindowModality(leavesFocus ? Qt::NonModal : Qt::ApplicationModal);
    box.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    const auto buttons = buttonsOf(asked.buttons);
    for (const AnswerButton& each : buttons) {
        box.addButton(each.button);
        if (each.answer == refusalOf(asked.buttons)) box.setEscapeButton(each.button);
    }
    box.setDefaultButton(buttons.front().button);
    if (parent != nullptr) {
        if (parent->windowFlags().testFlag(Qt::WindowStaysOnTopHint)) box.setWindowFlag(Qt::WindowStaysOnTopHint);
        place(box, *parent);
    }
    context_.box = &box;
    const int pressed = leavesFocus ? execBeside(box) : box.exec();
    for (const AnswerButton& each : buttons) {
        if (each.button == pressed) return each.answer;
    }
    return std::nullopt;
}

bool QtDialogs::raiseBox() {
    if (!context_.box) return false;
    context_.box->raise();
    context_.box->activateWindow();
    return true;
}

void QtDialogs::closeBox() {
    if (context_.box) static_cast<QDialog&>(*context_.box).reject();
}

void QtDialogs::closeMenu() {
    if (menu_) menu_->close();
}

void QtDialogs::fill(QMenu& menu, const std::vector<MenuEntry>& entries) {
    for (const MenuEntry& each : entries) {
        if (each.caption.empty()) {
            menu.addSeparator();
            continue;
        }
        const QString caption = toQString(each.caption);
        if (!each.entries.empty()) {
            QMenu* const sub = menu.addMenu(caption);
            sub->setEnabled(each.enabled);
            fill(*sub, each.entries);
            continue;
        }
        QAction* const action = menu.addAction(caption);
        action->setEnabled(each.enabled);
        action->setCheckable(each.checkable);
        action->setChecked(each.checked);
        QObject::connect(action, &QAction::triggered, &menu, [this, command = each.command] { chosen(command); });
    }
}

void QtDialogs::showMenu(const std::vector<MenuEntry>& entries) {
    menu_ = std::make_unique<QMenu>();
    fill(*menu_, entries);
    QObject::connect(menu_.get(), &QMenu::aboutToHide, menu_.get(),
                     [this] { context_.graveyard.lay(std::shared_ptr<QMenu>(std::move(menu_))); });
    menu_->popup(QCursor::pos());
}

void QtDialogs::help() {
    if (!manualWindow_) {
        manualWindow_ = std::make_unique<HelpWindow>(QFile::decodeName(QByteArray::fromStdString(manual())));
        manualWindow_->closed = [this] {
            context_.graveyard.lay(std::shared_ptr<HelpWindow>(std::move(manualWindow_)));
        };
    }
    manualWindow_->show();
    manualWindow_->raise();
    manualWindow_->activateWindow();
}

}  // namespace corvane
