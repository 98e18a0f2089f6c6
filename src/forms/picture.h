// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <utility>

namespace corvane {

/// Pixels of a decoded picture. Immutable and shared; each desktop has its own form of them.
class PictureData {
public:
    PictureData() = default;
    PictureData(const PictureData&) = delete;
    PictureData& operator=(const PictureData&) = delete;
    virtual ~PictureData() = default;

    virtual int width() const = 0;   ///< pixels, at least 1
    virtual int height() const = 0;  ///< pixels, at least 1
    /// The pixel at (x, y) as 0xRRGGBB; (x, y) must lie inside.
    virtual std::uint32_t pixel(int x, int y) const = 0;
};

/// A picture, or none. Copying shares the pixels; equality is identity of the pixels.
class Picture {
public:
    Picture() = default;
    explicit Picture(std::shared_ptr<const PictureData> data) : data_(std::move(data)) {}

    bool empty() const { return data_ == nullptr; }
    int width() const { return data_ ? data_->width() : 0; }
    int height() const { return data_ ? data_->height() : 0; }
    const std::shared_ptr<const PictureData>& data() const { return data_; }
    bool operator==(const Picture&) const = default;

private:
    std::shared_ptr<const PictureData> data_;
};

}  // namespace corvane
