// SPDX-License-Identifier: GPL-3.0-or-later
// Still pictures. Their unit is the whole second of the slide clock.
#include <algorithm>

#include "engine/hands.h"
#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"
#include "players/media.h"

namespace corvane {

using mdlPublicFunction::isStillOpen;
using mdlPublicFunction::isWholeScreen;
using mdlPublicFunction::mediaFailed;
using mdlPublicFunction::messageBox;
using mdlPublicFunction::MsecToText;
using mdlPublicFunction::NextFile;
using mdlPublicFunction::nextWhilePlaying;
using mdlPublicFunction::prepareNext;
using mdlPublicFunction::previousWhilePlaying;
using mdlPublicFunction::setTime;
using mdlPublicFunction::shownTime;
using mdlPublicFunction::windowZoom;

namespace {

constexpr double kTwips = 15.0;  // to a pixel
constexpr std::int64_t kSecondUs = 1'000'000;
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

/// As it is set, or by hand on the whole screen or not.
std::int16_t zoomInForce(const Player& player) {
    if (!player.wholeScreen) return player.gImageZoom;
    return *player.wholeScreen ? mdlDefinePublic::kFullScreenZoom : windowZoom(player.gImageZoom);
}

double zoomFactor(Player& player, const PictureBox& box) {
    const std::int16_t zoom = zoomInForce(player);
    if (zoom == 1) return 2.0;
    const double share = screenShare(zoom);
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
    if (zoomInForce(player) != 0 && factor != 1.0) scale(player, box, factor);
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
    const auto medium = player.media.current();
    if (player.gInterval != 0) player.gImageElapsed = 0;
    player.elapsedText = player.gInterval == 0 ? "99:99" : "00:00";
    setTime(*panel, medium ? shownTime(player, *medium, player.elapsedText) : player.elapsedText);
    if (player.gInterval == 0) return;
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

class StillPicture : public OpenMedium {
public:
    using OpenMedium::OpenMedium;

    FormId window() const override { return FormId::ImageWindow; }
    bool staysUp() const override { return true; }
    bool isWatched() const override { return player_.gInterval > 0; }

    void makeReady(const std::string& path) const override;
    void open() override { OpenImage(); }
    void giveUp() override;
    void close(bool keepImage) override;
    void resume() override;
    void pause() override;
    void step() override;
    void back() override;
    void progress() override;

    std::int64_t lengthUs() const override { return player_.gLength * kSecondUs; }
    std::int64_t positionUs() const override { return player_.gInterval != 0 ? player_.gImageElapsed * kSecondUs : 0; }
    bool isProgressing() const override;
    std::int64_t toleranceUs() const override { return 1'500'000; }  // it counts whole seconds
    void seekTo(std::int64_t us) override;
    void seekToSlide(std::int32_t x) override;
    bool takesCustomPositions() const override { return false; }
    std::optional<std::int32_t> position() const override { return std::nullopt; }
    bool hold(bool /*back*/, bool /*shift*/) override { return false; }
    bool fillsScreen() const override { return isWholeScreen(player_, player_.gImageZoom); }
    void takeWholeScreen() override;

private:
    void OpenImage();
    ImageWindowControls* imageWindow() const { return player_.forms.find<ImageWindowControls>(); }
    void showElapsed(std::int32_t milliseconds) const;
};

/// A picture is decoded ahead only while another one shows, which is when one waits for the next, and while the opening
/// runs, when it is the first of all: it takes much memory.
void StillPicture::makeReady(const std::string& path) const {
    player_.ports.media.expectNothing();
    const bool isFirst = player_.forms.find<MainPanelControls>() == nullptr;
    if (isFirst || player_.media.playsIn(FormId::ImageWindow)) player_.ports.pictures.decodeAhead(path);
}

/// Begins to decode the picture. It is shown at once when that is done already, else in an event of its own, unless the
/// file is closed or another one opened before. A picture that is kept stays up until then.
void StillPicture::OpenImage() {
    player_.gLength = player_.gInterval;
    beginPicture(player_);
}

void StillPicture::giveUp() {
    if (!player_.pictureAwaited) return;
    player_.pictureAwaited = false;
    player_.ports.pictures.giveUp();
}

void StillPicture::close(bool keepImage) {
    auto* const window = imageWindow();
    if (!keepImage) {
        player_.forms.unload<ImageWindowControls>();
    } else if (window != nullptr) {
        window->tmrImage.Enabled = false;
        player_.gImageElapsed = 0;
    }
}

void StillPicture::resume() {
    auto* const window = imageWindow();
    if (player_.pictureAwaited || window == nullptr) return;  // it is shown when it is there
    window->WindowState = WindowState::Normal;
    window->Show();
    if (player_.gInterval != 0) window->tmrImage.Enabled = true;
}

void StillPicture::pause() {
    if (auto* window = imageWindow()) window->tmrImage.Enabled = false;
}

/// A picture has nothing to step in: another file comes, as while it plays.
void StillPicture::step() {
    auto* const shown = panel();
    if (shown == nullptr) return;
    shown->cmdMainPanel[kPause].Enabled = true;
    nextWhilePlaying(player_, *shown);
}

void StillPicture::back() {
    auto* const shown = panel();
    if (shown == nullptr) return;
    shown->cmdMainPanel[kPause].Enabled = true;
    previousWhilePlaying(player_, *shown);
}

void StillPicture::showElapsed(std::int32_t milliseconds) const {
    showTime(MsecToText(milliseconds));
    showSlide(player_.gImageElapsed, player_.gLength);
}

void StillPicture::progress() {
    ++player_.gImageElapsed;
    // The product is formed in 16 bits and wraps above 32767.
    showElapsed(static_cast<std::int16_t>(static_cast<std::uint16_t>(player_.gImageElapsed * 1000)));
    if (player_.gImageElapsed >= player_.gInterval) NextFile(player_);
}

/// The picture that is awaited is shown so when it comes.
void StillPicture::takeWholeScreen() {
    const auto* const window = imageWindow();
    if (window == nullptr || player_.pictureAwaited) return;
    show(player_, Picture(window->pctImage.Picture.get()));
}

bool StillPicture::isProgressing() const {
    const auto* const window = imageWindow();
    return window != nullptr && window->tmrImage.Enabled;
}

void StillPicture::seekTo(std::int64_t us) {
    player_.gImageElapsed = static_cast<std::int16_t>(us / kSecondUs);
    showElapsed(player_.gImageElapsed * 1000);
}

void StillPicture::seekToSlide(std::int32_t x) {
    if (player_.gLength <= 0) return;  // it stays until the user moves on: there is nothing to seek in
    const double share = static_cast<double>(x) / player_.gSlideWidth;
    player_.gImageElapsed = static_cast<std::int16_t>(share * player_.gInterval);
    showElapsed(player_.gImageElapsed * 1000);
}

}  // namespace

std::shared_ptr<OpenMedium> makePicture(Player& player, MediaType type) {
    return std::make_shared<StillPicture>(player, std::move(type));
}

}  // namespace corvane
