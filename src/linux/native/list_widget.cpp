// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <QBasicTimer>
#include <QDragEnterEvent>
#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QListView>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <functional>
#include <optional>
#include <vector>

#include "forms/row_habits.h"
#include "linux/native/items_model.h"
#include "linux/native/native_form_window.h"
#include "linux/pictures/qt_pictures.h"
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

    int widthPixels = 0;             ///< of every row; 0: as wide as the list
    std::vector<RowColumn> columns;  ///< behind the row's text
    bool pictures = false;           ///< each row leaves room for one
    std::function<Picture(int row)> pictureOf;

    /// A row's room for its picture; with pictures the rows are half as high again.
    static QSize pictureRoom(const QFontMetrics& font) {
        const int height = font.height() * 3 / 2;
        return {height * 4 / 3, height};
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        constexpr int kPadding = 4;
        QStyleOptionViewItem sized(option);
        initStyleOption(&sized, index);
        const int icon = folders_ || pictures ? sized.decorationSize.height() : 0;
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
        if (!columns.empty()) drawColumns(*painter, row, index);
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
        if (pictures) addPicture(*option, index.row());
        if (!columns.empty()) {
            const int before = pictures ? option->decorationSize.width() : 0;
            option->text = option->fontMetrics.elidedText(option->text, Qt::ElideRight,
                                                          columns.front().left - before - kColumnGap);
        }
        if (!folders_) return;
        const auto depth = [](const QModelIndex& of) { return of.data(ItemsModel::kDepthRole).toInt(); };
        const QModelIndex next = index.sibling(index.row() + 1, 0);
        const bool open = next.isValid() && depth(next) > depth(index);
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->icon =
            option->widget->style()->standardIcon(open ? QStyle::SP_DirOpenIcon : QStyle::SP_DirIcon, option);
    }

private:
    static constexpr int kColumnGap = 16;  ///< before the first column, the margins of the text counted

    /// On the line of the row's own text.
    void drawColumns(QPainter& painter, const QStyleOptionViewItem& row, const QModelIndex& index) const {
        const auto group = (row.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
        const bool isSelected = (row.state & QStyle::State_Selected) != 0;
        QStyleOptionViewItem laidOut(row);
        initStyleOption(&laidOut, index);
        const QRect named = row.widget->style()->subElementRect(QStyle::SE_ItemViewItemText, &laidOut, row.widget);
        const int lineHeight = row.fontMetrics.height();
        painter.save();
        painter.setPen(row.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text));
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const QRect room(columns[i].left, named.top() + (named.height() - lineHeight) / 2, columns[i].width,
                             lineHeight);
            const QString text = rows_.detail(index.row(), static_cast<int>(i));
            painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                             row.fontMetrics.elidedText(text, Qt::ElideRight, room.width()));
        }
        painter.restore();
    }
    /// In the middle of its room; a frame where it is not there (yet).
    void addPicture(QStyleOptionViewItem& option, int row) const {
        const QSize room = pictureRoom(option.fontMetrics);
        const qreal scale = option.widget->devicePixelRatioF();
        QPixmap drawn(room * scale);
        drawn.setDevicePixelRatio(scale);
        drawn.fill(Qt::transparent);
        if (rows_.isPicture(row)) {
            QPainter painter(&drawn);
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            const QImage small = imageOf(pictureOf(row));
            if (small.isNull()) {
                painter.setPen(option.palette.color(QPalette::Disabled, QPalette::Text));
                painter.drawRect(QRectF(0.5, 0.5, room.width() - 1, room.height() - 1));
            } else {
                QRectF place({}, QSizeF(small.size()).scaled(room, Qt::KeepAspectRatio));
                place.moveCenter(QRectF({}, QSizeF(room)).center());
                painter.drawImage(place, small);
            }
        }
        option.features |= QStyleOptionViewItem::HasDecoration;
        option.decorationSize = room;
        option.icon = QIcon();
        // A picture of its own for selected rows, which a style would tint.
        for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected, QIcon::Disabled}) {
            option.icon.addPixmap(drawn, mode);
        }
    }

    const ItemsModel& rows_;
    bool folders_;
};

/// The list on the screen: takes drops of files, in a folder list Enter goes into the folder, and rows can be dragged.
class ItemsView : public QListView {
public:
    using QListView::QListView;
    std::function<void(const DropData&)> dropped;
    std::function<void()> entered;
    std::function<bool(const KeyArgs&)> keyDown;
    std::function<void(int before)> rowsDragged;  ///< tied: rows can be dragged
    std::function<void(RowRange)> seen;           ///< tied: is told which rows are seen, when that changes

    void tellSeenAnew() { told_ = {0, -1}; }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override { take(*event); }
    void dragMoveEvent(QDragMoveEvent* event) override { take(*event); }
    void dropEvent(QDropEvent* event) override {
        if (!take(*event)) return;
        dropped(dropData(*event->mimeData()));
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (draggedTo_ && event->key() == Qt::Key_Escape) return endDrag();
        if (keyDown && keyDown(keyArgs(*event))) return event->accept();
        const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (!enter || !entered || !currentIndex().isValid()) return QListView::keyPressEvent(event);
        event->accept();
        entered();
    }
    void mousePressEvent(QMouseEvent* event) override {
        QListView::mousePressEvent(event);
        const bool grabs = rowsDragged && event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier &&
                           indexAt(event->position().toPoint()).isValid();
        grabbed_ = grabs ? std::optional(event->position().toPoint()) : std::nullopt;
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        if (!grabbed_ || (event->buttons() & Qt::LeftButton) == 0) return QListView::mouseMoveEvent(event);
        const QPoint at = event->position().toPoint();
        if (!draggedTo_ && (at - *grabbed_).manhattanLength() < QApplication::startDragDistance()) return;
        dragTo(at);
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        const std::optional<int> before = draggedTo_;
        grabbed_.reset();
        endDrag();
        if (!before) return QListView::mouseReleaseEvent(event);
        // The view's own release would leave the one row selected that was pressed.
        setState(NoState);
        rowsDragged(*before);
    }
    void timerEvent(QTimerEvent* event) override {
        if (event->timerId() != scrolling_.timerId()) return QListView::timerEvent(event);
        if (draggedTo_) dragTo(viewport()->mapFromGlobal(QCursor::pos()));
    }
    void paintEvent(QPaintEvent* event) override {
        QListView::paintEvent(event);
        if (seen) tellSeen();
        if (!draggedTo_) return;
        constexpr int kThick = 2;
        QPainter painter(viewport());
        painter.fillRect(0, std::max(0, lineOf(*draggedTo_) - 1), viewport()->width(), kThick,
                         palette().color(QPalette::Highlight));
    }
    void focusOutEvent(QFocusEvent* event) override {
        QListView::focusOutEvent(event);
        endDrag();
    }

private:
    /// The row in front of which a release would put the rows; near an edge the list goes on under the pointer.
    void dragTo(QPoint at) {
        constexpr int kEdge = 16, kStepMs = 50;
        if (!scrolling_.isActive()) scrolling_.start(kStepMs, this);
        const int rowHeight = std::max(1, sizeHintForRow(0));
        const int by = at.y() < kEdge ? -1 : at.y() >= viewport()->height() - kEdge ? 1 : 0;
        if (by != 0) verticalScrollBar()->setValue(verticalScrollBar()->value() + by * rowHeight);
        const int fromTop = std::clamp(at.y(), 0, viewport()->height() - 1) + verticalScrollBar()->value();
        draggedTo_ = std::clamp((fromTop + rowHeight / 2) / rowHeight, 0, model()->rowCount());
        viewport()->update();
    }
    void endDrag() {
        grabbed_.reset();
        draggedTo_.reset();
        scrolling_.stop();
        viewport()->update();
    }
    /// What is told may change the list, which is being drawn now: it is told later.
    void tellSeen() {
        const int rowHeight = std::max(1, sizeHintForRow(0));
        const int top = verticalScrollBar()->value();
        const int last = std::min((top + viewport()->height() - 1) / rowHeight, model()->rowCount() - 1);
        const RowRange now{std::min(top / rowHeight, last + 1), last};
        if (now == told_) return;
        told_ = now;
        QMetaObject::invokeMethod(
            this, [this, now] { seen(now); }, Qt::QueuedConnection);
    }
    /// Of the edge above a row; the count: below the last one.
    int lineOf(int row) const { return row * std::max(1, sizeHintForRow(0)) - verticalScrollBar()->value(); }

    std::optional<QPoint> grabbed_;  ///< where the button went down on a row
    std::optional<int> draggedTo_;   ///< rows are being dragged
    QBasicTimer scrolling_;
    RowRange told_{0, -1};  ///< which rows are seen

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
        view().keyDown = [this](const KeyArgs& key) { return events().key(key); };
        const auto* const rows = dynamic_cast<const MovesRows*>(&control);
        if (rows != nullptr && rows->moveRows)
            view().rowsDragged = [this](int before) { events().rowsDragged(before); };
        if (isFolders_) view().entered = [this] { events().opened(view().currentIndex().row()); };
        if (control.OLEDragDrop.isTied()) acceptFiles();
        if (dynamic_cast<const ShowsDetails*>(&control) == nullptr) return;
        view().seen = [this](RowRange seen) { events().rowsSeen(seen); };
        rows_->pictureOf = [this](int row) { return events().rowPicture(row); };
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
    void showDetails(const std::vector<RowColumn>& columns, bool pictures) override {
        const bool isOtherwise = columns != rows_->columns || pictures != rows_->pictures;
        rows_->columns = columns;
        for (RowColumn& each : rows_->columns) each.left -= view().frameWidth();
        const bool isHigher = pictures != rows_->pictures;
        rows_->pictures = pictures;
        if (pictures) view().setIconSize(RowDelegate::pictureRoom(view().fontMetrics()));
        if (isHigher) view().doItemsLayout();
        if (isOtherwise) view().tellSeenAnew();
        view().viewport()->update();
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
