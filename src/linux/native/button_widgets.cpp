// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>

#include "linux/native/native_form_window.h"
#include "linux/windowing/shown_text.h"

namespace corvane {

namespace {

class PushWidget : public WidgetControl, public NativeButton {
public:
    PushWidget(NativeWindow& window, const Control& control, NativeEvents& told)
        : WidgetControl(window, new QPushButton(&window.holderOf(control)), control, told) {
        QObject::connect(&push(), &QPushButton::clicked, &push(), [this] { events().pressed(); });
    }
    void setText(const std::string& text) override { push().setText(shownText(text)); }
    void setDefault(bool isDefault) override { push().setDefault(isDefault); }

private:
    QPushButton& push() const { return static_cast<QPushButton&>(widget()); }
};

/// A check box or an option.
template <class W>
class ToggleWidget : public WidgetControl, public NativeButton {
public:
    ToggleWidget(NativeWindow& window, const Control& control, NativeEvents& told)
        : WidgetControl(window, new W(&window.holderOf(control)), control, told) {
        QObject::connect(&button(), &W::toggled, &button(), [this](bool on) { events().toggled(on); });
    }
    void setText(const std::string& text) override { button().setText(shownText(text)); }
    void setOn(bool on) override {
        const QSignalBlocker quiet(button());
        button().setChecked(on);
    }

private:
    W& button() const { return static_cast<W&>(widget()); }
};

class FrameWidget : public WidgetControl, public NativeButton {
public:
    FrameWidget(NativeWindow& window, const Control& control, NativeEvents& told)
        : WidgetControl(window, new QGroupBox(&window.holderOf(control)), control, told) {}
    void setText(const std::string& text) override { static_cast<QGroupBox&>(widget()).setTitle(shownText(text)); }
};

}  // namespace

std::unique_ptr<NativeButton> NativeWindow::makeButton(const Control& control, NativeEvents& events) {
    switch (control.kind()) {
        case ControlKind::CheckBox:
            return std::make_unique<ToggleWidget<QCheckBox>>(*this, control, events);
        case ControlKind::OptionButton:
            return std::make_unique<ToggleWidget<QRadioButton>>(*this, control, events);
        case ControlKind::Frame:
            return std::make_unique<FrameWidget>(*this, control, events);
        default:
            return std::make_unique<PushWidget>(*this, control, events);
    }
}

}  // namespace corvane
