// SPDX-License-Identifier: GPL-3.0-or-later
// Times what the core does inside the process, with real files: core_bench FOLDER [RUNS], where FOLDER is the program
// folder to use. Prints one line a figure: name, then the milliseconds of each run, with tabs between.
#include <QApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <utility>

#include "dialogs/forms.h"
#include "engine/mdlPublicFunction.h"
#include "engine/player.h"
#include "linux/linux_desktop.h"
#include "listedit/forms.h"
#include "listedit/frmFileList.h"
#include "panel/forms.h"
#include "panel/skin_builder.h"
#include "players/forms.h"
#include "startup/forms.h"
#include "storage/play_lists.h"
#include "storage/settings.h"

namespace {

using namespace corvane;
namespace fs = std::filesystem;

constexpr int kSettingsKeys = 10000;
constexpr int kKeyBytes = 105;  // 10,000 such lines are about 1 MB
constexpr int kFolderFiles = 20000;

/// Runs the work once unmeasured and then for each run; prints the figures.
void measure(const char* name, int runs, const std::function<void()>& work) {
    work();
    std::printf("%s", name);
    for (int run = 0; run < runs; ++run) {
        const auto began = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - began;
        std::printf("\t%.4f", took.count());
    }
    std::putchar('\n');
    std::fflush(stdout);
}

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "core_bench: %s\n", what);
    std::exit(1);  // NOLINT: a measuring program without threads of its own
}

void writeLargeSettings(const fs::path& file) {
    std::ofstream out(file, std::ios::binary);
    out << "[KADO]\r\n";
    for (int key = 0; key < kSettingsKeys; ++key) {
        std::string line = "OTHER" + std::to_string(key) + "=";
        line.resize(kKeyBytes - 2, 'v');
        out << line << "\r\n";
    }
    out << "INTERVAL=37\r\n";
}

void makeFiles(const fs::path& folder) {
    fs::create_directories(folder);
    if (fs::exists(folder / ("Track number " + std::to_string(kFolderFiles - 1) + ".mp3"))) return;
    for (int number = 0; number < kFolderFiles; ++number) {
        std::ofstream(folder / ("Track number " + std::to_string(number) + ".mp3"));
    }
}

PlayList fullList(int count, const std::string& folder = "/home/person/Music/An album of many songs") {
    PlayList list;
    list.listName = "Measured";
    for (int index = 0; index < count; ++index) {
        const std::string name = "Track number " + std::to_string(index) + ".mp3";
        list.entries.push_back({name, folder + "/" + name});
    }
    return list;
}

void measureSettings(Player& player, const fs::path& folder, int runs) {
    const std::string ini = player.gIniFile;
    player.gIniFile = (folder / "LARGE.INI").string();
    writeLargeSettings(player.gIniFile);
    measure("settings read, 1 MB and 10,000 keys", runs, [&] { readSettings(player); });
    require(player.gInterval == 37, "the settings were not read");
    player.gIniFile = ini;
}

void measureLists(Player& player, int runs) {
    const std::string file = listFileName(player, 9, 9);
    const PlayList list = fullList(mdlDefinePublic::kMaxFiles);
    measure("list save, 256 entries", runs,
            [&] { require(writePlayList(player, file, list), "the list was not saved"); });
    measure("list load, 256 entries", runs, [&] {
        require(readPlayList(player, file).entries.size() == list.entries.size(), "the list was not loaded");
    });
}

/// The longest list there can be, of files that are there.
void measureLongLists(Player& player, const fs::path& folder, int runs) {
    constexpr int kCount = mdlDefinePublic::kMaxLongFiles;
    const fs::path files = folder / "many";
    makeFiles(files);
    const Conveniences before = std::exchange(player.conveniences, kAllConveniences);
    const std::string file = listFileName(player, player.gPageNumber, player.gListNumber);
    const PlayList list = fullList(kCount, files.string());
    measure("list save, 9,999 entries", runs,
            [&] { require(writePlayList(player, file, list), "the long list was not saved"); });
    measure("list load, 9,999 entries", runs, [&] {
        loadListAtStart(player);
        require(player.gFileCount == kCount, "the long list was not loaded");
    });
    measure("shuffle, 9,999 entries", runs, [&] { mdlPublicFunction::ShuffleList(player); });
    DropData dropped{true, {}};
    for (const ListEntry& each : list.entries) dropped.files.push_back(each.path);
    measure("drop of 9,999 files", runs,
            [&] { require(mdlPublicFunction::takeFiles(player, dropped) == kCount, "files of the drop are missing"); });
    const fs::path foreign = folder / "long.m3u8";
    {
        std::ofstream out(foreign, std::ios::binary);
        for (const ListEntry& each : list.entries) out << "#EXTINF:1,x\nmany/" << each.name << "\n";
    }
    measure("drop of a list of 9,999 entries", runs, [&] {
        require(mdlPublicFunction::takeFiles(player, {true, {foreign.string()}}) == kCount, "entries are missing");
    });
    measure("drop of a folder of 20,000 files", runs, [&] {
        require(mdlPublicFunction::takeFiles(player, {true, {files.string()}}) == kCount, "files are missing");
    });
    player.editorFolder = folder.string();
    measure("editor opened on 9,999 entries", runs, [&] {
        player.ports.loop.enter([&] { player.forms.load(FormId::FileList).Show(); });
        QApplication::processEvents();
        const auto& editor = static_cast<FileListControls&>(*player.forms.find(FormId::FileList));
        require(editor.lstFileList[0].count() == kCount, "the editor does not show the list");
        player.ports.loop.enter([&] { player.forms.unload(FormId::FileList); });
    });
    player.conveniences = before;
}

void measureSkin(Player& player, int runs) {
    auto& menu = player.forms.load<MenuWindowControls>();
    measure("skin bitmap decoded", runs,
            [&] { menu.pcpMainPanel.Picture = player.ports.pictures.decode(player.gBitmapPath).picture; });
    measure("panel built from the skin", runs, [&] {
        MainPanelControls panel;
        require(buildPanel(player, panel), "the panel was not built");
    });
}

void measureFolder(Player& player, const fs::path& folder, int runs) {
    const fs::path files = folder / "many";
    makeFiles(files);
    measure("20,000 files listed", runs, [&] {
        require(player.ports.files.list(files.string(), "*.mp3").size() == kFolderFiles, "files are missing");
    });
    player.editorFolder = files.string();
    measure("editor opened on 20,000 files", runs, [&] {
        player.ports.loop.enter([&] { player.forms.load(FormId::FileList).Show(); });
        QApplication::processEvents();
        const auto& editor = static_cast<FileListControls&>(*player.forms.find(FormId::FileList));
        require(editor.fleFileList.items().size() == kFolderFiles, "the editor does not show the folder");
        player.ports.loop.enter([&] { player.forms.unload(FormId::FileList); });
    });
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return std::fputs("core_bench FOLDER [RUNS]\n", stderr) < 0 ? 1 : 2;
    const fs::path folder = fs::absolute(argv[1]);
    const int runs = argc > 2 ? std::atoi(argv[2]) : 10;  // NOLINT: 0 for what is no number
    require(runs > 0, "RUNS is not a number");
    qputenv("CORVANE_FOLDER", QByteArray::fromStdString(folder.string()));
    EndSignals endSignals;
    int ownArguments = 1;
    const QApplication application(ownArguments, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    LinuxDesktop desktop({}, folder.string(), "", endSignals);
    Player player(desktop.ports());
    registerStartupForms(player);
    registerPanelForms(player);
    registerDialogForms(player);
    registerPlayerForms(player);
    registerListEditForms(player);
    const std::string root = folder.string() + "/";
    player.gIniFile = root + "KADO.INI";
    player.gListFileStem = root + "FILE";
    player.gBitmapPath = root + "PANELSET/DEFAULT.BMP";
    player.gTextPath = root + "PANELSET/DEFAULT.CSV";
    measureSettings(player, folder, runs);
    measureLists(player, runs);
    measureLongLists(player, folder, runs);
    measureSkin(player, runs);
    measureFolder(player, folder, runs);
    player.forms.clear();
    return 0;
}
