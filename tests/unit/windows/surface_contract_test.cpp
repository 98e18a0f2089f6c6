// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/surface_contract.h"

#include "shell/windowing/make_drawn.h"
#include "windows/windowing/media_canvas.h"

namespace corvane::contract {
namespace {

/// The surface of this desktop.
class SystemSurfaceStage : public SurfaceStage {
public:
    std::unique_ptr<DrawnWindow> makeWindow(Form& form) override {
        return makeDrawn<CanvasWindow, MediaCanvas>(form, context_);
    }
    EventLoop& loop() override { return loop_; }
    bool waitFor(const std::function<bool()>& condition) override { return loop_.runUntil(condition, 3000); }
    void press(DrawnWindow& window, int x, int y, int button, bool isDouble) override {
        const Messages& messages = messagesOf(button);
        send(window, isDouble ? messages.twice : messages.down, messages.held, x, y);
    }
    void move(DrawnWindow& window, int x, int y) override { send(window, WM_MOUSEMOVE, MK_LBUTTON, x, y); }
    void release(DrawnWindow& window, int x, int y, int button) override {
        send(window, messagesOf(button).up, 0, x, y);
    }
    void type(DrawnWindow& window, char letter) override {
        const auto code = static_cast<WPARAM>(letter - 'a' + 'A');
        SendMessageW(handleOf(window), WM_KEYDOWN, code, 1);
        SendMessageW(handleOf(window), WM_CHAR, static_cast<WPARAM>(letter), 1);
        SendMessageW(handleOf(window), WM_KEYUP, code, 1);
    }
    void close(DrawnWindow& window) override { SendMessageW(handleOf(window), WM_CLOSE, 0, 0); }
    void minimise(DrawnWindow& window) override { ShowWindow(handleOf(window), SW_MINIMIZE); }

private:
    struct Messages {
        UINT down, up, twice;
        WPARAM held;
    };
    static const Messages& messagesOf(int button) {
        static const Messages left{WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, MK_LBUTTON};
        static const Messages right{WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDBLCLK, MK_RBUTTON};
        static const Messages middle{WM_MBUTTONDOWN, WM_MBUTTONUP, WM_MBUTTONDBLCLK, MK_MBUTTON};
        return button == kLeftButton ? left : button == kRightButton ? right : middle;
    }
    static HWND handleOf(const DrawnWindow& window) { return dynamic_cast<CanvasWindow&>(window.surface()).handle(); }
    static void send(DrawnWindow& window, UINT message, WPARAM held, int x, int y) {
        SendMessageW(handleOf(window), message, held, MAKELPARAM(x, y));
    }

    WindowsLoop loop_;
    DesktopContext context_{loop_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(System, SurfaceContract, SystemSurfaceStage);

}  // namespace
}  // namespace corvane::contract
