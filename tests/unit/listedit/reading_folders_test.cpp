// SPDX-License-Identifier: GPL-3.0-or-later
// Folders that are dropped on the editor's list.
#include <functional>

#include "editor_fixture.h"

namespace corvane {
namespace {

using Editor = FileListControls;
using Texts = std::vector<std::string>;

struct ReadingFolders : EditorFixture {
    ReadingFolders() {
        player.conveniences.lists = true;
        ports.work = &machine.work;
        machine.work.taskMs = 2000;
        open();
    }
    ~ReadingFolders() override { player.forms.clear(); }
    void pushEdit(int index) {
        machine.loop.enter([&] { editor().cmdEdit.at(static_cast<std::size_t>(index)).Click.raise(); });
        machine.settle();
    }
    bool key(int code) {
        bool taken = false;
        machine.loop.enter([&] { taken = editor().takeKey({code, 0}); });
        machine.settle();
        return taken;
    }
    const std::string& status() { return editor().lblStatus.Caption; }
};

/// EDIT-102: While folders that were dropped are read, the last line says so and the editor goes on; they come at the
/// list's
///     end, in the order of the drops, each as one change
TEST_F(ReadingFolders, FoldersAreReadWhileTheEditorGoesOn) {
    drop({true, {"/home/ann/Music"}});
    drop({true, {"/home/ann/first.mp3"}});
    EXPECT_EQ(status(), "0 files, reading folders: 0 files");
    machine.advance(1500);
    EXPECT_EQ(status(), "0 files, reading folders: 3 files");
    machine.advance(2600);
    EXPECT_EQ(names(), (Texts{"a.wav", "b.mid", "d.aiff", "first.mp3"}));
    EXPECT_EQ(status().find("reading folders"), std::string::npos);
    pushEdit(Editor::kUndo);
    pushEdit(Editor::kUndo);
    EXPECT_EQ(names(), Texts{});
}

/// EDIT-107: With PLAYS a drop of which nothing is played says why in one box; without it it is silent, as stated
TEST_F(ReadingFolders, ADropOfNothingThatIsPlayedIsTold) {
    machine.files.addFolder("/empty");
    const auto boxes = [this] { return machine.dialogs.boxes.size(); };
    const auto give = [this](const Texts& files) {
        machine.loop.enter([&] { drop({true, files}); });
        machine.advance(2500);
    };
    give({"/home/ann/readme.txt"});
    EXPECT_EQ(boxes(), 0U);
    player.conveniences.plays = true;
    give({"/home/ann/readme.txt"});
    ASSERT_EQ(boxes(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text,
              "/home/ann/readme.txt: left out, because it is none of the kinds that are played");
    give({"/empty", "/home/ann/gone.mp3"});
    ASSERT_EQ(boxes(), 2U);
    EXPECT_EQ(machine.dialogs.boxes[1].text,
              "/empty: left out, because nothing in it can be played here\n"
              "/home/ann/gone.mp3: left out, because there is no such file");
    EXPECT_EQ(names(), Texts{});
    give({"/home/ann/readme.txt", "/home/ann/first.mp3"});
    EXPECT_EQ(names(), Texts{"first.mp3"});
    EXPECT_EQ(boxes(), 2U);
}

/// EDIT-103: Stop and Escape give up what is read of folders; so do another list and the editor's end
TEST_F(ReadingFolders, ReadingFoldersIsGivenUp) {
    const std::vector<std::function<void()>> stops = {[this] { pushEdit(Editor::kStopReading); },
                                                      [this] { EXPECT_TRUE(key(kKeyEscape)); },
                                                      [this] {
                                                          machine.dialogs.answers = {Answer::Ok};
                                                          push(Editor::kList);
                                                      }};
    for (const auto& stop : stops) {
        drop({true, {"/home/ann/Music"}});
        machine.advance(1500);
        ASSERT_TRUE(editor().cmdEdit[Editor::kStopReading].Enabled);
        stop();
        const auto before = names();
        machine.advance(5000);
        EXPECT_EQ(names(), before);
        EXPECT_FALSE(editor().cmdEdit[Editor::kStopReading].Enabled);
    }
    EXPECT_FALSE(key(kKeyEscape)) << "it leaves the editor then";
    drop({true, {"/home/ann/Music"}});
    machine.dialogs.answers = {Answer::Ok};
    push(Editor::kOk);
    machine.advance(5000);
    EXPECT_EQ(found(), nullptr);
}

}  // namespace
}  // namespace corvane
