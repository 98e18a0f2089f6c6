// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "engine/form_host.h"
#include "engine/mdlDefinePublic.h"
#include "platform/ports.h"

namespace corvane {

/// One player: the shared state, the loaded forms and the ports. Procedures of the engine take it.
struct Player : mdlDefinePublic::PlayerState {
    explicit Player(Ports& given) : ports(given), forms(given) {}

    Ports& ports;
    FormHost forms;
    std::string openedPath;                      ///< of the file opened last
    std::uint32_t openings = 0;                  ///< files opened so far
    std::array<std::string, 6> panelCaptions;    ///< the panel's labels, written before it loads
    std::optional<std::uint32_t> volumeAtStart;  ///< to be put back at the end; empty: nothing is
    std::string editorFolder;                    ///< what the editor showed last, for its next opening; empty: none yet
};

}  // namespace corvane
