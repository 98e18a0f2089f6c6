// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/program/windows_loop.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace corvane {

namespace {

constexpr UINT kWake = WM_APP;
constexpr UINT kSent = WM_APP + 1;

class LoopDoor : public UiPost::Door {
public:
    explicit LoopDoor(WindowsLoop& loop) : loop_(loop) {}
    void ask(EventLoop::Handler call) override { loop_.postFromThread(std::move(call)); }
    void shut() override {}

private:
    WindowsLoop& loop_;
};

}  // namespace

WindowsLoop::WindowsLoop() : window_([this](UINT message, WPARAM, LPARAM) { return handle(message); }) {}

bool WindowsLoop::callSoon() { return PostMessageW(window_.handle(), kWake, 0, 0) != 0; }

std::optional<LRESULT> WindowsLoop::handle(UINT message) {
    if (message == kWake) {
        called();
        return 0;
    }
    if (message == kSent) {
        takeSent();
        return 0;
    }
    return std::nullopt;
}

void WindowsLoop::takeSent() {
    std::vector<Handler> sent;
    {
        const std::lock_guard lock(mutex_);
        sent.swap(sent_);
    }
    if (stopped()) return;
    for (Handler& event : sent) post(std::move(event));
}

void WindowsLoop::postFromThread(Handler event) {
    const std::lock_guard lock(mutex_);
    sent_.push_back(std::move(event));
    if (sent_.size() == 1) PostMessageW(window_.handle(), kSent, 0, 0);
}

UiPost WindowsLoop::uiPost() {
    return UiPost([this] { return std::make_unique<LoopDoor>(*this); });
}

void WindowsLoop::afterMessage(Handler handler) {
    after_.push_back(std::move(handler));
    PostMessageW(window_.handle(), WM_NULL, 0, 0);  // in case no other message comes
}

void WindowsLoop::runAfter() {
    for (Handler& handler : std::exchange(after_, {})) handler();
}

void WindowsLoop::deliver(MSG& message) {
    if (filter_ && filter_(message)) return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void WindowsLoop::dispatch(MSG& message) {
    deliver(message);
    runAfter();
}

void WindowsLoop::run() {
    MSG message{};
    while (!quitting_ && GetMessageW(&message, nullptr, 0, 0) > 0) dispatch(message);
}

bool WindowsLoop::runUntil(const std::function<bool()>& condition, int atMostMs) {
    return handleUntil(condition, atMostMs, &WindowsLoop::dispatch);
}

bool WindowsLoop::pumpInside(const std::function<bool()>& condition, int atMostMs) {
    return handleUntil(condition, atMostMs, &WindowsLoop::deliver);
}

bool WindowsLoop::handleUntil(const std::function<bool()>& condition, int atMostMs, void (WindowsLoop::*each)(MSG&)) {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(std::max(atMostMs, 0));
    while (!condition()) {
        MSG message{};
        if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
            (this->*each)(message);
            continue;
        }
        const ULONGLONG now = GetTickCount64();
        if (now >= end) return false;
        constexpr ULONGLONG kLook = 5;  // a condition may come true without a message
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(std::min(end - now, kLook)), QS_ALLINPUT);
    }
    return true;
}

void WindowsLoop::quit() {
    quitting_ = true;
    PostMessageW(window_.handle(), WM_NULL, 0, 0);
}

}  // namespace corvane
