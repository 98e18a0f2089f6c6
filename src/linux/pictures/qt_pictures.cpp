// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/pictures/qt_pictures.h"

#include <sys/stat.h>

#include <atomic>
#include <chrono>
#include <utility>
#include <vector>

#include "drives/drive_file.h"
#include "linux/pictures/system_frames.h"
#include "linux/pictures/system_picture.h"
#include "linux/pictures/thumbnails.h"
#include "media/pictures/drive_bytes.h"
#include "media/pictures/jpeg_reader.h"
#include "media/pictures/png_reader.h"
#include "pictures/gif_frames.h"
#include "types/text.h"

namespace corvane {

namespace {

constexpr int kBytesOfPixel = 4;

std::int64_t pixelsOf(QSize size) { return static_cast<std::int64_t>(size.width()) * size.height(); }

/// Held by all pictures that live; a picture can be made by the worker.
std::atomic<std::int64_t> held{0};

Picture pictureOf(PicturePixels decoded) {
    auto* const pixels = new std::vector<std::uint32_t>(std::move(decoded.pixels));
    const auto [width, height] = decoded.held;
    QImage image(
        reinterpret_cast<uchar*>(pixels->data()), width, height, qsizetype{width} * kBytesOfPixel,
        decoded.seeThrough ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32,
        [](void* kept) { delete static_cast<std::vector<std::uint32_t>*>(kept); }, pixels);
    return Picture(std::make_shared<QtPicture>(std::move(image), QSize(decoded.full.width, decoded.full.height)));
}

PictureQueue::Stamp stampOf(const std::string& path, const PictureWorker::GiveUp& givenUp) {
    using Stamp = PictureQueue::Stamp;
    return DriveCalls::all()
        .ask<Stamp>(path, {DriveCalls::kPatience, &givenUp},
                    [path] {
                        struct stat status {};
                        if (stat(path.c_str(), &status) != 0) return Stamp{};
                        return Stamp{status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
                    })
        .value_or(Stamp{});
}

/// Of a file that is named for a decoder of the system; none for any other.
PictureReader systemReaderFor(const std::string& path) {
    const std::size_t dot = path.rfind('.');
    if (dot == std::string::npos) return {};
    const std::string decoder = systemDecoderOf(text::capitals(path.substr(dot + 1)));
    if (decoder.empty()) return {};
    return [decoder](PictureBytes& file, const DecodingBounds& bounds) { return readBySystem(file, bounds, decoder); };
}

/// flag: what ends a wait for the drive at once; may be null.
Pictures::Decoded load(const std::string& path, const std::atomic<bool>* flag, const std::function<bool()>& givenUp) {
    std::string reason;
    const auto opened = DriveFile::open(path, {DriveCalls::kPatience, flag}, reason);
    if (!opened) return {{}, reason};
    DriveBytes file(*opened, givenUp);
    Pictures::Decoded decoded = QtPictures::decodeFrom(file, givenUp, systemReaderFor(path));
    if (opened->failure().empty()) return decoded;
    return {{}, opened->failure()};  // no decoder can know why it got no more
}

/// What moves in a file; null: nothing.
std::unique_ptr<FrameReader> openFrames(const std::string& path, const std::function<bool()>& givenUp) {
    std::string reason;
    const auto opened = DriveFile::open(path, {DriveCalls::kPatience, nullptr}, reason);
    if (!opened || opened->size() > kMostMovingBytes) return nullptr;
    DriveBytes file(*opened, givenUp);
    std::string bytes = file.part(0, opened->size());
    if (static_cast<std::int64_t>(bytes.size()) < opened->size()) return nullptr;
    if (bytes.starts_with("GIF8")) return gifFrames(std::move(bytes));
    return systemDecoderOf("WEBP").empty() ? nullptr : systemFrames(bytes);
}

}  // namespace

Pictures::Decoded decodeThumbnail(const std::string& path, const PictureWorker::GiveUp& givenUp) {
    constexpr std::int64_t kMostThumbnailBytes = std::int64_t{64} << 20;
    constexpr std::chrono::seconds kLongestThumbnail{4};
    std::string reason;
    const auto opened = DriveFile::open(path, {DriveCalls::kPatience, &givenUp}, reason);
    if (!opened || opened->size() > kMostThumbnailBytes) return {{}, reason};
    const auto until = std::chrono::steady_clock::now() + kLongestThumbnail;
    const std::function<bool()> isOver = [&givenUp, until] {
        return givenUp || std::chrono::steady_clock::now() > until;
    };
    DriveBytes file(*opened, isOver);
    PicturePixels decoded = readPicture(file, {kMaxHeldTogether, isOver}, readJpeg, readPng);
    if (!decoded.reason.empty() || !opened->failure().empty() || isOver()) return {{}, decoded.reason};
    const QImage whole = imageOf(pictureOf(std::move(decoded)));
    if (whole.width() <= kThumbnailSide && whole.height() <= kThumbnailSide) {
        return {Picture(std::make_shared<QtPicture>(whole.copy())), ""};
    }
    const QSize side(kThumbnailSide, kThumbnailSide);
    const QSize size = whole.size().scaled(side, Qt::KeepAspectRatio).expandedTo({1, 1});
    return {Picture(std::make_shared<QtPicture>(whole.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation))),
            ""};
}

const QImage& DenseSource::image() {
    if (const auto ask = std::exchange(ask_, {})) {
        picture_ = ask();
        image_ = imageOf(picture_);
    }
    return image_;
}

QtPicture::QtPicture(QImage image, QSize fullSize, std::shared_ptr<DenseSource> dense, QPoint denseCorner)
    : image_(std::move(image)),
      dense_(std::move(dense)),
      denseCorner_(denseCorner),
      size_(fullSize.isValid() ? fullSize : image_.size()) {
    held += pixelsOf(image_.size());
}

QtPicture::~QtPicture() { held -= pixelsOf(image_.size()); }

QImage QtPicture::dense() const {
    QImage whole = dense_ ? dense_->image() : QImage();
    const QSize size = image_.size() * kDenseFactor;
    if (whole.isNull() || whole.size() == size) return whole;
    // A view of the part: a copy of each would hold the whole a second time.
    const uchar* const corner = whole.constScanLine(denseCorner_.y()) + denseCorner_.x() * whole.depth() / 8;
    return {corner,           size.width(),
            size.height(),    whole.bytesPerLine(),
            whole.format(),   [](void* kept) { delete static_cast<QImage*>(kept); },
            new QImage(whole)};
}

std::int64_t QtPicture::heldPixels() { return held; }

std::uint32_t QtPicture::pixel(int x, int y) const {
    const auto part = [](int place, int ofImage, int ofPicture) {
        return static_cast<int>(static_cast<std::int64_t>(place) * ofImage / ofPicture);
    };
    return image_.pixel(part(x, image_.width(), width()), part(y, image_.height(), height())) & 0xFFFFFFU;
}

QImage imageOf(const Picture& picture) {
    if (picture.empty()) return {};
    if (const auto* own = dynamic_cast<const QtPicture*>(picture.data().get())) return own->image();
    QImage copy(picture.width(), picture.height(), QImage::Format_RGB32);
    for (int y = 0; y < copy.height(); ++y) {
        for (int x = 0; x < copy.width(); ++x) copy.setPixel(x, y, 0xFF000000U | picture.data()->pixel(x, y));
    }
    return copy;
}

QImage denseImageOf(const Picture& picture) {
    const auto* const own = dynamic_cast<const QtPicture*>(picture.data().get());
    return own != nullptr ? own->dense() : QImage();
}

QtPictures::QtPictures(PictureWorker::Post post)
    : WorkerPictures({load, stampOf, openFrames, pictureOf}, std::move(post)) {}

bool QtPictures::shows(const std::string& extension) {
    return extension == "PNG" || !systemDecoderOf(extension).empty();
}

Pictures::Decoded QtPictures::decodeFrom(PictureBytes& file, const std::function<bool()>& givenUp,
                                         const PictureReader& other) {
    PicturePixels decoded = readPicture(file, {held, givenUp}, readJpeg, readPng, other);
    if (!decoded.reason.empty()) return {{}, decoded.reason, decoded.lacksRoom};
    return {pictureOf(std::move(decoded)), ""};
}

Picture QtPictures::cutInside(const Picture& whole, const Cell& cell) {
    const QRect part(cell.x, cell.y, cell.width, cell.height);
    const auto* const own = dynamic_cast<const QtPicture*>(whole.data().get());
    if (own == nullptr) return Picture(std::make_shared<QtPicture>(imageOf(whole).copy(part)));
    const QPoint corner = own->denseCorner() + part.topLeft() * kDenseFactor;
    return Picture(std::make_shared<QtPicture>(own->image().copy(part), QSize(), own->denseSource(), corner));
}

Picture QtPictures::paired(const Picture& plain, std::function<Picture()> dense) {
    return Picture(std::make_shared<QtPicture>(imageOf(plain), QSize(plain.width(), plain.height()),
                                               std::make_shared<DenseSource>(std::move(dense))));
}

}  // namespace corvane
