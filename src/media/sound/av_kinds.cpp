// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/av_kinds.h"

#include <algorithm>
#include <array>

#include "media/sound/av_library.h"
#include "types/text.h"

namespace corvane {

namespace {

constexpr const char* kModules = "libopenmpt";

struct Needed {
    const char* extension;
    const char* format;
    const char* decoder;  ///< null: the format's reader decodes
};

// clang-format off
constexpr std::array<Needed, 32> kNeeded{{
    {"FLAC", "flac",     "flac"},    {"OGG",  "ogg",      "vorbis"}, {"OGA",  "ogg",      "vorbis"},
    {"OPUS", "ogg",      "opus"},    {"M4A",  "mov",      "aac"},    {"M4B",  "mov",      "aac"},
    {"AAC",  "aac",      "aac"},     {"WMA",  "asf",      "wmav2"},  {"APE",  "ape",      "ape"},
    {"WV",   "wv",       "wavpack"}, {"MPC",  "mpc8",     "mpc8"},   {"TTA",  "tta",      "tta"},
    {"MKA",  "matroska", "vorbis"},  {"DSF",  "dsf",      "dsd_lsbf_planar"},
    {"MOD",  kModules,   nullptr},   {"S3M",  kModules,   nullptr},  {"XM",   kModules,   nullptr},
    {"IT",   kModules,   nullptr},
    {"MP4",  "mov",      "h264"},    {"M4V",  "mov",      "h264"},   {"MKV",  "matroska", "h264"},
    {"WEBM", "matroska", "vp9"},     {"WMV",  "asf",      "wmv2"},   {"FLV",  "flv",      "flv"},
    {"OGV",  "ogg",      "theora"},  {"TS",   "mpegts",   "h264"},   {"M2TS", "mpegts",   "h264"},
    {"MTS",  "mpegts",   "h264"},    {"VOB",  "mpeg",     "mpeg2video"},
    {"3GP",  "mov",      "h263"},    {"3G2",  "mov",      "h263"},   {"DIVX", "avi",      "mpeg4"},
}};
// clang-format on

const Needed* neededBy(const std::string& extension) {
    const auto found =
        std::find_if(kNeeded.begin(), kNeeded.end(), [&](const Needed& each) { return extension == each.extension; });
    return found == kNeeded.end() ? nullptr : &*found;
}

}  // namespace

bool avPlays(const std::string& extension) {
    const Needed* const needed = neededBy(extension);
    if (needed == nullptr || !loadAv() || av().av_find_input_format(needed->format) == nullptr) return false;
    return needed->decoder == nullptr || av().avcodec_find_decoder_by_name(needed->decoder) != nullptr;
}

const char* formatByName(const std::string& path) {
    const std::size_t dot = path.rfind('.');
    const Needed* const needed = dot == std::string::npos ? nullptr : neededBy(text::capitals(path.substr(dot + 1)));
    return needed != nullptr && needed->format == kModules ? kModules : nullptr;
}

}  // namespace corvane
