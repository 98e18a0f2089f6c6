// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/linux_desktop.h"

#include <QApplication>
#include <algorithm>

#include "linux/error_stream.h"
#include "linux/program_folder.h"

namespace corvane {

namespace {

constexpr double kMinScale = 0.5;
constexpr double kMaxScale = 4.0;

double scaleOfEnvironment() {
    bool isNumber = false;
    const double scale = qgetenv("CORVANE_SCALE").toDouble(&isNumber);
    return isNumber ? std::clamp(scale, kMinScale, kMaxScale) : 1.0;
}

}  // namespace

LinuxDesktop::LinuxDesktop(CommandLine line, std::string folder)
    : context_{loop_, scaleOfEnvironment(), {}},
      post_(loop_),
      pictures_(post_),
      windows_(context_),
      dialogs_(context_),
      process_(std::move(line), std::move(folder)),
      media_(makeMedia(loop_, windows_)),
      sound_(makeSoundDevices(loop_)),
      closing_([this] { return context_.box.data(); }, [this] { askToClose(); }),
      ports_{loop_, *media_, pictures_, *sound_, files_, windows_, timers_, clock_, dialogs_, process_, random_} {
    dialogs_.setManual(manualFile(folderChoiceOfEnvironment().program));
    for (const std::string& option : process_.unknownOptions()) tellOnErrors(option + ": there is no such option");
    process_.onEnd([this] { stop(); });
    process_.instance().onCall([this](const std::vector<std::string>& files) {
        if (!files.empty()) windows_.dropFiles({true, files, true});
        bringForward();
    });
}

LinuxDesktop::~LinuxDesktop() {
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
