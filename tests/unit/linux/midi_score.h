// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>

namespace corvane::test {

/// The bytes of a number, the most significant first.
inline std::string bigNumber(std::size_t value, int length) {
    std::string text;
    for (int i = length - 1; i >= 0; --i) text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
}

/// Bytes of a track, with its times.
inline std::string midiBytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values) text += static_cast<char>(value);
    return text;
}

/// A file of tracks. `division`: ticks a quarter, or SMPTE frames and ticks of one.
inline std::string midiFile(std::size_t division, std::initializer_list<std::string> tracks) {
    std::string file = "MThd" + bigNumber(6, 4) + bigNumber(tracks.size() > 1 ? 1 : 0, 2) +
                       bigNumber(tracks.size(), 2) + bigNumber(division, 2);
    for (const std::string& track : tracks)
        file += "MTrk" + bigNumber(track.size() + 4, 4) + track + midiBytes({0, 0xFF, 0x2F, 0});
    return file;
}

/// Events of a track whose ticks are milliseconds.
class Score {
public:
    /// Waits for less than 16 seconds, then sends the bytes.
    Score& after(int milliseconds, std::initializer_list<int> message) {
        events_ += static_cast<char>(0x80 | milliseconds >> 7);
        events_ += static_cast<char>(milliseconds & 0x7F);
        for (const int byte : message) events_ += static_cast<char>(byte);
        return *this;
    }
    std::string file() const {
        return midiFile(0xE728, {events_ + midiBytes({0x87, 0x68, 0xB0, 1, 0})});  // a second for what rings out
    }

private:
    std::string events_;
};

}  // namespace corvane::test
