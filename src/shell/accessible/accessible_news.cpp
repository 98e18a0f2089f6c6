// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/accessible/accessible_news.h"

#include <cmath>
#include <utility>

#include "shell/accessible/accessible_tree.h"

namespace corvane {

std::optional<AccessibleChange> AccessibleNews::of(const Control& control, PropertyId property) {
    using Kind = AccessibleChange::Kind;
    if (control.AccessibleName.empty()) return std::nullopt;
    const AccessibleRole role = AccessibleTree::roleOf(control);
    switch (property) {
        case PropertyId::Enabled:
            return AccessibleChange{Kind::Enabled, {}, {}};
        case PropertyId::Checked:
            return AccessibleChange{Kind::Checked, {}, {}};
        case PropertyId::Visible:
            return AccessibleChange{control.Visible ? Kind::Shown : Kind::Hidden, {}, {}};
        case PropertyId::ToolTipText:
            return AccessibleChange{Kind::Description, {}, {}};
        case PropertyId::Value:
        case PropertyId::Width: {
            if (role != AccessibleRole::Slider) return std::nullopt;
            const long long units = std::llround(AccessibleTree::rangeOf(control).value);
            if (std::exchange(told_[&control].units, units) == units) return std::nullopt;
            return AccessibleChange{Kind::Value, {}, {}};
        }
        case PropertyId::Caption: {
            if (role != AccessibleRole::Text) return std::nullopt;
            const std::string now = AccessibleTree::captionOf(control);
            return AccessibleChange{Kind::Text, std::exchange(told_[&control].caption, now), now};
        }
        default:
            return std::nullopt;
    }
}

}  // namespace corvane
