// SPDX-License-Identifier: GPL-3.0-or-later
#include "midi_checks.h"

namespace {

std::string chunk(const char* name, std::string_view data) {
    std::string bytes = name;
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>(data.size() >> (8 * i) & 0xFF);
    bytes += data;
    if (data.size() % 2 == 1) bytes += '\0';
    return bytes;
}

}  // namespace

/// A MIDI file wrapped in RIFF; the same bytes are also wrapped whole, behind a chunk that means nothing.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    fuzz::checkSequence(readMidi(bytes), size);
    if (bytes.substr(0, 4) != "MThd") return 0;
    const std::string wrapped = chunk("RIFF", "RMID" + chunk("LIST", bytes.substr(4)) + chunk("data", bytes));
    fuzz::require(looksLikeMidi(wrapped), "a wrapped file is known");
    fuzz::require(fuzz::same(readMidi(wrapped), readMidi(bytes)), "a wrapped file is the file");
    return 0;
}
