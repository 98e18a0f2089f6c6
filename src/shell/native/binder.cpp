// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/native/binder.h"

#include "shell/native/native_form.h"

namespace corvane {

Binder::Binder(NativeForm& form, Control& control)
    : form_(form), control_(control), designWidth_(control.Width), designHeight_(control.Height) {}

void Binder::changed(PropertyId property) {
    switch (property) {
        case PropertyId::Left:
        case PropertyId::Top:
        case PropertyId::Width:
        case PropertyId::Height:
            flushSoon();
            break;
        case PropertyId::Visible:
            native().show(control_.Visible);
            break;
        case PropertyId::Enabled:
            native().enable(control_.Enabled);
            break;
        case PropertyId::ToolTipText:
            native().setTip(control_.ToolTipText);
            break;
        case PropertyId::Focus:
            native().focus();
            break;
        default:
            break;
    }
}

void Binder::flush() {
    Twips left = control_.Left;
    Twips top = control_.Top;
    const bool insideFrame = form_.surface().framesHold();
    for (const Control* outer = control_.Container; outer != nullptr && !insideFrame; outer = outer->Container) {
        left += outer->Left;
        top += outer->Top;
    }
    native().place(form_.scale().rectangle(left, top, control_.Width, control_.Height));
}

void Binder::takeAll() {
    for (const PropertyId each : {PropertyId::Visible, PropertyId::Enabled, PropertyId::ToolTipText}) changed(each);
    flush();
}

void Binder::focused(bool got) {
    form_.run([this, got] { (got ? control_.GotFocus : control_.LostFocus).raise(); });
}

std::string Binder::marked(const std::string& caption) const { return form_.keys().marked(control_, caption); }

void Binder::flushSoon() { form_.flushSoon(*this); }

std::unique_ptr<Binder> makeBinder(NativeForm& form, Control& control) {
    switch (control.kind()) {
        case ControlKind::CommandButton:
        case ControlKind::CheckBox:
        case ControlKind::OptionButton:
        case ControlKind::Frame:
            return makeButtonBinder(form, control);
        case ControlKind::Label:
            return makeLabelBinder(form, static_cast<Label&>(control));
        case ControlKind::Image:
            return makeMarkBinder(form, static_cast<Image&>(control));
        case ControlKind::TextBox:
            return makeFieldBinder(form, static_cast<TextBox&>(control));
        case ControlKind::ScrollBar:
            return makeStepperBinder(form, static_cast<ScrollBar&>(control));
        case ControlKind::ComboBox:
        case ControlKind::DriveBox:
            return makeChoiceBinder(form, static_cast<ItemsControl&>(control));
        case ControlKind::ListBox:
        case ControlKind::FolderBox:
        case ControlKind::FileBox:
            return makeListBinder(form, static_cast<ItemsControl&>(control));
        default:
            return nullptr;
    }
}

}  // namespace corvane
