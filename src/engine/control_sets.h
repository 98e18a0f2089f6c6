// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "engine/mdlDefinePublic.h"
#include "forms/form.h"
#include "forms/lists.h"
#include "forms/menu.h"
#include "platform/ports.h"

namespace corvane {

enum class FormId {
    Startup,
    MainPanel,
    MenuWindow,
    MciWindow,
    MovieWindow,
    ImageWindow,
    FileList,
    Custom,
    Find,
    Conveniences
};
inline constexpr std::size_t kForms = static_cast<std::size_t>(FormId::Conveniences) + 1;

/// Buttons of the panel by index.
enum PanelButton {
    kPower = 0,
    kMinimise,
    kRepeat,
    kShuffle,
    kPlay,
    kPause,
    kStop,
    kPrev,
    kNext,
    kEditor,
    kVolumeDown,
    kVolumeUp
};
/// Labels of the panel by index.
enum PanelLabel { kMarkLabel = 0, kTextLabel, kTimeLabel, kTotalLabel, kNumberLabel, kTitleLabel };

inline constexpr int kIndicatorImage = 0;
inline constexpr int kRepeatOffImage = 4, kRepeatOnImage = 5;
inline constexpr int kKnobImage = 6;
inline constexpr int kAutoPlayLamp = 9, kQuickPlayLamp = 12,
                     kRepeatLamp = 15;  ///< each followed by its off and on picture

/// The controls of the main panel that the engine touches. Declared in paint order, bottom to top.
class MainPanelControls : public Form {
public:
    static constexpr FormId kId = FormId::MainPanel;
    MainPanelControls();

    std::array<Image, 18> imgMainPanel;
    PictureBox pctMainPanel;
    PictureBox pctSlide;
    std::array<Label, 6> lblMainPanel;
    Shape shpVolume;  ///< the knob's indicator
    std::array<CommandButton, 12> cmdMainPanel;
    Timer tmrDisplay;
    Timer tmrPrevNext;
    Timer tmrPlayBack;

    bool isStopped() const { return cmdMainPanel[kPlay].Enabled && cmdMainPanel[kPause].Enabled; }
    bool isPaused() const { return !cmdMainPanel[kPause].Enabled; }

    /// CalcPos: slider position x (twips) and a track's length in packed form (minutes in the second byte, seconds in
    /// the third) to a position of the same form, track and frames 0.
    static std::int32_t CalcPos(const mdlDefinePublic::PlayerState& state, std::int32_t x, std::int32_t packedLength);
};

/// The hidden form that holds the popup menu and the skin's bitmap.
class MenuWindowControls : public Form {
public:
    static constexpr FormId kId = FormId::MenuWindow;
    // Entries by index; what is missing is a separator, or not used.
    enum Entry { kPlayCommand = 0, kPlayMode = 2, kPlayCustom = 4, kMin = 8, kMenuExit, kHelp = 11, kPowerOff };
    enum PlayEntry {
        kPlayEntry = 0,
        kPauseEntry,
        kStopEntry,
        kPrevEntry,
        kNextEntry,
        kVolumeUpEntry = 6,
        kVolumeDownEntry
    };
    enum ModeEntry { kRepeatEntry = 0, kShuffleEntry };
    enum CustomEntry { kStartPosition = 0, kStopPosition, kCustomOn = 3, kCustomRepeats };
    MenuWindowControls();

    PictureClip pcpMainPanel;
    MenuItem mnuMenu;
    std::array<MenuItem, 13> mnuSub;  ///< 5 and 6 are not used
    std::array<MenuItem, 8> PlayCmd;
    std::array<MenuItem, 2> PlayMode;
    std::array<MenuItem, 5> PlayCustom;
};

/// The host of the multimedia control.
class MciWindowControls : public Form {
public:
    static constexpr FormId kId = FormId::MciWindow;
    explicit MciWindowControls(Media& media);
    std::unique_ptr<MciControl> mmcMci;
};

class MovieWindowControls : public Form {
public:
    static constexpr FormId kId = FormId::MovieWindow;
    explicit MovieWindowControls(Media& media);
    std::unique_ptr<MovieControl> amvMovie;
    Timer tmrMovie;
    bool opened = false;                ///< OpenComplete has come
    bool started = false;               ///< the delay is over and the movie was run
    std::int64_t doubleClickedAt = -1;  ///< Clock::milliseconds of a double-click not yet spent; -1 none
    /// The movie is seen: in its window or, at full-screen zoom, on the whole screen.
    bool isShowing() const { return Visible || amvMovie->FullScreenMode(); }
    /// The movie has ended, or quick play has ended it, and the delay before the next file runs: it is not brought
    /// back.
    bool isHandingOver() const { return started && (tmrMovie.Enabled || amvMovie->State() == kMovieStopped); }
};

class ImageWindowControls : public Form {
public:
    static constexpr FormId kId = FormId::ImageWindow;
    ImageWindowControls();
    PictureBox pctImage;  ///< in pixels
    Timer tmrImage;
};

}  // namespace corvane
