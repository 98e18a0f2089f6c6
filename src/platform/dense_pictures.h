// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/picture.h"

namespace corvane {

inline constexpr int kDenseFactor = 2;     ///< a dense picture has so many times the pixels across and down
inline constexpr double kDenseFrom = 1.5;  ///< screen pixels to a form's pixel from which dense pictures are shown

/// What the Pictures of a desktop also are when it can show a picture with more pixels than its form has.
class DensePictures {
public:
    virtual ~DensePictures() = default;
    /// Some screen shows a form's pixel with kDenseFrom or more of its own.
    virtual bool denseWanted() const = 0;
    /// The plain picture with the dense one's pixels for dense screens; parts cut out of it have both. The dense one
    /// is kDenseFactor times as wide and high.
    virtual Picture paired(const Picture& plain, const Picture& dense) = 0;
};

}  // namespace corvane
