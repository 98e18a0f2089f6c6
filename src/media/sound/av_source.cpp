// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/av_source.h"

#include <algorithm>
#include <cstdio>

namespace corvane {

namespace {
constexpr int kBufferBytes = 32 * 1024;  // as the library's own reader of files
}

std::unique_ptr<AvSource> AvSource::open(const std::string& path, const std::atomic<bool>* giveUp,
                                         std::string& reason) {
    auto file = DriveFile::open(path, {DriveCalls::kLongPatience, giveUp}, reason);
    return file ? of(std::move(file), giveUp) : nullptr;
}

std::unique_ptr<AvSource> AvSource::of(std::unique_ptr<DriveFile> file, const std::atomic<bool>* giveUp) {
    std::unique_ptr<AvSource> source(new AvSource(std::move(file), giveUp));
    auto* const buffer = static_cast<unsigned char*>(av().av_malloc(kBufferBytes));
    if (buffer == nullptr) return nullptr;
    source->context_ = av().avio_alloc_context(buffer, kBufferBytes, 0, source.get(), read, nullptr, seek);
    if (source->context_ != nullptr) return source;
    av().av_free(buffer);
    return nullptr;
}

AvSource::~AvSource() {
    if (context_ == nullptr) return;
    av().av_free(context_->buffer);  // another one than at first, perhaps
    av().avio_context_free(&context_);
}

void AvSource::feed(AVFormatContext& input) {
    input.pb = context_;
    input.flags |= AVFMT_FLAG_CUSTOM_IO;
}

int AvSource::read(void* self, std::uint8_t* to, int count) {
    AvSource& source = *static_cast<AvSource*>(self);
    if (source.mostToRead_ <= 0 || (source.giveUp_ != nullptr && *source.giveUp_)) return AVERROR_EXIT;
    if (source.until_ != std::chrono::steady_clock::time_point::max() &&
        std::chrono::steady_clock::now() > source.until_)
        return AVERROR_EXIT;
    const std::int64_t got =
        source.file_->read(source.at_, reinterpret_cast<char*>(to), static_cast<std::size_t>(std::max(count, 0)));
    if (got < 0) return AVERROR(EIO);
    if (got == 0) return AVERROR_EOF;
    source.at_ += got;
    if (source.mostToRead_ == INT64_MAX) return static_cast<int>(got);
    source.mostToRead_ -= got;
    source.countBeside(to, got);
    return source.tellsTooMuchBeside() ? AVERROR_EXIT : static_cast<int>(got);
}

/// By the names of the pieces, CHAP and CHAPTER, PRIV, GEO and GEOB, PIC and APIC, whose case does not count: the
/// pieces themselves lie where each format has them.
void AvSource::countBeside(const std::uint8_t* bytes, std::int64_t count) {
    constexpr std::uint32_t kSmall = 0x20, kThree = 0xFFFFFF, kChap = 0x63686170, kPriv = 0x70726976, kGeo = 0x67656F,
                            kPic = 0x706963;
    for (std::int64_t i = 0; i < count; ++i) {
        letters_ = letters_ << 8U | (bytes[i] | kSmall);
        const std::uint32_t three = letters_ & kThree;
        if (letters_ == kChap || letters_ == kPriv || three == kGeo || three == kPic) ++beside_;
    }
}

std::int64_t AvSource::seek(void* self, std::int64_t offset, int whence) {
    AvSource& source = *static_cast<AvSource*>(self);
    const std::int64_t size = source.file_->size();
    whence &= ~AVSEEK_FORCE;
    if (whence == AVSEEK_SIZE) return size;
    const std::int64_t from = whence == SEEK_CUR ? source.at_ : whence == SEEK_END ? size : 0;
    std::int64_t to = 0;
    if (__builtin_add_overflow(from, offset, &to) || to < 0) return AVERROR(EINVAL);
    return source.at_ = to;
}

}  // namespace corvane
