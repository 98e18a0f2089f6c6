// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "pictures/picture_check.h"

namespace corvane {

/// A file read forward in pieces.
class ByteWalk {
public:
    explicit ByteWalk(PictureBytes& file) : file_(file), size_(file.size()) {}

    std::int64_t at = 0;

    bool ended() const { return at >= size_; }
    /// A number at the place, which moves behind it; -1 where the file ends first.
    std::int64_t number(int count, bool bigFirst = false) {
        std::int64_t value = 0;
        for (int i = 0; i < count; ++i) {
            const int byte = next();
            if (byte < 0) return -1;
            value = bigFirst ? value << 8 | byte : value | std::int64_t{byte} << (8 * i);
        }
        return value;
    }
    /// The byte at the place, which moves behind it; -1 where the file ends.
    int next() { return holdsPlace() ? static_cast<std::uint8_t>(piece_[static_cast<std::size_t>(at++ - from_)]) : -1; }
    /// Moves behind the next such byte; false: there is none.
    bool pass(char byte) {
        while (holdsPlace()) {
            const std::size_t found = piece_.find(byte, static_cast<std::size_t>(at - from_));
            if (found != std::string::npos) {
                at = from_ + static_cast<std::int64_t>(found) + 1;
                return true;
            }
            at = from_ + static_cast<std::int64_t>(piece_.size());
        }
        return false;
    }

private:
    static constexpr std::int64_t kPiece = 262144;

    bool holdsPlace() {
        if (at >= from_ && at < from_ + static_cast<std::int64_t>(piece_.size())) return true;
        if (at < 0 || ended()) return false;
        from_ = at;
        piece_ = file_.part(from_, kPiece);
        return !piece_.empty();
    }

    PictureBytes& file_;
    std::int64_t size_;
    std::int64_t from_ = 0;  ///< where the piece lies
    std::string piece_;
};

}  // namespace corvane
