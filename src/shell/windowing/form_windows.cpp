// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/windowing/form_windows.h"

#include <utility>

namespace corvane {

namespace {

constexpr std::uint32_t kShowWindow = 0x40;
constexpr std::uint32_t kHideWindow = 0x80;

}  // namespace

FormWindows::~FormWindows() = default;

void FormWindows::attach(Form& form) {
    auto window = makeWindow(form);
    if (!window) return;
    if (form.style() == FormStyle::Painted) {
        panel_ = window.get();
        panelIs(panel_);
    }
    window->bind();
    windows_[&form] = std::move(window);
    offerWaitingFiles();
}

/// A form that takes files may have come, or be enabled again now that a dialog has gone. Looked at after the present
/// handler, when forms have tied their events.
void FormWindows::offerWaitingFiles() {
    if (!waiting_) return;
    loop_.post([this] {
        if (waiting_) dropFiles(*std::exchange(waiting_, {}));
    });
}

void FormWindows::detach(Form& form) {
    const auto found = windows_.find(&form);
    if (found == windows_.end()) return;
    auto window = std::move(found->second);
    windows_.erase(found);
    window->unbind();
    if (window.get() == panel_) {
        panel_ = nullptr;
        for (const auto& [each, other] : windows_) {
            if (each->style() == FormStyle::Painted) panel_ = other.get();
        }
        panelIs(panel_);
    }
    bury(std::move(window));
    offerWaitingFiles();
}

BoundWindow* FormWindows::windowOf(const Form& form) const {
    const auto found = windows_.find(&form);
    return found == windows_.end() ? nullptr : found->second.get();
}

Twips FormWindows::screenWidth() { return screens_.toTwips(screens_.ofPanel().width); }

Twips FormWindows::screenHeight() { return screens_.toTwips(screens_.ofPanel().height); }

/// Showing and hiding go through the form, which must know of it. The place is the form's as well.
void FormWindows::SetWindowPos(Form& form, int insertAfter, std::uint32_t flags) {
    BoundWindow* const window = windowOf(form);
    if (window == nullptr) return;
    window->frame().stack(insertAfter, flags & ~(kShowWindow | kHideWindow));
    if ((flags & kShowWindow) != 0) form.Show();
    if ((flags & kHideWindow) != 0) form.Hide();
}

void FormWindows::beginDrag(Form& form) {
    if (BoundWindow* const window = windowOf(form)) window->beginDrag();
}

void FormWindows::activate(Form& form) {
    if (BoundWindow* const window = windowOf(form)) window->frame().activate();
}

void FormWindows::refresh(Form& form) {
    if (BoundWindow* const window = windowOf(form)) window->refresh();
}

int FormWindows::textWidth(Form& form, const std::string& text) {
    BoundWindow* const window = windowOf(form);
    return window != nullptr ? window->frame().textWidth(text) : 0;
}

template <class Act>
void FormWindows::eachDrawn(const Act& act) const {
    for (const auto& [form, window] : windows_) {
        if (auto* const drawn = dynamic_cast<DrawnWindow*>(window.get())) act(*form, *drawn);
    }
}

DrawnWindow* FormWindows::fileTaker() const {
    DrawnWindow* taker = nullptr;
    eachDrawn([&](const Form& form, DrawnWindow& drawn) {
        if (taker == nullptr && form.style() == FormStyle::Painted && drawn.takesFiles()) taker = &drawn;
    });
    return taker;
}

void FormWindows::dropFiles(const DropData& dropped) {
    if (DrawnWindow* const taker = fileTaker()) {
        taker->dropFiles(dropped);
        taker->frame().activate();
    } else {
        waiting_ = dropped;
    }
}

void FormWindows::bringForward() {
    loop_.post([this] {
        const DrawnWindow* const taker = fileTaker();
        for (const auto& [form, window] : windows_) {
            const bool front = taker != nullptr ? window.get() == taker : form->style() == FormStyle::Dialog;
            if (!front || !form->Visible) continue;
            window->form().WindowState = WindowState::Normal;
            window->frame().activate();
        }
    });
}

void FormWindows::requestClose() {
    eachDrawn([](const Form& form, DrawnWindow& drawn) {
        if (form.style() == FormStyle::Painted) drawn.requestClose();
    });
}

void FormWindows::loseMouse() {
    eachDrawn([](const Form& /*form*/, DrawnWindow& drawn) { drawn.loseMouse(); });
}

void FormWindows::screensChanged() {
    eachDrawn([](const Form& /*form*/, DrawnWindow& drawn) { drawn.screensChanged(); });
}

void FormWindows::hideAll() {
    for (const auto& [form, window] : windows_) window->frame().putAway();
}

}  // namespace corvane
