// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace corvane {

/// The types of the player's 26 kinds of files, as the shared database of types names them; the same as in its desktop
/// entry.
QStringList mediaTypes();

}  // namespace corvane
