// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's list changed by hand: undo, order, keys, search, what is unsaved, lengths, the list for other players.
#include <algorithm>

#include "editor_fixture.h"
#include "fake_lengths.h"
#include "listedit/export_name.h"

namespace corvane {
namespace {

using Editor = FileListControls;
using Texts = std::vector<std::string>;

constexpr int kKeyDelete = 46, kKeyF3 = 114;

class Editing : public EditorFixture {
protected:
    Editing() {
        ports.lengths = &lengths;
        open();
        goTo("/home/ann/Music");
        push(Editor::kAddAll);  // a.wav, b.mid, c.GIF, d.aiff
    }
    ~Editing() override { player.forms.clear(); }  // before the lengths that it asks
    PlayListBox& list() { return editor().lstFileList[0]; }
    void pushEdit(int index) {
        CommandButton& pushed = editor().cmdEdit.at(static_cast<std::size_t>(index));
        if (!pushed.Enabled) return;
        machine.loop.enter([&] { pushed.Click.raise(); });
        machine.settle();
    }
    bool key(int code, int shift = 0) {
        bool taken = false;
        machine.loop.enter([&] { taken = editor().takeKey({code, shift}); });
        machine.settle();
        return taken;
    }
    bool listKey(int code, int shift = 0) {
        bool taken = false;
        machine.loop.enter([&] { taken = list().takeKey({code, shift}); });
        machine.settle();
        return taken;
    }
    void select(const std::vector<int>& rows) {
        machine.loop.enter([&] { list().clearSelection(); });
        pick(list(), rows);
    }
    void sortBy(int by) {
        machine.loop.enter([&] { editor().cboSort.ListIndex = by; });
        machine.settle();
    }
    void find(const std::string& text) {
        machine.loop.enter([&] { editor().txtFind.Text = text; });
    }
    const std::string& status() { return editor().lblStatus.Caption; }
    std::string order() {
        std::string all;
        for (const std::string& each : names()) all += each.front();
        EXPECT_EQ(paths().size(), names().size());
        for (std::size_t i = 0; i < names().size(); ++i) EXPECT_TRUE(paths()[i].ends_with("/" + names()[i]));
        return all;
    }

    FakeLengths lengths{machine.loop};
};

/// EDIT-73: Undo takes the last change of the list back and Redo makes it again, by button and by Ctrl+Z, Ctrl+Y and
///     Ctrl+Shift+Z
TEST_F(Editing, EachChangeIsTakenBackAndMadeAgain) {
    select({1});
    push(Editor::kDelete);
    doubleClick(list(), 0);
    push(Editor::kClear);
    drop({true, {"/home/ann/first.mp3"}});
    const Texts states = {"f", "", "cd", "acd", "abcd", ""};
    for (std::size_t i = 0; i < states.size(); ++i) {
        EXPECT_EQ(order(), states[i]);
        if (i % 2 == 0) {
            pushEdit(Editor::kUndo);
        } else {
            EXPECT_TRUE(key('Z', kCtrlMask));
        }
    }
    EXPECT_FALSE(editor().cmdEdit[Editor::kUndo].Enabled);
    for (std::size_t i = states.size() - 1; i-- > 0;) {
        if (i % 3 == 0) pushEdit(Editor::kRedo);
        if (i % 3 == 1) {
            EXPECT_TRUE(key('Y', kCtrlMask));
        }
        if (i % 3 == 2) {
            EXPECT_TRUE(key('Z', kCtrlMask | kShiftMask));
        }
        EXPECT_EQ(order(), states[i]);
    }
    EXPECT_FALSE(editor().cmdEdit[Editor::kRedo].Enabled);
}

/// EDIT-73
TEST_F(Editing, UndoOfClearBringsTheNameBack) {
    editor().txtListName.Text = "Morning";
    push(Editor::kClear);
    pushEdit(Editor::kUndo);
    EXPECT_EQ(editor().txtListName.Text.get(), "Morning");
    EXPECT_EQ(order(), "abcd");
    pushEdit(Editor::kRedo);
    EXPECT_EQ(editor().txtListName.Text.get(), "");
}

/// EDIT-73
TEST_F(Editing, WhatUndoBringsBackIsSelected) {
    select({1, 2});
    push(Editor::kDelete);
    select({0});
    pushEdit(Editor::kUndo);
    EXPECT_EQ(list().selectedIndices(), (std::vector<int>{1, 2}));
    EXPECT_EQ(list().ListIndex, 1);
}

/// EDIT-73
TEST_F(Editing, AnotherListHasNothingToTakeBack) {
    push(Editor::kList);
    EXPECT_EQ(order(), "");
    EXPECT_FALSE(editor().cmdEdit[Editor::kUndo].Enabled);
    key('Z', kCtrlMask);
    EXPECT_EQ(order(), "");
}

/// EDIT-74: Del removes the selected entries, and the one that takes their place is current then
TEST_F(Editing, DelRemovesAndGoesOnFromThere) {
    select({1, 2});
    EXPECT_TRUE(listKey(kKeyDelete));
    EXPECT_EQ(order(), "ad");
    EXPECT_EQ(list().selectedIndices(), std::vector<int>{1});
    EXPECT_EQ(list().ListIndex, 1);
    listKey(kKeyDelete);
    listKey(kKeyDelete);
    EXPECT_EQ(order(), "");
    EXPECT_TRUE(listKey(kKeyDelete));
    EXPECT_FALSE(listKey(kKeyDelete, kShiftMask));
}

/// EDIT-74
TEST_F(Editing, DelInTheMiddleGoesOnWithTheNextEntry) {
    select({1});
    listKey(kKeyDelete);
    EXPECT_EQ(order(), "acd");
    EXPECT_EQ(list().selectedIndices(), std::vector<int>{1});
    EXPECT_EQ(list().ListIndex, 1);
}

/// EDIT-75: Alt with an arrow moves the selected entries by one place, and they stay selected
TEST_F(Editing, AltAndArrowsMoveTheSelectedEntries) {
    select({1, 2});
    EXPECT_TRUE(listKey(kKeyDown, kAltMask));
    EXPECT_EQ(order(), "adbc");
    EXPECT_EQ(list().selectedIndices(), (std::vector<int>{2, 3}));
    listKey(kKeyDown, kAltMask);
    EXPECT_EQ(order(), "adbc");
    for (int i = 0; i < 3; ++i) listKey(kKeyUp, kAltMask);
    EXPECT_EQ(order(), "bcad");
    EXPECT_FALSE(listKey(kKeyUp));
    for (int i = 0; i < 3; ++i) pushEdit(Editor::kUndo);
    EXPECT_EQ(order(), "abcd");
}

/// EDIT-76: Dragged entries stand together in front of the entry that they are dropped on, selected
TEST_F(Editing, DraggedEntriesMoveTogether) {
    select({0, 2});
    machine.loop.enter([&] { list().moveRows(4); });
    EXPECT_EQ(order(), "bdac");
    EXPECT_EQ(list().selectedIndices(), (std::vector<int>{2, 3}));
    key('Z', kCtrlMask);
    EXPECT_EQ(order(), "abcd");
    list().clearSelection();
    machine.loop.enter([&] { list().moveRows(0); });
    EXPECT_EQ(order(), "abcd");
}

/// EDIT-77: SORT puts the entries in order by name, path or length; entries of unknown length come last
TEST_F(Editing, SortsByNamePathAndLength) {
    setRows({});
    lengths.lengths = {{"/z/a.wav", 3000}, {"/y/c.wav", 1000}};
    machine.files.add("/z/a.wav");
    machine.files.add("/x/b.wav");
    machine.files.add("/y/c.wav");
    drop({true, {"/y/c.wav", "/x/b.wav", "/z/a.wav"}});
    sortBy(Editor::kByName);
    EXPECT_EQ(order(), "abc");
    sortBy(Editor::kByPath);
    EXPECT_EQ(order(), "bca");
    sortBy(Editor::kByLength);
    EXPECT_EQ(order(), "cab");
    for (int i = 0; i < 3; ++i) key('Z', kCtrlMask);
    EXPECT_EQ(order(), "cba");
    EXPECT_EQ(editor().cboSort.ListIndex, -1);
    sortBy(Editor::kByName);
    EXPECT_EQ(editor().cboSort.ListIndex, static_cast<int>(Editor::kByName));
    select({0});
    listKey(kKeyDown, kAltMask);
    EXPECT_EQ(order(), "bac");
    sortBy(Editor::kByName);
    EXPECT_EQ(order(), "abc");
}

/// EDIT-106: Lengths that come after the list was put in their order bring it into that order
TEST_F(Editing, SortsByLengthsThatComeLater) {
    setRows({});
    lengths.lengths = {{"/z/a.wav", 3000}, {"/x/b.wav", 2000}, {"/y/c.wav", 1000}};
    for (const auto& each : lengths.lengths) machine.files.add(each.first);
    lengths.slow = true;
    drop({true, {"/z/a.wav", "/x/b.wav", "/y/c.wav"}});
    sortBy(Editor::kByLength);
    EXPECT_EQ(order(), "abc");
    for (int i = 0; i < 3; ++i) {
        lengths.tell();
        machine.settle();
    }
    EXPECT_EQ(order(), "cba");
    key('Z', kCtrlMask);
    EXPECT_EQ(order(), "abc") << "it is one change, and undone it stays so";
}

/// EDIT-109: FIND takes 200 characters, however many are pasted
TEST_F(Editing, WhatIsLookedForIsBounded) { EXPECT_EQ(editor().txtFind.MaxLength, 200); }

/// EDIT-78: FIND goes to the first entry that holds the text while it is typed; Next, Enter in the field and F3 go on;
///     Ctrl+F leads to the field
TEST_F(Editing, FindGoesFromEntryToEntry) {
    find("I");
    EXPECT_EQ(list().selectedIndices(), std::vector<int>{1});
    pushEdit(Editor::kFindNext);
    EXPECT_EQ(list().selectedIndices(), std::vector<int>{2});
    EXPECT_TRUE(key(kKeyF3));
    EXPECT_EQ(list().ListIndex, 3);
    key(kKeyF3);
    EXPECT_EQ(list().ListIndex, 1);
    find("nothing like it");
    EXPECT_EQ(list().ListIndex, 1);
    find(names().front());
    EXPECT_EQ(list().ListIndex, 0) << "the first entry as well";
    find("I");
    EXPECT_TRUE(key('F', kCtrlMask));
    machine.loop.enter([&] { editor().txtFind.GotFocus.raise(); });
    EXPECT_TRUE(editor().cmdEdit[Editor::kFindNext].Default);
    EXPECT_FALSE(editor().cmdFileList[Editor::kOk].Default);
    machine.loop.enter([&] { editor().txtFind.LostFocus.raise(); });
    EXPECT_FALSE(editor().cmdEdit[Editor::kFindNext].Default);
    EXPECT_TRUE(editor().cmdFileList[Editor::kOk].Default);
    EXPECT_FALSE(key('F'));
}

/// EDIT-79: The last line counts the files and shows by a dot and in words that the list is not saved
TEST_F(Editing, TheLastLineTellsWhatIsNotSaved) {
    EXPECT_EQ(status(), "● 4 files, 3 of unknown length, not saved");
    save();
    EXPECT_EQ(status(), "4 files, 3 of unknown length");
    editor().txtListName.Text = "Evening";
    EXPECT_EQ(status(), "● 4 files, 3 of unknown length, not saved");
    editor().txtListName.Text = "";
    EXPECT_EQ(status(), "4 files, 3 of unknown length");
    push(Editor::kClear);
    EXPECT_EQ(status(), "● 0 files, not saved");
    key('Z', kCtrlMask);
    EXPECT_EQ(status(), "4 files, 3 of unknown length");
    push(Editor::kList);
    EXPECT_EQ(status(), "4 files, 3 of unknown length");
}

/// EDIT-80: The last line adds up the lengths; pictures have none, and of each file it is asked once
TEST_F(Editing, TheLastLineAddsUpLengths) {
    lengths.lengths = {{"/home/ann/first.mp3", 3'600'000}, {"/home/ann/Music/a.wav", 65'400}};
    push(Editor::kClear);
    lengths.asked.clear();
    drop({true, {"/home/ann/first.mp3", "/home/ann/Music/c.GIF", "/home/ann/first.mp3"}});
    EXPECT_EQ(status(), "● 3 files, 2:00:00, not saved");
    EXPECT_EQ(lengths.asked, Texts{"/home/ann/first.mp3"});
    drop({true, {"/home/ann/first.mp3"}});
    EXPECT_EQ(status(), "● 4 files, 3:00:00, not saved");
    EXPECT_EQ(lengths.asked.size(), 1U) << "it is known";
}

/// EDIT-81: While lengths are read the last line says so; Stop reads no further
TEST_F(Editing, StopReadsNoFurtherLengths) {
    push(Editor::kClear);
    lengths.slow = true;
    lengths.asked.clear();
    machine.files.add("/home/ann/second.mp3");
    drop({true, {"/home/ann/first.mp3", "/home/ann/second.mp3"}});
    EXPECT_EQ(status(), "● 2 files, reading lengths: 2 left, not saved");
    EXPECT_TRUE(editor().cmdEdit[Editor::kStopReading].Enabled);
    pushEdit(Editor::kStopReading);
    EXPECT_EQ(status(), "● 2 files, 2 of unknown length, not saved");
    EXPECT_FALSE(editor().cmdEdit[Editor::kStopReading].Enabled);
    lengths.tell();
    machine.settle();
    EXPECT_EQ(lengths.asked.size(), 1U);
    EXPECT_EQ(status(), "● 2 files, 2 of unknown length, not saved");
}

/// EDIT-81
TEST_F(Editing, AnAnswerBehindTheEditorsEndIsNobodys) {
    push(Editor::kClear);
    lengths.slow = true;
    drop({true, {"/home/ann/first.mp3"}});
    push(Editor::kCancel);
    lengths.tell();
    machine.settle();
    EXPECT_EQ(found(), nullptr);
}

/// EDIT-82: On a plain start unsaved changes go unasked
TEST_F(Editing, APlainStartLosesChangesUnasked) {
    machine.loop.enter([&] { editor().hscrFileList.Value = 3; });
    push(Editor::kAddAll);
    push(Editor::kCancel);
    EXPECT_EQ(found(), nullptr);
    EXPECT_TRUE(machine.dialogs.boxes.empty());
}

class EditingWithHands : public Editing {
protected:
    EditingWithHands() { player.conveniences.hands = true; }
    std::size_t boxes() { return machine.dialogs.boxes.size(); }
    void answer(Answer answer) { machine.dialogs.answers.push_back(answer); }
    void step(ScrollBar& bar, int value) {
        machine.loop.enter([&] { bar.Value = value; });
        machine.settle();
    }
};

/// EDIT-83: With today's hands one question comes before unsaved changes are lost by Cancel, by reading the list again
///     and by going to another list or page; Cancel to it changes nothing
TEST_F(EditingWithHands, AQuestionComesBeforeChangesAreLost) {
    push(Editor::kCancel);
    EXPECT_EQ(boxes(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "PLAY PAGE 1 LIST 1 is not saved. Lose its changes?");
    push(Editor::kPage);
    EXPECT_EQ(boxes(), 2U);
    step(editor().hscrFileList, 3);
    EXPECT_EQ(boxes(), 3U);
    EXPECT_EQ(editor().hscrFileList.Value, 0);
    step(editor().hscrPageList, -1);
    EXPECT_EQ(boxes(), 4U);
    EXPECT_EQ(editor().hscrPageList.Value, 0);
    EXPECT_EQ(caption(Editor::kPage), "Page 1");
    EXPECT_EQ(order(), "abcd");
    EXPECT_EQ(player.gListNumber, 0);
}

/// A stepper that is held down steps on until the box is seen.
/// EDIT-83
TEST_F(EditingWithHands, AHeldStepperAsksOnce) {
    machine.loop.enter([&] {
        for (int i = 0; i < 5; ++i) editor().hscrFileList.Value = 1;
    });
    machine.settle();
    EXPECT_EQ(boxes(), 1U);
    EXPECT_EQ(editor().hscrFileList.Value, 0);
}

/// EDIT-83
TEST_F(EditingWithHands, OkToTheQuestionLosesThem) {
    answer(Answer::Ok);
    step(editor().hscrFileList, 3);
    EXPECT_EQ(boxes(), 1U);
    EXPECT_EQ(caption(Editor::kList), "File 4");
    EXPECT_EQ(player.gListNumber, 3);
    EXPECT_EQ(order(), "");
    push(Editor::kAddAll);
    answer(Answer::Ok);
    step(editor().hscrPageList, -1);
    EXPECT_EQ(player.gPageNumber, 9);
    push(Editor::kAddAll);
    answer(Answer::Ok);
    push(Editor::kCancel);
    EXPECT_EQ(found(), nullptr);
    EXPECT_EQ(boxes(), 3U);
}

/// EDIT-83
TEST_F(EditingWithHands, ASavedListAndOkAreNotAskedAbout) {
    save();
    machine.dialogs.boxes.clear();
    step(editor().hscrFileList, 3);
    step(editor().hscrFileList, 0);
    EXPECT_EQ(order(), "abcd");
    push(Editor::kClear);
    push(Editor::kOk);
    EXPECT_EQ(found(), nullptr);
    EXPECT_EQ(boxes(), 0U);
}

/// EDIT-83
TEST_F(EditingWithHands, TheProgramMayEndWhileItIsAsked) {
    answer(Answer::Ok);
    machine.dialogs.whileUp = [&] { player.forms.clear(); };
    push(Editor::kCancel);
    EXPECT_EQ(found(), nullptr);
}

/// EDIT-83
TEST_F(EditingWithHands, AnEditorThatGoesWhileItIsAskedReadsNoList) {
    writeList("/app/FILE00.INI", "LIST000=x.wav|/stored/x.wav\r\n");
    answer(Answer::Ok);
    machine.dialogs.whileUp = [&] { player.forms.unload<FileListControls>(); };
    lengths.asked.clear();
    push(Editor::kList);
    EXPECT_EQ(found(), nullptr);
    EXPECT_EQ(lengths.asked, Texts{});
}

/// EDIT-84: Export… writes the list as M3U8 and XSPF beside the lists, named after the list, once that is agreed to
TEST_F(Editing, ExportWritesTheListForOtherPlayers) {
    editor().txtListName.Text = "Mor/ning";
    pushEdit(Editor::kExport);
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "Export 4 files to\r\n/app/Mor_ning.m3u8\r\n/app/Mor_ning.xspf");
    EXPECT_FALSE(machine.files.has("/app/Mor_ning.m3u8"));
    machine.dialogs.answers.push_back(Answer::Ok);
    pushEdit(Editor::kExport);
    EXPECT_NE(machine.files.bytes("/app/Mor_ning.m3u8").find("\n/home/ann/Music/a.wav\n"), std::string::npos);
    EXPECT_NE(machine.files.bytes("/app/Mor_ning.xspf").find("file:///home/ann/Music/d.aiff"), std::string::npos);
    pushEdit(Editor::kExport);
    EXPECT_TRUE(machine.dialogs.boxes.back().text.ends_with("\r\nWhat is there is replaced."));
}

/// EDIT-84
TEST_F(Editing, AnExportThatFailsIsTold) {
    machine.files.failReplace = true;
    machine.dialogs.answers.push_back(Answer::Ok);
    pushEdit(Editor::kExport);
    ASSERT_EQ(machine.dialogs.boxes.size(), 2U);
    EXPECT_EQ(machine.dialogs.boxes[1].text, "/app/PAGE 1 LIST 1.m3u8 Can't save!!");
    push(Editor::kClear);
    pushEdit(Editor::kExport);
    EXPECT_EQ(machine.dialogs.boxes.size(), 2U);
}

/// EDIT-85: An exported list's name is one that every system takes for a file's
TEST(ExportName, IsAFilesNameEverywhere) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"Morning", "Morning"},
        {"a/b\\c:d", "a_b_c_d"},
        {"  x . ", "x"},
        {"..", ""},
        {".hidden", "_hidden"},
        {"nul", "_nul"},
        {"COM1.x", "_COM1.x"},
        {"COMB", "COMB"},
        {"a\r\nb\x7F", "a__b_"},
        {"日本", "日本"},
        {"", ""},
        {"?*<>|\"", "______"},
    };
    for (const auto& [name, file] : cases) EXPECT_EQ(exportName(name), file) << name;
    EXPECT_EQ(exportName(std::string(300, 'x')).size(), 100U);
    std::string wide;
    for (int i = 0; i < 60; ++i) wide += "日";
    EXPECT_EQ(exportName(wide), wide.substr(0, 99));
}

/// EDIT-86: 9,999 entries are sorted, taken back and counted, and each file is asked once
TEST_F(Editing, NineThousandEntriesAreSortedAndAskedOnce) {
    constexpr int kMany = 9'999;
    DropData many{true, {}};
    for (int i = kMany; i > 0; --i) {
        many.files.push_back("/home/ann/many/" + std::to_string(i) + ".wav");
        machine.files.add(many.files.back());
    }
    push(Editor::kClear);
    lengths.asked.clear();
    drop(many);
    EXPECT_EQ(names().size(), static_cast<std::size_t>(kMany));
    sortBy(Editor::kByName);
    EXPECT_EQ(names().front(), "1.wav");
    EXPECT_EQ(names().back(), std::to_string(kMany) + ".wav");
    key('Z', kCtrlMask);
    EXPECT_EQ(names().back(), "1.wav");
    EXPECT_EQ(lengths.asked.size(), static_cast<std::size_t>(kMany));
}

}  // namespace
}  // namespace corvane
