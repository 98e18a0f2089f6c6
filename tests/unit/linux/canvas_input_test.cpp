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
        form.KeyDown.tie([this](const KeyArgs& key) { say("down", key.keyCode, key.shift); });
        form.KeyUp.tie([this](const KeyArgs& key) { say("up", key.keyCode, key.shift); });
        form.KeyPress.tie([this](int character) { say("press", character, 0); });
        attach();
        seen.clear();
    }
    PictureBox slide{&form, "pctTried"};
    CommandButton button{&form, "cmdTried"};

    void say(const std::string& what, int a, int b) {
        seen.push_back(what + ' ' + std::to_string(a) + ' ' + std::to_string(b));
    }
    void tie(const std::string& name, MouseControl& control) {
        control.MouseUp.tie([this, name](const MouseArgs& mouse) { say(name + " up", mouse.button, mouse.shift); });
    }
};

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

}  // namespace
}  // namespace corvane
