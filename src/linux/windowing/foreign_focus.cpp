// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/foreign_focus.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QWindow>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

namespace corvane {

namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }  // NOLINT: the library's own allocation
};

template <class T>
std::unique_ptr<T, Free> owned(T* reply) {
    return std::unique_ptr<T, Free>(reply);
}

xcb_atom_t atom(xcb_connection_t* connection, const std::string& name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const auto reply = owned(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// The window that the window manager calls the active one; empty: it says nothing.
std::optional<xcb_window_t> activeWindow(xcb_connection_t* connection, xcb_window_t root) {
    static const xcb_atom_t property = atom(connection, "_NET_ACTIVE_WINDOW");
    const auto cookie = xcb_get_property(connection, 0, root, property, XCB_ATOM_WINDOW, 0, 1);
    const auto reply = owned(xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) < 4) return std::nullopt;
    return *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
}

xcb_window_t inputFocus(xcb_connection_t* connection) {
    const auto reply = owned(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

bool otherProgramHasFocus() {
    static bool hadFocus = false;  // a program that has just been started is what the user waits for
    if (QGuiApplication::focusWindow() != nullptr) hadFocus = true;
    if (!hadFocus || QGuiApplication::focusWindow() != nullptr) return false;
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* const connection = x11 != nullptr ? x11->connection() : nullptr;
    if (connection == nullptr) return false;  // no X server, or no screen at all
    const xcb_setup_t& setup = *xcb_get_setup(connection);
    const xcb_window_t root = xcb_setup_roots_iterator(&setup).data->root;
    const xcb_window_t focused = activeWindow(connection, root).value_or(inputFocus(connection));
    const bool isNobody = focused == XCB_WINDOW_NONE || focused == XCB_INPUT_FOCUS_POINTER_ROOT || focused == root;
    // A client's windows bear numbers of its own range.
    return !isNobody && (focused & ~setup.resource_id_mask) != setup.resource_id_base;
}

}  // namespace

bool willLeaveFocus(QWidget& window) {
    const bool leaves = otherProgramHasFocus();
    window.setAttribute(Qt::WA_ShowWithoutActivating, leaves);
    // The attribute is looked at when the window is made alone; one that is shown again keeps what it was made with.
    if (window.windowHandle() != nullptr) window.windowHandle()->setProperty("_q_showWithoutActivating", leaves);
    return leaves;
}

}  // namespace corvane
