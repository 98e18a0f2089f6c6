// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractNativeEventFilter>
#include <functional>

class QWidget;

namespace corvane {

/// Requests to close that Qt would keep from a window: those of the window manager while a box is up.
class CloseRequests : public QAbstractNativeEventFilter {
public:
    /// box: the box that is up, null when none is; asked: the program is asked to close.
    CloseRequests(std::function<const QWidget*()> box, std::function<void()> asked);
    ~CloseRequests() override;

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

private:
    std::function<const QWidget*()> box_;
    std::function<void()> asked_;
};

}  // namespace corvane
