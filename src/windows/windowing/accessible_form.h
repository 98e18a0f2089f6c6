// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/accessible/accessible_tree.h"
#include "shell/accessible/drawn_access.h"
#include "winapi/api.h"
// After windows.h:
#include <oleacc.h>

namespace corvane {

class CanvasWindow;

/// A window whose controls are drawn in the system's words: what AccessibleTree says of it, its controls numbered
/// from 1. Lives as long as an assistive program asks; the window tells it when it goes.
class AccessibleForm final : public IAccessible, private DrawnAccess {
public:
    explicit AccessibleForm(CanvasWindow& window);
    virtual ~AccessibleForm() = default;
    AccessibleForm(const AccessibleForm&) = delete;
    AccessibleForm& operator=(const AccessibleForm&) = delete;

    /// The window goes: every question fails from now on.
    void leave();
    LONG childOf(const Control& control) const;

    // IUnknown, IDispatch: asked for by no script here.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** given) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
    HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override;
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** given) override;
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* text) override;
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override;
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override;
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT, BSTR*) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR*, VARIANT, long*) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT, BSTR*) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT*) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override;
    HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accNavigate(long, VARIANT, VARIANT*) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE accHitTest(long left, long top, VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override;
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override;

private:
    /// The control of a child's number; null: the form itself, or there is none.
    Control* controlOf(const VARIANT& child) const;
    bool isSelf(const VARIANT& child) const;

    bool hasKeyboard() const override;

    CanvasWindow* window_;
    AccessibleTree tree_{*this};
    ULONG references_ = 1;
};

}  // namespace corvane
