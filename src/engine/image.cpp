// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"

namespace corvane::mdlPublicFunction {

using namespace mdlDefinePublic;

namespace {

constexpr double kTwips = 15.0;  // to a pixel
constexpr const char* kNoMemory =
    "Corvane couldn't expand an image because of lack of the memory.\r\n"
    "メモリ不足のためイメージを拡大できませんでした。";

/// Share of the screen's width and height that a zoom mode fits the picture into; 0: it does not fit.
double screenShare(std::int16_t zoom) {
    switch (zoom) {
        case 2:
            return 0.25;
        case 3:
            return 0.5;
        case 4:
            return 0.707;
        case 5:
            return 1.0;
        default:
            return 0;
    }
}

double zoomFactor(Player& player, const PictureBox& box) {
    if (player.gImageZoom == 1) return 2.0;
    const double share = screenShare(player.gImageZoom);
    if (share == 0) return 1.0;
    const double byWidth = player.ports.windows.screenWidth() * share / kTwips / box.Width;
    const double byHeight = player.ports.windows.screenHeight() * share / kTwips / box.Height;
    return byHeight >= byWidth ? byWidth : byHeight;
}

void scale(Player& player, PictureBox& box, double factor) {
    const Twips width = box.Width;
    const Twips height = box.Height;
    box.SetSize(static_cast<float>(width * factor), static_cast<float>(height * factor));
    if (player.ports.pictures.paintStretched(box, box.Width, box.Height) != kOutOfMemoryForPicture) return;
    messageBox(player, kNoMemory, Buttons::Ok, Icon::Exclamation);
    box.SetSize(width, height);
}

/// The window takes the picture's size, at most the screen's; both are centred.
void place(Player& player, ImageWindowControls& window) {
    const Twips screenWidth = player.ports.windows.screenWidth();
    const Twips screenHeight = player.ports.windows.screenHeight();
    PictureBox& box = window.pctImage;
    window.SetSize(std::min(box.Width * kTwipsPerPixel, screenWidth),
                   std::min(box.Height * kTwipsPerPixel, screenHeight));
    box.Move((window.Width / kTwipsPerPixel - box.Width) / 2, (window.Height / kTwipsPerPixel - box.Height) / 2);
    window.Move((screenWidth - window.Width) / 2, (screenHeight - window.Height) / 2);
}

void show(Player& player, const Picture& picture) {
    auto& window = player.forms.load<ImageWindowControls>();
    PictureBox& box = window.pctImage;
    box.Visible = false;
    box.Picture = picture;
    box.setPainted(0, 0);
    box.SetSize(static_cast<float>(picture.width()), static_cast<float>(picture.height()));

    const double factor = zoomFactor(player, box);
    if (player.gImageZoom != 0 && factor != 1.0) scale(player, box, factor);
    place(player, window);
    box.Visible = true;
    // One that the user has minimised stays so until a play command shows it: a slide show must not pop up.
    if (window.Visible && window.WindowState == WindowState::Minimized) return;
    window.WindowState = WindowState::Normal;
    window.Show();
}

void startSlideClock(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    auto* window = player.forms.find<ImageWindowControls>();
    if (panel == nullptr || window == nullptr) return;
    player.gLength = player.gInterval;
    if (player.gInterval == 0) {
        setTime(*panel, "99:99");
        return;
    }
    setTime(*panel, "00:00");
    player.gImageElapsed = 0;
    if (player.gPlaying) window->tmrImage.restart();  // else it was paused while it was decoded
}

void beginPicture(Player& player);

void takeDecoded(Player& player, const Pictures::Decoded& decoded) {
    player.pictureAwaited = false;
    auto* const kept = player.forms.find<ImageWindowControls>();
    if (decoded.lacksRoom && kept != nullptr && !kept->pctImage.Picture.get().empty()) {
        kept->pctImage.Picture = Picture();  // there is no room for both
        beginPicture(player);
        return;
    }
    if (decoded.picture.empty()) {
        mediaFailed(player, decoded.reason);
        return;
    }
    show(player, decoded.picture);
    startSlideClock(player);
    prepareNext(player);
}

void beginPicture(Player& player) {
    const auto done = [&player, opening = player.opening](const Pictures::Decoded& decoded) {
        if (player.pictureAwaited && isStillOpen(player, opening)) takeDecoded(player, decoded);
    };
    if (const auto decoded = player.ports.pictures.begin(player.openedPath, done)) {
        takeDecoded(player, *decoded);
        return;
    }
    player.pictureAwaited = true;
    if (auto* kept = player.forms.find<ImageWindowControls>()) kept->tmrImage.Enabled = false;
    player.gImageElapsed = 0;
}

}  // namespace

void OpenImage(Player& player) {
    player.gLength = player.gInterval;
    beginPicture(player);
}

void forgetAwaitedPicture(Player& player) {
    if (!player.pictureAwaited) return;
    player.pictureAwaited = false;
    player.ports.pictures.giveUp();
}

}  // namespace corvane::mdlPublicFunction
