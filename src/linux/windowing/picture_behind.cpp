// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/picture_behind.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QSysInfo>
#include <QWindow>
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

namespace corvane {

namespace {

constexpr std::uint32_t kMostBytes = 0x3ff00;  // of pixels in one request: it must not be a big one
constexpr std::uint8_t kDepth = 24;
constexpr std::uint32_t kMask = XCB_CW_BACK_PIXMAP | XCB_CW_BIT_GRAVITY;

/// The connection, and the window's number on it; null: it is no window of X11, or not yet.
xcb_connection_t* connectionOf(const QWidget& window, xcb_window_t& number) {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || window.windowHandle() == nullptr) return nullptr;
    number = static_cast<xcb_window_t>(window.windowHandle()->winId());
    return x11->connection();
}

bool isOfDepth(xcb_connection_t* connection, xcb_window_t number) {
    auto* const answer = xcb_get_geometry_reply(connection, xcb_get_geometry(connection, number), nullptr);
    const bool is = answer != nullptr && answer->depth == kDepth;
    std::free(answer);
    return is;
}

bool takesPixelsOf32Bits(xcb_connection_t* connection) {
    const xcb_setup_t* const setup = xcb_get_setup(connection);
    constexpr bool kLittle = QSysInfo::ByteOrder == QSysInfo::LittleEndian;
    if (setup->image_byte_order != (kLittle ? XCB_IMAGE_ORDER_LSB_FIRST : XCB_IMAGE_ORDER_MSB_FIRST)) return false;
    for (auto each = xcb_setup_pixmap_formats_iterator(setup); each.rem > 0; xcb_format_next(&each)) {
        if (each.data->depth == kDepth) return each.data->bits_per_pixel == 32;
    }
    return false;
}

void putPixels(xcb_connection_t* connection, xcb_pixmap_t pixmap, const QImage& picture) {
    const xcb_gcontext_t context = xcb_generate_id(connection);
    xcb_create_gc(connection, context, pixmap, 0, nullptr);
    const auto line = static_cast<std::uint32_t>(picture.bytesPerLine());
    const int step = static_cast<int>(std::max<std::uint32_t>(kMostBytes / line, 1));
    for (int y = 0; y < picture.height(); y += step) {
        const int rows = std::min(step, picture.height() - y);
        xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context,
                      static_cast<std::uint16_t>(picture.width()), static_cast<std::uint16_t>(rows), 0,
                      static_cast<std::int16_t>(y), 0, kDepth, line * static_cast<std::uint32_t>(rows),
                      picture.constScanLine(y));
    }
    xcb_free_gc(connection, context);
}

}  // namespace

void layPictureBehind(const QWidget& window, const QImage& picture) {
    xcb_window_t number = XCB_WINDOW_NONE;
    xcb_connection_t* const connection = connectionOf(window, number);
    if (connection == nullptr || picture.depth() != 32) return;
    if (!takesPixelsOf32Bits(connection) || !isOfDepth(connection, number)) return;
    const xcb_pixmap_t pixmap = xcb_generate_id(connection);
    xcb_create_pixmap(connection, kDepth, pixmap, number, static_cast<std::uint16_t>(picture.width()),
                      static_cast<std::uint16_t>(picture.height()));
    putPixels(connection, pixmap, picture);
    // With another size all of the window is the picture at once, nothing of what it showed before.
    const std::array<std::uint32_t, 2> values{pixmap, XCB_GRAVITY_BIT_FORGET};
    xcb_change_window_attributes(connection, number, kMask, values.data());
    xcb_free_pixmap(connection, pixmap);  // the window keeps it
}

void takePictureAway(const QWidget& window) {
    xcb_window_t number = XCB_WINDOW_NONE;
    xcb_connection_t* const connection = connectionOf(window, number);
    if (connection == nullptr) return;
    const std::array<std::uint32_t, 2> values{XCB_BACK_PIXMAP_NONE, XCB_GRAVITY_NORTH_WEST};
    xcb_change_window_attributes(connection, number, kMask, values.data());
}

}  // namespace corvane
