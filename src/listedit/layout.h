// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/control.h"

namespace corvane {

class FileListControls;

/// Places the editor's controls for the window's size and the splitter. The lists take what the window has more.
class EditorLayout {
public:
    static constexpr Twips kLeastSplit = 630;  ///< the splitter's limits, on the form
    static constexpr Twips kMostSplit = 3690;

    explicit EditorLayout(FileListControls& form) : form_(form) {}

    /// Sets the window's first size and its limits.
    void setUp();
    /// Puts every control where it belongs.
    void place();
    /// Moves the left edge of the files to x, within the limits.
    void setSplit(Twips x);

private:
    void placeFolders();
    void placeFiles();
    void placeCommands();
    void placePlayList();
    void placeBottom();
    Twips filesRight() const;

    FileListControls& form_;
    Twips split_ = 0;  ///< left edge of the files
};

}  // namespace corvane
