// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "forms/controls.h"

namespace corvane {

inline constexpr int kPanelRecord = 0;
inline constexpr int kLastRecord = 40;
inline constexpr std::size_t kSkinFields = 9;

/// A line of a skin's text file, cut at its commas. The fields point into the text.
struct SkinLine {
    explicit SkinLine(std::string_view line);

    std::array<std::string_view, kSkinFields> fields;
    std::size_t count = 0;               ///< how many of the fields it has
    bool tooMany = false;                ///< a comma follows the last field; what is behind it is not read
    std::optional<std::int32_t> number;  ///< its second field; empty: it is not a number, and the line no record
};

/// One line of a skin's text file. Lengths are pixels; those of an element that is not used are not read
/// and stay 0.
struct SkinRecord {
    int number = 0;  ///< 0 the panel, 1 to 40 an element
    int left = 0, top = 0;
    int clipX = 0, clipY = 0;
    int width = 0, height = 0;  ///< may be any 16-bit number
    bool used = false;          ///< false: the element is hidden
    std::string use;            ///< the last field: for texts and the slider a colour
};

/// Reads a line that has a number. Returns what is wrong: the index of the first field that is missing or holds a text
/// where a 16-bit number belongs; empty when nothing is. A blank number is 0.
std::optional<std::size_t> readSkinRecord(const SkinLine& line, SkinRecord& record);

/// Reads the records of a skin's text file one after the other: nine fields a line, commas between, quotes around a
/// text allowed. Lines without a number in the second field are skipped. Lines end with LF, CR or CR LF.
class SkinRecords {
public:
    /// The text must outlive the reader.
    explicit SkinRecords(std::string_view text);

    /// The next record numbered first to last; empty at the end of the text and when it failed.
    std::optional<SkinRecord> next(int first, int last);
    /// A record asked for lacks fields or holds a text where a 16-bit number belongs. Blank numbers are 0.
    bool failed() const { return failed_; }
    std::size_t line() const { return line_; }  ///< of the record given last, or of the one that failed; from 1

private:
    std::string_view rest_;
    std::size_t line_ = 0;
    bool failed_ = false;
};

/// A colour by name or number; empty when the text is neither.
std::optional<Colour> skinColour(std::string_view written);

}  // namespace corvane
