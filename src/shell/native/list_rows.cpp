// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/native/list_rows.h"

#include "forms/item_tips.h"
#include "forms/row_habits.h"

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

std::string rowPictureFile(const ItemsControl& list, int row) {
    if (row < 0 || row >= list.count()) return {};
    const auto* const details = dynamic_cast<const ShowsDetails*>(&list);
    return details != nullptr && details->pictureFileOf ? details->pictureFileOf(row) : std::string();
}

std::string rowDetail(const ItemsControl& list, int row, int column) {
    if (row < 0 || row >= list.count()) return {};
    const auto* const details = dynamic_cast<const ShowsDetails*>(&list);
    return details != nullptr && details->detailOf ? details->detailOf(row, column) : std::string();
}

std::string rowInWords(const ItemsControl& list, int row) {
    if (row < 0 || row >= list.count()) return {};
    std::string words = list.item(row);
    const auto* const details = dynamic_cast<const ShowsDetails*>(&list);
    const int columns = details != nullptr ? static_cast<int>(details->columns().size()) : 0;
    for (int column = 0; column < columns; ++column) {
        if (const std::string detail = rowDetail(list, row, column); !detail.empty()) words += ", " + detail;
    }
    return words;
}

}  // namespace corvane
