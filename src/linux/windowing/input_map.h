// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include "forms/input.h"

class QKeyEvent;
class QMimeData;

namespace corvane {

/// Qt's input in the words of the forms.
int shiftState(Qt::KeyboardModifiers modifiers);
int buttonCode(Qt::MouseButton button);  ///< 0 for a button that forms do not know
/// Virtual key code of a Qt key; 0 for one without.
int virtualKey(int qtKey, bool keypad);
KeyArgs keyArgs(const QKeyEvent& event);
/// The character a key typed, a Unicode code point; 0 for none. Alt with a letter types nothing.
int typedCharacter(const QKeyEvent& event);

/// Paths of a list of file addresses ("file:///a%20b", one a line), byte for byte, in order; other addresses are left
/// out.
std::vector<std::string> pathsOfUriList(const QByteArray& list);
/// Whether a drag offers files. What it offers is not asked for: its source may be slow to hand it over, or never do.
bool offersFiles(const QMimeData& data);
DropData dropData(const QMimeData& data);

}  // namespace corvane
