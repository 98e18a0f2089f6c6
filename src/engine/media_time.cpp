// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/media_time.h"

#include <algorithm>
#include <cmath>

#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"

namespace corvane::mdlPublicFunction {

using namespace mdlDefinePublic;

namespace {

constexpr std::int64_t kSecondUs = 1'000'000;
constexpr std::int64_t kMillisecondUs = 1000;
constexpr std::int64_t kFramesPerSecond = 75;  // of a disc

MciControl* openMci(const Player& player) {
    auto* const window = player.forms.find<MciWindowControls>();
    return window != nullptr ? window->mmcMci.get() : nullptr;
}

MovieWindowControls* openMovie(const Player& player) {
    auto* const window = player.forms.find<MovieWindowControls>();
    return window != nullptr && window->opened ? window : nullptr;
}

std::int64_t secondsToUs(double seconds) { return std::llround(seconds * static_cast<double>(kSecondUs)); }

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

std::int64_t rawPositionUs(const Player& player) {
    const MciControl* const mci = openMci(player);
    switch (player.gMediaKind) {
        case mkImage:
            return player.gInterval != 0 ? player.gImageElapsed * kSecondUs : 0;
        case mkMovie:
            if (const auto* movie = openMovie(player)) return secondsToUs(movie->amvMovie->CurrentPosition());
            return 0;
        case mkMciFile:
            return mci != nullptr ? mci->Position() * kMillisecondUs : 0;
        case mkCDTrack:
            return mci != nullptr ? packedToUs(mci->Position()) : 0;
        default:
            return 0;
    }
}

void seekMciFile(Player& player, MainPanelControls& panel, MciControl& mci, std::int64_t us) {
    const auto position = static_cast<std::int32_t>(us / kMillisecondUs);
    mci.To(position);
    mci.Command("Seek");
    if (player.gPlaying) mci.Command("Play");
    setTime(panel, MsecToText(position));
    setSlider(player, panel, position, player.gLength);
}

void seekCdTrack(Player& player, MainPanelControls& panel, MciControl& mci, std::int64_t us) {
    const std::int32_t position = usToPacked(us, player.gCdTrack);
    mci.Track(player.gCdTrack);
    if (player.gPlaying) {
        mci.From(position);
        mci.To(trackEnd(player, mci));
        mci.Command("Play");
    } else {
        holdTrackAt(player, mci, position);
    }
    setTime(panel, TmsfToText(position));
    setSlider(player, panel, packedSeconds(position), packedSeconds(player.gLength));
}

}  // namespace

std::int64_t openLengthUs(const Player& player) {
    switch (player.gMediaKind) {
        case mkImage:
            return player.gLength * kSecondUs;
        case mkMovie:
            if (const auto* movie = openMovie(player)) return secondsToUs(movie->amvMovie->Duration());
            return 0;
        case mkMciFile:
            return player.gLength * kMillisecondUs;
        case mkCDTrack:
            return packedToUs(player.gLength);
        default:
            return 0;
    }
}

std::int64_t openPositionUs(const Player& player) {
    const std::int64_t position = std::max<std::int64_t>(rawPositionUs(player), 0);
    const std::int64_t length = openLengthUs(player);
    return length > 0 ? std::min(position, length) : position;
}

bool isProgressing(const Player& player) {
    if (!player.gPlaying) return false;
    if (player.gMediaKind == mkImage) {
        const auto* image = player.forms.find<ImageWindowControls>();
        return image != nullptr && image->tmrImage.Enabled;
    }
    if (player.gMediaKind != mkMovie) return openMci(player) != nullptr;
    const auto* movie = openMovie(player);
    return movie != nullptr && movie->amvMovie->State() == kMovieRunning;
}

void seekOpenFile(Player& player, std::int64_t positionUs) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr || openLengthUs(player) <= 0) return;
    MciControl* const mci = openMci(player);
    auto* const movie = openMovie(player);
    switch (player.gMediaKind) {
        case mkImage:
            player.gImageElapsed = static_cast<std::int16_t>(positionUs / kSecondUs);
            setTime(*panel, MsecToText(player.gImageElapsed * 1000));
            setSlider(player, *panel, player.gImageElapsed, player.gLength);
            break;
        case mkMovie:
            if (movie == nullptr || isHandingOver(*movie)) break;
            movie->amvMovie->CurrentPosition(static_cast<double>(positionUs) / static_cast<double>(kSecondUs));
            setTime(*panel, numberText(movie->amvMovie->CurrentPosition()));
            setSlider(player, *panel, movie->amvMovie->CurrentPosition(), player.gLength);
            break;
        case mkMciFile:
            if (mci != nullptr) seekMciFile(player, *panel, *mci, positionUs);
            break;
        case mkCDTrack:
            if (mci != nullptr) seekCdTrack(player, *panel, *mci, positionUs);
            break;
        default:
            break;
    }
}

}  // namespace corvane::mdlPublicFunction
