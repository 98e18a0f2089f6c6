// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/about.h"

#include <cdio/version.h>
#include <pulse/version.h>
#include <seccomp.h>

#include <QFontDatabase>
#include <QGuiApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <utility>
#include <vector>

#include "confinement/confinement.h"
#include "drives/drive_calls.h"
#include "drives/graphics_devices.h"
#include "files/posix_files.h"
#include "linux/display_opening.h"
#include "linux/pictures/qt_pictures.h"
#include "linux/posix_folders.h"
#include "linux/socket_instance.h"
#include "linux/window_system.h"
#include "media/discs/cd_disc.h"
#include "media/midi/fluid_library.h"
#include "media/midi/synthesizer.h"
#include "media/movies/graphics_display.h"
#include "media/movies/movie_library.h"
#include "media/sound/av_kinds.h"
#include "media/sound/av_library.h"
#include "media/sound/pulse_link.h"
#include "program/about_lines.h"
#include "types/kind_facts.h"
#include "types/media_types.h"
#include "workers/worker.h"

namespace corvane {

namespace {

namespace fs = std::filesystem;

constexpr int kServerMs = 1000;
constexpr std::chrono::milliseconds kDriverPatience{3'000};

/// One line, at once: what follows may take a moment.
void tell(const char* what, const std::string& found) {
    std::fputs(aboutLine(what, found).c_str(), stdout);
    std::fflush(stdout);
}

/// What a drive says of itself, or that it says nothing.
std::string asked(const std::string& drive, std::function<std::string()> question) {
    return DriveCalls::all()
        .ask<std::string>(drive, DriveCalls::kPatience, std::move(question))
        .value_or(DriveCalls::kNoAnswer);
}

std::string stateOf(const std::string& folder) {
    PosixFolders folders;
    return aboutFolder(folder, folders.isFolder(folder), folders.canBeWritten(folder));
}

std::string skinsIn(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code failed;
    for (const auto& entry : fs::directory_iterator(folder, failed)) {
        const fs::path other = fs::path(entry.path()).replace_extension(".BMP");
        if (entry.path().extension() == ".CSV" && fs::exists(other, failed)) names.push_back(entry.path().stem());
    }
    std::sort(names.begin(), names.end());
    return names.empty() ? "none in " + folder.string() : joined(names);
}

void tellConfinement(const Confinement& confined) {
    tell("System calls", confined.calls.rules > 0
                             ? "refused by " + std::to_string(confined.calls.rules) + " rules (seccomp)"
                             : "not refused: " + confined.calls.why);
    tell("Network", confined.calls.rules == 0 ? "not refused"
                    : confined.network        ? "kept: DISPLAY, PULSE_SERVER or a message bus names a host"
                                              : "refused");
    tell("Writing", confined.writing.version > 0 ? "only in " + joined(confined.writing.places) + " (Landlock " +
                                                       std::to_string(confined.writing.version) + ")"
                                                 : "not bound: " + confined.writing.why);
}

std::string soundServer() {
    // Never destroyed: a server that hangs must not be waited for.
    auto* const link = new PulseLink("Corvane");
    return link->ready(kServerMs) ? "answers" : "does not answer: everything plays in silence";
}

std::string drives() {
    std::vector<std::string> found = discDevices();
    if (const char* const named = std::getenv("CORVANE_CDROM")) {
        found.insert(found.begin(), std::string(named) + " (CORVANE_CDROM)");
    }
    return found.empty() ? "none" : joined(found);
}

std::string soundsForMidi() {
    static Synthesizer synthesizer;
    const std::string reason = synthesizer.load();
    return reason.empty() ? "there" : reason;
}

std::string japaneseFonts() {
    QStringList families = QFontDatabase::families(QFontDatabase::Japanese);
    families.removeIf([](const QString& name) { return QFontDatabase::isPrivateFamily(name); });
    return families.isEmpty() ? "none: Japanese names show as boxes"
                              : families.join(QStringLiteral(", ")).toStdString();
}

std::string movieVersion() {
    if (!loadMovieLibrary()) return "libmpv is missing (no movies)";
    const unsigned long version = movieLibrary().mpv_client_api_version();
    return "libmpv " + std::to_string(version >> 16) + '.' + std::to_string(version & 0xFFFF);
}

struct Driver {
    std::string name;
    std::string reason = "the graphics driver does not answer";
};

/// Asks for the driver as the first movie would.
std::string movies(GraphicsChoice choice) {
    constexpr const char* kPainted = "painted: ";
    const Displays there = displaysOfEnvironment();
    const std::string platform = platformToAskFor(there);
    const std::string why =
        whyNoGraphics(choice, platform.empty() ? there.chosen : platform, there.x11, !graphicsDevices().empty());
    if (!why.empty()) return kPainted + why;
    const auto driver = std::make_shared<Driver>();
    Worker asker;
    const bool begun = asker.start([driver](const Worker::GiveUp&) {
        std::string reason;
        if (const auto found = GraphicsDisplay::open(reason)) driver->name = found->renderer();
        driver->reason = reason;
    });
    if (!begun) return std::string(kPainted) + Worker::kRefused;
    if (!asker.wait(kDriverPatience)) return std::string(kPainted) + Driver().reason;
    if (driver->name.empty()) return kPainted + driver->reason;
    if (choice != GraphicsChoice::On && drawsBySoftware(driver->name))
        return kPainted + driver->name + " draws by software";
    return "shown by the graphics driver, " + driver->name;
}

/// Of the types of today those that nothing here decodes.
std::string typesWithoutDecoder() {
    QtPictures pictures;
    std::vector<std::string> missing;
    for (const MediaType& type : typesOfToday()) {
        const bool isThere = isPicture(type.kind) ? pictures.shows(type.extension) : avPlays(type.extension);
        if (!isThere) missing.push_back(type.extension);
    }
    return missing.empty() ? "none" : joined(missing);
}

std::string libraries() {
    const scmp_version* const seccomp = seccomp_version();
    return joined(
        {std::string("Qt ") + qVersion(), movieVersion(),
         loadAv() ? std::string("FFmpeg ") + av().av_version_info() : "FFmpeg is missing (no sound files)",
         loadFluid() ? std::string("FluidSynth ") + fluid().fluid_version_str() : "FluidSynth is missing (no MIDI)",
         std::string("libcdio ") + cdio_version_string, std::string("libpulse ") + pa_get_library_version(),
         "libseccomp " + std::to_string(seccomp->major) + '.' + std::to_string(seccomp->minor) + '.' +
             std::to_string(seccomp->micro)});
}

}  // namespace

void tellAbout(const std::string& version, const std::function<GraphicsChoice(const std::string& folder)>& choiceIn) {
    PosixFolders folders;
    PosixFiles files;
    const ProgramFolder program(folderChoiceOfEnvironment(), folders, files);
    const std::string folder = program.named();
    const std::string runtime = runtimeFolder(folder);
    const Confinement confined = confine(folder, runtime);
    std::printf("%s\n", version.c_str());
    tell("Program folder", asked(folder, [folder] { return stateOf(folder); }));
    const std::string skins = program.skins();
    tell("Skins", asked(skins, [skins] { return skinsIn(skins); }));
    tellConfinement(confined);
    tell("Windows", windowsTold(displaysOfEnvironment()));
    tell("Sound server", soundServer());
    tell("CD drives", asked("/dev/cdrom", drives));
    tell("Sounds for MIDI", asked("/usr/share/sounds/sf2", soundsForMidi));
    tell("Libraries", libraries());
    const auto choice = DriveCalls::all().ask<GraphicsChoice>(folder, DriveCalls::kPatience,
                                                              [folder, choiceIn] { return choiceIn(folder); });
    tell("Movies", movies(choice.value_or(GraphicsChoice::Auto)));
    tell("Types without a decoder", typesWithoutDecoder());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("XDG_RUNTIME_DIR", runtime.c_str());
    int none = 0;
    const QGuiApplication application(none, nullptr);
    tell("Japanese fonts", japaneseFonts());
    // Not by the usual way: what hangs in a server or a drive is not waited for.
    std::_Exit(std::ferror(stdout) != 0 ? 1 : 0);
}

}  // namespace corvane
