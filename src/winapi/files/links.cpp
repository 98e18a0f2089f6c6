// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/files/links.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

#include "winapi/files/far_drives.h"
#include "winapi/files/plain_file.h"
#include "winapi/handle.h"
// After windows.h:
#include <winioctl.h>

namespace corvane {

namespace {

constexpr int kMostLinks = 32;  ///< in one path; the system itself follows 63
constexpr std::wstring_view kLongForm = L"\\\\?\\";
constexpr std::wstring_view kSystemForm = L"\\??\\";
constexpr std::wstring_view kVolume = L"\\\\?\\Volume{";

// --- Reading a link ------------------------------------------------------------------------------------------------

constexpr std::uint32_t kMountPoint = 0xA0000003;
constexpr std::uint32_t kSymbolicLink = 0xA000000C;
constexpr std::uint32_t kNameSurrogate = 0x20000000;  ///< such a tag stands for another name
constexpr std::size_t kHeader = 8;                    ///< tag, length, reserved
constexpr std::size_t kPlaces = 8;                    ///< of both names: where they begin, how long they are
constexpr std::size_t kFlags = 4;                     ///< of a symbolic link
constexpr std::uint32_t kRelative = 1;

template <class Number>
std::optional<Number> numberAt(std::string_view bytes, std::size_t at) {
    if (bytes.size() < sizeof(Number) || at > bytes.size() - sizeof(Number)) return std::nullopt;
    Number number{};
    std::memcpy(&number, bytes.data() + at, sizeof number);
    return number;
}

/// The name that the system goes on with.
std::optional<std::wstring> nameIn(std::string_view bytes, std::size_t names) {
    const auto from = numberAt<std::uint16_t>(bytes, kHeader);
    const auto length = numberAt<std::uint16_t>(bytes, kHeader + sizeof(std::uint16_t));
    if (!from || !length || *length % sizeof(wchar_t) != 0 || names + *from + *length > bytes.size()) {
        return std::nullopt;
    }
    std::wstring name(*length / sizeof(wchar_t), L'\0');
    std::memcpy(name.data(), bytes.data() + names + *from, *length);
    return name;
}

// --- Paths ---------------------------------------------------------------------------------------------------------

/// By the drive's root. Empty: the system makes nothing of it.
std::wstring fullName(const std::wstring& path) {
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    std::replace(full.begin(), full.end(), L'/', L'\\');
    return full;
}

bool isVolume(const std::wstring& path) {
    return path.starts_with(kVolume) && path.find(L'\\', kVolume.size()) != path.npos;
}

/// Where the folders of a full path begin, behind the \ of its root.
std::size_t rootEnd(const std::wstring& path) {
    std::size_t names = 1;  // of the root
    std::size_t at = 0;
    if (!shareOf(path).empty()) {
        at = path.starts_with(kLongForm) ? kLongForm.size() : 2;
        names = path.starts_with(kLongForm) ? 3 : 2;
    } else if (path.starts_with(kLongForm)) {
        at = kLongForm.size();
    }
    for (; names > 0; --names) {
        at = path.find(L'\\', at);
        if (at == std::wstring::npos) return path.size();
        ++at;
    }
    return at;
}

/// A folder's path and a name from there, without its dots: as the system goes on from a link, without asking about ..
std::wstring joined(const std::wstring& folder, std::wstring_view rest) {
    const std::size_t root = rootEnd(folder);
    std::wstring path = folder;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(L'\\'), rest.size());
        const std::wstring_view name = rest.substr(0, end);
        if (name == L"..") {
            path.resize(std::max(root, std::min(path.rfind(L'\\'), path.size())));
        } else if (!name.empty() && name != L".") {
            if (path.back() != L'\\') path += L'\\';
            path += name;
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return path;
}

/// The path that a link at path[0, end) makes of it; empty: it leads to no drive.
std::wstring behind(const Link& link, const std::wstring& path, std::size_t end) {
    const std::wstring_view rest = std::wstring_view(path).substr(end);
    std::wstring target = link.target;
    std::replace(target.begin(), target.end(), L'/', L'\\');
    if (link.kind == Link::Kind::Relative) {
        const std::size_t root = rootEnd(path);
        const std::size_t folder = target.starts_with(L'\\') ? root : std::max(root, path.rfind(L'\\', end - 1));
        return joined(joined(path.substr(0, folder), target), rest);
    }
    if (!target.starts_with(kSystemForm)) return {};
    return joined(std::wstring(kLongForm) + target.substr(kSystemForm.size()), rest);
}

/// The path behind the first link in it; empty: there is none. out: it leads out.
std::optional<std::wstring> behindFirstLink(const std::wstring& path,
                                            const std::function<Link(const std::wstring&)>& look, bool& out) {
    for (std::size_t at = rootEnd(path); at < path.size();) {
        const std::size_t end = std::min(path.find(L'\\', at), path.size());
        const Link link = end > at ? look(path.substr(0, end)) : Link();
        if (link.kind != Link::Kind::None) {
            std::wstring next = link.kind == Link::Kind::Unknown ? std::wstring() : behind(link, path, end);
            out = next.empty();
            return next;
        }
        at = end + 1;
    }
    return std::nullopt;
}

}  // namespace

Link linkIn(std::string_view bytes) {
    const auto tag = numberAt<std::uint32_t>(bytes, 0);
    if (!tag) return {Link::Kind::Unknown, {}};
    if ((*tag & kNameSurrogate) == 0) return {};
    const bool symbolic = *tag == kSymbolicLink;
    const auto flags = numberAt<std::uint32_t>(bytes, kHeader + kPlaces);
    if ((!symbolic && *tag != kMountPoint) || (symbolic && !flags)) return {Link::Kind::Unknown, {}};
    auto name = nameIn(bytes, kHeader + kPlaces + (symbolic ? kFlags : 0));
    if (!name) return {Link::Kind::Unknown, {}};
    const bool relative = symbolic && (*flags & kRelative) != 0;
    return {relative ? Link::Kind::Relative : Link::Kind::Absolute, std::move(*name)};
}

Link lookAtLink(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD error = GetLastError();
        const bool isGone = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
        return {isGone ? Link::Kind::None : Link::Kind::Unknown, {}};
    }
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return {};
    const Handle point(CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                   OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    constexpr std::size_t kLargest = 16 * 1024;  // the system's own bound
    std::vector<char> bytes(kLargest);
    DWORD length = 0;
    if (point && DeviceIoControl(point.get(), FSCTL_GET_REPARSE_POINT, nullptr, 0, bytes.data(),
                                 static_cast<DWORD>(bytes.size()), &length, nullptr) != 0) {
        return linkIn({bytes.data(), length});
    }
    // Wine shows a folder's link of the system below as a reparse point and has already followed it.
    return {point && GetLastError() == ERROR_NOT_A_REPARSE_POINT ? Link::Kind::None : Link::Kind::Unknown, {}};
}

Lead leadOf(const std::wstring& path, FarAway away, const std::function<Link(const std::wstring&)>& look) {
    if (!isPlainName(path)) return {true, {}};
    std::wstring full = fullName(path);
    for (int links = 0; links <= kMostLinks; ++links) {
        if (!isPlainName(full) && !isVolume(full)) break;
        if (away == FarAway::NotEntered) {
            if (std::wstring drive = FarDrives::driveOf(full); !drive.empty()) return {false, std::move(drive)};
        }
        bool out = false;
        auto next = behindFirstLink(full, look, out);
        if (!next) return {};
        if (out) break;
        full = std::move(*next);
    }
    return {true, {}};
}

}  // namespace corvane
