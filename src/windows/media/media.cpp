// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/media/media.h"

#include "windows/media/movies/windows_movie_control.h"
#include "windows/media/sound/windows_mci_control.h"

namespace corvane {

namespace {

class WindowsMedia : public Media {
public:
    WindowsMedia(WindowsLoop& loop, Windows& windows) : station_(loop), windows_(windows) {}

    std::unique_ptr<MciControl> makeMciControl() override { return std::make_unique<WindowsMciControl>(station_); }
    std::unique_ptr<MovieControl> makeMovieControl(Form& form) override {
        return std::make_unique<WindowsMovieControl>(form, station_.loop, station_.post, windows_);
    }

private:
    MciStation station_;
    Windows& windows_;
};

}  // namespace

std::unique_ptr<Media> makeMedia(WindowsLoop& loop, Windows& windows) {
    return std::make_unique<WindowsMedia>(loop, windows);
}

}  // namespace corvane
