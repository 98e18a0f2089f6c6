// SPDX-License-Identifier: GPL-3.0-or-later
// Drawn controls as assistive programs and the keyboard reach them. That changes are told needs a display: the stories
// listen to them.
#include <QAccessible>

#include "unit/linux/window_rig.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;
using test::plain;

class AccessibleAt : public test::WindowRig, public ::testing::WithParamInterface<double> {
protected:
    AccessibleAt() : WindowRig(FormStyle::Painted, GetParam()) {
        place(slide, 10, 60, 30, 10);
        slide.hitWidth = 150 * kTwipsPerPixel;
        slide.AccessibleName = "Slider";
        slide.TabIndex = 1;
        slide.AccessibleValue = [this] { return DraggedValue{value, 0, 60, 5}; };
        slide.SetAccessibleValue.tie([this](double wanted) { value = wanted; });
        place(button, 10, 10, 40, 20);
        button.Picture = plain(40, 20, Qt::green);
        button.AccessibleName = "Repeat";
        button.ToolTipText = "Again";
        button.TabIndex = 0;
        button.Checkable = true;
        button.MouseDown.tie(
            [this](const MouseArgs& mouse) { seen.push_back("down " + std::to_string(mouse.button)); });
        button.MouseUp.tie([this](const MouseArgs& /*mouse*/) { seen.emplace_back("up"); });
        button.Click.tie([this] { seen.emplace_back("click"); });
        place(label, 60, 10, 100, 16);
        label.AccessibleName = "FileNo";
        label.Caption = "001";
        place(nameless, 0, 0, 10, 10);
        form.Caption = "Tried";
        form.MouseUp.tie([this](const MouseArgs& mouse) { seen.push_back("form up " + std::to_string(mouse.button)); });
        form.KeyPress.tie([this](int character) { seen.push_back("key " + std::to_string(character)); });
        attach();
        seen.clear();
    }

    Image nameless{&form, "imgNameless"};
    PictureBox slide{&form, "pctSlide"};
    Label label{&form, "lblNumber"};
    CommandButton button{&form, "cmdRepeat"};
    double value = 12;

    QAccessibleInterface& root() { return *QAccessible::queryAccessibleInterface(&widget()); }
    QAccessibleInterface* named(const QString& name) {
        for (int i = 0; i < root().childCount(); ++i) {
            if (root().child(i)->text(QAccessible::Name) == name) return root().child(i);
        }
        return nullptr;
    }
    void act(const QString& name, const QString& action) {
        named(name)->actionInterface()->doAction(action);
        QCoreApplication::processEvents();
        settle();
    }
    QRect onScreen(double x, double y, double width, double height) {
        const double scale = GetParam();
        const QRect place = QRectF(x * scale, y * scale, width * scale, height * scale).toAlignedRect();
        return {widget().mapToGlobal(QPoint()) + place.topLeft(), place.size()};
    }
};

/// ACC-01: Each control with a name stands below the window, where the mouse finds it; one that is hidden says so and
///     keeps its place
TEST_P(AccessibleAt, TheControlsWithANameStandBelowTheWindow) {
    EXPECT_EQ(root().role(), QAccessible::Window);
    EXPECT_EQ(root().text(QAccessible::Name), "Tried");
    ASSERT_EQ(root().childCount(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(root().child(i)->parent(), &root());
        EXPECT_EQ(root().indexOfChild(root().child(i)), i);
    }
    EXPECT_EQ(named("Slider")->role(), QAccessible::Slider);
    EXPECT_EQ(named("FileNo")->role(), QAccessible::StaticText);
    EXPECT_EQ(named("Repeat")->role(), QAccessible::Button);
    EXPECT_EQ(named("Repeat")->text(QAccessible::Description), "Again");
    EXPECT_EQ(root().child(3), nullptr);
}

/// Assistive programs keep what they have found, and count on its number.
/// ACC-01
TEST_P(AccessibleAt, AControlThatGoesAndComesKeepsItsPlace) {
    QAccessibleInterface* const kept = named("Repeat");
    const int number = root().indexOfChild(kept);
    const QPoint middle = kept->rect().center();
    button.Visible = false;
    EXPECT_EQ(root().childCount(), 3);
    EXPECT_EQ(root().indexOfChild(kept), number);
    EXPECT_TRUE(kept->state().invisible);
    EXPECT_FALSE(kept->state().focusable);
    EXPECT_EQ(root().childAt(middle.x(), middle.y()), nullptr) << "nobody points at it";
    act("Repeat", QAccessibleActionInterface::pressAction());
    EXPECT_EQ(seen, Texts{});
    button.Visible = true;
    EXPECT_EQ(named("Repeat"), kept);
    EXPECT_FALSE(kept->state().invisible);
    label.Visible = false;
    label.Caption = "002";
    EXPECT_EQ(named("FileNo")->text(QAccessible::Value), "002") << "told when it comes again";
}

/// ACC-01
TEST_P(AccessibleAt, EachStandsWhereTheMouseFindsIt) {
    EXPECT_EQ(named("Repeat")->rect(), onScreen(10, 10, 40, 20));
    EXPECT_EQ(named("Slider")->rect(), onScreen(10, 60, 150, 10));
    const QPoint middle = named("Repeat")->rect().center();
    EXPECT_EQ(root().childAt(middle.x(), middle.y()), named("Repeat"));
    const QRect slider = named("Slider")->rect();
    EXPECT_EQ(root().childAt(slider.right() - 2, slider.center().y()), named("Slider"));
    const QRect nowhere = onScreen(190, 90, 1, 1);
    EXPECT_EQ(root().childAt(nowhere.x(), nowhere.y()), nullptr);
}

/// ACC-02: States and texts follow the controls and are told
TEST_P(AccessibleAt, StatesFollowTheControl) {
    EXPECT_FALSE(named("Repeat")->state().disabled);
    EXPECT_FALSE(named("Repeat")->state().checked);
    EXPECT_TRUE(named("FileNo")->state().readOnly);
    EXPECT_FALSE(named("FileNo")->state().focusable);
    button.Enabled = false;
    button.Checked = true;
    EXPECT_TRUE(named("Repeat")->state().disabled);
    EXPECT_TRUE(named("Repeat")->state().checked);
    QAccessibleInterface* const kept = named("Repeat");
    button.Visible = false;
    EXPECT_TRUE(kept->state().invisible);
    form.Hide();
    EXPECT_TRUE(named("FileNo")->state().invisible);
}

/// ACC-03: A press is the mouse's press, and none while a box is up
TEST_P(AccessibleAt, APressIsTheMousesPress) {
    act("Repeat", QAccessibleActionInterface::pressAction());
    EXPECT_EQ(seen, (Texts{"down 1", "click", "up"}));
    button.Enabled = false;
    act("Repeat", QAccessibleActionInterface::pressAction());
    EXPECT_EQ(seen.size(), 3U);
}

/// ACC-03
TEST_P(AccessibleAt, NothingIsPressedWhileABoxIsUp) {
    {
        const EventLoop::Hold box(loop);
        named("Repeat")->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        named("Slider")->valueInterface()->setCurrentValue(30.0);
        QCoreApplication::processEvents();
    }
    settle();
    EXPECT_EQ(seen, Texts{});
    EXPECT_EQ(value, 12);
}

TEST_P(AccessibleAt, AWindowThatGoesBeforeItsTurnPressesNothing) {
    QAccessibleInterface* const kept = named("Repeat");
    kept->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    windows.detach(form);
    settle();
    EXPECT_EQ(seen, Texts{});
}

/// ACC-04: The menu is the right button's on the form
TEST_P(AccessibleAt, TheMenuIsTheRightButtonsOnTheForm) {
    root().actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    QCoreApplication::processEvents();
    EXPECT_EQ(seen, Texts{"form up 2"});
}

/// ACC-05: Slider and knob are read and set inside their range
TEST_P(AccessibleAt, ASliderIsReadAndSetInsideItsRange) {
    QAccessibleValueInterface* const slider = named("Slider")->valueInterface();
    EXPECT_EQ(slider->currentValue(), 12.0);
    EXPECT_EQ(slider->minimumValue(), 0.0);
    EXPECT_EQ(slider->maximumValue(), 60.0);
    slider->setCurrentValue(500.0);
    QCoreApplication::processEvents();
    EXPECT_EQ(value, 60);
    act("Slider", QAccessibleActionInterface::decreaseAction());
    EXPECT_EQ(value, 55);
}

/// ACC-02
TEST_P(AccessibleAt, ALabelsTextIsItsCaption) {
    QAccessibleTextInterface* const text = named("FileNo")->textInterface();
    EXPECT_EQ(text->text(0, text->characterCount()), "001");
    EXPECT_EQ(text->text(1, 2), "0");
    label.Caption = "2";
    EXPECT_EQ(named("FileNo")->text(QAccessible::Value), "2");
}

/// ACC-08: Tab shows a ring, Space presses, arrows move the slider with the ring, and the mouse takes it away
TEST_P(AccessibleAt, TabShowsARingAndSpacePresses) {
    const QImage plainly = shown();
    key(QEvent::KeyPress, Qt::Key_Space, {}, " ");
    EXPECT_EQ(seen, Texts{"key 32"});
    EXPECT_EQ(shown(), plainly);
    seen.clear();
    key(QEvent::KeyPress, Qt::Key_Tab, {}, "\t");
    EXPECT_NE(shown(), plainly);
    EXPECT_EQ(seen, Texts{"key 9"});  // the form has it as well
    key(QEvent::KeyPress, Qt::Key_Space, {}, " ");
    EXPECT_EQ(seen, (Texts{"key 9", "down 1", "click", "up"}));
    key(QEvent::KeyPress, Qt::Key_Z, {}, "z");
    EXPECT_EQ(seen.back(), "key 122");
    key(QEvent::KeyPress, Qt::Key_Escape, {}, "\x1b");
    EXPECT_EQ(shown(), plainly);
}

/// ACC-08
TEST_P(AccessibleAt, ArrowsMoveTheSliderThatHasTheRing) {
    key(QEvent::KeyPress, Qt::Key_Backtab, Qt::ShiftModifier, "\t");
    key(QEvent::KeyPress, Qt::Key_Right);
    EXPECT_EQ(value, 17);
    key(QEvent::KeyPress, Qt::Key_End);
    EXPECT_EQ(value, 60);
}

/// ACC-08
TEST_P(AccessibleAt, TheMouseAndAHiddenControlTakeTheRingAway) {
    const QImage plainly = shown();
    key(QEvent::KeyPress, Qt::Key_Tab, {}, "\t");
    press({int(120 * GetParam()), int(40 * GetParam())});
    release({int(120 * GetParam()), int(40 * GetParam())});
    EXPECT_EQ(shown(), plainly);
    key(QEvent::KeyPress, Qt::Key_Tab, {}, "\t");
    button.Visible = false;
    button.Visible = true;
    EXPECT_EQ(shown(), plainly);
}

/// ACC-10: A form that goes leaves nothing behind
TEST_P(AccessibleAt, AFormThatGoesLeavesNothingBehind) {
    ASSERT_NE(named("Repeat"), nullptr);
    QAccessibleInterface& window = root();
    windows.detach(form);
    EXPECT_EQ(window.childCount(), 0);
    settle();
}

INSTANTIATE_TEST_SUITE_P(Scales, AccessibleAt, ::testing::Values(1.0, 1.25, 1.75, 2.0));

}  // namespace
}  // namespace corvane
