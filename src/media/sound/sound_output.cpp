// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/sound_output.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "media/sound/end_watch.h"
#include "media/sound/pulse_sink.h"

namespace corvane {

namespace {

using Steady = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kPeriod{kHeldBySinkMs / 4};  ///< between two looks while playing
constexpr milliseconds kUnplaced{10};               ///< while the server has not said when a run began
constexpr milliseconds kRingOut{300};               ///< what ended is heard so long before the stream is held
constexpr milliseconds kKeepStream{5'000};          ///< an idle stream wakes now and then: it goes after this
constexpr milliseconds kStuck{3'000};               ///< a server that takes nothing for so long counts as gone
constexpr milliseconds kLeave{500};                 ///< for the reading thread at the end
constexpr std::size_t kBlock = 2048;                ///< frames read at a time, so that a command waits little

/// An end is told early, so the next sound waits for the tail of the one before, but not for a lame server.
constexpr double kMostTailSeconds = 0.1;

enum class Run { Stopped, Playing, Held };

}  // namespace

/// What the reading thread does. Members marked shared are guarded by the mutex; the rest is the thread's own.
class SoundOutput::Reader {
public:
    explicit Reader(bool silent) : silent_(silent) {}

    void run();
    void breakOff();
    std::int64_t position() const;
    void freeze();
    void interrupt() {
        if (part && part->sound) part->sound->stopping = true;
    }

    std::mutex mutex;
    std::condition_variable wake;

    // shared
    bool quit = false;
    bool warm = false;
    bool heldBack = false;
    std::uint64_t number = 0;  ///< of the part
    std::optional<Part> part;
    Run wanted = Run::Stopped;
    std::uint64_t changes = 0;
    double heard = 0;  ///< frames; where the part stands, at `heardAt` when `ticking`
    Steady::time_point heardAt;
    bool ticking = false;
    mutable std::int64_t reported = 0;

private:
    using Guard = std::unique_lock<std::mutex>;
    void obey(Guard& guard);
    void begin(Guard& guard);
    void pump(Guard& guard);
    void follow();
    bool finished();
    void rest(Guard& guard);
    void takeSink(PcmFormat format, double pendingFrames);
    void replaceLostSink();
    bool sameFormat(PcmFormat format) const {
        return format.rate == format_.rate && format.channels == format_.channels;
    }

    const bool silent_;
    std::optional<PulseLink> link_;
    std::unique_ptr<PcmSink> sink_;
    std::unique_ptr<PcmSink> leaving_;  ///< another format's stream, until the end of its sound was heard
    PcmFormat format_{0, 0};
    Steady::time_point sinkTried_;
    Steady::time_point sinkTook_;  ///< when it last wanted something, or had no reason to
    std::uint64_t seen_ = 0;       ///< changes obeyed
    std::uint64_t current_ = 0;    ///< number of the part that is being read
    Part reading_;
    std::int64_t read_ = 0;  ///< frames of the sound given to the sink
    bool atEnd_ = false;     ///< nothing more to read
    EndWatch end_;
    bool done_ = true;  ///< the end was told, or nothing was begun
    bool corked_ = true;
    Run state_ = Run::Stopped;
    bool placed_ = false;  ///< the clock stands where the sink said, since the run began
    Steady::time_point idleSince_;
    std::vector<float> block_;
};

std::int64_t SoundOutput::Reader::position() const {
    double now = heard;
    if (ticking) now += std::chrono::duration<double>(Steady::now() - heardAt).count() * part->sound->format().rate;
    auto frame = static_cast<std::int64_t>(now);
    if (part && part->to != kToEnd) frame = std::min(frame, part->to);
    if (part && part->sound->frames() > 0) frame = std::min(frame, part->sound->frames());
    reported = std::max(reported, frame);
    return reported;
}

void SoundOutput::Reader::freeze() {
    if (!part) return;
    heard = static_cast<double>(position());
    ticking = false;
}

void SoundOutput::Reader::takeSink(PcmFormat format, double pendingFrames) {
    sink_.reset();
    end_.reset();
    corked_ = true;
    format_ = format;
    sinkTried_ = sinkTook_ = Steady::now();
    if (!silent_) {
        if (!link_) link_.emplace("Corvane");
        sink_ = PulseSink::open(*link_, format);
    }
    if (sink_) {
        // What was swallowed in silence stays silent, so that the place in the sound does not jump.
        const std::vector<float> silence(
            static_cast<std::size_t>(std::max(0.0, pendingFrames)) * static_cast<std::size_t>(format.channels), 0.0F);
        if (!silence.empty()) sink_->write(silence.data(), silence.size() / static_cast<std::size_t>(format.channels));
    } else {
        sink_ = std::make_unique<ClockSink>(format, pendingFrames);
        sink_->hold(true);
    }
}

/// The server has gone: the clock goes on in its place. It is back: its stream takes over where the clock stands.
void SoundOutput::Reader::replaceLostSink() {
    const bool stuck = sink_->audible() && !corked_ && !atEnd_ && Steady::now() - sinkTook_ > kStuck;
    const bool lost = stuck || !sink_->alive();
    const bool retry = !silent_ && !sink_->audible() && Steady::now() - sinkTried_ > milliseconds(PulseLink::kRetryMs);
    if (!lost && !(retry && link_ && link_->ready(50))) {
        if (retry) sinkTried_ = Steady::now();
        return;
    }
    double pending = 0;
    {
        const Guard guard(mutex);
        pending = static_cast<double>(read_ - position());
    }
    if (lost) {
        sink_ = std::make_unique<ClockSink>(format_, pending);
        end_.reset();
        sinkTried_ = Steady::now();
    } else {
        takeSink(format_, pending);
        sink_->hold(false);
    }
    corked_ = placed_ = false;
}

/// A new part: seeks, and gets the stream ready. What rings out from the part before is left alone.
void SoundOutput::Reader::begin(Guard& guard) {
    const bool ringing = done_;
    reading_ = *part;
    current_ = number;
    reading_.sound->stopping = false;
    guard.unlock();
    const PcmFormat format = reading_.sound->format();
    if (!sink_ || !sink_->alive() || !sameFormat(format) || (!silent_ && !sink_->audible())) {
        double tailSeconds = 0;
        if (sink_ && sink_->alive() && ringing && !corked_) {
            tailSeconds = std::min(sink_->pending().value_or(0) / format_.rate, kMostTailSeconds);
            leaving_ = std::move(sink_);
        }
        takeSink(format, tailSeconds * format.rate);
    } else if (!ringing || corked_) {
        sink_->flush();
    }
    reading_.sound->seek(reading_.from);
    read_ = reading_.from;
    block_.resize(kBlock * static_cast<std::size_t>(format.channels));
    atEnd_ = done_ = false;
    guard.lock();
    if (seen_ != changes) current_ = 0;  // what came meanwhile may have cut the seek short: played on, it begins anew
}

void SoundOutput::Reader::obey(Guard& guard) {
    if (std::exchange(warm, false) && !sink_) {
        guard.unlock();
        takeSink({44100, 2}, 0);
        idleSince_ = Steady::now();
        guard.lock();
    }
    if (seen_ == changes) return;
    seen_ = changes;
    end_.reset();
    placed_ = false;
    const Run before = state_;
    state_ = part ? wanted : Run::Stopped;
    if (state_ == Run::Playing && current_ != number) return begin(guard);
    const bool hold = state_ != Run::Playing;
    if (sink_ && state_ == Run::Stopped && before != Run::Stopped && !done_) {
        sink_->hold(true);
        sink_->flush();
        corked_ = done_ = true;
    } else if (sink_ && state_ != before && !done_) {
        sink_->hold(hold);
        corked_ = hold;
    }
    if (state_ == Run::Playing) {
        sinkTook_ = Steady::now();
        ticking = true;
        heardAt = Steady::now();
    } else {
        reading_.sound.reset();
        if (state_ == Run::Held) reading_ = *part;
        idleSince_ = Steady::now();
    }
}

/// Gives the sink what it wants.
void SoundOutput::Reader::pump(Guard& guard) {
    if (heldBack) wake.wait_for(guard, kMostHeldBack, [this] { return quit || !heldBack || seen_ != changes; });
    if (seen_ != changes) return;
    heldBack = false;
    reading_.sound->stopping = false;
    while (!atEnd_ && seen_ == changes) {
        std::size_t room = std::min(sink_->writable(), kBlock);
        const std::int64_t left = reading_.to == kToEnd ? INT64_MAX : reading_.to - read_;
        const bool full = left <= 0;
        if (room > 0) sinkTook_ = Steady::now();
        if (!full) room = static_cast<std::size_t>(std::min(left, static_cast<std::int64_t>(room)));
        if (room == 0 && !full) {
            // A stream that is full before it has begun, of the silence for another one's tail, must begin to get room.
            if (corked_) sink_->hold(false);
            corked_ = false;
            return;
        }
        guard.unlock();
        const std::size_t got = full ? 0 : reading_.sound->read(block_.data(), room);
        if (got > 0) sink_->write(block_.data(), got);
        guard.lock();
        read_ += static_cast<std::int64_t>(got);
        if (seen_ != changes) return;
        atEnd_ = got < room || full;
        if (corked_) {
            sink_->hold(false);
            corked_ = false;
        }
        if (!ticking) {
            ticking = true;
            heardAt = Steady::now();
        }
    }
}

/// Leads the clock that position() reads after what the sink says: at once as it first says where a run began, later in
/// small steps.
void SoundOutput::Reader::follow() {
    const std::optional<double> pending = sink_->pending();
    if (!ticking) return;
    const Steady::time_point now = Steady::now();
    const double rate = reading_.sound->format().rate;
    heard += std::chrono::duration<double>(now - heardAt).count() * rate;
    heardAt = now;
    if (!pending) return;
    const double error = static_cast<double>(read_) - *pending - heard;
    const bool far = error > rate * 0.3 || error < -rate * 0.3;
    heard += far || !std::exchange(placed_, true) ? error : error * 0.15;
    // Below the beginning while the server has not begun to be heard.
    heard = std::clamp(heard, static_cast<double>(reading_.from) - rate, static_cast<double>(read_));
}

bool SoundOutput::Reader::finished() {
    if (!atEnd_) return false;
    const double rate = reading_.sound->format().rate;
    const double early = sink_->audible() ? reading_.earlySeconds * rate : rate * 0.001;
    const std::optional<double> pending = sink_->pending();
    return pending ? end_.heard(*pending, early, rate, Steady::now()) : heard >= static_cast<double>(read_) - early;
}

/// Nothing plays: lets the last sound ring out, holds the stream, and in the end gives it back.
void SoundOutput::Reader::rest(Guard& guard) {
    const Steady::duration idle = Steady::now() - idleSince_;
    if (!sink_) {
        wake.wait(guard, [this] { return quit || warm || seen_ != changes; });
        return;
    }
    Steady::time_point until = idleSince_ + kKeepStream;
    if (!corked_) {
        until = idleSince_ + kRingOut;
        if (idle >= kRingOut) {
            sink_->hold(true);
            sink_->flush();
            corked_ = true;
            leaving_.reset();
            return;
        }
    } else if (state_ == Run::Held) {
        wake.wait(guard, [this] { return quit || seen_ != changes; });
        return;
    } else if (idle >= kKeepStream) {
        sink_.reset();
        return;
    }
    wake.wait_until(guard, until, [this] { return quit || seen_ != changes; });
}

void SoundOutput::Reader::run() {
    Guard guard(mutex);
    while (!quit) {
        obey(guard);
        if (quit) break;
        if (state_ != Run::Playing || done_) {
            if (seen_ == changes) rest(guard);
            continue;
        }
        guard.unlock();
        if (leaving_ && (!leaving_->alive() || leaving_->pending().value_or(0) < 1)) leaving_.reset();
        replaceLostSink();
        guard.lock();
        pump(guard);
        if (seen_ != changes) continue;
        follow();
        if (finished()) {
            done_ = true;
            heard = static_cast<double>(read_);
            ticking = false;
            reported = std::max(reported, read_);
            idleSince_ = Steady::now();
            if (reading_.ended) reading_.ended(read_);
            continue;
        }
        Steady::duration nap = kPeriod;
        if (!placed_) nap = kUnplaced;
        if (atEnd_) nap = milliseconds(5);
        wake.wait_for(guard, nap, [this] { return quit || seen_ != changes; });
    }
}

/// There was no memory to go on with: what played ends where it stands, and a new thread begins anew.
void SoundOutput::Reader::breakOff() {
    sink_.reset();
    leaving_.reset();
    const Guard guard(mutex);
    freeze();
    done_ = corked_ = true;
    current_ = 0;
    if (part && part->ended && wanted == Run::Playing) part->ended(position());
}

SoundOutput::SoundOutput(bool silent) : reader_(std::make_shared<Reader>(silent)) { runs(); }

SoundOutput::~SoundOutput() {
    command([this] { reader_->quit = true; });
    thread_.wait(kLeave);
}

/// Starts the reading thread where it does not run: the system may have refused it before.
bool SoundOutput::runs() {
    if (!thread_.wait(milliseconds(0))) return true;
    return thread_.start([reader = reader_](const Worker::GiveUp&) { reader->run(); },
                         [reader = reader_] { reader->breakOff(); });
}

void SoundOutput::command(const std::function<void()>& change) {
    const std::lock_guard lock(reader_->mutex);
    reader_->interrupt();
    change();
    ++reader_->changes;
    reader_->wake.notify_all();
}

void SoundOutput::warmUp() {
    if (!runs()) return;
    const std::lock_guard lock(reader_->mutex);
    reader_->warm = true;
    reader_->wake.notify_all();
}

std::uint64_t SoundOutput::play(Part part) {
    if (!runs()) return 0;
    std::uint64_t number = 0;
    command([&] {
        Reader& reader = *reader_;
        number = ++reader.number;
        reader.heard = static_cast<double>(part.from);
        reader.reported = part.from;
        reader.ticking = false;
        reader.heldBack = part.heldBack;
        reader.part = std::move(part);
        reader.wanted = Run::Playing;
    });
    return number;
}

void SoundOutput::release(std::uint64_t part) {
    const std::lock_guard lock(reader_->mutex);
    if (part != reader_->number) return;
    reader_->heldBack = false;
    reader_->wake.notify_all();
}

void SoundOutput::pause(std::uint64_t part) {
    command([&] {
        if (part != reader_->number) return;
        reader_->freeze();
        reader_->wanted = Run::Held;
    });
}

void SoundOutput::resume(std::uint64_t part) {
    command([&] {
        if (part == reader_->number) reader_->wanted = Run::Playing;
    });
}

void SoundOutput::stop(std::uint64_t part) {
    command([&] {
        if (part != reader_->number) return;
        reader_->freeze();
        reader_->wanted = Run::Stopped;
        reader_->part.reset();
    });
}

std::int64_t SoundOutput::position(std::uint64_t part) const {
    const std::lock_guard lock(reader_->mutex);
    return part == reader_->number ? reader_->position() : -1;
}

}  // namespace corvane
