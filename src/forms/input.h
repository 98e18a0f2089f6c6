// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace corvane {

inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;
inline constexpr int kMiddleButton = 4;

inline constexpr int kShiftMask = 1;
inline constexpr int kCtrlMask = 2;
inline constexpr int kAltMask = 4;

inline constexpr int kKeyF4 = 115;  ///< key code of F4
inline constexpr int kKeyF1 = 112;  ///< key code of F1
inline constexpr int kKeyAlt = 18;  ///< key code of the Alt key itself
inline constexpr int kKeyF11 = 122;
inline constexpr int kKeyBackspace = 8;
inline constexpr int kKeyEscape = 27;
inline constexpr int kKeyPageUp = 33, kKeyPageDown = 34;
inline constexpr int kKeyLeft = 37, kKeyUp = 38, kKeyRight = 39, kKeyDown = 40;

/// A mouse event. The position is relative to the control, in twips; on a picture box whose
/// ScaleMode is pixels it is in pixels.
struct MouseArgs {
    int button = 0;  ///< button that changed (down, up); 0 for a move, and for a right button taken away while held
    int shift = 0;   ///< kShiftMask | kCtrlMask | kAltMask
    float x = 0;
    float y = 0;
};

/// The wheel of the mouse was turned.
struct WheelArgs {
    int notches = 0;  ///< whole ones: above 0 away from the user, below 0 towards the user; never 0
    int shift = 0;    ///< kShiftMask | kCtrlMask | kAltMask
};

/// A key going down or up. keyCode: the virtual key code (F4 = 115, Alt = 18, letters as capitals).
struct KeyArgs {
    int keyCode = 0;
    int shift = 0;
    bool isRepeat = false;  ///< it is still held
};

/// What was dropped on a control, or handed to a form. hasFiles is false for any other data (a text selection).
struct DropData {
    bool hasFiles = false;
    std::vector<std::string> files;  ///< full paths in the order the sender gave
    bool toPlay = false;             ///< they were opened, not dropped: the first one is to be played at once
    bool toAdd = false;              ///< Shift was held: to the end of the list, where that is possible
};

}  // namespace corvane
