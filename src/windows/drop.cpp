// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/drop.h"

#include <ole2.h>

#include <atomic>
#include <cstring>
#include <string>
#include <utility>

#include "winapi/text.h"
// After windows.h:
#include <shlobj.h>

namespace corvane {

namespace {

constexpr std::size_t kMostFiles = 65536;  ///< of one drop; a list takes 256 of them

/// The names end with an empty one. What is not ended is not read.
template <class Unit, class Text>
DropData namesOf(std::span<const std::byte> bytes, const Text& textOf) {
    std::basic_string<Unit> units(bytes.size() / sizeof(Unit), Unit{});
    if (!units.empty()) std::memcpy(units.data(), bytes.data(), units.size() * sizeof(Unit));
    DropData data;
    for (std::size_t from = 0; from < units.size() && data.files.size() < kMostFiles;) {
        const std::size_t end = units.find(Unit{}, from);
        if (end == std::basic_string<Unit>::npos || end == from) break;
        data.files.push_back(textOf(units.substr(from, end - from)));
        from = end + 1;
    }
    data.hasFiles = !data.files.empty();
    return data;
}

std::string ansiText(const std::string& name) {
    std::wstring wide(name.size(), L'\0');
    const int size = static_cast<int>(name.size());
    wide.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, name.data(), size, wide.data(), size)));
    return fromWide(wide);
}

FORMATETC formatOf(CLIPFORMAT format) { return {format, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL}; }

bool offers(IDataObject* object, CLIPFORMAT format) {
    FORMATETC wanted = formatOf(format);
    return object != nullptr && object->QueryGetData(&wanted) == S_OK;
}

bool offersText(IDataObject* object) { return offers(object, CF_UNICODETEXT) || offers(object, CF_TEXT); }

DropData dataOf(IDataObject* object) {
    FORMATETC wanted = formatOf(CF_HDROP);
    STGMEDIUM given{};
    if (object->GetData(&wanted, &given) != S_OK) return {};
    DropData data;
    if (given.tymed == TYMED_HGLOBAL) data = filesOf(given.hGlobal);
    ReleaseStgMedium(&given);
    return data;
}

}  // namespace

DropData filesOf(std::span<const std::byte> bytes) {
    DROPFILES header{};
    if (bytes.size() < sizeof header) return {};
    std::memcpy(&header, bytes.data(), sizeof header);
    if (header.pFiles < sizeof header || header.pFiles > bytes.size()) return {};
    const auto names = bytes.subspan(header.pFiles);
    return header.fWide != FALSE ? namesOf<wchar_t>(names, [](const std::wstring& each) { return fromWide(each); })
                                 : namesOf<char>(names, ansiText);
}

DropData filesOf(HGLOBAL memory) {
    const auto* const bytes = static_cast<const std::byte*>(GlobalLock(memory));
    if (bytes == nullptr) return {};
    DropData data = filesOf({bytes, GlobalSize(memory)});
    GlobalUnlock(memory);
    return data;
}

class DropTarget::Target : public IDropTarget {
public:
    Target(Wanted wanted, Dropped dropped) : wanted_(std::move(wanted)), dropped_(std::move(dropped)) {}
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    /// The window goes; the system may ask a little longer.
    void leave() {
        wanted_ = {};
        dropped_ = {};
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** given) override {
        const bool known = wanted == IID_IUnknown || wanted == IID_IDropTarget;
        *given = known ? this : nullptr;
        if (!known) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* object, DWORD, POINTL, DWORD* effect) override {
        known_ = offers(object, CF_HDROP) || offersText(object);
        return answer(effect);
    }
    HRESULT STDMETHODCALLTYPE DragOver(DWORD, POINTL, DWORD* effect) override { return answer(effect); }
    HRESULT STDMETHODCALLTYPE DragLeave() override {
        known_ = false;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Drop(IDataObject* object, DWORD keys, POINTL at, DWORD* effect) override {
        known_ = offers(object, CF_HDROP) || offersText(object);
        answer(effect);
        if (*effect != DROPEFFECT_NONE && dropped_) {
            DropData data = dataOf(object);
            data.toAdd = (keys & MK_SHIFT) != 0;
            dropped_(data, {at.x, at.y});
        }
        known_ = false;
        return S_OK;
    }

protected:
    virtual ~Target() = default;

private:
    /// Nothing is ever taken away from where it came.
    HRESULT answer(DWORD* effect) const {
        const bool takes = known_ && wanted_ && wanted_() && (*effect & DROPEFFECT_COPY) != 0;
        *effect = takes ? DROPEFFECT_COPY : DROPEFFECT_NONE;
        return S_OK;
    }

    std::atomic<ULONG> references_ = 1;
    Wanted wanted_;
    Dropped dropped_;
    bool known_ = false;  ///< what is dragged over the window can be taken
};

DropTarget::DropTarget(HWND window, Wanted wanted, Dropped dropped)
    : window_(window), target_(new Target(std::move(wanted), std::move(dropped))) {
    if (RegisterDragDrop(window_, target_) == S_OK) return;
    target_->Release();
    target_ = nullptr;
}

DropTarget::~DropTarget() {
    if (target_ == nullptr) return;
    RevokeDragDrop(window_);
    target_->leave();
    target_->Release();
}

IDropTarget* DropTarget::asked() const { return target_; }

}  // namespace corvane
