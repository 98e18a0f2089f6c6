// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "engine/player.h"
#include "panel/skin_records.h"

namespace corvane {

inline constexpr std::size_t kMostSkinTextBytes = std::size_t{4} * 1024 * 1024;
inline constexpr int kMostPanelPixels = 4096;  ///< a side; a larger window would need absurd memory

/// The record names a part of the bitmap: it is used, and neither a text nor the slider.
bool needsPicture(const SkinRecord& record);
/// The record's part of the bitmap has an area and lies inside a bitmap of that size.
bool liesInside(const SkinRecord& record, int width, int height);
bool isPanelSize(int width, int height);

/// Reads the panel record: sets gPanelWidth and gPanelHeight, and when the record asks for it puts the panel's
/// background, cut out of the skin's bitmap, on the image. Without a usable record nothing is changed.
void applyPanelRecord(std::string_view text, const Picture& bitmap, Pictures& pictures,
                      mdlDefinePublic::PlayerState& state, Image& background);

/// The first record that keeps a skin from being shown.
struct SkinFault {
    std::size_t line = 0;  ///< of the text, from 1
    bool outside = false;  ///< its part does not lie inside the bitmap; otherwise the line is malformed
};
/// Looks through records 1 to 40 for a bitmap of that size; empty: the skin can be shown.
std::optional<SkinFault> firstSkinFault(std::string_view text, int width, int height);

/// What would keep the pair of files from being shown as a skin, in words with the path; empty: nothing would. Reads
/// both, as the next start does.
std::string trySkin(Ports& ports, const std::string& bitmapPath, const std::string& textPath);

/// Applies records 1 to 40 to the panel, each in its turn: pictures cut out of the bitmap, places, colours, the
/// slider's full width and the knob's geometry. An element whose record says "0" is hidden and keeps what earlier
/// records gave it. False: a record is malformed, or a picture does not lie inside the bitmap; the panel is then not to
/// be shown.
///
/// The knob's centre is the middle of its picture (record 24); its radius keeps the indicator inside the picture.
bool applySkin(std::string_view text, const Picture& bitmap, Pictures& pictures, mdlDefinePublic::PlayerState& state,
               MainPanelControls& panel);

/// applyPanelRecord with the skin's text file gTextPath and the bitmap that the menu window holds, over a panel of 512
/// by 128 pixels. Errors end the reading silently.
void readPanelRecord(Player& player, Image& background);

/// applySkin with the same. False also when the text file cannot be read.
bool buildPanel(Player& player, MainPanelControls& panel);

}  // namespace corvane
