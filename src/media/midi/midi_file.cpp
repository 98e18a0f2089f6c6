// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/midi/midi_file.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace corvane {

namespace {

constexpr double kDefaultTempo = 500'000;  ///< microseconds a quarter
constexpr std::uint8_t kSysex = 0xF0;
constexpr std::uint8_t kEscape = 0xF7;
constexpr std::uint8_t kMeta = 0xFF;
constexpr std::uint8_t kMetaEnd = 0x2F;
constexpr std::uint8_t kMetaTempo = 0x51;

/// Reads bytes; past the end every reading is empty.
class Bytes {
public:
    explicit Bytes(std::string_view bytes) : left_(bytes) {}

    bool empty() const { return left_.empty(); }
    std::optional<std::uint8_t> byte() {
        if (left_.empty()) return std::nullopt;
        const auto value = static_cast<std::uint8_t>(left_.front());
        left_.remove_prefix(1);
        return value;
    }
    std::optional<std::uint8_t> peek() const {
        if (left_.empty()) return std::nullopt;
        return static_cast<std::uint8_t>(left_.front());
    }
    /// As many as there are, at most `count`.
    std::string_view take(std::size_t count) {
        const std::string_view part = left_.substr(0, count);
        left_.remove_prefix(part.size());
        return part;
    }
    /// A number of seven-bit groups, at most four.
    std::optional<std::uint32_t> variable() {
        std::uint32_t value = 0;
        for (int i = 0; i < 4; ++i) {
            const auto next = byte();
            if (!next) return std::nullopt;
            value = value << 7 | (*next & 0x7FU);
            if (!(*next & 0x80)) return value;
        }
        return std::nullopt;
    }

private:
    std::string_view left_;
};

std::uint32_t bigEndian(std::string_view bytes) {
    std::uint32_t value = 0;
    for (const char byte : bytes) value = value << 8 | static_cast<std::uint8_t>(byte);
    return value;
}

std::uint32_t littleEndian(std::string_view bytes) {
    std::uint32_t value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) value = value << 8 | static_cast<std::uint8_t>(bytes[i]);
    return value;
}

struct TickEvent {
    std::uint64_t tick = 0;
    MidiEvent event;
    std::uint32_t tempo = 0;  ///< microseconds a quarter; 0: no change of tempo
};

struct Track {
    std::vector<TickEvent> events;
    std::uint64_t end = 0;
};

/// Reads one track as far as it makes sense.
class TrackReader {
public:
    /// It stops behind one event more than `most`.
    TrackReader(std::string_view bytes, std::vector<std::string>& sysex, std::size_t most)
        : bytes_(bytes), sysex_(sysex), most_(most) {}

    Track read() {
        while (!ended_ && !bytes_.empty() && track_.events.size() <= most_) {
            const auto delta = bytes_.variable();
            if (!delta || bytes_.empty()) break;
            const std::uint64_t before = std::exchange(tick_, tick_ + *delta);
            if (!event()) {
                tick_ = before;
                break;
            }
        }
        track_.end = tick_;
        return std::move(track_);
    }

private:
    bool event() {
        const std::uint8_t first = *bytes_.peek();
        if (first >= 0x80) {
            bytes_.byte();
            if (first == kMeta) return meta();
            if (first == kSysex || first == kEscape) return exclusive(first);
            if (first >= 0xF0) return common(first);
            running_ = first;
        }
        return running_ != 0 && channelMessage();
    }

    bool channelMessage() {
        MidiEvent event;
        event.status = running_;
        const auto first = bytes_.byte();
        if (!first || *first >= 0x80) return false;
        event.data1 = *first;
        const std::uint8_t kind = running_ & 0xF0;
        if (kind != 0xC0 && kind != 0xD0) {
            const auto second = bytes_.byte();
            if (!second || *second >= 0x80) return false;
            event.data2 = *second;
        }
        track_.events.push_back({tick_, event, 0});
        return true;
    }

    bool meta() {
        const auto type = bytes_.byte();
        const auto length = bytes_.variable();
        if (!type || !length) return false;
        const std::string_view data = bytes_.take(*length);
        if (data.size() < *length) return false;
        if (*type == kMetaEnd) ended_ = true;
        if (*type == kMetaTempo && data.size() == 3 && bigEndian(data) > 0)
            track_.events.push_back({tick_, {}, bigEndian(data)});
        return true;
    }

    bool exclusive(std::uint8_t status) {
        const auto length = bytes_.variable();
        if (!length) return false;
        std::string_view data = bytes_.take(*length);
        if (data.size() < *length) return false;
        if (status == kEscape) return true;  // pieces of a message, or raw bytes: nothing for a synthesizer
        if (!data.empty() && static_cast<std::uint8_t>(data.back()) == kEscape) data.remove_suffix(1);
        MidiEvent event;
        event.status = kSysex;
        event.sysex = static_cast<std::int32_t>(sysex_.size());
        sysex_.emplace_back(data);
        track_.events.push_back({tick_, event, 0});
        return true;
    }

    /// Not allowed in files, but found in some: skipped.
    bool common(std::uint8_t status) {
        const std::size_t length = status == 0xF2 ? 2 : status == 0xF1 || status == 0xF3 ? 1 : 0;
        return bytes_.take(length).size() == length;
    }

    Bytes bytes_;
    std::vector<std::string>& sysex_;
    const std::size_t most_;
    Track track_;
    std::uint64_t tick_ = 0;
    std::uint8_t running_ = 0;
    bool ended_ = false;
};

/// The bytes of the MIDI file itself, unwrapped; empty when there is none.
std::string_view unwrap(std::string_view bytes) {
    if (!looksLikeMidi(bytes) || bytes.front() == 'M') return looksLikeMidi(bytes) ? bytes : std::string_view();
    Bytes chunks(bytes.substr(12));
    while (!chunks.empty()) {
        const std::string_view name = chunks.take(4);
        const std::uint32_t length = littleEndian(chunks.take(4));
        const std::string_view data = chunks.take(length);
        if (name == "data") return data.substr(0, 4) == "MThd" ? data : std::string_view();
        if (length % 2 == 1) chunks.take(1);
    }
    return {};
}

/// Microseconds a tick, or, for time in ticks a quarter, how many ticks that are.
struct Division {
    double microsecondsPerTick = 0;  ///< SMPTE; 0: by tempo
    double ticksPerQuarter = 0;
};

Division readDivision(std::uint32_t word) {
    if (!(word & 0x8000)) return {0, static_cast<double>(word)};
    const int rate = 256 - static_cast<int>(word >> 8);
    const double perSecond = (rate == 29 ? 30'000.0 / 1001.0 : rate) * static_cast<double>(word & 0xFF);
    return {perSecond > 0 ? 1e6 / perSecond : 0, 0};
}

/// Turns ticks into microseconds over the changes of tempo.
void workOutTime(std::vector<TickEvent>& events, std::uint64_t endTick, const Division& division,
                 MidiSequence& sequence) {
    double tempo = kDefaultTempo;
    double baseTime = 0;
    std::uint64_t baseTick = 0;
    const auto timeOf = [&](std::uint64_t tick) {
        const auto ticks = static_cast<double>(tick - baseTick);
        const double perTick =
            division.microsecondsPerTick > 0 ? division.microsecondsPerTick : tempo / division.ticksPerQuarter;
        return std::min(baseTime + ticks * perTick, kLongestMidi);
    };
    for (TickEvent& one : events) {
        one.event.microseconds = timeOf(one.tick);
        if (one.tempo == 0) {
            sequence.events.push_back(one.event);
            continue;
        }
        baseTime = one.event.microseconds;
        baseTick = one.tick;
        tempo = one.tempo;
    }
    sequence.microseconds = timeOf(endTick);
}

MidiFile failed(const char* reason) {
    MidiFile file;
    file.reason = reason;
    return file;
}

}  // namespace

bool looksLikeMidi(std::string_view bytes) {
    return bytes.substr(0, 4) == "MThd" ||
           (bytes.size() >= 12 && bytes.substr(0, 4) == "RIFF" && bytes.substr(8, 4) == "RMID");
}

MidiFile readMidi(std::string_view bytes) {
    Bytes chunks(unwrap(bytes));
    if (chunks.empty()) return failed("It is not a MIDI file.");
    chunks.take(4);
    const std::string_view header = chunks.take(bigEndian(chunks.take(4)));
    if (header.size() < 6) return failed("The header of the MIDI file is damaged.");
    const bool inSequence = bigEndian(header.substr(0, 2)) == 2;
    const Division division = readDivision(bigEndian(header.substr(4, 2)));
    if (division.microsecondsPerTick <= 0 && division.ticksPerQuarter <= 0)
        return failed("The header of the MIDI file is damaged.");

    MidiFile file;
    std::vector<TickEvent> events;
    std::uint64_t end = 0;
    bool found = false;
    while (!chunks.empty()) {
        const std::string_view name = chunks.take(4);
        const std::string_view data = chunks.take(bigEndian(chunks.take(4)));
        if (name != "MTrk") continue;
        found = true;
        Track track = TrackReader(data, file.sequence.sysex, kMostMidiEvents - events.size()).read();
        if (track.events.size() > kMostMidiEvents - events.size())
            return failed("The MIDI file holds too many events.");
        const std::uint64_t base = inSequence ? end : 0;
        for (TickEvent& one : track.events) one.tick += base;
        end = std::max(end, base + track.end);
        events.insert(events.end(), track.events.begin(), track.events.end());
    }
    if (!found) return failed("The MIDI file holds no track.");
    std::stable_sort(events.begin(), events.end(),
                     [](const TickEvent& a, const TickEvent& b) { return a.tick < b.tick; });
    workOutTime(events, end, division, file.sequence);
    return file;
}

}  // namespace corvane
