// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "engine/conveniences.h"
#include "engine/list_column.h"
#include "types/media_types.h"

namespace corvane::mdlDefinePublic {

inline constexpr std::int16_t kCustomOff = 0;
inline constexpr std::int16_t kCustomPlay = 1;    ///< a stop position ends the file
inline constexpr std::int16_t kCustomRepeat = 2;  ///< a stop position returns to the start position

// gWindowPos
inline constexpr std::int16_t kNoneOnTop = 0;
inline constexpr std::int16_t kPanelOnTop = 1;
inline constexpr std::int16_t kMediaOnTop = 2;  ///< the movie and image window

// gSlideState
inline constexpr std::int16_t kNoDrag = 0;
inline constexpr std::int16_t kDragPlaying = 1;  ///< of a playing file
inline constexpr std::int16_t kDragPaused = 2;   ///< of a paused file

// gAuxType; from 0 on the number of an auxiliary device
inline constexpr std::int16_t kWaveOutput = -1;
inline constexpr std::int16_t kChooseDevice = -2;  ///< when the panel loads

// A packed position (TMSF) is track, minute, second and frame, lowest byte first.
inline constexpr std::int32_t kPackedMinute = 0x100;
inline constexpr std::int32_t kPackedSecond = 0x10000;

inline constexpr std::int16_t kFullScreenZoom = 5;  ///< gMovieZoom: the movie fills the screen

inline constexpr std::int16_t kFullVolume = 15;  ///< gVolume at its loudest

/// The shared player state, read and written by every form.
struct PlayerState {
    Conveniences conveniences;  ///< in force

    // Settings.
    std::int16_t gWindowPos = kNoneOnTop;  ///< what stays on top
    std::int16_t gDelayTime = 500;         ///< milliseconds
    std::int16_t gAuxType = kWaveOutput;   ///< the volume device
    bool gAutoPlay = false;
    bool gQuickPlay = false;
    std::int16_t gPattern = 0;     ///< file-type filter of the editor, 0 to 8
    std::int16_t gMovieZoom = 0;   ///< 0 to 5
    std::int16_t gImageZoom = 0;   ///< 0 to 5
    std::int16_t gInterval = 0;    ///< seconds a picture is shown; 0 until the user moves on
    std::int16_t gListNumber = 0;  ///< 0 to 9
    std::int16_t gPageNumber = 0;  ///< 0 to 9
    bool gImageHide = true;        ///< the image window goes between files
    std::int16_t gKeyPower = 'P';  ///< character codes; 0 never matches
    std::int16_t gKeyMin = 'M';
    std::int16_t gKeyRepeat = 'R';
    std::int16_t gKeyShuffle = 'S';
    std::int16_t gKeyPlay = 'z';
    std::int16_t gKeyPause = 'x';
    std::int16_t gKeyStop = 'c';
    std::int16_t gKeyPrev = ',';
    std::int16_t gKeyNext = '.';
    std::int16_t gKeyVolumeUp = 'u';
    std::int16_t gKeyVolumeDown = 'd';

    // The play list: entries 0 to gFileCount - 1.
    ListColumn<std::string> gFilePath;
    ListColumn<std::string> gFileTitle;
    std::int16_t gFileCount = 0;
    ListColumn<std::int32_t> gStartPosition;  ///< in the unit of the entry's kind; 0 none
    ListColumn<std::int32_t> gStopPosition;

    // The engine.
    std::int16_t gFileIndex = 0;
    std::int16_t gMediaKind = mkNone;  ///< of the open medium, as MediaHost says
    bool gPlaying = false;
    std::int32_t gLength = 0;  ///< in the unit of the kind
    std::int16_t gCdTrack = 0;
    std::int16_t gImageElapsed = 0;  ///< seconds the picture has been shown
    bool gBackPending = false;       ///< a first press of previous waits for a second
    bool gRepeat = false;
    std::int16_t gCustomMode = kCustomOff;

    // The panel.
    std::int32_t gSlideWidth = 0;  ///< full width of the slider, twips
    std::int16_t gSlideState = kNoDrag;
    bool gAltMenuArmed = false;
    std::int16_t gVolume = 0;   ///< 0 to kFullVolume
    std::int16_t gVolumeX = 0;  ///< knob's centre from the knob image's corner, twips
    std::int16_t gVolumeY = 0;
    std::int16_t gVolumeRadius = 0;  ///< of the indicator's centre, twips
    std::int32_t gPanelWidth = 512;  ///< pixels
    std::int32_t gPanelHeight = 128;
    float gPanelLeft = 0;  ///< twips
    float gPanelTop = 0;
    std::int16_t gAnimationStep = 0;  ///< of the start-up window, kept while that is unloaded

    // Where things are.
    bool gIsWin9x = false;
    std::string gIniFile;
    std::string gListFileStem;
    std::string gBitmapFileName = "DEFAULT.BMP";
    std::string gTextFileName = "DEFAULT.CSV";
    std::string gBitmapPath;
    std::string gTextPath;
};

/// How many entries its list may hold.
constexpr std::size_t maxFiles(const PlayerState& state) {
    return state.conveniences.longLists ? kMaxLongFiles : kMaxFiles;
}

}  // namespace corvane::mdlDefinePublic
