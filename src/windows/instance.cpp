// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/instance.h"

#include <cstdint>
#include <cstdio>

#include "windows/text.h"
#include "windows/windows_files.h"

namespace corvane {

namespace {

constexpr ULONG_PTR kFiles = 0x434F5246;        ///< tells our message from another program's
constexpr std::size_t kMaxMessage = 1U << 20U;  ///< bytes of all paths handed over
constexpr UINT kAnswerMs = 2000;

/// The folder's name on the disk: two ways of writing it are one folder.
std::wstring realFolder(const std::string& folder) {
    const Handle opened(CreateFileW(systemPath(folder).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    std::wstring path(32768, L'\0');
    const DWORD room = static_cast<DWORD>(path.size());
    const DWORD length = opened ? GetFinalPathNameByHandleW(opened.get(), path.data(), room, 0) : 0;
    if (length == 0 || length >= room) return toWide(folder);
    path.resize(length);
    return path;
}

std::vector<std::string> split(const std::string& message) {
    std::vector<std::string> files;
    std::size_t from = 0;
    for (std::size_t end = message.find('\0'); end != std::string::npos; end = message.find('\0', from)) {
        files.push_back(message.substr(from, end - from));
        from = end + 1;
    }
    return files;
}

}  // namespace

std::wstring Instance::name() const {
    std::wstring folder = realFolder(folder_);
    while (folder.size() > 1 && folder.back() == L'\\') folder.pop_back();
    CharUpperBuffW(folder.data(), static_cast<DWORD>(folder.size()));
    std::uint64_t hash = 0xCBF29CE484222325U;  // FNV-1a: names may not hold a path
    for (const wchar_t unit : folder) hash = (hash ^ static_cast<std::uint16_t>(unit)) * 0x100000001B3U;
    wchar_t digits[17] = {};
    swprintf(digits, 17, L"%016llx", static_cast<unsigned long long>(hash));
    return std::wstring(L"Corvane-") + digits;
}

bool Instance::acquire() {
    if (asked_) return only_;
    asked_ = true;
    const std::wstring named = name();
    mutex_ = Handle(CreateMutexW(nullptr, TRUE, (L"Local\\" + named).c_str()));
    only_ = GetLastError() != ERROR_ALREADY_EXISTS && GetLastError() != ERROR_ACCESS_DENIED;
    if (!only_) {
        mutex_.reset();
        return false;
    }
    listener_ = std::make_unique<MessageWindow>(
        [this](UINT message, WPARAM, LPARAM data) { return received(message, data); }, named);
    // A player that was started as administrator still takes files from one that was not.
    ChangeWindowMessageFilterEx(listener_->handle(), WM_COPYDATA, MSGFLT_ALLOW, nullptr);
    return true;
}

std::optional<LRESULT> Instance::received(UINT message, LPARAM data) {
    if (message != WM_COPYDATA) return std::nullopt;
    const auto& copied = *reinterpret_cast<const COPYDATASTRUCT*>(data);
    if (copied.dwData != kFiles || copied.cbData > kMaxMessage || copied.lpData == nullptr) return FALSE;
    const std::string bytes(static_cast<const char*>(copied.lpData), copied.cbData);
    if (handler_ && !bytes.empty()) handler_(split(bytes));
    return TRUE;
}

bool Instance::handOver(const std::vector<std::string>& files) const {
    std::string message;
    for (const std::string& file : files) message += file + '\0';
    const HWND listener = FindWindowExW(HWND_MESSAGE, nullptr, kMessageClass, name().c_str());
    if (listener == nullptr || message.size() > kMaxMessage) return false;
    DWORD process = 0;
    GetWindowThreadProcessId(listener, &process);
    AllowSetForegroundWindow(process);  // it comes to the front; this start has the right to, and gives it on
    COPYDATASTRUCT copied{kFiles, static_cast<DWORD>(message.size()), message.data()};
    DWORD_PTR answer = FALSE;
    return SendMessageTimeoutW(listener, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&copied), SMTO_ABORTIFHUNG, kAnswerMs,
                               &answer) != 0 &&
           answer == TRUE;
}

}  // namespace corvane
