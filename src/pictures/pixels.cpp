// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/pixels.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr std::uint32_t kOpaque = 0xFF000000U;
constexpr unsigned kWhole = 256;

/// A picture's pixel over an opaque one.
std::uint32_t over(std::uint32_t above, std::uint32_t below) {
    const std::uint32_t seen = 255U - (above >> 24U);
    if (seen == 0) return above;
    std::uint32_t mixed = kOpaque;
    for (unsigned shift = 0; shift < 24; shift += 8) {
        const std::uint32_t through = (((below >> shift) & 0xFFU) * seen + 127U) / 255U;
        mixed |= std::min(((above >> shift) & 0xFFU) + through, 255U) << shift;
    }
    return mixed;
}

struct Sample {
    int first = 0, second = 0;
    unsigned share = 0;
};

/// Which pixels of a line of `count` a target pixel lies between.
Sample sampleAt(double target, double start, double length, int count, bool smooth) {
    const double place = (target + 0.5 - start) / length * count;
    const auto inside = [count](double at) { return std::clamp(static_cast<int>(std::floor(at)), 0, count - 1); };
    if (!smooth) return {inside(place), inside(place), 0};
    const double low = place - 0.5;
    const auto share = static_cast<unsigned>((low - std::floor(low)) * kWhole);
    return {inside(low), inside(low + 1), share};
}

}  // namespace

std::uint32_t between(std::uint32_t first, std::uint32_t second, unsigned share) {
    if (share == 0 || first == second) return first;
    std::uint32_t mixed = 0;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        const std::uint32_t a = (first >> shift) & 0xFFU;
        const std::uint32_t b = (second >> shift) & 0xFFU;
        mixed |= ((a * (kWhole - share) + b * share + kWhole / 2) / kWhole) << shift;
    }
    return mixed;
}

PixelBuffer::PixelBuffer(int width, int height)
    : width_(std::max(width, 0)),
      height_(std::max(height, 0)),
      pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), kOpaque) {}

void PixelBuffer::fill(int x, int y, int width, int height, std::uint32_t colour) {
    const int left = std::max(x, 0);
    const int right = std::min(x + width, width_);
    for (int line = std::max(y, 0); line < std::min(y + height, height_) && left < right; ++line) {
        std::fill(row(line) + left, row(line) + right, kOpaque | colour);
    }
}

void PixelBuffer::draw(const PixelsView& picture, int x, int y, int width, int height, int fromX, int fromY) {
    const int left = std::max(x, 0);
    const int right = std::min({x + width, x + picture.width - fromX, width_});
    const int bottom = std::min({y + height, y + picture.height - fromY, height_});
    for (int line = std::max(y, 0); line < bottom; ++line) {
        std::uint32_t* const target = row(line);
        for (int column = left; column < right; ++column) {
            target[column] = over(picture.at(column - x + fromX, line - y + fromY), target[column]);
        }
    }
}

void PixelBuffer::drawLarger(const PixelsView& picture, int x, int y, int width, int height, int times) {
    const int left = std::max(x, 0);
    const int right = std::min({x + width, x + picture.width * times, width_});
    const int bottom = std::min({y + height, y + picture.height * times, height_});
    for (int line = std::max(y, 0); line < bottom; ++line) {
        std::uint32_t* const target = row(line);
        for (int column = left; column < right; ++column) {
            target[column] = over(picture.at((column - x) / times, (line - y) / times), target[column]);
        }
    }
}

void stretch(const PixelsView& picture, const Rectangle& place, int partX, int partY, int partWidth, int partHeight,
             bool smooth, std::uint32_t* target, int targetStride) {
    if (picture.width <= 0 || picture.height <= 0 || place.empty()) return;
    std::vector<Sample> columns;
    columns.reserve(static_cast<std::size_t>(std::max(partWidth, 0)));
    for (int x = 0; x < partWidth; ++x) {
        columns.push_back(sampleAt(partX + x, place.x, place.width, picture.width, smooth));
    }
    for (int y = 0; y < partHeight; ++y) {
        const Sample line = sampleAt(partY + y, place.y, place.height, picture.height, smooth);
        std::uint32_t* const out = target + static_cast<std::ptrdiff_t>(y) * targetStride;
        for (int x = 0; x < partWidth; ++x) {
            const Sample& column = columns[static_cast<std::size_t>(x)];
            const std::uint32_t top =
                between(picture.at(column.first, line.first), picture.at(column.second, line.first), column.share);
            if (line.share == 0) {
                out[x] = over(top, out[x]);
                continue;
            }
            const std::uint32_t bottom =
                between(picture.at(column.first, line.second), picture.at(column.second, line.second), column.share);
            out[x] = over(between(top, bottom, line.share), out[x]);
        }
    }
}

std::vector<std::uint32_t> reduced(const PixelsView& picture, int width, int height) {
    std::vector<std::uint32_t> result;
    result.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    const auto edge = [](int at, int of, int whole) {
        return static_cast<int>(static_cast<std::int64_t>(at) * whole / of);
    };
    for (int y = 0; y < height; ++y) {
        const int top = edge(y, height, picture.height);
        const int bottom = std::max(top + 1, edge(y + 1, height, picture.height));
        for (int x = 0; x < width; ++x) {
            const int left = edge(x, width, picture.width);
            const int right = std::max(left + 1, edge(x + 1, width, picture.width));
            std::uint64_t sums[4] = {};
            for (int line = top; line < bottom; ++line) {
                for (int column = left; column < right; ++column) {
                    const std::uint32_t pixel = picture.at(column, line);
                    for (unsigned i = 0; i < 4; ++i) sums[i] += (pixel >> (8 * i)) & 0xFFU;
                }
            }
            const auto count = static_cast<std::uint64_t>(right - left) * static_cast<std::uint64_t>(bottom - top);
            std::uint32_t average = 0;
            for (unsigned i = 0; i < 4; ++i) {
                average |= static_cast<std::uint32_t>((sums[i] + count / 2) / count) << (8 * i);
            }
            result.push_back(average);
        }
    }
    return result;
}

unsigned ellipseCover(const Rectangle& place, int x, int y) {
    constexpr int kSteps = 4;  // a side: 16 points a pixel
    const double acrossHalf = place.width / 2;
    const double downHalf = place.height / 2;
    if (acrossHalf <= 0 || downHalf <= 0) return 0;
    unsigned inside = 0;
    for (int i = 0; i < kSteps; ++i) {
        for (int j = 0; j < kSteps; ++j) {
            const double across = (x + (i + 0.5) / kSteps - place.x - acrossHalf) / acrossHalf;
            const double down = (y + (j + 0.5) / kSteps - place.y - downHalf) / downHalf;
            if (across * across + down * down <= 1) ++inside;
        }
    }
    return inside * kWhole / (kSteps * kSteps);
}

}  // namespace corvane
