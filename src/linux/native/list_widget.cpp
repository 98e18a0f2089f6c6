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

#include "linux/native/items_model.h"
#include "linux/native/native_form_window.h"
#include "linux/windowing/input_map.h"
#include "linux/windowing/shown_text.h"
#include "shell/native/list_rows.h"

namespace corvane {

namespace {

constexpr int kIndent = 12;  ///< pixels a folder is set in for each level

/// Draws a row: folders set in behind their picture. When the pointer rests on it the item's own tip is shown, or its
/// text where that is cut.
class RowDelegate : public QStyledItemDelegate {
public:
    RowDelegate(const ItemsModel& rows, bool folders, QObject* parent)
        : QStyledItemDelegate(parent), rows_(rows), folders_(folders) {}

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
        constexpr int kMargins = 8;
        const int width = option.fontMetrics.horizontalAdvance(index.data().toString());
        const QString tip = rows_.tip(index.row(), width + kMargins > option.rect.width());
        if (tip.isEmpty()) return false;
        QToolTip::showText(event->globalPos(), plainTip(tip), view);
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
    const ItemsModel& rows_;
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
        if (!dropped || !offersFiles(*event.mimeData())) {
            event.ignore();
            return false;
        }
        event.setDropAction(Qt::CopyAction);
        event.accept();
        return true;
    }
};

class ListWidget : public WidgetControl, public NativeList {
public:
    ListWidget(NativeWindow& window, const ItemsControl& control, NativeEvents& told)
        : WidgetControl(window, new ItemsView(&window.holderOf(control)), control, told),
          isFolders_(control.kind() == ControlKind::FolderBox),
          model_(new ItemsModel(control, &widget())),
          rows_(new RowDelegate(*model_, isFolders_, &widget())) {
        setUpView(control.MultiSelect);
        const auto* selection = view().selectionModel();
        QObject::connect(selection, &QItemSelectionModel::selectionChanged, &view(), [this] { tellSelection(); });
        QObject::connect(selection, &QItemSelectionModel::currentChanged, &view(), [this] {
            if (!setting_) events().currentMoved(view().currentIndex().row());
        });
        QObject::connect(&view(), &QListView::doubleClicked, &view(),
                         [this](const QModelIndex& index) { events().opened(index.row()); });
        if (isFolders_) view().entered = [this] { events().opened(view().currentIndex().row()); };
        if (control.OLEDragDrop.isTied()) acceptFiles();
    }

    void refresh(bool keepPlace) override {
        const int current = view().currentIndex().row();
        const int scrolled = view().verticalScrollBar()->value();
        setting_ = true;
        model_->refresh();
        if (keepPlace && current >= 0 && model_->rowCount() > 0) {
            const QModelIndex again = model_->index(std::min(current, model_->rowCount() - 1));
            view().selectionModel()->setCurrentIndex(again, QItemSelectionModel::NoUpdate);
        }
        setting_ = false;
        view().doItemsLayout();
        view().verticalScrollBar()->setValue(keepPlace ? scrolled : 0);
        if (isFolders_) setExtent(widestFolder());
    }
    void setExtent(int pixels) override {
        if (rows_->widthPixels == pixels) return;
        rows_->widthPixels = pixels;
        view().doItemsLayout();
    }
    void select(const std::vector<RowRange>& rows, int current) override {
        setting_ = true;
        QItemSelectionModel& selection = *view().selectionModel();
        QItemSelection wanted;
        for (const RowRange& each : rows) wanted.select(model_->index(each.first), model_->index(each.last));
        selection.select(wanted, QItemSelectionModel::ClearAndSelect);
        if (current >= 0) {
            selection.setCurrentIndex(model_->index(current), QItemSelectionModel::NoUpdate);
            view().scrollTo(model_->index(current));
        }
        setting_ = false;
    }
    void release() override { model_->release(); }

private:
    ItemsView& view() const { return static_cast<ItemsView&>(widget()); }

    void setUpView(bool severalRows) {
        view().setModel(model_);
        view().setItemDelegate(rows_);
        view().setUniformItemSizes(true);
        const int icon = view().fontMetrics().height() + 2;
        view().setIconSize(QSize(icon, icon));
        view().setEditTriggers(QAbstractItemView::NoEditTriggers);
        view().setTextElideMode(Qt::ElideRight);
        view().setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        view().setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
        view().setSelectionMode(severalRows ? QAbstractItemView::ExtendedSelection
                                            : QAbstractItemView::SingleSelection);
    }
    void acceptFiles() {
        view().setAcceptDrops(true);
        view().viewport()->setAcceptDrops(true);
        view().setDragDropMode(QAbstractItemView::DropOnly);
        view().setDropIndicatorShown(false);
        view().dropped = [this](const DropData& data) { events().dropped(data); };
    }
    int widestFolder() const {
        constexpr int kMostMeasured = 2000;
        QStyleOptionViewItem option;
        option.initFrom(&view());
        option.decorationSize = view().iconSize();
        int widest = 0;
        for (int i = 0; i < std::min(model_->rowCount(), kMostMeasured); ++i) {
            widest = std::max(widest, rows_->rowWidth(option, model_->index(i)));
        }
        return widest;
    }
    void tellSelection() {
        if (setting_) return;
        std::vector<RowRange> rows;
        for (const QItemSelectionRange& each : view().selectionModel()->selection()) {
            rows.push_back({each.top(), each.bottom()});
        }
        std::sort(rows.begin(), rows.end(), [](const RowRange& a, const RowRange& b) { return a.first < b.first; });
        events().rowsSelected(rows, view().currentIndex().row());
    }

    bool isFolders_;
    ItemsModel* model_;     ///< the widget's
    RowDelegate* rows_;     ///< the widget's
    bool setting_ = false;  ///< what the view reports was not the user
};

}  // namespace

std::unique_ptr<NativeList> NativeWindow::makeList(const ItemsControl& control, NativeEvents& events) {
    return std::make_unique<ListWidget>(*this, control, events);
}

}  // namespace corvane
