// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>

#include "unit/linux/window_rig.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;
using test::plain;

struct CanvasInput : test::WindowRig {
    CanvasInput() : WindowRig(FormStyle::Painted) {
        place(slide, 10, 60, 30, 10);
        slide.hitWidth = 150 * kTwipsPerPixel;
        place(button, 10, 10, 40, 20);
        button.Picture = plain(40, 20, Qt::green);
        tie("slide", slide);
        tie("button", button);
        tie("form", form);
        form.KeyDown.tie([this](const KeyArgs& key) { say("down", key.keyCode, key.shift); });
        form.KeyUp.tie([this](const KeyArgs& key) { say("up", key.keyCode, key.shift); });
        form.KeyPress.tie([this](int character) { say("press", character, 0); });
        attach();
        seen.clear();
    }
    PictureBox slide{&form, "pctTried"};
    CommandButton button{&form, "cmdTried"};
    float x = 0;
    float y = 0;

    void say(const std::string& what, int a, int b) {
        seen.push_back(what + ' ' + std::to_string(a) + ' ' + std::to_string(b));
    }
    void tie(const std::string& name, MouseControl& control) {
        control.Click.tie([this, name] { seen.push_back(name + " click"); });
        control.DblClick.tie([this, name] { seen.push_back(name + " double"); });
        control.MouseDown.tie([this, name](const MouseArgs& mouse) { say(name + " down", mouse.button, mouse.shift); });
        control.MouseUp.tie([this, name](const MouseArgs& mouse) { say(name + " up", mouse.button, mouse.shift); });
        control.MouseMove.tie([this, name](const MouseArgs& mouse) {
            x = mouse.x;
            y = mouse.y;
            seen.push_back(name + " move");
        });
    }
};

/// BTN-24
TEST_F(CanvasInput, AButtonIsClickedBeforeItsMouseUp) {
    click({20, 20});
    EXPECT_EQ(seen, (Texts{"button down 1 0", "button click", "button up 1 0"}));
}

/// COM-23
TEST_F(CanvasInput, ReleasedOutsideAButtonIsNotClicked) {
    press({20, 20});
    release({100, 20});
    EXPECT_EQ(seen, (Texts{"button down 1 0", "button up 1 0"}));
}

/// COM-23: A click is told when the button comes up inside what it was pressed on, by the left button alone, to the
///     control that is topmost
TEST_F(CanvasInput, OtherControlsAreClickedAfterTheirMouseUp) {
    click({20, 65});
    EXPECT_EQ(seen, (Texts{"slide down 1 0", "slide up 1 0", "slide click"}));
}

/// COM-23
TEST_F(CanvasInput, TheRightButtonClicksNothing) {
    click({20, 20}, Qt::RightButton);
    EXPECT_EQ(seen, (Texts{"button down 2 0", "button up 2 0"}));
}

/// BTN-49: A disabled button takes no click
TEST_F(CanvasInput, ADisabledButtonTakesNoClickAndLeavesTheRightButtonToTheForm) {
    button.Enabled = false;
    click({20, 20});
    EXPECT_EQ(seen, Texts{});
    click({20, 20}, Qt::RightButton);
    EXPECT_EQ(seen, (Texts{"form down 2 0", "form up 2 0"}));
}

/// COM-23
TEST_F(CanvasInput, AButtonDisabledWhileHeldIsNotClicked) {
    press({20, 20});
    button.Enabled = false;
    release({20, 20});
    EXPECT_EQ(seen, (Texts{"button down 1 0", "button up 1 0"}));
}

/// SLIDER-14: The slider takes the mouse over its whole record
TEST_F(CanvasInput, ABoxTakesTheMouseOverItsWholeHitWidthAndKeepsItUntilTheRelease) {
    press({100, 65});
    moveTo({170, 5});
    EXPECT_EQ(x, 160.0F * kTwipsPerPixel);
    EXPECT_EQ(y, -55.0F * kTwipsPerPixel);
    release({170, 5});
    EXPECT_EQ(seen, (Texts{"slide down 1 0", "slide move", "slide up 1 0"}));
    seen.clear();
    click({165, 65});
    EXPECT_EQ(seen.front(), "form down 1 0");
}

/// COM-23
TEST_F(CanvasInput, TheTopmostVisibleControlIsHit) {
    Label over(&form, "lblOver");
    place(over, 0, 0, 200, 100);
    over.MouseDown.tie([this](const MouseArgs&) { seen.push_back("over"); });
    press({20, 20});
    release({20, 20});
    EXPECT_EQ(seen, Texts{"over"});
    over.Visible = false;
    seen.clear();
    press({20, 20});
    EXPECT_EQ(seen, Texts{"button down 1 0"});
}

/// COM-23
TEST_F(CanvasInput, ADoubleClickIsToldToAllButButtons) {
    click({20, 65});
    mouse(QEvent::MouseButtonDblClick, {20, 65}, Qt::LeftButton);
    release({20, 65});
    EXPECT_EQ(std::count(seen.begin(), seen.end(), "slide double"), 1);
    seen.clear();
    click({20, 20});
    mouse(QEvent::MouseButtonDblClick, {20, 20}, Qt::LeftButton);
    release({20, 20});
    EXPECT_EQ(std::count(seen.begin(), seen.end(), "button double"), 0);
    EXPECT_EQ(std::count(seen.begin(), seen.end(), "button click"), 2) << "each press of a quick pair counts";
}

/// BTN-45: A window that was dragged was not clicked
/// COM-22: A window moves once the pointer has moved by the system's drag distance, and what was pressed is not clicked
///     then
TEST_F(CanvasInput, ADraggedWindowIsMovedAndNotClicked) {
    form.MouseDown.tie([this](const MouseArgs&) { windows.beginDrag(form); });
    const QPoint before = widget().pos();
    press({150, 50});
    // In the window's own places, as the system tells them: it moves with the pointer.
    for (const QPoint step : {QPoint(1, 0), QPoint(2, 3), QPoint(27, 37), QPoint(-60, -50)}) {
        const QPoint now = widget().pos();
        moveTo(QPoint(150, 50) + step);
        EXPECT_EQ(widget().pos(), now + step) << "the grabbed point is not under the pointer";
    }
    EXPECT_EQ(widget().pos(), before + QPoint(-30, -10));
    release({150, 50});
    EXPECT_EQ(std::count(seen.begin(), seen.end(), "form click"), 0);
}

TEST_F(CanvasInput, APressThatHardlyMovesIsAClickAllTheSame) {
    slide.MouseDown.tie([this](const MouseArgs&) { windows.beginDrag(form); });
    const QPoint before = widget().pos();
    press({20, 65});
    moveTo({22, 66});
    EXPECT_EQ(widget().pos(), before + QPoint(2, 1));
    release({20, 65});
    EXPECT_EQ(std::count(seen.begin(), seen.end(), "slide click"), 1);
}

TEST_F(CanvasInput, AnotherButtonInTheMiddleOfADragLeavesTheGrabbedPointWhereItIs) {
    form.MouseDown.tie([this](const MouseArgs& mouse) {
        if (mouse.button == kLeftButton) windows.beginDrag(form);
    });
    const QPoint before = widget().pos();
    press({150, 50});
    moveTo({180, 90});
    press({155, 55}, Qt::RightButton);
    release({155, 55}, Qt::RightButton);
    moveTo({150, 50});
    EXPECT_EQ(widget().pos(), before + QPoint(30, 40));
    release({150, 50});
}

/// BTN-39: A held button is let go when the pointer is taken away, also by the window manager, and when its release was
///     not told
TEST_F(CanvasInput, AHeldButtonIsLetGoWhenThePanelIsMinimised) {
    press({20, 20});
    settle();
    seen.clear();
    form.WindowState = WindowState::Minimized;
    settle();
    EXPECT_EQ(seen, Texts{"button up 1 0"}) << "a hold must not go on for ever";
}

/// BTN-39
TEST_F(CanvasInput, AHeldButtonIsLetGoWhenTheWindowManagerMinimises) {
    press({20, 65}, Qt::RightButton);
    settle();
    seen.clear();
    widget().showMinimized();
    settle();
    EXPECT_EQ(seen, Texts{"slide up 0 0"}) << "it opens no menu";
}

/// The button came up over another program, which had the pointer by then.
/// BTN-39
TEST_F(CanvasInput, AMoveWithoutAButtonEndsWhatIsHeld) {
    press({20, 65});
    moveTo({30, 65});
    settle();
    seen.clear();
    QMouseEvent hover(QEvent::MouseMove, QPointF(40, 65), widget().mapToGlobal(QPointF(40, 65)), Qt::NoButton,
                      Qt::NoButton, {});
    QCoreApplication::sendEvent(&widget(), &hover);
    settle();
    EXPECT_EQ(seen, Texts{"slide up 1 0"}) << "what was held ends where it stood";
    seen.clear();
    moveTo({150, 65});
    release({150, 65});
    EXPECT_EQ(std::count(seen.begin(), seen.end(), "slide up 1 0"), 0);
}

/// BTN-39
TEST_F(CanvasInput, AHeldButtonIsLetGoWhenABoxTakesThePointer) {
    press({20, 20});
    settle();
    seen.clear();
    QEvent blocked(QEvent::WindowBlocked);
    QCoreApplication::sendEvent(&widget(), &blocked);
    settle();
    EXPECT_EQ(seen, Texts{"button up 1 0"});
}

/// KEY-18: Typed characters reach the form as code points
TEST_F(CanvasInput, KeysReachTheFormAsCodesAndCharacters) {
    key(QEvent::KeyPress, Qt::Key_Z, {}, "z");
    key(QEvent::KeyRelease, Qt::Key_Z, {}, "z");
    EXPECT_EQ(seen, (Texts{"down 90 0", "press 122 0", "up 90 0"}));
}

/// COM-24
TEST_F(CanvasInput, AltComesAndGoes) {
    key(QEvent::KeyPress, Qt::Key_Alt);
    key(QEvent::KeyRelease, Qt::Key_Alt, Qt::AltModifier);
    EXPECT_EQ(seen, (Texts{"down 18 4", "up 18 0"}));
}

/// COM-24
TEST_F(CanvasInput, TabIsAKeyLikeAnyOther) {
    key(QEvent::KeyPress, Qt::Key_Tab, {}, "\t");
    EXPECT_EQ(seen, (Texts{"down 9 0", "press 9 0"}));
}

/// COM-24: A key that repeats goes up once, Alt comes and goes, and Tab is a key like any other
TEST_F(CanvasInput, ARepeatedKeyGoesUpOnce) {
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_Z, {}, "z", true);
    QCoreApplication::sendEvent(&widget(), &up);
    EXPECT_EQ(seen, Texts{});
}

/// KEY-25
TEST_F(CanvasInput, AClosedWindowIsLeftToTheForm) {
    int asked = 0;
    form.CloseRequest.tie([&](bool altHeld) { asked += altHeld ? 100 : 1; });
    widget().close();
    EXPECT_EQ(asked, 0) << "posted";
    settle();
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(widget().isVisible());
}

struct CanvasDrops : CanvasInput {
    void drop(QPoint at, const QMimeData& data) {
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&widget(), &enter);
        if (!enter.isAccepted()) return seen.push_back("refused");
        QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&widget(), &event);
    }
    void takeOn(MouseControl& control, const std::string& name) {
        control.OLEDragDrop.tie([this, name](const DropData& dropped) {
            seen.push_back(name);
            seen.insert(seen.end(), dropped.files.begin(), dropped.files.end());
        });
    }
    CanvasDrops() { files.setData("text/uri-list", "file:///b.mp3\r\nfile:///a.mp3\r\n"); }
    QMimeData files;
};

TEST_F(CanvasDrops, AFormThatTakesNoneRefusesThem) {
    drop({150, 50}, files);
    EXPECT_EQ(seen, Texts{"refused"});
}

/// DROP-01
TEST_F(CanvasDrops, AnywhereOnTheFormMeansTheControlThatTakesFiles) {
    takeOn(button, "button");
    drop({150, 50}, files);
    EXPECT_EQ(seen, Texts{}) << "posted";
    settle();
    EXPECT_EQ(seen, (Texts{"button", "/b.mp3", "/a.mp3"}));
}

TEST_F(CanvasDrops, AControlsOwnDropGoesFirst) {
    takeOn(button, "button");
    takeOn(slide, "slide");
    drop({20, 65}, files);
    settle();
    EXPECT_EQ(seen.front(), "slide");
}

/// DROP-16: Drops wait while a box is up
TEST_F(CanvasDrops, DropsWaitWhileTheLoopIsHeld) {
    takeOn(button, "button");
    {
        const EventLoop::Hold hold(loop);
        drop({150, 50}, files);
        test::waitUntil([] { return false; }, 30);
        EXPECT_EQ(seen, Texts{});
    }
    settle();
    EXPECT_EQ(seen.size(), 3U);
}

/// CMD-16
TEST_F(CanvasDrops, FilesOfAnotherStartGoToTheFormThatTakesThem) {
    takeOn(button, "button");
    windows.dropFiles({true, {"/x.mp3"}});
    settle();
    EXPECT_EQ(seen, (Texts{"button", "/x.mp3"}));
}

/// CMD-17: They wait while the editor or the settings are open
TEST_F(CanvasDrops, FilesOfAnotherStartWaitWhileADialogKeepsTheFormDisabled) {
    takeOn(button, "button");
    Form dialog("frmOver", FormStyle::Media);
    windows.attach(dialog);
    form.Enabled = false;
    windows.dropFiles({true, {"/x.mp3"}});
    settle();
    EXPECT_EQ(seen, Texts{}) << "the list under an open editor stays";
    form.Enabled = true;
    windows.detach(dialog);
    settle();
    EXPECT_EQ(seen, (Texts{"button", "/x.mp3"}));
}

TEST_F(CanvasDrops, FilesOfAnotherStartWaitForAFormThatTakesThem) {
    windows.dropFiles({true, {"/x.mp3"}});
    Form later("frmLater", FormStyle::Painted);
    CommandButton taker(&later, "cmdLater");
    takeOn(taker, "later");
    windows.attach(later);
    test::waitUntil([this] { return !seen.empty(); });
    EXPECT_EQ(seen, (Texts{"later", "/x.mp3"}));
    windows.detach(later);
}

}  // namespace
}  // namespace corvane
