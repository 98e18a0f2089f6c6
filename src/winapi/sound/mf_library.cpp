// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/sound/mf_library.h"

#include "winapi/text.h"

namespace corvane {

namespace {

/// One function of a library; false: it has none of that name.
template <class Function>
bool find(HMODULE library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    return function != nullptr;
}

}  // namespace

MfLibrary MfLibrary::loadedBy(const Loader& loader) {
    MfLibrary found;
    const auto load = [&](const wchar_t* name) {
        const HMODULE library = found.isThere() ? loader(name) : nullptr;
        if (library == nullptr && found.isThere()) {
            found.missing = "This Windows has no Media Foundation (" + fromWide(name) + " is missing).";
        }
        return library;
    };
    const HMODULE platform = load(L"mfplat.dll");
    const HMODULE reading = load(L"mfreadwrite.dll");
    if (!found.isThere()) return found;
    const bool whole = find(platform, "MFStartup", found.startup) && find(platform, "MFShutdown", found.shutdown) &&
                       find(platform, "MFCreateFile", found.createFile) &&
                       find(platform, "MFCreateMediaType", found.createMediaType) &&
                       find(platform, "MFTEnumEx", found.enumerate) &&
                       find(reading, "MFCreateSourceReaderFromByteStream", found.createReader);
    if (!whole) found.missing = "This Windows has no whole Media Foundation.";
    return found;
}

const MfLibrary& MfLibrary::installed() {
    static const MfLibrary library =
        loadedBy([](const wchar_t* name) { return LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32); });
    return library;
}

MfUse::MfUse(const MfLibrary& library)
    : library_(library), begun_(library.isThere() && SUCCEEDED(library.startup(MF_VERSION, MFSTARTUP_NOSOCKET))) {}

MfUse::~MfUse() {
    if (begun_) library_.shutdown();
}

}  // namespace corvane
