// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/resume.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <utility>

#include "engine/mdlPublicFunction.h"
#include "engine/media_time.h"
#include "engine/panel_texts.h"
#include "storage/private_profile.h"
#include "types/kind_facts.h"
#include "types/numbers.h"
#include "types/text.h"

namespace corvane {

using mdlDefinePublic::maxFiles;
using mdlPublicFunction::isStillOpen;
using mdlPublicFunction::openLengthUs;
using mdlPublicFunction::openPositionUs;
using mdlPublicFunction::PauseFile;
using mdlPublicFunction::PlayFile;
using mdlPublicFunction::seekOpenFile;
using mdlPublicFunction::setPanelCaption;

namespace {

constexpr const char* kStateSection = "RESUME";
constexpr const char* kListSection = "LIST";
constexpr const char* kPlacesSection = "PLACES";
constexpr std::size_t kMostValueBytes = std::size_t{32} * 1024;

constexpr std::int64_t kMsUs = 1000;
constexpr std::int64_t kSecondUs = 1'000'000;
constexpr std::int64_t kLongUs = 600 * kSecondUs;  ///< from this length on a file's place is kept
// So near to its ends a file begins at its beginning again.
constexpr std::int64_t kBeginningUs = 10 * kSecondUs;
constexpr std::int64_t kEndUs = 15 * kSecondUs;
constexpr std::int64_t kMostUs = std::numeric_limits<std::int32_t>::max() * kMsUs;

/// A time as it is written, whole milliseconds; empty: it is none that a file can have.
std::optional<std::int64_t> timeOf(std::string_view text) {
    const auto ms = parseNumber(text);
    if (!ms || *ms < 0) return std::nullopt;
    return *ms * kMsUs;
}

std::string timeText(std::int64_t us) { return std::to_string(std::clamp<std::int64_t>(us, 0, kMostUs) / kMsUs); }

void readPlaces(const ProfileSection& section, std::vector<LeftPlace>& places) {
    for (std::size_t i = 0; i < kMostPlaces; ++i) {
        const std::string value = section.get(std::to_string(i), {}, kMostValueBytes);
        const std::size_t bar = value.find('|');
        if (bar == std::string::npos) return;
        const auto us = timeOf(std::string_view(value).substr(0, bar));
        std::string path = value.substr(bar + 1);
        if (us && !path.empty()) places.push_back({std::move(path), *us});
    }
}

}  // namespace

// --- The text ----------------------------------------------------------------------------------------------------

ResumeText readResumeText(std::string_view text) {
    ResumeText kept;
    const ProfileSection list(text, kListSection);
    for (int i = 0; i < mdlDefinePublic::kMaxLongFiles; ++i) {
        const std::string number = std::to_string(i);
        std::string path = list.get("PATH" + number, {}, kMostValueBytes);
        if (path.empty()) break;
        kept.list.push_back({list.get("TITLE" + number, {}, kMostValueBytes), std::move(path)});
    }
    const ProfileSection state(text, kStateSection);
    const auto entry = parseNumber(state.get("ENTRY"));
    if (entry && *entry >= 0 && static_cast<std::size_t>(*entry) < kept.list.size()) {
        kept.entry = *entry;
        kept.openAtUs = timeOf(state.get("OPENAT"));
    }
    readPlaces(ProfileSection(text, kPlacesSection), kept.places);
    return kept;
}

std::string resumeText(const ResumeText& kept) {
    std::vector<ProfileKey> state{{"ENTRY", std::to_string(kept.entry)}};
    if (kept.openAtUs) state.emplace_back("OPENAT", timeText(*kept.openAtUs));
    std::vector<ProfileKey> places;
    for (const LeftPlace& each : kept.places) {
        places.emplace_back(std::to_string(places.size()), timeText(each.us) + '|' + each.path);
    }
    std::vector<ProfileKey> list;
    for (std::size_t i = 0; i < kept.list.size(); ++i) {
        const std::string number = std::to_string(i);
        list.emplace_back("TITLE" + number, kept.list[i].title);
        list.emplace_back("PATH" + number, kept.list[i].path);
    }
    std::string text = withProfileKeys({}, kStateSection, state);
    if (!places.empty()) text = withProfileKeys(text, kPlacesSection, places);
    return list.empty() ? text : withProfileKeys(text, kListSection, list);
}

std::string resumeFile(const Player& player) {
    const std::size_t name = player.gIniFile.rfind(player.ports.files.separator());
    return player.gIniFile.substr(0, name == std::string::npos ? 0 : name + 1) + "RESUME.INI";
}

// --- The start ---------------------------------------------------------------------------------------------------

bool takeRemembered(Player& player, bool listIsWanted) {
    player.remembered = {};
    if (!player.conveniences.resume) return false;
    Files& files = player.ports.files;
    const auto text = files.read(resumeFile(player), kMostResumeBytes);
    // What cannot be read is not written over.
    player.remembered.canBeKept = text || !files.lookUp(resumeFile(player));
    if (!text) return false;
    ResumeText kept = readResumeText(*text);
    player.remembered.places = std::move(kept.places);
    const std::size_t count = std::min(kept.list.size(), maxFiles(player));
    if (!listIsWanted || count == 0) return false;
    if (static_cast<std::size_t>(kept.entry) >= count) {  // it lies behind what such a list can hold
        kept.entry = 0;
        kept.openAtUs.reset();
    }
    for (std::size_t i = 0; i < count; ++i) {
        player.gFileTitle[i] = std::move(kept.list[i].title);
        player.gFilePath[i] = std::move(kept.list[i].path);
    }
    player.gFileCount = static_cast<std::int16_t>(count);
    player.gFileIndex = static_cast<std::int16_t>(kept.entry);
    player.remembered.openAtUs = kept.openAtUs;
    mdlPublicFunction::showList(player);
    setPanelCaption(player, kNumberLabel, zeroPadded(kept.entry + 1, 3));
    const auto entry = static_cast<std::size_t>(kept.entry);
    setPanelCaption(player, kTitleLabel, player.texts.show(player.gFilePath[entry], player.gFileTitle[entry]));
    return true;
}

void goOnWhereLeft(Player& player) {
    const auto place = std::exchange(player.remembered.openAtUs, {});
    if (!place || player.gFileCount == 0 || player.media.isOpen()) return;
    if (!player.ports.files.lookUp(mdlPublicFunction::currentPath(player))) return;
    PlayFile(player);
    if (!player.media.isOpen()) return;
    player.goTo = GoTo{player.opening, *place};
    if (!player.gAutoPlay) PauseFile(player);
}

// --- While it runs -----------------------------------------------------------------------------------------------

Resume::Resume(Player& player)
    : player_(player), still_(player.ports.loop, EventLoop::When::Still, [this] { look(); }) {}

void Resume::look() {
    if (!player_.conveniences.resume) return;
    const bool stands = player_.forms.find<MainPanelControls>() != nullptr;
    if (std::exchange(panelStood_, stands) && !stands) write();
    if (!stands) return;
    const auto medium = player_.media.current();
    const bool same = medium && seen_ && seen_->opening == player_.opening;
    if (seen_ && !same) leave(*std::exchange(seen_, {}));
    if (!medium) return;
    if (!same) {
        seen_ = Seen{player_.opening, player_.openedPath, medium->type().kind, 0, 0};
        wantPlaceOf(*seen_);
    }
    goToWanted();
    seen_->us = player_.goTo ? player_.goTo->us : openPositionUs(player_);
    seen_->lengthUs = openLengthUs(player_);
}

/// A long file's place is kept, unless it lies at one of its ends.
void Resume::leave(const Seen& file) {
    if (!hasLength(file.kind) || file.lengthUs < kLongUs) return;
    std::vector<LeftPlace>& places = player_.remembered.places;
    std::erase_if(places, [&file](const LeftPlace& each) { return each.path == file.path; });
    if (file.us < kBeginningUs || file.us > file.lengthUs - kEndUs) return;
    places.insert(places.begin(), {file.path, file.us});
    if (places.size() > kMostPlaces) places.resize(kMostPlaces);
}

/// Another start that was asked for goes before: the entry's custom one, or where the run before ended.
void Resume::wantPlaceOf(const Seen& file) {
    if (player_.goTo && player_.goTo->opening == file.opening) return;
    player_.goTo.reset();
    const bool hasCustomStart = player_.gCustomMode != mdlDefinePublic::kCustomOff &&
                                player_.gStartPosition[static_cast<std::size_t>(player_.gFileIndex)] != 0;
    if (hasCustomStart || player_.gQuickPlay) return;
    const auto& places = player_.remembered.places;
    const auto found =
        std::find_if(places.begin(), places.end(), [&file](const LeftPlace& each) { return each.path == file.path; });
    if (found != places.end()) player_.goTo = GoTo{file.opening, found->us};
}

/// As soon as the length is known.
void Resume::goToWanted() {
    if (!player_.goTo) return;
    if (!isStillOpen(player_, player_.goTo->opening)) return player_.goTo.reset();
    if (openLengthUs(player_) <= 0 || player_.pictureAwaited) return;
    if (std::exchange(going_, true)) return;
    player_.ports.loop.post([this] {
        going_ = false;
        const auto place = std::exchange(player_.goTo, {});
        if (place && isStillOpen(player_, place->opening)) {
            seekOpenFile(player_, std::clamp<std::int64_t>(place->us, 0, openLengthUs(player_)));
        }
    });
}

/// A run without a list, such as one that was given a file which cannot be played, leaves the list of the run before.
void Resume::takeFormerList(ResumeText& kept) const {
    const auto text = player_.ports.files.read(resumeFile(player_), kMostResumeBytes);
    if (!text) return;
    ResumeText former = readResumeText(*text);
    kept.list = std::move(former.list);
    kept.entry = former.entry;
    kept.openAtUs = former.openAtUs;
}

/// Where long lists are off, the list of the run before is here as far as it reaches: what lies behind that stays
/// behind it, also of one that was shuffled. A list of other files is another list.
void Resume::takeFormerRest(ResumeText& kept) const {
    const std::size_t most = maxFiles(player_);
    if (kept.list.size() != most || most == mdlDefinePublic::kMaxLongFiles) return;
    const auto text = player_.ports.files.read(resumeFile(player_), kMostResumeBytes);
    ResumeText former = text ? readResumeText(*text) : ResumeText();
    if (former.list.size() <= most) return;
    const auto rest = former.list.begin() + static_cast<std::ptrdiff_t>(most);
    const auto pathsOf = [](auto begin, auto end) {
        std::vector<std::string_view> paths;
        for (; begin != end; ++begin) paths.push_back(begin->path);
        std::sort(paths.begin(), paths.end());
        return paths;
    };
    if (pathsOf(former.list.begin(), rest) != pathsOf(kept.list.begin(), kept.list.end())) return;
    std::move(rest, former.list.end(), std::back_inserter(kept.list));
}

/// A folder that cannot be written keeps nothing, and nobody is asked.
void Resume::write() {
    ResumeText kept;
    if (seen_) {
        // What plays on from a list that was replaced is no entry of this one.
        if (seen_->opening.list == player_.lists) kept.openAtUs = seen_->us;
        leave(*std::exchange(seen_, {}));
    }
    if (!player_.remembered.canBeKept) return;
    if (player_.gFileCount > 0) {
        kept.entry = player_.gFileIndex;
        for (std::size_t i = 0; i < static_cast<std::size_t>(player_.gFileCount); ++i) {
            kept.list.push_back({player_.gFileTitle[i], player_.gFilePath[i]});
        }
        takeFormerRest(kept);
    } else {
        takeFormerList(kept);
    }
    kept.places = player_.remembered.places;
    std::string text = resumeText(kept);
    if (text.size() > kMostResumeBytes) {
        kept.list.clear();
        text = resumeText(kept);
    }
    player_.ports.files.replace(resumeFile(player_), text);
}

}  // namespace corvane
