// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "files/posix_files.h"
#include "linux/close_requests.h"
#include "linux/end_signals.h"
#include "linux/media/media.h"
#include "linux/pictures/qt_pictures.h"
#include "linux/qt_loop.h"
#include "linux/qt_post.h"
#include "linux/qt_time.h"
#include "linux/socket_instance.h"
#include "linux/windowing/desktop_manners.h"
#include "linux/windowing/qt_dialogs.h"
#include "linux/windowing/qt_windows.h"
#include "media/length_worker.h"
#include "media/tags/worker_texts.h"
#include "program/seeded_random.h"
#include "program/started_program.h"
#include "shell/desktop_calls.h"
#include "workers/file_worker.h"

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
    /// The screen is to be locked, or goes dark.
    void screenCloses() { dialogs_.putMenuAway(); }
    const UiPost& workerPost() const { return post_; }
    /// Whether movies are shown by the graphics driver, as the settings have it. Before the first one.
    void chooseGraphics(GraphicsChoice choice) { media_->chooseGraphics(choice); }
    /// This start was not the only one, and the one that runs is seen in another session: a box says so to who started
    /// it from the desktop, where nobody reads the error stream.
    void tellOfOtherSession();
    /// Waits until the sound server has the volume that was set last. The sound devices are gone then.
    void endSoundDevices() { sound_.reset(); }

private:
    QtLoop loop_;
    DesktopContext context_;
    QtPost post_;
    LengthWorker lengths_{post_};
    QtPictures pictures_;
    PosixFiles files_;
    FileWorker work_{post_, std::make_shared<PosixFiles>()};
    DesktopManners manners_;
    QtWindows windows_;
    QtTimers timers_;
    QtClock clock_;
    QtDialogs dialogs_;
    SocketInstance instance_;
    WorkerTexts texts_;
    StartedProgram process_;
    SeededRandom random_{finestTime};
    DesktopCalls calls_;
    std::unique_ptr<LinuxMedia> media_;
    std::unique_ptr<SoundDevices> sound_;
    CloseRequests closing_;
    EndSignals& signals_;
    Ports ports_;
};

}  // namespace corvane
