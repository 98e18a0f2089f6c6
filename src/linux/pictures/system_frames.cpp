// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/pictures/system_frames.h"

#include <QBuffer>
#include <QImageReader>
#include <optional>

#include "pictures/webp_head.h"

namespace corvane {

namespace {

class SystemFrames : public FrameReader {
public:
    SystemFrames(const std::string& bytes, WebpHead head)
        : head_(head), bytes_(bytes.data(), static_cast<qsizetype>(bytes.size())) {}

    std::optional<FramePixels> next(const std::function<bool()>& givenUp) override {
        if (over_ || givenUp() || (!reader_ && !begin())) return std::nullopt;
        QImage image = reader_->read();
        FramePixels seen;
        seen.milliseconds = reader_->nextImageDelay();
        image = std::move(image).convertToFormat(QImage::Format_ARGB32_Premultiplied);
        if (image.isNull() || image.width() != head_.size.width || image.height() != head_.size.height) {
            over_ = true;
            return std::nullopt;
        }
        if (seen.milliseconds <= kNoTime * 10) seen.milliseconds = kUsualFrameMs;
        over_ = seen.isLast = !goOn();
        take(image, seen.pixels);
        return seen;
    }

private:
    bool begin() {
        ++shown_;
        reader_.reset();
        buffer_.emplace(&bytes_);
        reader_.emplace(&*buffer_, QByteArray("webp"));
        reader_->setAutoDetectImageFormat(false);
        left_ = reader_->imageCount();
        return left_ > 1;
    }
    /// False: what was read was the last one.
    bool goOn() {
        if (--left_ > 0) return true;
        return (head_.times == 0 || shown_ < head_.times) && begin();
    }
    static void take(const QImage& image, PicturePixels& into) {
        into.held = into.full = {image.width(), image.height()};
        into.pixels.reserve(static_cast<std::size_t>(into.full.pixels()));
        into.seeThrough = image.hasAlphaChannel();
        for (int y = 0; y < image.height(); ++y) {
            const auto* const row = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
            into.pixels.insert(into.pixels.end(), row, row + image.width());
        }
    }

    WebpHead head_;
    QByteArray bytes_;
    std::optional<QBuffer> buffer_;
    std::optional<QImageReader> reader_;  ///< goes before what it reads
    int left_ = 0;                        ///< pictures behind the one that was read, and itself
    int shown_ = 0;                       ///< times that all are shown, this one included
    bool over_ = false;
};

}  // namespace

std::unique_ptr<FrameReader> systemFrames(const std::string& bytes) {
    const auto head = webpHeadOf(bytes);
    if (!head || !head->moves || head->size.pixels() > kMostMovingPixels) return nullptr;
    return std::make_unique<SystemFrames>(bytes, *head);
}

}  // namespace corvane
