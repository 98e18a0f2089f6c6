// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "forms/form.h"
#include "shell/native/native_controls.h"

namespace corvane {

class NativeForm;

/// Keeps one control of a dialog form and its native control in step: a change of a property goes to the native one,
/// what the user does at that comes back as changes of properties and events. Neither echoes. One class a group of
/// kinds. The control is touched only while the form is bound.
class Binder : public NativeEvents {
public:
    Binder(NativeForm& form, Control& control);
    Binder(const Binder&) = delete;
    Binder& operator=(const Binder&) = delete;

    /// A property of the control has changed.
    virtual void changed(PropertyId property);
    /// Shows what changed() has put off.
    virtual void flush();
    /// Shows every property.
    virtual void takeAll();
    /// The room that the control needs for its text, screen pixels; 0: no wish.
    virtual PixelSize wanted() const { return {}; }
    /// The form goes.
    void release() { native().release(); }

    void focused(bool got) override;

    Twips designWidth() const { return designWidth_; }
    Twips designHeight() const { return designHeight_; }

protected:
    virtual NativeControl& native() const = 0;
    NativeForm& form() const { return form_; }
    std::string marked(const std::string& caption) const;  ///< with "&" before the control's letter
    void flushSoon();

private:
    NativeForm& form_;
    Control& control_;
    Twips designWidth_;
    Twips designHeight_;
};

/// The binder of a control of class C with a native control N.
template <class C, class N>
class BinderOf : public Binder {
protected:
    template <class Made>
    BinderOf(NativeForm& form, C& control, NativeSurface& surface,
             std::unique_ptr<N> (NativeSurface::*make)(const Made&, NativeEvents&))
        : Binder(form, control), own(control), shown((surface.*make)(control, *this)) {}
    NativeControl& native() const final { return *shown; }

    C& own;                          ///< the form's
    const std::unique_ptr<N> shown;  ///< the system's
};

/// The binder for the control's kind, which makes its native control; null for kinds that a dialog does not show.
std::unique_ptr<Binder> makeBinder(NativeForm& form, Control& control);

// One a group of kinds.
std::unique_ptr<Binder> makeButtonBinder(NativeForm& form, Control& control);
std::unique_ptr<Binder> makeLabelBinder(NativeForm& form, Label& label);
std::unique_ptr<Binder> makeMarkBinder(NativeForm& form, Image& image);
std::unique_ptr<Binder> makeFieldBinder(NativeForm& form, TextBox& box);
std::unique_ptr<Binder> makeStepperBinder(NativeForm& form, ScrollBar& bar);
std::unique_ptr<Binder> makeChoiceBinder(NativeForm& form, ItemsControl& control);
std::unique_ptr<Binder> makeListBinder(NativeForm& form, ItemsControl& control);

}  // namespace corvane
