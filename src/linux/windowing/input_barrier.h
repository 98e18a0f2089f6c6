// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace corvane {

/// While it lives, mouse, keys, drops and requests to close reach one window of the program alone, as with a modal one.
/// The tool kit gives a modal window the keyboard when it is shown, whoever has it; this leaves it where it is, until
/// the user turns to any window of the program: then the open one is raised and gets the keyboard.
class InputBarrier : public QObject {
public:
    explicit InputBarrier(QWidget& open);  ///< whose window has been made; outlives the barrier

protected:
    bool eventFilter(QObject* to, QEvent* event) override;

private:
    bool shuts(const QObject* window) const;
    void show();

    QWidget& open_;
};

}  // namespace corvane
