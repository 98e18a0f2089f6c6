// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/linux_desktop.h"

#include <QApplication>

#include "linux/error_stream.h"

namespace corvane {

LinuxDesktop::LinuxDesktop(CommandLine line, std::string folder, const std::string& manual, EndSignals& endSignals)
    : context_{loop_, scaleOf(qgetenv("CORVANE_SCALE").toStdString()), {}},
      post_(loop_),
      pictures_(post_),
      windows_(context_),
      dialogs_(context_),
      instance_(folder, runtimeFolder(folder)),
      process_(std::move(line), std::move(folder), {files_, instance_, tellOnErrors, removeUnfinishedFiles}),
      media_(makeMedia(loop_, windows_)),
      sound_(makeSoundDevices(loop_)),
      closing_([this] { return context_.box.data(); }, [this] { askToClose(); }),
      signals_(endSignals),
      ports_{loop_, *media_, pictures_, *sound_, files_, windows_, timers_, clock_, dialogs_, process_, random_} {
    dialogs_.setManual(manual);
    signals_.listen([this] { askToClose(); });
    process_.onEnd([this] { stop(); });
    instance_.onCall([this](const std::vector<std::string>& files) {
        if (!files.empty()) windows_.dropFiles({true, files, true});
        bringForward();
    });
}

LinuxDesktop::~LinuxDesktop() {
    signals_.leave();
    timers_.stopAll();
    post_.stop();
}

void LinuxDesktop::bringForward() {
    if (!context_.box) return windows_.bringForward();
    context_.box->raise();
    context_.box->activateWindow();
}

void LinuxDesktop::askToClose() {
    dialogs_.refuse();
    windows_.requestClose();
}

void LinuxDesktop::stop() {
    loop_.stop();
    timers_.stopAll();
    dialogs_.refuse();
    windows_.hideAll();
    QCoreApplication::quit();
}

}  // namespace corvane
