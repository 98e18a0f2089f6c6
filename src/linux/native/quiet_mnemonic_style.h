// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProxyStyle>

namespace corvane {

/// The application's style, which underlines the access keys only while Alt is held.
class QuietMnemonicStyle : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
    bool underline = false;
};

}  // namespace corvane
