// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/sound/mf_device.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

// After windows.h:
#include <mmreg.h>

namespace corvane {

namespace {

constexpr int kBlocksPerSecond = 8;
constexpr int kMilliseconds = 1000;
constexpr std::int64_t kToTheEnd = -1;

WAVEFORMATEXTENSIBLE formatOf(const MfReader& reader) {
    WAVEFORMATEXTENSIBLE format{};
    WAVEFORMATEX& plain = format.Format;
    plain.nChannels = static_cast<WORD>(reader.channels());
    plain.nSamplesPerSec = static_cast<DWORD>(reader.rate());
    plain.wBitsPerSample = 16;
    plain.nBlockAlign = static_cast<WORD>(plain.nChannels * sizeof(std::int16_t));
    plain.nAvgBytesPerSec = plain.nSamplesPerSec * plain.nBlockAlign;
    plain.wFormatTag = WAVE_FORMAT_PCM;
    if (plain.nChannels > 2) {
        plain.wFormatTag = WAVE_FORMAT_EXTENSIBLE;
        plain.cbSize = sizeof format - sizeof plain;
        format.Samples.wValidBitsPerSample = plain.wBitsPerSample;
        format.dwChannelMask = reader.speakers();
        format.SubFormat = MFAudioFormat_PCM;  // the same as the wave output's own
    }
    return format;
}

std::int16_t louder(std::int16_t sample, float factor) {
    using Limits = std::numeric_limits<std::int16_t>;
    const float wanted = std::round(static_cast<float>(sample) * factor);
    return static_cast<std::int16_t>(
        std::clamp(wanted, static_cast<float>(Limits::min()), static_cast<float>(Limits::max())));
}

}  // namespace

MfDevice::MfDevice(const MfLibrary& library)
    : reader_(library), returns_([this](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
          if (message != MM_WOM_DONE) return std::nullopt;
          returned();
          return 0;
      }) {}

std::string MfDevice::open(const std::wstring& path, float factor) {
    factor_ = factor;
    return reader_.open(path);
}

MCIERROR MfDevice::openOutput() {
    if (output_ != nullptr) return 0;
    const WAVEFORMATEXTENSIBLE format = formatOf(reader_);
    const auto window = reinterpret_cast<DWORD_PTR>(returns_.handle());
    const MMRESULT result = waveOutOpen(&output_, WAVE_MAPPER, &format.Format, window, 0, CALLBACK_WINDOW);
    if (result == MMSYSERR_NOERROR) return 0;
    output_ = nullptr;
    return result == WAVERR_BADFORMAT ? MCIERR_WAVE_OUTPUTSUNSUITABLE : MCIERR_WAVE_OUTPUTSINUSE;
}

void MfDevice::close() {
    if (output_ == nullptr) return;
    stop();
    waveOutClose(std::exchange(output_, nullptr));
}

std::int64_t MfDevice::toFrames(DWORD milliseconds) const {
    return static_cast<std::int64_t>(milliseconds) * reader_.rate() / kMilliseconds;
}

MCIERROR MfDevice::play(HWND notified, std::optional<DWORD> from, std::optional<DWORD> to) {
    stop();
    if (const MCIERROR error = openOutput(); error != 0) return error;
    from_ = toFrames(from.value_or(0));
    left_ = to ? std::max<std::int64_t>(toFrames(*to) - from_, 0) : kToTheEnd;
    if (!reader_.seek(from_)) return MCIERR_DRIVER_INTERNAL;
    exhausted_ = broken_ = false;
    notified_ = notified;
    waveOutPause(output_);  // so that it begins with all that lies ready
    fill();
    waveOutRestart(output_);
    return 0;
}

MCIERROR MfDevice::pause() { return waveOutPause(output_) == MMSYSERR_NOERROR ? 0 : MCIERR_HARDWARE; }

MCIERROR MfDevice::resume() { return waveOutRestart(output_) == MMSYSERR_NOERROR ? 0 : MCIERR_HARDWARE; }

MCIERROR MfDevice::stop() {
    notified_ = nullptr;
    rest_.clear();
    if (output_ == nullptr) return 0;
    waveOutReset(output_);
    for (Block& each : blocks_) {
        if (std::exchange(each.queued, false)) waveOutUnprepareHeader(output_, &each.header, sizeof each.header);
    }
    return 0;
}

/// Blocks that were played, or never used, with what follows.
void MfDevice::fill() {
    for (Block& each : blocks_) {
        if (each.queued || exhausted_) continue;
        if (!take(each)) break;
        each.header = {};
        each.header.lpData = reinterpret_cast<char*>(each.samples.data());
        each.header.dwBufferLength = static_cast<DWORD>(each.samples.size() * sizeof(std::int16_t));
        each.queued = waveOutPrepareHeader(output_, &each.header, sizeof each.header) == MMSYSERR_NOERROR;
        if (each.queued && waveOutWrite(output_, &each.header, sizeof each.header) == MMSYSERR_NOERROR) continue;
        if (std::exchange(each.queued, false)) waveOutUnprepareHeader(output_, &each.header, sizeof each.header);
        exhausted_ = broken_ = true;  // the output has gone
    }
    const bool any = std::any_of(blocks_.begin(), blocks_.end(), [](const Block& each) { return each.queued; });
    if (exhausted_ && !any) tellEnd(broken_ ? MCI_NOTIFY_FAILURE : MCI_NOTIFY_SUCCESSFUL);
}

/// False: there is nothing more.
bool MfDevice::take(Block& block) {
    const auto channels = static_cast<std::size_t>(reader_.channels());
    std::size_t wanted = static_cast<std::size_t>(std::max(reader_.rate() / kBlocksPerSecond, 1));
    if (left_ >= 0) wanted = std::min(wanted, static_cast<std::size_t>(left_));
    while (!exhausted_ && rest_.size() < wanted * channels) {
        const auto more = reader_.read();
        broken_ = !more;
        if (!more || more->empty()) {
            exhausted_ = true;
        } else {
            rest_.insert(rest_.end(), more->begin(), more->end());
        }
    }
    const std::size_t count = std::min(wanted * channels, rest_.size());
    const auto end = rest_.begin() + static_cast<std::ptrdiff_t>(count);
    block.samples.assign(rest_.begin(), end);
    rest_.erase(rest_.begin(), end);
    if (factor_ != 1) {
        for (std::int16_t& each : block.samples) each = louder(each, factor_);
    }
    if (left_ >= 0) left_ -= static_cast<std::int64_t>(count / channels);
    exhausted_ = left_ == 0 || (exhausted_ && rest_.empty());
    return count > 0;
}

void MfDevice::returned() {
    if (notified_ == nullptr) return;  // of a part that was stopped
    for (Block& each : blocks_) {
        if (!each.queued || (each.header.dwFlags & WHDR_DONE) == 0) continue;
        waveOutUnprepareHeader(output_, &each.header, sizeof each.header);
        each.queued = false;
    }
    fill();
}

void MfDevice::tellEnd(WPARAM how) {
    if (const HWND told = std::exchange(notified_, nullptr)) PostMessageW(told, MM_MCINOTIFY, how, 0);
}

DWORD MfDevice::place() const {
    MMTIME time{};
    time.wType = TIME_SAMPLES;
    std::int64_t played = 0;
    if (output_ != nullptr && waveOutGetPosition(output_, &time, sizeof time) == MMSYSERR_NOERROR) {
        if (time.wType == TIME_SAMPLES) played = time.u.sample;
        if (time.wType == TIME_BYTES)
            played = time.u.cb / sizeof(std::int16_t) / static_cast<unsigned>(reader_.channels());
    }
    return static_cast<DWORD>((from_ + played) * kMilliseconds / reader_.rate());
}

std::optional<DWORD> MfDevice::status(DWORD item, std::optional<DWORD> /*track*/) const {
    if (item == MCI_STATUS_POSITION) return place();
    if (item == MCI_STATUS_MODE) return notified_ != nullptr ? DWORD{MCI_MODE_PLAY} : DWORD{MCI_MODE_STOP};
    if (item != MCI_STATUS_LENGTH) return std::nullopt;
    const auto length = reader_.milliseconds();
    return length ? std::optional<DWORD>(static_cast<DWORD>(*length)) : std::nullopt;
}

}  // namespace corvane
