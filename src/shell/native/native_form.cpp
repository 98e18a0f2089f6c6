// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/native/native_form.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "forms/row_habits.h"
#include "shell/native/tab_order.h"

namespace corvane {

// --- Handlers ----------------------------------------------------------------------------------------------------

void NativeForm::run(const EventLoop::Handler& handler) {
    if (!bound()) return;
    loop_.enter(handler);
    if (bound() && loop_.depth() == 0) flush();
}

EventLoop::Handler NativeForm::whileBound(EventLoop::Handler handler) const {
    return [handler = std::move(handler), alive = std::weak_ptr<bool>(alive_)] {
        if (!alive.expired()) handler();
    };
}

void NativeForm::post(EventLoop::Handler handler) { loop_.post(whileBound(std::move(handler))); }

void NativeForm::soon(EventLoop::Handler handler) { surface_.soon(whileBound(std::move(handler))); }

void NativeForm::command(const Event<>& event) {
    if (bound() && !loop_.held()) post([&event] { event.raise(); });
}

void NativeForm::flushSoon(Binder& binder) {
    if (std::find(waiting_.begin(), waiting_.end(), &binder) != waiting_.end()) return;
    if (waiting_.empty()) soon([this] { flush(); });
    waiting_.push_back(&binder);
}

void NativeForm::flush() {
    for (Binder* each : std::exchange(waiting_, {})) each->flush();
}

// --- Binding -----------------------------------------------------------------------------------------------------

void NativeForm::bind(Form& form) {
    form_ = &form;
    alive_ = std::make_shared<bool>(true);
    keys_ = AccessKeys(form);
    makeBinders();
    takeScale();
    for (const auto& each : binders_) each->takeAll();
    surface_.orderTabs(tabOrder(form));
    for (const PropertyId each : {PropertyId::Caption, PropertyId::Enabled, PropertyId::Width, PropertyId::Visible}) {
        formChanged(each);
    }
}

void NativeForm::unbind() {
    for (const auto& each : binders_) each->release();
    waiting_.clear();
    alive_.reset();
    form_ = nullptr;
}

void NativeForm::makeBinders() {
    for (const bool frames : {true, false}) {
        for (Control* control : form_->controls()) {
            if ((control->kind() == ControlKind::Frame) != frames) continue;
            auto binder = makeBinder(*this, *control);
            if (!binder) continue;
            byControl_[control] = binder.get();
            binders_.push_back(std::move(binder));
        }
    }
}

/// In the system's font; in a smaller one where the window would not fit on the screen, as with texts of twice the size
/// on a small one.
void NativeForm::takeScale() {
    constexpr double kLeastShare = 0.3;
    constexpr double kStep = 0.96;  // letters come in whole pixels, and margins do not shrink with them
    double share = 1;
    surface_.setTextShare(share);
    measure();
    double gained = share;
    while (shareThatFits() < 1 && share > kLeastShare) {
        const FormScale before = scale_;
        share *= std::min(kStep, shareThatFits());
        surface_.setTextShare(share);
        measure();
        if (scale_ != before) gained = share;
    }
    if (gained == share) return;
    surface_.setTextShare(gained);  // what has no room is not made of letters
    measure();
}

/// Of the window at its smallest, how much of it there is room for; 1: for all.
double NativeForm::shareThatFits() const {
    const PixelRect room = surface_.room();
    const bool grows = form_->Resizable;
    const PixelSize least =
        scale_.size(grows ? form_->MinWidth : form_->Width, grows ? form_->MinHeight : form_->Height);
    if (room.width <= 0 || room.height <= 0 || least.width <= 0 || least.height <= 0) return 1;
    return std::min({1.0, 1.0 * room.width / least.width, 1.0 * room.height / least.height});
}

void NativeForm::measure() {
    scale_ = FormScale(surface_.textSize(FormScale::kSampleText), surface_.leastScale());
    for (const auto& each : binders_) scale_.makeRoom(each->wanted(), each->designWidth(), each->designHeight());
}

void NativeForm::rescale() {
    if (!bound() || binders_.empty()) return;
    takeScale();
    takeSize();
    for (const auto& each : binders_) each->flush();
    if (shownBefore_ && form_->Resizable) putInSight();
}

int NativeForm::textWidth(const std::string& text) const {
    return static_cast<int>(std::ceil(surface_.textSize(text).width / scale_.across()));
}

void NativeForm::changed(Control& control, PropertyId property) {
    if (&control == form_) {
        formChanged(property);
    } else if (const auto found = byControl_.find(&control); found != byControl_.end()) {
        found->second->changed(property);
    }
}

void NativeForm::formChanged(PropertyId property) {
    if (taking_) return;
    switch (property) {
        case PropertyId::Caption:
            surface_.setTitle(form_->Caption);
            break;
        case PropertyId::Enabled:
            surface_.enable(form_->Enabled);
            break;
        case PropertyId::Width:
        case PropertyId::Height:
            takeSize();
            break;
        case PropertyId::Visible:
            if (form_->Visible && !shownBefore_) putInPlace();
            surface_.show(form_->Visible);
            break;
        case PropertyId::WindowState:
            surface_.setState(form_->WindowState);
            break;
        default:
            break;
    }
}

// --- Size and place ----------------------------------------------------------------------------------------------

void NativeForm::takeSize() {
    surface_.setInner(scale_.size(form_->Width, form_->Height), scale_.size(form_->MinWidth, form_->MinHeight));
}

/// Around the form's middle: the window may be larger than the form says, when the font is.
void NativeForm::putInPlace() {
    shownBefore_ = true;
    takeSize();
    if (!putInSight()) return;
    if (const Control* const first = firstFocused(*form_)) surface_.focusFirst(*first);
}

/// No larger than there is room for, and inside of it. False: there is no screen.
bool NativeForm::putInSight() {
    const PixelRect room = surface_.room();
    if (room.width <= 0) return false;
    PixelSize size = surface_.outer();
    if (form_->Resizable) size = {std::min(size.width, room.width), std::min(size.height, room.height)};
    const PixelPoint middle = surface_.onScreen(form_->Left + form_->Width / 2, form_->Top + form_->Height / 2);
    surface_.moveOuter(placedInside(room, middle, size));
    return true;
}

void NativeForm::moved(Twips left, Twips top) {
    if (!bound()) return;
    taking_ = true;
    form_->Move(left, top);
    taking_ = false;
}

void NativeForm::sized(PixelSize inner) {
    if (!bound() || inner == scale_.size(form_->Width, form_->Height)) return;
    run([this, inner] {
        taking_ = true;
        form_->SetSize(scale_.twipsAcross(inner.width), scale_.twipsDown(inner.height));
        taking_ = false;
        form_->Resize.raise();
    });
}

void NativeForm::stateIs(WindowState state) {
    if (!bound()) return;
    taking_ = true;
    form_->WindowState = state;
    taking_ = false;
}

// --- Input -------------------------------------------------------------------------------------------------------

void NativeForm::activated() {
    if (bound() && form_->Activate.isTied()) run([this] { form_->Activate.raise(); });
}

void NativeForm::cancel() {
    if (!bound()) return;
    for (Control* each : form_->controls()) {
        if (each->kind() != ControlKind::CommandButton) continue;
        auto& button = static_cast<CommandButton&>(*each);
        if (button.Cancel && button.Enabled) return command(button.Click);
    }
}

void NativeForm::askToClose(bool altHeld) {
    if (bound()) post([this, altHeld] { form_->CloseRequest.raise(altHeld); });
}

bool NativeForm::helpKey(int shift) {
    if (!bound() || !form_->KeyDown.isTied()) return false;
    post([this, shift] { form_->KeyDown.raise({kKeyF1, shift}); });
    return true;
}

bool NativeForm::key(const KeyArgs& key) {
    const auto* const keys = bound() ? dynamic_cast<const TakesKeys*>(form_) : nullptr;
    if (keys == nullptr || !keys->takeKey) return false;
    bool taken = false;
    run([&] { taken = keys->takeKey(key); });
    return taken;
}

MouseArgs NativeForm::args(const NativeMouse& mouse) const {
    return {mouse.button, mouse.shift, scale_.twipsAcross(mouse.x), scale_.twipsDown(mouse.y)};
}

void NativeForm::mouse(const NativeMouse& mouse) {
    run([this, &mouse] {
        const auto& event = mouse.act == NativeMouse::Act::Move      ? form_->MouseMove
                            : mouse.act == NativeMouse::Act::Release ? form_->MouseUp
                                                                     : form_->MouseDown;
        event.raise(args(mouse));
    });
}

}  // namespace corvane
