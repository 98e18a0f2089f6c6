// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <utility>

#include "shell/windowing/media_window.h"
#include "shell/windowing/painted_window.h"

namespace corvane {

/// A window of that form on a surface of a desktop: painted from pictures on a Canvas, or for movies and pictures on a
/// MediaCanvas, which is a MediaSurface as well. Both are made with the desktop's context.
template <class Canvas, class MediaCanvas, class Context>
std::unique_ptr<DrawnWindow> makeDrawn(Form& form, Context& context) {
    if (form.style() != FormStyle::Media)
        return std::make_unique<PaintedWindow>(form, context.loop, context, std::make_unique<Canvas>(context));
    auto surface = std::make_unique<MediaCanvas>(context);
    MediaSurface& media = *surface;
    return std::make_unique<MediaWindow>(form, context.loop, context, std::move(surface), media);
}

}  // namespace corvane
