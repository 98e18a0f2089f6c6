// SPDX-License-Identifier: GPL-3.0-or-later
#include "skintool/skin_check.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "engine/mdlPublicFunction.h"
#include "panel/skin_builder.h"
#include "panel/skin_records.h"
#include "types/numbers.h"
#include "types/text.h"

namespace corvane {

namespace {

constexpr std::array<std::string_view, kLastRecord + 1> kParts = {"panel",
                                                                  "background",
                                                                  "Power OFF",
                                                                  "Power OFF pressed",
                                                                  "Min Button",
                                                                  "Repeat",
                                                                  "Repeat on",
                                                                  "Shuffle",
                                                                  "Play",
                                                                  "Play pressed",
                                                                  "Pause",
                                                                  "Pause pressed",
                                                                  "Stop",
                                                                  "Prev",
                                                                  "Prev pressed",
                                                                  "Next",
                                                                  "Next pressed",
                                                                  "play-list editor",
                                                                  "editor pressed",
                                                                  "Volume Down",
                                                                  "Volume Up",
                                                                  "display",
                                                                  "first ornament",
                                                                  "second ornament",
                                                                  "volume knob",
                                                                  "indicator 1",
                                                                  "indicator 2",
                                                                  "indicator 3",
                                                                  "mark",
                                                                  "total",
                                                                  "file number",
                                                                  "time",
                                                                  "display text",
                                                                  "title",
                                                                  "auto-start lamp",
                                                                  "auto-start lit",
                                                                  "quick-play lamp",
                                                                  "quick-play lit",
                                                                  "repeat lamp",
                                                                  "repeat lit",
                                                                  "slider"};
constexpr std::array<std::string_view, kSkinFields> kFieldNames = {"element", "record", "left",   "top", "clip x",
                                                                   "clip y",  "width",  "height", "use"};
constexpr int kDisplay = 21;
/// What the display lies over.
constexpr std::array<int, 6> kBelowDisplay = {22, 23, 25, 34, 36, 38};
constexpr int kFirstText = 28, kLastText = 33, kSlider = 40, kKnob = 24;
constexpr int kKnobSide = 14;  ///< pixels; in a smaller knob the mark cannot turn
constexpr std::int32_t kLastColour = 0xFFFFFF;

/// The other picture of a part, which stands in the same place: its first record.
struct Pair {
    int first, second;
    bool placesToo;  ///< the second record places a button as well; otherwise only its picture counts
};
constexpr std::array<Pair, 12> kPairs = {{{2, 3, true},
                                          {5, 6, true},
                                          {8, 9, true},
                                          {10, 11, true},
                                          {13, 14, true},
                                          {15, 16, true},
                                          {17, 18, true},
                                          {25, 26, false},
                                          {25, 27, false},
                                          {34, 35, false},
                                          {36, 37, false},
                                          {38, 39, false}}};

bool isText(int number) { return number >= kFirstText && number <= kLastText; }

std::string named(int number) {
    return "record " + std::to_string(number) + " (" + std::string(skinPartName(number)) + ")";
}

std::string sized(int width, int height) { return std::to_string(width) + " x " + std::to_string(height); }

class Checker {
public:
    explicit Checker(std::optional<BitmapSize> bitmap) : bitmap_(bitmap) {}

    std::vector<SkinMistake> check(std::string_view text) {
        for (std::string_view rest = text::withoutMark(text); !rest.empty();) {
            ++line_;
            checkLine(SkinLine(text::takeLine(rest)));
        }
        line_ = 0;
        checkPanelSize();
        checkMissing();
        for (const Pair& pair : kPairs) checkPair(pair);
        checkInsidePanel();
        checkBelowDisplay();
        std::stable_sort(found_.begin(), found_.end(), [](const auto& a, const auto& b) {
            return (a.line == 0 ? SIZE_MAX : a.line) < (b.line == 0 ? SIZE_MAX : b.line);
        });
        return std::move(found_);
    }

private:
    struct Seen {
        SkinRecord record;
        std::size_t line = 0;
    };

    void error(std::string text) { found_.push_back({line_, true, std::move(text)}); }
    void warn(std::size_t line, std::string text) { found_.push_back({line, false, std::move(text)}); }
    void warn(std::string text) { warn(line_, std::move(text)); }
    std::optional<Seen>& seen(int number) { return seen_[static_cast<std::size_t>(number)]; }

    void checkLine(const SkinLine& line) {
        if (!line.number) return checkHeading(line);
        const int number = *line.number;
        if (number < 0 || number > kLastRecord) {
            return warn("unknown record " + std::to_string(number) + ": records go from 0 to 40; the line is left out");
        }
        given_[static_cast<std::size_t>(number)] = true;
        SkinRecord record;
        if (const auto wrong = readSkinRecord(line, record)) return wrongField(line, number, *wrong);
        if (line.tooMany)
            warn(named(number) + " has more than nine fields: a note with a comma stands in double quotes");
        noteTwice(number);
        if (number == kPanelRecord && seen(number)) return;
        checkCell(record);
        checkUse(record);
        if (number == kKnob && record.used && std::min(record.width, record.height) < kKnobSide) {
            warn(named(number) + " is " + sized(record.width, record.height) + " pixels: its mark needs 14 to turn");
        }
        seen(number) = Seen{std::move(record), line_};
    }

    /// A line without a number is a heading, unless all the rest of a record is there.
    void checkHeading(const SkinLine& line) {
        const bool isRecord = std::all_of(line.fields.begin() + 2, line.fields.begin() + 8,
                                          [](std::string_view field) { return parseNumber(field).has_value(); });
        if (!isRecord) return;
        warn("the record number \"" + std::string(text::trimmed(line.fields[1])) +
             "\" is not a number: the line is left out");
    }

    void wrongField(const SkinLine& line, int number, std::size_t wrong) {
        if (wrong == line.count && line.count < kSkinFields) {
            return error(named(number) + " has " + std::to_string(line.count) + " fields instead of nine");
        }
        error(named(number) + ": " + std::string(kFieldNames[wrong]) + " \"" +
              std::string(text::trimmed(line.fields[wrong])) + "\" is not a whole number from -32768 to 32767");
    }

    void noteTwice(int number) {
        const auto& before = seen(number);
        if (!before) return;
        warn(named(number) + " was given in line " + std::to_string(before->line) + " already; " +
             (number == kPanelRecord ? "that one counts" : "this one counts"));
    }

    void checkCell(const SkinRecord& record) {
        if (!bitmap_ || !record.used || (record.number != kPanelRecord && !needsPicture(record))) return;
        if (liesInside(record, bitmap_->width, bitmap_->height)) return;
        const std::string what =
            record.width < 1 || record.height < 1
                ? named(record.number) + ": a picture of " + sized(record.width, record.height) + " pixels has no area"
                : named(record.number) + ": " + sized(record.width, record.height) + " pixels at " +
                      std::to_string(record.clipX) + ", " + std::to_string(record.clipY) +
                      " reach out of the bitmap of " + sized(bitmap_->width, bitmap_->height);
        if (record.number == kPanelRecord) {
            warn(what + "; the opening shows no picture");
        } else {
            error(what);
        }
    }

    void checkUse(const SkinRecord& record) {
        if (!record.used) return;
        if (isText(record.number) || record.number == kSlider) {
            const auto number = parseNumber(record.use);
            if (!skinColour(record.use)) {
                warn(named(record.number) + ": \"" + record.use + "\" is no colour; the one of the program is kept");
            } else if (number && (*number < 0 || *number > kLastColour)) {
                warn(named(record.number) + ": the colour " + record.use + " is outside 0 to &HFFFFFF");
            }
            return;
        }
        if (record.use != "1") warn(named(record.number) + ": use \"" + record.use + "\" is taken as 1; write 1 or 0");
    }

    void checkPanelSize() {
        const auto& panel = seen(kPanelRecord);
        if (!panel) return;  // told with what is missing
        const SkinRecord& record = panel->record;
        if (isPanelSize(record.width, record.height)) return;
        warn(panel->line, named(kPanelRecord) + " is " + sized(record.width, record.height) +
                              " pixels: a side has 1 to 4096; the panel becomes 512 x 128");
    }

    void checkMissing() {
        for (int number = 0; number <= kLastRecord; ++number) {
            if (given_[static_cast<std::size_t>(number)]) continue;
            std::string text = named(number) + " is missing";
            if (number == kPanelRecord) text += ": the panel becomes 512 x 128";
            if (number > kPanelRecord) text += ": write its line, with 0 as its last field if it is not used";
            warn(0, std::move(text));
        }
    }

    void checkPair(const Pair& pair) {
        const auto& first = seen(pair.first);
        const auto& second = seen(pair.second);
        if (!first || !second) return;
        const SkinRecord& a = first->record;
        const SkinRecord& b = second->record;
        const std::size_t later = std::max(first->line, second->line);
        if (a.used != b.used && pair.placesToo) {
            return warn(later, "of " + named(pair.first) + " and " + named(pair.second) +
                                   " only one is used: the later line shows or hides the button");
        }
        if (!a.used || !b.used) return;
        const bool sameSize = a.width == b.width && a.height == b.height;
        const bool samePlace = a.left == b.left && a.top == b.top;
        if (sameSize && (samePlace || !pair.placesToo)) return;
        warn(later, named(pair.first) + " and " + named(pair.second) + " differ in " +
                        (pair.placesToo ? "place or size: the later line counts" : "size"));
    }

    /// A part that no one can see or reach.
    void checkInsidePanel() {
        const auto& panel = seen(kPanelRecord);
        if (!panel || !isPanelSize(panel->record.width, panel->record.height)) return;
        for (int number = 2; number <= kLastRecord; ++number) {
            const auto& part = seen(number);
            if (!part || !part->record.used) continue;
            const SkinRecord& record = part->record;
            const bool inside = record.left >= 0 && record.top >= 0 &&
                                record.left + record.width <= panel->record.width &&
                                record.top + record.height <= panel->record.height;
            if (inside) continue;
            warn(part->line,
                 named(number) + " reaches out of the panel of " + sized(panel->record.width, panel->record.height));
        }
    }

    void checkBelowDisplay() {
        const auto& display = seen(kDisplay);
        if (!display || !display->record.used) return;
        const SkinRecord& above = display->record;
        for (const int number : kBelowDisplay) {
            const auto& part = seen(number);
            if (!part || !part->record.used) continue;
            const SkinRecord& record = part->record;
            const bool apart = record.left >= above.left + above.width || above.left >= record.left + record.width ||
                               record.top >= above.top + above.height || above.top >= record.top + record.height;
            if (!apart) warn(part->line, named(number) + " is covered by " + named(kDisplay));
        }
    }

    std::optional<BitmapSize> bitmap_;
    std::size_t line_ = 0;
    std::array<bool, kLastRecord + 1> given_{};              ///< there is a line of that number, be it malformed
    std::array<std::optional<Seen>, kLastRecord + 1> seen_;  ///< its last line that could be read
    std::vector<SkinMistake> found_;
};

}  // namespace

std::vector<SkinMistake> checkSkin(std::string_view text, std::optional<BitmapSize> bitmap) {
    return Checker(bitmap).check(text);
}

std::string_view skinPartName(int number) { return kParts[static_cast<std::size_t>(number)]; }

}  // namespace corvane
