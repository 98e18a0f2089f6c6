// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>

#include "linux/native/binder.h"
#include "linux/native/native_form_window.h"

namespace corvane {

namespace {

constexpr int kButtonMargin = 12;  ///< left and right of a push button's text

class PushBinder : public Binder {
public:
    PushBinder(NativeWindow& window, CommandButton& button, QWidget& parent)
        : Binder(window, button, new QPushButton(&parent)), button_(button) {
        QObject::connect(&push(), &QPushButton::clicked, &push(), [this] { this->window().command(button_.Click); });
    }
    void changed(PropertyId property) override {
        if (property == PropertyId::Caption) push().setText(marked(button_.Caption));
        if (property == PropertyId::Default) push().setDefault(button_.Default);
        Binder::changed(property);
    }
    void takeAll() override {
        changed(PropertyId::Caption);
        changed(PropertyId::Default);
        Binder::takeAll();
    }
    QSize wanted() const override {
        const int width = push().fontMetrics().horizontalAdvance(toQString(button_.Caption));
        return {width + 2 * kButtonMargin, push().sizeHint().height()};
    }

private:
    QPushButton& push() const { return static_cast<QPushButton&>(widget()); }
    CommandButton& button_;
};

/// Check boxes and option buttons: both have a Caption and a Value.
template <class C, class W>
class ToggleBinder : public Binder {
public:
    ToggleBinder(NativeWindow& window, C& toggle, QWidget& parent)
        : Binder(window, toggle, new W(&parent)), toggle_(toggle) {
        QObject::connect(&button(), &W::toggled, &button(),
                         [this](bool on) { this->window().run([this, on] { toggle_.Value = on; }); });
    }
    void changed(PropertyId property) override {
        if (property == PropertyId::Caption) button().setText(marked(toggle_.Caption));
        if (property == PropertyId::Value) {
            const QSignalBlocker quiet(button());
            button().setChecked(toggle_.Value);
        }
        Binder::changed(property);
    }
    void takeAll() override {
        changed(PropertyId::Caption);
        changed(PropertyId::Value);
        Binder::takeAll();
    }
    QSize wanted() const override { return button().sizeHint(); }

private:
    W& button() const { return static_cast<W&>(widget()); }
    C& toggle_;
};

class FrameBinder : public Binder {
public:
    FrameBinder(NativeWindow& window, Frame& frame, QWidget& parent)
        : Binder(window, frame, new QGroupBox(&parent)), frame_(frame) {}
    void changed(PropertyId property) override {
        if (property == PropertyId::Caption) {
            static_cast<QGroupBox&>(widget()).setTitle(marked(frame_.Caption));
        }
        Binder::changed(property);
    }
    void takeAll() override {
        changed(PropertyId::Caption);
        Binder::takeAll();
    }
    QSize wanted() const override {
        return {widget().fontMetrics().horizontalAdvance(toQString(frame_.Caption)) + 2 * kButtonMargin, 0};
    }

private:
    Frame& frame_;
};

}  // namespace

std::unique_ptr<Binder> makeButtonBinder(NativeWindow& window, Control& control, QWidget& parent) {
    switch (control.kind()) {
        case ControlKind::CheckBox:
            return std::make_unique<ToggleBinder<CheckBox, QCheckBox>>(window, static_cast<CheckBox&>(control), parent);
        case ControlKind::OptionButton:
            return std::make_unique<ToggleBinder<OptionButton, QRadioButton>>(
                window, static_cast<OptionButton&>(control), parent);
        case ControlKind::Frame:
            return std::make_unique<FrameBinder>(window, static_cast<Frame&>(control), parent);
        default:
            return std::make_unique<PushBinder>(window, static_cast<CommandButton&>(control), parent);
    }
}

}  // namespace corvane
