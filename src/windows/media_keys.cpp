// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/media_keys.h"

#include <array>

namespace corvane {

namespace {

using Command = MediaSession::Answer (MediaSession::*)();

struct Key {
    int code;
    Command command;
};

constexpr std::array kKeys{Key{VK_MEDIA_PLAY_PAUSE, &MediaSession::playPause}, Key{VK_MEDIA_STOP, &MediaSession::stop},
                           Key{VK_MEDIA_NEXT_TRACK, &MediaSession::next},
                           Key{VK_MEDIA_PREV_TRACK, &MediaSession::previous}};

}  // namespace

MediaKeys::MediaKeys(MediaSession& session, WindowsLoop& loop)
    : session_(session),
      loop_(loop),
      window_([this](UINT message, WPARAM key, LPARAM) { return pressed(message, key); }) {
    for (const Key& each : kKeys) {
        RegisterHotKey(window_.handle(), each.code, MOD_NOREPEAT, static_cast<UINT>(each.code));
    }
}

MediaKeys::~MediaKeys() {
    for (const Key& each : kKeys) UnregisterHotKey(window_.handle(), each.code);
}

std::optional<LRESULT> MediaKeys::pressed(UINT message, WPARAM key) {
    if (message != WM_HOTKEY) return std::nullopt;
    for (const Key& each : kKeys) {
        if (static_cast<WPARAM>(each.code) != key) continue;
        loop_.post([this, command = each.command, alive = std::weak_ptr<bool>(alive_)] {
            if (!alive.expired()) (session_.*command)();
        });
    }
    return 0;
}

}  // namespace corvane
