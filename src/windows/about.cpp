// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/about.h"

#include <vector>

#include "program/about_lines.h"
#include "winapi/files/windows_files.h"
#include "winapi/program/known_folders.h"
#include "winapi/sound/mm_api.h"
#include "winapi/text.h"

namespace corvane {

namespace {

std::string skinsIn(const std::string& folder) {
    WindowsFiles files;
    std::vector<std::string> names;
    for (const std::string& record : files.list(folder, "*.CSV")) {
        const std::string name = record.substr(0, record.rfind('.'));
        if (files.lookUp(folder + '\\' + name + ".BMP")) names.push_back(name);
    }
    return names.empty() ? "none" : joined(names);
}

std::vector<std::string> discDrives() {
    std::vector<std::string> drives;
    const DWORD present = GetLogicalDrives();
    for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) {
        const std::wstring root{letter, L':', L'\\'};
        if ((present >> (letter - L'A') & 1U) != 0 && GetDriveTypeW(root.c_str()) == DRIVE_CDROM) {
            drives.push_back(fromWide(root.substr(0, 2)));
        }
    }
    return drives;
}

std::string counted(UINT devices, const char* none) { return devices > 0 ? std::to_string(devices) : none; }

}  // namespace

std::string aboutText(const std::string& version, const FolderChoice& choice) {
    KnownFolders folders;
    WindowsFiles files;
    const ProgramFolder program(choice, folders, files);
    const std::string folder = program.named();
    const bool made = folders.isFolder(folder);
    const std::vector<std::string> drives = discDrives();
    return version + '\n' + aboutLine("Folder", aboutFolder(folder, made, made && folders.canBeWritten(folder))) +
           aboutLine("Skins", skinsIn(program.skins())) +
           aboutLine("Libraries", "the system's alone, none from the program's folder") +
           aboutLine("Files", "on drives with a letter; other machines' shares, pipes and devices are refused") +
           aboutLine("Sound", counted(waveOutGetNumDevs(), "no output: nothing is heard")) +
           aboutLine("MIDI", counted(midiOutGetNumDevs(), "no output: MIDI files are refused")) +
           aboutLine("Disc drives", drives.empty() ? "none" : joined(drives));
}

}  // namespace corvane
