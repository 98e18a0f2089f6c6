// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/painted_layout.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr Twips kDefaultLabelHeight = 16 * kTwipsPerPixel;  ///< of a label that has no height
constexpr Twips kGap = 4 * kTwipsPerPixel;                  ///< between a text and the label it runs up to

Twips heightOf(const Label& label) { return label.Height > 0 ? label.Height.get() : kDefaultLabelHeight; }

bool sharesALine(const Label& a, const Label& b) { return a.Top < b.Top + heightOf(b) && b.Top < a.Top + heightOf(a); }

Rectangle rectangle(Twips left, Twips top, Twips width, Twips height) {
    return {static_cast<double>(left), static_cast<double>(top), static_cast<double>(width),
            static_cast<double>(height)};
}

const Picture kNoPicture;

}  // namespace

Rectangle placeOf(const Control& control) {
    return rectangle(control.Left, control.Top, control.Width, control.Height);
}

Rectangle imagePlace(const Image& image) {
    Rectangle place = placeOf(image);
    const Picture& picture = image.Picture;
    if (picture.empty()) return place;
    place.width = picture.width() * static_cast<double>(kTwipsPerPixel);
    place.height = picture.height() * static_cast<double>(kTwipsPerPixel);
    return place;
}

Rectangle labelPlace(const Form& form, const Label& label) {
    Twips width = label.Width;
    if (width <= 0) {
        Twips edge = form.Width;
        for (const Control* control : form.controls()) {
            if (control == &label || control->kind() != ControlKind::Label || !control->Visible) continue;
            const auto& other = static_cast<const Label&>(*control);
            if (other.Left > label.Left && sharesALine(label, other)) edge = std::min(edge, other.Left - kGap);
        }
        width = std::max(0.0F, edge - label.Left);
    }
    return rectangle(label.Left, label.Top, width, heightOf(label));
}

Rectangle paintPlace(const Form& form, const Control& control) {
    if (!control.Visible) return {};
    switch (control.kind()) {
        case ControlKind::Label:
            return labelPlace(form, static_cast<const Label&>(control));
        case ControlKind::Image:
            return imagePlace(static_cast<const Image&>(control));
        case ControlKind::CommandButton:
        case ControlKind::PictureBox:
        case ControlKind::Shape:
            return placeOf(control);
        default:
            return {};
    }
}

Rectangle hitPlace(const Form& form, const Control& control, double textWidth) {
    switch (control.kind()) {
        case ControlKind::CommandButton:
            return placeOf(control);
        case ControlKind::Image:
            return imagePlace(static_cast<const Image&>(control));
        case ControlKind::PictureBox: {
            Rectangle place = placeOf(control);
            const auto& box = static_cast<const PictureBox&>(control);
            if (box.hitWidth > 0) place.width = static_cast<double>(box.hitWidth);
            return place;
        }
        case ControlKind::Label: {
            const auto& label = static_cast<const Label&>(control);
            Rectangle place = labelPlace(form, label);
            if (label.Width <= 0) place.width = std::min(place.width, textWidth);
            return place;
        }
        default:
            return {};
    }
}

const Picture& pictureShown(const Control& control, bool pressed) {
    switch (control.kind()) {
        case ControlKind::Image:
            return static_cast<const Image&>(control).Picture;
        case ControlKind::PictureBox:
            return static_cast<const PictureBox&>(control).Picture;
        case ControlKind::CommandButton: {
            const auto& button = static_cast<const CommandButton&>(control);
            const bool down = pressed && !button.DownPicture.get().empty();
            return down ? button.DownPicture : button.Picture;
        }
        default:
            return kNoPicture;
    }
}

PixelPlace snapped(const Rectangle& twips) {
    const Rectangle cells = twips.scaled(1.0 / static_cast<double>(kTwipsPerPixel));
    const auto whole = [](double edge) { return static_cast<int>(std::lround(edge)); };
    const int left = whole(cells.x);
    const int top = whole(cells.y);
    return {left, top, whole(cells.right()) - left, whole(cells.bottom()) - top};
}

std::vector<CompositionStep> compositionOf(const Form& form, const Control* pressed) {
    std::vector<CompositionStep> steps;
    for (const Control* control : form.controls()) {
        if (!control->Visible) continue;
        const bool isImage = control->kind() == ControlKind::Image;
        CompositionStep step;
        step.control = control;
        step.place = snapped(isImage ? imagePlace(static_cast<const Image&>(*control)) : placeOf(*control));
        const Picture& picture = pictureShown(*control, control == pressed);
        if (!picture.empty()) {
            step.picture = &picture;
        } else if (control->kind() == ControlKind::PictureBox) {
            step.colour = static_cast<const PictureBox&>(*control).BackColor;
        } else {
            continue;
        }
        steps.push_back(step);
    }
    return steps;
}

}  // namespace corvane
