// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/movie_handle.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

constexpr int kUnknown = -5;

std::map<std::string, std::string> toldOptions() {
    std::map<std::string, std::string> told;
    EXPECT_EQ(refusedMovieOption([&told](const char* name, const char* value) {
                  told[name] = value;
                  return 0;
              }),
              "");
    return told;
}

/// MEDIA-72: A movie is refused where the library does not take an option that keeps the file to itself
TEST(MovieHandles, AMovieIsRefusedWhereOneOptionOfSafetyIsNotKnown) {
    for (const char* const name :
         {"config", "load-scripts", "ytdl", "access-references", "demuxer-lavf-o", "stream-lavf-o", "autoload-files",
          "ordered-chapters", "resume-playback", "save-position-on-quit", "vo", "vd-lavc-o", "demuxer-max-bytes"}) {
        const auto refused = refusedMovieOption(
            [name](const char* told, const char* /*value*/) { return std::string(told) == name ? kUnknown : 0; });
        EXPECT_EQ(refused, name);
    }
}

/// MEDIA-72
TEST(MovieHandles, AMovieIsPlayedWhereAnOptionOfComfortIsNotKnown) {
    const std::set<std::string> comfort{"osc", "osd-level", "sws-fast", "audio-client-name", "stop-screensaver"};
    EXPECT_EQ(refusedMovieOption([&comfort](const char* name, const char* /*value*/) {
                  return comfort.contains(name) ? kUnknown : 0;
              }),
              "");
}

/// MEDIA-72
TEST(MovieHandles, NothingButTheFileItselfIsReachedAndNothingIsWritten) {
    const auto told = toldOptions();
    for (const char* const off : {"config", "load-scripts", "ytdl", "access-references", "autoload-files",
                                  "ordered-chapters", "resume-playback", "save-position-on-quit"})
        EXPECT_EQ(told.at(off), "no") << off;
    EXPECT_EQ(told.at("demuxer-lavf-o"), "protocol_whitelist=[file]");
    EXPECT_EQ(told.at("stream-lavf-o"), "protocol_whitelist=[file]");
}

/// MEDIA-72
TEST(MovieHandles, TheLibraryThatIsThereTakesAllThatMatters) {
    test::offscreenApplication();
    std::string reason;
    EXPECT_NE(makeMovieHandle(reason), nullptr) << reason;
    EXPECT_EQ(reason, "");
}

}  // namespace
}  // namespace corvane
