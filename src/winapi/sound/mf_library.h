// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

#include "winapi/api.h"
// After windows.h:
#include <mfapi.h>
#include <mfidl.h>
#include <mfreadwrite.h>

namespace corvane {

/// What is used of Media Foundation, found when it is first needed: editions of Windows without it are started all the
/// same.
struct MfLibrary {
    /// A library of the system by its name; null: there is none.
    using Loader = std::function<HMODULE(const wchar_t* name)>;

    /// The system's own; loaded once for the process. Any thread.
    static const MfLibrary& installed();
    static MfLibrary loadedBy(const Loader& loader);

    bool isThere() const { return missing.empty(); }

    std::string missing;  ///< why nothing of it can be used; "": it can
    decltype(&MFStartup) startup = nullptr;
    decltype(&MFShutdown) shutdown = nullptr;
    decltype(&MFCreateFile) createFile = nullptr;
    decltype(&MFCreateMediaType) createMediaType = nullptr;
    decltype(&MFTEnumEx) enumerate = nullptr;
    decltype(&MFCreateSourceReaderFromByteStream) createReader = nullptr;
};

/// Media Foundation begun for as long as it lives, without its network.
class MfUse {
public:
    explicit MfUse(const MfLibrary& library);
    MfUse(const MfUse&) = delete;
    MfUse& operator=(const MfUse&) = delete;
    ~MfUse();
    explicit operator bool() const { return begun_; }

private:
    const MfLibrary& library_;
    bool begun_;
};

}  // namespace corvane
