// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/files/far_drives.h"

#include "winapi/files/plain_file.h"

namespace corvane {

FarDrives& FarDrives::all() {
    static FarDrives drives;
    return drives;
}

std::wstring FarDrives::driveOf(const std::wstring& path) {
    if (const std::wstring share = shareOf(path); !share.empty()) return share;
    const std::size_t letter = path.starts_with(L"\\\\?\\") ? 4 : 0;
    if (path.size() < letter + 2 || path[letter + 1] != L':') return {};
    std::wstring drive = path.substr(letter, 2);
    CharUpperBuffW(drive.data(), 1);
    return kindOfDrive((drive + L'\\').c_str()) == DRIVE_REMOTE ? drive : std::wstring();
}

bool FarDrives::State::begin(const std::wstring& drive) {
    const std::lock_guard lock(mutex);
    return asked.insert(drive).second;
}

void FarDrives::State::end(const std::wstring& drive, const std::function<void()>& answer) {
    const std::lock_guard lock(mutex);
    answer();
    asked.erase(drive);
    ended.notify_all();
}

bool FarDrives::State::wait(const std::wstring& drive, std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex);
    return ended.wait_for(lock, patience, [&] { return !asked.contains(drive); });
}

}  // namespace corvane
