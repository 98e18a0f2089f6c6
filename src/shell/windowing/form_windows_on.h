// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "shell/windowing/form_windows.h"
#include "shell/windowing/make_drawn.h"

namespace corvane {

/// The windows of the forms on a desktop's surfaces, which are made with its context: none of a hidden form, drawn ones
/// of painted and media forms; those of dialogs the desktop makes.
template <class Canvas, class MediaCanvas, class Context>
class FormWindowsOn : public FormWindows {
public:
    explicit FormWindowsOn(Context& context) : FormWindows(context.loop, context), context_(context) {}

protected:
    virtual std::unique_ptr<BoundWindow> makeDialog(Form& form) = 0;
    std::unique_ptr<BoundWindow> makeWindow(Form& form) final {
        if (form.style() == FormStyle::Hidden) return nullptr;
        if (form.style() == FormStyle::Dialog) return makeDialog(form);
        return makeDrawn<Canvas, MediaCanvas>(form, context_);
    }
    Context& context() const { return context_; }

private:
    Context& context_;
};

}  // namespace corvane
