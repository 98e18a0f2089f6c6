// SPDX-License-Identifier: GPL-3.0-or-later
#include <chrono>

#include "dialogs/forms.h"
#include "engine/machine_sleep.h"
#include "engine/mdlPublicFunction.h"
#include "engine/media_session.h"
#include "engine/player.h"
#include "listedit/forms.h"
#include "panel/forms.h"
#include "players/forms.h"
#include "players/moving_picture.h"
#include "startup/forms.h"
#include "storage/resume.h"
#include "winapi/api.h"
#include "winapi/idle_state.h"
#include "winapi/program/known_folders.h"
#include "winapi/program/own_process.h"
#include "winapi/program/standard_stream.h"
#include "windows/about.h"
#include "windows/media_keys.h"
#include "windows/windows_desktop.h"
#include "workers/worker.h"
// After windows.h:
#include <ole2.h>

namespace {

using namespace corvane;

void registerForms(Player& player) {
    registerStartupForms(player);
    registerPanelForms(player);
    registerDialogForms(player);
    registerPlayerForms(player);
    registerListEditForms(player);
}

/// How long the end waits for what is read and decoded to be given up.
constexpr std::chrono::milliseconds kLeave{500};

int say(const std::string& text) { return writeTo(STD_OUTPUT_HANDLE, text) ? 0 : 1; }

void runPlayer(CommandLine line) {
    KnownFolders folders;
    WindowsFiles files;
    const ProgramFolder folder(folderChoiceOfSystem(), folders, files);
    WindowsDesktop desktop(std::move(line), folder.ready(), folder.manual());
    Player player(desktop.ports());
    registerForms(player);
    IdleState idle;
    const Resume resume(player);
    const MovingPicture moving(player);
    MediaSession session(player);
    session.keepAwakeBy(&idle);
    const MediaKeys keys(session, desktop.loop());
    MachineSleep sleep(player);
    desktop.whenMachineSleeps([&sleep](bool begins) { begins ? sleep.begins() : sleep.isOver(); });
    bool started = false;
    desktop.ports().loop.enter([&] { started = startProgram(player); });
    // The list begins when the opening is over: until then there is time to make ready what its first file needs.
    if (started) mdlPublicFunction::prepareFirst(player);
    if (started && !desktop.ports().process.ending()) desktop.run();
    player.forms.clear();
}

}  // namespace

int WINAPI WinMain(HINSTANCE /*program*/, HINSTANCE /*before*/, char* /*line*/, int /*show*/) {
    // Libraries are the system's, or named with their whole path by what it has registered: never those that lie beside
    // the program or in the folder that a file was opened in.
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32 | LOAD_LIBRARY_SEARCH_USER_DIRS);
    SetDllDirectoryW(L"");
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);  // an empty drive is not an error box of the system
    CommandLine line = commandLineOfProcess();
    if (line.help) return say(usageText());
    if (line.version) return say("corvane " CORVANE_VERSION "\n");
    if (line.about) return say(aboutText("corvane " CORVANE_VERSION, folderChoiceOfSystem()));
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
    InitCommonControlsEx(&controls);
    const bool ole = SUCCEEDED(OleInitialize(nullptr));  // COM, and what is dragged from other programs
    runPlayer(std::move(line));
    // A task that is held by a drive or a decoder may use whatever is left: then nothing is taken down.
    if (!Worker::endAll(kLeave)) TerminateProcess(GetCurrentProcess(), 0);
    if (ole) OleUninitialize();
    return 0;
}
