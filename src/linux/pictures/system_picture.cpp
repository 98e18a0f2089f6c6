// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/pictures/system_picture.h"

#include <QBuffer>
#include <QImageReader>
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <memory>
#include <utility>

#include "pictures/lone_drawing.h"
#include "workers/worker.h"

namespace corvane {

namespace {

constexpr std::chrono::seconds kLongestSystemDecoding{10};
constexpr std::chrono::milliseconds kLook{20};  ///< how soon one that is given up is left
constexpr int kMostLeft = 2;                    ///< decoders that may run on behind everybody's back
constexpr int kMostOfIcon = 64;                 ///< pictures of an icon that are looked at

constexpr const char* kDrawings = "svg";

struct Decoder {
    const char* extension;
    const char* name;
};
constexpr std::array<Decoder, 8> kDecoders{{{"WEBP", "webp"},
                                            {"TIF", "tiff"},
                                            {"TIFF", "tiff"},
                                            {"AVIF", "avif"},
                                            {"HEIC", "heic"},
                                            {"JXL", "jxl"},
                                            {"ICO", "ico"},
                                            {"SVG", kDrawings}}};

/// How many decode now: drawings, which may take for ever by a few bytes, and pictures, which end by their size. So no
/// drawing takes the pictures away.
struct Running {
    std::atomic<int> drawings{0}, pictures{0};
    std::atomic<int>& of(const std::string& decoder) { return decoder == kDrawings ? drawings : pictures; }
};
Running running;

/// One picture on its way; held by the thread that decodes as well.
struct Job {
    QByteArray bytes;
    QByteArray decoder;
    std::int64_t held = 0;
    PicturePixels result = PicturePixels::damaged();
};

struct CountsRunning {
    explicit CountsRunning(std::atomic<int>& count) : count_(count) { ++count_; }
    CountsRunning(const CountsRunning&) = delete;
    CountsRunning& operator=(const CountsRunning&) = delete;
    ~CountsRunning() { --count_; }

private:
    std::atomic<int>& count_;
};

/// Goes to the largest picture of several; false: it cannot.
bool goToLargest(QImageReader& reader) {
    const int count = std::min(reader.imageCount(), kMostOfIcon);
    int largest = 0;
    std::int64_t most = -1;
    for (int i = 0; i < count; ++i) {
        if (!reader.jumpToImage(i)) return false;
        const QSize size = reader.size();
        const std::int64_t pixels = std::int64_t{size.width()} * size.height();
        if (pixels > most) most = pixels, largest = i;
    }
    return count < 2 || reader.jumpToImage(largest);
}

PicturePixels pixelsOf(QImage image, std::int64_t heldByOthers) {
    const PictureSize full{image.width(), image.height()};
    const PictureSize held = sizeToHold(full, heldByOthers);
    if (held.pixels() < 1) return PicturePixels::tooLarge(full, true);
    image = std::move(image).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return PicturePixels::failed("There is not enough memory for the picture.");
    ReducedRows rows(full, held);
    for (int y = 0; y < full.height; ++y) {
        rows.put(y, reinterpret_cast<const std::uint32_t*>(image.constScanLine(y)));
    }
    return rows.take();
}

void decode(Job& job) {
    const CountsRunning counted(running.of(job.decoder.toStdString()));
    QBuffer buffer(&job.bytes);
    QImageReader reader(&buffer, job.decoder);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    if (job.decoder == "ico" && !goToLargest(reader)) return;
    const QSize said = reader.size();
    const PictureSize size{said.width(), said.height()};
    if (said.isValid() && (size.pixels() > kMaxPicturePixels || std::max(size.width, size.height) > kMaxPictureSide)) {
        job.result = PicturePixels::tooLarge(size);
        return;
    }
    QImage image = reader.read();
    if (image.isNull()) return;
    if (std::int64_t{image.width()} * image.height() > kMaxPicturePixels) {
        job.result = PicturePixels::tooLarge({image.width(), image.height()});
        return;
    }
    job.result = pixelsOf(std::move(image), job.held);
}

}  // namespace

std::string systemDecoderOf(const std::string& extension) {
    const auto found = std::find_if(kDecoders.begin(), kDecoders.end(),
                                    [&](const Decoder& each) { return extension == each.extension; });
    if (found == kDecoders.end()) return {};
    static const QList<QByteArray> kThere = QImageReader::supportedImageFormats();
    return kThere.contains(found->name) ? found->name : std::string();
}

PicturePixels readBySystem(PictureBytes& file, const DecodingBounds& bounds, const std::string& decoder) {
    if (running.of(decoder) >= kMostLeft) return PicturePixels::failed("Other pictures are still being decoded.");
    const auto job = std::make_shared<Job>();
    constexpr const char* kNotDrawn = "A drawing that is written like this is not drawn.";
    if (decoder == kDrawings && file.size() > kMostDrawingBytes) return PicturePixels::failed(kNotDrawn);
    std::string bytes = file.part(0, file.size());
    if (static_cast<std::int64_t>(bytes.size()) < file.size()) return PicturePixels::damaged();
    if (decoder == kDrawings) {
        auto drawing = loneDrawing(std::move(bytes));
        if (!drawing) return PicturePixels::failed(kNotDrawn);
        bytes = std::move(*drawing);
    }
    job->bytes = QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size()));
    job->decoder = QByteArray::fromStdString(decoder);
    job->held = bounds.held;

    Worker worker;
    const auto broken = [job] { job->result = PicturePixels::failed(Worker::kBroken); };
    if (!worker.start([job](const Worker::GiveUp& /*nothing listens*/) { decode(*job); }, broken)) {
        return PicturePixels::failed(Worker::kRefused);
    }
    const auto until = std::chrono::steady_clock::now() + kLongestSystemDecoding;
    while (!worker.wait(kLook)) {
        if (bounds.givenUp()) return PicturePixels::damaged();
        if (std::chrono::steady_clock::now() > until) return PicturePixels::failed("The picture takes too long.");
    }
    return std::move(job->result);
}

}  // namespace corvane
