// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's window: captions, choices, opening, closing, numbers, splitter, size.
#include <algorithm>
#include <set>

#include "editor_fixture.h"

namespace corvane {
namespace {

using Editor = FileListControls;

/// EDIT-01: Buttons and headings have their captions
TEST_F(EditorFixture, EveryButtonAndHeadingHasItsCaption) {
    open();
    const std::vector<std::string> buttons = {"File 1", "Save", "Add", "Add All", "Delete", "Clear", "OK", "Cancel"};
    for (std::size_t i = 0; i < buttons.size(); ++i) EXPECT_EQ(editor().cmdFileList[i].Caption.get(), buttons[i]);
    EXPECT_EQ(caption(9), "Page 1");
    EXPECT_FALSE(editor().cmdFileList[8].Visible);
    const std::vector<std::string> headings = {"DRIVE",    "PATTERN", "MOVIE ZOOM", "IMAGE ZOOM",
                                               "INTERVAL", "DIR",     "FILE LIST",  "PLAY LIST"};
    for (std::size_t i = 0; i < headings.size(); ++i) EXPECT_EQ(editor().lblFileList[i].Caption.get(), headings[i]);
}

/// EDIT-02: Zooms and intervals have their entries, and the interval can be typed
TEST_F(EditorFixture, TheChoicesAreTheOnesStated) {
    open();
    const std::vector<std::string> zooms = {"ORIGINAL", "DOUBLE", "1/16 CRT", "1/4 CRT", "1/2 CRT", "STRETCH"};
    EXPECT_EQ(combo(1).items(), zooms);
    EXPECT_EQ(combo(2).items(), zooms);
    EXPECT_EQ(combo(3).items(), (std::vector<std::string>{"0", "3", "5", "10", "20", "40", "60"}));
    EXPECT_TRUE(combo(3).Editable);
    EXPECT_FALSE(combo(0).Editable || combo(1).Editable || combo(2).Editable);
    EXPECT_TRUE(editor().lstFileList[0].MultiSelect);
    EXPECT_TRUE(editor().fleFileList.MultiSelect);
}

/// EDIT-15: Enter is OK and Escape is Cancel
TEST_F(EditorFixture, EnterIsOkAndEscapeIsCancel) {
    open();
    for (const CommandButton& each : editor().cmdFileList) {
        EXPECT_EQ(each.Default.get(), each.index() == Editor::kOk) << each.index();
        EXPECT_EQ(each.Cancel.get(), each.index() == Editor::kCancel) << each.index();
    }
}

/// EDIT-63: Tab reaches each usable control once
TEST_F(EditorFixture, TabReachesEachUsableControlOnce) {
    open();
    std::set<int> places;
    int reached = 0;
    for (const Control* each : editor().controls()) {
        if (each->TabIndex < 0) continue;
        ++reached;
        places.insert(each->TabIndex);
        EXPECT_TRUE(each->Visible) << each->name();
    }
    EXPECT_EQ(reached, 27);
    EXPECT_EQ(places.size(), 27U);
    EXPECT_EQ(*places.rbegin(), 26);
}

/// EDIT-12: The panel is hidden and disabled meanwhile and comes back where it was
/// EDIT-44: OK enables the panel and closes the editor
TEST_F(EditorFixture, OpeningHidesAndDisablesThePanelAndClosingBringsItBackWhereItWas) {
    panel().Move(1500, 900);
    open();
    EXPECT_FALSE(panel().Visible);
    EXPECT_FALSE(panel().Enabled);
    push(Editor::kCancel);
    EXPECT_EQ(found(), nullptr);
    EXPECT_TRUE(panel().Visible);
    EXPECT_TRUE(panel().Enabled);
    EXPECT_EQ(panel().Left.get(), 1500);
    EXPECT_EQ(panel().Top.get(), 900);
    EXPECT_EQ(machine.windows.active(), &panel());
}

/// EDIT-10: It shows the filter, both zooms, the interval and both numbers, and reads the list
/// EDIT-11: Both bars then stand at page and list
TEST_F(EditorFixture, OpeningShowsTheSettingsAndTheNumbers) {
    player.gPattern = 3;
    player.gMovieZoom = 5;
    player.gImageZoom = 2;
    player.gInterval = 7;
    player.gListNumber = 6;
    player.gPageNumber = 2;
    writeList("/app/FILE26.INI", "LISTNAME=Evening\r\nLIST000=a.wav|/x/a.wav\r\n");
    open();
    EXPECT_EQ(combo(0).ListIndex, 3);
    EXPECT_EQ(editor().fleFileList.Pattern.get(), "*.MID;*.RMI");
    EXPECT_EQ(combo(1).ListIndex, 5);
    EXPECT_EQ(combo(2).Text.get(), "1/16 CRT");
    EXPECT_EQ(combo(3).Text.get(), "7");
    EXPECT_EQ(caption(Editor::kList), "File 7");
    EXPECT_EQ(caption(Editor::kPage), "Page 3");
    EXPECT_EQ(editor().hscrFileList.Value, 6);
    EXPECT_EQ(editor().hscrPageList.Value, 2);
    EXPECT_EQ(editor().txtListName.Text.get(), "Evening");
    EXPECT_EQ(names(), std::vector<std::string>{"a.wav"});
}

/// EDIT-13: Each opening is a fresh window; unsaved edits are lost
TEST_F(EditorFixture, EachCloseMakesAFreshWindow) {
    open();
    editor().txtListName.Text = "unsaved";
    push(Editor::kCancel);
    open();
    EXPECT_EQ(editor().txtListName.Text.get(), "");
}

/// EDIT-14: The window manager's close is Cancel
TEST_F(EditorFixture, TheWindowManagersCloseIsCancel) {
    setList({"/x/old.wav"});
    open();
    setRows({{"a.wav", "/x/a.wav"}});
    machine.loop.enter([&] { editor().CloseRequest.raise(false); });
    machine.settle();
    EXPECT_EQ(found(), nullptr);
    EXPECT_EQ(player.gFilePath[0], "/x/old.wav");
    EXPECT_TRUE(panel().Visible);
}

/// EDIT-48: The list number runs from 0 to 9 and wraps: left of 1 shows File 10, right of 10 shows File 1
/// LIST-02, EDIT-50
TEST_F(EditorFixture, TheListNumberRunsAndWrapsAtBothEnds) {
    open();
    machine.loop.enter([&] { editor().hscrFileList.Value = -1; });
    EXPECT_EQ(editor().hscrFileList.Value, 9);
    EXPECT_EQ(player.gListNumber, 9);
    EXPECT_EQ(caption(Editor::kList), "File 10");
    machine.loop.enter([&] { editor().hscrFileList.Value = 10; });
    EXPECT_EQ(editor().hscrFileList.Value, 0);
    EXPECT_EQ(player.gListNumber, 0);
    EXPECT_EQ(caption(Editor::kList), "File 1");
    machine.loop.enter([&] { editor().hscrFileList.Value = 4; });
    EXPECT_EQ(caption(Editor::kList), "File 5");
    EXPECT_EQ(caption(Editor::kPage), "Page 1");
}

/// EDIT-49: The page number does the same
TEST_F(EditorFixture, ThePageNumberRunsAndWrapsAtBothEnds) {
    open();
    machine.loop.enter([&] { editor().hscrPageList.Value = -1; });
    EXPECT_EQ(editor().hscrPageList.Value, 9);
    EXPECT_EQ(player.gPageNumber, 9);
    EXPECT_EQ(caption(Editor::kPage), "Page 10");
    machine.loop.enter([&] { editor().hscrPageList.Value = 10; });
    EXPECT_EQ(player.gPageNumber, 0);
    EXPECT_EQ(caption(Editor::kPage), "Page 1");
    EXPECT_EQ(caption(Editor::kList), "File 1");
}

/// EDIT-18: The name is LISTNAME, or empty
/// EDIT-50: A new number is kept, shown on its button, and that list is read
/// EDIT-17
TEST_F(EditorFixture, AChangeOfListOrPageReadsThatListAndLosesUnsavedEdits) {
    writeList("/app/FILE01.INI", "LISTNAME=One\r\nLIST000=a.wav|/x/a.wav\r\n");
    writeList("/app/FILE11.INI", "LIST000=b.wav|/x/b.wav\r\nLIST001=c.wav|/x/c.wav\r\n");
    open();
    setRows({{"unsaved.wav", "/x/unsaved.wav"}});
    machine.loop.enter([&] { editor().hscrFileList.Value = 1; });
    EXPECT_EQ(names(), std::vector<std::string>{"a.wav"});
    EXPECT_EQ(editor().txtListName.Text.get(), "One");
    machine.loop.enter([&] { editor().hscrPageList.Value = 1; });
    EXPECT_EQ(names(), (std::vector<std::string>{"b.wav", "c.wav"}));
    EXPECT_EQ(editor().txtListName.Text.get(), "");
}

/// EDIT-16: A left press on the window or a heading drags it
TEST_F(EditorFixture, ALeftPressOnTheWindowOrAHeadingDragsTheWindow) {
    open();
    press(editor(), {kLeftButton, 0, 5, 5});
    press(editor().lblFileList[3], {kLeftButton, 0, 5, 5});
    EXPECT_EQ(machine.log.count("windows.beginDrag frmFileList"), 2);
    press(editor(), {kRightButton, 0, 5, 5});
    EXPECT_EQ(machine.log.count("windows.beginDrag frmFileList"), 2);
}

class Splitter : public EditorFixture {
protected:
    void dragTo(Twips x) {
        Image& handle = editor().imgFileList;
        const MouseArgs mouse{0, 0, x - handle.Left, 10};
        machine.loop.enter([&] { handle.MouseMove.raise(mouse); });
    }
    static Twips right(const Control& control) { return control.Left + control.Width; }
};

/// EDIT-52: Drive and folder boxes take their width from it; file box, its heading and its choice move with it
TEST_F(Splitter, MovesTheFilesTheirHeadingAndTheirChoiceAndWidensTheFolders) {
    open();
    const Twips filesRight = right(editor().fleFileList);
    press(editor().imgFileList, {kLeftButton, 0, 1, 1});
    dragTo(2000);
    EXPECT_EQ(editor().fleFileList.Left.get(), 2000);
    EXPECT_EQ(right(editor().fleFileList), filesRight);
    EXPECT_EQ(editor().lblFileList[Editor::kFilesHeading].Left.get(), 2000);
    EXPECT_EQ(editor().lblFileList[Editor::kPatternHeading].Left.get(), 2000);
    EXPECT_EQ(combo(0).Left.get(), 2000);
    EXPECT_EQ(right(editor().imgFileList), 2000);
    EXPECT_EQ(right(editor().dirFileList), editor().imgFileList.Left.get());
    EXPECT_EQ(editor().drvFileList.Width.get(), editor().dirFileList.Width.get());
}

/// EDIT-51: The splitter is dragged between press and release, held between 630 and 3690 twips
TEST_F(Splitter, StaysBetween630And3690Twips) {
    open();
    press(editor().imgFileList, {kLeftButton, 0, 1, 1});
    dragTo(629);
    EXPECT_EQ(editor().fleFileList.Left.get(), 630);
    EXPECT_GT(editor().dirFileList.Width.get(), 0);
    dragTo(9000);
    EXPECT_EQ(editor().fleFileList.Left.get(), 3690);
    EXPECT_GT(editor().fleFileList.Width.get(), 0);
}

/// EDIT-51
TEST_F(Splitter, MovesOnlyWhileItIsHeld) {
    open();
    const Twips before = editor().fleFileList.Left;
    dragTo(2000);
    EXPECT_EQ(editor().fleFileList.Left.get(), before);
    press(editor().imgFileList, {kLeftButton, 0, 1, 1});
    release(editor().imgFileList, {kLeftButton, 0, 1, 1});
    dragTo(2000);
    EXPECT_EQ(editor().fleFileList.Left.get(), before);
}

/// EDIT-61
TEST_F(Splitter, KeepsItsPlaceWhenTheWindowGrowsAndTheListsTakeTheSpace) {
    open();
    press(editor().imgFileList, {kLeftButton, 0, 1, 1});
    dragTo(2000);
    const Twips files = editor().fleFileList.Width, list = editor().lstFileList[0].Width;
    const Twips height = editor().lstFileList[0].Height, name = editor().txtListName.Height;
    editor().SetSize(editor().Width + 3000, editor().Height + 1500);
    machine.loop.enter([&] { editor().Resize.raise(); });
    EXPECT_EQ(editor().fleFileList.Left.get(), 2000);
    EXPECT_EQ(editor().fleFileList.Width.get(), files + 1500);
    EXPECT_EQ(editor().lstFileList[0].Width.get(), list + 1500);
    EXPECT_EQ(editor().lstFileList[0].Height.get(), height + 1500);
    EXPECT_EQ(editor().txtListName.Height.get(), name);
}

/// No two visible controls of the form may share a spot, and none may leave the window.
void expectTidy(const Form& form) {
    for (const Control* one : form.controls()) {
        if (!one->Visible) continue;
        EXPECT_GE(one->Left.get(), 0) << one->name() << one->index();
        EXPECT_GE(one->Top.get(), 0) << one->name() << one->index();
        EXPECT_LE(one->Left + one->Width, form.Width.get()) << one->name() << one->index();
        EXPECT_LE(one->Top + one->Height, form.Height.get()) << one->name() << one->index();
        EXPECT_GT(one->Width.get(), 0) << one->name() << one->index();
        for (const Control* other : form.controls()) {
            if (other == one || !other->Visible) continue;
            const bool apart = one->Left + one->Width <= other->Left || other->Left + other->Width <= one->Left ||
                               one->Top + one->Height <= other->Top || other->Top + other->Height <= one->Top;
            EXPECT_TRUE(apart) << one->name() << one->index() << " over " << other->name() << other->index();
        }
    }
}

/// EDIT-62: Nothing overlaps at the limits of splitter and size
TEST_F(Splitter, NothingOverlapsAtTheLimitsOfSplitterAndSize) {
    open();
    press(editor().imgFileList, {kLeftButton, 0, 1, 1});
    const Twips width = editor().Width, height = editor().Height;
    for (const Twips split : {EditorLayout::kLeastSplit, EditorLayout::kMostSplit}) {
        for (const bool small : {false, true}) {
            editor().SetSize(small ? editor().MinWidth : width, small ? editor().MinHeight : height);
            editor().Resize.raise();
            dragTo(split);
            expectTidy(editor());
        }
    }
}

/// EDIT-61: The window opens in the middle of the screen, and a larger one gives its space to the lists
TEST_F(EditorFixture, TheWindowOpensInTheMiddleOfTheScreen) {
    open();
    EXPECT_EQ(editor().Left.get(), (1024 * 15 - editor().Width) / 2);
    EXPECT_EQ(editor().Top.get(), (768 * 15 - editor().Height) / 2);
}

}  // namespace
}  // namespace corvane
