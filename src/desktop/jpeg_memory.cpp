// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/jpeg_memory.h"

#include <QByteArray>
#include <QIODevice>
#include <algorithm>

namespace corvane {

namespace {

QByteArray part(QIODevice& file, qint64 from, qint64 count) {
    return file.seek(from) ? file.read(count) : QByteArray();
}

std::int64_t big(const QByteArray& bytes, qsizetype at, int count) {
    std::int64_t value = 0;
    for (int i = 0; i < count; ++i) value = value << 8 | static_cast<std::uint8_t>(bytes[at + i]);
    return value;
}

/// What a frame header of a JPEG says.
struct JpegFrame {
    bool progressive = false;
    int components = 0;
    std::int64_t coefficients = 0;
};

JpegFrame readFrame(int marker, const QByteArray& header) {
    JpegFrame frame;
    if (header.size() < 6) return frame;
    frame.progressive = marker % 4 == 2;
    frame.components = static_cast<std::uint8_t>(header[5]);
    if (header.size() < 6 + 3 * frame.components) return {};
    const auto sampling = [&](int component) { return static_cast<std::uint8_t>(header[7 + 3 * component]); };
    std::int64_t across = 1, down = 1;
    for (int i = 0; i < frame.components; ++i) {
        across = std::max<std::int64_t>(across, sampling(i) >> 4);
        down = std::max<std::int64_t>(down, sampling(i) & 15);
    }
    // Each unit of the picture holds blocks of 8 by 8 of each component.
    const std::int64_t units =
        (big(header, 3, 2) + 8 * across - 1) / (8 * across) * ((big(header, 1, 2) + 8 * down - 1) / (8 * down));
    for (int i = 0; i < frame.components; ++i)
        frame.coefficients += units * (sampling(i) >> 4) * (sampling(i) & 15) * 64;
    return frame;
}

}  // namespace

std::int64_t decoderBytesOfJpeg(QIODevice& file) {
    constexpr int kStartOfScan = 0xDA;
    JpegFrame frame;
    for (qint64 at = 2;;) {  // behind the start of the picture
        const QByteArray head = part(file, at, 4);
        if (head.size() < 4 || head[0] != '\xFF') return 0;
        const int marker = static_cast<std::uint8_t>(head[1]);
        const std::int64_t length = big(head, 2, 2);
        if (marker == 0xFF) {  // filling
            ++at;
            continue;
        }
        if (marker == kStartOfScan) {
            const QByteArray count = part(file, at + 4, 1);
            const bool inOne = !count.isEmpty() && count[0] == static_cast<char>(frame.components);
            return frame.progressive || !inOne ? frame.coefficients * static_cast<std::int64_t>(sizeof(short)) : 0;
        }
        const bool isTable = marker == 0xC4 || marker == 0xC8 || marker == 0xCC;
        if (marker >= 0xC0 && marker <= 0xCF && !isTable) frame = readFrame(marker, part(file, at + 4, length - 2));
        at += 2 + length;
    }
}

}  // namespace corvane
