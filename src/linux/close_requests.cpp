// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/close_requests.h"

#include <xcb/xcb.h>

#include <QApplication>
#include <QWidget>
#include <cstdlib>
#include <string>

namespace corvane {

namespace {

/// The message is the window manager's "please close" to a window.
bool isDeleteWindow(const xcb_client_message_event_t& message) {
    const auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || message.format != 32) return false;
    static const xcb_atom_t deleteWindow = [connection = x11->connection()] {
        const std::string name = "WM_DELETE_WINDOW";
        const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
        auto* const reply = xcb_intern_atom_reply(connection, cookie, nullptr);
        const xcb_atom_t atom = reply != nullptr ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        std::free(reply);  // NOLINT: the library's own allocation
        return atom;
    }();
    return message.data.data32[0] == deleteWindow;
}

}  // namespace

CloseRequests::CloseRequests(std::function<const QWidget*()> box, std::function<void()> asked)
    : box_(std::move(box)), asked_(std::move(asked)) {
    qApp->installNativeEventFilter(this);
}

CloseRequests::~CloseRequests() { qApp->removeNativeEventFilter(this); }

bool CloseRequests::nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/) {
    if (type != "xcb_generic_event_t") return false;
    const QWidget* const box = box_();
    if (box == nullptr) return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE) return false;
    const auto& client = *reinterpret_cast<const xcb_client_message_event_t*>(event);
    if (!isDeleteWindow(client)) return false;
    if (box->winId() == client.window) return false;  // the box itself answers
    asked_();
    return true;
}

}  // namespace corvane
