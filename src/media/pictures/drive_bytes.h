// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <functional>
#include <string>

#include "drives/drive_file.h"
#include "pictures/picture_check.h"

namespace corvane {

/// A file on a drive as the check of pictures and their decoders read it.
class DriveBytes : public PictureBytes {
public:
    /// Both outlive it.
    DriveBytes(DriveFile& file, const std::function<bool()>& givenUp) : file_(file), givenUp_(givenUp) {}
    std::int64_t size() override { return file_.size(); }
    std::string part(std::int64_t from, std::int64_t count) override {
        std::string bytes(static_cast<std::size_t>(std::clamp<std::int64_t>(size() - from, 0, count)), '\0');
        std::size_t had = 0;
        while (had < bytes.size() && !givenUp_()) {
            const std::int64_t got =
                file_.read(from + static_cast<std::int64_t>(had), bytes.data() + had, bytes.size() - had);
            if (got <= 0) break;
            had += static_cast<std::size_t>(got);
        }
        bytes.resize(had);
        return bytes;
    }

private:
    DriveFile& file_;
    const std::function<bool()>& givenUp_;
};

}  // namespace corvane
