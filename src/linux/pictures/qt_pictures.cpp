// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/pictures/qt_pictures.h"

#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "drives/drive_file.h"
#include "media/pictures/jpeg_reader.h"
#include "media/pictures/png_reader.h"
#include "pictures/picture_file.h"

namespace corvane {

namespace {

constexpr int kBytesOfPixel = 4;
constexpr std::chrono::seconds kLongestWait{5};  ///< for a picture that somebody stands and waits for

std::int64_t pixelsOf(QSize size) { return static_cast<std::int64_t>(size.width()) * size.height(); }

/// Held by all pictures that live; a picture can be made by the worker.
std::atomic<std::int64_t> held{0};

/// A file on a drive that may stop answering.
class DriveBytes : public PictureBytes {
public:
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

/// flag: what ends a wait for the drive at once; may be null.
Pictures::Decoded load(const std::string& path, const std::atomic<bool>* flag, const std::function<bool()>& givenUp) {
    std::string reason;
    const auto opened = DriveFile::open(path, {DriveCalls::kPatience, flag}, reason);
    if (!opened) return {{}, reason};
    DriveBytes file(*opened, givenUp);
    Pictures::Decoded decoded = QtPictures::decodeFrom(file, givenUp);
    if (opened->failure().empty()) return decoded;
    return {{}, opened->failure()};  // no decoder can know why it got no more
}

Pictures::Decoded loadAwaited(const std::string& path, const PictureWorker::GiveUp& givenUp) {
    return load(path, &givenUp, [&givenUp] { return givenUp.load(); });
}

}  // namespace

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

QtPictures::QtPictures(PictureWorker::Post post) {
    if (post) worker_.emplace(std::move(post), &loadAwaited, &stampOf);
}

Pictures::Decoded QtPictures::decodeFrom(PictureBytes& file, const std::function<bool()>& givenUp) {
    PicturePixels decoded = readPicture(file, {held, givenUp}, readJpeg, readPng);
    if (!decoded.reason.empty()) return {{}, decoded.reason, decoded.lacksRoom};
    return {pictureOf(std::move(decoded)), ""};
}

Pictures::Decoded QtPictures::decode(const std::string& path) {
    const auto until = std::chrono::steady_clock::now() + kLongestWait;
    const auto isLate = [until] { return std::chrono::steady_clock::now() > until; };
    Decoded decoded = load(path, nullptr, isLate);
    if (decoded.picture.empty() && isLate()) return {{}, "The picture takes too long to be read."};
    return decoded;
}

std::optional<Pictures::Decoded> QtPictures::begin(const std::string& path, std::function<void(Decoded)> done) {
    if (!worker_) return decode(path);
    return worker_->begin(path, std::move(done));
}

void QtPictures::giveUp() {
    if (worker_) worker_->giveUp();
}

void QtPictures::decodeAhead(const std::string& path) {
    if (worker_) worker_->decodeAhead(path);
}

bool QtPictures::isIdle() const { return !worker_ || worker_->isIdle(); }

Picture QtPictures::cut(const Picture& whole, const Cell& cell) {
    if (whole.empty() || cell.x < 0 || cell.y < 0 || cell.width <= 0 || cell.height <= 0) return {};
    if (cell.width > whole.width() || cell.x > whole.width() - cell.width) return {};
    if (cell.height > whole.height() || cell.y > whole.height() - cell.height) return {};
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

int QtPictures::paintStretched(PictureBox& box, float width, float height) {
    if (box.Picture.get().empty()) return kInvalidPicture;
    if (!std::isfinite(width) || !std::isfinite(height) || width > kMaxPaintedSide || height > kMaxPaintedSide) {
        return kOutOfMemoryForPicture;
    }
    box.setPainted(std::max(width, 1.0F), std::max(height, 1.0F));
    return 0;
}

}  // namespace corvane
