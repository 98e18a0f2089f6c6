// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <utility>

#include "winapi/api.h"

namespace corvane {

/// Owns a handle of the system that CloseHandle() closes.
class Handle {
public:
    Handle() = default;
    explicit Handle(HANDLE handle) : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Handle() { reset(); }

    HANDLE get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }
    void reset() {
        if (handle_ != nullptr) CloseHandle(std::exchange(handle_, nullptr));
    }

private:
    HANDLE handle_ = nullptr;
};

}  // namespace corvane
