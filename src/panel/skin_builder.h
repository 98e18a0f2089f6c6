// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// Reads the panel record of the skin's text file gTextPath: sets gPanelWidth and gPanelHeight, 512 by 128 without a
/// usable one, and when the record asks for it puts the panel's background, cut out of the skin's bitmap, on the image.
/// A size outside 1 to 4096 pixels is a reading error. Errors end the reading silently.
void readPanelRecord(Player& player, Image& background);

/// Builds the panel from records 1 to 40: pictures cut out of the bitmap that the menu window holds, places, colours,
/// the slider's full width and the knob's geometry. An element whose record says "0" is hidden; the last record of an
/// element wins. False: the text file cannot be read, a record of it is malformed, or a picture does not lie inside
/// the bitmap; the panel is then not to be shown.
///
/// The knob's centre is the middle of its picture (record 24); its radius keeps the indicator inside the picture.
bool buildPanel(Player& player, MainPanelControls& panel);

}  // namespace corvane
