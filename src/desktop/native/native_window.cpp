// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/native/native_window.h"

#include <QDialog>

namespace corvane {

namespace {

class PlainWindow : public FormWindow {
public:
    using FormWindow::FormWindow;
    QWidget* widget() override { return &dialog_; }

protected:
    void onBound() override { take(); }
    void propertyChanged(Control& control, PropertyId /*property*/) override {
        if (&control == &form()) take();
    }

private:
    void take() {
        dialog_.setWindowTitle(toQString(form().Caption));
        dialog_.resize(context().toPixels(form().Width), context().toPixels(form().Height));
        dialog_.setVisible(form().Visible);
    }
    QDialog dialog_;
};

}  // namespace

std::unique_ptr<FormWindow> makeNativeWindow(Form& form, DesktopContext& context) {
    return std::make_unique<PlainWindow>(form, context);
}

}  // namespace corvane
