// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QWidget>

namespace corvane {

/// Lays a picture behind a window on the screen: until takePictureAway() the X server itself shows it wherever the
/// window is uncovered or given another size, and does not wait for the program to paint. picture: opaque, device
/// pixels from the window's corner. Does nothing on another window system or on a screen of other than 32 bits a pixel.
void layPictureBehind(const QWidget& window, const QImage& picture);

/// Afterwards the window is the program's alone again.
void takePictureAway(const QWidget& window);

}  // namespace corvane
