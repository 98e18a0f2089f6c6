// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "engine/mdlDefinePublic.h"

namespace corvane {

/// What the extension of a path decides.
struct MediaType {
    std::int16_t kind = mdlDefinePublic::mkNone;  ///< mkImage, ...: which medium plays it
    const char* deviceType = nullptr;             ///< null: the control's device type is left as it is
    std::string text;                             ///< shown in the panel's text label
};

/// The type of a path, by its extension; one that is not known is a sound of that name.
MediaType mediaType(const std::string& path);

}  // namespace corvane
