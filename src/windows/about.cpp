// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/about.h"

#include <cstdio>
#include <vector>

#include "windows/files/windows_files.h"
#include "windows/media/sound/mm_api.h"
#include "windows/text.h"

namespace corvane {

namespace {

std::string line(const char* what, const std::string& found) {
    char begin[32] = {};
    std::snprintf(begin, sizeof begin, "%-18s ", (std::string(what) + ':').c_str());
    return begin + found + '\n';
}

std::string joined(const std::vector<std::string>& parts, const char* none) {
    std::string text;
    for (const std::string& part : parts) text += (text.empty() ? "" : ", ") + part;
    return text.empty() ? none : text;
}

std::string skinsIn(const std::string& folder) {
    WindowsFiles files;
    std::vector<std::string> names;
    for (const std::string& record : files.list(folder, "*.CSV")) {
        const std::string name = record.substr(0, record.rfind('.'));
        if (files.lookUp(folder + '\\' + name + ".BMP")) names.push_back(name);
    }
    return joined(names, "none");
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
    const std::string folder = namedFolder(choice);
    const bool made = WindowsFiles().readable(folder);
    std::string state = made ? "" : " (made at the first start)";
    if (made && !canBeWritten(folder)) state = " (cannot be written: nothing is stored)";
    const std::string shipped = choice.program + '\\' + kSkinFolder;
    const std::string own = folder + '\\' + kSkinFolder;
    return version + '\n' + line("Folder", folder + state) +
           line("Skins", skinsIn(WindowsFiles().readable(own) ? own : shipped)) +
           line("Libraries", "the system's alone, none from the program's folder") +
           line("Files", "on drives with a letter; other machines' shares, pipes and devices are refused") +
           line("Sound", counted(waveOutGetNumDevs(), "no output: nothing is heard")) +
           line("MIDI", counted(midiOutGetNumDevs(), "no output: MIDI files are refused")) +
           line("Disc drives", joined(discDrives(), "none"));
}

}  // namespace corvane
