// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

struct mpv_handle;

namespace corvane {

struct DestroyMovieHandle {
    /// Waits for what is being decoded.
    void operator()(mpv_handle* handle) const;
};
/// A player of the movie library, as the library knows it.
using MovieHandle = std::unique_ptr<mpv_handle, DestroyMovieHandle>;

/// Larger pictures are not decoded: some ten are held at once.
constexpr int kMostMoviePixels = 4096 * 2304;

/// What the library plays sound through: a server, or nothing where there is none; and nothing at all.
constexpr const char* kMovieSoundOutput = "pulse,null";
constexpr const char* kNoMovieSound = "null";

/// How long making one may take before it counts as refused.
constexpr std::chrono::seconds kMovieHandlePatience{2};

/// A player that reads local files and nothing else, and makes no window. Null: `reason` says why, in words. Never
/// waits longer than the patience: the library hangs where the system refuses it a thread.
MovieHandle makeMovieHandle(std::string& reason);

/// Tells every option to the setter, which returns below 0 for one that it does not know or take. The first one without
/// which a movie must not be played and that was refused; empty when there is none.
std::string refusedMovieOption(const std::function<int(const char* name, const char* value)>& set);

}  // namespace corvane
