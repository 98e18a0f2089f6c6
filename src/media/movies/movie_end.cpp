// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/movie_end.h"

#include <array>
#include <chrono>
#include <cstdint>

#include "media/movies/movie_library.h"

namespace corvane {

namespace {

constexpr std::chrono::milliseconds kPictureEnds{500};  // a reader that hangs may keep it from ending at all
constexpr double kLookSeconds = 0.005;

}  // namespace

void endMoviePicture(mpv_handle* player, const std::function<void()>& take) {
    constexpr std::uint64_t kEnded = ~std::uint64_t{0};  // a tag that no other request has
    std::array<const char*, 4> words{"set", "vid", "no", nullptr};
    if (movieLibrary().mpv_command_async(player, kEnded, words.data()) < 0) return;
    const auto due = std::chrono::steady_clock::now() + kPictureEnds;
    while (std::chrono::steady_clock::now() < due) {
        take();
        const mpv_event* const event = movieLibrary().mpv_wait_event(player, kLookSeconds);
        if (event->event_id == MPV_EVENT_COMMAND_REPLY && event->reply_userdata == kEnded) return;
        if (event->event_id == MPV_EVENT_SHUTDOWN) return;
    }
}

}  // namespace corvane
