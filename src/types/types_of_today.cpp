// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/media_types.h"

namespace corvane {

namespace {

using mdlDefinePublic::mkImage;
using mdlDefinePublic::mkMciFile;
using mdlDefinePublic::mkMovie;

MediaType sound(const std::string& extension, TypeFamily family, std::vector<std::string> mimeTypes) {
    return {extension, mkMciFile, extension + " Now On Play", TypeGroup::Sound, std::move(family), std::move(mimeTypes),
            ""};
}

MediaType movie(const std::string& extension, std::vector<std::string> mimeTypes) {
    return {extension,           mkMovie, "Video File Now On Play", TypeGroup::Video, {"video", "movie window"},
            std::move(mimeTypes)};
}

MediaType picture(const std::string& extension, std::vector<std::string> mimeTypes) {
    return {extension,
            mkImage,
            extension + " IMAGE",
            TypeGroup::Image,
            {"pictures", "picture window. Of an animation the first picture, of an icon the largest"},
            std::move(mimeTypes)};
}

}  // namespace

// clang-format off
std::vector<MediaType> typesOfToday() {
    const TypeFamily kLossless{"lossless sound", "sound"};
    const TypeFamily kLossy{"sound files", "sound"};
    const TypeFamily kModule{"modules", "sound"};
    return {
        sound("FLAC", kLossless, {"audio/flac"}),
        sound("OGG",  kLossy,    {"audio/ogg", "audio/x-vorbis+ogg"}),
        sound("OGA",  kLossy,    {"audio/ogg"}),
        sound("OPUS", kLossy,    {"audio/x-opus+ogg"}),
        sound("M4A",  kLossy,    {"audio/mp4"}),
        sound("M4B",  kLossy,    {"audio/x-m4b"}),
        sound("AAC",  kLossy,    {"audio/aac"}),
        sound("WMA",  kLossy,    {"audio/x-ms-wma"}),
        sound("APE",  kLossless, {"audio/x-ape"}),
        sound("WV",   kLossless, {"audio/x-wavpack"}),
        sound("MPC",  kLossy,    {"audio/x-musepack"}),
        sound("TTA",  kLossless, {"audio/x-tta"}),
        sound("MKA",  kLossy,    {"audio/x-matroska"}),
        sound("DSF",  kLossless, {"audio/x-dsf"}),
        sound("MOD",  kModule,   {"audio/x-mod"}),
        sound("S3M",  kModule,   {"audio/x-s3m"}),
        sound("XM",   kModule,   {"audio/x-xm"}),
        sound("IT",   kModule,   {"audio/x-it"}),
        movie("MP4",  {"video/mp4"}),
        movie("M4V",  {"video/x-m4v"}),
        movie("MKV",  {"video/x-matroska"}),
        movie("WEBM", {"video/webm"}),
        movie("WMV",  {"video/x-ms-wmv"}),
        movie("FLV",  {"video/x-flv"}),
        movie("OGV",  {"video/ogg"}),
        movie("TS",   {"video/mp2t"}),
        movie("M2TS", {"video/mp2t"}),
        movie("MTS",  {"video/mp2t"}),
        movie("VOB",  {"video/mpeg"}),
        movie("3GP",  {"video/3gpp"}),
        movie("3G2",  {"video/3gpp2"}),
        movie("DIVX", {"video/x-msvideo"}),
        picture("PNG",  {"image/png"}),
        picture("WEBP", {"image/webp"}),
        picture("TIF",  {"image/tiff"}),
        picture("TIFF", {"image/tiff"}),
        picture("AVIF", {"image/avif"}),
        picture("HEIC", {"image/heif"}),
        picture("JXL",  {"image/jxl"}),
        picture("ICO",  {"image/vnd.microsoft.icon"}),
        picture("SVG",  {"image/svg+xml"}),
    };
}
// clang-format on

}  // namespace corvane
