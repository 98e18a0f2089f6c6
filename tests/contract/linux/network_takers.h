// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "contract/linux/mci_rig.h"
#include "contract/linux/network_lures.h"
#include "media/movies/movie_library.h"
#include "media/sound/av_library.h"

/// The libraries that play, told nothing of what they may not do: what takes a lure, so that one that calls nobody in
/// the player is known to be refused there, and not to be broken.
namespace corvane::test {

/// Who takes a lure at its word when nothing forbids it. Nobody: no library here does; others read such lists.
enum class Taker { Sounds, Movies, Nobody };

/// Of lists of streams under a name of another kind: from version 7 on, FFmpeg knows them by their own names alone.
constexpr Taker kMisnamedLists = LIBAVFORMAT_VERSION_MAJOR < 61 ? Taker::Sounds : Taker::Nobody;

/// Those that somebody here takes.
template <class Lures>
auto takenOf(const Lures& lures) {
    std::vector<std::remove_cvref_t<decltype(lures[0])>> taken;
    for (const auto& lure : lures)
        if (lure.taker != Taker::Nobody) taken.push_back(lure);
    return taken;
}

/// A file's name as a part of a test's.
inline std::string testName(std::string name) {
    name[name.find('.')] = '_';
    return name;
}

/// Opens the file with the sound libraries as they come.
inline void openFreelyAsSound(const std::string& path) {
    AVFormatContext* file = nullptr;
    if (!loadAv()) return;
    AVDictionary* options = nullptr;
    av().av_dict_set(&options, "protocol_whitelist", "file,http,tcp,udp,rtp,crypto", 0);
    if (av().avformat_open_input(&file, path.c_str(), nullptr, &options) >= 0) {
        av().avformat_find_stream_info(file, nullptr);
        av().avformat_close_input(&file);
    }
    av().av_dict_free(&options);
}

/// Opens the file with the movie library, which may follow lists, until `over`.
inline void openFreelyAsMovie(const std::string& path, const std::function<bool()>& over) {
    if (!loadMovieLibrary()) return;
    const MovieLibrary& library = movieLibrary();
    mpv_handle* const player = library.mpv_create();
    if (player == nullptr) return;
    for (const auto& [name, value] : {std::pair{"config", "no"},
                                      {"vo", "null"},
                                      {"ao", "null"},
                                      {"ytdl", "no"},
                                      {"terminal", "no"},
                                      {"load-unsafe-playlists", "yes"}})
        library.mpv_set_option_string(player, name, value);
    if (library.mpv_initialize(player) == 0) {
        const char* command[] = {"loadfile", path.c_str(), nullptr};
        library.mpv_command_async(player, 0, command);
        waitUntil(over, 8000);
    }
    library.mpv_terminate_destroy(player);
}

/// Whether somebody was called while the taker had the file.
inline bool takes(Taker taker, const std::string& path, Listener& listener) {
    const auto called = [&] { return listener.wasReached(0); };
    if (taker == Taker::Movies) {
        openFreelyAsMovie(path, called);
        return called();
    }
    std::thread opening([path] { openFreelyAsSound(path); });
    const bool taken = waitUntil(called, 8000);
    listener.hangUp();  // nobody answers: this is what lets the library go on
    opening.join();
    return taken;
}

}  // namespace corvane::test
