// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/gdi_brush.h"

#include <algorithm>
#include <cmath>

#include "pictures/pixels.h"
#include "windows/text.h"
#include "windows/windowing/bitmap_picture.h"
#include "windows/windowing/label_font.h"

namespace corvane {

namespace {

constexpr int kMargin = 2;  ///< pixels of the skin around a part, so that scaling it sees its neighbours

std::uint32_t toPixel(Colour colour) {
    const auto bits = static_cast<std::uint32_t>(colour);
    return (bits & 0xFFU) << 16U | (bits & 0xFF00U) | ((bits >> 16U) & 0xFFU);
}

bool isWhole(double factor) { return std::abs(factor - std::round(factor)) < 1e-6; }

RECT rounded(const Rectangle& place) {
    return {std::lround(place.x), std::lround(place.y), std::lround(place.right()), std::lround(place.bottom())};
}

PixelsView viewOf(const BitmapPicture& picture) {
    return {picture.pixels().data(), picture.heldWidth(), picture.heldHeight()};
}

PixelBuffer composed(const Picture& background, const std::vector<CompositionStep>& steps, const PixelPlace& cells) {
    PixelBuffer canvas(cells.width, cells.height);
    if (const auto whole = bitmapOf(background)) {
        canvas.draw(viewOf(*whole), -cells.x, -cells.y, whole->heldWidth(), whole->heldHeight());
    }
    for (const CompositionStep& step : steps) {
        const int x = step.place.x - cells.x;
        const int y = step.place.y - cells.y;
        if (step.picture != nullptr) {
            canvas.draw(viewOf(*bitmapOf(*step.picture)), x, y, step.place.width, step.place.height);
        } else {
            canvas.fill(x, y, step.place.width, step.place.height, toPixel(step.colour));
        }
    }
    return canvas;
}

}  // namespace

void GdiBrush::skin(const Picture& background, const std::vector<CompositionStep>& steps) {
    const auto cellsTo = [this](LONG edge) { return static_cast<int>(std::ceil(edge / scale_)); };
    const auto cellsFrom = [this](LONG edge) { return static_cast<int>(std::floor(edge / scale_)); };
    PixelPlace cells{std::max(0, cellsFrom(dirty_.left) - kMargin), std::max(0, cellsFrom(dirty_.top) - kMargin), 0, 0};
    cells.width = std::min(cellsTo(client_.width), cellsTo(dirty_.right) + kMargin) - cells.x;
    cells.height = std::min(cellsTo(client_.height), cellsTo(dirty_.bottom) + kMargin) - cells.y;
    const PixelBuffer canvas = composed(background, steps, cells);
    const Rectangle place = Rectangle{static_cast<double>(cells.x), static_cast<double>(cells.y),
                                      static_cast<double>(cells.width), static_cast<double>(cells.height)}
                                .scaled(scale_);
    stretch(canvas.view(), place, dirty_.left, dirty_.top, target_.width(), target_.height(), !isWhole(scale_),
            target_.pixels(), target_.width());
}

void GdiBrush::disc(const Rectangle& place, Colour colour, const std::vector<Rectangle>& covered) {
    std::vector<RECT> cover;
    for (const Rectangle& each : covered) cover.push_back(rounded(each));
    const std::uint32_t pixelColour = 0xFF000000U | toPixel(colour);
    const int left = std::max(static_cast<int>(dirty_.left), static_cast<int>(std::floor(place.x)));
    const int right = std::min(static_cast<int>(dirty_.right), static_cast<int>(std::ceil(place.right())));
    const int bottom = std::min(static_cast<int>(dirty_.bottom), static_cast<int>(std::ceil(place.bottom())));
    for (int y = std::max(static_cast<int>(dirty_.top), static_cast<int>(std::floor(place.y))); y < bottom; ++y) {
        std::uint32_t* const row = target_.row(y - dirty_.top);
        for (int x = left; x < right; ++x) {
            const POINT here{x, y};
            const bool hidden = std::any_of(cover.begin(), cover.end(),
                                            [here](const RECT& each) { return PtInRect(&each, here) != 0; });
            if (hidden) continue;
            std::uint32_t& pixel = row[x - dirty_.left];
            pixel = between(pixel, pixelColour, ellipseCover(place, x, y));
        }
    }
}

void GdiBrush::text(const std::string& text, const Rectangle& exact, Colour colour,
                    const std::vector<Rectangle>& covered) {
    RECT place = rounded(exact);
    RECT seen{};
    if (IntersectRect(&seen, &place, &dirty_) == 0) return;
    const LabelFont font(exact.height);
    const HDC dc = target_.dc();
    const int saved = SaveDC(dc);
    SetViewportOrgEx(dc, -dirty_.left, -dirty_.top, nullptr);
    IntersectClipRect(dc, place.left, place.top, place.right, place.bottom);
    for (const Rectangle& each : covered) {
        const RECT cover = rounded(each);
        ExcludeClipRect(dc, cover.left, cover.top, cover.right, cover.bottom);
    }
    SelectObject(dc, font.handle());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, static_cast<COLORREF>(colour) & 0xFFFFFFU);
    const std::wstring wide = toWide(text);
    DrawTextW(dc, wide.c_str(), static_cast<int>(wide.size()), &place,
              DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    RestoreDC(dc, saved);
    Dib::finish();
}

void GdiBrush::pictures(const std::vector<ShownPicture>& pictures) {
    std::fill_n(target_.pixels(), target_.width() * target_.height(), 0xFF000000U);
    for (const ShownPicture& each : pictures) scaled_.draw(target_, dirty_, each.picture, each.whole, each.seen);
}

/// Black under white dashes: it is seen on every skin.
void GdiBrush::ring(const Rectangle& around) {
    if (around.empty()) return;
    constexpr int kWidth = 2;
    const RECT place = rounded(around);
    const HDC dc = target_.dc();
    const int saved = SaveDC(dc);
    SetViewportOrgEx(dc, -dirty_.left, -dirty_.top, nullptr);
    SelectObject(dc, GetStockObject(NULL_BRUSH));
    const LOGBRUSH white{BS_SOLID, RGB(255, 255, 255), 0};
    const HPEN under = CreatePen(PS_SOLID | PS_INSIDEFRAME, kWidth, RGB(0, 0, 0));
    const HPEN dashes = ExtCreatePen(PS_GEOMETRIC | PS_DASH | PS_ENDCAP_FLAT, kWidth, &white, 0, nullptr);
    for (const HPEN each : {under, dashes}) {
        SelectObject(dc, each);
        ::Rectangle(dc, place.left - kWidth, place.top - kWidth, place.right + kWidth, place.bottom + kWidth);
    }
    RestoreDC(dc, saved);
    DeleteObject(under);
    DeleteObject(dashes);
    Dib::finish();
}

}  // namespace corvane
