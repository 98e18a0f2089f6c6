// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/qt_windows.h"

#include <QApplication>
#include <QScreen>
#include <QWindow>
#include <utility>

#include "linux/native/native_window.h"
#include "linux/windowing/accessible_form.h"
#include "linux/windowing/media_window.h"
#include "linux/windowing/painted_window.h"

namespace corvane {

namespace {

constexpr std::uint32_t kShowWindow = 0x40;
constexpr std::uint32_t kHideWindow = 0x80;

std::unique_ptr<FormWindow> makeWindow(Form& form, DesktopContext& context) {
    switch (form.style()) {
        case FormStyle::Painted:
            return std::make_unique<PaintedWindow>(form, context);
        case FormStyle::Media:
            return std::make_unique<MediaWindow>(form, context);
        case FormStyle::Dialog:
            return makeNativeWindow(form, context);
        case FormStyle::Hidden:
            break;
    }
    return nullptr;
}

QSizeF screenTwips(const DesktopContext& context) {
    const QScreen* const screen = context.screen();
    if (screen == nullptr) return {};
    return QSizeF(screen->geometry().size()) * static_cast<double>(kTwipsPerPixel) / context.scale;
}

}  // namespace

QtWindows::QtWindows(DesktopContext& context) : context_(context), screens_([this] { screensChanged(); }) {
    offerAccessibleForms();
}

QtWindows::~QtWindows() = default;

void QtWindows::attach(Form& form) {
    auto window = makeWindow(form, context_);
    if (!window) return;
    if (form.style() == FormStyle::Painted) context_.panel = window->widget();
    window->bind();
    windows_[&form] = std::move(window);
    offerWaitingFiles();
}

/// A form that takes files may have come, or be enabled again now that a dialog has gone. Looked at after the present
/// handler, when forms have tied their events.
void QtWindows::offerWaitingFiles() {
    if (!waiting_) return;
    context_.loop.post([this] {
        if (waiting_) dropFiles(*std::exchange(waiting_, {}));
    });
}

void QtWindows::detach(Form& form) {
    const auto found = windows_.find(&form);
    if (found == windows_.end()) return;
    auto window = std::move(found->second);
    windows_.erase(found);
    window->unbind();
    context_.graveyard.lay(std::move(window));
    offerWaitingFiles();
}

FormWindow* QtWindows::windowOf(const Form& form) const {
    const auto found = windows_.find(&form);
    return found == windows_.end() ? nullptr : found->second.get();
}

Twips QtWindows::screenWidth() { return static_cast<Twips>(screenTwips(context_).width()); }

Twips QtWindows::screenHeight() { return static_cast<Twips>(screenTwips(context_).height()); }

int QtWindows::doubleClickTimeMs() { return QApplication::doubleClickInterval(); }

void QtWindows::SetWindowPos(Form& form, int insertAfter, std::uint32_t flags) {
    FormWindow* const window = windowOf(form);
    if (window == nullptr) return;
    if (insertAfter == kTopMost || insertAfter == kNotTopMost) {
        QWidget* const widget = window->widget();
        Qt::WindowFlags wanted = widget->windowFlags();
        wanted.setFlag(Qt::WindowStaysOnTopHint, insertAfter == kTopMost);
        // A widget that is given new flags is hidden and made anew; its window takes them while it is shown.
        widget->overrideWindowFlags(wanted);
        if (widget->windowHandle() != nullptr) widget->windowHandle()->setFlags(wanted);
    }
    if ((flags & kShowWindow) != 0) form.Show();
    if ((flags & kHideWindow) != 0) form.Hide();
}

void QtWindows::beginDrag(Form& form) {
    if (FormWindow* const window = windowOf(form)) window->beginDrag();
}

void QtWindows::activate(Form& form) {
    if (FormWindow* const window = windowOf(form)) window->activate();
}

void QtWindows::refresh(Form& form) {
    if (FormWindow* const window = windowOf(form)) window->refresh();
}

int QtWindows::textWidth(Form& form, const std::string& text) {
    FormWindow* const window = windowOf(form);
    return window != nullptr ? window->textWidth(text) : 0;
}

CanvasWindow* QtWindows::fileTaker() const {
    for (const auto& [form, window] : windows_) {
        auto* const canvas = dynamic_cast<CanvasWindow*>(window.get());
        if (form->style() == FormStyle::Painted && canvas != nullptr && canvas->takesFiles()) return canvas;
    }
    return nullptr;
}

void QtWindows::dropFiles(const DropData& dropped) {
    if (CanvasWindow* const taker = fileTaker()) {
        taker->dropFiles(dropped);
        taker->activate();
    } else {
        waiting_ = dropped;
    }
}

void QtWindows::bringForward() {
    if (context_.box) {
        context_.box->raise();
        return context_.box->activateWindow();
    }
    context_.loop.post([this] {
        CanvasWindow* const taker = fileTaker();
        for (const auto& [form, window] : windows_) {
            const bool front = taker != nullptr ? window.get() == taker : form->style() == FormStyle::Dialog;
            if (!front || !form->Visible) continue;
            window->form().WindowState = WindowState::Normal;
            window->activate();
        }
    });
}

void QtWindows::requestClose() {
    for (const auto& [form, window] : windows_) {
        auto* const canvas = dynamic_cast<CanvasWindow*>(window.get());
        if (form->style() == FormStyle::Painted && canvas != nullptr) canvas->requestClose();
    }
}

void QtWindows::screensChanged() {
    for (const auto& [form, window] : windows_) {
        if (auto* const canvas = dynamic_cast<CanvasWindow*>(window.get())) canvas->screensChanged();
    }
}

void QtWindows::hideAll() {
    for (const auto& [form, window] : windows_) window->widget()->hide();
}

}  // namespace corvane
