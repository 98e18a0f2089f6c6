// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QThreadPool>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>

#include "platform/dense_pictures.h"
#include "platform/ports.h"
#include "toolkit/picture_budget.h"

namespace corvane {

/// A picture of this desktop.
class QtPicture : public PictureData {
public:
    /// The image must not be null; fullSize, when given, is the picture's own size of which the image holds a
    /// reduction. The dense image, when given, is kDenseFactor times as large.
    explicit QtPicture(QImage image, QSize fullSize = {}, QImage dense = {});
    ~QtPicture() override;
    int width() const override { return size_.width(); }
    int height() const override { return size_.height(); }
    std::uint32_t pixel(int x, int y) const override;
    const QImage& image() const { return image_; }
    const QImage& dense() const { return dense_; }  ///< null when there is none

    /// Pixels that all living pictures hold; any thread.
    static std::int64_t heldPixels();

private:
    QImage image_;
    QImage dense_;
    QSize size_;
};

/// The pixels of a picture; null for none.
QImage imageOf(const Picture& picture);
/// Its pixels for dense screens; null for none.
QImage denseImageOf(const Picture& picture);

/// Pictures by Qt's readers: BMP, JPEG, GIF and PNG by their content, whatever the name. A file that ends too early
/// counts as damaged.
class QtPictures : public Pictures, public DensePictures {
public:
    QtPictures();
    ~QtPictures() override;

    Decoded decode(const std::string& path) override;
    void decodeAhead(const std::string& path) override;
    /// Waits until the worker has nothing to do.
    void finishHints() { worker_.waitForDone(); }
    Picture cut(const Picture& whole, const Cell& cell) override;
    int paintStretched(PictureBox& box, float width, float height) override;

    /// Tells how many pixels of the densest screen show a form's pixel. Without it no dense picture is wanted.
    void setDensity(std::function<double()> density) { density_ = std::move(density); }
    bool denseWanted() const override { return density_ && density_() >= kDenseFrom; }
    Picture paired(const Picture& plain, const Picture& dense) override;

private:
    /// What tells a file from a changed one of the same name.
    struct Stamp {
        std::int64_t size = -1, seconds = 0, nanoseconds = 0;
        bool operator==(const Stamp&) const = default;
    };
    struct Ahead {
        std::string path;
        Stamp stamp;
        Picture picture;  ///< empty when it failed
        std::string reason;
    };
    static Stamp stampOf(const std::string& path);
    static Picture load(const std::string& path, std::string& reason);
    void work();

    std::function<double()> density_;
    QThreadPool worker_;  ///< one thread, gone when it is idle
    std::mutex mutex_;    ///< guards what follows
    std::condition_variable done_;
    std::string wanted_;   ///< waits for the worker
    std::string working_;  ///< the worker decodes it
    bool busy_ = false;    ///< a task is in the pool
    Ahead ready_;
};

}  // namespace corvane
