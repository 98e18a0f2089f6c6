// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "forms/picture.h"

namespace corvane {

inline constexpr int kDenseFactor = 2;     ///< a dense picture has so many times the pixels across and down
inline constexpr double kDenseFrom = 1.5;  ///< screen pixels to a form's pixel from which dense pictures are shown

/// What the Pictures of a desktop also are when it can show a picture with more pixels than its form has.
class DensePictures {
public:
    virtual ~DensePictures() = default;
    /// The plain picture with another one's pixels for dense screens; parts cut out of it have both. `dense` gives a
    /// picture kDenseFactor times as wide and high, or none. It is asked once, by the event loop's thread, when a
    /// screen that is dense shows the picture for the first time: a window can come to such a screen later.
    virtual Picture paired(const Picture& plain, std::function<Picture()> dense) = 0;
};

}  // namespace corvane
