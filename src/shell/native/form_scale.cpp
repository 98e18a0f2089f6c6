// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/native/form_scale.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

// Of the sample text in the font that the forms were laid out for, pixels.
constexpr double kLetters = 174;
constexpr double kLine = 14;

double pixels(Twips twips) { return static_cast<double>(twips) / static_cast<double>(kTwipsPerPixel); }

}  // namespace

FormScale::FormScale(PixelSize sample, double least)
    : across_(std::max(least, sample.width / kLetters)), down_(std::max(least, sample.height / kLine)) {}

void FormScale::makeRoom(PixelSize wanted, Twips width, Twips height) {
    if (width > 0) across_ = std::max(across_, wanted.width / pixels(width));
    if (height > 0) down_ = std::max(down_, wanted.height / pixels(height));
}

int FormScale::x(Twips twips) const { return static_cast<int>(std::lround(pixels(twips) * across_)); }

int FormScale::y(Twips twips) const { return static_cast<int>(std::lround(pixels(twips) * down_)); }

PixelRect FormScale::rectangle(Twips left, Twips top, Twips width, Twips height) const {
    return {x(left), y(top), x(left + width) - x(left), y(top + height) - y(top)};
}

}  // namespace corvane
