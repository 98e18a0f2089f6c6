// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

/// What every target shares. A target is a function over bytes that aborts when something does not hold.
namespace corvane::fuzz {

/// Aborts, saying what does not hold.
inline void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

/// The bytes of one run, taken from the front. Past the end everything is 0 or empty.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : left_(reinterpret_cast<const char*>(data), size) {}

    std::uint8_t byte() {
        if (left_.empty()) return 0;
        const auto value = static_cast<std::uint8_t>(left_.front());
        left_.remove_prefix(1);
        return value;
    }
    std::int32_t number() {
        std::uint32_t value = 0;
        for (int i = 0; i < 4; ++i) value = value << 8 | byte();
        return static_cast<std::int32_t>(value);
    }
    /// The bytes up to the mark, which is taken off, too.
    std::string until(char mark) {
        const std::size_t end = left_.find(mark);
        const std::string text(left_.substr(0, end));
        left_.remove_prefix(end == std::string_view::npos ? left_.size() : end + 1);
        return text;
    }
    std::string_view rest() const { return left_; }
    bool empty() const { return left_.empty(); }

private:
    std::string_view left_;
};

}  // namespace corvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
