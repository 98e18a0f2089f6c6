// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/windowing/make_drawn.h"
#include "windows/windowing/media_canvas.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "pictures/bitmap_picture.h"
#include "unit/windows/other_program.h"
#include "windows/windowing/dib.h"
#include "windows/windowing/full_screen_window.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

constexpr std::uint32_t kRed = 0xFFC83232;
constexpr std::uint32_t kGreen = 0xFF32A046;
constexpr std::uint32_t kBlue = 0xFF3250C8;
constexpr std::uint32_t kWhite = 0xFFFFFFFF;
constexpr std::uint32_t kBlack = 0xFF000000;

/// Four fields of 40 by 30 pixels: red and green above blue and white.
Picture fields() {
    BitmapPicture::Pixels pixels;
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 80; ++x) pixels.push_back(y < 30 ? (x < 40 ? kRed : kGreen) : (x < 40 ? kBlue : kWhite));
    }
    return Picture(std::make_shared<BitmapPicture>(80, 60, std::move(pixels)));
}

/// A form of 200 by 100 pixels with the picture in its middle, as an image window has it.
struct PictureForm : ::testing::Test {
    PictureForm() {
        form.SetSize(200 * kTwipsPerPixel, 100 * kTwipsPerPixel);
        form.Move(30 * kTwipsPerPixel, 20 * kTwipsPerPixel);
        box.Scale = ScaleMode::InPixels;
        form.LostFocus.tie([this] { seen.push_back("lost"); });
        form.KeyDown.tie([this](const KeyArgs& key) { seen.push_back("key " + std::to_string(key.keyCode)); });
        window->bind();
        box.Picture = fields();
        placeBox(60, 20, 80, 60);
    }
    ~PictureForm() override { window->unbind(); }
    void placeBox(int left, int top, int width, int height) {
        box.Move(static_cast<Twips>(left), static_cast<Twips>(top));
        box.SetSize(static_cast<Twips>(width), static_cast<Twips>(height));
        box.setPainted(static_cast<float>(width), static_cast<float>(height));
    }
    /// What the window paints at a place of itself.
    std::uint32_t at(int x, int y) {
        loop.runUntil([] { return false; }, 30);
        window->refresh();
        const HDC own = GetDC(canvas.handle());
        const COLORREF colour = GetPixel(own, x, y);
        ReleaseDC(canvas.handle(), own);
        return 0xFF000000U | static_cast<std::uint32_t>(GetRValue(colour)) << 16U |
               static_cast<std::uint32_t>(GetGValue(colour)) << 8U | GetBValue(colour);
    }

    WindowsLoop loop;
    DesktopContext context{loop, 1.0, nullptr};
    Form form{"frmTried", FormStyle::Media};
    PictureBox box{&form, "pctTried"};
    Texts seen;
    std::unique_ptr<DrawnWindow> window = makeDrawn<CanvasWindow, MediaCanvas>(form, context);
    CanvasWindow& canvas = static_cast<CanvasWindow&>(window->surface());
};

/// WIN-43: A picture is shown zoomed and panned
TEST_F(PictureForm, APictureIsShownZoomedAndPanned) {
    form.Show();
    EXPECT_EQ(at(70, 30), kRed);
    EXPECT_EQ(at(130, 30), kGreen);
    EXPECT_EQ(at(70, 70), kBlue);
    EXPECT_EQ(at(130, 70), kWhite);
    EXPECT_EQ(at(30, 50), kBlack) << "beside it";
    placeBox(20, -10, 160, 120);  // twice the size
    EXPECT_EQ(at(30, 5), kRed);
    EXPECT_EQ(at(30, 45), kRed);
    EXPECT_EQ(at(30, 55), kBlue);
    EXPECT_EQ(at(170, 95), kWhite);
    EXPECT_EQ(at(10, 50), kBlack);
    placeBox(-80, -10, 160, 120);  // panned to the left
    EXPECT_EQ(at(5, 30), kGreen);
    EXPECT_EQ(at(75, 70), kWhite);
    EXPECT_EQ(at(90, 50), kBlack);
}

/// Looked at in the same moment: the window manager of this desktop gives the focus to each new window afterwards.
/// WIN-44: A window that a list opens takes the focus only from its own program
TEST_F(PictureForm, ItTakesTheFocusOnlyFromItsOwnProgram) {
    const test::OtherProgram other;
    ASSERT_TRUE(other.bringToFront(loop));
    form.Show();
    EXPECT_NE(IsWindowVisible(canvas.handle()), 0);
    EXPECT_EQ(GetForegroundWindow(), other.window());
    form.WindowState = WindowState::Minimized;
    ASSERT_TRUE(loop.runUntil([this] { return IsIconic(canvas.handle()) != 0; }, 2000));
    ASSERT_TRUE(other.bringToFront(loop));
    form.WindowState = WindowState::Normal;
    EXPECT_EQ(IsIconic(canvas.handle()), 0);
    EXPECT_EQ(GetForegroundWindow(), other.window());
    form.Hide();
    canvas.activate();
    form.Show();
    EXPECT_TRUE(loop.runUntil([this] { return GetForegroundWindow() == canvas.handle(); }, 3000));
}

/// The surface that a movie fills the screen with.
struct WholeScreen : PictureForm {
    WholeScreen() {
        other = CreateWindowExW(0, L"STATIC", L"other", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 100, 100, nullptr,
                                nullptr, nullptr, nullptr);
        form.Show();
        surface.show(RECT{0, 0, 400, 300}, true);
        loop.runUntil([this] { return GetActiveWindow() == surface.handle(); }, 2000);
        loop.runUntil([] { return false; }, 100);
        seen.clear();
    }
    ~WholeScreen() override { DestroyWindow(other); }
    bool isTopmost() const { return (GetWindowLongPtrW(surface.handle(), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; }
    bool liesAbove(HWND upper, HWND lower) const {
        for (HWND each = upper; each != nullptr; each = GetWindow(each, GW_HWNDNEXT)) {
            if (each == lower) return true;
        }
        return false;
    }

    FullScreenWindow surface{canvas};
    HWND other = nullptr;
};

/// WIN-45: A movie that fills the screen lies above everything while it is used, and tells its form when the focus goes
TEST_F(WholeScreen, LiesAboveEverythingWhileItIsUsed) {
    EXPECT_TRUE(isTopmost());
    EXPECT_TRUE(liesAbove(surface.handle(), other));
}

/// WIN-45
TEST_F(WholeScreen, LetsWhatIsUsedInsteadLieAboveIt) {
    SetActiveWindow(other);
    loop.runUntil([this] { return !isTopmost(); }, 2000);
    EXPECT_FALSE(isTopmost());
    EXPECT_TRUE(liesAbove(other, surface.handle()));
    SetActiveWindow(surface.handle());
    loop.runUntil([this] { return isTopmost(); }, 2000);
    EXPECT_TRUE(isTopmost());
    EXPECT_TRUE(liesAbove(surface.handle(), other));
}

/// Alt and Tab: the release of Alt is the other window's, and the form must not wait for it.
/// WIN-45
TEST_F(WholeScreen, TheFormIsToldThatTheFocusWent) {
    SendMessageW(surface.handle(), WM_SYSKEYDOWN, VK_MENU, 0x20000001);
    EXPECT_EQ(seen, Texts{"key 18"});
    SetActiveWindow(other);
    EXPECT_TRUE(loop.runUntil([this] { return seen.size() == 2; }, 2000));
    EXPECT_EQ(seen, (Texts{"key 18", "lost"}));
}

}  // namespace
}  // namespace corvane
