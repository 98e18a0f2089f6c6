// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <string>

namespace corvane::test {

/// What a stopped panel without texts must look like, composed from the skin's two files by rules written down here a
/// second time, apart from the program's own builder. The knob's round indicator is not drawn.
QImage expectedPanel(const std::string& csvPath, const std::string& bitmapPath);

/// The panel's size that the skin's first record 0 gives, pixels.
QSize expectedSize(const std::string& csvPath);

}  // namespace corvane::test
