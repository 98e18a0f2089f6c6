// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/movies/frame_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <QBuffer>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "drives/descriptor.h"
#include "drives/drive_calls.h"
#include "drives/pictures_folder.h"

namespace corvane {

namespace {

constexpr int kMostOfOneName = 99;
constexpr mode_t kMode = 0666;

std::string pathOf(const std::string& folder, const std::string& name, int number) {
    return folder + "/" + name + (number > 1 ? " (" + std::to_string(number) + ")" : "") + ".png";
}

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

FrameFile writeNew(const std::string& folder, const std::string& name, std::string_view bytes) {
    for (int number = 1; number <= kMostOfOneName; ++number) {
        const std::string path = pathOf(folder, name, number);
        const Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kMode));
        if (!file && errno == EEXIST) continue;
        if (!file) return {"", std::strerror(errno)};
        // Room for all of it first: what cannot be written whole is hardly begun, and may not be removed.
        const int full = ::posix_fallocate(file.get(), 0, static_cast<off_t>(bytes.size()));
        if (full == ENOSPC || full == EDQUOT || full == EFBIG) return {"", std::strerror(full)};
        if (!writeAll(file.get(), bytes)) return {"", std::strerror(errno)};
        return {path, ""};
    }
    return {"", "There are too many of that name"};
}

}  // namespace

FrameFile writeFrame(const QImage& picture, const std::string& folder, const std::string& name) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (picture.isNull() || !buffer.open(QIODevice::WriteOnly) || !picture.save(&buffer, "PNG"))
        return {"", "There is not enough memory"};
    const auto written = DriveCalls::all().ask<FrameFile>(folder, DriveCalls::kLongPatience, [folder, name, bytes] {
        return writeNew(folder, name, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
    });
    return written.value_or(FrameFile{"", DriveCalls::kNoAnswer});
}

FrameFile saveFrame(const QImage& picture, const std::string& own, const std::string& name) {
    const std::string pictures = picturesFolder([](const char* variable) {
        const char* const value = std::getenv(variable);
        return std::string(value != nullptr ? value : "");
    });
    FrameFile file{"", "There is no folder for pictures"};
    if (!pictures.empty()) file = writeFrame(picture, pictures, name);
    if (file.path.empty() && !own.empty()) {
        const FrameFile kept = writeFrame(picture, own, name);
        if (!kept.path.empty()) return kept;
    }
    return file;
}

}  // namespace corvane
