// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/windowing/drawn_window.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "pictures/bitmap_picture.h"

namespace corvane {

bool Surface::isOpaque(const Picture& picture) const {
    const auto bitmap = bitmapOf(picture);
    return bitmap && bitmap->opaque();
}

DrawnWindow* Surface::live() const { return window_ != nullptr && window_->bound() ? window_ : nullptr; }

DrawnWindow::DrawnWindow(Form& form, EventLoop& loop, const Screens& screens, std::unique_ptr<Surface> surface)
    : BoundWindow(form, loop), surface_(std::move(surface)), screens_(screens) {
    surface_->serve(this);
}

DrawnWindow::~DrawnWindow() { surface_->serve(nullptr); }

void DrawnWindow::onBound() {
    surface_->setCaption(form().Caption);
    takePlace();
    takeVisibility();
    takeWindowState();
}

void DrawnWindow::onUnbinding() {
    pointer_.forget();
    surface_->letMouseGo();
    setFocused(nullptr);
    surface_->formGoes();
}

void DrawnWindow::propertyChanged(Control& control, PropertyId property) {
    if (&control == &form()) {
        formChanged(property);
        return;
    }
    if (property == PropertyId::Focus) {
        surface_->takeKeyboard();
        post([&control] { control.GotFocus.raise(); });
        return;
    }
    surface_->controlChanged(control, property);
    if (&control == focused()) showRing();
    if (property == PropertyId::Value || property == PropertyId::Checked) return;  // seen by nobody
    pointer_.controlChanged(control, property);
    controlChanged(control, property);
}

void DrawnWindow::formChanged(PropertyId property) {
    switch (property) {
        case PropertyId::Caption:
            surface_->setCaption(form().Caption);
            break;
        case PropertyId::Left:
        case PropertyId::Top:
        case PropertyId::Width:
        case PropertyId::Height:
            if (taking_) break;
            stale_ = true;
            surface_->placeWanted();
            break;
        case PropertyId::Visible:
            takeVisibility();
            break;
        case PropertyId::WindowState:
            takeWindowState();
            break;
        case PropertyId::Focus:
            frame().activate();
            break;
        case PropertyId::Enabled:
            surface_->setUsable(form().Enabled);
            break;
        default:
            break;
    }
    controlChanged(form(), property);
}

// --- Place -------------------------------------------------------------------------------------------------------

void DrawnWindow::settlePlace() {
    if (bound() && stale_ && !taking_) takePlace();
}

void DrawnWindow::takePlace() {
    stale_ = false;
    const PixelPoint corner = screens_.cornerFor(form());
    const bool was = std::exchange(taking_, true);
    surface_->setPlace({corner.x + screens_.toPixels(form().Left), corner.y + screens_.toPixels(form().Top),
                        std::max(1, screens_.toPixels(form().Width)), std::max(1, screens_.toPixels(form().Height))});
    taking_ = was;
}

void DrawnWindow::scaleChanged() {
    takePlace();
    showRing();
    surface_->paintAllAnew();
}

void DrawnWindow::refresh() {
    settlePlace();
    BoundWindow::refresh();
}

bool DrawnWindow::isOnScreen() const { return surface_->frame().isShown() && !surface_->isMinimised(); }

void DrawnWindow::moved() {
    if (!bound() || taking_ || stale_ || !isOnScreen()) return;
    const PixelPlace place = surface_->place();
    const PixelPoint corner = screens_.cornerFor(form());
    taking_ = true;
    // Whole twips stay as the form set them unless the window really is elsewhere.
    if (screens_.toPixels(form().Left) != place.x - corner.x) form().Left = screens_.toTwips(place.x - corner.x);
    if (screens_.toPixels(form().Top) != place.y - corner.y) form().Top = screens_.toTwips(place.y - corner.y);
    taking_ = false;
}

/// A window that no screen shows could not be brought back: it has no title bar.
void DrawnWindow::keepInSight(Sight sight) {
    std::vector<ScreenArea> areas = screens_.areas();
    for (ScreenArea& each : areas) {
        if (sight == Sight::FreeOfBars) each.shows = each.room;
    }
    const PixelPlace now = surface_->place();
    const Rectangle window{static_cast<double>(now.x), static_cast<double>(now.y), static_cast<double>(now.width),
                           static_cast<double>(now.height)};
    const Rectangle place = placeInSight(window, areas);
    const PixelPoint corner{static_cast<int>(std::lround(place.x)), static_cast<int>(std::lround(place.y))};
    if (corner != PixelPoint{now.x, now.y}) surface_->moveTo(corner);
}

void DrawnWindow::screensChanged() {
    if (!bound()) return;
    if (isOnScreen()) keepInSight(Sight::FreeOfBars);
    moved();  // it counts from the primary screen, which may be another one
    surface_->paintAllAnew();
}

// --- State -------------------------------------------------------------------------------------------------------

void DrawnWindow::takeVisibility() {
    if (form().Visible == frame().isShown()) return;
    settlePlace();
    if (!form().Visible) {
        loseMouse();
        frame().putAway();
    } else if (form().WindowState == WindowState::Minimized) {
        surface_->showMinimised();
    } else {
        keepInSight(Sight::Screens);
        surface_->showUp();
        moved();
    }
}

void DrawnWindow::takeWindowState() {
    if (taking_ || !frame().isShown()) return;
    const bool minimise = form().WindowState == WindowState::Minimized;
    if (minimise == surface_->isMinimised()) return;
    if (minimise) {
        loseMouse();
        surface_->showMinimised();
    } else {
        surface_->restore();
    }
}

void DrawnWindow::minimised(bool is) {
    if (!bound()) return;
    if (is) loseMouse();
    const bool was = std::exchange(taking_, true);
    form().WindowState = is ? WindowState::Minimized : WindowState::Normal;
    taking_ = was;
    if (isOnScreen()) keepInSight(Sight::Screens);  // the screens may have changed meanwhile
}

void DrawnWindow::activated() {
    if (bound()) post([this] { form().Activate.raise(); });
}

void DrawnWindow::keyboardCame(bool here) {
    if (bound()) post([this, here] { (here ? form().GotFocus : form().LostFocus).raise(); });
}

void DrawnWindow::requestClose() {
    if (!bound()) return;
    post([this, alt = surface_->isAltDown()] { form().CloseRequest.raise(alt); });
}

}  // namespace corvane
