// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/accessible_form.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "windows/text.h"
#include "windows/windowing/canvas_window.h"

namespace corvane {

namespace {

BSTR toBstr(const std::string& text) { return SysAllocString(toWide(text).c_str()); }

void setNumber(VARIANT& variant, LONG number) {
    variant.vt = VT_I4;
    variant.lVal = number;
}

const MouseControl* asMouse(const Control* control) { return dynamic_cast<const MouseControl*>(control); }

bool hasValue(const Control* control) {
    const MouseControl* const mouse = asMouse(control);
    return mouse != nullptr && mouse->AccessibleValue;
}

bool isPressable(const Control& control) {
    return control.kind() == ControlKind::CommandButton ||
           (control.kind() == ControlKind::Image && static_cast<const Image&>(control).Click.isTied());
}

LONG roleOf(const Control& control) {
    if (hasValue(&control)) return ROLE_SYSTEM_SLIDER;
    if (const MouseControl* const mouse = asMouse(&control); mouse != nullptr && mouse->Checkable) {
        return ROLE_SYSTEM_CHECKBUTTON;
    }
    if (isPressable(control)) return ROLE_SYSTEM_PUSHBUTTON;
    return control.kind() == ControlKind::Label ? ROLE_SYSTEM_STATICTEXT : ROLE_SYSTEM_GRAPHIC;
}

}  // namespace

std::vector<Control*> AccessibleForm::children() const {
    std::vector<Control*> found;
    if (window_ == nullptr || !window_->isBound()) return found;
    for (Control* each : window_->shownForm().controls()) {
        if (!each->AccessibleName.empty()) found.push_back(each);
    }
    return found;
}

LONG AccessibleForm::childOf(const Control& control) const {
    const std::vector<Control*> all = children();
    const auto found = std::find(all.begin(), all.end(), &control);
    return found == all.end() ? CHILDID_SELF : static_cast<LONG>(found - all.begin()) + 1;
}

bool AccessibleForm::isSelf(const VARIANT& child) const {
    return window_ != nullptr && window_->isBound() && child.vt == VT_I4 && child.lVal == CHILDID_SELF;
}

Control* AccessibleForm::controlOf(const VARIANT& child) const {
    if (child.vt != VT_I4 || child.lVal <= 0) return nullptr;
    const std::vector<Control*> all = children();
    const auto at = static_cast<std::size_t>(child.lVal) - 1;
    return at < all.size() ? all[at] : nullptr;
}

HRESULT AccessibleForm::QueryInterface(REFIID wanted, void** given) {
    if (wanted != IID_IUnknown && wanted != IID_IDispatch && wanted != IID_IAccessible) {
        *given = nullptr;
        return E_NOINTERFACE;
    }
    *given = static_cast<IAccessible*>(this);
    AddRef();
    return S_OK;
}

ULONG AccessibleForm::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT AccessibleForm::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT AccessibleForm::get_accParent(IDispatch** parent) {
    *parent = nullptr;
    if (window_ == nullptr) return E_FAIL;
    return AccessibleObjectFromWindow(window_->handle(), static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                      reinterpret_cast<void**>(parent));
}

HRESULT AccessibleForm::get_accChildCount(long* count) {
    *count = static_cast<long>(children().size());
    return S_OK;
}

HRESULT AccessibleForm::get_accChild(VARIANT child, IDispatch** given) {
    *given = nullptr;
    return controlOf(child) != nullptr ? S_FALSE : E_INVALIDARG;  // a child is asked through this object
}

HRESULT AccessibleForm::get_accName(VARIANT child, BSTR* name) {
    *name = nullptr;
    const Control* const control = controlOf(child);
    if (control == nullptr && !isSelf(child)) return E_INVALIDARG;
    *name = toBstr(control != nullptr ? control->AccessibleName : window_->shownForm().Caption.get());
    return S_OK;
}

HRESULT AccessibleForm::get_accValue(VARIANT child, BSTR* value) {
    *value = nullptr;
    const Control* const control = controlOf(child);
    if (control == nullptr) return DISP_E_MEMBERNOTFOUND;
    if (hasValue(control)) {
        *value = toBstr(std::to_string(std::lround(asMouse(control)->AccessibleValue().value)));
    } else if (control->kind() == ControlKind::Label) {
        *value = toBstr(static_cast<const Label*>(control)->Caption);
    }
    return *value != nullptr ? S_OK : DISP_E_MEMBERNOTFOUND;
}

HRESULT AccessibleForm::get_accDescription(VARIANT child, BSTR* text) {
    *text = nullptr;
    const Control* const control = controlOf(child);
    if (control == nullptr || control->ToolTipText.get().empty()) return S_FALSE;
    *text = toBstr(control->ToolTipText);
    return S_OK;
}

HRESULT AccessibleForm::get_accRole(VARIANT child, VARIANT* role) {
    const Control* const control = controlOf(child);
    if (control == nullptr && !isSelf(child)) return E_INVALIDARG;
    setNumber(*role, control != nullptr ? roleOf(*control) : static_cast<LONG>(ROLE_SYSTEM_CLIENT));
    return S_OK;
}

HRESULT AccessibleForm::get_accState(VARIANT child, VARIANT* state) {
    const Control* const control = controlOf(child);
    if (control == nullptr && !isSelf(child)) return E_INVALIDARG;
    LONG bits = 0;
    if (control != nullptr) {
        if (!control->Visible || IsWindowVisible(window_->handle()) == 0) bits |= STATE_SYSTEM_INVISIBLE;
        if (!control->Enabled) bits |= STATE_SYSTEM_UNAVAILABLE;
        if (control->Visible && control->TabIndex >= 0) bits |= STATE_SYSTEM_FOCUSABLE;
        if (control == window_->focused()) bits |= STATE_SYSTEM_FOCUSED;
        if (const MouseControl* const mouse = asMouse(control); mouse != nullptr && mouse->Checked) {
            bits |= STATE_SYSTEM_CHECKED;
        }
    }
    setNumber(*state, bits);
    return S_OK;
}

HRESULT AccessibleForm::get_accFocus(VARIANT* child) {
    if (window_ == nullptr || GetFocus() != window_->handle()) {
        child->vt = VT_EMPTY;
        return S_FALSE;
    }
    setNumber(*child, window_->focused() != nullptr ? childOf(*window_->focused()) : CHILDID_SELF);
    return S_OK;
}

HRESULT AccessibleForm::get_accDefaultAction(VARIANT child, BSTR* action) {
    *action = nullptr;
    const Control* const control = controlOf(child);
    if (control == nullptr || !isPressable(*control)) return DISP_E_MEMBERNOTFOUND;
    *action = toBstr("Press");
    return S_OK;
}

HRESULT AccessibleForm::accDoDefaultAction(VARIANT child) {
    Control* const control = controlOf(child);
    if (control == nullptr || !isPressable(*control)) return DISP_E_MEMBERNOTFOUND;
    window_->pressSoon(*control);
    return S_OK;
}

HRESULT AccessibleForm::put_accValue(VARIANT child, BSTR value) {
    Control* const control = controlOf(child);
    if (!hasValue(control)) return DISP_E_MEMBERNOTFOUND;
    wchar_t* end = nullptr;
    const double wanted = std::wcstod(value, &end);
    if (end == value || !std::isfinite(wanted)) return E_INVALIDARG;
    window_->setValueSoon(static_cast<MouseControl&>(*control), wanted);
    return S_OK;
}

HRESULT AccessibleForm::accLocation(long* left, long* top, long* width, long* height, VARIANT child) {
    const Control* const control = controlOf(child);
    if (control == nullptr && !isSelf(child)) return E_INVALIDARG;
    RECT place{};
    GetClientRect(window_->handle(), &place);
    if (control != nullptr) place = window_->screenPlace(*control);
    MapWindowPoints(window_->handle(), nullptr, reinterpret_cast<POINT*>(&place), 2);
    *left = place.left;
    *top = place.top;
    *width = place.right - place.left;
    *height = place.bottom - place.top;
    return S_OK;
}

HRESULT AccessibleForm::accHitTest(long left, long top, VARIANT* child) {
    child->vt = VT_EMPTY;
    if (window_ == nullptr) return E_FAIL;
    POINT at{left, top};
    ScreenToClient(window_->handle(), &at);
    RECT client{};
    GetClientRect(window_->handle(), &client);
    if (PtInRect(&client, at) == 0) return S_FALSE;
    LONG found = CHILDID_SELF;
    const std::vector<Control*> all = children();
    for (std::size_t i = 0; i < all.size(); ++i) {
        const RECT place = window_->screenPlace(*all[i]);
        if (all[i]->Visible && PtInRect(&place, at) != 0) found = static_cast<LONG>(i) + 1;  // the topmost comes last
    }
    setNumber(*child, found);
    return S_OK;
}

}  // namespace corvane
