// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/drop.h"

#include <gtest/gtest.h>
#include <ole2.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "shell/windowing/make_drawn.h"
#include "winapi/text.h"
#include "windows/windowing/media_canvas.h"
// After windows.h:
#include <shlobj.h>

namespace corvane {
namespace {

using Texts = std::vector<std::string>;
using Bytes = std::vector<std::byte>;

/// What another program puts together: names one after another, each with its end, and an end of them all.
template <class Unit>
Bytes dropOf(const std::basic_string<Unit>& names, DWORD offset = sizeof(DROPFILES)) {
    DROPFILES header{};
    header.pFiles = offset;
    header.fWide = sizeof(Unit) > 1 ? TRUE : FALSE;
    Bytes bytes(sizeof header + names.size() * sizeof(Unit));
    std::memcpy(bytes.data(), &header, sizeof header);
    std::memcpy(bytes.data() + sizeof header, names.data(), names.size() * sizeof(Unit));
    return bytes;
}

HGLOBAL memoryOf(const Bytes& bytes) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    std::memcpy(GlobalLock(memory), bytes.data(), bytes.size());
    GlobalUnlock(memory);
    return memory;
}

/// WIN-47: What another program says was dropped is read no further than it goes
TEST(DroppedFiles, AreReadInTheirOrder) {
    using namespace std::string_literals;
    const DropData wide = filesOf(dropOf(L"C:\\b c.mp3\0C:\\\x65E5.wav\0\0"s));
    EXPECT_TRUE(wide.hasFiles);
    EXPECT_EQ(wide.files, (Texts{"C:\\b c.mp3", "C:\\\xE6\x97\xA5.wav"}));
    EXPECT_EQ(filesOf(dropOf("C:\\a.wav\0C:\\b.wav\0\0"s)).files, (Texts{"C:\\a.wav", "C:\\b.wav"}));
}

/// WIN-47
TEST(DroppedFiles, WhatIsNotWholeIsNotReadBeyond) {
    using namespace std::string_literals;
    EXPECT_EQ(filesOf(dropOf(L"C:\\a.wav\0C:\\b.wa"s)).files, Texts{"C:\\a.wav"}) << "no end";
    EXPECT_FALSE(filesOf(dropOf(L"C:\\a.wav"s)).hasFiles);
    EXPECT_FALSE(filesOf(dropOf(L""s)).hasFiles);
    for (const DWORD offset : {0U, 4U, 1000U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        EXPECT_FALSE(filesOf(dropOf(L"C:\\a.wav\0\0"s, offset)).hasFiles) << offset;
    }
    const Bytes whole = dropOf(L"C:\\a.wav\0\0"s);
    for (std::size_t size = 0; size <= sizeof(DROPFILES) + 2; ++size) {
        EXPECT_FALSE(filesOf(std::span(whole).first(size)).hasFiles) << size;
    }
    std::wstring many;
    for (int i = 0; i < 100'000; ++i) many += L"a" + std::wstring(1, L'\0');
    EXPECT_EQ(filesOf(dropOf(many)).files.size(), 65536U);
}

/// What a program offers while it drags: files or a text, or something that no player knows.
class Dragged : public IDataObject {
public:
    Dragged(CLIPFORMAT format, Bytes bytes) : format_(format), bytes_(std::move(bytes)) {}
    virtual ~Dragged() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** given) override {
        *given = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* wanted) override {
        return wanted->cfFormat == format_ ? S_OK : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* wanted, STGMEDIUM* given) override {
        if (wanted->cfFormat != format_) return DV_E_FORMATETC;
        *given = {};
        given->tymed = TYMED_HGLOBAL;
        given->hGlobal = memoryOf(bytes_);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }

private:
    CLIPFORMAT format_;
    Bytes bytes_;
};

struct OleHere {
    OleHere() { OleInitialize(nullptr); }
    ~OleHere() { OleUninitialize(); }
};

/// A form that takes drops on a button from 10, 10 to 50, 30 and elsewhere.
struct DropForm : ::testing::Test {
    DropForm() {
        form.SetSize(200 * kTwipsPerPixel, 100 * kTwipsPerPixel);
        button.Move(10 * kTwipsPerPixel, 10 * kTwipsPerPixel);
        button.SetSize(40 * kTwipsPerPixel, 20 * kTwipsPerPixel);
        button.OLEDragDrop.tie([this](const DropData& data) { taken("button", data); });
        form.OLEDragDrop.tie([this](const DropData& data) { taken("form", data); });
        window->bind();
        form.Show();
        loop.runUntil([] { return false; }, 50);
    }
    ~DropForm() override { window->unbind(); }
    void taken(const std::string& where, const DropData& data) {
        std::string text = where + (data.hasFiles ? " files" : " other");
        for (const std::string& each : data.files) text += " " + each;
        seen.push_back(text);
    }
    /// The effect that the drag shows over the window, then what the drop did.
    DWORD drag(Dragged& object, POINT at, DWORD allowed = DROPEFFECT_COPY | DROPEFFECT_MOVE) {
        ClientToScreen(canvas.handle(), &at);
        DWORD over = allowed;
        DWORD dropped = allowed;
        IDropTarget* const target = canvas.dropTarget();
        if (target == nullptr) return 0xFFFFFFFFU;
        target->DragEnter(&object, 0, {at.x, at.y}, &over);
        target->Drop(&object, 0, {at.x, at.y}, &dropped);
        EXPECT_EQ(over, dropped);
        EXPECT_EQ(seen, Texts{}) << "done as an event of its own";
        loop.runUntil([this] { return !seen.empty(); }, over == DROPEFFECT_NONE ? 100 : 2000);
        return over;
    }

    OleHere ole;
    WindowsLoop loop;
    DesktopContext context{loop, 1.0, nullptr};
    Form form{"frmTried", FormStyle::Painted};
    CommandButton button{&form, "cmdTried"};
    Texts seen;
    std::unique_ptr<DrawnWindow> window = makeDrawn<CanvasWindow, MediaCanvas>(form, context);
    CanvasWindow& canvas = static_cast<CanvasWindow&>(window->surface());
};

/// WIN-46: Files are taken where they are dropped, a text as a drop without files, nothing else
TEST_F(DropForm, FilesAreTakenByWhatLiesUnderThem) {
    using namespace std::string_literals;
    Dragged files(CF_HDROP, dropOf(L"C:\\a.wav\0C:\\b.wav\0\0"s));
    EXPECT_EQ(drag(files, {20, 20}), static_cast<DWORD>(DROPEFFECT_COPY));
    EXPECT_EQ(seen, Texts{"button files C:\\a.wav C:\\b.wav"});
    seen.clear();
    drag(files, {150, 80});
    EXPECT_EQ(seen, Texts{"form files C:\\a.wav C:\\b.wav"});
}

/// WIN-46
TEST_F(DropForm, ATextIsADropWithoutFiles) {
    Dragged text(CF_UNICODETEXT, Bytes(8));
    EXPECT_EQ(drag(text, {20, 20}), static_cast<DWORD>(DROPEFFECT_COPY));
    EXPECT_EQ(seen, Texts{"button other"});
    seen.clear();
    Dragged plain(CF_TEXT, Bytes(8));
    EXPECT_EQ(drag(plain, {20, 20}), static_cast<DWORD>(DROPEFFECT_COPY));
    EXPECT_EQ(seen, Texts{"button other"});
}

/// WIN-46
TEST_F(DropForm, WhatIsNeitherIsRefused) {
    Dragged picture(CF_BITMAP, Bytes(8));
    EXPECT_EQ(drag(picture, {20, 20}), static_cast<DWORD>(DROPEFFECT_NONE));
    Dragged text(CF_UNICODETEXT, Bytes(8));
    EXPECT_EQ(drag(text, {20, 20}, DROPEFFECT_MOVE), static_cast<DWORD>(DROPEFFECT_NONE)) << "nothing is taken away";
    form.Enabled = false;
    EXPECT_EQ(drag(text, {20, 20}), static_cast<DWORD>(DROPEFFECT_NONE));
    EXPECT_EQ(seen, Texts{});
}

/// WIN-46
TEST_F(DropForm, AWindowThatWentTakesNothing) {
    Dragged text(CF_UNICODETEXT, Bytes(8));
    window->unbind();
    EXPECT_EQ(drag(text, {20, 20}), static_cast<DWORD>(DROPEFFECT_NONE));
    EXPECT_EQ(seen, Texts{});
}

/// WIN-46
TEST_F(DropForm, TheOldMessageBringsFilesToo) {
    using namespace std::string_literals;
    Bytes bytes = dropOf(L"C:\\a.wav\0\0"s);
    reinterpret_cast<DROPFILES*>(bytes.data())->pt = {20, 20};
    PostMessageW(canvas.handle(), WM_DROPFILES, reinterpret_cast<WPARAM>(memoryOf(bytes)), 0);
    EXPECT_TRUE(loop.runUntil([this] { return !seen.empty(); }, 2000));
    EXPECT_EQ(seen, Texts{"button files C:\\a.wav"});
}

}  // namespace
}  // namespace corvane
