// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStyleOptionComboBox>
#include <QStylePainter>

#include "linux/native/native_form_window.h"
#include "linux/windowing/shown_text.h"

namespace corvane {

namespace {

/// A drop-down list whose text ends in dots where it does not fit; the list itself is as wide as its entries.
class ChoiceBox : public QComboBox {
public:
    using QComboBox::QComboBox;

    void showPopup() override {
        constexpr int kRoom = 32;
        view()->setMinimumWidth(view()->sizeHintForColumn(0) + kRoom);
        QComboBox::showPopup();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QStylePainter painter(this);
        QStyleOptionComboBox option;
        initStyleOption(&option);
        painter.drawComplexControl(QStyle::CC_ComboBox, option);
        const QRect room = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
        constexpr int kInset = 4;
        option.currentText = fontMetrics().elidedText(option.currentText, Qt::ElideRight, room.width() - kInset);
        if (!isEditable()) painter.drawControl(QStyle::CE_ComboBoxLabel, option);
    }
};

class ChoiceWidget : public WidgetControl, public NativeChoice {
public:
    ChoiceWidget(NativeWindow& window, const ItemsControl& control, NativeEvents& told)
        : WidgetControl(window, new ChoiceBox(&window.holderOf(control)), control, told) {
        constexpr int kMostSeen = 20;
        box().setMaxVisibleItems(kMostSeen);
        if (control.kind() == ControlKind::ComboBox && static_cast<const ComboBox&>(control).Editable) makeEditable();
        QObject::connect(&box(), &QComboBox::activated, &box(), [this](int row) { events().chosen(row); });
    }

    void setItems(const std::vector<std::string>& items) override {
        const QSignalBlocker quiet(box());
        box().clear();
        for (const std::string& each : items) box().addItem(shownText(each));
    }
    void setCurrent(int row) override {
        const QSignalBlocker quiet(box());
        if (box().currentIndex() != row) box().setCurrentIndex(row);
    }
    FieldText field() const override {
        const QLineEdit* const edit = box().lineEdit();
        return edit == nullptr ? FieldText() : FieldText{edit->text().toStdU16String(), edit->cursorPosition()};
    }
    void setField(const std::string& text) override {
        const QSignalBlocker quiet(box());
        if (box().lineEdit()->text() != shownText(text)) box().lineEdit()->setText(shownText(text));
    }
    void setCursor(int cursor) override { box().lineEdit()->setCursorPosition(cursor); }

private:
    void makeEditable() {
        box().setEditable(true);
        box().setInsertPolicy(QComboBox::NoInsert);
        box().setCompleter(nullptr);
        // The tool kit takes a typed text that equals an entry for a choice when the field is left, or at Enter.
        for (const char* signal : {SIGNAL(editingFinished()), SIGNAL(returnPressed())}) {
            QObject::disconnect(box().lineEdit(), signal, &box(), nullptr);
        }
        QObject::connect(box().lineEdit(), &QLineEdit::textEdited, &box(),
                         [this](const QString& text) { events().typed(text.toStdString()); });
    }

    QComboBox& box() const { return static_cast<QComboBox&>(widget()); }
};

}  // namespace

std::unique_ptr<NativeChoice> NativeWindow::makeChoice(const ItemsControl& control, NativeEvents& events) {
    return std::make_unique<ChoiceWidget>(*this, control, events);
}

}  // namespace corvane
