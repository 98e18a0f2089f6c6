// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/native_dialog_contract.h"

#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>

#include "linux/qt_loop.h"
#include "linux/windowing/qt_windows.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

class QtNativeStage : public NativeStage {
public:
    QtNativeStage() { test::offscreenApplication(); }
    EventLoop& loop() override { return loop_; }
    bool waitFor(const std::function<bool()>& condition, int atMostMs) override {
        return test::waitUntil(condition, atMostMs);
    }
    void attach(Form& form) override {
        form_ = &form;
        windows_.attach(form);
        form.Show();
        for (QWidget* each : QApplication::topLevelWidgets()) {
            if (each->objectName() == QString::fromStdString(form.name()) && each->isVisible()) window_ = each;
        }
    }
    void detach() override {
        if (form_ != nullptr) windows_.detach(*std::exchange(form_, nullptr));
    }

    void press(const CommandButton& button) override { of<QPushButton>(button).click(); }
    void toggle(const Control& control) override { of<QAbstractButton>(control).click(); }
    void type(const Control& control, const std::string& letters) override {
        QWidget* const combo = &of<QWidget>(control);
        auto* const field = control.kind() == ControlKind::TextBox ? qobject_cast<QLineEdit*>(combo)
                                                                   : static_cast<QComboBox*>(combo)->lineEdit();
        field->end(false);
        for (const char each : letters) key(*field, 0, QChar(each));
    }
    void choose(const ItemsControl& box, int row) override {
        auto& combo = of<QComboBox>(box);
        combo.setCurrentIndex(row);
        emit combo.activated(row);
    }
    void click(const ItemsControl& list, int row) override {
        mouse(list, QEvent::MouseButtonPress, row);
        mouse(list, QEvent::MouseButtonRelease, row);
    }
    void doubleClick(const ItemsControl& list, int row) override {
        click(list, row);
        mouse(list, QEvent::MouseButtonDblClick, row);
        mouse(list, QEvent::MouseButtonRelease, row);
    }
    void stepRight(const ScrollBar& bar) override { key(of<QAbstractSlider>(bar), Qt::Key_Right, {}); }

    std::string text(const Control& control) override {
        if (control.kind() == ControlKind::CommandButton) {
            const QString shown = of<QPushButton>(control).text();
            return QString(shown).replace("&&", "\1").remove('&').replace('\1', '&').toStdString();
        }
        if (control.kind() == ControlKind::TextBox) return of<QLineEdit>(control).text().toStdString();
        return of<QComboBox>(control).currentText().toStdString();
    }
    bool isOn(const Control& control) override { return of<QAbstractButton>(control).isChecked(); }
    bool isUsable(const Control& control) override {
        return of<QWidget>(control).isVisible() && of<QWidget>(control).isEnabled();
    }
    std::vector<int> selected(const ItemsControl& list) override {
        std::vector<int> rows;
        for (const QModelIndex& each : of<QAbstractItemView>(list).selectionModel()->selectedIndexes()) {
            rows.push_back(each.row());
        }
        return rows;
    }
    int value(const ScrollBar& bar) override { return of<QAbstractSlider>(bar).value(); }
    int left(const Control& control) override { return of<QWidget>(control).x(); }

private:
    template <class W>
    W& of(const Control& control) {
        auto* const found = window_->findChild<W*>(QString::fromStdString(control.name()));
        if (found == nullptr) throw std::logic_error("no widget of " + control.name());
        return *found;
    }
    static void key(QWidget& to, int code, const QString& text) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, code, Qt::NoModifier, text);
            QCoreApplication::sendEvent(&to, &event);
        }
    }
    void mouse(const Control& list, QEvent::Type type, int row) {
        auto& view = of<QAbstractItemView>(list);
        const QPoint at = view.visualRect(view.model()->index(row, 0)).center();
        const bool up = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, view.viewport()->mapToGlobal(at), Qt::LeftButton,
                          up ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view.viewport(), &event);
    }

    QtLoop loop_;
    DesktopContext context_{loop_, 1.0, {}};
    QtWindows windows_{context_};
    Form* form_ = nullptr;
    QWidget* window_ = nullptr;
};

std::unique_ptr<NativeStage> makeNative() { return std::make_unique<QtNativeStage>(); }

INSTANTIATE_TEST_SUITE_P(Qt, NativeDialogContract, ::testing::Values(&makeNative));

}  // namespace
}  // namespace corvane
