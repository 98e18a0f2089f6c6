// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <limits>
#include <string>

#include "controls/mci_axis.h"
#include "controls/media_content.h"
#include "controls/sound_header.h"
#include "fuzz.h"
#include "platform/mci_control.h"

// What the Windows program reads of others without the system's help: what a file is by its first bytes, and the
// numbers that a sound device tells of a disc and of places on it.
namespace corvane {
namespace {

using fuzz::require;

void checkContent(std::string_view start) {
    const MediaContent content = contentOf(start);
    require(content != MediaContent::Missing, "bytes are of some content");
    require(
        contentOf(start.substr(0, 1024)) == content || content == MediaContent::Other || content == MediaContent::Text,
        "the head tells a sequence and a wave");
    if (content == MediaContent::Text) require(!refusalOf(content).empty(), "a list is refused");
    if (start.find('\0') != std::string_view::npos && start.substr(0, 2) != "\xFF\xFE" &&
        start.substr(0, 2) != "\xFE\xFF")
        require(content != MediaContent::Text, "bytes are no text");
}

/// What a header says is read inside the file, in a bounded number of pieces.
void checkSamples(std::string_view file) {
    int reads = 0;
    refusalOfSamples([&](std::uint64_t place, std::size_t count) {
        constexpr int kMostReads = 300;
        require(++reads <= kMostReads && count <= 64 * 1024, "a few pieces are read");
        return place < file.size() ? std::string(file.substr(static_cast<std::size_t>(place), count)) : std::string();
    });
}

/// As a device tells a disc: any numbers.
MciAxis axisOf(fuzz::Input& input) {
    MciAxis axis;
    axis.perSecond = std::max(1, static_cast<int>(input.byte()) * 4);
    axis.length = input.number();
    for (int count = input.byte() % 100, number = 1; number <= count; ++number) {
        CdTrack track;
        track.number = number;
        track.start = input.number();
        track.length = input.number();
        axis.tracks.push_back(track);
    }
    return axis;
}

void checkAxis(const MciAxis& axis, fuzz::Input& input) {
    const std::int64_t most = axis.length > 0 ? axis.length : std::numeric_limits<std::int64_t>::max();
    while (!input.empty()) {
        const int format = input.byte() % 2 == 0 ? kFormatTmsf : kFormatMilliseconds;
        const std::int64_t units = axis.fromPlace(input.number(), format);
        require(units >= 0 && units <= most, "a place is held inside the length");
        axis.toPlace(units, format);
        axis.endOf(input.number(), units, format);
        axis.trackLength(input.byte());
    }
}

}  // namespace
}  // namespace corvane

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    fuzz::Input input(data, size);
    checkContent(input.rest());
    checkSamples(input.rest());
    const MciAxis axis = axisOf(input);
    checkAxis(axis, input);
    return 0;
}
