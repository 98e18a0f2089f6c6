// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/native/list_rows.h"

#include "forms/item_tips.h"

namespace corvane {

std::vector<RowRange> rangesOf(const std::vector<int>& rows) {
    std::vector<RowRange> ranges;
    for (const int each : rows) {
        if (ranges.empty() || ranges.back().last + 1 != each) ranges.push_back({each, each});
        ranges.back().last = each;
    }
    return ranges;
}

std::string rowTip(const ItemsControl& list, int row, bool isCut) {
    if (row < 0 || row >= list.count()) return {};
    const auto* const tips = dynamic_cast<const ItemTips*>(&list);
    std::string tip = tips != nullptr && tips->tipOf ? tips->tipOf(row) : std::string();
    return tip.empty() && isCut ? list.item(row) : tip;
}

}  // namespace corvane
