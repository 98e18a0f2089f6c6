// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fake/fake_drawn.h"
#include "fake/fake_loop.h"
#include "shell/windowing/media_window.h"
#include "shell/windowing/painted_window.h"

namespace corvane::test {

class PlainPicture : public PictureData {
public:
    PlainPicture(int width, int height) : width_(width), height_(height) {}
    int width() const override { return width_; }
    int height() const override { return height_; }
    std::uint32_t pixel(int /*x*/, int /*y*/) const override { return 0; }

private:
    int width_;
    int height_;
};

inline Picture plain(int width, int height) { return Picture(std::make_shared<PlainPicture>(width, height)); }

/// A form of 200 by 100 pixels in a window on a surface in memory.
class DrawnRig : public ::testing::Test {
protected:
    explicit DrawnRig(FormStyle style) : form("frmTried", style) {
        form.SetSize(200 * kTwipsPerPixel, 100 * kTwipsPerPixel);
        auto made = std::make_unique<FakeDrawnSurface>();
        surface = made.get();
        if (style == FormStyle::Media) {
            window = std::make_unique<MediaWindow>(form, loop, screens, std::move(made), *surface);
        } else {
            window = std::make_unique<PaintedWindow>(form, loop, screens, std::move(made));
        }
    }
    ~DrawnRig() override {
        if (window) window->unbind();
    }

    void attach() {
        window->bind();
        form.Show();
        loop.drain();
        surface->told.clear();
        seen.clear();
    }
    void press(double x, double y, int button = kLeftButton, bool isDouble = false) {
        window->mouseDown(button, 0, {x, y}, onScreen(x, y), isDouble);
    }
    void moveTo(double x, double y) { window->mouseMoved(0, true, {x, y}, onScreen(x, y)); }
    void release(double x, double y, int button = kLeftButton) { window->mouseUp(button, 0, {x, y}); }
    void click(double x, double y, int button = kLeftButton) {
        press(x, y, button);
        release(x, y, button);
    }
    bool key(int code, int character = 0, bool isRepeat = false) {
        return window->keyDown({code, 0}, isRepeat, character);
    }
    void say(const std::string& what) { seen.push_back(what); }
    std::vector<std::string> toldNow() { return std::exchange(surface->told, {}); }
    std::vector<std::string> seenNow() { return std::exchange(seen, {}); }

    static void place(Control& control, int left, int top, int width, int height) {
        control.Move(static_cast<float>(left) * kTwipsPerPixel, static_cast<float>(top) * kTwipsPerPixel);
        control.SetSize(static_cast<float>(width) * kTwipsPerPixel, static_cast<float>(height) * kTwipsPerPixel);
    }

    FakeLoop loop;
    FakeScreens screens;
    Form form;
    FakeDrawnSurface* surface = nullptr;  ///< the window's
    std::unique_ptr<DrawnWindow> window;
    std::vector<std::string> seen;

private:
    PixelPoint onScreen(double x, double y) const {
        return {surface->at.x + static_cast<int>(x), surface->at.y + static_cast<int>(y)};
    }
};

}  // namespace corvane::test
