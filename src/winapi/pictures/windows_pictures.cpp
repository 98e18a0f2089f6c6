// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/pictures/windows_pictures.h"

#include <utility>

#include "winapi/files/plain_file.h"
#include "winapi/pictures/picture_decoder.h"
#include "winapi/text.h"

namespace corvane {

namespace {

PictureQueue::Stamp stampOf(const std::string& path, const PictureWorker::GiveUp& /*givenUp*/) {
    WIN32_FILE_ATTRIBUTE_DATA file{};
    if (!isPlainPath(toWide(path))) return {};
    if (GetFileAttributesExW(toWide(path).c_str(), GetFileExInfoStandard, &file) == 0) return {};
    const auto joined = [](DWORD high, DWORD low) {
        return static_cast<std::int64_t>(std::uint64_t{high} << 32U | low);
    };
    return {joined(file.nFileSizeHigh, file.nFileSizeLow),
            joined(file.ftLastWriteTime.dwHighDateTime, file.ftLastWriteTime.dwLowDateTime), 0};
}

/// Nothing waits for a drive here but the worker.
Pictures::Decoded load(const std::string& path, const std::atomic<bool>* /*flag*/,
                       const WorkerPictures::GivenUp& givenUp) {
    return decodePicture(path, givenUp);
}

}  // namespace

WindowsPictures::WindowsPictures(PictureWorker::Post post)
    : WorkerPictures({load, stampOf, openFrames, pictureOf}, std::move(post)) {}

std::int64_t WindowsPictures::heldPixels() { return heldPicturePixels(); }

}  // namespace corvane
