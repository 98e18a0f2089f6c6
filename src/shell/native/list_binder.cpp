// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/native/binder.h"
#include "shell/native/list_rows.h"
#include "shell/native/native_form.h"

namespace corvane {

namespace {

class ListBinder : public BinderOf<ItemsControl, NativeList> {
public:
    ListBinder(NativeForm& form, ItemsControl& control)
        : BinderOf(form, control, form.surface(), &NativeSurface::makeList) {}

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
        itemsStale_ = selectionStale_ = false;
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

private:
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
    bool taking_ = false;  ///< the user's choice goes to the control: what that reports is an echo
};

}  // namespace

std::unique_ptr<Binder> makeListBinder(NativeForm& form, ItemsControl& control) {
    return std::make_unique<ListBinder>(form, control);
}

}  // namespace corvane
