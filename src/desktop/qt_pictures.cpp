// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/qt_pictures.h"

#include <sys/stat.h>

#include <QBuffer>
#include <QImageReader>
#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <chrono>
#include <cmath>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "desktop/drive_file.h"
#include "desktop/jpeg_memory.h"
#include "toolkit/picture_check.h"

namespace corvane {

namespace {

constexpr int kAllocationMegabytes = 256;
constexpr int kWorkerIdleMs = 2000;
constexpr int kGifHeaderBytes = 10;
constexpr int kBmpHeaderBytes = 66;  ///< with the masks
constexpr std::uint32_t kBmpMasks = 3;
constexpr std::chrono::milliseconds kAfterPainting{30};
constexpr int kBytesOfPixel = 4;
/// From so many pixels on the system takes milliseconds to take back the memory, which the next picture must not wait
/// for.
constexpr std::int64_t kSlowToFree = 1'000'000;

std::int64_t pixelsOf(QSize size) { return static_cast<std::int64_t>(size.width()) * size.height(); }

/// Held by all pictures that live; a picture can be made by the worker.
std::atomic<std::int64_t> held{0};

/// Lets the decoder reduce a JPEG to what there is room for beside what other pictures hold. `work` is what it needs
/// beside the picture, in pixels' worth. False: there is room for no useful picture.
bool reduceToFit(QImageReader& reader, QSize size, std::int64_t work, std::int64_t others) {
    const bool turns = reader.transformation() != QImageIOHandler::TransformationNone;
    const std::int64_t most = roomForPixels(others, turns, work);
    if (pixelsOf(size) <= most) return true;
    // Only by eighths does the decoder reduce by itself; any other size would take a second, larger picture.
    for (int eighths = 7; eighths > 0; --eighths) {
        const QSize reduced((size.width() * eighths + 7) / 8, (size.height() * eighths + 7) / 8);
        if (pixelsOf(reduced) > most) continue;
        reader.setScaledSize(reduced);
        return true;
    }
    return false;
}

/// Whether a picture that cannot be reduced has room beside what others hold, also while it is made into one of 32
/// bits.
bool hasRoom(const QImageReader& reader, QSize size, std::int64_t others) {
    const int depth = QImage::toPixelFormat(reader.imageFormat()).bitsPerPixel();
    const std::int64_t before = depth == 32 ? 0 : pixelsOf(size) * depth / 32;
    return pixelsOf(size) <= kMaxHeldPixels && pixelsOf(size) + before + others <= kMaxHeldTogether;
}

/// The file for the check of its end.
class FileBytes : public PictureBytes {
public:
    explicit FileBytes(QIODevice& file) : file_(file) {}
    ~FileBytes() override { file_.seek(0); }
    std::int64_t size() override { return file_.size(); }
    std::string part(std::int64_t from, std::int64_t count) override {
        return file_.seek(from) ? file_.read(count).toStdString() : std::string();
    }

private:
    QIODevice& file_;
};

/// The size that a GIF's header announces. Its picture gets that one, while the reader tells its first part's.
QSize gifScreen(const QByteArray& head) {
    if (head.size() < kGifHeaderBytes) return {};
    const auto word = [&head](int at) {
        return static_cast<int>(static_cast<unsigned char>(head[at]) | static_cast<unsigned char>(head[at + 1]) << 8U);
    };
    return {word(6), word(8)};
}

/// How many bits of each colour a bitmap of 16 bits keeps; empty for any other file.
std::optional<std::array<int, 3>> coarseColours(const QByteArray& head) {
    const auto number = [&head](int at, int count) {
        std::uint32_t value = 0;
        for (int i = count; i-- > 0;) value = value << 8U | static_cast<unsigned char>(head[at + i]);
        return value;
    };
    if (head.size() < kBmpHeaderBytes || !head.startsWith("BM") || number(14, 4) < 40 || number(28, 2) != 16) return {};
    if (number(30, 4) != kBmpMasks) return std::array{5, 5, 5};
    return std::array{std::popcount(number(54, 4)), std::popcount(number(58, 4)), std::popcount(number(62, 4))};
}

/// Qt's reader leaves the bits that such a bitmap does not have at 0, so that white would be grey.
void widenColours(QImage& image, const std::array<int, 3>& bits) {
    for (int y = 0; y < image.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const QRgb old = line[x];
            line[x] = qRgb(qRed(old) | qRed(old) >> bits[0], qGreen(old) | qGreen(old) >> bits[1],
                           qBlue(old) | qBlue(old) >> bits[2]);
        }
    }
}

/// The picture, with the first colour where a bitmap's runs leave pixels out: Qt's reader does not touch those, and
/// what was in memory before would show.
QImage readImage(QImageReader& reader, QSize size) {
    QImage image;
    if (reader.format() == "bmp" && reader.imageFormat() == QImage::Format_Indexed8) {
        image = QImage(size, QImage::Format_Indexed8);
        if (!image.isNull()) image.fill(0);
    }
    return reader.read(&image) ? image : QImage();
}

bool endsTooEarly(QIODevice& file) {
    FileBytes bytes(file);
    return !endsWhole(bytes);
}

/// What decoding it takes beside the picture, in pixels' worth. Leaves the file where it was.
std::int64_t workOfJpeg(QIODevice& file) {
    const qint64 place = file.pos();
    const std::int64_t bytes = decoderBytesOfJpeg(file);
    file.seek(place);
    return bytes / kBytesOfPixel;
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

QtPicture::~QtPicture() {
    held -= pixelsOf(image_.size());
    if (pixelsOf(image_.size()) < kSlowToFree) return;
    try {
        std::thread([image = std::move(image_)] {}).detach();  // it ends by itself and needs nothing of ours
    } catch (const std::system_error&) {                       // no thread is to be had: the image is freed here
    }
}

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

QtPictures::QtPictures() {
    QImageReader::setAllocationLimit(kAllocationMegabytes);
    worker_.setMaxThreadCount(1);
    worker_.setExpiryTimeout(kWorkerIdleMs);
}

QtPictures::~QtPictures() {
    {
        const std::lock_guard lock(mutex_);
        wanted_.clear();
        ending_ = true;
        done_.notify_all();
    }
    finishHints();
}

QtPictures::Stamp QtPictures::stampOf(const std::string& path) const {
    return DriveCalls::all()
        .ask<Stamp>(path, {DriveCalls::kPatience, &ending_},
                    [path] {
                        struct stat status {};
                        if (stat(path.c_str(), &status) != 0) return Stamp{};
                        return Stamp{status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
                    })
        .value_or(Stamp{});
}

Pictures::Decoded QtPictures::decodeFrom(QIODevice& file) {
    if (endsTooEarly(file)) return {{}, "The picture is damaged: the file ends too early."};

    const QByteArray head = file.peek(kBmpHeaderBytes);
    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QByteArray format = reader.format();
    if (format != "bmp" && format != "jpeg" && format != "gif" && format != "png") {
        return {{}, "This is not a picture of a known format."};
    }
    QSize size = format == "gif" ? gifScreen(head) : reader.size();
    // A bitmap's rows that begin at the top are told by a height below 0.
    if (format == "bmp" && size.width() > 0 && size.height() < 0) size.setHeight(-size.height());
    if (!size.isValid()) return {{}, "The picture is damaged or too large."};
    const bool reducible = format == "jpeg";  // its decoder reduces while it reads; others would read the whole first
    const std::int64_t work = reducible ? workOfJpeg(file) : 0;
    const auto fits = [&](std::int64_t others) {
        if (!reducible) return hasRoom(reader, size, others);
        return pixelsOf(size) <= kMaxPicturePixels && reduceToFit(reader, size, work, others);
    };
    if (!fits(held)) {
        return {{},
                "The picture is too large (" + std::to_string(size.width()) + " x " + std::to_string(size.height()) +
                    " pixels).",
                fits(0)};
    }
    const bool turned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    QImage image = readImage(reader, size);
    if (image.isNull()) return {{}, "The picture is damaged: " + reader.errorString().toStdString()};
    image.setDevicePixelRatio(1.0);
    image = std::move(image).convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                                     : QImage::Format_RGB32);
    if (const auto coarse = coarseColours(head)) widenColours(image, *coarse);
    // Only what was reduced has another size than its pixels: a damaged GIF may announce one that it does not have.
    const QSize full = reducible ? (turned ? size.transposed() : size) : image.size();
    return {Picture(std::make_shared<QtPicture>(std::move(image), full)), ""};
}

Pictures::Decoded QtPictures::load(const std::string& path) const {
    std::string reason;
    const auto opened = DriveFile::open(path, {DriveCalls::kPatience, &ending_}, reason);
    if (!opened) return {{}, reason};
    DriveDevice file(*opened);
    Decoded decoded = decodeFrom(file);
    if (opened->failure().empty()) return decoded;
    return {{}, opened->failure()};  // the decoder fills what is missing with grey and says nothing
}

Pictures::Decoded QtPictures::decode(const std::string& path) {
    {
        std::unique_lock lock(mutex_);
        if (wanted_ == path) {
            wanted_.clear();
            done_.notify_all();
        }
        done_.wait(lock, [&] { return working_ != path; });
        // What was decoded for nothing must not take the room of what is wanted.
        Ahead ahead = std::exchange(ready_, {});
        const bool counts = !ahead.decoded.lacksRoom && ahead.path == path;  // there may be room now
        if (counts && ahead.stamp == stampOf(path)) return std::move(ahead.decoded);
    }
    return load(path);
}

void QtPictures::decodeAhead(const std::string& path) {
    const std::lock_guard lock(mutex_);
    if (path.empty() || working_ == path || ready_.path == path) return;
    wanted_ = path;
    if (busy_) return;
    busy_ = true;
    worker_.start([this] { work(); });
}

void QtPictures::work() {
    std::unique_lock lock(mutex_);
    // The hint comes just before the picture on the screen is painted, which must not wait for a processor.
    done_.wait_for(lock, kAfterPainting, [this] { return wanted_.empty(); });
    while (!wanted_.empty()) {
        working_ = std::exchange(wanted_, {});
        const std::string path = working_;
        ready_ = {};
        lock.unlock();
        Ahead ahead{path, stampOf(path), {}};
        ahead.decoded = load(path);
        lock.lock();
        ready_ = std::move(ahead);
        working_.clear();
        done_.notify_all();
    }
    busy_ = false;
}

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
