// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "contract/rig_windows.h"
#include "contract/windows/media_rig.h"
#include "winapi/sound/mm_api.h"
#include "windows/media/movies/windows_movie_control.h"

namespace corvane::test {

inline constexpr RECT kVideoArea{0, 0, 320, 240};

/// A window on the screen that videos are shown in, one after another: showing a window takes its time where no window
/// manager answers.
inline HWND videoHost() {
    static const HWND window =
        CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 40,
                        30, kVideoArea.right, kVideoArea.bottom, nullptr, nullptr, nullptr, nullptr);
    return window;
}

/// The program's start reads the volume before anything opens. So do tests: where two workers' graphs are the first
/// that ask Wine for its outputs, the second may read the list before the first has filled it, and the process is gone.
inline void countOutputs() {
    static const UINT outputs = waveOutGetNumDevs();
    (void)outputs;
}

/// A movie control on a form, shown on the screen, with what it told.
class WindowsMovieRig {
public:
    WindowsMovieRig() {
        countOutputs();
        control->setHost(videoHost(), kVideoArea);
        control->OpenComplete.tie([this] { ++opened; });
        control->Failed.tie([this](const std::string& why) { reason = why; });
        control->StateChange.tie([this](int before, int now) { changes.emplace_back(before, now); });
    }
    ~WindowsMovieRig() { post.stop(); }

    bool until(const std::function<bool()>& holds, int milliseconds = 5000) {
        return loop.runUntil(holds, milliseconds);
    }
    bool open(const std::string& path) {
        const int before = opened;
        control->FileName(path);
        return until([&] { return opened > before || !reason.empty(); }) && reason.empty();
    }
    /// What the screen shows at a place of the host, 0xRRGGBB.
    static std::uint32_t pixel(int x, int y) {
        POINT place{x, y};
        ClientToScreen(videoHost(), &place);
        const HDC screen = GetDC(nullptr);
        const COLORREF colour = GetPixel(screen, place.x, place.y);
        ReleaseDC(nullptr, screen);
        return static_cast<std::uint32_t>(GetRValue(colour)) << 16U |
               static_cast<std::uint32_t>(GetGValue(colour)) << 8U | GetBValue(colour);
    }
    /// Whether a pixel has about that colour.
    static bool shows(std::uint32_t wanted, int x = 20, int y = 20) {
        const std::uint32_t seen = pixel(x, y);
        for (const unsigned shift : {0U, 8U, 16U}) {
            const int difference = static_cast<int>(seen >> shift & 0xFFU) - static_cast<int>(wanted >> shift & 0xFFU);
            if (std::abs(difference) > 8) return false;
        }
        return true;
    }

    WindowsLoop loop;
    UiPost post = loop.uiPost();
    RigWindows windows;
    Form form{"frmMovieWindow", FormStyle::Media};
    std::unique_ptr<WindowsMovieControl> control = std::make_unique<WindowsMovieControl>(form, loop, post, windows);
    int opened = 0;
    std::vector<std::pair<int, int>> changes;
    std::string reason;
};

}  // namespace corvane::test
