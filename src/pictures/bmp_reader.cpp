// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/bmp_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <optional>

#include "pictures/byte_walk.h"

namespace corvane {

namespace {

constexpr std::int64_t kFileHeader = 14;
constexpr std::int64_t kOldHeader = 12;
constexpr std::int64_t kOtherSystemsHeader = 64;
constexpr std::int64_t kMasksAt = 54;
constexpr std::uint32_t kOpaque = 0xFF000000U;
enum Compression { kPlain = 0, kRuns8 = 1, kRuns4 = 2, kMasks = 3 };

/// Where a colour lies in a pixel.
struct Channel {
    std::uint32_t mask = 0;
    int low = 0;             ///< its lowest bit
    std::uint64_t most = 0;  ///< its largest value; 0: the pixel has none
    std::uint32_t none = 0;  ///< its value then

    Channel(std::uint32_t bits, std::uint32_t whenNone) : mask(bits), none(whenNone) {
        if (mask == 0) return;
        low = std::countr_zero(mask);
        most = mask >> low;
    }
    std::uint32_t of(std::uint32_t pixel) const {
        if (most == 0) return none;
        return static_cast<std::uint32_t>((std::uint64_t{(pixel & mask) >> low} * 255 + most / 2) / most);
    }
};

struct Header {
    PictureSize size;
    bool fromTop = false;
    int bits = 0;
    int compression = kPlain;
    std::int64_t pixelsAt = 0;
    std::vector<std::uint32_t> colours;  ///< of a table, opaque
    std::array<std::uint32_t, 4> masks{};

    /// Bytes of a stored row.
    std::int64_t line() const { return (std::int64_t{size.width} * bits + 31) / 32 * 4; }
    bool hasRuns() const { return compression == kRuns8 || compression == kRuns4; }
};

bool fits(int bits, std::int64_t compression) {
    switch (compression) {
        case kPlain:
            return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
        case kRuns8:
            return bits == 8;
        case kRuns4:
            return bits == 4;
        case kMasks:
            return bits == 16 || bits == 32;
        default:
            return false;
    }
}

/// The masks behind the short header or in a longer one; the usual ones where the file names none.
void readMasks(ByteWalk& walk, std::int64_t headerBytes, Header& header) {
    if (header.compression != kMasks) {
        header.masks = header.bits == 16 ? std::array<std::uint32_t, 4>{0x7C00, 0x3E0, 0x1F, 0}
                                         : std::array<std::uint32_t, 4>{0xFF0000, 0xFF00, 0xFF, 0};
        return;
    }
    constexpr std::int64_t kHeaderWithAlpha = 56;
    const std::size_t count = headerBytes >= kHeaderWithAlpha ? 4 : 3;
    walk.at = kMasksAt;
    for (std::size_t i = 0; i < count; ++i) {
        header.masks[i] = static_cast<std::uint32_t>(std::max<std::int64_t>(walk.number(4), 0));
        if (header.bits == 16) header.masks[i] &= 0xFFFFU;
    }
}

bool readColours(ByteWalk& walk, std::int64_t headerBytes, std::int64_t used, Header& header) {
    const std::int64_t most = std::int64_t{1} << header.bits;
    const std::int64_t count = used == 0 ? most : used;
    if (count < 1 || count > 256) return false;
    walk.at = kFileHeader + headerBytes;
    for (std::int64_t i = 0; i < count; ++i) {
        const std::int64_t colour = walk.number(headerBytes == kOldHeader ? 3 : 4);
        if (colour < 0) return false;
        header.colours.push_back(kOpaque | static_cast<std::uint32_t>(colour & 0xFFFFFF));
    }
    header.colours.resize(static_cast<std::size_t>(std::max(count, most)), kOpaque);
    return true;
}

/// Empty: it is damaged, or of a kind that is not read.
std::optional<Header> readHeader(PictureBytes& file) {
    ByteWalk walk(file);
    Header header;
    walk.at = 10;
    header.pixelsAt = walk.number(4);
    const std::int64_t bytes = walk.number(4);
    const bool old = bytes == kOldHeader;
    const std::array<std::int64_t, 7> known = {kOldHeader, 40, 52, 56, kOtherSystemsHeader, 108, 124};
    if (std::find(known.begin(), known.end(), bytes) == known.end()) return std::nullopt;
    const std::int64_t width = old ? walk.number(2) : static_cast<std::int32_t>(walk.number(4));
    const std::int64_t height = old ? walk.number(2) : static_cast<std::int32_t>(walk.number(4));
    const std::int64_t planes = walk.number(2);
    header.bits = static_cast<int>(walk.number(2));
    const std::int64_t compression = old ? 0 : walk.number(4);
    if (planes != 1 || !fits(header.bits, compression)) return std::nullopt;
    if (bytes == kOtherSystemsHeader && compression == kMasks) return std::nullopt;
    constexpr std::int64_t kMostSide = 0x7FFFFFFF;
    header.fromTop = height < 0;
    const std::int64_t rows = header.fromTop ? -height : height;
    if (width < 1 || rows < 1 || width > kMostSide || rows > kMostSide) return std::nullopt;
    header.size = {static_cast<int>(width), static_cast<int>(rows)};
    header.compression = static_cast<int>(compression);
    walk.at = kFileHeader + 32;
    const std::int64_t used = old ? 0 : walk.number(4);
    if (header.bits <= 8) {
        if (!readColours(walk, bytes, used, header)) return std::nullopt;
    } else {
        readMasks(walk, bytes, header);
    }
    return header;
}

class BmpReader {
public:
    BmpReader(PictureBytes& file, const Header& header, const DecodingBounds& bounds, PictureSize held)
        : file_(file),
          header_(header),
          bounds_(bounds),
          rows_(header.size, held),
          row_(static_cast<std::size_t>(header.size.width)) {}

    PicturePixels read() {
        const bool whole = header_.hasRuns() ? readRuns() : readPlain();
        return whole ? rows_.take() : PicturePixels::damaged();
    }

private:
    /// The row of the picture that the file's row of that number is.
    int rowOf(int stored) const { return header_.fromTop ? stored : header_.size.height - 1 - stored; }
    std::uint32_t colour(std::size_t index) const { return header_.colours[index]; }

    bool readPlain() {
        const std::int64_t line = header_.line();
        const std::int64_t atOnce = std::max<std::int64_t>(kPiece / line, 1);  // rows
        std::string piece;
        for (int y = 0; y < header_.size.height; ++y) {
            if (y % atOnce == 0) {
                const std::int64_t count = std::min<std::int64_t>(atOnce, header_.size.height - y) * line;
                piece = file_.part(header_.pixelsAt + y * line, count);
                if (static_cast<std::int64_t>(piece.size()) < count || bounds_.givenUp()) return false;
            }
            unpack(reinterpret_cast<const unsigned char*>(piece.data()) + y % atOnce * line);
            rows_.put(rowOf(y), row_.data());
        }
        return true;
    }

    void unpack(const unsigned char* stored) {
        const auto bits = static_cast<std::size_t>(header_.bits);
        if (header_.bits <= 8) {
            const std::size_t perByte = 8 / bits;
            const unsigned mask = (1U << bits) - 1U;
            for (std::size_t x = 0; x < row_.size(); ++x) {
                const std::size_t shift = 8 - bits - x % perByte * bits;
                row_[x] = colour(stored[x / perByte] >> shift & mask);
            }
        } else if (header_.bits == 24 || isUsual()) {
            const std::size_t step = bits / 8;
            for (std::size_t x = 0; x < row_.size(); ++x, stored += step) {
                row_[x] = kOpaque | std::uint32_t{stored[2]} << 16U | std::uint32_t{stored[1]} << 8U | stored[0];
            }
        } else {
            unpackMasked(stored);
        }
    }
    /// 32 bits without an alpha, in the usual order.
    bool isUsual() const {
        return header_.bits == 32 && header_.masks == std::array<std::uint32_t, 4>{0xFF0000, 0xFF00, 0xFF, 0};
    }
    void unpackMasked(const unsigned char* stored) {
        const Channel red(header_.masks[0], 0), green(header_.masks[1], 0), blue(header_.masks[2], 0);
        const Channel alpha(header_.masks[3], 255);
        const std::size_t step = static_cast<std::size_t>(header_.bits) / 8;
        for (std::size_t x = 0; x < row_.size(); ++x, stored += step) {
            std::uint32_t pixel = 0;
            for (std::size_t i = step; i-- > 0;) pixel = pixel << 8U | stored[i];
            const std::uint32_t a = alpha.of(pixel);
            const auto times = [a](std::uint32_t value) { return (value * a + 127) / 255; };
            row_[x] = a << 24U | times(red.of(pixel)) << 16U | times(green.of(pixel)) << 8U | times(blue.of(pixel));
        }
    }

    /// Runs jump about, so that the numbers of all colours are kept until the end.
    bool readRuns() {
        numbers_.assign(static_cast<std::size_t>(header_.size.pixels()), 0);
        if (!unpackRuns()) return false;
        for (int y = 0; y < header_.size.height; ++y) {
            const unsigned char* const stored = numbers_.data() + static_cast<std::size_t>(y) * row_.size();
            for (std::size_t x = 0; x < row_.size(); ++x) row_[x] = colour(stored[x]);
            rows_.put(rowOf(y), row_.data());
        }
        return true;
    }

    /// False: the file ends before its picture does, or it was given up.
    bool unpackRuns() {
        constexpr int kAskEvery = 4096;
        ByteWalk walk(file_);
        walk.at = header_.pixelsAt;
        x_ = y_ = 0;
        for (int steps = 0; y_ < header_.size.height; ++steps) {
            if (steps % kAskEvery == 0 && bounds_.givenUp()) return false;
            const int count = walk.next();
            const int value = walk.next();
            if (value < 0) return y_ == header_.size.height - 1 && x_ >= header_.size.width;
            if (count > 0) {
                for (int i = 0; i < count; ++i) set(header_.bits == 8 ? value : i % 2 == 0 ? value >> 4 : value & 15);
            } else if (value == 0) {
                x_ = 0;
                ++y_;
            } else if (value == 1) {
                return true;
            } else if (value == 2) {
                x_ = std::min(x_ + std::max(walk.next(), 0), header_.size.width);
                y_ += std::max(walk.next(), 0);
            } else {
                copy(walk, value);
            }
        }
        return true;
    }
    /// Colours one by one, filled up to two bytes.
    void copy(ByteWalk& walk, int count) {
        const int perByte = header_.bits == 8 ? 1 : 2;
        int byte = 0;
        for (int i = 0; i < count; ++i) {
            if (i % perByte == 0) byte = std::max(walk.next(), 0);
            set(perByte == 1 ? byte : i % 2 == 0 ? byte >> 4 : byte & 15);
        }
        if ((count + perByte - 1) / perByte % 2 != 0) walk.next();
    }
    void set(int value) {
        if (x_ < header_.size.width && y_ < header_.size.height) {
            numbers_[static_cast<std::size_t>(y_) * row_.size() + static_cast<std::size_t>(x_)] =
                static_cast<unsigned char>(value);
        }
        if (x_ < header_.size.width) ++x_;
    }

    static constexpr std::int64_t kPiece = 262144;  ///< bytes read at once

    PictureBytes& file_;
    const Header& header_;
    const DecodingBounds& bounds_;
    ReducedRows rows_;
    std::vector<std::uint32_t> row_;
    std::vector<unsigned char> numbers_;  ///< of the colours, of all pixels, the file's first row first
    int x_ = 0, y_ = 0;                   ///< where a run goes on
};

}  // namespace

PicturePixels readBmp(PictureBytes& file, const DecodingBounds& bounds) {
    const std::optional<Header> header = readHeader(file);
    if (!header) return PicturePixels::damaged();
    const PictureSize size = header->size;
    if (size.width > kMaxPictureSide || size.height > kMaxPictureSide || size.pixels() > kMaxPicturePixels) {
        return PicturePixels::tooLarge(size);
    }
    const std::int64_t work = header->hasRuns() ? size.pixels() / 4 : 0;
    const PictureSize held = sizeToHold(size, bounds.held, work);
    if (held.pixels() == 0) return PicturePixels::tooLarge(size, sizeToHold(size, 0, work).pixels() > 0);
    return BmpReader(file, *header, bounds, held).read();
}

}  // namespace corvane
