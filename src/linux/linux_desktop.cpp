// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/linux_desktop.h"

#include <QApplication>

#include "linux/bus/mpris.h"
#include "linux/display_opening.h"
#include "linux/error_stream.h"

namespace corvane {

LinuxDesktop::LinuxDesktop(CommandLine line, std::string folder, const std::string& manual, EndSignals& endSignals)
    : context_{loop_, scaleOf(qgetenv("CORVANE_SCALE").toStdString()), {}},
      post_(loop_),
      pictures_(post_),
      manners_(&Mpris::userBus, DesktopSettings::userFolder()),
      windows_(context_),
      dialogs_(context_),
      instance_(folder, runtimeFolder(folder), SessionDisplay::of(displaysOfEnvironment())),
      texts_(QtPost(loop_), runtimeFolder(folder)),
      process_(std::move(line), std::move(folder), {files_, instance_, tellOnErrors, removeUnfinishedFiles}),
      calls_({loop_, timers_, dialogs_, windows_, instance_, process_, QCoreApplication::quit}),
      media_(makeMedia(loop_, windows_, process_.programFolder())),
      sound_(makeSoundDevices(loop_)),
      closing_([this] { return context_.box.data(); }, [this] { calls_.askToClose(); }),
      signals_(endSignals),
      ports_{loop_,   *media_, pictures_, *sound_,  files_,  windows_,
             timers_, clock_,  dialogs_,  process_, random_, &texts_} {
    ports_.lengths = &lengths_;
    ports_.work = &work_;
    dialogs_.setManual(manual);
    windows_.askOfMotion([this] { return manners_.manners().lessMotion; });
    signals_.listen([this] { calls_.askToClose(); });
}

LinuxDesktop::~LinuxDesktop() {
    signals_.leave();
    timers_.stopAll();
    post_.stop();
}

void LinuxDesktop::tellOfOtherSession() {
    if (process_.seenElsewhere().empty() || !process_.startedByDesktop()) return;
    dialogs_.messageBox(process_.seenElsewhere() + "\n\nEnd it there to play here.", "Corvane", Buttons::Ok,
                        Icon::Information);
}

}  // namespace corvane
