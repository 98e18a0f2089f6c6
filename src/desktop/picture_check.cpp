// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/picture_check.h"

#include <QByteArray>
#include <QIODevice>
#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace corvane {

namespace {

constexpr qint64 kTail = 65536;  ///< bytes behind a JPEG's end mark that cameras may add

std::uint32_t little(const QByteArray& bytes, qsizetype at, int count) {
    std::uint32_t value = 0;
    for (int i = count - 1; i >= 0; --i) value = (value << 8U) | static_cast<std::uint8_t>(bytes[at + i]);
    return value;
}

QByteArray part(QIODevice& file, qint64 from, qint64 count) {
    return file.seek(from) ? file.read(count) : QByteArray();
}

/// An uncompressed bitmap says by its header how long it is.
bool bmpEndsWhole(QIODevice& file) {
    const QByteArray header = part(file, 0, 54);
    if (header.size() < 54) return false;
    if (little(header, 14, 4) < 40) return true;  // the old header: left to the reader
    const std::uint32_t compression = little(header, 30, 4);
    if (compression != 0 && compression != 3) return true;
    const std::int64_t width = static_cast<std::int32_t>(little(header, 18, 4));
    const std::int64_t rows = static_cast<std::int32_t>(little(header, 22, 4));
    const std::int64_t line = (width * little(header, 28, 2) + 31) / 32 * 4;
    if (width < 0) return true;  // left to the reader, which refuses it
    return line <= file.size() && little(header, 10, 4) + line * std::abs(rows) <= file.size();
}

bool endsWith(QIODevice& file, const QByteArray& mark) {
    const qint64 from = std::max<qint64>(0, file.size() - kTail);
    return part(file, from, kTail).contains(mark);
}

/// The last end mark must come after the last start of coded data: a thumbnail in front has marks of its own.
bool jpegEndsWhole(QIODevice& file) {
    const QByteArray tail = part(file, std::max<qint64>(0, file.size() - kTail), kTail);
    const qsizetype end = tail.lastIndexOf("\xFF\xD9");
    return end >= 0 && end > tail.lastIndexOf("\xFF\xDA");
}

}  // namespace

bool endsWhole(QIODevice& file) {
    const QByteArray start = part(file, 0, 4);
    bool whole = true;
    if (start.startsWith("BM")) {
        whole = bmpEndsWhole(file);
    } else if (start.startsWith("\xFF\xD8")) {
        whole = jpegEndsWhole(file);
    } else if (start.startsWith("\x89PNG")) {
        whole = endsWith(file, "IEND");
    } else if (start.startsWith("GIF8")) {
        // The trailer byte; padding of zeros may follow it.
        QByteArray tail = part(file, std::max<qint64>(0, file.size() - kTail), kTail);
        while (tail.endsWith('\0')) tail.chop(1);
        whole = tail.endsWith(';');
    }
    file.seek(0);
    return whole;
}

}  // namespace corvane
