// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/native/binder.h"
#include "shell/native/field_text.h"
#include "shell/native/native_form.h"
#include "shell/native/tab_order.h"

namespace corvane {

namespace {

class FieldBinder : public BinderOf<TextBox, NativeField> {
public:
    FieldBinder(NativeForm& form, TextBox& box) : BinderOf(form, box, form.surface(), &NativeSurface::makeField) {}

    void changed(PropertyId property) override {
        if (property == PropertyId::Text) shown->setText(own.Text);
        if (property == PropertyId::SelStart || property == PropertyId::SelLength) showSelection();
        Binder::changed(property);
    }
    void takeAll() override {
        if (!isLabelled(own)) shown->setHint(own.AccessibleName);
        changed(PropertyId::Text);
        Binder::takeAll();
    }
    PixelSize wanted() const override { return {0, shown->ownSize().height}; }

    void typed(const std::string& text) override {
        form().run([this, &text] { own.Text = text; });
    }
    /// However a text comes in: typed, pasted or dropped.
    FieldText filtered(FieldText given) override {
        return form().bound() && own.KeyPress ? takenByKeys(given, own.KeyPress) : std::move(given);
    }
    bool fieldKey(const KeyArgs& key) override {
        if (!form().bound() || !own.KeyDown.isTied()) return false;
        form().run([this, &key] { own.KeyDown.raise(key); });
        return true;
    }
    void mouse(const NativeMouse& mouse) override {
        mouseDown_ = mouse.act != NativeMouse::Act::Release;
        if (mouseDown_ || !again_) return;
        // A selection that was asked for while the press gave the focus would be lost to the click's own.
        again_ = false;
        form().soon([this] { showSelection(); });
    }
    void selectionMoved(int from, int to) override {
        if (!form().bound() || mouseDown_) return;
        const std::u16string text = shown->text();
        const int first = charactersIn(text, from);
        taking_ = true;
        own.SelStart = first;
        own.SelLength = charactersIn(text, to) - first;
        taking_ = false;
    }

private:
    void showSelection() {
        if (taking_) return;
        again_ = mouseDown_;
        const std::u16string text = shown->text();
        shown->select(unitsIn(text, own.SelStart), unitsIn(text, own.SelStart + own.SelLength));
    }

    bool taking_ = false;     ///< the user's selection goes to the control
    bool mouseDown_ = false;  ///< on the field
    bool again_ = false;      ///< the control set its selection while the mouse was down
};

}  // namespace

std::unique_ptr<Binder> makeFieldBinder(NativeForm& form, TextBox& box) {
    return std::make_unique<FieldBinder>(form, box);
}

}  // namespace corvane
