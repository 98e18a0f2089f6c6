// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <string>

namespace corvane {

struct FrameFile {
    std::string path;    ///< "" when it was not written
    std::string reason;  ///< why it was not, in words
};

/// Writes a picture into the folder as `name`.png, or `name (2).png` and so on: no file that is there is touched. Waits
/// for the drive as long as a save may: call it in a worker.
FrameFile writeFrame(const QImage& picture, const std::string& folder, const std::string& name);

/// The same where the user keeps pictures; where that cannot be, in the program's own folder. `own`: "" none.
FrameFile saveFrame(const QImage& picture, const std::string& own, const std::string& name);

}  // namespace corvane
