// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/dib.h"

#include <algorithm>
#include <new>

namespace corvane {

Dib::Dib(int width, int height)
    : width_(std::max(width, 1)), height_(std::max(height, 1)), dc_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width_;
    info.bmiHeader.biHeight = -height_;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bitmap_ == nullptr) {
        DeleteDC(dc_);
        throw std::bad_alloc();
    }
    pixels_ = static_cast<std::uint32_t*>(bits);
    before_ = SelectObject(dc_, bitmap_);
}

Dib::~Dib() {
    SelectObject(dc_, before_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
}

}  // namespace corvane
