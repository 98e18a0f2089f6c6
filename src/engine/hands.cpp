// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/hands.h"

#include <algorithm>
#include <array>
#include <utility>

#include "engine/mdlPublicFunction.h"
#include "engine/media_time.h"
#include "engine/panel_texts.h"
#include "types/numbers.h"

namespace corvane::mdlPublicFunction {

using mdlDefinePublic::kFullScreenZoom;
using mdlDefinePublic::kFullVolume;

namespace {

constexpr std::int64_t kSecondUs = 1'000'000;
constexpr std::int64_t kStepUs = 5 * kSecondUs;
constexpr std::int64_t kMinute = 60, kHour = 3600;  // seconds

/// A length that is not known leaves the elapsed time.
bool showsElapsed(const Player& player, const OpenMedium& medium) {
    return !player.conveniences.hands || player.timeShown == TimeShown::Elapsed || medium.lengthUs() <= 0;
}

bool isSteppable(const Player& player) {
    const auto* const panel = player.forms.find<MainPanelControls>();
    return panel != nullptr && !panel->isStopped() && player.gSlideState == mdlDefinePublic::kNoDrag;
}

}  // namespace

void seekBySteps(Player& player, int steps) {
    const std::int64_t length = openLengthUs(player);
    if (length <= 0 || !isSteppable(player)) return;
    seekOpenFile(player, std::clamp<std::int64_t>(openPositionUs(player) + steps * kStepUs, 0, length));
}

void stepInWindow(Player& player, int steps) {
    if (!player.media.playsIn(FormId::ImageWindow)) return seekBySteps(player, steps);
    if (!isSteppable(player)) return;
    if (steps > 0) {
        if (canGoForward(player)) skipToNext(player);
    } else if (player.gFileIndex > 0 || player.gRepeat) {
        skipToPrevious(player);
    }
}

void turnVolume(Player& player, int steps) {
    const int most = std::min<int>(std::max(steps, -steps), kFullVolume);
    for (int i = 0; i < most; ++i) SetVolume(player, steps > 0 ? 0 : 1);
}

bool screenKey(Player& player, const KeyArgs& key) {
    if (key.shift != 0 || (key.keyCode != kKeyF11 && key.keyCode != kKeyEscape)) return false;
    if (key.isRepeat) return true;
    const auto medium = player.media.current();
    if (key.keyCode == kKeyF11 || (medium && medium->fillsScreen())) changeWholeScreen(player);
    return true;
}

bool findKey(Player& player, const KeyArgs& key) {
    const bool finds = key.shift == kCtrlMask && (key.keyCode == 'F' || key.keyCode == 'J');
    if (!player.conveniences.find || !finds) return false;
    Form& window = player.forms.load(FormId::Find);
    window.Show();
    player.ports.windows.activate(window);
    return true;
}

bool movieKey(Player& player, const KeyArgs& key) {
    static constexpr std::array kKeys = std::to_array<std::pair<int, MovieKey>>({{'T', MovieKey::Subtitles},
                                                                                 {'A', MovieKey::Sound},
                                                                                 {kKeyPageUp, MovieKey::ChapterBack},
                                                                                 {kKeyPageDown, MovieKey::ChapterForth},
                                                                                 {'I', MovieKey::Frame}});
    if (key.shift != kCtrlMask) return false;
    const auto* const found =
        std::find_if(kKeys.begin(), kKeys.end(), [&key](const auto& row) { return row.first == key.keyCode; });
    if (found == kKeys.end()) return false;
    const auto medium = player.media.current();
    if (medium && !key.isRepeat) medium->obey(found->second);
    return true;
}

bool seekKey(Player& player, const KeyArgs& key) {
    if (key.shift != 0 || (key.keyCode != kKeyLeft && key.keyCode != kKeyRight)) return false;
    // Held, it goes on through a file, but not through all files.
    const bool leavesFile = player.media.playsIn(FormId::ImageWindow);
    if (!key.isRepeat || !leavesFile) stepInWindow(player, key.keyCode == kKeyLeft ? -1 : 1);
    return true;
}

void changeWholeScreen(Player& player) {
    const auto medium = player.media.current();
    if (!medium || (medium->window() != FormId::MovieWindow && medium->window() != FormId::ImageWindow)) return;
    player.wholeScreen = !medium->fillsScreen();
    medium->takeWholeScreen();
}

bool isWholeScreen(const Player& player, std::int16_t zoom) {
    return player.wholeScreen.value_or(zoom == kFullScreenZoom);
}

std::int16_t windowZoom(std::int16_t zoom) { return zoom == kFullScreenZoom ? std::int16_t{0} : zoom; }

std::string clockText(std::int64_t us) {
    const std::int64_t seconds = std::max<std::int64_t>(us, 0) / kSecondUs;
    const auto minutes = static_cast<std::int32_t>(seconds % kHour / kMinute);
    const std::string tail = ":" + zeroPadded(static_cast<std::int32_t>(seconds % kMinute), 2);
    if (seconds < kHour) return std::to_string(minutes) + tail;
    return std::to_string(seconds / kHour) + ":" + zeroPadded(minutes, 2) + tail;
}

std::string shownTime(const Player& player, const OpenMedium& medium, const std::string& elapsed) {
    if (showsElapsed(player, medium)) return elapsed;
    const std::int64_t length = medium.lengthUs();
    if (player.timeShown == TimeShown::Total) return clockText(length);
    // Rounded up, so that it reads 0:00 at the end and not before.
    return "-" + clockText(length - std::clamp<std::int64_t>(medium.positionUs(), 0, length) + kSecondUs - 1);
}

void changeTimeShown(Player& player) {
    switch (player.timeShown) {
        case TimeShown::Elapsed:
            player.timeShown = TimeShown::Left;
            break;
        case TimeShown::Left:
            player.timeShown = TimeShown::Total;
            break;
        case TimeShown::Total:
            player.timeShown = TimeShown::Elapsed;
            break;
    }
    const auto medium = player.media.current();
    auto* const panel = player.forms.find<MainPanelControls>();
    if (medium && panel != nullptr) setTime(*panel, shownTime(player, *medium, player.elapsedText));
}

}  // namespace corvane::mdlPublicFunction
