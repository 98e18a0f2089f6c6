// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <mpv/client.h>
#include <mpv/render.h>
#include <mpv/stream_cb.h>

namespace corvane {

// The functions in use.
#define CORVANE_MPV(X)                        \
    X(mpv_create)                             \
    X(mpv_initialize)                         \
    X(mpv_terminate_destroy)                  \
    X(mpv_set_option_string)                  \
    X(mpv_observe_property)                   \
    X(mpv_get_property_async)                 \
    X(mpv_set_property_async)                 \
    X(mpv_command_async)                      \
    X(mpv_set_wakeup_callback)                \
    X(mpv_hook_add)                           \
    X(mpv_hook_continue)                      \
    X(mpv_wait_event)                         \
    X(mpv_error_string)                       \
    X(mpv_client_api_version)                 \
    X(mpv_stream_cb_add_ro)                   \
    X(mpv_render_context_create)              \
    X(mpv_render_context_set_update_callback) \
    X(mpv_render_context_update)              \
    X(mpv_render_context_render)              \
    X(mpv_render_context_report_swap)         \
    X(mpv_render_context_free)

/// The movie library, loaded when a movie comes next, or is opened: with all that it brings it would cost a panel
/// that only waits much of its memory, and time at every start.
struct MovieLibrary {
#define CORVANE_DECLARE(name) decltype(&::name) name = nullptr;
    CORVANE_MPV(CORVANE_DECLARE)
#undef CORVANE_DECLARE
};

/// Loads the library at the first call, and tries again while it could not. False: it is not there.
bool loadMovieLibrary();
/// Its functions, after loadMovieLibrary() succeeded.
const MovieLibrary& movieLibrary();

}  // namespace corvane
