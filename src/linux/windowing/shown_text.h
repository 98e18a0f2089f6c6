// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QString>
#include <string>

namespace corvane {

// Names of files, folders, lists and skins are made by strangers. However they are written, they are shown as text: no
// mark-up of theirs is obeyed, and none of their characters changes what stands beside them.

/// One line of text as it is shown: line breaks and tabs are blanks; other control characters, and those that turn the
/// direction of writing around, are seen as a replacement mark.
QString shownText(const std::string& text);

/// As shownText(), for a row of a list: shortened in its middle where it is longer than a list is ever wide.
QString shownRow(const std::string& text);

/// As shownText(), with the line breaks kept and a text that would not fit a box of that width shortened: words in the
/// middle, very long lines in the middle, lines at the end. widthPixels: logical, of the widest word.
QString shownLines(const std::string& text, const QFont& font, int widthPixels);

/// As shownText(), for the title of a window (where "[*]" has a meaning of its own).
QString shownTitle(const std::string& text);

/// The text for QToolTip and QWidget::setToolTip(), which take what looks like mark-up for mark-up. Wrapped where it is
/// long; shortened in its middle where it would fill the screen. Empty: empty.
QString plainTip(const QString& text);

}  // namespace corvane
