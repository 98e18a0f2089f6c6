// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cstring>

#include "fuzz.h"
#include "linux/pictures/qt_pictures.h"
#include "unit/pictures/picture_bytes.h"

namespace corvane {
namespace {

using fuzz::require;

constexpr std::int64_t kMostPixels = 262'144;  ///< larger ones only cost time

std::int64_t pixelsSaid(std::string_view bitmap) {
    if (bitmap.size() < 26) return 0;
    std::array<std::int32_t, 2> sides{};
    std::memcpy(sides.data(), bitmap.data() + 18, sizeof sides);
    return std::llabs(std::int64_t{sides[0]}) * std::llabs(std::int64_t{sides[1]});
}

void checkCell(QtPictures& pictures, const Picture& whole, const Pictures::Cell& cell) {
    const Picture part = pictures.cut(whole, cell);
    const bool inside = cell.x >= 0 && cell.y >= 0 && cell.width > 0 && cell.height > 0 &&
                        std::int64_t{cell.x} + cell.width <= whole.width() &&
                        std::int64_t{cell.y} + cell.height <= whole.height();
    require(part.empty() != inside, "a cell is cut when it lies inside, and only then");
    if (part.empty()) return;
    require(part.width() == cell.width && part.height() == cell.height, "a cell has its size");
    const int right = cell.width - 1;
    const int bottom = cell.height - 1;
    for (const auto& [x, y] : {std::pair{0, 0}, {right, 0}, {0, bottom}, {right, bottom}, {right / 2, bottom / 2}}) {
        require(part.data()->pixel(x, y) == whole.data()->pixel(cell.x + x, cell.y + y), "a cell has its pixels");
    }
}

}  // namespace
}  // namespace corvane

/// A bitmap file behind two cells: one anywhere in 32 bits, one in eight.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    static QtPictures pictures;
    fuzz::Input input(data, size);
    const Pictures::Cell wide{input.number(), input.number(), input.number(), input.number()};
    const Pictures::Cell narrow{input.byte(), input.byte(), input.byte(), input.byte()};
    if (input.rest().substr(0, 2) == "BM" && pixelsSaid(input.rest()) > kMostPixels) return 0;
    test::Bytes file{std::string(input.rest())};
    const auto [picture, reason, lacksRoom] = QtPictures::decodeFrom(file, [] { return false; });
    require(picture.empty() != reason.empty() && picture.empty() >= lacksRoom,
            "a picture, or the reason why there is none");
    checkCell(pictures, picture, wide);
    checkCell(pictures, picture, narrow);
    return 0;
}
