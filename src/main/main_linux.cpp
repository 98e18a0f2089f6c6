// SPDX-License-Identifier: GPL-3.0-or-later
#include <malloc.h>
#include <unistd.h>

#include <QApplication>
#include <QIcon>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "confinement/confinement.h"
#include "dialogs/forms.h"
#include "drives/spare_descriptors.h"
#include "engine/machine_sleep.h"
#include "engine/mdlPublicFunction.h"
#include "engine/media_session.h"
#include "engine/player.h"
#include "linux/about.h"
#include "linux/application.h"
#include "linux/bus/bus_probe.h"
#include "linux/bus/idle_bus.h"
#include "linux/bus/mpris.h"
#include "linux/bus/sleep_bus.h"
#include "linux/command_line.h"
#include "linux/display_opening.h"
#include "linux/end_signals.h"
#include "linux/error_stream.h"
#include "linux/linux_desktop.h"
#include "linux/posix_folders.h"
#include "linux/window_system.h"
#include "listedit/forms.h"
#include "panel/forms.h"
#include "players/forms.h"
#include "players/moving_picture.h"
#include "startup/forms.h"
#include "storage/profile_file.h"
#include "storage/resume.h"
#include "storage/settings.h"
#include "storage/settings_schema.h"
#include "workers/worker.h"

namespace {

using namespace corvane;

/// How long the end waits for what is read and decoded to be given up.
constexpr std::chrono::milliseconds kLeave{500};

/// A task that is held by a drive or a decoder may use whatever is left: then the program ends without taking it down.
void endNowWhereTasksRunOn(int code) {
    if (Worker::endAll(kLeave)) return;
    std::fflush(stdout);  // no other stream: one that hangs is locked
    _exit(code);
}

CommandLine commandLineOf(int argc, char** argv) {
    std::error_code failed;
    return readCommandLine({argv + std::min(argc, 1), argv + argc}, std::filesystem::current_path(failed).string());
}

void registerForms(Player& player) {
    registerStartupForms(player);
    registerPanelForms(player);
    registerDialogForms(player);
    registerPlayerForms(player);
    registerListEditForms(player);
}

/// When the display is lost, the tool kit ends the program from deep inside: nothing is unwound, and no window can be
/// asked any more. What the player changed outside of itself is put back all the same.
class EndWithoutDisplay {
public:
    EndWithoutDisplay(LinuxDesktop& desktop, Player& player, EndSignals& endSignals)
        : desktop_(desktop), player_(player), signals_(endSignals) {
        on_exit([](int /*code*/, void* kept) { static_cast<Kept*>(kept)->atEnd(); }, kept_);
    }
    EndWithoutDisplay(const EndWithoutDisplay&) = delete;
    EndWithoutDisplay& operator=(const EndWithoutDisplay&) = delete;
    ~EndWithoutDisplay() { kept_->end = nullptr; }

private:
    /// What the system keeps for the end of the process, and so never goes.
    struct Kept {
        EndWithoutDisplay* end;
        void atEnd() const {
            if (end != nullptr) end->putBack();
        }
    };
    void putBack() {
        mdlPublicFunction::putVolumeBack(player_);
        desktop_.endSoundDevices();
        signals_.stop();
        endNowWhereTasksRunOn(1);
    }

    Kept* const kept_ = new Kept{this};
    LinuxDesktop& desktop_;
    Player& player_;
    EndSignals& signals_;
};

GraphicsChoice graphicsBy(const std::string& setting) {
    const char* const variable = std::getenv("CORVANE_GRAPHICS");
    return graphicsChoice(variable == nullptr ? "" : variable, setting);
}

GraphicsChoice graphicsIn(const std::string& folder) {
    PosixFiles files;
    const std::string settings = readProfileFile(files, folder + "/KADO.INI");
    return graphicsBy(ProfileSection(settings, kSettingsSection).get(kGraphicsKey));
}

/// What the machine's sleep and the screen's lock ask of the player.
SleepBus sleepHeardBy(LinuxDesktop& desktop, MachineSleep& sleep) {
    const auto sleeps = [&desktop, &sleep](bool begins) {
        if (begins) desktop.screenCloses();
        desktop.ports().loop.post([&sleep, begins] { begins ? sleep.begins() : sleep.isOver(); });
    };
    return {desktop.workerPost(), &SleepBus::systemBusAnswers, &SleepBus::systemBus, sleeps,
            [&desktop] { desktop.screenCloses(); }};
}

/// What lists of windows show where the desktop knows no entry of the program.
QIcon programIcon() {
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128}) {
        icon.addFile(QStringLiteral(":/icons/corvane-%1.png").arg(side), {side, side});
    }
    return icon;
}

int runPlayer(CommandLine line, std::string folder, const std::string& manual, EndSignals& endSignals) {
    LinuxDesktop desktop(std::move(line), std::move(folder), manual, endSignals);
    Player player(desktop.ports());
    const EndWithoutDisplay end(desktop, player, endSignals);
    registerForms(player);
    IdleBus idle(&Mpris::userBus);
    const Resume resume(player);
    const MovingPicture moving(player);
    MediaSession session(player);
    session.keepAwakeBy(&idle);
    const Mpris mpris(session, desktop.ports().loop, &Mpris::userBus);
    MachineSleep sleep(player);
    const SleepBus sleepBus = sleepHeardBy(desktop, sleep);
    bool started = false;
    desktop.ports().loop.enter([&] { started = startProgram(player); });
    desktop.chooseGraphics(graphicsBy(ReadSettingText(player, kGraphicsKey)));
    // The list begins when the opening is over: until then there is time to load what its first file needs.
    if (started) mdlPublicFunction::prepareFirst(player);
    if (!started) desktop.tellOfOtherSession();
    const int result = started && !desktop.ports().process.ending() ? QApplication::exec() : 0;
    player.forms.clear();
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    const bool canRun = SpareDescriptors::keep();
    // A reader that has gone and a limit on the size of files are answers to a write, not the end.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    // Buffers of movies and pictures go back to the system when they are freed. By default the limit grows with what
    // was freed, and the heap then keeps some 100 MB after a list of movies.
    mallopt(M_MMAP_THRESHOLD, 512 * 1024);
    mallopt(M_TRIM_THRESHOLD, 128 * 1024);
    CommandLine line = commandLineOf(argc, argv);
    if (line.help) return std::fputs(helpText().c_str(), stdout) < 0 ? 1 : 0;
    if (line.version) return std::puts("corvane " CORVANE_VERSION) < 0 ? 1 : 0;

    if (!canRun) {
        tellOnErrors("The system lets it open too few files to run.");
        return 1;
    }
    if (line.about) tellAbout("corvane " CORVANE_VERSION, &graphicsIn);
    // Before the tool kit begins its threads: what they inherit, none of them gets rid of.
    PosixFolders folders;
    PosixFiles files;
    const ProgramFolder program(folderChoiceOfEnvironment(), folders, files);
    std::string folder = program.ready();
    confine(folder, runtimeFolder(folder));
    EndSignals endSignals;

    QCoreApplication::setApplicationName(QStringLiteral("corvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CORVANE_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("corvane"));
    const Displays displays = displaysOfEnvironment();
    const std::string platform = platformToAskFor(displays);
    if (!platform.empty()) qputenv("QT_QPA_PLATFORM", platform.c_str());
    qunsetenv("SESSION_MANAGER");  // a session manager must not start or save the player by itself
    // Beside its portal, that input method is looked for by its process, which a confined program may not ask about.
    if (!qEnvironmentVariableIsSet("IBUS_USE_PORTAL")) qputenv("IBUS_USE_PORTAL", "1");
    Mpris::startNoBus();
    leaveSilentBuses();
    int ownArguments = std::min(argc, 1);  // Qt must not take options out of file names
    std::optional<DisplayOpening> opening(std::in_place, displays.chosen);
    const Application application(ownArguments, argv);
    opening.reset();
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(programIcon());
    std::setlocale(LC_NUMERIC, "C");
    const int result = runPlayer(std::move(line), std::move(folder), program.manual(), endSignals);
    endSignals.stop();
    endNowWhereTasksRunOn(result);
    return result;
}
