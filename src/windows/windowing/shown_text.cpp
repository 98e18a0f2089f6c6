// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/shown_text.h"

#include <utility>

#include "shell/shown_text.h"
#include "winapi/api.h"
#include "winapi/text.h"

namespace corvane {

namespace {

std::u16string unitsOf(std::string_view text) {
    const std::wstring wide = toWide(text);
    return {wide.begin(), wide.end()};
}

std::wstring wideOf(const std::u16string& text) { return {text.begin(), text.end()}; }

/// The font of the system's boxes.
class BoxFont {
public:
    BoxFont() {
        NONCLIENTMETRICSW metrics{};
        metrics.cbSize = sizeof metrics;
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
        font_ = CreateFontIndirectW(&metrics.lfMessageFont);
        before_ = SelectObject(screen_, font_);
    }
    BoxFont(const BoxFont&) = delete;
    BoxFont& operator=(const BoxFont&) = delete;
    ~BoxFont() {
        SelectObject(screen_, before_);
        DeleteObject(font_);
        ReleaseDC(nullptr, screen_);
    }

    int width(const std::u16string& word) const {
        const std::wstring wide = wideOf(word);
        SIZE size{};
        GetTextExtentPoint32W(screen_, wide.c_str(), static_cast<int>(wide.size()), &size);
        return static_cast<int>(size.cx);
    }

private:
    HDC screen_ = GetDC(nullptr);
    HFONT font_ = nullptr;
    HGDIOBJ before_ = nullptr;
};

}  // namespace

std::wstring shownText(std::string_view text) { return wideOf(shownLine(unitsOf(text))); }

std::wstring shownLines(std::string_view text) {
    const BoxFont font;
    const int widest = GetSystemMetrics(SM_CXSCREEN) / 2;  // beside its picture and its margins
    return wideOf(shownLines(unitsOf(text), [&](const std::u16string& word) { return font.width(word) <= widest; }));
}

std::wstring shownTip(std::string_view text) { return wideOf(shownTip(unitsOf(text))); }

}  // namespace corvane
