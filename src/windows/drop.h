// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <span>

#include "forms/input.h"
#include "winapi/api.h"
// After windows.h:
#include <oleidl.h>

namespace corvane {

/// The files of a drop by the bytes that tell them (DROPFILES and its names). They are another program's: what is not
/// whole tells no files.
DropData filesOf(std::span<const std::byte> bytes);
/// What a WM_DROPFILES message, or a data object's CF_HDROP, brings. The caller finishes or frees it.
DropData filesOf(HGLOBAL memory);

/// Takes what is dragged onto a window: files, and texts, which bring none. Where the thread has no OLE it does
/// nothing.
class DropTarget {
public:
    using Wanted = std::function<bool()>;
    using Dropped = std::function<void(const DropData& data, POINT screen)>;

    /// window: outlives it. wanted: asked while something is dragged over the window. dropped: called inside the drop,
    /// during which the other program waits.
    DropTarget(HWND window, Wanted wanted, Dropped dropped);
    DropTarget(const DropTarget&) = delete;
    DropTarget& operator=(const DropTarget&) = delete;
    ~DropTarget();

    /// As a drag asks for it; null without OLE. The caller gives back no reference.
    IDropTarget* asked() const;

private:
    class Target;

    HWND window_;
    Target* target_;  ///< shared with the system; null without OLE
};

}  // namespace corvane
