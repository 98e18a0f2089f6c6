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

/// The picture on the screen goes first when there is no room for both.
Pictures::Decoded decode(Player& player, const std::string& path) {
    Pictures::Decoded decoded = player.ports.pictures.decode(path);
    auto* const shown = player.forms.find<ImageWindowControls>();
    if (!decoded.lacksRoom || shown == nullptr) return decoded;
    shown->pctImage.Picture = Picture();
    return player.ports.pictures.decode(path);
}

}  // namespace

bool OpenImage(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    Pictures::Decoded decoded = decode(player, currentPath(player));
    if (decoded.picture.empty()) {
        mediaFailed(player, decoded.reason);
        return false;
    }
    auto& window = player.forms.load<ImageWindowControls>();
    PictureBox& box = window.pctImage;
    box.Visible = false;
    box.Picture = decoded.picture;
    box.setPainted(0, 0);
    box.SetSize(static_cast<float>(decoded.picture.width()), static_cast<float>(decoded.picture.height()));

    const double factor = zoomFactor(player, box);
    if (player.gImageZoom != 0 && factor != 1.0) scale(player, box, factor);
    place(player, window);
    box.Visible = true;
    window.WindowState = WindowState::Normal;
    window.Show();
    if (player.gInterval != 0) {
        setTime(*panel, "00:00");
        player.gImageElapsed = 0;
        window.tmrImage.restart();
    } else {
        setTime(*panel, "99:99");
    }
    return true;
}

}  // namespace corvane::mdlPublicFunction
