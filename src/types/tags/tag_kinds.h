// SPDX-License-Identifier: GPL-3.0-or-later
// The kinds of tags, for tag_reader.cpp alone. None believes a size that the file tells.
#pragma once

#include "types/tags/tag_reader.h"

namespace corvane::tags {

/// A whole number of the first bytes; 0 where there are not so many.
std::uint64_t bigEndian(std::string_view bytes, std::size_t count);
std::uint64_t littleEndian(std::string_view bytes, std::size_t count);
/// Bytes of a text from a place on; fewer or none where it ends.
inline std::string_view part(std::string_view bytes, std::uint64_t from, std::uint64_t count = ~std::uint64_t{0}) {
    return from < bytes.size() ? bytes.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(count))
                               : std::string_view();
}
/// UTF-16 as UTF-8, to the first zero.
std::string fromUtf16(std::string_view bytes, bool bigEnd);
/// The name in small letters.
std::string small(std::string_view name);

/// Where the ID3 tag at a place ends; the place itself where there is none.
std::uint64_t readId3(const TagSource& file, std::uint64_t at, const TakeTag& take);
void readOldId3(const TagSource& file, const TakeTag& take);  ///< the one of 128 bytes at the end
void readFlac(const TagSource& file, std::uint64_t at, const TakeTag& take);
void readOgg(const TagSource& file, const TakeTag& take);
void readMp4(const TagSource& file, const TakeTag& take);
void readAsf(const TagSource& file, const TakeTag& take);
void readApe(const TagSource& file, const TakeTag& take);
void readRiff(const TagSource& file, const TakeTag& take);
/// The comments that FLAC and Ogg have alike.
void takeComments(std::string_view bytes, const TakeTag& take);

}  // namespace corvane::tags
