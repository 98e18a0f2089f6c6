// SPDX-License-Identifier: GPL-3.0-or-later
// The least that a program of the same tool kit does: one frameless window of the panel's size in one colour. What it
// costs in time and memory cannot be saved by the player.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QWidget window(nullptr, Qt::FramelessWindowHint);
    window.setPalette(QPalette(QColor(200, 60, 60)));
    window.setAutoFillBackground(true);
    window.setGeometry(20, 20, 512, 128);
    window.show();
    return QApplication::exec();
}
