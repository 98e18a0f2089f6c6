// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <optional>
#include <string>

#include "forms/form.h"

namespace corvane {

/// What assistive programs are told of one change of a control.
struct AccessibleChange {
    enum class Kind {
        Enabled,  ///< a state: it can be used, or no more
        Checked,  ///< a state: on or off
        Shown,
        Hidden,
        Description,
        Value,  ///< a slider stands elsewhere
        Text    ///< a text's caption
    } kind;
    std::string before, now;  ///< of a text
};

/// Decides which changes of drawn controls are worth telling.
class AccessibleNews {
public:
    /// The change that a property's notification means; empty: none that anybody wants to hear. What moves by itself is
    /// told by whole units: nobody wants to hear ten values a second.
    std::optional<AccessibleChange> of(const Control& control, PropertyId property);
    void forget() { told_.clear(); }  ///< the controls go

private:
    struct Told {
        long long units = -1;
        std::string caption;  ///< before the first one nothing is known of an older one
    };
    std::map<const Control*, Told> told_;  ///< last
};

}  // namespace corvane
