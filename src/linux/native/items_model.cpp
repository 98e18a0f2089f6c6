// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/native/items_model.h"

#include "linux/windowing/shown_text.h"
#include "shell/native/list_rows.h"

namespace corvane {

QVariant ItemsModel::data(const QModelIndex& index, int role) const {
    // Between a change and the refresh after it the control may have fewer items than the model says.
    if (control_ == nullptr || index.row() < 0 || index.row() >= control_->count()) return {};
    if (role == Qt::AccessibleTextRole && control_->kind() == ControlKind::ListBox) {
        return shownText(rowInWords(*control_, index.row()));
    }
    if (role != Qt::DisplayRole && role != kDepthRole) return {};
    const std::string& text = control_->item(index.row());
    std::size_t indent = 0;
    if (control_->kind() == ControlKind::FolderBox) {
        indent = text.find_first_not_of(' ');
        if (indent == std::string::npos) indent = 0;
    }
    if (role == kDepthRole) return static_cast<int>(indent / 2);
    return shownRow(text.substr(indent));
}

QString ItemsModel::tip(int row, bool isCut) const {
    return control_ == nullptr ? QString() : shownText(rowTip(*control_, row, isCut));
}

QString ItemsModel::detail(int row, int column) const {
    return control_ == nullptr ? QString() : shownRow(rowDetail(*control_, row, column));
}

bool ItemsModel::isPicture(int row) const { return control_ != nullptr && !rowPictureFile(*control_, row).empty(); }

void ItemsModel::refresh() {
    beginResetModel();
    count_ = control_ != nullptr ? control_->count() : 0;
    endResetModel();
}

void ItemsModel::release() {
    control_ = nullptr;
    refresh();
}

}  // namespace corvane
