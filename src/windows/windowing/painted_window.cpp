// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/painted_window.h"

#include <algorithm>
#include <cmath>

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

}  // namespace

PaintedWindow::PaintedWindow(Form& form, DesktopContext& context) : CanvasWindow(form, context) {}

void PaintedWindow::onBound() {
    for (const Control* control : form().controls()) painted_[control] = paintPlace(form(), *control);
    CanvasWindow::onBound();
}

Rectangle PaintedWindow::hitRect(const Control& control) const {
    double textTwips = 0;
    if (control.kind() == ControlKind::Label && control.Width <= 0) {
        const auto& label = static_cast<const Label&>(control);
        const LabelFont font(pixels(labelPlace(form(), label)).height);
        textTwips = static_cast<double>(context().toTwips(font.width(toWide(label.Caption.get()))));
    }
    return hitPlace(form(), control, textTwips);
}

std::string PaintedWindow::toolTip(const Control& control) const {
    std::string own = CanvasWindow::toolTip(control);
    if (!own.empty() || control.kind() != ControlKind::Label) return own;
    const auto& label = static_cast<const Label&>(control);
    const Rectangle place = pixels(labelPlace(form(), label));
    const bool fits = LabelFont(place.height).width(toWide(label.Caption.get())) <= place.width;
    return fits ? std::string() : label.Caption.get();
}

void PaintedWindow::repaintControl(const Control& control) {
    Rectangle& last = painted_[&control];
    const Rectangle now = paintPlace(form(), control);
    invalidate(last);
    if (now != last) invalidate(now);
    last = now;
}

void PaintedWindow::controlChanged(Control& control, PropertyId property) {
    if (property == PropertyId::ToolTipText || property == PropertyId::Enabled) return;
    if (&control == &form()) {
        const bool all = property == PropertyId::Picture || property == PropertyId::Width;
        if (all) InvalidateRect(handle(), nullptr, FALSE);
        return;
    }
    if (control.kind() == ControlKind::Label && property != PropertyId::Caption && property != PropertyId::ForeColor) {
        // A label's place bounds its neighbours' texts.
        for (const Control* each : form().controls()) {
            if (each->kind() == ControlKind::Label) repaintControl(*each);
        }
        return;
    }
    repaintControl(control);
}

void PaintedWindow::paint(HDC screen, const RECT& dirty) {
    Dib target(dirty.right - dirty.left, dirty.bottom - dirty.top);
    drawPictures(target, dirty);
    for (const Control* control : form().controls()) {
        if (!control->Visible) continue;
        if (control->kind() == ControlKind::Shape) drawShape(target, dirty, static_cast<const Shape&>(*control));
        if (control->kind() == ControlKind::Label) drawText(target, dirty, static_cast<const Label&>(*control));
    }
    drawRing(target, dirty);
    target.show(screen, dirty.left, dirty.top);
}

/// Black under white dashes: it is seen on every skin.
void PaintedWindow::drawRing(Dib& target, const RECT& dirty) const {
    const Rectangle around = ring();
    if (around.empty()) return;
    constexpr int kWidth = 2;
    const RECT place = rounded(around);
    const HDC dc = target.dc();
    const int saved = SaveDC(dc);
    SetViewportOrgEx(dc, -dirty.left, -dirty.top, nullptr);
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

PixelBuffer PaintedWindow::compose(const PixelPlace& cells) const {
    PixelBuffer canvas(cells.width, cells.height);
    if (const auto whole = bitmapOf(form().Picture)) {
        canvas.draw(viewOf(*whole), -cells.x, -cells.y, whole->heldWidth(), whole->heldHeight());
    }
    for (const CompositionStep& step : compositionOf(form(), pressed())) {
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

void PaintedWindow::drawPictures(Dib& target, const RECT& dirty) const {
    const double scale = context().scale();
    RECT client{};
    GetClientRect(handle(), &client);
    const auto cellsTo = [scale](LONG edge) { return static_cast<int>(std::ceil(edge / scale)); };
    const auto cellsFrom = [scale](LONG edge) { return static_cast<int>(std::floor(edge / scale)); };
    PixelPlace cells{std::max(0, cellsFrom(dirty.left) - kMargin), std::max(0, cellsFrom(dirty.top) - kMargin), 0, 0};
    cells.width = std::min(cellsTo(client.right), cellsTo(dirty.right) + kMargin) - cells.x;
    cells.height = std::min(cellsTo(client.bottom), cellsTo(dirty.bottom) + kMargin) - cells.y;
    const PixelBuffer canvas = compose(cells);
    const Rectangle place = Rectangle{static_cast<double>(cells.x), static_cast<double>(cells.y),
                                      static_cast<double>(cells.width), static_cast<double>(cells.height)}
                                .scaled(scale);
    stretch(canvas.view(), place, dirty.left, dirty.top, target.width(), target.height(), !isWhole(scale),
            target.pixels(), target.width());
}

std::vector<RECT> PaintedWindow::coverAbove(const Control& control) const {
    std::vector<RECT> cover;
    const auto& controls = form().controls();
    auto above = std::find(controls.begin(), controls.end(), &control);
    if (above == controls.end()) return cover;
    for (++above; above != controls.end(); ++above) {
        if (!(*above)->Visible) continue;
        const auto picture = bitmapOf(pictureShown(**above, pressed() == *above));
        if (picture && picture->opaque()) cover.push_back(rounded(pixels(hitRect(**above))));
    }
    return cover;
}

void PaintedWindow::drawShape(Dib& target, const RECT& dirty, const Shape& shape) const {
    const Rectangle place = pixels(placeOf(shape));
    const std::vector<RECT> cover = coverAbove(shape);
    const std::uint32_t colour = 0xFF000000U | toPixel(shape.FillColor);
    const int left = std::max(static_cast<int>(dirty.left), static_cast<int>(std::floor(place.x)));
    const int right = std::min(static_cast<int>(dirty.right), static_cast<int>(std::ceil(place.right())));
    const int bottom = std::min(static_cast<int>(dirty.bottom), static_cast<int>(std::ceil(place.bottom())));
    for (int y = std::max(static_cast<int>(dirty.top), static_cast<int>(std::floor(place.y))); y < bottom; ++y) {
        std::uint32_t* const row = target.row(y - dirty.top);
        for (int x = left; x < right; ++x) {
            const POINT here{x, y};
            const bool hidden = std::any_of(cover.begin(), cover.end(),
                                            [here](const RECT& each) { return PtInRect(&each, here) != 0; });
            if (hidden) continue;
            std::uint32_t& pixel = row[x - dirty.left];
            pixel = between(pixel, colour, ellipseCover(place, x, y));
        }
    }
}

void PaintedWindow::drawText(Dib& target, const RECT& dirty, const Label& label) const {
    const Rectangle exact = pixels(labelPlace(form(), label));
    RECT place = rounded(exact);
    RECT seen{};
    if (label.Caption.get().empty() || IntersectRect(&seen, &place, &dirty) == 0) return;
    const LabelFont font(exact.height);
    const HDC dc = target.dc();
    const int saved = SaveDC(dc);
    SetViewportOrgEx(dc, -dirty.left, -dirty.top, nullptr);
    IntersectClipRect(dc, place.left, place.top, place.right, place.bottom);
    for (const RECT& each : coverAbove(label)) ExcludeClipRect(dc, each.left, each.top, each.right, each.bottom);
    SelectObject(dc, font.handle());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, static_cast<COLORREF>(label.ForeColor.get()) & 0xFFFFFFU);
    const std::wstring text = toWide(label.Caption.get());
    DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &place,
              DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    RestoreDC(dc, saved);
    Dib::finish();
}

}  // namespace corvane
