// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/plain_child.h"

#include <QEvent>
#include <QGuiApplication>
#include <array>
#include <cstdint>
#include <cstdlib>

namespace corvane {

std::unique_ptr<PlainChild> PlainChild::make(QWidget& window) {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || window.windowHandle() == nullptr) return nullptr;
    return std::unique_ptr<PlainChild>(new PlainChild(x11->connection(), *window.windowHandle()));
}

PlainChild::PlainChild(xcb_connection_t* connection, QWindow& parent)
    : connection_(connection), parent_(&parent), number_(xcb_generate_id(connection)) {
    // No background: until something is drawn in it, what was there is seen.
    const std::array<std::uint32_t, 1> values{XCB_BACK_PIXMAP_NONE};
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, number_, static_cast<xcb_window_t>(parent.winId()), 0, 0, 1, 1,
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXMAP, values.data());
    parent.installEventFilter(this);
}

PlainChild::~PlainChild() {
    // With its parent's it has gone already; the display says so, and nobody minds.
    if (parent_ != nullptr && parent_->handle() != nullptr) xcb_destroy_window(connection_, number_);
    xcb_flush(connection_);
}

bool PlainChild::place(const QRect& place) {
    if (shown_ && place == place_) return false;
    if (place != place_) {
        const std::array<std::uint32_t, 4> values{
            static_cast<std::uint32_t>(place.x()), static_cast<std::uint32_t>(place.y()),
            static_cast<std::uint32_t>(place.width()), static_cast<std::uint32_t>(place.height())};
        xcb_configure_window(
            connection_, number_,
            XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
            values.data());
    }
    if (!shown_) xcb_map_window(connection_, number_);
    place_ = place;
    shown_ = true;
    settle();
    return true;
}

void PlainChild::hide() {
    if (!shown_) return;
    shown_ = false;
    if (parent_ != nullptr && parent_->handle() != nullptr) xcb_unmap_window(connection_, number_);
    xcb_flush(connection_);
}

void PlainChild::settle() const {
    std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

bool PlainChild::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parent_ && event->type() == QEvent::Expose && !parent_->isExposed()) hide();
    return false;
}

}  // namespace corvane
