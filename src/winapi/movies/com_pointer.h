// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <utility>

#include "winapi/api.h"
// After windows.h:
#include <objbase.h>

namespace corvane {

/// One reference to a COM object, released with it.
template <class Interface>
class ComPointer {
public:
    ComPointer() = default;
    ComPointer(const ComPointer&) = delete;
    ComPointer& operator=(const ComPointer&) = delete;
    ComPointer(ComPointer&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPointer& operator=(ComPointer&& other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ComPointer() { reset(); }

    void reset() {
        if (Interface* const object = std::exchange(object_, nullptr)) object->Release();
    }
    Interface* operator->() const { return object_; }
    Interface* get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }
    Interface** out() {
        reset();
        return &object_;
    }

    /// id: of the interface.
    HRESULT create(const CLSID& kind, const IID& id) {
        return CoCreateInstance(kind, nullptr, CLSCTX_INPROC_SERVER, id, reinterpret_cast<void**>(out()));
    }
    /// Another interface of an object; empty when it has none.
    template <class Other>
    HRESULT from(const ComPointer<Other>& other, const IID& id) {
        return other->QueryInterface(id, reinterpret_cast<void**>(out()));
    }

private:
    Interface* object_ = nullptr;
};

/// COM on this thread for as long as it lives; on a thread that another part has set up, its way.
class ComThread {
public:
    explicit ComThread(COINIT way) : result_(CoInitializeEx(nullptr, static_cast<DWORD>(way))) {}
    ComThread(const ComThread&) = delete;
    ComThread& operator=(const ComThread&) = delete;
    ~ComThread() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }

private:
    HRESULT result_;
};

}  // namespace corvane
