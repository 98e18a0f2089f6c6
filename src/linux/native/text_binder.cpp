// SPDX-License-Identifier: GPL-3.0-or-later
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QTimer>
#include <QValidator>

#include "linux/native/binder.h"
#include "linux/native/native_form_window.h"
#include "linux/windowing/shown_text.h"

namespace corvane {

namespace {

/// Places in a text count characters in the form and UTF-16 units in Qt.
int characters(const QString& text, int units) { return static_cast<int>(text.left(units).toUcs4().size()); }

int units(const QString& text, int characterCount) {
    const auto whole = text.toUcs4();
    return static_cast<int>(QString::fromUcs4(reinterpret_cast<const char32_t*>(whole.constData()),
                                              std::min<qsizetype>(characterCount, whole.size()))
                                .size());
}

/// Lets through what the control's KeyPress takes, however it comes in: typed, pasted or dropped.
class KeyFilter : public QValidator {
public:
    KeyFilter(const NativeWindow& window, const TextBox& box, QObject* parent)
        : QValidator(parent), window_(window), box_(box) {}

    State validate(QString& input, int& cursor) const override {
        if (!window_.bound() || !box_.KeyPress) return Acceptable;
        QString taken;
        int before = 0;
        for (qsizetype i = 0; i < input.size(); ++i) {
            const bool pair = input[i].isHighSurrogate() && i + 1 < input.size();
            const char32_t typed = pair ? QChar::surrogateToUcs4(input[i], input[i + 1]) : input[i].unicode();
            const int character = box_.KeyPress(static_cast<int>(typed));
            if (character != 0) taken += QString::fromUcs4(reinterpret_cast<const char32_t*>(&character), 1);
            if (i < cursor) before = static_cast<int>(taken.size());
            if (pair) ++i;
        }
        input = taken;
        cursor = before;
        return Acceptable;
    }

private:
    const NativeWindow& window_;
    const TextBox& box_;
};

class TextBinder : public Binder {
public:
    TextBinder(NativeWindow& window, TextBox& box, QWidget& parent)
        : Binder(window, box, new QLineEdit(&parent)), box_(box) {
        if (box.MaxLength > 0) edit().setMaxLength(box.MaxLength);
        if (box.KeyPress) edit().setValidator(new KeyFilter(window, box, &edit()));
        QObject::connect(&edit(), &QLineEdit::textEdited, &edit(),
                         [this](const QString& text) { this->window().run([&] { box_.Text = text.toStdString(); }); });
        QObject::connect(&edit(), &QLineEdit::selectionChanged, &edit(), [this] { takeSelection(); });
        QObject::connect(&edit(), &QLineEdit::cursorPositionChanged, &edit(), [this] { takeSelection(); });
    }

    void changed(PropertyId property) override {
        if (property == PropertyId::Text && shownText(box_.Text) != edit().text()) {
            const QSignalBlocker quiet(edit());
            edit().setText(shownText(box_.Text));
            edit().setCursorPosition(0);
        }
        if (property == PropertyId::SelStart || property == PropertyId::SelLength) showSelection();
        Binder::changed(property);
    }
    void takeAll() override {
        if (!isLabelled()) edit().setPlaceholderText(toQString(box_.AccessibleName));
        changed(PropertyId::Text);
        Binder::takeAll();
    }
    QSize wanted() const override { return {0, edit().sizeHint().height()}; }

    void focusByMouse() override { mouseDown_ = true; }
    bool mouse(const QMouseEvent& event) override {
        if (event.type() == QEvent::MouseButtonPress) mouseDown_ = true;
        if (event.type() == QEvent::MouseButtonRelease) {
            mouseDown_ = false;
            // A selection that was asked for while the press gave the focus would be lost to the click's own.
            if (again_) QTimer::singleShot(0, &edit(), [this] { showSelection(); });
            again_ = false;
        }
        return false;
    }

private:
    bool isLabelled() const {
        for (const Control* each : window().form().controls()) {
            if (each->kind() == ControlKind::Label && static_cast<const Label*>(each)->Labels == &box_) return true;
        }
        return false;
    }
    void takeSelection() {
        if (!window().bound() || mouseDown_) return;
        const QString text = edit().text();
        const bool any = edit().hasSelectedText();
        const int start = any ? edit().selectionStart() : edit().cursorPosition();
        taking_ = true;
        box_.SelStart = characters(text, start);
        box_.SelLength = any ? static_cast<int>(edit().selectedText().toUcs4().size()) : 0;
        taking_ = false;
    }
    void showSelection() {
        if (taking_ || !window().bound()) return;
        again_ = mouseDown_;
        const QSignalBlocker quiet(edit());
        const QString text = edit().text();
        const int start = units(text, box_.SelStart);
        const int end = units(text, box_.SelStart + box_.SelLength);
        if (end > start) {
            edit().setSelection(start, end - start);
        } else {
            edit().deselect();
            edit().setCursorPosition(start);
        }
    }

    QLineEdit& edit() const { return static_cast<QLineEdit&>(widget()); }
    TextBox& box_;
    bool taking_ = false;     ///< the user's selection goes to the control
    bool mouseDown_ = false;  ///< on the field
    bool again_ = false;      ///< the control set its selection while the mouse was down
};

}  // namespace

std::unique_ptr<Binder> makeTextBinder(NativeWindow& window, TextBox& box, QWidget& parent) {
    return std::make_unique<TextBinder>(window, box, parent);
}

}  // namespace corvane
