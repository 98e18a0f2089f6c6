// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/software_drawing.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "media/movies/movie_end.h"
#include "media/movies/movie_library.h"

namespace corvane {

namespace {

constexpr std::size_t kDeepPixelBytes = 8;

char* apiName() {
    static std::array<char, 3> name{'s', 'w', '\0'};
    return name.data();
}

char* formatName() {
    static std::array<char, 5> name{'b', 'g', 'r', '0', '\0'};
    return name.data();
}

char* deepFormatName() {
    static std::array<char, 7> name{'r', 'g', 'b', 'a', '6', '4', '\0'};
    return name.data();
}

std::size_t lineOf(int width, std::size_t pixelBytes) {
    constexpr std::size_t kWhole = SoftwareDrawing::kAlignment;  // the scaler's fast paths want it
    return (static_cast<std::size_t>(width) * pixelBytes + kWhole - 1) / kWhole * kWhole;
}

}  // namespace

SoftwareDrawing::SoftwareDrawing(mpv_handle* player, std::function<void()> announce)
    : player_(player), announce_(std::move(announce)), deep_(nullptr, std::free), lines_(nullptr, std::free) {
    std::array<mpv_render_param, 2> params{
        {{MPV_RENDER_PARAM_API_TYPE, apiName()}, {MPV_RENDER_PARAM_INVALID, nullptr}}};
    if (movieLibrary().mpv_render_context_create(&context_, player, params.data()) < 0) {
        context_ = nullptr;
        return;
    }
    movieLibrary().mpv_render_context_set_update_callback(
        context_, [](void* self) { static_cast<SoftwareDrawing*>(self)->announce_(); }, this);
}

SoftwareDrawing::~SoftwareDrawing() { end(); }

void SoftwareDrawing::hush() {
    if (context_ != nullptr) movieLibrary().mpv_render_context_set_update_callback(context_, nullptr, nullptr);
}

void SoftwareDrawing::end() {
    if (context_ == nullptr) return;
    hush();
    endMoviePicture(player_, [this] {
        if (update()) skip();
    });
    movieLibrary().mpv_render_context_free(std::exchange(context_, nullptr));
}

void SoftwareDrawing::setLight(const std::optional<FilmLight>& light) {
    if (light == std::exchange(light_, light)) return;
    toneMap_.reset();
    deep_.reset();
    if (light) toneMap_.emplace(*light);
}

SoftwareDrawing::Bytes SoftwareDrawing::linesOf(std::size_t bytes) {
    return {static_cast<std::uint8_t*>(std::aligned_alloc(kAlignment, bytes)), std::free};
}

bool SoftwareDrawing::update() {
    return context_ != nullptr && (movieLibrary().mpv_render_context_update(context_) & MPV_RENDER_UPDATE_FRAME) != 0;
}

std::size_t SoftwareDrawing::line() const { return lineOf(drawn_.width, kPixelBytes); }

bool SoftwareDrawing::draw(PictureSize pixels) {
    const auto before = std::chrono::steady_clock::now();
    if (drawn_ != pixels) {
        drawn_ = {};
        deep_.reset();
        lines_ = linesOf(lineOf(pixels.width, kPixelBytes) * static_cast<std::size_t>(pixels.height));
        if (!lines_) return false;
        drawn_ = pixels;
    }
    if (!(toneMap_ && drawDeep()) && !render(formatName(), lines_.get(), line(), pixels)) return false;
    took_ = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - before);
    return true;
}

/// By way of more bits than a screen has. False: this library has none.
bool SoftwareDrawing::drawDeep() {
    const std::size_t deepLine = lineOf(drawn_.width, kDeepPixelBytes);
    if (!deep_) deep_ = linesOf(deepLine * static_cast<std::size_t>(drawn_.height));
    if (!deep_ || !render(deepFormatName(), deep_.get(), deepLine, drawn_)) return false;
    toneMap_->map(deep_.get(), deepLine, lines_.get(), line(), drawn_.width, drawn_.height);
    return true;
}

bool SoftwareDrawing::drawInto(std::uint8_t* first, std::size_t line, PictureSize pixels) {
    const auto before = std::chrono::steady_clock::now();
    if (!render(formatName(), first, line, pixels)) return false;
    took_ = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - before);
    return true;
}

/// Both filters see all of a picture that is made smaller, the simple one at half the work; made larger, it would be
/// soft.
void SoftwareDrawing::chooseScaler(PictureSize pixels) {
    const bool smaller = pixels.width < picture_.width && pixels.height < picture_.height;
    if (pixels.pixels() == 0 || shrunk_ == smaller) return;
    shrunk_ = smaller;
    const char* scaler = smaller ? "bilinear" : "bicubic";
    movieLibrary().mpv_set_property_async(player_, 0, "sws-scaler", MPV_FORMAT_STRING, &scaler);
}

bool SoftwareDrawing::render(char* format, std::uint8_t* lines, std::size_t line, PictureSize pixels) {
    chooseScaler(pixels);
    int skip = pixels.pixels() == 0 ? 1 : 0;
    int wait = 0;
    std::array<int, 2> size{std::max(pixels.width, 1), std::max(pixels.height, 1)};
    std::array<mpv_render_param, 7> params{{{MPV_RENDER_PARAM_SW_SIZE, size.data()},
                                            {MPV_RENDER_PARAM_SW_FORMAT, format},
                                            {MPV_RENDER_PARAM_SW_STRIDE, &line},
                                            {MPV_RENDER_PARAM_SW_POINTER, lines},
                                            {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &wait},
                                            {MPV_RENDER_PARAM_SKIP_RENDERING, &skip},
                                            {MPV_RENDER_PARAM_INVALID, nullptr}}};
    return movieLibrary().mpv_render_context_render(context_, params.data()) >= 0;
}

}  // namespace corvane
