// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace corvane {

/// The numbers 0 to count - 1 in order, from which they are taken one by one by their place among those that are left:
/// what erasing from a list would do, in as many steps as the count has binary digits. Sums is what counts those that
/// are left, by index.
template <class Sums = std::vector<std::uint32_t>>
class Remaining {
public:
    explicit Remaining(std::size_t count) : left_(count), sums_(count + 1) {
        // Each place counts as many numbers before it as its lowest binary digit says.
        for (std::size_t place = 1; place <= count; ++place) sums_[place] = static_cast<std::uint32_t>(place & -place);
        while (top_ * 2 <= count) top_ *= 2;
    }

    std::size_t left() const { return left_; }

    /// Takes the number at that place, which is below left().
    std::size_t take(std::size_t place) {
        std::size_t before = 0;
        for (std::size_t step = top_; step > 0; step /= 2) {
            const std::size_t next = before + step;
            if (next >= sums_.size()) continue;
            const std::size_t there = sums_[next];
            if (there > place) {
                sums_[next] = static_cast<std::uint32_t>(there - 1);
            } else {
                place -= there;
                before = next;
            }
        }
        --left_;
        return before;
    }

private:
    std::size_t left_;
    std::size_t top_ = 1;  ///< the highest binary digit of the count
    Sums sums_;
};

}  // namespace corvane
