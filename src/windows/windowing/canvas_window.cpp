// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/canvas_window.h"

#include <algorithm>
#include <cmath>

#include "shell/drops.h"
#include "windows/text.h"
#include "windows/windowing/accessible_form.h"

namespace corvane {

namespace {

// A system menu, though none is seen, lets the task bar minimise and close the window.
constexpr DWORD kStyle = WS_POPUP | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;

}  // namespace

CanvasWindow::CanvasWindow(Form& form, DesktopContext& context, DWORD extendedStyle)
    : FormWindow(form, context),
      pointer_(*this),
      accessible_(new AccessibleForm(*this)),
      tip_((create(kStyle, extendedStyle | WS_EX_APPWINDOW), handle())),
      dropTarget_(
          handle(), [this] { return takesFiles(); },
          [this](const DropData& data, POINT at) {
              ScreenToClient(handle(), &at);
              dropped(data, at);
          }) {
    DragAcceptFiles(handle(), TRUE);
}

CanvasWindow::~CanvasWindow() {
    accessible_->leave();
    accessible_->Release();
}

void CanvasWindow::onBound() {
    SetWindowTextW(handle(), toWide(form().Caption.get()).c_str());
    takeGeometry();
    takeVisibility();
    takeWindowState();
}

void CanvasWindow::onUnbinding() {
    keyboard_.set(nullptr);
    pointer_.forget();
    if (GetCapture() == handle()) ReleaseCapture();
}

void CanvasWindow::takeScale() {
    takeGeometry();
    InvalidateRect(handle(), nullptr, FALSE);
}

int CanvasWindow::textWidth(const std::string& text) {
    const HDC screen = GetDC(handle());
    const HGDIOBJ before = SelectObject(screen, GetStockObject(DEFAULT_GUI_FONT));
    const std::wstring wide = toWide(text);
    SIZE size{};
    GetTextExtentPoint32W(screen, wide.c_str(), static_cast<int>(wide.size()), &size);
    SelectObject(screen, before);
    ReleaseDC(handle(), screen);
    return static_cast<int>(std::ceil(size.cx / context().scale()));
}

Rectangle CanvasWindow::pixels(const Rectangle& twips) const {
    return twips.scaled(context().scale() / static_cast<double>(kTwipsPerPixel));
}

void CanvasWindow::invalidate(const Rectangle& twips) {
    if (twips.empty()) return;
    const Rectangle place = pixels(twips);
    const RECT dirty{static_cast<LONG>(std::floor(place.x)), static_cast<LONG>(std::floor(place.y)),
                     static_cast<LONG>(std::ceil(place.right())), static_cast<LONG>(std::ceil(place.bottom()))};
    InvalidateRect(handle(), &dirty, FALSE);
}

void CanvasWindow::propertyChanged(Control& control, PropertyId property) {
    if (&control == &form()) {
        formChanged(property);
        return;
    }
    if (property == PropertyId::Focus) {
        SetFocus(handle());
        later([&control] { control.GotFocus.raise(); });
        return;
    }
    if (&control == keyboard_.control() && property == PropertyId::Visible && !control.Visible) setFocused(nullptr);
    if (property == PropertyId::Value || property == PropertyId::Checked) return;  // seen by nobody
    pointer_.controlChanged(control, property);
    controlChanged(control, property);
}

void CanvasWindow::formChanged(PropertyId property) {
    switch (property) {
        case PropertyId::Caption:
            SetWindowTextW(handle(), toWide(form().Caption.get()).c_str());
            break;
        case PropertyId::Left:
        case PropertyId::Top:
        case PropertyId::Width:
        case PropertyId::Height:
            geometryChanged();
            break;
        case PropertyId::Visible:
            takeVisibility();
            break;
        case PropertyId::WindowState:
            takeWindowState();
            break;
        case PropertyId::Focus:
            activate();
            break;
        case PropertyId::Enabled:
            EnableWindow(handle(), form().Enabled ? TRUE : FALSE);
            break;
        default:
            break;
    }
    controlChanged(form(), property);
}

/// A form that goes and grows does so in four properties: the window is moved once, before anything else is seen of it.
void CanvasWindow::geometryChanged() {
    if (taking_ || std::exchange(stale_, true)) return;
    PostMessageW(handle(), kTakeGeometry, 0, 0);
}

void CanvasWindow::takeGeometry() {
    if (taking_) return;
    stale_ = false;
    const POINT origin = context().origin(form());
    const SIZE size{std::max(1, context().toPixels(form().Width)), std::max(1, context().toPixels(form().Height))};
    RECT before{};
    GetWindowRect(handle(), &before);
    // What is shown of another size is painted anew: the old picture is not seen in the new place.
    const bool sameSize = before.right - before.left == size.cx && before.bottom - before.top == size.cy;
    const UINT copied = sameSize ? 0U : static_cast<UINT>(SWP_NOCOPYBITS);
    taking_ = true;
    ::SetWindowPos(handle(), nullptr, origin.x + context().toPixels(form().Left),
                   origin.y + context().toPixels(form().Top), size.cx, size.cy,
                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER | copied);
    taking_ = false;
    if (!sameSize && IsWindowVisible(handle()) != 0) UpdateWindow(handle());
}

void CanvasWindow::refresh() {
    if (stale_ && isBound()) takeGeometry();
    FormWindow::refresh();
}

void CanvasWindow::takeVisibility() {
    const bool shown = IsWindowVisible(handle()) != 0;
    if (form().Visible == shown) return;
    if (stale_) takeGeometry();
    if (!form().Visible) {
        loseMouse();
        ShowWindow(handle(), SW_HIDE);
    } else if (form().WindowState == WindowState::Minimized) {
        ShowWindow(handle(), SW_SHOWMINIMIZED);
    } else {
        putOnAScreen();
        const bool aside = opensByItself() && anotherProgramIsInFront();
        ShowWindow(handle(), aside ? SW_SHOWNOACTIVATE : SW_SHOW);
        if (!aside) activate();
    }
}

/// A window that no screen shows could not be brought back: it has no title bar.
void CanvasWindow::putOnAScreen() {
    if (MonitorFromWindow(handle(), MONITOR_DEFAULTTONULL) != nullptr) return;
    const RECT work = context().workArea();
    ::SetWindowPos(handle(), nullptr, work.left, work.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CanvasWindow::takeWindowState() {
    if (taking_ || IsWindowVisible(handle()) == 0) return;
    const bool minimise = form().WindowState == WindowState::Minimized;
    if (minimise == (IsIconic(handle()) != 0)) return;
    if (minimise) {
        loseMouse();
        ShowWindow(handle(), SW_MINIMIZE);
    } else {
        const bool aside = opensByItself() && anotherProgramIsInFront();
        ShowWindow(handle(), aside ? SW_SHOWNOACTIVATE : SW_RESTORE);
        if (!aside) activate();
    }
}

void CanvasWindow::placeChanged() {
    if (!bound() || taking_ || stale_ || IsWindowVisible(handle()) == 0 || IsIconic(handle()) != 0) return;
    RECT at{};
    GetWindowRect(handle(), &at);
    const POINT origin = context().origin(form());
    const int left = at.left - origin.x;
    const int top = at.top - origin.y;
    taking_ = true;
    // Whole twips stay as the form set them unless the window really is elsewhere.
    if (context().toPixels(form().Left) != left) form().Left = context().toTwips(left);
    if (context().toPixels(form().Top) != top) form().Top = context().toTwips(top);
    taking_ = false;
}

void CanvasWindow::sizeChanged(WPARAM kind) {
    if (!bound() || (kind != SIZE_MINIMIZED && kind != SIZE_RESTORED)) return;
    if (kind == SIZE_MINIMIZED) loseMouse();
    const bool was = std::exchange(taking_, true);
    form().WindowState = kind == SIZE_MINIMIZED ? WindowState::Minimized : WindowState::Normal;
    taking_ = was;
}

void CanvasWindow::paintDirty() {
    if (stale_ && bound()) takeGeometry();
    PAINTSTRUCT painting{};
    const HDC screen = BeginPaint(handle(), &painting);
    if (!bound()) {
        FillRect(screen, &painting.rcPaint, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    } else if (IsRectEmpty(&painting.rcPaint) == 0) {
        paint(screen, painting.rcPaint);
    }
    EndPaint(handle(), &painting);
}

}  // namespace corvane
