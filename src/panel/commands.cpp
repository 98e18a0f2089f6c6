// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/hands.h"
#include "engine/hold_times.h"
#include "engine/mdlPublicFunction.h"
#include "panel/frmMainPanel.h"

namespace corvane {

using mdlPublicFunction::changeTimeShown;
using mdlPublicFunction::knobLevel;
using mdlPublicFunction::NextFile;
using mdlPublicFunction::PauseFile;
using mdlPublicFunction::PlayFile;
using mdlPublicFunction::powerOff;
using mdlPublicFunction::PrevFile;
using mdlPublicFunction::SetVolume;
using mdlPublicFunction::setVolumeLevel;
using mdlPublicFunction::showPopupMenu;
using mdlPublicFunction::ShuffleList;
using mdlPublicFunction::stopAll;
using mdlPublicFunction::toggleRepeat;

void frmMainPanel::cmdMainPanel_Click(int index) {
    switch (index) {
        case kPower:
            powerOff(player_);
            break;
        case kMinimise:
            WindowState = WindowState::Minimized;
            break;
        case kRepeat:
            toggleRepeat(player_);
            break;
        case kShuffle:
            if (player_.gFileCount > 2) ShuffleList(player_);
            break;
        case kPlay:
            PlayFile(player_);
            break;
        case kPause:
            PauseFile(player_);
            break;
        case kStop:
            stopAll(player_);
            break;
        case kPrev:
            if (holdEngaged_) break;  // the hold has sought already: the click must not change the file
            tmrPrevNext.Enabled = false;
            PrevFile(player_);
            break;
        case kNext:
            if (holdEngaged_) break;
            tmrPrevNext.Enabled = false;
            NextFile(player_);
            break;
        case kEditor:
            openBeside(FormId::FileList);
            break;
        case kVolumeDown:
            if (!holdEngaged_) SetVolume(player_, 1);  // else the hold has turned it already
            break;
        case kVolumeUp:
            if (!holdEngaged_) SetVolume(player_, 0);
            break;
        default:
            break;
    }
}

/// The editor and the settings dialog show the panel again when they close.
void frmMainPanel::openBeside(FormId id) {
    player_.wholeScreen.reset();
    player_.reading.stop();  // nothing may begin to play beneath a dialog
    player_.forms.unload(FormId::Find);
    Hide();
    Enabled = false;
    player_.forms.load(id).Show();
}

void frmMainPanel::pctMainPanel_Click() {
    if (isStopped()) openBeside(FormId::Custom);
}

/// A label drags the window; a click on one that lies on the display picture means the display.
void frmMainPanel::lblMainPanel_Click(const Label& label) {
    if (player_.conveniences.hands && &label == &lblMainPanel[kTimeLabel] && !isStopped()) {
        changeTimeShown(player_);
        return;
    }
    const PictureBox& display = pctMainPanel;
    const bool onDisplay = display.Visible && label.Left >= display.Left && label.Top >= display.Top &&
                           label.Left < display.Left + display.Width && label.Top < display.Top + display.Height;
    if (onDisplay) pctMainPanel_Click();
}

void frmMainPanel::cmdMainPanel_MouseDown(int index, const MouseArgs& mouse) {
    if (mouse.button != kLeftButton) return;
    if (player_.conveniences.hands && index == kVolumeUp) beginVolumeHold(Hold::Louder);
    if (player_.conveniences.hands && index == kVolumeDown) beginVolumeHold(Hold::Softer);
    if (index != kPrev && index != kNext) return;
    endHold();  // of a press whose release never came
    if (const auto medium = player_.media.current()) medium->leaveWholeScreen();
    const bool shift = (mouse.shift & kShiftMask) != 0;
    if (index == kPrev) {
        hold_ = shift ? Hold::PreviousShift : Hold::Previous;
    } else {
        hold_ = shift ? Hold::NextShift : Hold::Next;
    }
    tmrPrevNext.Interval = kHoldMs;
    tmrPrevNext.restart();
}

void frmMainPanel::beginVolumeHold(Hold direction) {
    endHold();
    hold_ = direction;
    tmrPrevNext.Interval = kVolumeHoldMs;
    tmrPrevNext.restart();
}

void frmMainPanel::cmdMainPanel_MouseUp(int /*index*/, const MouseArgs& mouse) {
    if (mouse.button == kRightButton) {
        showPopupMenu(player_);
        return;
    }
    const auto medium = player_.media.current();
    const bool wholeScreen = medium && medium->takeWholeScreenBack();
    endHold();
    if (!wholeScreen && Visible) pctMainPanel.SetFocus();  // so that keys keep reaching the panel
}

/// What was held goes on as before.
void frmMainPanel::endHold() {
    tmrPrevNext.Enabled = false;
    const bool steppedFast = tmrPrevNext.Interval == kFastStepMs;
    tmrPrevNext.Interval = kHoldMs;
    holdEngaged_ = false;
    hold_ = Hold::None;
    if (const auto medium = player_.media.current()) medium->endHold(steppedFast);
}

void frmMainPanel::dragWindow(const MouseArgs& mouse) {
    if (mouse.button == kLeftButton) player_.ports.windows.beginDrag(*this);
}

void frmMainPanel::popUpOnRight(const MouseArgs& mouse) {
    if (mouse.button == kRightButton) showPopupMenu(player_);
}

void frmMainPanel::imgMainPanel_MouseDown(int index, const MouseArgs& mouse) {
    if (index == kKnobImage) {
        knobDragging_ = true;
    } else {
        dragWindow(mouse);
    }
}

void frmMainPanel::imgMainPanel_MouseMove(int index, const MouseArgs& mouse) {
    if (index != kKnobImage || !knobDragging_) return;
    const auto level = knobLevel(player_, mouse.x, mouse.y);
    if (level && *level != player_.gVolume) setVolumeLevel(player_, *level);
}

void frmMainPanel::imgMainPanel_MouseUp(int index, const MouseArgs& mouse) {
    popUpOnRight(mouse);
    if (index == kKnobImage && mouse.button != kRightButton) knobDragging_ = false;
}

}  // namespace corvane
