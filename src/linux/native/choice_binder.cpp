// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStyleOptionComboBox>
#include <QStylePainter>

#include "linux/native/binder.h"
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

class ChoiceBinder : public Binder {
public:
    ChoiceBinder(NativeWindow& window, ItemsControl& control, QWidget& parent)
        : Binder(window, control, new ChoiceBox(&parent)),
          items_(control),
          combo_(control.kind() == ControlKind::ComboBox ? static_cast<ComboBox*>(&control) : nullptr) {
        constexpr int kMostSeen = 20;
        box().setMaxVisibleItems(kMostSeen);
        if (combo_ != nullptr && combo_->Editable) makeEditable();
        QObject::connect(&box(), &QComboBox::activated, &box(),
                         [this](int index) { this->window().run([this, index] { choose(index); }); });
    }

    void changed(PropertyId property) override {
        switch (property) {
            case PropertyId::Items:
            case PropertyId::ListIndex:
            case PropertyId::Text:
                stale_ = stale_ || property == PropertyId::Items;
                flushSoon();
                break;
            default:
                Binder::changed(property);
                break;
        }
    }
    void flush() override {
        Binder::flush();
        const QSignalBlocker quiet(box());
        QLineEdit* const edit = box().lineEdit();
        const QString before = edit != nullptr ? edit->text() : QString();
        const int cursor = edit != nullptr ? edit->cursorPosition() : 0;
        if (stale_) {
            stale_ = false;
            box().clear();
            for (const std::string& each : items_.items()) box().addItem(shownText(each));
        }
        if (box().currentIndex() != items_.ListIndex) box().setCurrentIndex(items_.ListIndex);
        if (edit == nullptr) return;
        // A new current item has rewritten the field, also under someone who types.
        const QString text = shownText(combo_->Text);
        if (edit->text() == text && before == text) return;
        if (edit->text() != text) edit->setText(text);
        edit->setCursorPosition(before == text ? cursor : 0);
    }
    QSize wanted() const override { return {0, box().sizeHint().height()}; }

private:
    void makeEditable() {
        box().setEditable(true);
        box().setInsertPolicy(QComboBox::NoInsert);
        box().setCompleter(nullptr);
        // The tool kit takes a typed text that equals an entry for a choice when the field is left, or at Enter.
        for (const char* signal : {SIGNAL(editingFinished()), SIGNAL(returnPressed())}) {
            QObject::disconnect(box().lineEdit(), signal, &box(), nullptr);
        }
        QObject::connect(box().lineEdit(), &QLineEdit::textEdited, &box(), [this](const QString& text) {
            this->window().run([&] {
                combo_->ListIndex = -1;
                combo_->Text = text.toStdString();
            });
        });
    }
    void choose(int index) {
        const bool again = items_.ListIndex == index;
        items_.ListIndex = index;  // a combo box raises Click by itself
        if (combo_ == nullptr) {
            items_.Click.raise();
        } else if (again) {
            combo_->Text = std::string(combo_->item(index));
        }
    }

    QComboBox& box() const { return static_cast<QComboBox&>(widget()); }
    ItemsControl& items_;
    ComboBox* combo_;  ///< null: a drive box
    bool stale_ = true;
};

}  // namespace

std::unique_ptr<Binder> makeChoiceBinder(NativeWindow& window, ItemsControl& control, QWidget& parent) {
    return std::make_unique<ChoiceBinder>(window, control, parent);
}

}  // namespace corvane
