// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/native/mnemonics.h"

#include <algorithm>

#include "desktop/form_window.h"
#include "forms/lists.h"

namespace corvane {

Mnemonics::Mnemonics(const Form& form) {
    for (const Control* each : form.controls()) {
        if (each->kind() != ControlKind::CommandButton || !each->Visible) continue;
        const auto& button = static_cast<const CommandButton&>(*each);
        if (!button.Default && !button.Cancel) choose(button, button.Caption);
    }
    for (const Control* each : form.controls()) {
        if (each->kind() == ControlKind::OptionButton) choose(*each, static_cast<const OptionButton&>(*each).Caption);
        if (each->kind() == ControlKind::CheckBox) choose(*each, static_cast<const CheckBox&>(*each).Caption);
    }
    for (const Control* each : form.controls()) {
        if (each->kind() != ControlKind::Label) continue;
        const auto& label = static_cast<const Label&>(*each);
        if (label.Labels != nullptr) choose(label, label.Caption);
    }
}

void Mnemonics::choose(const Control& control, const std::string& caption) {
    for (const QChar each : toQString(caption)) {
        const QChar letter = each.toUpper();
        const bool taken = std::any_of(letters_.begin(), letters_.end(),
                                       [letter](const auto& entry) { return entry.second == letter; });
        if (!letter.isLetter() || taken) continue;
        letters_[&control] = letter;
        return;
    }
}

QString Mnemonics::text(const Control& control, const std::string& caption) const {
    QString shown = toQString(caption);
    const auto found = letters_.find(&control);
    const auto at = found == letters_.end() ? -1 : shown.indexOf(found->second, 0, Qt::CaseInsensitive);
    if (at < 0) return shown.replace(QLatin1Char('&'), QLatin1String("&&"));
    const QString before = shown.left(at).replace(QLatin1Char('&'), QLatin1String("&&"));
    return before + QLatin1Char('&') + shown.mid(at).replace(QLatin1Char('&'), QLatin1String("&&"));
}

int QuietMnemonicStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                  QStyleHintReturn* returned) const {
    if (hint == SH_UnderlineShortcut) return underline ? 1 : 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

}  // namespace corvane
