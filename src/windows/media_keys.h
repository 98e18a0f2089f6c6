// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/media_session.h"
#include "winapi/message_window.h"
#include "winapi/program/windows_loop.h"

namespace corvane {

/// The keyboard's play, stop, next and previous keys, wherever the focus is; those that another program holds already
/// stay its own.
class MediaKeys {
public:
    MediaKeys(MediaSession& session, WindowsLoop& loop);
    MediaKeys(const MediaKeys&) = delete;
    MediaKeys& operator=(const MediaKeys&) = delete;
    ~MediaKeys();

private:
    std::optional<LRESULT> pressed(UINT message, WPARAM key);

    MediaSession& session_;
    WindowsLoop& loop_;
    MessageWindow window_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace corvane
