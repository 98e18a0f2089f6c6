// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

#include "engine/player.h"

namespace corvane {

/// The player's one permanent window, drawn from the skin.
class frmMainPanel : public MainPanelControls {
public:
    explicit frmMainPanel(Player& player);

private:
    enum class Hold : std::int16_t {
        None = 0,
        Previous = 1,
        Next = 2,
        PreviousShift = 3,
        NextShift = 4,
        Louder,
        Softer
    };

    void tieForm();
    void tieButtons();
    void tieMouse();
    void tieValues();

    // Construction and end (frmMainPanel.cpp).
    void Form_Load();
    void Form_Unload();

    // Commands (commands.cpp).
    void cmdMainPanel_Click(int index);
    void cmdMainPanel_MouseDown(int index, const MouseArgs& mouse);
    void cmdMainPanel_MouseUp(int index, const MouseArgs& mouse);
    void pctMainPanel_Click();
    void lblMainPanel_Click(const Label& label);
    void dragWindow(const MouseArgs& mouse);
    void popUpOnRight(const MouseArgs& mouse);
    void imgMainPanel_MouseDown(int index, const MouseArgs& mouse);
    void imgMainPanel_MouseMove(int index, const MouseArgs& mouse);
    void imgMainPanel_MouseUp(int index, const MouseArgs& mouse);
    void openBeside(FormId id);
    void takeDropped(const DropData& dropped);
    void beginVolumeHold(Hold direction);
    void endHold();

    // Press and hold (sequencing.cpp).
    void tmrPrevNext_Timer();
    void tmrPlayBack_Timer();

    // Display and slider (display.cpp, slider.cpp).
    void tmrDisplay_Timer();
    void showClock();
    void blinkTime();
    void beginSlide();
    void slide(double place);
    void endSlide();
    void pctSlide_MouseDown(const MouseArgs& mouse);
    void pctSlide_MouseMove(const MouseArgs& mouse);
    void pctSlide_MouseUp(const MouseArgs& mouse);

    // The wheel, the slider's tip, the keys of the window that finds (hands.cpp).
    void tieHands();
    void Form_KeyDown(const KeyArgs& key);
    std::string slideTip(float x) const;

    // The slider and the knob without the mouse (values.cpp).
    DraggedValue slideValue() const;
    void slideTo(double seconds);
    DraggedValue knobValue() const;
    void turnTo(double percent);

    Player& player_;
    Hold hold_ = Hold::None;
    bool holdEngaged_ = false;
    bool knobDragging_ = false;
    std::int16_t indicatorPhase_ = 0;
    bool timeBlinks_ = false;
};

}  // namespace corvane
