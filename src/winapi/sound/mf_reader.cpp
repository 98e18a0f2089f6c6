// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/sound/mf_reader.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

// After windows.h:
#include <mferror.h>
#include <propidl.h>

namespace corvane {

namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr std::int64_t kTicksPerMillisecond = kTicksPerSecond / 1000;
constexpr auto kSound = static_cast<DWORD>(MF_SOURCE_READER_FIRST_AUDIO_STREAM);
constexpr auto kAll = static_cast<DWORD>(MF_SOURCE_READER_ALL_STREAMS);
constexpr auto kSource = static_cast<DWORD>(MF_SOURCE_READER_MEDIASOURCE);
constexpr int kMostEmptyReads = 1000;
constexpr int kMostChannels = 8, kMostRate = 768'000;
constexpr int kSampleBits = 16;

std::string refusal(HRESULT error) {
    char text[64] = {};
    std::snprintf(text, sizeof text, "This Windows cannot decode it (error %08lX).", static_cast<unsigned long>(error));
    return text;
}

/// The upper 16 bits of each sample; those of 8 bits have no sign.
std::vector<std::int16_t> narrowed(const BYTE* bytes, std::size_t size, int bits) {
    const std::size_t each = static_cast<std::size_t>(bits) / 8;
    std::vector<std::int16_t> samples(size / each);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const BYTE* const last = bytes + (i + 1) * each - 1;
        const unsigned high = *last;
        const unsigned low = each > 1 ? *(last - 1) : 0U;
        samples[i] = static_cast<std::int16_t>(each == 1 ? (high - 0x80U) << 8U : high << 8U | low);
    }
    return samples;
}

}  // namespace

MfReader::MfReader(const MfLibrary& library) : library_(library), com_(COINIT_MULTITHREADED) {}

MfReader::~MfReader() { reader_.reset(); }

std::string MfReader::open(const std::wstring& path) {
    if (!library_.isThere()) return library_.missing;
    use_.emplace(library_);
    if (!*use_) return "Media Foundation cannot be begun.";
    ComPointer<IMFByteStream> bytes;
    HRESULT result = library_.createFile(MF_ACCESSMODE_READ, MF_OPENMODE_FAIL_IF_NOT_EXIST, MF_FILEFLAGS_NONE,
                                         path.c_str(), bytes.out());
    if (FAILED(result)) return "The file cannot be read.";
    result = library_.createReader(bytes.get(), nullptr, reader_.out());
    if (SUCCEEDED(result)) {
        reader_->SetStreamSelection(kAll, FALSE);
        result = reader_->SetStreamSelection(kSound, TRUE);
    }
    if (SUCCEEDED(result)) result = wantPcm();
    if (SUCCEEDED(result) && !learnFormat()) result = MF_E_INVALIDMEDIATYPE;
    if (SUCCEEDED(result)) return {};
    reader_.reset();
    return refusal(result);
}

/// Samples of 16 bits; a decoder that has others alone gives those.
HRESULT MfReader::wantPcm() {
    HRESULT result = E_FAIL;
    for (const UINT32 bits : {UINT32{kSampleBits}, UINT32{0}}) {
        ComPointer<IMFMediaType> type;
        result = library_.createMediaType(type.out());
        if (FAILED(result)) return result;
        type->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio);
        type->SetGUID(MF_MT_SUBTYPE, MFAudioFormat_PCM);
        if (bits != 0) type->SetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, bits);
        result = reader_->SetCurrentMediaType(kSound, nullptr, type.get());
        if (SUCCEEDED(result)) return result;
    }
    return result;
}

bool MfReader::learnFormat() {
    ComPointer<IMFMediaType> type;
    if (FAILED(reader_->GetCurrentMediaType(kSound, type.out()))) return false;
    const auto number = [&type](const GUID& key) {
        UINT32 value = 0;
        return SUCCEEDED(type->GetUINT32(key, &value)) ? static_cast<int>(value) : 0;
    };
    channels_ = number(MF_MT_AUDIO_NUM_CHANNELS);
    rate_ = number(MF_MT_AUDIO_SAMPLES_PER_SECOND);
    bits_ = number(MF_MT_AUDIO_BITS_PER_SAMPLE);
    speakers_ = static_cast<std::uint32_t>(number(MF_MT_AUDIO_CHANNEL_MASK));
    return channels_ > 0 && channels_ <= kMostChannels && rate_ > 0 && rate_ <= kMostRate &&
           (bits_ == 8 || bits_ == 16 || bits_ == 24 || bits_ == 32);
}

std::optional<std::int64_t> MfReader::milliseconds() const {
    PROPVARIANT told{};
    if (FAILED(reader_->GetPresentationAttribute(kSource, MF_PD_DURATION, &told))) return std::nullopt;
    const bool known = told.vt == VT_UI8 && told.uhVal.QuadPart > 0;
    const auto ticks = static_cast<std::int64_t>(known ? told.uhVal.QuadPart : 0);
    PropVariantClear(&told);
    if (!known || ticks <= 0) return std::nullopt;
    return ticks / kTicksPerMillisecond;
}

bool MfReader::seek(std::int64_t frame) {
    ended_ = false;
    if (frame == next_ && !sought_) return true;
    PROPVARIANT place{};
    place.vt = VT_I8;
    place.hVal.QuadPart = frame * kTicksPerSecond / rate_;
    if (FAILED(reader_->SetCurrentPosition(GUID_NULL, place))) return false;
    next_ = frame;
    sought_ = true;
    return true;
}

std::optional<std::vector<std::int16_t>> MfReader::read() {
    for (int i = 0; i < kMostEmptyReads && !ended_; ++i) {
        DWORD flags = 0;
        LONGLONG ticks = 0;
        ComPointer<IMFSample> sample;
        const HRESULT result = reader_->ReadSample(kSound, 0, nullptr, &flags, &ticks, sample.out());
        if (FAILED(result) || (flags & MF_SOURCE_READERF_ERROR) != 0) return std::nullopt;
        if ((flags & MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED) != 0) {
            const int channels = channels_, rate = rate_;
            if (!learnFormat() || channels_ != channels || rate_ != rate) return std::nullopt;
        }
        ended_ = (flags & MF_SOURCE_READERF_ENDOFSTREAM) != 0;
        if (!sample) continue;
        const std::int64_t frame = sought_ ? (ticks * rate_ + kTicksPerSecond / 2) / kTicksPerSecond : next_;
        auto samples = taken(*sample.get(), frame);
        if (!samples.empty()) return samples;
    }
    if (!ended_) return std::nullopt;
    return std::vector<std::int16_t>();
}

/// What a sample that begins at that frame has from the wanted one on.
std::vector<std::int16_t> MfReader::taken(IMFSample& sample, std::int64_t frame) {
    ComPointer<IMFMediaBuffer> buffer;
    BYTE* bytes = nullptr;
    DWORD size = 0;
    if (FAILED(sample.ConvertToContiguousBuffer(buffer.out())) || FAILED(buffer->Lock(&bytes, nullptr, &size)))
        return {};
    std::vector<std::int16_t> samples = narrowed(bytes, size, bits_);
    buffer->Unlock();
    samples.resize(samples.size() / static_cast<std::size_t>(channels_) * static_cast<std::size_t>(channels_));
    const auto count = static_cast<std::int64_t>(samples.size()) / channels_;
    const std::int64_t before = std::clamp<std::int64_t>(next_ - frame, 0, count);
    samples.erase(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(before * channels_));
    if (before < count) {
        sought_ = false;
        next_ += count - before;
    }
    return samples;
}

}  // namespace corvane
