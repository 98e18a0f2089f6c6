// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "forms/picture.h"
#include "platform/ports.h"

namespace corvane {

/// The name of the bitmap for dense screens beside a skin's bitmap: NAME@2X.BMP for NAME.BMP. A path works too.
std::string denseName(const std::string& bitmap);

/// The skin's bitmap joined with the one for dense screens, which is read when such a screen first shows it; `pictures`
/// must live then. A missing, damaged or wrong-sized one is left out.
Picture withDense(Pictures& pictures, const Picture& bitmap, const std::string& path);

/// Names of bitmaps without those that only belong to another one of them: they are no skins.
std::vector<std::string> withoutDense(std::vector<std::string> names);

}  // namespace corvane
