// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QVariantMap>
#include <functional>
#include <memory>

namespace corvane {

/// Texts and numbers of what a manager of settings tells programs (XSETTINGS), by their names. Bytes of any other form
/// read as far as they make sense.
QVariantMap readXSettings(const QByteArray& bytes);

/// Follows the manager of settings of an X11 display, also one that comes later. User-interface thread.
class XSettings : public QAbstractNativeEventFilter {
public:
    using Told = std::function<void(const QVariantMap&)>;

    /// Null where the application's display is none of X11. told: all that is told now; at once where there is a
    /// manager already, and whenever it changes.
    static std::unique_ptr<XSettings> ofDisplay(Told told);
    XSettings(xcb_connection_t* display, xcb_window_t root, Told told);
    ~XSettings() override;

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

private:
    void findManager();
    void read();

    xcb_connection_t* const display_;
    const xcb_window_t root_;
    const xcb_atom_t selection_, settings_, manager_;
    xcb_window_t owner_ = XCB_WINDOW_NONE;
    Told told_;
};

}  // namespace corvane
