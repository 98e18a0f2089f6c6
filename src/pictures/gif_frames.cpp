// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/gif_frames.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "pictures/gif_pieces.h"

namespace corvane {

namespace {

class BytesInMemory : public PictureBytes {
public:
    explicit BytesInMemory(std::string bytes) : bytes_(std::move(bytes)) {}
    std::int64_t size() override { return static_cast<std::int64_t>(bytes_.size()); }
    std::string part(std::int64_t from, std::int64_t count) override {
        return from < size() ? bytes_.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(count)) : "";
    }

private:
    std::string bytes_;
};

class GifFrames : public FrameReader {
public:
    explicit GifFrames(std::string bytes) : bytes_(std::move(bytes)) {}

    std::optional<FramePixels> next(const std::function<bool()>& givenUp) override {
        givenUp_ = &givenUp;
        if (!pieces_ && !begin()) return std::nullopt;
        if (!mayBeDrawn()) return std::nullopt;
        leave();
        draw();
        FramePixels seen;
        seen.milliseconds = frameMilliseconds(pieces_->frame().hundredths);
        seen.pixels = {screen_, screen_, canvas_, isSeeThrough(), {}, false};
        over_ = seen.isLast = !goOn();
        if (givenUp()) return std::nullopt;
        return seen;
    }

private:
    /// To the first picture; false: the file holds one at most, or a screen that is too large.
    bool begin() {
        if (over_ || !holdsSeveral()) {
            over_ = true;
            return false;
        }
        return rewind();
    }
    bool holdsSeveral() {
        GifPieces pieces(bytes_, [this] { return (*givenUp_)(); });
        if (!pieces.readScreen() || !pieces.findPicture()) return false;
        pieces.passPicture();
        return pieces.findPicture();
    }
    bool rewind() {
        pieces_.emplace(bytes_, [this] { return (*givenUp_)(); });
        if (!pieces_->readScreen() || !pieces_->findPicture()) return false;
        screen_ = pieces_->screen();
        if (screen_.pixels() == 0 || screen_.pixels() > kMostMovingPixels) return false;
        background_ = pieces_->background();
        canvas_.assign(static_cast<std::size_t>(screen_.pixels()), background_);
        leaving_ = GifPieces::Leaving::Stays;
        return true;
    }
    bool isSeeThrough() const {
        return std::any_of(canvas_.begin(), canvas_.end(),
                           [](std::uint32_t pixel) { return pixel < GifPieces::kOpaque; });
    }
    bool mayBeDrawn() const { return !over_ && pieces_->frame().size.pixels() <= kMostMovingPixels; }

    /// Finds the picture behind this one, the first one when all are to be shown again; false: none comes.
    bool goOn() {
        if (pieces_->findPicture()) return true;
        const std::optional<int> repeats = pieces_->repeats();
        if (!repeats || (*repeats != 0 && shown_ >= *repeats)) return false;
        ++shown_;
        return rewind();
    }

    /// Does what the picture before asked for.
    void leave() {
        if (leaving_ == GifPieces::Leaving::Stays) return;
        for (int y = from_.y; y < from_.y + from_.height; ++y) {
            const auto row = canvas_.begin() + place(from_.x, y);
            if (leaving_ == GifPieces::Leaving::Cleared) {
                std::fill_n(row, from_.width, background_);
            } else {
                std::copy_n(before_.begin() + std::ptrdiff_t{y - from_.y} * from_.width, from_.width, row);
            }
        }
    }
    void draw() {
        const GifPieces::Frame& frame = pieces_->frame();
        from_.x = std::min(frame.left, screen_.width);
        from_.y = std::min(frame.top, screen_.height);
        from_.width = std::min(frame.size.width, screen_.width - from_.x);
        from_.height = std::min(frame.size.height, screen_.height - from_.y);
        leaving_ = frame.leaving;
        before_.clear();
        for (int y = from_.y; leaving_ == GifPieces::Leaving::AsBefore && y < from_.y + from_.height; ++y) {
            const auto row = canvas_.begin() + place(from_.x, y);
            before_.insert(before_.end(), row, row + from_.width);
        }
        pieces_->unpack();
        for (int y = from_.y; y < from_.y + from_.height; ++y) pieces_->drawRow(y, canvas_.data() + place(0, y));
    }
    std::ptrdiff_t place(int x, int y) const { return std::ptrdiff_t{y} * screen_.width + x; }

    BytesInMemory bytes_;
    const std::function<bool()>* givenUp_ = nullptr;  ///< of the call that runs
    std::optional<GifPieces> pieces_;
    PictureSize screen_;
    std::uint32_t background_ = 0;
    std::vector<std::uint32_t> canvas_;
    struct Place {
        int x = 0, y = 0, width = 0, height = 0;
    } from_;  ///< of the picture before, inside the screen
    GifPieces::Leaving leaving_ = GifPieces::Leaving::Stays;
    std::vector<std::uint32_t> before_;  ///< what that covered, when it comes back
    int shown_ = 0;                      ///< times that all were shown again
    bool over_ = false;
};

}  // namespace

std::unique_ptr<FrameReader> gifFrames(std::string bytes) { return std::make_unique<GifFrames>(std::move(bytes)); }

}  // namespace corvane
