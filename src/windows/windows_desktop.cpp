// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windows_desktop.h"

#include <algorithm>
#include <cwchar>
#include <utility>

#include "windows/program_folder.h"

namespace corvane {

namespace {

constexpr double kMinScale = 0.5;
constexpr double kMaxScale = 4.0;
constexpr int kSessionEndMs = 3000;  ///< the system itself waits for five seconds

double scaleOfEnvironment() {
    wchar_t value[32] = {};
    const DWORD length = GetEnvironmentVariableW(L"CORVANE_SCALE", value, 32);
    if (length == 0 || length >= 32) return 1.0;
    wchar_t* end = nullptr;
    const double scale = std::wcstod(value, &end);
    return end != value && *end == L'\0' ? std::clamp(scale, kMinScale, kMaxScale) : 1.0;
}

}  // namespace

WindowsDesktop::WindowsDesktop(CommandLine line)
    : context_{loop_, scaleOfEnvironment(), nullptr},
      post_(loop_),
      pictures_(makePictures(post_)),
      windows_(context_),
      dialogs_(context_),
      process_(std::move(line), programFolder(folderChoiceOfSystem())),
      media_(makeMedia(loop_, windows_)),
      sound_(makeSoundDevices(loop_)),
      ports_{loop_, *media_, *pictures_, *sound_, files_, windows_, timers_, clock_, dialogs_, process_, random_} {
    dialogs_.setManual(manualFile(folderChoiceOfSystem().program));
    dialogs_.onTaken([this] { windows_.loseMouse(); });
    process_.onEnd([this] { stop(); });
    process_.instance().onFiles([this](const std::vector<std::string>& files) { takeOver(files); });
    context_.sessionAsked = [this] { dialogs_.refuse(); };
    context_.sessionEnds = [this] { endWithSession(); };
}

WindowsDesktop::~WindowsDesktop() {
    timers_.stopAll();
    post_.stop();
}

void WindowsDesktop::takeOver(const std::vector<std::string>& files) {
    if (!files.empty()) windows_.dropFiles({true, files, true});
    if (!dialogs_.raiseBox()) windows_.bringForward();
}

/// The system ends the process soon after its windows have answered: all that is to be put back, is put back before.
void WindowsDesktop::endWithSession() {
    if (process_.ending()) return;
    windows_.requestClose();
    loop_.pumpInside([this] { return process_.ending(); }, kSessionEndMs);
}

void WindowsDesktop::stop() {
    loop_.stop();
    timers_.stopAll();
    dialogs_.refuse();
    windows_.hideAll();
    loop_.quit();
}

}  // namespace corvane
