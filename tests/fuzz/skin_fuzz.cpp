// SPDX-License-Identifier: GPL-3.0-or-later
#include <limits>

#include "engine/player.h"
#include "fake/fake_machine.h"
#include "fuzz.h"
#include "panel/skin_builder.h"
#include "panel/skin_records.h"

namespace corvane {
namespace {

using fuzz::require;

/// All records of the text; the last one of a text that fails is marked by number -1.
std::vector<SkinRecord> recordsOf(std::string_view text) {
    std::vector<SkinRecord> all;
    SkinRecords records(text);
    while (auto record = records.next(kPanelRecord, kLastRecord)) all.push_back(std::move(*record));
    if (records.failed()) {
        all.emplace_back();
        all.back().number = -1;
    }
    return all;
}

bool is16Bit(int number) {
    using Limits = std::numeric_limits<std::int16_t>;
    return number >= Limits::min() && number <= Limits::max();
}

void checkRecords(std::string_view text) {
    const std::vector<SkinRecord> records = recordsOf(text);
    std::string otherLineEnds;
    for (const char c : text) otherLineEnds += c == '\n' ? std::string("\r\n") : std::string(1, c);
    const std::vector<SkinRecord> again = recordsOf(otherLineEnds);
    require(records.size() == again.size(), "line ends do not matter");
    for (std::size_t i = 0; i < records.size(); ++i) {
        const SkinRecord& one = records[i];
        require(one.number >= -1 && one.number <= kLastRecord, "records have their numbers");
        require(is16Bit(one.left) && is16Bit(one.top) && is16Bit(one.clipX) && is16Bit(one.clipY) &&
                    is16Bit(one.width) && is16Bit(one.height),
                "lengths are 16-bit numbers");
        require(one.number == again[i].number && one.use == again[i].use && one.width == again[i].width,
                "line ends do not matter");
    }
}

void checkPanel(std::string_view text, const Picture& bitmap) {
    static FakeMachine machine;
    static Ports ports = machine.ports();
    static Player player(ports);
    MainPanelControls panel;
    Image background(nullptr, "background");
    machine.clearCalls();
    applyPanelRecord(text, bitmap, machine.pictures, player, background);
    require(isPanelSize(player.gPanelWidth, player.gPanelHeight), "the panel has a size that a window can have");
    const bool applied = applySkin(text, bitmap, machine.pictures, player, panel);
    require(player.gVolumeX >= 0 && player.gVolumeY >= 0 && player.gVolumeRadius >= 0 && player.gSlideWidth >= 0,
            "knob and slider have sizes");
    if (!applied) return;
    for (const CommandButton& button : panel.cmdMainPanel) {
        const Picture picture = button.Picture;
        require(picture.width() <= bitmap.width() && picture.height() <= bitmap.height(), "pictures lie in the bitmap");
    }
}

}  // namespace
}  // namespace corvane

/// A skin's text behind two bytes for the sides of its bitmap.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    fuzz::Input input(data, size);
    const int width = input.byte() * 4 + 1;
    const int height = input.byte() * 4 + 1;
    checkRecords(input.rest());
    checkPanel(input.rest(), makePicture(width, height, {0x808080}));
    return 0;
}
