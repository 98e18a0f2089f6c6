// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"
#include "panel/frmMainPanel.h"
#include "panel/hold_times.h"

namespace corvane {

using namespace mdlPublicFunction;
using namespace mdlDefinePublic;

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
            CloseFile(player_, false);
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
            SetVolume(player_, 1);
            break;
        case kVolumeUp:
            SetVolume(player_, 0);
            break;
        default:
            break;
    }
}

/// The editor and the settings dialog show the panel again when they close.
void frmMainPanel::openBeside(FormId id) {
    Hide();
    Enabled = false;
    player_.forms.load(id).Show();
}

void frmMainPanel::pctMainPanel_Click() {
    if (isStopped()) openBeside(FormId::Custom);
}

/// A label drags the window; a click on one that lies on the display picture means the display.
void frmMainPanel::lblMainPanel_Click(const Label& label) {
    const PictureBox& display = pctMainPanel;
    const bool onDisplay = display.Visible && label.Left >= display.Left && label.Top >= display.Top &&
                           label.Left < display.Left + display.Width && label.Top < display.Top + display.Height;
    if (onDisplay) pctMainPanel_Click();
}

void frmMainPanel::cmdMainPanel_MouseDown(int index, const MouseArgs& mouse) {
    if (mouse.button != kLeftButton || (index != kPrev && index != kNext)) return;
    endHold();  // of a press whose release never came
    if (isFullScreenMovie() && movie() != nullptr) movie()->amvMovie->FullScreenMode(false);
    const bool shift = (mouse.shift & kShiftMask) != 0;
    if (index == kPrev) {
        hold_ = shift ? Hold::PreviousShift : Hold::Previous;
    } else {
        hold_ = shift ? Hold::NextShift : Hold::Next;
    }
    tmrPrevNext.Interval = kHoldMs;
    tmrPrevNext.restart();
}

void frmMainPanel::cmdMainPanel_MouseUp(int /*index*/, const MouseArgs& mouse) {
    if (mouse.button == kRightButton) {
        showPopupMenu(player_);
        return;
    }
    const bool fullScreen = isFullScreenMovie() && movie() != nullptr;
    if (fullScreen) movie()->amvMovie->FullScreenMode(true);
    endHold();
    if (!fullScreen && Visible) pctMainPanel.SetFocus();  // so that keys keep reaching the panel
}

/// What was held goes on as before.
void frmMainPanel::endHold() {
    tmrPrevNext.Enabled = false;
    MovieWindowControls* const window = movie();
    if (tmrPrevNext.Interval == kFastStepMs) {
        tmrPrevNext.Interval = kHoldMs;
        resumeAfterHold();
    }
    holdEngaged_ = false;
    hold_ = Hold::None;
    if (player_.gMediaKind == mkMovie && window != nullptr && window->amvMovie->Rate() != 1.0) {
        window->amvMovie->Pause();
        window->amvMovie->Rate(1.0);
        if (cmdMainPanel[kPause].Enabled && window->amvMovie->State() != kMovieStopped) window->amvMovie->Run();
    }
}

/// After fast stepping: goes on playing when it played. A movie runs in any case, and the panel then says so.
void frmMainPanel::resumeAfterHold() {
    const bool playing = cmdMainPanel[kPause].Enabled;
    if (player_.gMediaKind == mkMovie) {
        if (movie() == nullptr || !movie()->started || isHandingOver(*movie())) return;
        movie()->amvMovie->Run();
        if (!playing) showPlaying(player_, *this);
        return;
    }
    if (!playing || mci() == nullptr) return;
    if (player_.gMediaKind == mkCDTrack) {
        mci()->Track(player_.gCdTrack);
        mci()->To(trackEnd(player_, *mci()));
    }
    mci()->Command("Play");
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
