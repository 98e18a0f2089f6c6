// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/surface_contract.h"

#include "fake/fake_drawn.h"
#include "fake/fake_loop.h"
#include "shell/windowing/painted_window.h"

namespace corvane::contract {
namespace {

/// The surface in memory.
class FakeSurfaceStage : public SurfaceStage {
public:
    std::unique_ptr<DrawnWindow> makeWindow(Form& form) override {
        auto made = std::make_unique<FakeDrawnSurface>();
        surface_ = made.get();
        return std::make_unique<PaintedWindow>(form, loop_, screens_, std::move(made));
    }
    EventLoop& loop() override { return loop_; }
    bool waitFor(const std::function<bool()>& condition) override {
        loop_.drain();
        surface_->runLater();
        return condition();
    }
    void press(DrawnWindow& window, int x, int y, int button, bool isDouble) override {
        window.mouseDown(button, 0, placeIn(x, y), onScreen(x, y), isDouble);
    }
    void move(DrawnWindow& window, int x, int y) override { window.mouseMoved(0, true, placeIn(x, y), onScreen(x, y)); }
    void release(DrawnWindow& window, int x, int y, int button) override { window.mouseUp(button, 0, placeIn(x, y)); }
    void type(DrawnWindow& window, char letter) override {
        const KeyArgs key{letter - 'a' + 'A', 0};
        window.keyDown(key, false, letter);
        window.keyUp(key);
    }
    void close(DrawnWindow& window) override { window.requestClose(); }
    void minimise(DrawnWindow& window) override { window.surface().showMinimised(); }

private:
    static DrawnWindow::Place placeIn(int x, int y) { return {static_cast<double>(x), static_cast<double>(y)}; }
    PixelPoint onScreen(int x, int y) const { return {surface_->at.x + x, surface_->at.y + y}; }

    FakeLoop loop_;
    FakeScreens screens_;
    FakeDrawnSurface* surface_ = nullptr;
};

INSTANTIATE_TYPED_TEST_SUITE_P(InMemory, SurfaceContract, FakeSurfaceStage);

}  // namespace
}  // namespace corvane::contract
