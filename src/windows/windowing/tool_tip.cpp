// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/tool_tip.h"

#include "windows/windowing/shown_text.h"

namespace corvane {

namespace {

TOOLINFOW toolOf(HWND owner) {
    TOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = owner;
    tool.uId = reinterpret_cast<UINT_PTR>(owner);
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    return tool;
}

}  // namespace

ToolTip::ToolTip(HWND owner) : owner_(owner) {
    tip_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                           CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
    const TOOLINFOW tool = toolOf(owner);
    SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

ToolTip::~ToolTip() { DestroyWindow(tip_); }

void ToolTip::over(const void* part, int place) {
    if (part == part_ && place == place_) return;
    part_ = part;
    place_ = place;
    SendMessageW(tip_, TTM_POP, 0, 0);
}

bool ToolTip::notify(LPARAM details, const std::function<std::string()>& text) {
    auto* const header = reinterpret_cast<NMHDR*>(details);
    if (header->hwndFrom != tip_ || header->code != TTN_GETDISPINFOW) return false;
    shown_ = shownTip(text());
    reinterpret_cast<NMTTDISPINFOW*>(details)->lpszText = shown_.data();
    return true;
}

}  // namespace corvane
