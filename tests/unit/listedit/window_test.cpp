// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's window: captions, choices, opening, closing, numbers, splitter, size.
#include <algorithm>
#include <set>

#include "editor_fixture.h"

namespace corvane {
namespace {

using Editor = FileListControls;

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

TEST_F(EditorFixture, EnterIsOkAndEscapeIsCancel) {
    open();
    for (const CommandButton& each : editor().cmdFileList) {
        EXPECT_EQ(each.Default.get(), each.index() == Editor::kOk) << each.index();
        EXPECT_EQ(each.Cancel.get(), each.index() == Editor::kCancel) << each.index();
    }
}

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
    EXPECT_EQ(reached, 20);
    EXPECT_EQ(places.size(), 20U);
    EXPECT_EQ(*places.rbegin(), 19);
}

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

TEST_F(EditorFixture, EachCloseMakesAFreshWindow) {
    open();
    editor().txtListName.Text = "unsaved";
    push(Editor::kCancel);
    open();
    EXPECT_EQ(editor().txtListName.Text.get(), "");
}

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

TEST_F(EditorFixture, TheWindowOpensInTheMiddleOfTheScreen) {
    open();
    EXPECT_EQ(editor().Left.get(), (1024 * 15 - editor().Width) / 2);
    EXPECT_EQ(editor().Top.get(), (768 * 15 - editor().Height) / 2);
}

}  // namespace
}  // namespace corvane
