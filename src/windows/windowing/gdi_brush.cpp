// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/gdi_brush.h"

#include "windows/windowing/label_font.h"
#include "windows/windowing/shown_text.h"

namespace corvane {

namespace {

RECT rectOf(const PixelPlace& place) { return {place.x, place.y, place.x + place.width, place.y + place.height}; }

}  // namespace

void GdiBrush::text(const std::string& text, const Rectangle& exact, Colour colour,
                    const std::vector<Rectangle>& covered) {
    RECT place = rectOf(rounded(exact));
    RECT seen{};
    if (IntersectRect(&seen, &place, &dirty_) == 0) return;
    const LabelFont font(exact.height);
    const HDC dc = dib.dc();
    const int saved = SaveDC(dc);
    SetViewportOrgEx(dc, -dirty_.left, -dirty_.top, nullptr);
    IntersectClipRect(dc, place.left, place.top, place.right, place.bottom);
    for (const Rectangle& each : covered) {
        const RECT cover = rectOf(rounded(each));
        ExcludeClipRect(dc, cover.left, cover.top, cover.right, cover.bottom);
    }
    SelectObject(dc, font.handle());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, static_cast<COLORREF>(colour) & 0xFFFFFFU);
    const std::wstring wide = shownText(text);
    DrawTextW(dc, wide.c_str(), static_cast<int>(wide.size()), &place,
              DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    RestoreDC(dc, saved);
    Dib::finish();
}

/// Black under white dashes: it is seen on every skin.
void GdiBrush::ring(const Rectangle& around) {
    if (around.empty()) return;
    constexpr int kWidth = 2;
    const RECT place = rectOf(rounded(around));
    const HDC dc = dib.dc();
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
