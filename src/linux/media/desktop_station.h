// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "linux/qt_post.h"
#include "linux/qt_time.h"
#include "media/sound/output_mci_control.h"

namespace corvane {

/// Before the station, which uses them to its end.
struct StationTimers {
    QtTimers stationTimers;
};

/// The sound's station on this desktop.
struct DesktopStation : private StationTimers, public SoundStation {
    DesktopStation(EventLoop& eventLoop, bool silent)
        : SoundStation(eventLoop, stationTimers, QtPost(eventLoop), silent) {}
};

}  // namespace corvane
