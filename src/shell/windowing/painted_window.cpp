// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/windowing/painted_window.h"

#include <algorithm>
#include <cmath>

#include "shell/painted_layout.h"

namespace corvane {

namespace {

/// The whole pixels that a place touches.
PixelPlace touched(const Rectangle& place) {
    const int left = static_cast<int>(std::floor(place.x));
    const int top = static_cast<int>(std::floor(place.y));
    return {left, top, static_cast<int>(std::ceil(place.right())) - left,
            static_cast<int>(std::ceil(place.bottom())) - top};
}

/// Composed with the skin, in its whole pixels; the others are drawn on it, to a part of one.
bool isComposed(const Control& control) {
    return control.kind() != ControlKind::Label && control.kind() != ControlKind::Shape;
}

bool isPlace(PropertyId property) {
    return property == PropertyId::Left || property == PropertyId::Top || property == PropertyId::Width ||
           property == PropertyId::Height;
}

}  // namespace

void PaintedWindow::onBound() {
    for (const Control* control : form().controls()) painted_[control] = paintPlace(form(), *control);
    DrawnWindow::onBound();
}

Rectangle PaintedWindow::hitRect(const Control& control) const {
    double textTwips = 0;
    if (control.kind() == ControlKind::Label && control.Width <= 0) {
        const auto& label = static_cast<const Label&>(control);
        const double unit = static_cast<double>(kTwipsPerPixel) / screens().factor();
        textTwips = surface().labelWidth(label.Caption, pixels(labelPlace(form(), label)).height) * unit;
    }
    return hitPlace(form(), control, textTwips);
}

std::string PaintedWindow::toolTip(const Control& control) const {
    std::string own = DrawnWindow::toolTip(control);
    if (!own.empty() || control.kind() != ControlKind::Label) return own;
    const auto& label = static_cast<const Label&>(control);
    const Rectangle place = textPlace(label, pixels(labelPlace(form(), label)));
    return surface().labelFits(label.Caption, place.height, place.width) ? std::string() : label.Caption.get();
}

Rectangle PaintedWindow::textPlace(const Label& label, const Rectangle& place) const {
    constexpr std::size_t kUsualDigits = 3;
    const std::string& text = label.Caption;
    if (text.size() <= kUsualDigits || text.find_first_not_of("0123456789") != std::string::npos) return place;
    for (double height = place.height; height > place.height / 2; height -= 1) {
        if (!surface().labelFits(text, height, place.width)) continue;
        return {place.x, place.y + (place.height - height) / 2, place.width, height};
    }
    return place;
}

void PaintedWindow::repaint(const Control& control) {
    Rectangle& last = painted_[&control];
    const Rectangle now = paintPlace(form(), control);
    if (!last.empty()) surface().paintAnew(touched(pixels(last)));
    if (now != last && !now.empty()) surface().paintAnew(touched(pixels(now)));
    last = now;
}

void PaintedWindow::controlChanged(Control& control, PropertyId property) {
    if (property == PropertyId::ToolTipText || property == PropertyId::Enabled) return;
    if (&control == &form()) {
        if (property == PropertyId::Picture || property == PropertyId::Width) surface().paintAllAnew();
        return;
    }
    if (control.kind() == ControlKind::Label && property != PropertyId::Caption && property != PropertyId::ForeColor) {
        // A label's place bounds its neighbours' texts.
        for (const Control* each : form().controls()) {
            if (each->kind() == ControlKind::Label) repaint(*each);
        }
        return;
    }
    // The slider's bar grows ten times a second, and by a pixel every few times.
    if (isPlace(property) && isComposed(control) && snapped(painted_[&control]) == snapped(paintPlace(form(), control)))
        return;
    repaint(control);
}

void PaintedWindow::paint(Brush& brush) const {
    brush.skin(form().Picture, compositionOf(form(), pressed()));
    for (const Control* control : form().controls()) {
        if (!control->Visible) continue;
        const Rectangle place = pixels(paintPlace(form(), *control));
        if (control->kind() == ControlKind::Shape) {
            brush.disc(place, static_cast<const Shape&>(*control).FillColor, coverAbove(*control));
        } else if (control->kind() == ControlKind::Label) {
            const auto& label = static_cast<const Label&>(*control);
            if (!label.Caption.get().empty()) {
                brush.text(label.Caption, textPlace(label, place), label.ForeColor, coverAbove(label));
            }
        }
    }
}

std::vector<Rectangle> PaintedWindow::coverAbove(const Control& control) const {
    std::vector<Rectangle> cover;
    const auto& controls = form().controls();
    for (auto above = std::find(controls.begin(), controls.end(), &control); above != controls.end(); ++above) {
        if (*above == &control || !(*above)->Visible) continue;
        const Picture& picture = pictureShown(**above, pressed() == *above);
        if (!picture.empty() && surface().isOpaque(picture)) cover.push_back(pixelsOf(**above));
    }
    return cover;
}

}  // namespace corvane
