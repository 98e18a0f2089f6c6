// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/movies/movie_frames.h"

#include <QPaintDevice>
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>

#include "linux/media/movies/fitted_area.h"
#include "media/movies/movie_library.h"

namespace corvane {

namespace {

constexpr std::chrono::milliseconds kPictureEnds{500};  // a reader that hangs may keep it from ending at all
constexpr double kLookSeconds = 0.005;
constexpr std::size_t kLineAlignment = 64;  // the scaler's fast paths want it

char* apiName() {
    static std::array<char, 3> name{'s', 'w', '\0'};
    return name.data();
}

char* formatName() {
    static std::array<char, 5> name{'b', 'g', 'r', '0', '\0'};  // the bytes of QImage::Format_RGB32
    return name.data();
}

}  // namespace

MovieFrames::MovieFrames(mpv_handle* player, std::function<void()> announce)
    : player_(player), announce_(std::move(announce)), pixels_(nullptr, std::free) {
    std::array<mpv_render_param, 2> params{
        {{MPV_RENDER_PARAM_API_TYPE, apiName()}, {MPV_RENDER_PARAM_INVALID, nullptr}}};
    if (movieLibrary().mpv_render_context_create(&context_, player, params.data()) < 0) {
        context_ = nullptr;
        return;
    }
    movieLibrary().mpv_render_context_set_update_callback(
        context_, [](void* self) { static_cast<MovieFrames*>(self)->announce_(); }, this);
}

MovieFrames::~MovieFrames() {
    if (context_ == nullptr) return;
    hush();
    endPicture();
    movieLibrary().mpv_render_context_free(context_);
}

/// Ends the movie's picture while frames are still taken. The library's own end takes none: it waits until one that is
/// ready is given up, for 200 ms or longer, in some versions for ever.
void MovieFrames::endPicture() {
    constexpr std::uint64_t kEnded = ~std::uint64_t{0};  // a tag that no other request has
    std::array<const char*, 4> words{"set", "vid", "no", nullptr};
    if (movieLibrary().mpv_command_async(player_, kEnded, words.data()) < 0) return;
    const auto due = std::chrono::steady_clock::now() + kPictureEnds;
    while (std::chrono::steady_clock::now() < due) {
        if ((movieLibrary().mpv_render_context_update(context_) & MPV_RENDER_UPDATE_FRAME) != 0) draw(QSize());
        const mpv_event* const event = movieLibrary().mpv_wait_event(player_, kLookSeconds);
        if (event->event_id == MPV_EVENT_COMMAND_REPLY && event->reply_userdata == kEnded) return;
        if (event->event_id == MPV_EVENT_SHUTDOWN) return;
    }
}

void MovieFrames::hush() {
    if (context_ != nullptr) movieLibrary().mpv_render_context_set_update_callback(context_, nullptr, nullptr);
}

void MovieFrames::setPicture(QSize pixels) {
    if (pixels.isEmpty()) seen_ = false;
    picture_ = pixels;
    stale_ = true;
}

bool MovieFrames::update() {
    if (context_ == nullptr || (movieLibrary().mpv_render_context_update(context_) & MPV_RENDER_UPDATE_FRAME) == 0)
        return false;
    seen_ = true;
    stale_ = true;
    draw(picture_.isEmpty() || target_.isEmpty() ? QSize() : fittedInto(picture_, QRectF({}, target_)).size().toSize());
    return !picture_.isEmpty();
}

void MovieFrames::draw(QSize pixels) {
    // A frame that is not taken in time holds the player up: take it without drawing when nobody sees it.
    int skip = pixels.isEmpty() ? 1 : 0;
    int wait = 0;
    std::array<int, 2> size{std::max(pixels.width(), 1), std::max(pixels.height(), 1)};
    const std::size_t used = static_cast<std::size_t>(size[0]) * 4;
    std::size_t line = (used + kLineAlignment - 1) / kLineAlignment * kLineAlignment;
    if (image_.size() != pixels && skip == 0) {
        const std::size_t bytes = line * static_cast<std::size_t>(size[1]);
        image_ = QImage();
        pixels_.reset(static_cast<std::uint8_t*>(std::aligned_alloc(kLineAlignment, bytes)));
        if (!pixels_) return;
        image_ = QImage(pixels_.get(), size[0], size[1], static_cast<qsizetype>(line), QImage::Format_RGB32);
    }
    std::array<mpv_render_param, 7> params{{{MPV_RENDER_PARAM_SW_SIZE, size.data()},
                                            {MPV_RENDER_PARAM_SW_FORMAT, formatName()},
                                            {MPV_RENDER_PARAM_SW_STRIDE, &line},
                                            {MPV_RENDER_PARAM_SW_POINTER, pixels_.get()},
                                            {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &wait},
                                            {MPV_RENDER_PARAM_SKIP_RENDERING, &skip},
                                            {MPV_RENDER_PARAM_INVALID, nullptr}}};
    if (movieLibrary().mpv_render_context_render(context_, params.data()) < 0) return;
    if (skip == 0) stale_ = false;
}

void MovieFrames::paint(QPainter& painter, const QRect& area) {
    if (!seen_ || picture_.isEmpty() || area.isEmpty()) return;
    const double ratio = painter.device()->devicePixelRatio();
    const QSizeF deviceArea = target_.isEmpty() ? QSizeF(area.size()) * ratio : QSizeF(target_);
    const QSize pixels = fittedInto(picture_, QRectF({}, deviceArea)).size().toSize();
    if (pixels.isEmpty()) return;
    if (stale_ || image_.size() != pixels) draw(pixels);
    if (image_.isNull()) return;
    QRectF place = fittedInto(picture_, QRectF(area));
    // On whole device pixels, so that a frame drawn in its painted size is not filtered again.
    const auto whole = [ratio](double value) { return std::round(value * ratio) / ratio; };
    place = QRectF(whole(place.x()), whole(place.y()), image_.width() / ratio, image_.height() / ratio);
    if (target_.isEmpty() || QSizeF(area.size()) * ratio != QSizeF(target_)) place = fittedInto(picture_, QRectF(area));
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, image_);
}

}  // namespace corvane
