// SPDX-License-Identifier: GPL-3.0-or-later
// Sound files and MIDI sequences. Their unit is the millisecond.
#include <cmath>

#include "engine/level_choice.h"
#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"
#include "players/mci_medium.h"
#include "players/media.h"

namespace corvane {

using mdlPublicFunction::MsecToText;
using mdlPublicFunction::prepareNext;
using mdlPublicFunction::TmsfToText;

namespace {

constexpr std::int32_t kStepMs = 1000;
constexpr std::int32_t kQuickPlayMs = 10000;
constexpr std::int64_t kMillisecondUs = 1000;

class Sound : public MciMedium {
public:
    using MciMedium::MciMedium;

    void makeReady(const std::string& path) const override {
        player_.ports.media.expectSound(path, soundLevelOf(player_, path));
    }
    void open() override;
    void step() override;
    void back() override;
    std::int64_t lengthUs() const override { return player_.gLength * kMillisecondUs; }
    std::int64_t positionUs() const override { return position().value_or(0) * kMillisecondUs; }
    void seekTo(std::int64_t us) override;
    void seekToSlide(std::int32_t x) override;
    bool hold(bool back, bool shift) override;

private:
    void OpenMciFile();
    void setDeviceType();
    static void seek(MciControl& mci, std::int32_t position);
    void playOn(MciControl& mci) override { mci.Command("Play"); }
    void takeLength(MciControl& mci) override;
    void showProgress(std::int32_t position) override;
    bool isQuicklyPlayed(std::int32_t position) const override { return position > kQuickPlayMs; }
    void playAgain(MciControl& mci) override;
};

void Sound::open() {
    setDeviceType();
    player_.forms.load<MciWindowControls>().mmcMci->Level(soundLevelOf(player_, path()));
    OpenMciFile();
    const MciControl* const mci = control();
    player_.gLength = mci != nullptr ? mci->Length() : 0;
    prepareNext(player_);
}

/// A type that names no device relies on a fresh window; one left open by a replaced list still holds its device type.
void Sound::setDeviceType() {
    const MciControl* const left = control();
    if (type().deviceType != nullptr) {
        player_.forms.load<MciWindowControls>().mmcMci->DeviceType(type().deviceType);
    } else if (left != nullptr && !left->DeviceType().empty()) {
        closeControl();
    }
}

void Sound::OpenMciFile() {
    MciControl& mci = openControl(kFormatMilliseconds);
    if (const std::int32_t start = startInForce()) seek(mci, start);
    mci.Command("Play");
    showTime("00:00");
}

void Sound::seek(MciControl& mci, std::int32_t position) {
    mci.To(position);
    mci.Command("Seek");
}

void Sound::step() {
    MciControl* const mci = control();
    if (mci == nullptr) return;
    const std::int32_t position = mci->Position() + kStepMs;
    if (position >= mci->Length()) return;
    seek(*mci, position);
    showSlide(position, player_.gLength);
    showTime(MsecToText(position));
}

void Sound::back() {
    player_.gBackPending = false;
    MciControl* const mci = control();
    if (mci == nullptr) return;
    const std::int32_t position = mci->Position() - kStepMs;
    if (position <= 0) return;
    seek(*mci, position);
    showSlide(position, player_.gLength);
    showTime(TmsfToText(position));  // the packed reading of milliseconds, on purpose
}

void Sound::takeLength(MciControl& mci) {
    const std::int32_t length = mci.Length();
    if (length > 0) player_.gLength = length;
}

void Sound::showProgress(std::int32_t position) {
    showTime(MsecToText(position));
    showSlide(position, player_.gLength);
}

void Sound::playAgain(MciControl& mci) {
    seek(mci, listedStart());
    mci.Command("Play");
}

void Sound::seekTo(std::int64_t us) {
    MciControl* const mci = control();
    if (mci == nullptr) return;
    const auto position = static_cast<std::int32_t>(us / kMillisecondUs);
    seek(*mci, position);
    if (player_.gPlaying) mci->Command("Play");
    showProgress(position);
}

void Sound::seekToSlide(std::int32_t x) {
    MciControl* const mci = control();
    if (mci == nullptr || mci->Length() <= 0) return;
    placeSlide(x);
    // Multiplied first: a target that lies on a half is a half.
    const double share = static_cast<double>(mci->Length()) * x / player_.gSlideWidth;
    const auto position = static_cast<std::int32_t>(std::nearbyint(share));
    seek(*mci, position);
    showTime(MsecToText(position));
}

bool Sound::hold(bool back, bool /*shift*/) {
    MciControl* const mci = control();
    if (mci == nullptr) return true;
    stepFast();
    const std::int32_t position = mci->Position() + (back ? -kStepMs : kStepMs);
    if (back ? position <= 0 : position >= mci->Length()) return true;
    seek(*mci, position);
    showProgress(position);
    return true;
}

}  // namespace

std::shared_ptr<OpenMedium> makeSound(Player& player, MediaType type) {
    return std::make_shared<Sound>(player, std::move(type));
}

}  // namespace corvane
