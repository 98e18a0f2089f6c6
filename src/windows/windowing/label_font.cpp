// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/label_font.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr double kFontShare = 0.75;  ///< of a label's height
constexpr int kSmallest = 6;

}  // namespace

LabelFont::LabelFont(double labelHeight) {
    const int height = std::max(kSmallest, static_cast<int>(std::lround(labelHeight * kFontShare)));
    font_ = CreateFontW(-height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_TT_PRECIS,
                        CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, FF_SWISS | VARIABLE_PITCH, L"Segoe UI");
}

int LabelFont::width(const std::wstring& text) const {
    const HDC memory = CreateCompatibleDC(nullptr);
    const HGDIOBJ before = SelectObject(memory, font_);
    SIZE size{};
    GetTextExtentPoint32W(memory, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(memory, before);
    DeleteDC(memory);
    return size.cx;
}

}  // namespace corvane
