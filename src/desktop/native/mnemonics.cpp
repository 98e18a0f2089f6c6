// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/native/mnemonics.h"

#include <algorithm>
#include <vector>

#include "desktop/form_window.h"
#include "forms/lists.h"

namespace corvane {

namespace {

/// The caption that may hold an access key; empty: none.
QString markable(const Control& control) {
    switch (control.kind()) {
        case ControlKind::CommandButton: {
            const auto& button = static_cast<const CommandButton&>(control);
            return button.Visible && !button.Default && !button.Cancel ? toQString(button.Caption) : QString();
        }
        case ControlKind::OptionButton:
            return toQString(static_cast<const OptionButton&>(control).Caption);
        case ControlKind::CheckBox:
            return toQString(static_cast<const CheckBox&>(control).Caption);
        case ControlKind::Label: {
            const auto& label = static_cast<const Label&>(control);
            return label.Labels != nullptr ? toQString(label.Caption) : QString();
        }
        default:
            return {};
    }
}

/// Buttons choose before options, options before labels.
int rank(ControlKind kind) {
    if (kind == ControlKind::CommandButton) return 0;
    return kind == ControlKind::Label ? 2 : 1;
}

bool beginsWord(const QString& text, qsizetype at) { return at == 0 || !text[at - 1].isLetter(); }

}  // namespace

Mnemonics::Mnemonics(const Form& form) {
    std::vector<const Control*> controls;
    for (const Control* each : form.controls()) {
        if (!markable(*each).isEmpty()) controls.push_back(each);
    }
    std::stable_sort(controls.begin(), controls.end(),
                     [](const Control* a, const Control* b) { return rank(a->kind()) < rank(b->kind()); });
    for (const Control* each : controls) choose(*each, true);
    // Short captions have the least to choose from.
    std::stable_sort(controls.begin(), controls.end(),
                     [](const Control* a, const Control* b) { return markable(*a).size() < markable(*b).size(); });
    for (const Control* each : controls) choose(*each, false);
}

void Mnemonics::choose(const Control& control, bool initialsOnly) {
    if (letters_.count(&control) > 0) return;
    const QString caption = markable(control);
    for (qsizetype i = 0; i < caption.size(); ++i) {
        const QChar letter = caption[i].toUpper();
        const bool taken = std::any_of(letters_.begin(), letters_.end(),
                                       [letter](const auto& entry) { return entry.second == letter; });
        if (!letter.isLetter() || taken || (initialsOnly && !beginsWord(caption, i))) continue;
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
