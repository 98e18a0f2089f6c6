// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/native/binder.h"

#include "linux/native/native_form_window.h"
#include "linux/windowing/shown_text.h"

namespace corvane {

Binder::Binder(NativeWindow& window, Control& control, QWidget* widget)
    : window_(window), control_(control), widget_(widget), designWidth_(control.Width), designHeight_(control.Height) {
    const QString index = control.index() < 0 ? QString() : QString::number(control.index());
    widget->setObjectName(QString::fromStdString(control.name()) + index);
    widget->setAccessibleName(toQString(control.AccessibleName));
    if (control.TabIndex < 0) widget->setFocusPolicy(Qt::NoFocus);
}

void Binder::changed(PropertyId property) {
    switch (property) {
        case PropertyId::Left:
        case PropertyId::Top:
        case PropertyId::Width:
        case PropertyId::Height:
            flushSoon();
            break;
        case PropertyId::Visible:
            widget_->setVisible(control_.Visible);
            break;
        case PropertyId::Enabled:
            widget_->setEnabled(control_.Enabled);
            break;
        case PropertyId::ToolTipText:
            widget_->setToolTip(plainTip(shownText(control_.ToolTipText)));
            break;
        case PropertyId::Focus:
            widget_->setFocus(Qt::OtherFocusReason);
            break;
        default:
            break;
    }
}

QString Binder::marked(const std::string& caption) const { return shownText(window_.keys().marked(control_, caption)); }

void Binder::flush() { widget_->setGeometry(window_.scale().rectangle(control_)); }

void Binder::takeAll() {
    for (const PropertyId each : {PropertyId::Visible, PropertyId::Enabled, PropertyId::ToolTipText}) changed(each);
    flush();
}

void Binder::flushSoon() { window_.flushSoon(*this); }

std::unique_ptr<Binder> makeBinder(NativeWindow& window, Control& control, QWidget& parent) {
    switch (control.kind()) {
        case ControlKind::CommandButton:
        case ControlKind::CheckBox:
        case ControlKind::OptionButton:
        case ControlKind::Frame:
            return makeButtonBinder(window, control, parent);
        case ControlKind::Label:
            return makeLabelBinder(window, static_cast<Label&>(control), parent);
        case ControlKind::Image:
            return makeImageBinder(window, static_cast<Image&>(control), parent);
        case ControlKind::TextBox:
            return makeTextBinder(window, static_cast<TextBox&>(control), parent);
        case ControlKind::ScrollBar:
            return makeStepperBinder(window, static_cast<ScrollBar&>(control), parent);
        case ControlKind::ComboBox:
        case ControlKind::DriveBox:
            return makeChoiceBinder(window, static_cast<ItemsControl&>(control), parent);
        case ControlKind::ListBox:
        case ControlKind::FolderBox:
        case ControlKind::FileBox:
            return makeListBinder(window, static_cast<ItemsControl&>(control), parent);
        default:
            return nullptr;
    }
}

}  // namespace corvane
