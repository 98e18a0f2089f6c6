// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/movies/graphics_frames.h"

#include <QWidget>
#include <array>
#include <string>
#include <utility>

#include "media/movies/movie_end.h"
#include "media/movies/movie_library.h"

namespace corvane {

namespace {

constexpr std::chrono::milliseconds kLeaves{500};  // what is being shown, with a screen that is slow
constexpr std::chrono::milliseconds kEnds{1'000};
constexpr std::uint64_t kTaken = std::uint64_t{99} << 32U;  // a tag that no other request has
constexpr const char* kAboveNumber = "0";                   // of the pictures that the library lays on its own

}  // namespace

GraphicsFrames::GraphicsFrames(mpv_handle* player, bool evenBySoftware, std::function<void()> announce)
    : player_(player),
      announce_(std::move(announce)),
      drawing_(std::make_shared<GraphicsDrawing>(player, evenBySoftware, announce_)) {
    look_->setSingleShot(true);
    look_->setInterval(GraphicsDrawing::kPatience + kLeaves);
    QObject::connect(look_.get(), &QTimer::timeout, look_.get(), [this] {
        if (state() == State::Lost) announce_();
    });
    refused_ = !drawing_->begin();
    lookLater();
}

GraphicsFrames::~GraphicsFrames() = default;

MovieFrames::State GraphicsFrames::state() const {
    if (refused_ || drawing_->hangs()) return State::Lost;
    switch (drawing_->state()) {
        case GraphicsDrawing::State::Beginning:
            return State::Beginning;
        case GraphicsDrawing::State::Drawing:
            return State::Ready;
        default:
            return State::Lost;
    }
}

void GraphicsFrames::hush() {
    look_.reset();
    leave();
    drawing_->hush();
    announce_ = [] {};
}

bool GraphicsFrames::end() {
    if (drawing_->state() == GraphicsDrawing::State::Drawing && !drawing_->hangs()) endMoviePicture(player_, [] {});
    return refused_ || drawing_->end(kEnds);
}

void GraphicsFrames::setPicture(PictureSize pixels) {
    picture_ = {pixels.width, pixels.height};
    waited_ = pixels.pixels() != 0;
    if (!waited_) {
        drawing_->forget();
        leave();
    } else if (drawing_->hasFrame()) {
        announce_();
    }
}

bool GraphicsFrames::update() { return drawing_->hasFrame() && std::exchange(waited_, false); }

void GraphicsFrames::lookLater() {
    if (look_ && !look_->isActive()) look_->start();
}

void GraphicsFrames::showIn(QWidget& window, const QRect& area, const Above& above) {
    if (!drawing_->hasFrame() || state() != State::Ready) return leave();
    const double ratio = window.devicePixelRatioF();
    const QRect place = rectOf(frameShown({picture_, pixelsOf(area), ratio}));
    if (place.isEmpty()) return leave();
    if (!child_ || !child_->isOf(window)) {
        leave();
        child_ = PlainChild::make(window);
        refused_ = refused_ || !child_;
        if (refused_) return announce_();
    }
    if (child_->place(place) || shown_ != place) drawing_->showIn(child_->number(), {place.width(), place.height()});
    shown_ = place;
    layAbove(place, ratio, above);
    lookLater();
}

void GraphicsFrames::leave() {
    dropAbove();
    shown_ = {};
    if (!child_) return;
    child_->hide();
    drawing_->showIn(0, {});
    // Its window may go now. What hangs is left to draw in one that is no more.
    drawing_->settle(drawing_->hangs() ? std::chrono::milliseconds(0) : kLeaves);
    child_.reset();
}

bool GraphicsFrames::handle(const mpv_event& event) {
    if (event.event_id != MPV_EVENT_COMMAND_REPLY || event.reply_userdata != kTaken) return false;
    if (!handed_.empty()) handed_.pop_front();
    return true;
}

/// The library copies the picture before it answers, later.
void GraphicsFrames::layAbove(const QRect& place, double ratio, const Above& above) {
    if (!above) return dropAbove();
    QImage picture(place.size(), QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull()) return dropAbove();
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.translate(-QPointF(place.topLeft()) / ratio);
    above(painter);
    painter.end();
    if (picture == above_) return;
    above_ = std::move(picture);
    const std::string bytes = "&" + std::to_string(reinterpret_cast<std::uintptr_t>(above_.constBits()));
    const std::string width = std::to_string(place.width()), height = std::to_string(place.height());
    const std::string line = std::to_string(above_.bytesPerLine());
    std::array<const char*, 11> words{"overlay-add", kAboveNumber,   "0",          "0",    bytes.c_str(), "0", "bgra",
                                      width.c_str(), height.c_str(), line.c_str(), nullptr};
    if (movieLibrary().mpv_command_async(player_, kTaken, words.data()) >= 0) handed_.push_back(above_);
}

void GraphicsFrames::dropAbove() {
    if (above_.isNull()) return;
    std::array<const char*, 3> words{"overlay-remove", kAboveNumber, nullptr};
    movieLibrary().mpv_command_async(player_, 0, words.data());
    above_ = {};
}

}  // namespace corvane
