// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/canvas_window.h"

#include <cmath>
#include <cstdlib>
#include <utility>

#include "windows/windowing/accessible_form.h"
#include "windows/windowing/gdi_brush.h"
#include "windows/windowing/label_font.h"
#include "windows/windowing/shown_text.h"

namespace corvane {

namespace {

// A system menu, though none is seen, lets the task bar minimise and close the window.
constexpr DWORD kStyle = WS_POPUP | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;

constexpr UINT kTakePlace = WM_APP;  ///< the window's own: the form's place or size has changed

}  // namespace

CanvasWindow::CanvasWindow(DesktopContext& context)
    : SystemWindow(context),
      accessible_(new AccessibleForm(*this)),
      tip_((create(kStyle, WS_EX_APPWINDOW, {}), handle())),
      dropTarget_(
          handle(), [this] { return isBound() && live()->takesFiles(); },
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

void CanvasWindow::setCaption(const std::string& text) { SetWindowTextW(handle(), shownText(text).c_str()); }

void CanvasWindow::takeScale() {
    if (DrawnWindow* const window = live()) window->scaleChanged();
}

int CanvasWindow::textWidth(const std::string& text) {
    const HDC screen = GetDC(handle());
    const HGDIOBJ before = SelectObject(screen, GetStockObject(DEFAULT_GUI_FONT));
    const std::wstring wide = shownText(text);
    SIZE size{};
    GetTextExtentPoint32W(screen, wide.c_str(), static_cast<int>(wide.size()), &size);
    SelectObject(screen, before);
    ReleaseDC(handle(), screen);
    return static_cast<int>(std::ceil(size.cx / context().scale()));
}

void CanvasWindow::later(EventLoop::Handler handler) {
    context().loop.post([handler = std::move(handler), alive = std::weak_ptr<bool>(alive_)] {
        if (!alive.expired()) handler();
    });
}

// --- Place and state ---------------------------------------------------------------------------------------------

PixelPlace CanvasWindow::place() const {
    RECT at{};
    GetWindowRect(handle(), &at);
    return {static_cast<int>(at.left), static_cast<int>(at.top), static_cast<int>(at.right - at.left),
            static_cast<int>(at.bottom - at.top)};
}

/// What is shown of another size is painted anew at once: the old picture is not seen in the new place.
void CanvasWindow::setPlace(const PixelPlace& wanted) {
    const PixelPlace before = place();
    const bool sameSize = before.width == wanted.width && before.height == wanted.height;
    const UINT copied = sameSize ? 0U : static_cast<UINT>(SWP_NOCOPYBITS);
    ::SetWindowPos(handle(), nullptr, wanted.x, wanted.y, wanted.width, wanted.height,
                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER | copied);
    if (!sameSize && isShown()) UpdateWindow(handle());
}

void CanvasWindow::moveTo(PixelPoint corner) {
    ::SetWindowPos(handle(), nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

/// A form that goes and grows does so in four properties: the window is moved once, before anything else is seen of it.
void CanvasWindow::placeWanted() { PostMessageW(handle(), kTakePlace, 0, 0); }

bool CanvasWindow::staysAside() const { return opensByItself() && anotherProgramIsInFront(); }

void CanvasWindow::showUp() {
    const bool aside = staysAside();
    ShowWindow(handle(), aside ? SW_SHOWNOACTIVATE : SW_SHOW);
    if (!aside) activate();
}

void CanvasWindow::showMinimised() { ShowWindow(handle(), isShown() ? SW_MINIMIZE : SW_SHOWMINIMIZED); }

void CanvasWindow::restore() {
    const bool aside = staysAside();
    ShowWindow(handle(), aside ? SW_SHOWNOACTIVATE : SW_RESTORE);
    if (!aside) activate();
}

void CanvasWindow::sizeTold(WPARAM kind) {
    if (kind != SIZE_MINIMIZED && kind != SIZE_RESTORED) return;
    const bool was = std::exchange(minimised_, kind == SIZE_MINIMIZED);
    if (was != minimised_) live()->minimised(minimised_);
}

bool CanvasWindow::isDrag(int across, int down) const {
    return std::abs(across) >= GetSystemMetrics(SM_CXDRAG) || std::abs(down) >= GetSystemMetrics(SM_CYDRAG);
}

void CanvasWindow::letMouseGo() {
    if (GetCapture() == handle()) ReleaseCapture();
}

// --- Painting ----------------------------------------------------------------------------------------------------

void CanvasWindow::paintAnew(const PixelPlace& part) {
    const RECT dirty{part.x, part.y, part.x + part.width, part.y + part.height};
    InvalidateRect(handle(), &dirty, FALSE);
}

void CanvasWindow::showRing(const Rectangle& place) {
    ring_ = place;
    paintAllAnew();
}

void CanvasWindow::paint() {
    DrawnWindow* const window = live();
    if (window != nullptr) window->settlePlace();
    PAINTSTRUCT painting{};
    const HDC screen = BeginPaint(handle(), &painting);
    if (window == nullptr) {
        FillRect(screen, &painting.rcPaint, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    } else if (IsRectEmpty(&painting.rcPaint) == 0) {
        RECT client{};
        GetClientRect(handle(), &client);
        GdiBrush brush(painting.rcPaint, {static_cast<int>(client.right), static_cast<int>(client.bottom)},
                       context().scale(), stretched_);
        window->paint(brush);
        brush.ring(ring_);
        brush.show(screen);
    }
    EndPaint(handle(), &painting);
}

double CanvasWindow::labelWidth(const std::string& text, double height) const {
    return LabelFont(height).width(shownText(text));
}

// --- Assistive programs ------------------------------------------------------------------------------------------

void CanvasWindow::focusChanged() {
    const Control* const focused = isBound() ? live()->focused() : nullptr;
    if (focused == nullptr) return;
    NotifyWinEvent(EVENT_OBJECT_FOCUS, handle(), OBJID_CLIENT, accessible_->childOf(*focused));
}

LRESULT CanvasWindow::message(UINT message, WPARAM first, LPARAM second) {
    if (mouse(message, second) || wheel(handle(), message, first, second) || key(message, first, second)) return 0;
    DrawnWindow* const window = live();
    switch (message) {
        case WM_PAINT:
            paint();
            return 0;
        case kTakePlace:
            if (window != nullptr) window->settlePlace();
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_GETOBJECT:
            if (static_cast<LONG>(second) != OBJID_CLIENT || window == nullptr) break;
            return LresultFromObject(IID_IAccessible, first, accessible_);
        case WM_MOVE:
            if (window != nullptr) window->moved();
            return 0;
        case WM_SIZE:
            if (window != nullptr) sizeTold(first);
            return 0;
        case WM_ACTIVATE:
            if (LOWORD(first) != WA_INACTIVE && window != nullptr) window->activated();
            break;  // the system gives the focus
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            keyboardCame(message == WM_SETFOCUS);
            return 0;
        case WM_CANCELMODE:
            if (window != nullptr) window->loseMouse();
            break;
        case WM_CAPTURECHANGED:
            if (reinterpret_cast<HWND>(second) != handle() && window != nullptr && window->holdsMouse()) {
                window->loseMouse();
            }
            return 0;
        case WM_ENABLE:
            if (first == 0 && window != nullptr) window->loseMouse();
            return 0;
        case WM_DROPFILES: {
            POINT at{};
            DragQueryPoint(reinterpret_cast<HDROP>(first), &at);
            const DropData data = filesOf(reinterpret_cast<HGLOBAL>(first));
            DragFinish(reinterpret_cast<HDROP>(first));
            dropped(data, at);
            return 0;
        }
        case WM_NOTIFY:
            tip_.notify(second, [this] { return tipUnderPointer(); });
            return 0;
        default:
            break;
    }
    return SystemWindow::message(message, first, second);
}

}  // namespace corvane
