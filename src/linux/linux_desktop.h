// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "linux/close_requests.h"
#include "linux/end_signals.h"
#include "linux/files/qt_files.h"
#include "linux/media/media.h"
#include "linux/media/ui_post.h"
#include "linux/pictures/qt_pictures.h"
#include "linux/qt_loop.h"
#include "linux/qt_time.h"
#include "linux/socket_instance.h"
#include "linux/windowing/qt_dialogs.h"
#include "linux/windowing/qt_windows.h"
#include "shell/program/seeded_random.h"
#include "shell/program/started_program.h"

namespace corvane {

/// All ports of the Linux desktop. Made after the QApplication; outlives the player.
class LinuxDesktop {
public:
    /// folder: the program folder; manual: its first page. The signals outlive it.
    LinuxDesktop(CommandLine line, std::string folder, const std::string& manual, EndSignals& endSignals);
    LinuxDesktop(const LinuxDesktop&) = delete;
    LinuxDesktop& operator=(const LinuxDesktop&) = delete;
    ~LinuxDesktop();

    Ports& ports() { return ports_; }
    /// Waits until the sound server has the volume that was set last. The sound devices are gone then.
    void endSoundDevices() { sound_.reset(); }

private:
    void bringForward();
    void askToClose();
    void stop();

    QtLoop loop_;
    DesktopContext context_;
    UiPost post_;
    QtPictures pictures_;
    QtFiles files_;
    QtWindows windows_;
    QtTimers timers_;
    QtClock clock_;
    QtDialogs dialogs_;
    SocketInstance instance_;
    StartedProgram process_;
    SeededRandom random_{finestTime};
    std::unique_ptr<Media> media_;
    std::unique_ptr<SoundDevices> sound_;
    CloseRequests closing_;
    EndSignals& signals_;
    Ports ports_;
};

}  // namespace corvane
