// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <string>

namespace corvane {

/// A plain skin to begin with: every record filled, each part drawn in flat colours.
struct TemplateSkin {
    QImage bitmap;     ///< without transparent parts
    std::string text;  ///< lines with CR LF, a heading first
};
TemplateSkin templateSkin();

}  // namespace corvane
