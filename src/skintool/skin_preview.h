// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <string>
#include <utility>
#include <vector>

#include "skintool/skin_files.h"

namespace corvane {

/// A picture of each state of the panel by the state's name, painted as the player paints it. Empty: the panel cannot
/// be shown. scale: 0.5 to 4. Needs a QApplication; its platform may be one without a display.
std::vector<std::pair<std::string, QImage>> previewSkin(const Skin& skin, double scale);

}  // namespace corvane
