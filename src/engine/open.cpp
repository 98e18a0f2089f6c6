// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <string_view>

#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"

namespace corvane::mdlPublicFunction {

using namespace mdlDefinePublic;

namespace {

constexpr int kStatusIntervalMs = 100;

/// What the extension of an entry decides.
struct Classified {
    std::int16_t kind;
    const char* deviceType;  // null: the control's device type is left as it is
    std::string text;        // shown in the panel's text label
};

bool isOneOf(std::string_view extension, std::initializer_list<std::string_view> names) {
    for (const std::string_view name : names) {
        if (extension == name) return true;
    }
    return false;
}

Classified classify(const std::string& extension) {
    if (isOneOf(extension, {"BMP", "JPEG", "JPG", "GIF"})) return {mkImage, nullptr, extension + " IMAGE"};
    if (extension == "AVI") return {mkMovie, nullptr, "Video File Now On Play"};
    if (isOneOf(extension, {"MOV", "QT"})) return {mkMovie, nullptr, "Quick Time File Now On Play"};
    if (isOneOf(extension, {"MPG", "MPV", "MP2", "M1V", "MPEG"})) {
        // MP2 is grouped with the videos for its text, but it is sound.
        return {extension == "MP2" ? mkMciFile : mkMovie, nullptr, "Mpeg File Now On Play"};
    }
    if (isOneOf(extension, {"MID", "RMI"})) return {mkMciFile, "Sequencer", "MIDI File Now On Play"};
    if (isOneOf(extension, {"WAV", "SND", "AU", "AIF", "AIFC", "AIFF"})) {
        return {mkMciFile, nullptr, "Sound File Now On Play"};
    }
    if (extension == "CDA") return {mkCDTrack, "CDAudio", "CD Audio Now On Play"};
    if (extension == "MP3") return {mkMciFile, nullptr, "MP3 File Now On Play"};
    return {mkMciFile, "", extension + " Now On Play"};
}

bool playsInMciWindow(std::int16_t kind) { return kind == mkMciFile || kind == mkCDTrack; }

/// The list may have been replaced under the file that plays: its window goes when the next one is of another sort.
void closeOtherWindow(Player& player, std::int16_t kind) {
    const std::int16_t open = player.gMediaKind;
    if (playsInMciWindow(open) && !playsInMciWindow(kind)) {
        if (auto* mci = player.forms.find<MciWindowControls>()) {
            mci->mmcMci->Command("Stop");
            mci->mmcMci->Command("Close");
            player.forms.unload<MciWindowControls>();
        }
    } else if (open == mkMovie && kind != mkMovie) {
        if (auto* movie = player.forms.find<MovieWindowControls>()) movie->amvMovie->Stop();
        player.forms.unload<MovieWindowControls>();
    } else if (open == mkImage && kind != mkImage) {
        player.forms.unload<ImageWindowControls>();
    }
}

/// A kind that names no device relies on a fresh window; one left open by a replaced list still holds its device type.
void dropStaleDevice(Player& player, const Classified& file) {
    auto* mci = player.forms.find<MciWindowControls>();
    if (mci == nullptr || file.deviceType != nullptr || mci->mmcMci->DeviceType().empty()) return;
    mci->mmcMci->Command("Stop");
    mci->mmcMci->Command("Close");
    player.forms.unload<MciWindowControls>();
}

/// The last two characters of the name; empty when they are no number. A number below 1 is one, of no track.
std::optional<std::int16_t> trackNumber(const std::string& path) {
    const std::string name = GetBaseName(path);
    const auto number = parseNumber(std::string_view(name).substr(name.size() - std::min<std::size_t>(name.size(), 2)));
    if (!number) return std::nullopt;
    return static_cast<std::int16_t>(*number);
}

bool canBeOpened(Player& player, const std::string& path) {
    if (!player.ports.files.lookUp(path)) return false;
    return GetExtension(path) != "CDA" || trackNumber(path).has_value();
}

void resumeMovie(Player& player, MovieWindowControls& movie) {
    if (isHandingOver(movie)) return;  // paused after its end: the next file comes all the same
    if (movie.started) {
        movie.doubleClickedAt = -1;
        if (player.gMovieZoom != kFullScreenZoom) {
            movie.WindowState = WindowState::Normal;
            movie.Show();
        }
        movie.amvMovie->Run();
    } else if (movie.opened && !movie.tmrMovie.Enabled) {
        startMovie(player, movie);  // it was paused during the delay, which is over
    }
}

void resume(Player& player, MainPanelControls& panel) {
    panel.cmdMainPanel[kPause].Enabled = true;
    auto* const mci = player.forms.find<MciWindowControls>();
    switch (player.gMediaKind) {
        case mkImage:
            if (player.pictureAwaited) break;  // it is shown when it is there
            if (auto* image = player.forms.find<ImageWindowControls>()) {
                image->WindowState = WindowState::Normal;
                image->Show();
                if (player.gInterval != 0) image->tmrImage.Enabled = true;
            }
            break;
        case mkMovie:
            if (auto* movie = player.forms.find<MovieWindowControls>()) resumeMovie(player, *movie);
            break;
        case mkMciFile:
            if (mci != nullptr) mci->mmcMci->Command("Play");
            break;
        case mkCDTrack:
            if (mci == nullptr) break;
            mci->mmcMci->Track(player.gCdTrack);
            mci->mmcMci->To(trackEnd(player, *mci->mmcMci));
            mci->mmcMci->Command("Play");
            break;
        default:
            break;
    }
}

void storeLength(Player& player) {
    auto* const mci = player.forms.find<MciWindowControls>();
    switch (player.gMediaKind) {
        case mkImage:
            player.gLength = player.gInterval;
            break;
        case mkMovie:
            player.gLength = 1;
            break;
        case mkMciFile:
            player.gLength = mci != nullptr ? mci->mmcMci->Length() : 0;
            break;
        case mkCDTrack:
            player.gLength = mci != nullptr ? trackEnd(player, *mci->mmcMci) - player.gCdTrack : 0;
            break;
        default:
            break;
    }
}

void openFresh(Player& player, MainPanelControls& panel) {
    const std::string path = currentPath(player);
    if (!canBeOpened(player, path)) {
        askAboutFile(player, path, "");
        return;
    }
    const Classified file = classify(GetExtension(path));
    forgetAwaitedPicture(player);
    closeOtherWindow(player, file.kind);
    player.gMediaKind = file.kind;
    player.openedPath = path;
    player.opening = {player.lists, player.opening.number + 1};
    dropStaleDevice(player, file);
    if (file.deviceType != nullptr) player.forms.load<MciWindowControls>().mmcMci->DeviceType(file.deviceType);
    panel.lblMainPanel[kTextLabel].Caption = file.text;
    panel.lblMainPanel[kTimeLabel].ToolTipText = file.kind == mkMovie ? "Frame" : "Time";
    showEntry(player, panel);
    panel.pctSlide.Width = kTwipsPerPixel;
    switch (file.kind) {
        case mkImage:
            OpenImage(player);
            return;
        case mkMovie:
            OpenMovie(player);
            break;
        case mkMciFile:
            OpenMciFile(player);
            break;
        default:
            if (!OpenCDTrack(player)) return;
            break;
    }
    storeLength(player);
    prepareNext(player);
}

}  // namespace

std::int16_t mediaKind(const std::string& path) { return classify(GetExtension(path)).kind; }

void PlayFile(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (player.gFileCount == 0 || panel == nullptr) return;
    ++player.turns;
    player.gPlaying = true;
    player.gSlideState = 0;
    panel->cmdMainPanel[kPlay].Enabled = false;
    nameStepButtons(*panel, false);
    panel->cmdMainPanel[kEditor].Enabled = false;
    if (panel->isPaused()) {
        resume(player, *panel);
    } else {
        openFresh(player, *panel);
    }
}

/// A picture is decoded ahead only while another one shows: that is when one waits for the next, and it takes much
/// memory.
void prepareNext(Player& player) {
    if (player.gFileCount == 0) return;  // emptied since the file was opened
    std::size_t next = static_cast<std::size_t>(player.gFileIndex) + 1;
    if (next >= static_cast<std::size_t>(player.gFileCount)) {
        if (!player.gRepeat) return;
        next = 0;
    }
    const std::string& path = player.gFilePath[next];
    if (mediaKind(path) != mkImage) {
        player.ports.media.expect(path);
    } else if (player.gMediaKind == mkImage) {
        player.ports.pictures.decodeAhead(path);
    }
}

void OpenMciFile(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    MciControl& mci = *player.forms.load<MciWindowControls>().mmcMci;
    mci.Command("Stop");
    mci.Command("Close");
    mci.FileName(currentPath(player));
    mci.Command("Open");
    mci.TimeFormat(kFormatMilliseconds);
    mci.UpdateInterval(kStatusIntervalMs);
    const std::int32_t start = player.gStartPosition[static_cast<std::size_t>(player.gFileIndex)];
    if (start != 0 && player.gCustomMode != kCustomOff) {
        mci.To(start);
        mci.Command("Seek");
    }
    mci.Command("Play");
    setTime(*panel, "00:00");
}

bool OpenCDTrack(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    const std::int16_t track = trackNumber(currentPath(player)).value_or(0);
    if (track < 1) {
        mediaFailed(player, "A disc has no track " + std::to_string(track) + ".");
        return false;
    }
    MciControl& mci = *player.forms.load<MciWindowControls>().mmcMci;
    player.gCdTrack = 0;
    mci.Command("Stop");
    mci.Command("Close");
    mci.FileName(currentPath(player));  // the disc's place: the folder may stand for a drive or an image
    mci.Command("Open");
    mci.TimeFormat(kFormatTmsf);
    mci.UpdateInterval(kStatusIntervalMs);
    player.gCdTrack = track;
    mci.Track(player.gCdTrack);
    const std::int32_t start = player.gStartPosition[static_cast<std::size_t>(player.gFileIndex)];
    mci.From(start != 0 && player.gCustomMode != kCustomOff ? start : player.gCdTrack);
    mci.To(trackEnd(player, mci));
    mci.Command("Play");
    setTime(*panel, "00:00");
    return true;
}

void OpenMovie(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (auto* open = player.forms.find<MovieWindowControls>(); open != nullptr && open->isShowing()) {
        player.forms.unload<MovieWindowControls>();
    }
    auto& window = player.forms.load<MovieWindowControls>();
    MovieControl& movie = *window.amvMovie;
    window.opened = false;
    window.started = false;
    window.doubleClickedAt = -1;
    window.WindowState = WindowState::Normal;
    window.tmrMovie.Enabled = false;
    movie.FileName("1");  // releases whatever the control held
    if (player.gMovieZoom == kFullScreenZoom) {
        movie.MovieWindowSize(0);
        movie.FullScreenMode(true);
    } else {
        movie.MovieWindowSize(player.gMovieZoom);
    }
    movie.Rate(1.0);
    movie.FileName(currentPath(player));
    window.Caption = player.gFileTitle[static_cast<std::size_t>(player.gFileIndex)];
    setTime(*panel, "0");
}

}  // namespace corvane::mdlPublicFunction
