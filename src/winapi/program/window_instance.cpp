// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/program/window_instance.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <utility>

#include "program/instance_call.h"
#include "winapi/files/plain_file.h"
#include "winapi/files/windows_files.h"
#include "winapi/text.h"

namespace corvane {

namespace {

constexpr ULONG_PTR kFiles = 0x434F5246;  ///< tells our message from another program's
constexpr UINT kAnswerMs = 2000;
constexpr ULONGLONG kFindMs = 1000;  ///< a first start holds its mutex a moment before it listens
constexpr DWORD kFindPauseMs = 10;

/// Two ways of writing a folder are one folder.
std::wstring realFolder(const std::string& folder) {
    std::wstring path = nameOnDisk(systemPath(folder));
    return path.empty() ? toWide(folder) : path;
}

/// How far the system trusts a process; empty: it does not tell us, which it does of those that it trusts less.
std::optional<DWORD> integrityOf(HANDLE process) {
    HANDLE opened = nullptr;
    if (OpenProcessToken(process, TOKEN_QUERY, &opened) == 0) return std::nullopt;
    const Handle token(opened);
    alignas(TOKEN_MANDATORY_LABEL) std::array<std::byte, 256> bytes{};
    DWORD size = 0;
    if (GetTokenInformation(opened, TokenIntegrityLevel, bytes.data(), static_cast<DWORD>(bytes.size()), &size) == 0) {
        return std::nullopt;
    }
    const PSID level = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(bytes.data())->Label.Sid;
    return *GetSidSubAuthority(level, *GetSidSubAuthorityCount(level) - 1U);
}

/// A program in a sandbox could have made a window of our name, to be told what is played.
bool isTrusted(DWORD number) {
    const Handle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, number));
    const auto its = process ? integrityOf(process.get()) : std::nullopt;
    const auto own = integrityOf(GetCurrentProcess());
    return !its || !own || *its >= *own;
}

}  // namespace

WindowInstance::WindowInstance(std::string folder) : Instance(kMostInCall), folder_(std::move(folder)) {}

std::wstring WindowInstance::name() const {
    std::wstring folder = realFolder(folder_);
    while (folder.size() > 1 && folder.back() == L'\\') folder.pop_back();
    CharUpperBuffW(folder.data(), static_cast<DWORD>(folder.size()));
    std::uint64_t hash = 0xCBF29CE484222325U;  // FNV-1a: names may not hold a path
    for (const wchar_t unit : folder) hash = (hash ^ static_cast<std::uint16_t>(unit)) * 0x100000001B3U;
    wchar_t digits[17] = {};
    swprintf(digits, 17, L"%016llx", static_cast<unsigned long long>(hash));
    return std::wstring(L"Corvane-") + digits;
}

bool WindowInstance::takePlace() {
    const std::wstring named = name();
    mutex_ = Handle(CreateMutexW(nullptr, TRUE, (L"Local\\" + named).c_str()));
    const bool only = GetLastError() != ERROR_ALREADY_EXISTS && GetLastError() != ERROR_ACCESS_DENIED;
    if (!only) {
        mutex_.reset();
        return false;
    }
    listener_ = std::make_unique<MessageWindow>(
        [this](UINT message, WPARAM, LPARAM data) { return received(message, data); }, named);
    // The system itself keeps away what comes from a process that it trusts less than this one: a player that was
    // started as administrator takes no files from one that was not.
    return true;
}

std::optional<LRESULT> WindowInstance::received(UINT message, LPARAM data) {
    if (message != WM_COPYDATA) return std::nullopt;
    const auto& copied = *reinterpret_cast<const COPYDATASTRUCT*>(data);
    if (copied.dwData != kFiles || copied.cbData > kMostInCall) return FALSE;
    if (copied.lpData == nullptr && copied.cbData != 0) return FALSE;
    CallReader call(kMostInCall);
    call.take({static_cast<const char*>(copied.lpData), copied.lpData != nullptr ? copied.cbData : 0});
    called(call.files());
    return TRUE;
}

/// The window of the player that runs, or of one that is about to listen; null: there is none in time.
HWND WindowInstance::findListener() const {
    const std::wstring named = name();
    const ULONGLONG end = GetTickCount64() + kFindMs;
    while (true) {
        HWND found = nullptr;
        while ((found = FindWindowExW(HWND_MESSAGE, found, kMessageClass, named.c_str())) != nullptr) {
            DWORD process = 0;
            GetWindowThreadProcessId(found, &process);
            if (isTrusted(process)) return found;
        }
        if (GetTickCount64() >= end) return nullptr;
        Sleep(kFindPauseMs);
    }
}

bool WindowInstance::deliver(const std::string& message) const {
    const HWND listener = findListener();
    if (listener == nullptr) return false;
    DWORD process = 0;
    GetWindowThreadProcessId(listener, &process);
    AllowSetForegroundWindow(process);  // it comes to the front; this start has the right to, and gives it on
    COPYDATASTRUCT copied{kFiles, static_cast<DWORD>(message.size()), const_cast<char*>(message.data())};
    DWORD_PTR answer = FALSE;
    return SendMessageTimeoutW(listener, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&copied), SMTO_ABORTIFHUNG, kAnswerMs,
                               &answer) != 0 &&
           answer == TRUE;
}

}  // namespace corvane
