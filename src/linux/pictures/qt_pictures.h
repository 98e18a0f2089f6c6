// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "pictures/picture_budget.h"
#include "pictures/picture_check.h"
#include "pictures/picture_file.h"
#include "platform/ports.h"
#include "workers/worker_pictures.h"

namespace corvane {

/// The pixels of a whole skin for dense screens, shared by the parts that are cut out of it.
class DenseSource {
public:
    explicit DenseSource(std::function<Picture()> ask) : ask_(std::move(ask)) {}
    const QImage& image();  ///< null when there is none; asked for at the first call

private:
    std::function<Picture()> ask_;  ///< empty once it was asked
    Picture picture_;
    QImage image_;
};

/// A picture of this desktop.
class QtPicture : public PictureData {
public:
    /// The image must not be null; fullSize, when given, is the picture's own size of which the image holds a
    /// reduction. `dense` is what has its pixels for dense screens, at `denseCorner`.
    explicit QtPicture(QImage image, QSize fullSize = {}, std::shared_ptr<DenseSource> dense = {},
                       QPoint denseCorner = {});
    ~QtPicture() override;
    int width() const override { return size_.width(); }
    int height() const override { return size_.height(); }
    std::uint32_t pixel(int x, int y) const override;
    const QImage& image() const { return image_; }
    /// Reads it when it has not been asked before; null when there is none.
    QImage dense() const;
    const std::shared_ptr<DenseSource>& denseSource() const { return dense_; }
    QPoint denseCorner() const { return denseCorner_; }

    /// Pixels that all living pictures hold; any thread.
    static std::int64_t heldPixels();

private:
    QImage image_;
    std::shared_ptr<DenseSource> dense_;  ///< may be null
    QPoint denseCorner_;
    QSize size_;
};

/// The pixels of a picture; null for none.
QImage imageOf(const Picture& picture);
/// Its pixels for dense screens, read when they are first asked for; null for none.
QImage denseImageOf(const Picture& picture);

/// Pictures by readers of our own, libjpeg and libpng: BMP, JPEG, GIF and PNG by their content, whatever the name. What
/// is none of them is given to a decoder of the system when the file is named for one (system_picture.h). A file that
/// ends too early counts as damaged, one on a drive that does not answer as not readable.
class QtPictures : public WorkerPictures {
public:
    /// Without a loop to post to, what is begun is decoded at once.
    explicit QtPictures(PictureWorker::Post post = {});

    bool shows(const std::string& extension) override;
    /// The picture in a file. Any thread.
    static Decoded decodeFrom(PictureBytes& file, const std::function<bool()>& givenUp,
                              const PictureReader& other = {});
    Picture paired(const Picture& plain, std::function<Picture()> dense) override;

protected:
    Picture cutInside(const Picture& whole, const Cell& cell) override;
};

}  // namespace corvane
