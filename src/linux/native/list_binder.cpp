// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDragEnterEvent>
#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QListView>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QToolTip>

#include "linux/native/binder.h"
#include "linux/native/items_model.h"
#include "linux/native/native_form_window.h"
#include "linux/windowing/input_map.h"
#include "linux/windowing/shown_text.h"

namespace corvane {

namespace {

constexpr int kIndent = 12;  ///< pixels a folder is set in for each level

/// Draws a row: folders set in behind their picture. When the pointer rests on it the item's own tip is shown, or its
/// text where that is cut.
class RowDelegate : public QStyledItemDelegate {
public:
    RowDelegate(bool folders, QObject* parent) : QStyledItemDelegate(parent), folders_(folders) {}

    int widthPixels = 0;  ///< of every row; 0: as wide as the list

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        constexpr int kPadding = 4;
        QStyleOptionViewItem sized(option);
        initStyleOption(&sized, index);
        const int icon = folders_ ? sized.decorationSize.height() : 0;
        return {widthPixels, std::max(sized.fontMetrics.height(), icon) + kPadding};
    }
    int rowWidth(const QStyleOptionViewItem& option, const QModelIndex& index) const {
        constexpr int kRoom = 16;
        return index.data(ItemsModel::kDepthRole).toInt() * kIndent + option.decorationSize.width() + kRoom +
               option.fontMetrics.horizontalAdvance(index.data().toString());
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QStyleOptionViewItem row(option);
        row.rect.setLeft(row.rect.left() + index.data(ItemsModel::kDepthRole).toInt() * kIndent);
        QStyledItemDelegate::paint(painter, row, index);
    }
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
        if (event->type() != QEvent::ToolTip || !index.isValid()) return false;
        const QString text = index.data().toString();
        constexpr int kMargins = 8;
        const bool cut = option.fontMetrics.horizontalAdvance(text) + kMargins > option.rect.width();
        const QString tip = index.data(Qt::ToolTipRole).toString();
        if (!cut && tip.isEmpty()) return false;
        QToolTip::showText(event->globalPos(), plainTip(tip.isEmpty() ? text : tip), view);
        return true;
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (!folders_) return;
        const auto depth = [](const QModelIndex& of) { return of.data(ItemsModel::kDepthRole).toInt(); };
        const QModelIndex next = index.sibling(index.row() + 1, 0);
        const bool open = next.isValid() && depth(next) > depth(index);
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->icon =
            option->widget->style()->standardIcon(open ? QStyle::SP_DirOpenIcon : QStyle::SP_DirIcon, option);
    }

private:
    bool folders_;
};

/// The list on the screen: takes drops of files, and in a folder list Enter goes into the folder.
class ItemsView : public QListView {
public:
    using QListView::QListView;
    std::function<void(const DropData&)> dropped;
    std::function<void()> entered;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override { take(*event); }
    void dragMoveEvent(QDragMoveEvent* event) override { take(*event); }
    void dropEvent(QDropEvent* event) override {
        if (!take(*event)) return;
        dropped(dropData(*event->mimeData()));
    }
    void keyPressEvent(QKeyEvent* event) override {
        const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (!enter || !entered || !currentIndex().isValid()) return QListView::keyPressEvent(event);
        event->accept();
        entered();
    }

private:
    bool take(QDropEvent& event) {
        if (!dropped || !dropData(*event.mimeData()).hasFiles) {
            event.ignore();
            return false;
        }
        event.setDropAction(Qt::CopyAction);
        event.accept();
        return true;
    }
};

class ListBinder : public Binder {
public:
    ListBinder(NativeWindow& window, ItemsControl& control, QWidget& parent)
        : Binder(window, control, new ItemsView(&parent)),
          items_(control),
          model_(new ItemsModel(control, &widget())),
          rows_(new RowDelegate(control.kind() == ControlKind::FolderBox, &widget())) {
        setUpView();
        const auto* selection = view().selectionModel();
        QObject::connect(selection, &QItemSelectionModel::selectionChanged, &view(),
                         [this](const QItemSelection& more, const QItemSelection& less) { takeSelection(more, less); });
        QObject::connect(selection, &QItemSelectionModel::currentChanged, &view(), [this] { takeCurrent(); });
        QObject::connect(&view(), &QListView::doubleClicked, &view(),
                         [this](const QModelIndex& index) { doubleClick(index.row()); });
        if (control.kind() == ControlKind::FolderBox) {
            view().entered = [this] { doubleClick(view().currentIndex().row()); };
        }
        if (control.OLEDragDrop.isTied()) acceptFiles();
    }

    void changed(PropertyId property) override {
        switch (property) {
            case PropertyId::Items:
                itemsStale_ = true;
                [[fallthrough]];
            case PropertyId::ListIndex:
            case PropertyId::Selected:
                if (taking_) return;
                selectionStale_ = true;
                flushSoon();
                break;
            case PropertyId::HorizontalExtent:
                flushSoon();
                break;
            default:
                Binder::changed(property);
                break;
        }
    }
    void flush() override {
        Binder::flush();
        if (itemsStale_) showItems();
        if (items_.kind() == ControlKind::ListBox) {
            const int extent = static_cast<const ListBox&>(items_).HorizontalExtent;
            setRowWidth(static_cast<int>(extent * window().scale().across()));
        }
        if (selectionStale_) showSelection();
    }
    void takeAll() override {
        itemsStale_ = selectionStale_ = true;
        Binder::takeAll();
    }
    void release() override { model_->release(); }

private:
    ItemsView& view() const { return static_cast<ItemsView&>(widget()); }

    void setUpView() {
        view().setModel(model_);
        view().setItemDelegate(rows_);
        view().setUniformItemSizes(true);
        const int icon = view().fontMetrics().height() + 2;
        view().setIconSize(QSize(icon, icon));
        view().setEditTriggers(QAbstractItemView::NoEditTriggers);
        view().setTextElideMode(Qt::ElideRight);
        view().setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        view().setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
        view().setSelectionMode(items_.MultiSelect ? QAbstractItemView::ExtendedSelection
                                                   : QAbstractItemView::SingleSelection);
    }
    void acceptFiles() {
        view().setAcceptDrops(true);
        view().viewport()->setAcceptDrops(true);
        view().setDragDropMode(QAbstractItemView::DropOnly);
        view().setDropIndicatorShown(false);
        view().dropped = [this](const DropData& data) {
            window().later([this, data] { items_.OLEDragDrop.raise(data); });
        };
    }

    void setRowWidth(int pixels) {
        if (rows_->widthPixels == pixels) return;
        rows_->widthPixels = pixels;
        view().doItemsLayout();
    }
    void showItems() {
        itemsStale_ = false;
        const bool keepPlace = items_.kind() == ControlKind::ListBox;
        const int current = view().currentIndex().row();
        const int scrolled = view().verticalScrollBar()->value();
        taking_ = true;
        model_->refresh();
        if (keepPlace && current >= 0 && items_.count() > 0) {
            const QModelIndex again = model_->index(std::min(current, items_.count() - 1));
            view().selectionModel()->setCurrentIndex(again, QItemSelectionModel::NoUpdate);
        }
        taking_ = false;
        view().doItemsLayout();
        view().verticalScrollBar()->setValue(keepPlace ? scrolled : 0);
        if (items_.kind() == ControlKind::FolderBox) setRowWidth(widestFolder());
        selectionStale_ = true;
    }
    int widestFolder() const {
        constexpr int kMostMeasured = 2000;
        QStyleOptionViewItem option;
        option.initFrom(&view());
        option.decorationSize = view().iconSize();
        int widest = 0;
        for (int i = 0; i < std::min(items_.count(), kMostMeasured); ++i) {
            widest = std::max(widest, rows_->rowWidth(option, model_->index(i)));
        }
        return widest;
    }
    void showSelection() {
        selectionStale_ = false;
        taking_ = true;
        QItemSelectionModel& selection = *view().selectionModel();
        QItemSelection wanted;
        const std::vector<int> rows = items_.selectedIndices();
        for (std::size_t i = 0; i < rows.size();) {
            std::size_t end = i + 1;
            while (end < rows.size() && rows[end] == rows[end - 1] + 1) ++end;
            wanted.select(model_->index(rows[i]), model_->index(rows[end - 1]));
            i = end;
        }
        selection.select(wanted, QItemSelectionModel::ClearAndSelect);
        if (items_.ListIndex >= 0) {
            const QModelIndex current = model_->index(items_.ListIndex);
            selection.setCurrentIndex(current, QItemSelectionModel::NoUpdate);
            view().scrollTo(current);
        }
        taking_ = false;
    }

    void takeSelection(const QItemSelection& more, const QItemSelection& less) {
        if (taking_ || !window().bound()) return;
        window().run([&] {
            taking_ = true;
            if (items_.MultiSelect) {
                take(less, false);
                take(more, true);
            }
            items_.ListIndex = view().currentIndex().row();
            taking_ = false;
            items_.Click.raise();
        });
    }
    void take(const QItemSelection& ranges, bool selected) {
        for (const QItemSelectionRange& each : ranges) {
            for (int row = each.top(); row <= each.bottom(); ++row) items_.select(row, selected);
        }
    }
    void takeCurrent() {
        if (taking_ || !window().bound()) return;
        taking_ = true;
        window().run([&] { items_.ListIndex = view().currentIndex().row(); });
        taking_ = false;
    }
    void doubleClick(int row) {
        window().run([&] {
            taking_ = true;
            items_.ListIndex = row;
            taking_ = false;
        });
        window().command(items_.DblClick);
    }

    ItemsControl& items_;
    ItemsModel* model_;  ///< the widget's
    RowDelegate* rows_;  ///< the widget's
    bool itemsStale_ = true;
    bool selectionStale_ = true;
    bool taking_ = false;  ///< one side is being written: what the other reports is an echo
};

}  // namespace

std::unique_ptr<Binder> makeListBinder(NativeWindow& window, ItemsControl& control, QWidget& parent) {
    return std::make_unique<ListBinder>(window, control, parent);
}

}  // namespace corvane
