// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/windows_windows.h"

#include <utility>

#include "windows/native/native_form_window.h"
#include "windows/windowing/media_window.h"
#include "windows/windowing/painted_window.h"

namespace corvane {

namespace {

/// The flags that the core uses are the system's.
static_assert(SWP_NOSIZE == 0x01 && SWP_NOMOVE == 0x02 && SWP_NOACTIVATE == 0x10 && SWP_SHOWWINDOW == 0x40 &&
              SWP_HIDEWINDOW == 0x80);

std::unique_ptr<FormWindow> makeWindow(Form& form, DesktopContext& context) {
    switch (form.style()) {
        case FormStyle::Painted:
            return std::make_unique<PaintedWindow>(form, context);
        case FormStyle::Media:
            return std::make_unique<MediaWindow>(form, context);
        case FormStyle::Dialog:
            return std::make_unique<NativeWindow>(form, context);
        case FormStyle::Hidden:
            break;
    }
    return nullptr;
}

}  // namespace

WindowsWindows::WindowsWindows(DesktopContext& context) : context_(context) {
    context_.loop.onMessage([](MSG& message) {
        FormWindow* const window = FormWindow::of(GetAncestor(message.hwnd, GA_ROOT));
        return window != nullptr && window->filter(message);
    });
}

WindowsWindows::~WindowsWindows() { context_.loop.onMessage({}); }

void WindowsWindows::attach(Form& form) {
    auto window = makeWindow(form, context_);
    if (!window) return;
    if (form.style() == FormStyle::Painted) context_.panel = window->handle();
    window->bind();
    windows_[&form] = std::move(window);
    offerWaitingFiles();
}

/// A form that takes files may have come, or be enabled again now that a dialog has gone. Looked at after the present
/// handler, when forms have tied their events.
void WindowsWindows::offerWaitingFiles() {
    if (!waiting_) return;
    context_.loop.post([this] {
        if (waiting_) dropFiles(*std::exchange(waiting_, {}));
    });
}

void WindowsWindows::detach(Form& form) {
    const auto found = windows_.find(&form);
    if (found == windows_.end()) return;
    const std::shared_ptr<FormWindow> window = std::move(found->second);
    windows_.erase(found);
    window->unbind();
    if (context_.panel == window->handle()) {
        context_.panel = nullptr;
        for (const auto& [each, other] : windows_) {
            if (each->style() == FormStyle::Painted) context_.panel = other->handle();
        }
    }
    context_.loop.afterMessage([window] {});  // its own code may be running
    offerWaitingFiles();
}

FormWindow* WindowsWindows::windowOf(const Form& form) const {
    const auto found = windows_.find(&form);
    return found == windows_.end() ? nullptr : found->second.get();
}

Twips WindowsWindows::screenWidth() {
    const RECT screen = context_.screen();
    return context_.toTwips(screen.right - screen.left);
}

Twips WindowsWindows::screenHeight() {
    const RECT screen = context_.screen();
    return context_.toTwips(screen.bottom - screen.top);
}

void WindowsWindows::SetWindowPos(Form& form, int insertAfter, std::uint32_t flags) {
    FormWindow* const window = windowOf(form);
    if (window == nullptr) return;
    // Showing and hiding go through the form, which must know of it. The place is the form's as well.
    const UINT order = flags & ~static_cast<UINT>(SWP_SHOWWINDOW | SWP_HIDEWINDOW);
    ::SetWindowPos(window->handle(), reinterpret_cast<HWND>(static_cast<LONG_PTR>(insertAfter)), 0, 0, 0, 0,
                   order | SWP_NOMOVE | SWP_NOSIZE);
    if ((flags & SWP_SHOWWINDOW) != 0) form.Show();
    if ((flags & SWP_HIDEWINDOW) != 0) form.Hide();
}

void WindowsWindows::beginDrag(Form& form) {
    if (FormWindow* const window = windowOf(form)) window->beginDrag();
}

void WindowsWindows::activate(Form& form) {
    if (FormWindow* const window = windowOf(form)) window->activate();
}

void WindowsWindows::refresh(Form& form) {
    if (FormWindow* const window = windowOf(form)) window->refresh();
}

int WindowsWindows::textWidth(Form& form, const std::string& text) {
    FormWindow* const window = windowOf(form);
    return window != nullptr ? window->textWidth(text) : 0;
}

CanvasWindow* WindowsWindows::fileTaker() const {
    for (const auto& [form, window] : windows_) {
        auto* const canvas = dynamic_cast<CanvasWindow*>(window.get());
        if (form->style() == FormStyle::Painted && canvas != nullptr && canvas->takesFiles()) return canvas;
    }
    return nullptr;
}

void WindowsWindows::dropFiles(const DropData& dropped) {
    if (CanvasWindow* const taker = fileTaker()) {
        taker->dropFiles(dropped);
    } else {
        waiting_ = dropped;
    }
}

void WindowsWindows::loseMouse() {
    for (const auto& [form, window] : windows_) {
        if (auto* const canvas = dynamic_cast<CanvasWindow*>(window.get())) canvas->loseMouse();
    }
}

void WindowsWindows::raise() {
    FormWindow* chosen = nullptr;
    for (const auto& [form, window] : windows_) {
        const bool usable = IsWindowVisible(window->handle()) != 0 && IsWindowEnabled(window->handle()) != 0;
        const bool better = chosen == nullptr || form->style() == FormStyle::Painted;
        if (usable && form->style() != FormStyle::Media && better) chosen = window.get();
    }
    if (chosen == nullptr) return;
    if (IsIconic(chosen->handle()) != 0) ShowWindow(chosen->handle(), SW_RESTORE);
    chosen->activate();
}

void WindowsWindows::requestClose() {
    for (const auto& [form, window] : windows_) {
        if (auto* const canvas = dynamic_cast<CanvasWindow*>(window.get()); form->style() == FormStyle::Painted) {
            canvas->askToClose();
        }
    }
}

void WindowsWindows::hideAll() {
    for (const auto& [form, window] : windows_) ShowWindow(window->handle(), SW_HIDE);
}

}  // namespace corvane
