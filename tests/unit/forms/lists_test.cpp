// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/lists.h"

#include <gtest/gtest.h>

#include "forms/form.h"
#include "forms/menu.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;
using Indices = std::vector<int>;

class Lists : public ::testing::Test {
protected:
    Form form{"frmSample", FormStyle::Dialog};
    ListBox list{&form, "lstSample"};
    FileBox files{&form, "filSample"};
    ComboBox combo{&form, "cboSample"};
};

TEST_F(Lists, ItemsAreAddedAndRemoved) {
    list.addItem("a");
    list.addItem("b");
    list.addItem("c");
    list.removeItem(1);
    list.removeItem(7);
    list.removeItem(-1);
    EXPECT_EQ(list.items(), (Texts{"a", "c"}));
    EXPECT_EQ(list.count(), 2);
    EXPECT_EQ(list.item(1), "c");
}

/// COM-14: A new set of items has no current one; a removed item takes its selection with it
TEST_F(Lists, NewItemsHaveNoCurrentOneAndNoSelection) {
    list.MultiSelect = true;
    list.setItems({"a", "b"});
    list.ListIndex = 1;
    list.select(0, true);
    list.setItems({"c", "d"});
    EXPECT_EQ(list.ListIndex, -1);
    EXPECT_EQ(list.selectedIndices(), Indices{});
}

TEST_F(Lists, TheCurrentItemStaysInsideWhenItemsGo) {
    list.setItems({"a", "b"});
    list.ListIndex = 1;
    list.removeItem(1);
    EXPECT_EQ(list.ListIndex, 0);
    list.removeItem(0);
    EXPECT_EQ(list.ListIndex, -1);
}

TEST_F(Lists, AListOfOneChoiceFollowsTheCurrentItem) {
    list.setItems({"a", "b"});
    list.select(1, true);
    EXPECT_EQ(list.ListIndex, 1);
    EXPECT_TRUE(list.isSelected(1));
    EXPECT_FALSE(list.isSelected(0));
    list.select(1, false);
    EXPECT_EQ(list.selectedIndices(), Indices{});
}

TEST_F(Lists, AFileBoxSelectsMany) {
    files.setItems({"a", "b", "c"});
    files.select(0, true);
    files.select(2, true);
    EXPECT_EQ(files.selectedIndices(), (Indices{0, 2}));
    files.select(0, false);
    EXPECT_EQ(files.selectedIndices(), (Indices{2}));
    files.select(3, true);
    files.clearSelection();
    EXPECT_EQ(files.selectedIndices(), Indices{});
}

/// COM-14
TEST_F(Lists, ASelectionGoesWithItsItem) {
    files.setItems({"a", "b", "c"});
    files.select(2, true);
    files.removeItem(0);
    EXPECT_EQ(files.selectedIndices(), (Indices{1}));
    EXPECT_FALSE(files.isSelected(2));
    EXPECT_FALSE(files.isSelected(-1));
}

/// COM-15: Choosing in a combo sets its text and clicks; typing changes and does not click
TEST_F(Lists, ChoosingInAComboSetsItsTextThenClicks) {
    combo.setItems({"one", "two"});
    Texts seen;
    combo.Change.tie([&] { seen.push_back("change " + combo.Text.get()); });
    combo.Click.tie([&] { seen.push_back("click " + combo.Text.get()); });
    combo.ListIndex = 1;
    combo.ListIndex = 1;
    EXPECT_EQ(seen, (Texts{"change two", "click two"}));
}

/// COM-15
TEST_F(Lists, TypingInAComboChangesButDoesNotClick) {
    combo.Editable = true;
    combo.setItems({"one"});
    int clicks = 0;
    int changes = 0;
    combo.Click.tie([&] { ++clicks; });
    combo.Change.tie([&] { ++changes; });
    combo.Text = "on";
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(changes, 1);
}

TEST_F(Lists, ClearingTheChoiceOfAComboKeepsItsText) {
    combo.setItems({"one"});
    combo.ListIndex = 0;
    int clicks = 0;
    combo.Click.tie([&] { ++clicks; });
    combo.ListIndex = -1;
    EXPECT_EQ(combo.Text.get(), "one");
    EXPECT_EQ(clicks, 0);
}

TEST_F(Lists, DriveAndFolderBoxesChangeWithTheirPlace) {
    DriveBox drive(&form, "drvSample");
    FolderBox folder(&form, "dirSample");
    int driveChanges = 0;
    int folderChanges = 0;
    drive.Change.tie([&] { ++driveChanges; });
    folder.Change.tie([&] { ++folderChanges; });
    drive.Drive = "/";
    drive.Drive = "/";
    drive.addItem("/");
    folder.Path = "/music";
    folder.Path = "/music";
    EXPECT_EQ(driveChanges, 1);
    EXPECT_EQ(folderChanges, 1);
}

/// COM-17: A menu's dash is a separator
TEST_F(Lists, ADashIsASeparatorOfAMenu) {
    MenuItem item(&form, "mnuSample");
    EXPECT_FALSE(item.isSeparator());
    item.Caption = "-";
    EXPECT_TRUE(item.isSeparator());
}

}  // namespace
}  // namespace corvane
