// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// Whether movies are shown by the graphics driver.
enum class GraphicsChoice {
    Auto,  ///< where it is a card's
    On,    ///< also where it draws by software
    Off
};

/// "ON" and "OFF" in capitals or not; anything else is Auto. The variable CORVANE_GRAPHICS, where it is set, counts
/// before the setting.
GraphicsChoice graphicsChoice(std::string_view variable, std::string_view setting);

/// A driver of that name draws without a card, or in the machine that this one is a guest of.
bool drawsBySoftware(std::string_view renderer);

/// Why movies are painted without asking for a driver, in words; "" when one is to be asked for. `platform`: the tool
/// kit's; `display`: DISPLAY; `card`: the
/// system has a device of one. Asking for a driver without one would load what draws by software, which is large.
std::string whyNoGraphics(GraphicsChoice choice, std::string_view platform, std::string_view display, bool card);

}  // namespace corvane
