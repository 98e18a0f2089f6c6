// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace corvane::test {

/// The least significant bytes of a number, the lowest first.
inline std::string little(std::int64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
}

/// Rows of numbers: colours of a table, or 0xRRGGBB.
struct Dots {
    int width = 0, height = 0;
    std::vector<std::uint32_t> values;  ///< from the top left, row by row

    Dots(int w, int h, const std::function<std::uint32_t(int, int)>& value) : width(w), height(h) {
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) values.push_back(value(x, y));
        }
    }
    std::uint32_t at(int x, int y) const {
        return values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    }
};

/// How a bitmap's file is laid out.
struct BitmapKind {
    int bits = 24;
    int header = 40;  ///< bytes: 12, 40, 108 or 124
    int compression = 0;
    std::array<std::uint32_t, 4> masks{};  ///< red, green, blue, alpha; where compression is 3
    bool topDown = false;
    std::uint8_t unusedByte = 0;  ///< of 32 bits
};

/// The bits of an 8 bit channel in a mask, rounded down.
inline std::uint32_t inMask(std::uint32_t channel, std::uint32_t mask) {
    if (mask == 0) return 0;
    int low = 0;
    while ((mask >> low & 1U) == 0) ++low;
    return static_cast<std::uint32_t>(std::uint64_t{channel} * (mask >> low) / 255) << low;
}

/// One row of pixels as it is stored, filled up to four bytes.
inline std::string bitmapRow(const Dots& dots, int y, const BitmapKind& kind) {
    std::string row;
    int held = 0, bits = 0;
    for (int x = 0; x < dots.width; ++x) {
        const std::uint32_t value = dots.at(x, y);
        if (kind.bits < 8) {
            held = held << kind.bits | static_cast<int>(value);
            bits += kind.bits;
            if (bits == 8) row += static_cast<char>(std::exchange(held, 0)), bits = 0;
        } else if (kind.compression == 3 || kind.bits == 16) {
            std::array<std::uint32_t, 4> masks = kind.masks;
            if (kind.compression != 3) masks = {0x7C00, 0x3E0, 0x1F, 0};
            row += little(inMask(value >> 16 & 0xFF, masks[0]) | inMask(value >> 8 & 0xFF, masks[1]) |
                              inMask(value & 0xFF, masks[2]) | masks[3],
                          kind.bits / 8);
        } else {
            row += little(kind.bits == 32 ? value | std::uint32_t{kind.unusedByte} << 24U : value, kind.bits / 8);
        }
    }
    if (bits > 0) row += static_cast<char>(held << (8 - bits));
    row.resize((row.size() + 3) / 4 * 4);
    return row;
}

/// All rows, in the order of the file.
inline std::string bitmapRows(const Dots& dots, const BitmapKind& kind) {
    std::string rows;
    for (int line = 0; line < dots.height; ++line) {
        rows += bitmapRow(dots, kind.topDown ? line : dots.height - 1 - line, kind);
    }
    return rows;
}

/// A bitmap's file around its rows, whatever packs them. `colours`: its table, 0xRRGGBB.
inline std::string bitmapFile(int width, int height, const BitmapKind& kind, const std::vector<std::uint32_t>& colours,
                              const std::string& rows) {
    std::string header = little(kind.header, 4);
    std::string table;
    if (kind.header == 12) {
        header += little(width, 2) + little(height, 2) + little(1, 2) + little(kind.bits, 2);
    } else {
        header += little(width, 4) + little(kind.topDown ? -height : height, 4) + little(1, 2) + little(kind.bits, 2) +
                  little(kind.compression, 4) + little(static_cast<int>(rows.size()), 4) + little(2835, 4) +
                  little(2835, 4) + little(static_cast<int>(colours.size()), 4) + little(0, 4);
        std::string masks;
        for (const std::uint32_t mask : kind.masks) masks += little(mask, 4);
        if (kind.header > 40) {
            header += masks + "BGRs";  // the usual colours
        } else if (kind.compression == 3) {
            table = masks.substr(0, 12);
        }
        header.resize(static_cast<std::size_t>(kind.header));
    }
    for (const std::uint32_t colour : colours) table += little(colour, kind.header == 12 ? 3 : 4);
    const std::size_t start = 14 + header.size() + table.size();
    return "BM" + little(static_cast<std::int64_t>(start + rows.size()), 4) + little(0, 4) +
           little(static_cast<std::int64_t>(start), 4) + header + table + rows;
}

/// Rows packed in runs and in pieces as they are, of 8 or 4 bits a pixel.
inline std::string packedRows(const Dots& dots, int bits) {
    const auto put = [bits](std::string& text, const std::vector<std::uint32_t>& values) {
        for (std::size_t i = 0; i < values.size(); i += bits == 4 ? 2 : 1) {
            const std::uint32_t second = i + 1 < values.size() ? values[i + 1] : 0;
            text += static_cast<char>(bits == 8 ? values[i] : values[i] << 4U | second);
        }
    };
    std::string rows;
    for (int y = dots.height - 1; y >= 0; --y) {
        for (int x = 0; x < dots.width;) {
            int same = 1;
            while (x + same < dots.width && dots.at(x + same, y) == dots.at(x, y)) ++same;
            const int left = dots.width - x;
            const int count = same >= 3 || left < 3 ? same : std::min(left, 5);
            if (same >= 3 || left < 3) {
                rows += static_cast<char>(count);
                put(rows, std::vector<std::uint32_t>(bits == 4 ? 2 : 1, dots.at(x, y)));
            } else {
                std::string piece;
                std::vector<std::uint32_t> values;
                for (int i = 0; i < count; ++i) values.push_back(dots.at(x + i, y));
                put(piece, values);
                if (piece.size() % 2 == 1) piece += '\0';
                rows += '\0' + std::string(1, static_cast<char>(count)) + piece;
            }
            x += count;
        }
        rows += std::string(2, '\0');
    }
    return rows + std::string("\0\1", 2);
}

/// One picture of a GIF file: up to 128 colours of the file's table.
struct GifPart {
    Dots dots;
    int left = 0, top = 0;
    int transparent = -1;  ///< colour, -1: none
    bool interlaced = false;
    std::vector<std::uint32_t> colours{};  ///< a table of its own; none: the file's
    int hundredths = 10;                   ///< of a second that it is seen
    int leaving = 0;                       ///< what becomes of it: 2 is cleared, 3 gives back what was beneath
};

inline std::string gifTable(std::vector<std::uint32_t> colours) {
    colours.resize(128);
    std::string table;
    for (const std::uint32_t colour : colours) {
        for (const int shift : {16, 8, 0}) table += static_cast<char>(colour >> shift & 0xFF);
    }
    return table;
}

inline constexpr std::uint32_t kGifBackground = 3;  ///< colour where no picture is

/// A GIF file of 128 colours. Its codes all take a byte: the coder is told to forget before they would grow.
inline std::string gifFile(int width, int height, const std::vector<std::uint32_t>& colours,
                           const std::vector<GifPart>& parts, int repeats = 0) {
    std::string file = "GIF89a" + little(width, 2) + little(height, 2) + '\xE6' + static_cast<char>(kGifBackground) +
                       '\0' + gifTable(colours);
    if (parts.size() > 1 && repeats >= 0) {
        file += std::string("!\xFF\x0BNETSCAPE2.0\x03\x01", 16) + little(static_cast<std::uint32_t>(repeats), 2) + '\0';
    }
    for (const GifPart& part : parts) {
        file += std::string("!\xF9\4", 3) + static_cast<char>(part.leaving << 2 | (part.transparent >= 0 ? 1 : 0)) +
                little(static_cast<std::uint32_t>(part.hundredths), 2) +
                static_cast<char>(std::max(0, part.transparent)) + '\0';
        file += ',' + little(part.left, 2) + little(part.top, 2) + little(part.dots.width, 2) +
                little(part.dots.height, 2) +
                static_cast<char>((part.interlaced ? 0x40 : 0) | (part.colours.empty() ? 0 : 0x86));
        if (!part.colours.empty()) file += gifTable(part.colours);
        std::vector<int> rows;
        const auto take = [&](int first, int step) {
            for (int y = first; y < part.dots.height; y += step) rows.push_back(y);
        };
        if (part.interlaced) {
            take(0, 8), take(4, 8), take(2, 4), take(1, 2);
        } else {
            take(0, 1);
        }
        std::string codes;
        int sinceClear = 100;
        for (const int y : rows) {
            for (int x = 0; x < part.dots.width; ++x) {
                if (sinceClear++ >= 100) codes += '\x80', sinceClear = 0;
                codes += static_cast<char>(part.dots.at(x, y));
            }
        }
        codes += '\x81';
        file += '\7';
        for (std::size_t at = 0; at < codes.size(); at += 255) {
            const std::string block = codes.substr(at, 255);
            file += static_cast<char>(block.size()) + block;
        }
        file += '\0';
    }
    return file + ';';
}

}  // namespace corvane::test
