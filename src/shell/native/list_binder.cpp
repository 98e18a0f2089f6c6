// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "forms/row_habits.h"
#include "platform/seen_files.h"
#include "shell/native/binder.h"
#include "shell/native/list_rows.h"
#include "shell/native/native_form.h"

namespace corvane {

namespace {

class ListBinder : public BinderOf<ItemsControl, NativeList> {
public:
    ListBinder(NativeForm& form, ItemsControl& control)
        : BinderOf(form, control, form.surface(), &NativeSurface::makeList),
          details_(dynamic_cast<ShowsDetails*>(&control)) {
        if (details_ == nullptr) return;
        details_->shownAgain = [this, alive = std::weak_ptr(alive_)] {
            if (!alive.expired()) showAgain();
        };
        ThumbnailReader* const reader = form.surface().thumbnails();
        if (reader == nullptr) return;
        pictures_ = std::make_unique<SeenFiles<Picture>>(
            [reader](const std::string& file, const ThumbnailReader::Done& done) { reader->read(file, done); },
            [reader] { reader->giveUp(); }, [this] { showAgain(); });
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
        const bool isPlayList = own.kind() == ControlKind::ListBox;
        if (itemsStale_) shown->refresh(isPlayList);
        if (isPlayList) {
            const int extent = static_cast<const ListBox&>(own).HorizontalExtent;
            shown->setExtent(static_cast<int>(extent * form().scale().across()));
        }
        if (itemsStale_ || selectionStale_) shown->select(rangesOf(own.selectedIndices()), own.ListIndex);
        if (details_ != nullptr && (itemsStale_ || detailsStale_)) showDetails();
        itemsStale_ = selectionStale_ = detailsStale_ = false;
    }

    void rowsSelected(const std::vector<RowRange>& all, int current) override {
        form().run([&] {
            taking_ = true;
            if (own.MultiSelect) takeRows(all);
            own.ListIndex = current;
            taking_ = false;
            own.Click.raise();
        });
    }
    void currentMoved(int row) override {
        form().run([&] { takeCurrent(row); });
    }
    void opened(int row) override {
        form().run([&] { takeCurrent(row); });
        form().command(own.DblClick);
    }
    void dropped(const DropData& data) override {
        if (form().bound()) form().post([this, data] { own.OLEDragDrop.raise(data); });
    }
    bool key(const KeyArgs& key) override {
        const auto* const keys = form().bound() ? dynamic_cast<const TakesKeys*>(&own) : nullptr;
        if (keys == nullptr || !keys->takeKey) return false;
        bool taken = false;
        form().run([&] { taken = keys->takeKey(key); });
        return taken;
    }
    void rowsDragged(int before) override {
        const auto* const rows = form().bound() ? dynamic_cast<const MovesRows*>(&own) : nullptr;
        if (rows != nullptr && rows->moveRows) form().run([&] { rows->moveRows(before); });
    }
    void rowsSeen(const RowRange& rows) override {
        if (!form().bound() || details_ == nullptr) return;
        seen_ = rows;
        wantPictures();
        if (details_->rowsSeen) form().run([&] { details_->rowsSeen(rows.first, rows.last); });
    }
    Picture rowPicture(int row) const override {
        if (!form().bound() || pictures_ == nullptr) return {};
        const Picture* const found = pictures_->of(rowPictureFile(own, row));
        return found != nullptr ? *found : Picture();
    }

private:
    void showAgain() {
        if (!form().bound()) return;
        detailsStale_ = true;
        flushSoon();
    }
    void showDetails() {
        std::vector<RowColumn> columns;
        for (const ShowsDetails::Column& each : details_->columns()) {
            const PixelRect room = form().scale().rectangle(each.left, 0, each.width, 0);
            columns.push_back({room.left, room.width});
        }
        shown->showDetails(columns, details_->hasPictures() && pictures_ != nullptr);
        wantPictures();
    }
    /// The pictures of the rows that are seen, as far as these are there.
    void wantPictures() {
        if (pictures_ == nullptr) return;
        std::vector<std::string> files;
        for (int row = std::max(seen_.first, 0); row <= seen_.last && row < own.count(); ++row) {
            if (std::string file = rowPictureFile(own, row); !file.empty()) files.push_back(std::move(file));
        }
        pictures_->want(files);
    }
    void takeCurrent(int row) {
        taking_ = true;
        own.ListIndex = row;
        taking_ = false;
    }
    void takeRows(const std::vector<RowRange>& all) {
        auto range = all.begin();
        for (int row = 0; row < own.count(); ++row) {
            while (range != all.end() && range->last < row) ++range;
            own.select(row, range != all.end() && range->first <= row);
        }
    }

    bool itemsStale_ = true;
    bool selectionStale_ = true;
    bool detailsStale_ = true;
    ShowsDetails* details_;                         ///< null: the rows are their texts
    std::unique_ptr<SeenFiles<Picture>> pictures_;  ///< null: none are shown
    RowRange seen_{0, -1};                          ///< rows, as far as the list has told
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    bool taking_ = false;  ///< the user's choice goes to the control: what that reports is an echo
};

}  // namespace

std::unique_ptr<Binder> makeListBinder(NativeForm& form, ItemsControl& control) {
    return std::make_unique<ListBinder>(form, control);
}

}  // namespace corvane
