// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>

#include "forms/lists.h"

namespace corvane {

/// The items of a control as a Qt model, without a copy of them: a list of many thousand names costs nothing until a
/// row is painted.
class ItemsModel : public QAbstractListModel {
public:
    static constexpr int kDepthRole = Qt::UserRole;  ///< levels that the item is set in (folders)

    explicit ItemsModel(const ItemsControl& control, QObject* parent)
        : QAbstractListModel(parent), control_(&control) {}

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : count_; }
    QVariant data(const QModelIndex& index, int role) const override;

    QString tip(int row, bool isCut) const;  ///< what a row says to the pointer; "": nothing of its own

    QString detail(int row, int column) const;  ///< what a row says in a column
    bool isPicture(int row) const;              ///< a small picture stands before it, or will

    /// The control's items have changed.
    void refresh();
    /// The control goes: the model is empty from now on.
    void release();

private:
    const ItemsControl* control_;
    int count_ = 0;
};

}  // namespace corvane
