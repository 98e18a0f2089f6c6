// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <utility>

#include "pictures/picture_check.h"

namespace corvane::test {

/// A picture file in memory.
class Bytes : public PictureBytes {
public:
    explicit Bytes(std::string bytes) : bytes_(std::move(bytes)) {}
    std::int64_t size() override { return static_cast<std::int64_t>(bytes_.size()); }
    std::string part(std::int64_t from, std::int64_t count) override {
        const auto start = static_cast<std::size_t>(from);
        return start < bytes_.size() ? bytes_.substr(start, static_cast<std::size_t>(count)) : std::string();
    }

private:
    std::string bytes_;
};

inline bool whole(const std::string& bytes) {
    Bytes file(bytes);
    return endsWhole(file);
}

}  // namespace corvane::test
