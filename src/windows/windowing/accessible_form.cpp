// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/accessible_form.h"

#include <cmath>
#include <cstdlib>

#include "windows/windowing/canvas_window.h"
#include "windows/windowing/shown_text.h"

namespace corvane {

namespace {

RECT toRect(const Rectangle& place) {
    return {std::lround(place.x), std::lround(place.y), std::lround(place.right()), std::lround(place.bottom())};
}

BSTR toBstr(const std::string& text) { return SysAllocString(shownText(text).c_str()); }

void setNumber(VARIANT& variant, LONG number) {
    variant.vt = VT_I4;
    variant.lVal = number;
}

LONG roleOf(const Control& control) {
    switch (AccessibleTree::roleOf(control)) {
        case AccessibleRole::Slider:
            return ROLE_SYSTEM_SLIDER;
        case AccessibleRole::Text:
            return ROLE_SYSTEM_STATICTEXT;
        case AccessibleRole::Button: {
            const auto* const mouse = dynamic_cast<const MouseControl*>(&control);
            return mouse != nullptr && mouse->Checkable ? ROLE_SYSTEM_CHECKBUTTON : ROLE_SYSTEM_PUSHBUTTON;
        }
        case AccessibleRole::Movie:
            return ROLE_SYSTEM_ANIMATION;
        case AccessibleRole::Graphic:
            break;
    }
    return ROLE_SYSTEM_GRAPHIC;
}

bool is(const Control* control, AccessibleRole role) {
    return control != nullptr && AccessibleTree::roleOf(*control) == role;
}

}  // namespace

AccessibleForm::AccessibleForm(CanvasWindow& window) : DrawnAccess(window), window_(&window) {}

void AccessibleForm::leave() {
    DrawnAccess::leave();
    window_ = nullptr;
}

LONG AccessibleForm::childOf(const Control& control) const {
    const auto index = tree_.indexOf(control);
    return index ? static_cast<LONG>(*index) + 1 : CHILDID_SELF;
}

bool AccessibleForm::isSelf(const VARIANT& child) const {
    return form() != nullptr && child.vt == VT_I4 && child.lVal == CHILDID_SELF;
}

Control* AccessibleForm::controlOf(const VARIANT& child) const {
    if (child.vt != VT_I4 || child.lVal <= 0) return nullptr;
    return tree_.at(static_cast<std::size_t>(child.lVal) - 1);
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
    *count = static_cast<long>(tree_.controls().size());
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
    *name = toBstr(control != nullptr ? AccessibleTree::nameOf(*control) : tree_.name());
    return S_OK;
}

HRESULT AccessibleForm::get_accValue(VARIANT child, BSTR* value) {
    *value = nullptr;
    const Control* const control = controlOf(child);
    if (is(control, AccessibleRole::Slider)) {
        *value = toBstr(std::to_string(std::lround(AccessibleTree::rangeOf(*control).value)));
    } else if (is(control, AccessibleRole::Text)) {
        *value = toBstr(AccessibleTree::captionOf(*control));
    }
    return *value != nullptr ? S_OK : DISP_E_MEMBERNOTFOUND;
}

HRESULT AccessibleForm::get_accDescription(VARIANT child, BSTR* text) {
    *text = nullptr;
    const Control* const control = controlOf(child);
    const std::string told = control != nullptr ? AccessibleTree::descriptionOf(*control) : std::string();
    if (told.empty()) return S_FALSE;
    *text = toBstr(told);
    return S_OK;
}

HRESULT AccessibleForm::get_accRole(VARIANT child, VARIANT* role) {
    const Control* const control = controlOf(child);
    if (control == nullptr && !isSelf(child)) return E_INVALIDARG;
    setNumber(*role, control != nullptr ? roleOf(*control) : static_cast<LONG>(ROLE_SYSTEM_CLIENT));
    return S_OK;
}

HRESULT AccessibleForm::get_accState(VARIANT child, VARIANT* told) {
    const Control* const control = controlOf(child);
    if (control == nullptr && !isSelf(child)) return E_INVALIDARG;
    LONG bits = 0;
    if (control != nullptr) {
        const AccessibleState state = tree_.stateOf(*control);
        const auto add = [&bits](bool holds, LONG bit) { bits |= holds ? bit : 0; };
        add(state.hidden, STATE_SYSTEM_INVISIBLE);
        add(state.offscreen, STATE_SYSTEM_OFFSCREEN);
        add(state.disabled, STATE_SYSTEM_UNAVAILABLE);
        add(state.focusable, STATE_SYSTEM_FOCUSABLE);
        add(state.focused, STATE_SYSTEM_FOCUSED);
        add(state.pressed, STATE_SYSTEM_PRESSED);
        add(state.checked, STATE_SYSTEM_CHECKED);
        add(state.readOnly, STATE_SYSTEM_READONLY);
    }
    setNumber(*told, bits);
    return S_OK;
}

HRESULT AccessibleForm::get_accFocus(VARIANT* child) {
    if (form() == nullptr || !hasKeyboard()) {
        child->vt = VT_EMPTY;
        return S_FALSE;
    }
    const Control* const control = tree_.focused();
    setNumber(*child, control != nullptr ? childOf(*control) : CHILDID_SELF);
    return S_OK;
}

HRESULT AccessibleForm::accSelect(long flags, VARIANT child) {
    Control* const control = controlOf(child);
    if (control == nullptr || flags != SELFLAG_TAKEFOCUS) return DISP_E_MEMBERNOTFOUND;
    tree_.takeFocus(*control);
    return S_OK;
}

HRESULT AccessibleForm::get_accDefaultAction(VARIANT child, BSTR* action) {
    *action = nullptr;
    if (!is(controlOf(child), AccessibleRole::Button)) return DISP_E_MEMBERNOTFOUND;
    *action = toBstr("Press");
    return S_OK;
}

HRESULT AccessibleForm::accDoDefaultAction(VARIANT child) {
    Control* const control = controlOf(child);
    if (!is(control, AccessibleRole::Button)) return DISP_E_MEMBERNOTFOUND;
    tree_.press(*control);
    return S_OK;
}

HRESULT AccessibleForm::put_accValue(VARIANT child, BSTR value) {
    Control* const control = controlOf(child);
    if (!is(control, AccessibleRole::Slider)) return DISP_E_MEMBERNOTFOUND;
    wchar_t* end = nullptr;
    const double wanted = std::wcstod(value, &end);
    if (end == value || !std::isfinite(wanted)) return E_INVALIDARG;
    tree_.setValue(*control, wanted);
    return S_OK;
}

HRESULT AccessibleForm::accLocation(long* left, long* top, long* width, long* height, VARIANT child) {
    const Control* const control = controlOf(child);
    if (control == nullptr && !isSelf(child)) return E_INVALIDARG;
    RECT place{};
    GetClientRect(window_->handle(), &place);
    if (control != nullptr) place = toRect(placeOf(*control));
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
    const Control* const found = tree_.hit(at.x, at.y);
    setNumber(*child, found != nullptr ? childOf(*found) : CHILDID_SELF);
    return S_OK;
}

bool AccessibleForm::hasKeyboard() const { return GetFocus() == window_->handle(); }

}  // namespace corvane
