// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/gif_reader.h"

#include <algorithm>
#include <array>
#include <optional>

#include "pictures/byte_walk.h"

namespace corvane {

namespace {

constexpr std::uint32_t kOpaque = 0xFF000000U;
constexpr int kMostCodes = 4096;
constexpr int kTable = 0x80;
constexpr int kInterlaced = 0x40;

using Colours = std::vector<std::uint32_t>;

struct Frame {
    int left = 0, top = 0;
    PictureSize size;
    bool interlaced = false;
    Colours colours;
    int hole = -1;  ///< number of the colour that is transparent; -1: none
};

struct Screen {
    PictureSize size;
    Colours colours;
    int background = 0;
};

/// A table of the size that the flags tell; empty without one, and where the file ends first.
Colours readColours(ByteWalk& walk, std::int64_t flags) {
    Colours colours;
    if ((flags & kTable) == 0) return colours;
    for (int left = 2 << (flags & 7); left > 0; --left) {
        const std::int64_t colour = walk.number(3, true);
        if (colour < 0) return {};
        colours.push_back(kOpaque | static_cast<std::uint32_t>(colour));
    }
    return colours;
}

/// The blocks of a picture's data as bits, the lowest first.
class Bits {
public:
    explicit Bits(ByteWalk& walk) : walk_(walk) {}
    /// -1: there are no more.
    int take(int count) {
        while (had_ < count) {
            if (left_ == 0) left_ = std::max(walk_.next(), 0);
            if (left_ == 0) return -1;
            const int byte = walk_.next();
            if (byte < 0) return -1;
            --left_;
            bits_ |= static_cast<std::uint32_t>(byte) << had_;
            had_ += 8;
        }
        const int value = static_cast<int>(bits_ & ((1U << count) - 1U));
        bits_ >>= count;
        had_ -= count;
        return value;
    }

private:
    ByteWalk& walk_;
    std::uint32_t bits_ = 0;
    int had_ = 0;
    int left_ = 0;  ///< bytes of the block
};

/// Unpacks the numbers of colours, in the order of the file.
class Codes {
public:
    Codes(ByteWalk& walk, int bits) : bits_(walk), least_(bits), clear_(1 << bits) { forget(); }

    /// Puts numbers until there are no more or it has put `count`. `ask` is called now and then; true ends it.
    template <class Put, class Ask>
    void unpack(std::int64_t count, Put put, Ask ask) {
        constexpr int kAskEvery = 4096;
        for (int steps = 1; count > 0; ++steps) {
            if (steps % kAskEvery == 0 && ask()) return;
            const int code = bits_.take(width_);
            if (code < 0 || code == clear_ + 1) return;
            if (code == clear_) {
                forget();
                continue;
            }
            const int length = expand(code);
            if (length == 0) return;  // a number that cannot be known yet
            for (int i = length; i-- > 0 && count > 0; --count) put(stack_[static_cast<std::size_t>(i)]);
        }
    }

private:
    void forget() {
        next_ = clear_ + 2;
        width_ = least_ + 1;
        before_ = -1;
    }
    /// The numbers that a code stands for, the last one first; how many.
    int expand(int code) {
        const bool known = code < next_ && (code < clear_ || code >= clear_ + 2);
        if (!known && (code != next_ || before_ < 0)) return 0;
        std::size_t length = 0;
        int at = code;
        if (!known) {
            stack_[length++] = first_;
            at = before_;
        }
        for (; at >= clear_; at = prefix_[static_cast<std::size_t>(at)]) {
            stack_[length++] = suffix_[static_cast<std::size_t>(at)];
        }
        first_ = static_cast<unsigned char>(at);
        stack_[length++] = first_;
        learn();
        before_ = code;
        return static_cast<int>(length);
    }
    void learn() {
        if (before_ < 0 || next_ >= kMostCodes) return;
        prefix_[static_cast<std::size_t>(next_)] = static_cast<std::uint16_t>(before_);
        suffix_[static_cast<std::size_t>(next_)] = first_;
        ++next_;
        if (next_ == 1 << width_ && width_ < 12) ++width_;
    }

    Bits bits_;
    int least_;  ///< bits of a colour's number
    int clear_;  ///< the code that forgets all
    int next_ = 0;
    int width_ = 0;
    int before_ = -1;
    unsigned char first_ = 0;  ///< number that the code before began with
    std::array<std::uint16_t, kMostCodes> prefix_{};
    std::array<unsigned char, kMostCodes> suffix_{};
    std::array<unsigned char, kMostCodes + 1> stack_{};
};

/// The rows of a picture in the order of the file: every eighth, those between, and so on.
class RowOrder {
public:
    RowOrder(int height, bool interlaced) : height_(height), pass_(interlaced ? 0 : kPasses) {}
    int row() const { return row_; }
    /// Small pictures have no row of some passes.
    void next() {
        row_ += pass_ < kPasses ? kStep[pass_] : 1;
        while (row_ >= height_ && pass_ + 1 < kPasses) row_ = kBegin[++pass_];
    }

private:
    static constexpr std::size_t kPasses = 4;
    static constexpr std::array<int, kPasses> kBegin{0, 4, 2, 1}, kStep{8, 8, 4, 2};
    int height_;
    std::size_t pass_;
    int row_ = 0;
};

class GifReader {
public:
    GifReader(PictureBytes& file, const DecodingBounds& bounds) : walk_(file), bounds_(bounds) {}

    PicturePixels read() {
        if (!readScreen() || !findPicture()) return PicturePixels::damaged();
        // Some programs leave the screen's size out.
        if (screen_.size.width == 0 || screen_.size.height == 0) {
            screen_.size = {frame_.left + frame_.size.width, frame_.top + frame_.size.height};
        }
        if (frame_.size.pixels() == 0 || screen_.size.pixels() == 0) return PicturePixels::damaged();
        if (screen_.size.pixels() > kMaxPicturePixels) return PicturePixels::tooLarge(screen_.size);
        if (frame_.size.pixels() > kMaxPicturePixels) return PicturePixels::tooLarge(frame_.size);
        const std::int64_t work = frame_.size.pixels() / 4;
        const PictureSize held = sizeToHold(screen_.size, bounds_.held, work);
        if (held.pixels() == 0) {
            return PicturePixels::tooLarge(screen_.size, sizeToHold(screen_.size, 0, work).pixels() > 0);
        }
        unpack();
        if (bounds_.givenUp()) return PicturePixels::damaged();
        return onScreen(held);
    }

private:
    bool readScreen() {
        walk_.at = 6;
        const std::int64_t width = walk_.number(2), height = walk_.number(2), flags = walk_.number(1);
        const std::int64_t background = walk_.number(1);
        walk_.next();
        if (background < 0) return false;
        screen_.size = {static_cast<int>(width), static_cast<int>(height)};
        screen_.colours = readColours(walk_, flags);
        screen_.background = static_cast<int>(background);
        return true;
    }

    /// Passes what comes before the first picture, and reads how that is to be shown.
    bool findPicture() {
        for (int block = walk_.next(); block != ','; block = walk_.next()) {
            if (block != '!' || !passExtension()) return false;
        }
        const std::int64_t left = walk_.number(2), top = walk_.number(2);
        const std::int64_t width = walk_.number(2), height = walk_.number(2), flags = walk_.number(1);
        if (flags < 0) return false;
        frame_.left = static_cast<int>(left);
        frame_.top = static_cast<int>(top);
        frame_.size = {static_cast<int>(width), static_cast<int>(height)};
        frame_.interlaced = (flags & kInterlaced) != 0;
        frame_.colours = (flags & kTable) != 0 ? readColours(walk_, flags) : screen_.colours;
        return true;
    }
    bool passExtension() {
        constexpr int kControl = 0xF9;
        const int kind = walk_.next();
        const std::int64_t at = walk_.at;
        if (kind == kControl && walk_.next() == 4) {
            const int flags = walk_.next();
            walk_.number(2);
            const int hole = walk_.next();
            frame_.hole = flags >= 0 && (flags & 1) != 0 ? hole : -1;
        }
        walk_.at = at;
        return passBlocks();
    }
    bool passBlocks() {
        constexpr int kAskEvery = 65536;
        for (int count = 1;; ++count) {
            const int length = walk_.next();
            if (length <= 0) return length == 0;
            walk_.at += length;
            if (count % kAskEvery == 0 && bounds_.givenUp()) return false;
        }
    }

    void unpack() {
        numbers_.assign(static_cast<std::size_t>(frame_.size.pixels()), 0);
        come_.assign(static_cast<std::size_t>(frame_.size.height), 0);
        const int bits = walk_.next();
        if (bits < 1 || bits > 8) return;
        RowOrder order(frame_.size.height, frame_.interlaced);
        int x = 0;
        const auto put = [&](unsigned char number) {
            const auto row = static_cast<std::size_t>(order.row());
            numbers_[row * static_cast<std::size_t>(frame_.size.width) + static_cast<std::size_t>(x)] = number;
            come_[row] = ++x;
            if (x < frame_.size.width) return;
            x = 0;
            order.next();
        };
        Codes(walk_, bits).unpack(frame_.size.pixels(), put, bounds_.givenUp);
    }

    PicturePixels onScreen(PictureSize held) {
        ReducedRows rows(screen_.size, held);
        std::vector<std::uint32_t> row(static_cast<std::size_t>(screen_.size.width));
        for (int y = 0; y < screen_.size.height; ++y) {
            std::fill(row.begin(), row.end(), background());
            if (y >= frame_.top && y - frame_.top < frame_.size.height) drawRow(y - frame_.top, row);
            rows.put(y, row.data());
        }
        return rows.take();
    }
    std::uint32_t background() const {
        const auto number = static_cast<std::size_t>(screen_.background);
        if (frame_.hole >= 0) return 0;
        return number < screen_.colours.size() ? screen_.colours[number] : kOpaque;
    }
    void drawRow(int y, std::vector<std::uint32_t>& row) const {
        const auto line = static_cast<std::size_t>(y) * static_cast<std::size_t>(frame_.size.width);
        const int width = std::min(come_[static_cast<std::size_t>(y)], screen_.size.width - frame_.left);
        for (int x = 0; x < width; ++x) {
            const std::size_t number = numbers_[line + static_cast<std::size_t>(x)];
            const bool isHole = static_cast<int>(number) == frame_.hole;
            const std::uint32_t colour = number < frame_.colours.size() ? frame_.colours[number] : kOpaque;
            row[static_cast<std::size_t>(frame_.left + x)] = isHole ? 0 : colour;
        }
    }

    ByteWalk walk_;
    const DecodingBounds& bounds_;
    Screen screen_;
    Frame frame_;
    std::vector<unsigned char> numbers_;  ///< of the colours, row by row
    std::vector<int> come_;               ///< pixels of each row that the file has
};

}  // namespace

PicturePixels readGif(PictureBytes& file, const DecodingBounds& bounds) { return GifReader(file, bounds).read(); }

}  // namespace corvane
