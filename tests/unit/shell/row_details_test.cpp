// SPDX-License-Identifier: GPL-3.0-or-later
// What a list's rows show besides their texts: columns, and small pictures that are read when they are seen.
#include "forms/row_habits.h"
#include "shell/native/list_rows.h"
#include "unit/shell/native_rig.h"

namespace corvane {
namespace {

using test::px;

struct DetailedList : ListBox, ShowsDetails {
    using ListBox::ListBox;
};

/// Outlives the controls.
struct OwnThumbnails {
    FakeThumbnails reader;
};

struct NativeDetailedList : OwnThumbnails, test::NativeFormRig {
    NativeDetailedList() {
        list.setItems({"a", "b", "c", "d", "e"});
        surface.reader = &reader;
        list.pictureFileOf = [this](int row) { return row % 2 == 0 ? "/" + list.item(row) : std::string(); };
        list.show({{px(100), px(50)}, {px(150), px(40)}}, true);
    }
    FakeList& shown() { return surface.of<FakeList>(list); }

    DetailedList list{&form, "lstTried"};
};

TEST_F(NativeDetailedList, RowsThatAreNotThereShowNothing) {
    list.pictureFileOf = [](int /*row*/) { return std::string("/picture"); };
    list.detailOf = [](int /*row*/, int /*column*/) { return std::string("detail"); };
    for (const int none : {-1, 5}) {
        EXPECT_EQ(rowPictureFile(list, none), "") << none;
        EXPECT_EQ(rowDetail(list, none, 0), "") << none;
        EXPECT_EQ(rowInWords(list, none), "") << none;
    }
    EXPECT_EQ(rowPictureFile(list, 4), "/picture");
    EXPECT_EQ(rowInWords(list, 4), "e, detail, detail");
}

/// WIN-70: A list that shows details is told its columns in pixels and whether its rows leave room for pictures, and
///     again when they say something else
TEST_F(NativeDetailedList, IsToldItsColumns) {
    bind();
    EXPECT_EQ(shown().columns, (std::vector<RowColumn>{{100, 50}, {150, 40}}));
    EXPECT_TRUE(shown().pictures);
    const int told = shown().detailed;
    list.detailsChanged();
    list.detailsChanged();
    surface.runLater();
    EXPECT_EQ(shown().detailed, told + 1);
    list.show({}, false);
    surface.runLater();
    EXPECT_TRUE(shown().columns.empty());
    EXPECT_FALSE(shown().pictures);
    unbind();
    list.detailsChanged();
    EXPECT_TRUE(surface.later.empty());
}

/// WIN-71: The pictures of the rows that are seen are read one after the other, and given up when others are
TEST_F(NativeDetailedList, PicturesOfSeenRowsAreRead) {
    std::vector<int> seen;
    list.rowsSeen = [&](int first, int last) { seen = {first, last}; };
    bind();
    EXPECT_TRUE(reader.asked.empty());
    shown().events.rowsSeen({0, 1});
    EXPECT_EQ(seen, (std::vector<int>{0, 1}));
    shown().events.rowsSeen({1, 4});
    EXPECT_EQ(reader.asked, (std::vector<std::string>{"/a", "/c"}));
    EXPECT_EQ(reader.givenUp, 1);
    const Picture picture = reader.answer();
    EXPECT_EQ(shown().events.rowPicture(2), picture);
    EXPECT_TRUE(shown().events.rowPicture(1).empty());
    EXPECT_TRUE(shown().events.rowPicture(4).empty()) << "on its way";
    const int told = shown().detailed;
    surface.runLater();
    EXPECT_EQ(shown().detailed, told + 1);
    list.setItems({"x", "y", "z"});
    surface.runLater();
    EXPECT_EQ(reader.asked.back(), "/z") << "the rows that are seen are others";
    unbind();
    EXPECT_TRUE(shown().events.rowPicture(2).empty());
    shown().events.rowsSeen({0, 4});
    EXPECT_EQ(seen, (std::vector<int>{1, 4}));
}

/// WIN-70
TEST_F(NativeDetailedList, AWindowWithoutPicturesLeavesNoRoom) {
    surface.reader = nullptr;
    bind();
    EXPECT_FALSE(shown().pictures);
    shown().events.rowsSeen({0, 4});
    EXPECT_TRUE(shown().events.rowPicture(0).empty());
}

/// WIN-72: An assistive program hears a row's text and what its columns show
TEST_F(NativeDetailedList, ARowInWords) {
    EXPECT_EQ(rowInWords(list, 1), "b");
    list.detailOf = [](int row, int column) { return column == 0 ? std::string() : "3:0" + std::to_string(row); };
    EXPECT_EQ(rowInWords(list, 1), "b, 3:01");
    list.detailOf = [](int, int) { return std::string("x"); };
    EXPECT_EQ(rowInWords(list, 1), "b, x, x");
    EXPECT_EQ(rowInWords(list, 5), "");
    EXPECT_EQ(rowInWords(list, -1), "");
    list.show({}, true);
    EXPECT_EQ(rowInWords(list, 1), "b");
}

}  // namespace
}  // namespace corvane
