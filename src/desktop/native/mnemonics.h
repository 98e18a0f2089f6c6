// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProxyStyle>
#include <QString>
#include <map>

#include "forms/form.h"

namespace corvane {

/// Access keys of a dialog: letters chosen out of the captions, first letters of words where they are free, no two
/// alike. Default and Cancel buttons have none: Enter and Escape press them.
class Mnemonics {
public:
    Mnemonics() = default;
    explicit Mnemonics(const Form& form);

    /// The caption as Qt wants it: the control's letter marked, other ampersands doubled.
    QString text(const Control& control, const std::string& caption) const;

private:
    void choose(const Control& control, bool initialsOnly);
    std::map<const Control*, QChar> letters_;
};

/// The application's style, which underlines the access keys only while Alt is held.
class QuietMnemonicStyle : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
    bool underline = false;
};

}  // namespace corvane
