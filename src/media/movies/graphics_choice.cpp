// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/graphics_choice.h"

#include <algorithm>
#include <array>

#include "types/text.h"

namespace corvane {

namespace {

std::string inCapitals(std::string_view text) {
    std::string capitals(text);
    for (char& each : capitals) each = text::upper(each);
    return capitals;
}

}  // namespace

GraphicsChoice graphicsChoice(std::string_view variable, std::string_view setting) {
    const std::string said = inCapitals(variable.empty() ? setting : variable);
    if (said == "ON") return GraphicsChoice::On;
    return said == "OFF" ? GraphicsChoice::Off : GraphicsChoice::Auto;
}

bool drawsBySoftware(std::string_view renderer) {
    constexpr std::array<std::string_view, 6> kWithoutCard{"LLVMPIPE", "SOFTPIPE", "SWRAST",
                                                           "SOFTWARE", "SVGA",     "LAVAPIPE"};
    const std::string name = inCapitals(renderer);
    return name.empty() || std::any_of(kWithoutCard.begin(), kWithoutCard.end(),
                                       [&name](std::string_view part) { return name.find(part) != std::string::npos; });
}

std::string whyNoGraphics(GraphicsChoice choice, std::string_view platform, std::string_view display, bool card) {
    if (choice == GraphicsChoice::Off) return "switched off";
    if (platform != "xcb") return "no display of X11";
    if (choice == GraphicsChoice::On) return "";
    if (!display.starts_with(':') && !display.starts_with("unix:")) return "the display is another machine's";
    return card ? "" : "there is no graphics card";
}

}  // namespace corvane
