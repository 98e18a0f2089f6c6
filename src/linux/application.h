// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>

namespace corvane {

/// The tool kit's application, whose windows come up also when no file descriptor is left.
class Application : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override;
};

}  // namespace corvane
