// SPDX-License-Identifier: GPL-3.0-or-later
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QValidator>

#include "linux/native/native_form_window.h"
#include "linux/windowing/input_map.h"
#include "linux/windowing/shown_text.h"

namespace corvane {

namespace {

/// Lets through what the control takes, however it comes in: typed, pasted or dropped.
class KeyFilter : public QValidator {
public:
    KeyFilter(NativeEvents& events, QObject* parent) : QValidator(parent), events_(events) {}

    State validate(QString& input, int& cursor) const override {
        const FieldText taken = events_.filtered({input.toStdU16String(), cursor});
        input = QString::fromStdU16String(taken.text);
        cursor = taken.cursor;
        return Acceptable;
    }

private:
    NativeEvents& events_;
};

class FieldWidget : public WidgetControl, public NativeField {
public:
    FieldWidget(NativeWindow& window, const TextBox& box, NativeEvents& told)
        : WidgetControl(window, new QLineEdit(&window.holderOf(box)), box, told) {
        if (box.MaxLength > 0) edit().setMaxLength(box.MaxLength);
        if (box.KeyPress) edit().setValidator(new KeyFilter(told, &edit()));
        QObject::connect(&edit(), &QLineEdit::textEdited, &edit(),
                         [this](const QString& text) { events().typed(text.toStdString()); });
        QObject::connect(&edit(), &QLineEdit::selectionChanged, &edit(), [this] { tellSelection(); });
        QObject::connect(&edit(), &QLineEdit::cursorPositionChanged, &edit(), [this] { tellSelection(); });
        colourHint();
    }

    void setText(const std::string& wanted) override {
        if (shownText(wanted) == edit().text()) return;
        const QSignalBlocker quiet(edit());
        edit().setText(shownText(wanted));
        edit().setCursorPosition(0);
    }
    void setHint(const std::string& hint) override { edit().setPlaceholderText(toQString(hint)); }
    std::u16string text() const override { return edit().text().toStdU16String(); }
    void select(int from, int to) override {
        const QSignalBlocker quiet(edit());
        if (to > from) {
            edit().setSelection(from, to - from);
        } else {
            edit().deselect();
            edit().setCursorPosition(from);
        }
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        // The focus comes before the press that gives it.
        const bool byMouse =
            event->type() == QEvent::FocusIn && static_cast<QFocusEvent*>(event)->reason() == Qt::MouseFocusReason;
        if (byMouse || event->type() == QEvent::MouseButtonPress) tellMouse(NativeMouse::Act::Press);
        if (event->type() == QEvent::MouseButtonRelease) tellMouse(NativeMouse::Act::Release);
        if (event->type() == QEvent::PaletteChange) colourHint();
        if (event->type() == QEvent::KeyPress && tellKey(*static_cast<QKeyEvent*>(event))) return true;
        return WidgetControl::eventFilter(watched, event);
    }

private:
    /// The field's text, faint: not every theme says what it is to be, and the tool kit's black is not seen in the
    /// dark.
    void colourHint() const {
        QPalette palette = edit().palette();
        QColor hint = palette.color(QPalette::Active, QPalette::Text);
        hint.setAlpha(kHintAlpha);
        if (palette.color(QPalette::Active, QPalette::PlaceholderText) == hint) return;
        palette.setColor(QPalette::PlaceholderText, hint);
        edit().setPalette(palette);
    }
    bool tellKey(const QKeyEvent& event) {
        switch (event.key()) {
            case Qt::Key_Up:
            case Qt::Key_Down:
            case Qt::Key_PageUp:
            case Qt::Key_PageDown: {
                const KeyArgs key = keyArgs(event);
                return key.shift == 0 && events().fieldKey({key.keyCode, 0, event.isAutoRepeat()});
            }
            default:
                return false;
        }
    }
    void tellMouse(NativeMouse::Act act) {
        NativeMouse mouse;
        mouse.act = act;
        events().mouse(mouse);
    }
    void tellSelection() {
        const bool any = edit().hasSelectedText();
        const int from = any ? edit().selectionStart() : edit().cursorPosition();
        events().selectionMoved(from, any ? edit().selectionEnd() : from);
    }

    static constexpr int kHintAlpha = 140;  ///< of 255

    QLineEdit& edit() const { return static_cast<QLineEdit&>(widget()); }
};

}  // namespace

std::unique_ptr<NativeField> NativeWindow::makeField(const TextBox& box, NativeEvents& events) {
    return std::make_unique<FieldWidget>(*this, box, events);
}

}  // namespace corvane
