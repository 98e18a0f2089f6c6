// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windows_desktop.h"

#include <utility>

#include "winapi/program/known_folders.h"
#include "winapi/program/own_process.h"
#include "winapi/program/standard_stream.h"

namespace corvane {

namespace {

constexpr int kSessionEndMs = 3000;  ///< the system itself waits for five seconds

}  // namespace

WindowsDesktop::WindowsDesktop(CommandLine line, std::string folder, const std::string& manual)
    : context_{loop_, scaleOf(variable(L"CORVANE_SCALE")), nullptr},
      post_(loop_.uiPost()),
      pictures_(makePictures(post_)),
      windows_(context_),
      dialogs_(context_),
      instance_(folder),
      process_(std::move(line), std::move(folder),
               {files_, instance_, tellOnErrors, removeUnfinishedFiles, platformFamily()}),
      calls_({loop_, timers_, dialogs_, windows_, instance_, process_, [this] { loop_.quit(); }}),
      media_(makeMedia(loop_, windows_)),
      sound_(makeSoundDevices(loop_)),
      ports_{loop_, *media_, *pictures_, *sound_, files_, windows_, timers_, clock_, dialogs_, process_, random_} {
    ports_.work = &work_;
    ports_.texts = &texts_;
    dialogs_.setManual(manual);
    dialogs_.onTaken([this] { windows_.loseMouse(); });
    context_.sessionAsked = [this] { dialogs_.refuse(); };
    context_.sessionEnds = [this] { endWithSession(); };
}

WindowsDesktop::~WindowsDesktop() {
    timers_.stopAll();
    post_.stop();
}

void WindowsDesktop::whenMachineSleeps(std::function<void(bool sleeps)> told) {
    sleep_.emplace(loop_, std::move(told));
    context_.powerTold = [this](WPARAM what) { sleep_->heard(what); };
}

/// The system ends the process soon after its windows have answered: all that is to be put back, is put back before.
void WindowsDesktop::endWithSession() {
    if (process_.ending()) return;
    windows_.requestClose();
    loop_.pumpInside([this] { return process_.ending(); }, kSessionEndMs);
}

}  // namespace corvane
