// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/native/quiet_mnemonic_style.h"

namespace corvane {

int QuietMnemonicStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                  QStyleHintReturn* returned) const {
    if (hint == SH_UnderlineShortcut) return underline ? 1 : 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

}  // namespace corvane
