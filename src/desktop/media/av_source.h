// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "desktop/drive_file.h"
#include "desktop/media/av_library.h"

namespace corvane {

/// A local file as the decoding libraries read it: through DriveFile, so that none of their calls hangs with a drive.
/// Used from one thread at a time, after loadAv() succeeded.
class AvSource {
public:
    /// Null when the file cannot be read in time; `reason` says why, in words.
    static std::unique_ptr<AvSource> open(const std::string& path, const std::atomic<bool>* giveUp,
                                          std::string& reason);
    AvSource(const AvSource&) = delete;
    AvSource& operator=(const AvSource&) = delete;
    ~AvSource();

    /// Gives it to a demuxer, which must be closed before it goes.
    void feed(AVFormatContext& input);
    const DriveFile& file() const { return *file_; }

private:
    explicit AvSource(std::unique_ptr<DriveFile> file) : file_(std::move(file)) {}
    static int read(void* self, std::uint8_t* to, int count);
    static std::int64_t seek(void* self, std::int64_t offset, int whence);

    std::unique_ptr<DriveFile> file_;
    std::int64_t at_ = 0;
    AVIOContext* context_ = nullptr;
};

}  // namespace corvane
