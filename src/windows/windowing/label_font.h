// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "winapi/api.h"

namespace corvane {

/// The font of a label that is so many screen pixels high. Its digits are all of one width, so that a running time
/// stands still.
class LabelFont {
public:
    explicit LabelFont(double labelHeight);
    LabelFont(const LabelFont&) = delete;
    LabelFont& operator=(const LabelFont&) = delete;
    ~LabelFont() { DeleteObject(font_); }

    HFONT handle() const { return font_; }
    int width(const std::wstring& text) const;  ///< screen pixels

private:
    HFONT font_;
};

}  // namespace corvane
