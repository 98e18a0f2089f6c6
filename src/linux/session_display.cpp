// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/session_display.h"

#include <algorithm>

#include "types/printable.h"

namespace corvane {

namespace {

constexpr std::size_t kLongest = 200;  // of a display's name

/// The display alone: all its screens are one session, and the ways to this machine are one.
std::string displayOf(std::string_view named) {
    for (const std::string_view here : {"unix:", "localhost:0"}) {
        if (named.starts_with(here)) named.remove_prefix(here.find(':'));
    }
    const std::size_t colon = named.rfind(':');
    if (colon == std::string_view::npos) return std::string(named.substr(0, kLongest));
    return std::string(named.substr(0, std::min(named.find('.', colon), kLongest)));
}

std::string lineOf(std::string_view text, std::string_view key) {
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        if (line.starts_with(key)) return std::string(line.substr(key.size(), kLongest));
    }
    return {};
}

constexpr std::string_view kX11 = "X11 ", kWayland = "Wayland ";

}  // namespace

SessionDisplay SessionDisplay::of(const Displays& there) {
    return {printable(displayOf(there.x11)), printable(there.wayland.substr(0, kLongest))};
}

SessionDisplay SessionDisplay::read(std::string_view text) { return {lineOf(text, kX11), lineOf(text, kWayland)}; }

std::string SessionDisplay::text() const {
    std::string lines;
    if (!x11.empty()) lines += std::string(kX11) + x11 + '\n';
    if (!wayland.empty()) lines += std::string(kWayland) + wayland + '\n';
    return lines;
}

bool SessionDisplay::isOther(const SessionDisplay& there) const {
    if (!x11.empty() && !there.x11.empty()) return x11 != there.x11;
    return !wayland.empty() && !there.wayland.empty() && wayland != there.wayland;
}

std::string SessionDisplay::name() const { return printable(!x11.empty() ? x11 : wayland); }

}  // namespace corvane
