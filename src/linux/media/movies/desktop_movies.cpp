// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/movies/desktop_movies.h"

#include <QGuiApplication>
#include <cstdlib>
#include <utility>

#include "drives/graphics_devices.h"
#include "linux/media/movies/graphics_frames.h"
#include "linux/media/movies/movie_desktop_control.h"
#include "linux/media/movies/painted_frames.h"

namespace corvane {

namespace {

MovieDrawing drawingFor(GraphicsChoice choice) {
    const char* const display = std::getenv("DISPLAY");
    const std::string platform = QGuiApplication::platformName().toStdString();
    if (!whyNoGraphics(choice, platform, display == nullptr ? "" : display, !graphicsDevices().empty()).empty())
        return MovieDrawing::Painted;
    return choice == GraphicsChoice::On ? MovieDrawing::ShownBySoftware : MovieDrawing::Shown;
}

std::unique_ptr<MovieFrames> makeFrames(MovieDrawing drawing, mpv_handle* player, std::function<void()> announce) {
    if (drawing == MovieDrawing::Painted) return std::make_unique<PaintedFrames>(player, std::move(announce));
    return std::make_unique<GraphicsFrames>(player, drawing == MovieDrawing::ShownBySoftware, std::move(announce));
}

}  // namespace

MovieMeans movieMeans(Timers& timers, const UiPost& post) { return {timers, post, makeFrames}; }

DesktopMovies::DesktopMovies(EventLoop& loop, Windows& windows, std::string ownFolder)
    : loop_(loop),
      windows_(windows),
      ownFolder_(std::move(ownFolder)),
      players_(movieMeans(timers_, post_), drawingFor) {}

std::unique_ptr<MovieControl> DesktopMovies::makeControl(Form& form) {
    return std::make_unique<DesktopMovieControl>(form, *this);
}

}  // namespace corvane
