// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/media/media.h"

#include "winapi/pictures/windows_pictures.h"
#include "winapi/sound/sound_engines.h"
#include "winapi/sound/windows_mci_control.h"
#include "winapi/sound/windows_sound_devices.h"
#include "windows/media/movies/windows_movie_control.h"

namespace corvane {

namespace {

class WindowsMedia : public Media {
public:
    WindowsMedia(WindowsLoop& loop, Windows& windows) : station_(loop, loop.uiPost()), windows_(windows) {}

    bool plays(const std::string& extension) override { return playsToday(extension, MfAnswers::ofSystem()); }
    std::unique_ptr<MciControl> makeMciControl() override { return std::make_unique<WindowsMciControl>(station_); }
    std::unique_ptr<MovieControl> makeMovieControl(Form& form) override {
        return std::make_unique<WindowsMovieControl>(form, station_.loop, station_.post, windows_);
    }

private:
    MciStation station_;
    Windows& windows_;
};

}  // namespace

std::unique_ptr<Pictures> makePictures(const UiPost& post) { return std::make_unique<WindowsPictures>(post); }

std::unique_ptr<SoundDevices> makeSoundDevices(EventLoop& loop) { return std::make_unique<WindowsSoundDevices>(loop); }

std::unique_ptr<Media> makeMedia(WindowsLoop& loop, Windows& windows) {
    return std::make_unique<WindowsMedia>(loop, windows);
}

}  // namespace corvane
