// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/native/binder.h"
#include "shell/native/native_form.h"

namespace corvane {

namespace {

/// A combo box, or the box of the drives.
class ChoiceBinder : public BinderOf<ItemsControl, NativeChoice> {
public:
    ChoiceBinder(NativeForm& form, ItemsControl& control)
        : BinderOf(form, control, form.surface(), &NativeSurface::makeChoice),
          combo_(control.kind() == ControlKind::ComboBox ? static_cast<ComboBox*>(&control) : nullptr) {}

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
        const FieldText before = shown->field();
        if (stale_) shown->setItems(own.items());
        stale_ = false;
        shown->setCurrent(own.ListIndex);
        if (combo_ == nullptr || !combo_->Editable) return;
        // A new current item has rewritten the field, also under someone who types.
        const bool rewritten = shown->field().text != before.text;
        shown->setField(combo_->Text);
        const bool asBefore = shown->field().text == before.text;
        if (rewritten || !asBefore) shown->setCursor(asBefore ? before.cursor : 0);
    }
    PixelSize wanted() const override { return {0, shown->ownSize().height}; }

    void chosen(int row) override {
        form().run([this, row] {
            const bool again = own.ListIndex == row;
            own.ListIndex = row;  // a combo box raises Click by itself
            if (combo_ == nullptr) {
                own.Click.raise();
            } else if (again && row >= 0) {
                combo_->Text = std::string(combo_->item(row));
            }
        });
    }
    /// What is typed counts as it is, also where an entry says the same.
    void typed(const std::string& text) override {
        form().run([this, &text] {
            own.ListIndex = -1;
            combo_->Text = text;
        });
    }

private:
    ComboBox* combo_;  ///< null: the drives
    bool stale_ = true;
};

}  // namespace

std::unique_ptr<Binder> makeChoiceBinder(NativeForm& form, ItemsControl& control) {
    return std::make_unique<ChoiceBinder>(form, control);
}

}  // namespace corvane
