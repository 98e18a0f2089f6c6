// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/fake_drawn.h"

#include <cmath>
#include <utility>

#include "shell/windowing/drawn_window.h"

namespace corvane {

std::string toText(const Rectangle& place) {
    const auto whole = [](double edge) { return std::to_string(std::lround(edge)); };
    return whole(place.x) + ' ' + whole(place.y) + ' ' + whole(place.width) + ' ' + whole(place.height);
}

namespace {

Rectangle exact(const PixelPlace& place) {
    return {static_cast<double>(place.x), static_cast<double>(place.y), static_cast<double>(place.width),
            static_cast<double>(place.height)};
}

std::string besides(const std::vector<Rectangle>& covered) {
    std::string text;
    for (const Rectangle& each : covered) text += " but " + toText(each);
    return text;
}

}  // namespace

void FakeDrawnSurface::putAway() {
    shown = false;
    did("hide");
}

void FakeDrawnSurface::stack(int insertAfter, std::uint32_t flags) {
    did("stack " + std::to_string(insertAfter) + ' ' + std::to_string(flags));
}

void FakeDrawnSurface::showUp() {
    shown = true;
    did("show");
}

void FakeDrawnSurface::showMinimised() {
    shown = true;
    iconic = true;
    did("minimise");
    if (live() != nullptr) live()->minimised(true);
}

void FakeDrawnSurface::restore() {
    iconic = false;
    did("restore");
    if (live() != nullptr) live()->minimised(false);
}

void FakeDrawnSurface::setPlace(const PixelPlace& place) {
    at = place;
    did("place " + toText(exact(place)));
    if (live() != nullptr) live()->moved();
}

void FakeDrawnSurface::moveTo(PixelPoint corner) {
    at.x = corner.x;
    at.y = corner.y;
    did("move " + std::to_string(at.x) + ' ' + std::to_string(at.y));
    if (live() != nullptr) live()->moved();
}

void FakeDrawnSurface::placeWanted() {
    ++placesWanted;
    if (!placesLater && live() != nullptr) live()->settlePlace();
}

bool FakeDrawnSurface::dragBySystem() {
    if (systemDrags) did("system drags");
    return systemDrags;
}

void FakeDrawnSurface::paintAnew(const PixelPlace& part) { did("paint " + toText(exact(part))); }

double FakeDrawnSurface::labelWidth(const std::string& text, double /*height*/) const {
    return static_cast<double>(text.size()) * 10;
}

bool FakeDrawnSurface::labelFits(const std::string& text, double height, double width) const {
    return static_cast<double>(text.size()) * height / 2 <= width;
}

void FakeDrawnSurface::fillScreen(bool fill) {
    whole = fill ? std::optional<PixelSize>({1000, 800}) : std::nullopt;
    did(fill ? "fill" : "unfill");
}

void FakeDrawnSurface::runLater() {
    for (const EventLoop::Handler& each : std::exchange(waiting, {})) each();
}

void FakeBrush::skin(const Picture& background, const std::vector<CompositionStep>& steps) {
    std::string text = background.empty() ? "skin" : "skin on a picture";
    for (const CompositionStep& step : steps) text += ' ' + step.control->name();
    drawn.push_back(text);
}

void FakeBrush::disc(const Rectangle& place, Colour /*colour*/, const std::vector<Rectangle>& covered) {
    drawn.push_back("disc " + toText(place) + besides(covered));
}

void FakeBrush::text(const std::string& text, const Rectangle& place, Colour /*colour*/,
                     const std::vector<Rectangle>& covered) {
    drawn.push_back("text " + text + " at " + toText(place) + besides(covered));
}

}  // namespace corvane
