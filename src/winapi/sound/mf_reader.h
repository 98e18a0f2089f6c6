// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "winapi/movies/com_pointer.h"
#include "winapi/sound/mf_library.h"

namespace corvane {

/// A sound file as the system's decoders read it: samples of 16 bits, in order, from any frame on. For one thread.
class MfReader {
public:
    explicit MfReader(const MfLibrary& library = MfLibrary::installed());
    MfReader(const MfReader&) = delete;
    MfReader& operator=(const MfReader&) = delete;
    ~MfReader();

    /// "": it is open; else why not, in words.
    std::string open(const std::wstring& path);

    int channels() const { return channels_; }
    int rate() const { return rate_; }                    ///< frames a second
    std::uint32_t speakers() const { return speakers_; }  ///< a bit each; 0: the usual ones
    std::optional<std::int64_t> milliseconds() const;     ///< the stated length
    /// The next frames are those from there on. False: the file cannot be gone through so.
    bool seek(std::int64_t frame);
    /// Some of the next frames; none at the end. Empty optional: it cannot go on.
    std::optional<std::vector<std::int16_t>> read();

private:
    HRESULT wantPcm();
    bool learnFormat();
    std::vector<std::int16_t> taken(IMFSample& sample, std::int64_t frame);

    const MfLibrary& library_;
    ComThread com_;
    std::optional<MfUse> use_;
    ComPointer<IMFSourceReader> reader_;
    int channels_ = 0, rate_ = 0, bits_ = 0;
    std::uint32_t speakers_ = 0;
    std::int64_t next_ = 0;  ///< the frame that is wanted next
    bool sought_ = false;    ///< what comes begins somewhere before it
    bool ended_ = false;
};

}  // namespace corvane
