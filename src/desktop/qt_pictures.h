// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QThreadPool>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>

#include "platform/ports.h"
#include "toolkit/picture_budget.h"

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

/// Pictures by Qt's readers: BMP, JPEG, GIF and PNG by their content, whatever the name. A file that ends too early
/// counts as damaged, one on a drive that does not answer as not readable.
class QtPictures : public Pictures {
public:
    QtPictures();
    ~QtPictures() override;

    Decoded decode(const std::string& path) override;
    void decodeAhead(const std::string& path) override;
    /// The picture in a file that is open at its start. Any thread.
    static Decoded decodeFrom(QIODevice& file);
    /// Waits until the worker has nothing to do.
    void finishHints() { worker_.waitForDone(); }
    Picture cut(const Picture& whole, const Cell& cell) override;
    int paintStretched(PictureBox& box, float width, float height) override;
    Picture paired(const Picture& plain, std::function<Picture()> dense) override;

private:
    /// What tells a file from a changed one of the same name.
    struct Stamp {
        std::int64_t size = -1, seconds = 0, nanoseconds = 0;
        bool operator==(const Stamp&) const = default;
    };
    struct Ahead {
        std::string path;
        Stamp stamp;
        Decoded decoded;
    };
    Stamp stampOf(const std::string& path) const;
    Decoded load(const std::string& path) const;
    void work();

    std::atomic<bool> ending_{false};
    QThreadPool worker_;  ///< one thread, gone when it is idle
    std::mutex mutex_;    ///< guards what follows
    std::condition_variable done_;
    std::string wanted_;   ///< waits for the worker
    std::string working_;  ///< the worker decodes it
    bool busy_ = false;    ///< a task is in the pool
    Ahead ready_;
};

}  // namespace corvane
