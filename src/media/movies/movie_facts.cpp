// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/movie_facts.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>

#include "media/movies/movie_handle.h"
#include "media/movies/movie_library.h"
#include "media/sound/sound_backend.h"
#include "types/text.h"

namespace corvane {

namespace {

constexpr int kMostSide = 8'192;
constexpr double kMostArea = kMostMoviePixels;

}  // namespace

PictureSize sensiblePicture(PictureSize said) {
    double width = said.width, height = said.height;
    const auto scale = [&](double factor) {
        width *= factor;
        height *= factor;
    };
    if (const double area = width * height; area > kMostArea) scale(std::sqrt(kMostArea / area));
    if (const double side = std::max(width, height); side > kMostSide) scale(kMostSide / side);
    const auto whole = [](double side) { return std::max(static_cast<int>(std::lround(side)), 1); };
    return {whole(width), whole(height)};
}

double sensibleLength(double seconds) {
    return std::isnan(seconds) ? 0 : std::clamp(seconds, 0.0, static_cast<double>(kMostSeconds));
}

double seekOffset(const std::string& format) { return format.starts_with("mpeg") ? 2 : 0; }

PicturePixels moviePicture(const mpv_node& raw) {
    if (raw.format != MPV_FORMAT_NODE_MAP) return {};
    std::int64_t width = 0, height = 0, line = 0;
    const mpv_byte_array* bytes = nullptr;
    for (int i = 0; i < raw.u.list->num; ++i) {
        const std::string_view key = raw.u.list->keys[i];
        const mpv_node& value = raw.u.list->values[i];
        if (value.format == MPV_FORMAT_BYTE_ARRAY && key == "data") bytes = value.u.ba;
        if (value.format != MPV_FORMAT_INT64) continue;
        if (key == "w") width = value.u.int64;
        if (key == "h") height = value.u.int64;
        if (key == "stride") line = value.u.int64;
    }
    constexpr std::int64_t kPixel = 4;
    const auto sensible = [](std::int64_t side) { return side > 0 && side <= kMostMoviePixels; };
    if (bytes == nullptr || !sensible(width) || !sensible(height) || line < width * kPixel) return {};
    if (static_cast<std::int64_t>(bytes->size) / height < line) return {};
    PicturePixels picture;
    picture.held = picture.full = {static_cast<int>(width), static_cast<int>(height)};
    picture.pixels.resize(static_cast<std::size_t>(width * height));
    for (std::int64_t y = 0; y < height; ++y) {
        std::memcpy(picture.pixels.data() + y * width, static_cast<const char*>(bytes->data) + y * line,
                    static_cast<std::size_t>(width * kPixel));
    }
    return picture;
}

std::string movieError(int error) {
    std::string text = movieLibrary().mpv_error_string(error);
    if (!text.empty()) text[0] = text::upper(text[0]);
    return text;
}

}  // namespace corvane
