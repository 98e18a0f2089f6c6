// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "winapi/api.h"

namespace corvane {

/// A bitmap in memory that both we and the system draw into: rows from the top, 0xAARRGGBB.
class Dib {
public:
    Dib(int width, int height);
    Dib(const Dib&) = delete;
    Dib& operator=(const Dib&) = delete;
    ~Dib();

    int width() const { return width_; }
    int height() const { return height_; }
    HDC dc() const { return dc_; }
    /// What the system draws must be finished (finish()) before the pixels are touched.
    std::uint32_t* pixels() { return pixels_; }
    std::uint32_t* row(int y) { return pixels_ + static_cast<std::ptrdiff_t>(y) * width_; }
    static void finish() { GdiFlush(); }
    /// Copies all of it to a place of another device.
    void show(HDC target, int x, int y) const { BitBlt(target, x, y, width_, height_, dc_, 0, 0, SRCCOPY); }

private:
    int width_;
    int height_;
    HDC dc_;
    HBITMAP bitmap_;
    HGDIOBJ before_;
    std::uint32_t* pixels_ = nullptr;
};

}  // namespace corvane
