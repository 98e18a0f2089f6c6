// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/standard_stream.h"

#include <chrono>

#include "shell/printable.h"
#include "windows/text.h"
#include "workers/worker.h"

namespace corvane {

namespace {

constexpr std::chrono::milliseconds kPatience{1000};

HANDLE handleOf(DWORD stream) {
    const HANDLE given = GetStdHandle(stream);
    if (given != nullptr && given != INVALID_HANDLE_VALUE) return given;
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0) return nullptr;
    const HANDLE console = GetStdHandle(stream);
    return console != INVALID_HANDLE_VALUE ? console : nullptr;
}

}  // namespace

bool writeTo(DWORD stream, const std::string& text) {
    const HANDLE to = handleOf(stream);
    if (to == nullptr) return false;
    DWORD mode = 0;
    DWORD written = 0;
    if (GetConsoleMode(to, &mode) != 0) {  // a console takes letters, whatever its code page
        const std::wstring wide = toWide(text);
        return WriteConsoleW(to, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr) != 0;
    }
    return WriteFile(to, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != 0;
}

void tellOnErrors(const std::string& text) {
    static bool taken = true;
    if (!taken) return;
    Worker writing;
    const auto write = [line = "corvane: " + printable(text) + "\r\n"](const Worker::GiveUp&) {
        writeTo(STD_ERROR_HANDLE, line);
    };
    taken = !writing.start(write) || writing.wait(kPatience);
}

}  // namespace corvane
