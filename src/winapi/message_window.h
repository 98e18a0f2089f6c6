// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "winapi/api.h"

namespace corvane {

/// A window that is never seen and takes messages only: from the system, from other threads, from other programs.
/// Made and destroyed on the user-interface thread; no message is handled after its destruction.
class MessageWindow {
public:
    /// What a message is answered with; empty: the system's own answer.
    using Handler = std::function<std::optional<LRESULT>(UINT message, WPARAM first, LPARAM second)>;

    /// name: found by other programs under the class kMessageClass and this title.
    explicit MessageWindow(Handler handler, const std::wstring& name = {});
    MessageWindow(const MessageWindow&) = delete;
    MessageWindow& operator=(const MessageWindow&) = delete;
    ~MessageWindow();

    HWND handle() const { return handle_; }

private:
    static LRESULT CALLBACK procedure(HWND handle, UINT message, WPARAM first, LPARAM second);
    Handler handler_;
    HWND handle_ = nullptr;
};

inline constexpr const wchar_t* kMessageClass = L"CorvaneMessages";

}  // namespace corvane
