// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/gif_pieces.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace corvane {

namespace {

constexpr int kMostCodes = 4096;
constexpr int kTable = 0x80;
constexpr int kInterlaced = 0x40;

/// A table of the size that the flags tell; empty without one, and where the file ends first.
GifPieces::Colours readColours(ByteWalk& walk, std::int64_t flags) {
    GifPieces::Colours colours;
    if ((flags & kTable) == 0) return colours;
    for (int left = 2 << (flags & 7); left > 0; --left) {
        const std::int64_t colour = walk.number(3, true);
        if (colour < 0) return {};
        colours.push_back(GifPieces::kOpaque | static_cast<std::uint32_t>(colour));
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

}  // namespace

bool GifPieces::readScreen() {
    walk_.at = 6;
    const std::int64_t width = walk_.number(2), height = walk_.number(2), flags = walk_.number(1);
    const std::int64_t background = walk_.number(1);
    walk_.next();
    if (background < 0) return false;
    screen_ = {static_cast<int>(width), static_cast<int>(height)};
    colours_ = readColours(walk_, flags);
    background_ = static_cast<int>(background);
    return true;
}

bool GifPieces::findPicture() {
    frame_ = {};
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
    frame_.colours = (flags & kTable) != 0 ? readColours(walk_, flags) : colours_;
    if (screen_.width == 0 || screen_.height == 0)
        screen_ = {frame_.left + frame_.size.width, frame_.top + frame_.size.height};
    return true;
}

bool GifPieces::passExtension() {
    constexpr int kControl = 0xF9, kProgram = 0xFF;
    const int kind = walk_.next();
    const std::int64_t at = walk_.at;
    if (kind == kControl) readControl();
    if (kind == kProgram) readRepeats();
    walk_.at = at;
    return passBlocks();
}

void GifPieces::readControl() {
    constexpr int kClears = 2, kGoesBack = 3;
    if (walk_.next() != 4) return;
    const int flags = walk_.next();
    const std::int64_t hundredths = walk_.number(2);
    const int hole = walk_.next();
    if (hole < 0) return;
    frame_.hole = (flags & 1) != 0 ? hole : -1;
    frame_.hundredths = static_cast<int>(hundredths);
    const int leaving = flags >> 2 & 7;
    frame_.leaving = leaving == kClears ? Leaving::Cleared : leaving == kGoesBack ? Leaving::AsBefore : Leaving::Stays;
}

/// By the block that programs add which write such files.
void GifPieces::readRepeats() {
    constexpr std::size_t kName = 11;
    std::string name;
    if (walk_.next() != static_cast<int>(kName)) return;
    for (std::size_t i = 0; i < kName; ++i) name.push_back(static_cast<char>(walk_.next()));
    if (name != "NETSCAPE2.0" && name != "ANIMEXTS1.0") return;
    if (walk_.next() != 3 || walk_.next() != 1) return;
    if (const std::int64_t times = walk_.number(2); times >= 0) repeats_ = static_cast<int>(times);
}

bool GifPieces::passBlocks() {
    constexpr int kAskEvery = 65536;
    for (int count = 1;; ++count) {
        const int length = walk_.next();
        if (length <= 0) return length == 0;
        walk_.at += length;
        if (count % kAskEvery == 0 && givenUp_()) return false;
    }
}

void GifPieces::passPicture() {
    walk_.next();  // the size of a code
    passBlocks();
}

void GifPieces::unpack() {
    numbers_.assign(static_cast<std::size_t>(frame_.size.pixels()), 0);
    come_.assign(static_cast<std::size_t>(frame_.size.height), 0);
    const int bits = walk_.next();
    const std::int64_t at = walk_.at;
    if (bits >= 1 && bits <= 8 && frame_.size.pixels() > 0) {
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
        Codes(walk_, bits).unpack(frame_.size.pixels(), put, givenUp_);
    }
    walk_.at = at;
    passBlocks();
}

void GifPieces::drawRow(int y, std::uint32_t* row) const {
    if (y < frame_.top || y - frame_.top >= static_cast<int>(come_.size())) return;
    const auto own = static_cast<std::size_t>(y - frame_.top);
    const std::size_t line = own * static_cast<std::size_t>(frame_.size.width);
    const int width = std::min(come_[own], screen_.width - frame_.left);
    for (int x = 0; x < width; ++x) {
        const std::size_t number = numbers_[line + static_cast<std::size_t>(x)];
        if (static_cast<int>(number) == frame_.hole) continue;
        row[frame_.left + x] = number < frame_.colours.size() ? frame_.colours[number] : kOpaque;
    }
}

std::uint32_t GifPieces::background() const {
    const auto number = static_cast<std::size_t>(background_);
    if (frame_.hole >= 0) return 0;
    return number < colours_.size() ? colours_[number] : kOpaque;
}

}  // namespace corvane
