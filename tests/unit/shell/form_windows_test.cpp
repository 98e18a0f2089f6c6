// SPDX-License-Identifier: GPL-3.0-or-later
// Which form has which window, and what is asked of all of them.
#include "shell/windowing/form_windows_on.h"

#include "unit/shell/drawn_rig.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

/// What surfaces in memory are made with.
struct DesktopInMemory : FakeScreens {
    FakeLoop loop;
};

struct Canvas : FakeDrawnSurface {
    explicit Canvas(DesktopInMemory& /*desktop*/) {}
};

struct CanvasOfMedia : FakeDrawnSurface {
    explicit CanvasOfMedia(DesktopInMemory& /*desktop*/) {}
};

/// A dialog's window.
class PlainWindow : public BoundWindow {
public:
    using BoundWindow::BoundWindow;
    WindowFrame& frame() override { return surface; }
    FakeDrawnSurface surface;

protected:
    void propertyChanged(Control& /*control*/, PropertyId /*property*/) override {}
};

class WindowsInMemory : public FormWindowsOn<Canvas, CanvasOfMedia, DesktopInMemory> {
public:
    using FormWindowsOn::FormWindowsOn;
    int doubleClickTimeMs() override { return 400; }
    bool prefersReducedMotion() override { return false; }
    FakeDrawnSurface& surfaceOf(const Form& form) { return dynamic_cast<FakeDrawnSurface&>(windowOf(form)->frame()); }
    BoundWindow* panel = nullptr;
    std::vector<std::unique_ptr<BoundWindow>> gone;

protected:
    std::unique_ptr<BoundWindow> makeDialog(Form& form) override {
        return std::make_unique<PlainWindow>(form, context().loop);
    }
    void panelIs(BoundWindow* shown) override { panel = shown; }
    void bury(std::unique_ptr<BoundWindow> window) override { gone.push_back(std::move(window)); }
};

struct FormWindowsTest : ::testing::Test {
    FormWindowsTest() {
        taker.OLEDragDrop.tie([this](const DropData& data) { seen.push_back(data.files.at(0)); });
        panel.CloseRequest.tie([this](bool) { seen.push_back("close"); });
    }
    ~FormWindowsTest() override {
        for (Form* each : {&panel, &dialog, &hidden, &other, &movie}) windows.detach(*each);
    }
    Texts toldTo(const Form& form) { return std::exchange(windows.surfaceOf(form).told, {}); }
    void show(Form& form) {
        windows.attach(form);
        form.Show();
        if (windows.windowOf(form) != nullptr) toldTo(form);
    }

    DesktopInMemory desktop;
    FakeLoop& loop = desktop.loop;
    Form panel{"frmPanel", FormStyle::Painted};
    CommandButton taker{&panel, "cmdTaker"};
    Form dialog{"frmDialog", FormStyle::Dialog};
    Form hidden{"frmHidden", FormStyle::Hidden};
    Form other{"frmOther", FormStyle::Painted};
    Form movie{"frmMovie", FormStyle::Media};
    WindowsInMemory windows{desktop};
    Texts seen;
};

TEST_F(FormWindowsTest, AFormHasAWindowUntilItIsDetached) {
    show(panel);
    show(hidden);
    EXPECT_NE(windows.windowOf(panel), nullptr);
    EXPECT_EQ(windows.windowOf(hidden), nullptr);
    windows.detach(panel);
    EXPECT_EQ(windows.windowOf(panel), nullptr);
    ASSERT_EQ(windows.gone.size(), 1U) << "destroyed when its code has ended";
    EXPECT_FALSE(windows.gone[0]->bound());
    windows.detach(panel);
    EXPECT_EQ(windows.gone.size(), 1U);
}

TEST_F(FormWindowsTest, TheStyleOfAFormSaysWhatItsWindowIs) {
    for (Form* each : {&panel, &dialog, &hidden, &movie}) windows.attach(*each);
    EXPECT_NE(dynamic_cast<PaintedWindow*>(windows.windowOf(panel)), nullptr);
    EXPECT_NE(dynamic_cast<Canvas*>(&windows.surfaceOf(panel)), nullptr);
    EXPECT_NE(dynamic_cast<MediaWindow*>(windows.windowOf(movie)), nullptr);
    EXPECT_NE(dynamic_cast<CanvasOfMedia*>(&windows.surfaceOf(movie)), nullptr);
    EXPECT_NE(dynamic_cast<PlainWindow*>(windows.windowOf(dialog)), nullptr);
    EXPECT_EQ(windows.windowOf(hidden), nullptr);
}

TEST_F(FormWindowsTest, AMoviesWindowShowsItsMovieOnItsOwnSurface) {
    MouseControl player(&movie, ControlKind::Movie, "movTried");
    show(movie);
    EXPECT_EQ(windows.surfaceOf(movie).movie, &player);
    windows.detach(movie);
}

TEST_F(FormWindowsTest, ThePanelIsThePaintedFormThatCameLast) {
    show(other);
    show(panel);
    show(dialog);
    EXPECT_EQ(windows.panel, windows.windowOf(panel));
    windows.detach(panel);
    EXPECT_EQ(windows.panel, windows.windowOf(other));
    windows.detach(other);
    EXPECT_EQ(windows.panel, nullptr);
}

TEST_F(FormWindowsTest, CallsForAFormGoToItsWindowAndForOthersNowhere) {
    windows.activate(panel);
    windows.refresh(panel);
    windows.beginDrag(panel);
    windows.SetWindowPos(panel, kTopMost, 0);
    EXPECT_EQ(windows.textWidth(panel, "four"), 0);
    show(panel);
    windows.activate(panel);
    windows.refresh(panel);
    EXPECT_EQ(windows.textWidth(panel, "four"), 40);
    EXPECT_EQ(toldTo(panel), (Texts{"activate", "refresh"}));
    desktop.scale = 2;
    EXPECT_EQ(windows.screenWidth(), 500 * kTwipsPerPixel);
    EXPECT_EQ(windows.screenHeight(), 400 * kTwipsPerPixel);
}

TEST_F(FormWindowsTest, ShowingAndHidingGoThroughTheForm) {
    windows.attach(panel);
    toldTo(panel);
    windows.SetWindowPos(panel, kTopMost, 0x53);
    EXPECT_EQ(toldTo(panel), (Texts{"stack -1 19", "show"}));
    EXPECT_TRUE(panel.Visible);
    windows.SetWindowPos(panel, kNotTopMost, 0x80);
    EXPECT_EQ(toldTo(panel), (Texts{"stack -2 0", "hide"}));
    EXPECT_FALSE(panel.Visible);
}

/// CMD-16
/// CMD-17: They wait while the editor or the settings are open
TEST_F(FormWindowsTest, FilesWaitForAFormThatTakesThem) {
    windows.dropFiles({true, {"a"}});
    show(other);
    loop.drain();
    EXPECT_EQ(seen, Texts{});
    windows.attach(panel);
    panel.Enabled = false;
    loop.drain();
    EXPECT_EQ(seen, Texts{}) << "a dialog keeps it disabled";
    windows.attach(dialog);
    panel.Enabled = true;
    windows.detach(dialog);
    loop.drain();
    EXPECT_EQ(seen, Texts{"a"});
    toldTo(panel);
    windows.dropFiles({true, {"b"}});
    loop.drain();
    EXPECT_EQ(seen, (Texts{"a", "b"}));
    EXPECT_EQ(toldTo(panel), Texts{"activate"});
}

TEST_F(FormWindowsTest, WhatTheUserWouldUseComesForward) {
    show(panel);
    show(dialog);
    panel.WindowState = WindowState::Minimized;
    toldTo(panel);
    windows.bringForward();
    EXPECT_EQ(toldTo(panel), Texts{}) << "an event of its own";
    loop.drain();
    EXPECT_EQ(toldTo(panel), (Texts{"restore", "activate"}));
    EXPECT_EQ(toldTo(dialog), Texts{});
    panel.Enabled = false;
    windows.bringForward();
    loop.drain();
    EXPECT_EQ(toldTo(panel), Texts{});
    EXPECT_EQ(toldTo(dialog), Texts{"activate"}) << "it stands before the panel";
    dialog.Hide();
    toldTo(dialog);
    windows.bringForward();
    loop.drain();
    EXPECT_EQ(toldTo(dialog), Texts{});
}

TEST_F(FormWindowsTest, AllPaintedFormsAreAskedToCloseAndAllWindowsHide) {
    show(panel);
    show(dialog);
    windows.requestClose();
    loop.drain();
    EXPECT_EQ(seen, Texts{"close"});
    windows.hideAll();
    EXPECT_EQ(toldTo(panel), Texts{"hide"});
    EXPECT_EQ(toldTo(dialog), Texts{"hide"});
    windows.screensChanged();
    EXPECT_EQ(toldTo(panel), Texts{"paint all"});
}

TEST_F(FormWindowsTest, WhatIsHeldIsLetGoEverywhere) {
    taker.SetSize(300, 300);
    taker.MouseUp.tie([this](const MouseArgs&) { seen.push_back("up"); });
    show(panel);
    auto& drawn = dynamic_cast<DrawnWindow&>(*windows.windowOf(panel));
    drawn.mouseDown(kLeftButton, 0, {5, 5}, {5, 5}, false);
    windows.loseMouse();
    loop.drain();
    EXPECT_EQ(seen, Texts{"up"});
}

}  // namespace
}  // namespace corvane
