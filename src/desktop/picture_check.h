// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QIODevice;

namespace corvane {

/// False: a JPEG, GIF, PNG or plain BMP file ends before its picture does. Qt's readers would fill the rest with grey
/// and say nothing. Leaves the device at its beginning.
bool endsWhole(QIODevice& file);

}  // namespace corvane
