// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/sound/mci_session.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

#include "platform/mci_control.h"
#include "winapi/media_file.h"
#include "winapi/sound/mf_device.h"
#include "winapi/tags/file_tags.h"
#include "winapi/text.h"
#include "workers/worker.h"

namespace corvane {

namespace {

constexpr UINT kLookMs = 50;
constexpr UINT kDiscLookMs = 250;  ///< asking a drive takes it a moment
constexpr UINT_PTR kLookTimer = 1;
/// A device that stands at its end so long and says that it has stopped has lost its notification.
constexpr int kLooksForLostEnd = 30;

std::int64_t now() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

}  // namespace

MciSession::MciSession(MciThread& thread, Source source, Listener listener)
    : thread_(thread), source_(std::move(source)), listener_(std::move(listener)) {}

// --- Asked from the user-interface thread ---------------------------------------------------------------------------

void MciSession::open() {
    post([](MciSession& self) { self.openNow(); });
}

void MciSession::waitOpened(int milliseconds) {
    std::unique_lock lock(mutex_);
    openedOrFailed_.wait_for(lock, std::chrono::milliseconds(milliseconds),
                             [this] { return facts_.opened || !facts_.reason.empty(); });
}

void MciSession::close() {
    {
        const std::lock_guard lock(mutex_);
        closed_ = true;
    }
    post([](MciSession& self) {
        self.notified_.reset();
        self.device_->close();
        self.listener_ = {};
    });
}

void MciSession::play(std::uint64_t number, const Part& part) {
    {
        const std::lock_guard lock(mutex_);
        number_ = number;
        clock_.hold(part.from);
    }
    post([number, part](MciSession& self) { self.playNow(number, part); });
}

void MciSession::pause(std::uint64_t number) {
    {
        const std::lock_guard lock(mutex_);
        clock_.hold(clock_.place(now()));
    }
    post(&MciSession::pauseNow, number);
}

void MciSession::resume(std::uint64_t number) { post(&MciSession::resumeNow, number); }

void MciSession::stop(std::uint64_t number) {
    {
        const std::lock_guard lock(mutex_);
        number_ = number;
    }
    post(&MciSession::stopNow, number);
}

/// A device that was opened on a thread which hangs is left to that one, with whatever was still meant for it.
void MciSession::post(std::function<void(MciSession&)> job) {
    thread_.post([self = shared_from_this(), job = std::move(job)] {
        if (!self->begun()) self->home_ = MciThread::here();
        if (self->home_ != MciThread::here()) return;
        try {
            job(*self);
        } catch (const std::exception&) {
            self->fail(Worker::kBroken);
        }
    });
}

void MciSession::post(void (MciSession::*job)(std::uint64_t), std::uint64_t number) {
    post([job, number](MciSession& self) { (self.*job)(number); });
}

MciSession::Facts MciSession::facts() const {
    const std::lock_guard lock(mutex_);
    return facts_;
}

std::int64_t MciSession::position() const {
    const std::lock_guard lock(mutex_);
    const std::int64_t place = clock_.place(now());
    return facts_.axis.length > 0 ? std::min(place, facts_.axis.length) : place;
}

// --- Done in the MCI thread -----------------------------------------------------------------------------------------

bool MciSession::isCurrent(std::uint64_t number) const {
    const std::lock_guard lock(mutex_);
    return !closed_ && number == number_ && facts_.reason.empty() && facts_.opened;
}

void MciSession::openNow() {
    const bool disc = source_.deviceType == "CDAudio";
    const std::string refusal = disc ? std::string() : refusalOfFile(toWide(source_.path));
    if (!refusal.empty()) return fail(refusal);
    MciAxis axis;
    if (disc) {
        if (const MCIERROR error = openDisc(); error != 0) return fail(mciErrorText(error));
        learnDisc(axis);
        if (!axis.isDisc()) return fail(mciErrorText(MCIERR_DEVICE_NOT_READY));
    } else {
        if (const std::string reason = openSound(); !reason.empty()) return fail(reason);
        axis.length = static_cast<std::int64_t>(device_->status(MCI_STATUS_LENGTH).value_or(0));
    }
    {
        const std::lock_guard lock(mutex_);
        clock_ = MciClock(axis.perSecond);
        facts_.axis = std::move(axis);
        facts_.opened = true;
    }
    openedOrFailed_.notify_all();
    listener_.opened();
}

std::string MciSession::openSound() {
    const std::wstring path = toWide(source_.path);
    MediaContent content = contentOfFile(path);
    if (source_.deviceType == "Sequencer") content = MediaContent::Midi;
    const float factor = source_.level == SoundLevel::AsRecorded ? 1.0F : levelOfFile(path, source_.level);
    std::string reason;
    for (const SoundEngine engine : enginesFor(startOfFile(path), content, factor != 1)) {
        const std::string its = openBy(engine, path, factor);
        if (its.empty()) return {};
        if (reason.empty()) reason = its;
    }
    return reason;
}

std::string MciSession::openBy(SoundEngine engine, const std::wstring& path, float factor) {
    switch (engine) {
        case SoundEngine::Sequencer:
            // Without a device some systems open all the same, and then the sequence never goes on.
            return midiOutGetNumDevs() == 0 ? mciErrorText(MCIERR_SEQ_NOMIDIPRESENT)
                                            : openMci(L"sequencer", pathForMci(path));
        case SoundEngine::WaveAudio:
            return openMci(L"waveaudio", pathForMci(path));
        case SoundEngine::MpegVideo:
            return openMci(L"mpegvideo", pathForMci(path));
        case SoundEngine::ByName:
            return openMci(L"", pathForMci(path));
        case SoundEngine::MediaFoundation:
            break;
    }
    auto decoder = std::make_unique<MfDevice>();
    std::string reason = decoder->open(path, factor);
    if (!reason.empty()) return reason;
    decoder_ = std::move(decoder);
    device_ = decoder_.get();
    return {};
}

std::string MciSession::openMci(const wchar_t* type, const std::wstring& element) {
    if (const MCIERROR error = mci_.open(type, element); error != 0) return mciErrorText(error);
    mci_.timeFormat(MCI_FORMAT_MILLISECONDS);
    return {};
}

MCIERROR MciSession::openDisc() { return mci_.open(L"cdaudio", discDriveOf(toWide(source_.path))); }

void MciSession::learnDisc(MciAxis& axis) {
    const auto sectors = [](DWORD msf) {
        return unpackTmsf(static_cast<std::int32_t>(msf << 8U)).sectors;  // the same form, one byte higher
    };
    mci_.timeFormat(MCI_FORMAT_MSF);
    const int count = static_cast<int>(device_->status(MCI_STATUS_NUMBER_OF_TRACKS).value_or(0));
    for (int number = 1; number <= count; ++number) {
        const auto track = static_cast<DWORD>(number);
        const auto start = device_->status(MCI_STATUS_POSITION, track);
        const auto length = device_->status(MCI_STATUS_LENGTH, track);
        if (!start || !length) continue;
        const bool audio = device_->status(MCI_CDA_STATUS_TYPE_TRACK, track).value_or(MCI_CDA_TRACK_AUDIO) ==
                           static_cast<DWORD>(MCI_CDA_TRACK_AUDIO);
        axis.tracks.push_back({number, sectors(*start), sectors(*length), audio});
    }
    mci_.timeFormat(MCI_FORMAT_TMSF);
    axis.perSecond = kCdSectorsPerSecond;
    if (axis.isDisc()) axis.length = axis.tracks.back().start + axis.tracks.back().length - axis.tracks.front().start;
}

DWORD MciSession::deviceTime(std::int64_t units) const {
    return facts_.axis.isDisc() ? static_cast<DWORD>(facts_.axis.toPlace(units, kFormatTmsf))
                                : static_cast<DWORD>(units);
}

std::optional<std::int64_t> MciSession::devicePlace() const {
    const auto told = device_->status(MCI_STATUS_POSITION);
    if (!told) return std::nullopt;
    if (!facts_.axis.isDisc()) return std::int64_t{*told};
    return facts_.axis.fromPlace(static_cast<std::int32_t>(*told), kFormatTmsf);
}

void MciSession::playNow(std::uint64_t number, const Part& part) {
    if (!isCurrent(number)) return;
    silence();
    end_ = part.to >= 0 ? part.to : facts_.axis.length;
    if (const MCIERROR error = start(number, part.from, end_); error != 0) fail(mciErrorText(error));
}

/// A window for each play: what an earlier one still has to say goes nowhere.
MCIERROR MciSession::start(std::uint64_t number, std::int64_t from, std::int64_t to) {
    notified_ = std::make_unique<MessageWindow>([this, number](UINT message, WPARAM first, LPARAM) {
        if (message == MM_MCINOTIFY) notified(number, first);
        if (message == WM_TIMER) look(number);
        return message == MM_MCINOTIFY || message == WM_TIMER ? std::optional<LRESULT>(0) : std::nullopt;
    });
    const bool toTheEnd = to <= 0 || (facts_.axis.length > 0 && to >= facts_.axis.length);
    const MCIERROR error = device_->play(notified_->handle(), deviceTime(from),
                                         toTheEnd ? std::nullopt : std::optional<DWORD>(deviceTime(to)));
    if (error != 0) return error;
    sounding_ = notifies_ = true;
    paused_ = false;
    looksAtEnd_ = 0;
    SetTimer(notified_->handle(), kLookTimer, facts_.axis.isDisc() ? kDiscLookMs : kLookMs, nullptr);
    const std::lock_guard lock(mutex_);
    if (number == number_) clock_.start(from, now());
    return 0;
}

void MciSession::silence() {
    notified_.reset();
    if (std::exchange(sounding_, false)) device_->stop();
    paused_ = notifies_ = false;
}

void MciSession::pauseNow(std::uint64_t number) {
    if (!isCurrent(number) || !sounding_ || paused_) return;
    paused_ = true;
    if (device_->pause() != 0) {
        device_->stop();
        notifies_ = false;
    }
    const std::lock_guard lock(mutex_);
    clock_.hold(clock_.place(now()));
}

void MciSession::resumeNow(std::uint64_t number) {
    if (!isCurrent(number) || !sounding_ || !paused_) return;
    const std::int64_t from = position();
    // A device that cannot resume, or has taken back its notification, plays afresh from there.
    if (!notifies_ || device_->resume() != 0) {
        if (const MCIERROR error = start(number, from, end_); error != 0) fail(mciErrorText(error));
        return;
    }
    paused_ = false;
    const std::lock_guard lock(mutex_);
    if (number == number_) clock_.start(from, now());
}

void MciSession::stopNow(std::uint64_t number) {
    if (isCurrent(number)) silence();
}

/// The device's number in the message is not looked at: some devices tell 0.
void MciSession::notified(std::uint64_t number, WPARAM code) {
    if (code == MCI_NOTIFY_SUCCESSFUL) {
        sounding_ = false;  // it has stopped by itself: some devices take their time for another stop
        end(number);
    } else if (code == MCI_NOTIFY_FAILURE) {
        fail(device_->failure());
    } else {
        notifies_ = false;
    }
}

void MciSession::look(std::uint64_t number) {
    if (!sounding_ || paused_) return;
    const auto place = devicePlace();
    if (!place) return;
    {
        const std::lock_guard lock(mutex_);
        if (number == number_) clock_.report(*place, now());
    }
    const bool atEnd = end_ > 0 && *place >= end_;
    looksAtEnd_ = atEnd ? looksAtEnd_ + 1 : 0;
    if (looksAtEnd_ >= kLooksForLostEnd && device_->status(MCI_STATUS_MODE) == DWORD{MCI_MODE_STOP}) end(number);
}

void MciSession::end(std::uint64_t number) {
    const std::int64_t place = end_ > 0 ? end_ : position();
    silence();
    if (!isCurrent(number)) return;
    {
        const std::lock_guard lock(mutex_);
        clock_.hold(place);
    }
    listener_.ended(number, place);
}

void MciSession::fail(const std::string& reason) {
    notified_.reset();
    device_->close();
    sounding_ = false;
    {
        const std::lock_guard lock(mutex_);
        if (!std::exchange(facts_.reason, reason).empty() || closed_) return;
    }
    openedOrFailed_.notify_all();
    if (listener_.failed) listener_.failed(reason);
}

}  // namespace corvane
