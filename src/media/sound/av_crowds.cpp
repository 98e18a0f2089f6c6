// SPDX-License-Identifier: GPL-3.0-or-later
// The decoding libraries look through all tags that they hold of a file for each further one, and ask nobody meanwhile
// whether they should go on: half a million take them many minutes. They have no limit of their own, so the function by
// which tags are added stands here, before that of libavutil, for whatever library calls it: the program's own names
// come first. What is too many is left out, as if the file had not said it.
#include <cstdint>

extern "C" {
#include <libavutil/avutil.h>
#include <libavutil/dict.h>
#include <libavutil/mem.h>
}

#include <cstring>
#include <string>

#include "media/shared_library.h"

namespace {

constexpr int kMostTags = 512;                              ///< of a file, and of each of its streams
constexpr std::size_t kLongestSum = std::size_t{16} << 10;  ///< bytes of a text that is put together of equal tags

/// Those of the library. Who calls has loaded it.
struct Originals {
    decltype(&::av_dict_set) set = nullptr;
    decltype(&::av_dict_get) get = nullptr;
    decltype(&::av_dict_count) count = nullptr;
    decltype(&::av_free) free = nullptr;
    bool complete = false;

    Originals() {
        const corvane::SharedLibrary util("libavutil.so." + std::to_string(LIBAVUTIL_VERSION_MAJOR));
        complete = util.find("av_dict_set", set) && util.find("av_dict_get", get) &&
                   util.find("av_dict_count", count) && util.find("av_free", free);
    }
};

const Originals& originals() {
    static const Originals found;
    return found;
}

bool tooMuch(const AVDictionary* tags, const char* key, int flags) {
    if (originals().count(tags) >= kMostTags) return true;
    if ((flags & AV_DICT_APPEND) == 0) return false;
    const AVDictionaryEntry* const before = originals().get(tags, key, nullptr, flags);
    return before != nullptr && strnlen(before->value, kLongestSum) == kLongestSum;
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) int av_dict_set(AVDictionary** tags, const char* key, const char* value,
                                                       int flags) {
    if (!originals().complete) return AVERROR(ENOSYS);
    const bool leftOut = value != nullptr && key != nullptr && tooMuch(*tags, key, flags);
    if (!leftOut) return originals().set(tags, key, value, flags);
    if ((flags & AV_DICT_DONT_STRDUP_KEY) != 0) originals().free(const_cast<char*>(key));
    if ((flags & AV_DICT_DONT_STRDUP_VAL) != 0) originals().free(const_cast<char*>(value));
    return 0;
}
}
