// SPDX-License-Identifier: GPL-3.0-or-later
#include "players/frmImageWindow.h"

#include <cmath>

#include "engine/hands.h"
#include "engine/mdlPublicFunction.h"
#include "players/media_window.h"

namespace corvane {

using mdlPublicFunction::changeWholeScreen;
using mdlPublicFunction::SetWindowZOrder;
using mdlPublicFunction::showPopupMenu;

namespace {

/// How far the picture moves along one direction: with the pointer, until its edge stands on the window's edge.
float panShift(float pointer, float begin, float place, float size, float windowSize) {
    if (size <= windowSize) return 0;
    const float candidate = pointer - begin + place;
    const float overhang = std::nearbyint(size - windowSize);
    if (candidate > 0) return -place;
    if (candidate < -overhang) return -place - overhang;
    return pointer - begin;
}

}  // namespace

frmImageWindow::frmImageWindow(Player& player) : player_(player) {
    tieMediaWindow(player, *this);
    Load.tie([this] { Form_Load(); });
    Activate.tie([this] { Form_Activate(); });
    tmrImage.Tick.tie([this] { tmrImage_Timer(); });
    pctImage.MouseDown.tie([this](const MouseArgs& mouse) { pctImage_MouseDown(mouse); });
    pctImage.MouseMove.tie([this](const MouseArgs& mouse) { pctImage_MouseMove(mouse); });
    pctImage.MouseUp.tie([this](const MouseArgs& mouse) { pctImage_MouseUp(mouse); });
    pctImage.DblClick.tie([this] { pctImage_DblClick(); });
    MouseDown.tie([this](const MouseArgs& mouse) {
        if (mouse.button == kLeftButton) player_.ports.windows.beginDrag(*this);
    });
    MouseUp.tie([this](const MouseArgs& mouse) {
        if (mouse.button == kRightButton) showPopupMenu(player_);
    });
}

void frmImageWindow::Form_Load() {
    // Hidden until its picture is prepared: the order is set, nothing is shown yet.
    if (player_.gWindowPos == mdlDefinePublic::kMediaOnTop) SetWindowZOrder(player_, *this, kTopMost, 0);
}

void frmImageWindow::Form_Activate() {
    if (Visible) pctImage.SetFocus();
}

void frmImageWindow::tmrImage_Timer() { progressIn(player_, kId); }

void frmImageWindow::pctImage_MouseDown(const MouseArgs& mouse) {
    if (mouse.button == kMiddleButton || (mouse.button == kLeftButton && mouse.shift == kShiftMask)) {
        panning_ = true;
        panX_ = mouse.x;
        panY_ = mouse.y;
    } else if (mouse.button == kLeftButton) {
        player_.ports.windows.beginDrag(*this);
    }
}

void frmImageWindow::pctImage_MouseMove(const MouseArgs& mouse) {
    if (panning_) panTo(mouse.x, mouse.y);
}

void frmImageWindow::pctImage_MouseUp(const MouseArgs& mouse) {
    if (mouse.button == kRightButton) {
        showPopupMenu(player_);
    } else {
        panning_ = false;
    }
}

/// A picture that is kept beside another file is not the one that is open.
void frmImageWindow::pctImage_DblClick() {
    if (player_.conveniences.hands && player_.media.playsIn(kId)) {
        changeWholeScreen(player_);
    } else {
        WindowState = WindowState::Minimized;
    }
}

/// The pointer's position is in the picture's own coordinates, which move with it: the start point stays.
void frmImageWindow::panTo(float x, float y) {
    const float right = panShift(x, panX_, pctImage.Left, pctImage.Width, Width / kTwipsPerPixel);
    const float down = panShift(y, panY_, pctImage.Top, pctImage.Height, Height / kTwipsPerPixel);
    pctImage.Move(pctImage.Left + right, pctImage.Top + down);
    player_.ports.windows.refresh(*this);
}

}  // namespace corvane
