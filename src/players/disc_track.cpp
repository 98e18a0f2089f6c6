// SPDX-License-Identifier: GPL-3.0-or-later
// Tracks of audio discs. Their unit is the packed position: track, minute, second, frame, lowest byte first.
#include <algorithm>

#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"
#include "players/frmMCIWindow.h"
#include "players/mci_medium.h"
#include "players/media.h"
#include "types/numbers.h"

namespace corvane {

using mdlPublicFunction::mediaFailed;
using mdlPublicFunction::packedSeconds;
using mdlPublicFunction::prepareNext;
using mdlPublicFunction::titleOf;
using mdlPublicFunction::tmsfSecondBack;
using mdlPublicFunction::TmsfToText;

namespace {

constexpr const char* kQuickPlayTime = "00:09";
constexpr std::int64_t kSecondUs = 1'000'000;
constexpr std::int64_t kFramesPerSecond = 75;

std::int64_t packedToUs(std::int32_t tmsf) {
    const std::int64_t frames = static_cast<std::uint32_t>(tmsf) >> 24U;
    return packedSeconds(tmsf) * kSecondUs + frames * kSecondUs / kFramesPerSecond;
}

std::int32_t usToPacked(std::int64_t us, std::int16_t track) {
    const std::int64_t frames = us * kFramesPerSecond / kSecondUs;
    const std::int64_t seconds = frames / kFramesPerSecond;
    const std::int64_t packed = frames % kFramesPerSecond << 24 | seconds % 60 << 16 | seconds / 60 << 8 | track;
    return static_cast<std::int32_t>(packed);
}

int trackOf(std::int32_t packed) { return static_cast<int>(static_cast<std::uint32_t>(packed) & 0xFFU); }

/// The last two characters of the name; empty when they are no number. A number below 1 is one, of no track.
std::optional<std::int16_t> trackNumber(const Conveniences& ways, const std::string& path) {
    const std::string name = titleOf(ways, path);
    const auto number = parseNumber(std::string_view(name).substr(name.size() - std::min<std::size_t>(name.size(), 2)));
    if (!number) return std::nullopt;
    return static_cast<std::int16_t>(*number);
}

class DiscTrack : public MciMedium {
public:
    using MciMedium::MciMedium;

    bool canOpen(const std::string& path) const override { return trackNumber(player_.conveniences, path).has_value(); }
    void makeReady(const std::string& path) const override { player_.ports.media.expectDisc(path); }
    void open() override;
    void step() override;
    void back() override;
    std::int64_t lengthUs() const override { return packedToUs(player_.gLength); }
    std::int64_t positionUs() const override { return packedToUs(position().value_or(0)); }
    void seekTo(std::int64_t us) override;
    void seekToSlide(std::int32_t x) override;
    bool isWaitedFor() const override;
    /// Custom positions compare as their mm:ss texts, so the stop second itself is still played.
    bool isBefore(std::int32_t a, std::int32_t b) const override { return TmsfToText(a) < TmsfToText(b); }
    bool hold(bool back, bool shift) override;

private:
    bool OpenCDTrack();
    /// The end of the track in packed form, of which the control is asked: Track() comes first.
    std::int32_t trackEnd(const MciControl& mci) const;
    std::int32_t trackLength(const MciControl& mci) const { return trackEnd(mci) - player_.gCdTrack; }
    void playFrom(MciControl& mci, std::int32_t position) const;
    /// Plays from a position of the track and holds there at once: so a disc seeks.
    void holdAt(MciControl& mci, std::int32_t position) const;
    void showPlace(std::int32_t position) const;
    void playOn(MciControl& mci) override;
    void takeLength(MciControl& mci) override;
    bool isOutside(std::int32_t position) const override;
    void showProgress(std::int32_t position) override;
    bool isQuicklyPlayed(std::int32_t position) const override { return TmsfToText(position) > kQuickPlayTime; }
    void playAgain(MciControl& mci) override;
};

void DiscTrack::open() {
    player_.forms.load<MciWindowControls>().mmcMci->DeviceType(type().deviceType);
    if (!OpenCDTrack()) return;
    const MciControl* const mci = control();
    player_.gLength = mci != nullptr ? trackLength(*mci) : 0;
    prepareNext(player_);
}

/// False: its number is that of no track, and the failure was shown.
bool DiscTrack::OpenCDTrack() {
    const std::int16_t track = trackNumber(player_.conveniences, path()).value_or(0);
    if (track < 1) {
        mediaFailed(player_, "A disc has no track " + std::to_string(track) + ".");
        return false;
    }
    player_.gCdTrack = 0;
    MciControl& mci = openControl(kFormatTmsf);  // the disc's place: the folder may stand for a drive or an image
    player_.gCdTrack = track;
    mci.Track(player_.gCdTrack);
    const std::int32_t start = startInForce();
    playFrom(mci, start != 0 ? start : player_.gCdTrack);
    showTime("00:00");
    return true;
}

std::int32_t DiscTrack::trackEnd(const MciControl& mci) const {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(mci.TrackLength()) << 8U) + player_.gCdTrack;
}

void DiscTrack::playFrom(MciControl& mci, std::int32_t position) const {
    mci.From(position);
    mci.To(trackEnd(mci));
    mci.Command("Play");
}

void DiscTrack::holdAt(MciControl& mci, std::int32_t position) const {
    playFrom(mci, position);
    mci.Command("Pause");
}

void DiscTrack::showPlace(std::int32_t position) const {
    showTime(TmsfToText(position));
    showSlide(packedSeconds(position), packedSeconds(player_.gLength));
}

void DiscTrack::playOn(MciControl& mci) {
    mci.Track(player_.gCdTrack);
    mci.To(trackEnd(mci));
    mci.Command("Play");
}

void DiscTrack::step() {
    MciControl* const mci = control();
    if (mci == nullptr) return;
    mci->Track(player_.gCdTrack);
    const std::int32_t position = mci->Position() + mdlDefinePublic::kPackedSecond;
    if (!isBefore(position, trackEnd(*mci))) return;
    holdAt(*mci, position);
    showPlace(position);
}

void DiscTrack::back() {
    player_.gBackPending = false;
    MciControl* const mci = control();
    if (mci == nullptr) return;
    mci->Track(player_.gCdTrack);
    const std::int32_t position = tmsfSecondBack(mci->Position());
    if (!isBefore(0, position)) return;
    holdAt(*mci, position);
    showPlace(position);
}

/// A track's length is never guessed.
void DiscTrack::takeLength(MciControl& mci) {
    if (player_.gLength != 0) return;
    mci.Track(player_.gCdTrack);
    player_.gLength = trackLength(mci);
}

/// Behind its track's end a disc stands at the beginning of the next one.
bool DiscTrack::isOutside(std::int32_t position) const { return trackOf(position) > player_.gCdTrack; }

void DiscTrack::showProgress(std::int32_t position) {
    showTime(TmsfToText(position));
    if (packedSeconds(player_.gLength) <= 0) {
        showSlide(position, 0);
        return;
    }
    double fraction = 0;
    frmMCIWindow::CalcPer(position, player_.gLength, fraction);
    if (auto* shown = panel()) shown->pctSlide.Width = static_cast<float>(player_.gSlideWidth * fraction);
}

void DiscTrack::playAgain(MciControl& mci) {
    const std::int32_t start = listedStart();
    mci.Track(player_.gCdTrack);
    playFrom(mci, start != 0 ? start : player_.gCdTrack);  // none set: the track's start
}

void DiscTrack::seekTo(std::int64_t us) {
    MciControl* const mci = control();
    if (mci == nullptr) return;
    const std::int32_t position = usToPacked(us, player_.gCdTrack);
    mci->Track(player_.gCdTrack);
    if (player_.gPlaying) {
        playFrom(*mci, position);
    } else {
        holdAt(*mci, position);
    }
    showPlace(position);
}

void DiscTrack::seekToSlide(std::int32_t x) {
    MciControl* const mci = control();
    if (mci == nullptr) return;
    mci->Track(player_.gCdTrack);
    const std::int32_t length = trackLength(*mci);
    if (packedSeconds(length) == 0) return;
    placeSlide(x);
    const std::int32_t position = MainPanelControls::CalcPos(player_, x, length) + player_.gCdTrack;
    holdAt(*mci, position);
    showTime(TmsfToText(position));
}

bool DiscTrack::isWaitedFor() const {
    const MciControl* const mci = control();
    return mci != nullptr && mci->Opening();
}

bool DiscTrack::hold(bool back, bool /*shift*/) {
    MciControl* const mci = control();
    if (mci == nullptr) return true;
    stepFast();
    mci->Track(player_.gCdTrack);
    const std::int32_t now = mci->Position();
    const std::int32_t position = back ? tmsfSecondBack(now) : now + mdlDefinePublic::kPackedSecond;
    const bool allowed = back ? isBefore(0, now) : isBefore(position, trackEnd(*mci));
    if (!allowed) return true;
    holdAt(*mci, position);
    showPlace(position);
    return true;
}

}  // namespace

std::shared_ptr<OpenMedium> makeDiscTrack(Player& player, MediaType type) {
    return std::make_shared<DiscTrack>(player, std::move(type));
}

}  // namespace corvane
