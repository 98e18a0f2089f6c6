// SPDX-License-Identifier: GPL-3.0-or-later
// A list that is written for other players.
#include "editor_fixture.h"
#include "types/text.h"

namespace corvane {
namespace {

using Editor = FileListControls;
using Texts = std::vector<std::string>;

struct Exporting : EditorFixture {
    Exporting() {
        player.conveniences.lists = player.conveniences.names = true;
        open();
    }
    ~Exporting() override { player.forms.clear(); }
    void pushExport() {
        machine.loop.enter([&] { editor().cmdEdit[Editor::kExport].Click.raise(); });
        machine.settle();
    }
};

/// EDIT-108: All tracks of a sheet that follow each other are exported as the sheet, which gives them back; of other
///     tracks of discs the box says that this player alone can open them
TEST_F(Exporting, WholeSheetsAreWritten) {
    machine.files.add("/m/d.cue",
                      "FILE \"d.wav\" WAVE\nTRACK 01 AUDIO\nTITLE \"First\"\nINDEX 01 00:00:00\n"
                      "TRACK 02 AUDIO\nINDEX 01 00:10:00\n");
    for (const char* each : {"Track01.cda", "Track02.cda"}) machine.files.add(std::string("/m/d.cue/") + each);
    machine.files.add("/cd/Track01.cda");
    const auto exported = [this](const Texts& given) {
        drop({true, given});
        machine.settle();
        machine.dialogs.answers.push_back(Answer::Ok);
        pushExport();
        const std::string written = machine.files.bytes("/app/PAGE 1 LIST 1.m3u8");
        push(Editor::kClear);
        Texts lines;
        for (std::string_view rest = written; !rest.empty();) {
            const std::string_view line = text::takeLine(rest);
            if (!line.starts_with('#')) lines.emplace_back(line);
        }
        return lines;
    };
    const auto question = [this] { return machine.dialogs.boxes.back().text; };
    EXPECT_EQ(exported({"/home/ann/first.mp3", "/m/d.cue"}), (Texts{"/home/ann/first.mp3", "/m/d.cue"}));
    EXPECT_EQ(question().find("Corvane alone"), std::string::npos);
    drop({true, {"/app/PAGE 1 LIST 1.m3u8"}});
    EXPECT_EQ(paths(), (Texts{"/home/ann/first.mp3", "/m/d.cue/Track01.cda", "/m/d.cue/Track02.cda"}));
    push(Editor::kClear);
    EXPECT_EQ(exported({"/m/d.cue", "/m/d.cue"}), (Texts{"/m/d.cue", "/m/d.cue"}));
    EXPECT_EQ(exported({"/m/d.cue/Track02.cda", "/m/d.cue/Track01.cda", "/cd/Track01.cda"}),
              (Texts{"/m/d.cue/Track02.cda", "/m/d.cue/Track01.cda", "/cd/Track01.cda"}));
    EXPECT_TRUE(question().ends_with("\r\n3 tracks of discs are written as Corvane alone can open them."))
        << question();
    drop({true, {"/app/PAGE 1 LIST 1.m3u8"}});
    EXPECT_EQ(paths(), (Texts{"/m/d.cue/Track02.cda", "/m/d.cue/Track01.cda", "/cd/Track01.cda"}));
    push(Editor::kClear);
    EXPECT_EQ(exported({"/m/d.cue/Track02.cda"}), Texts{"/m/d.cue/Track02.cda"});
    EXPECT_TRUE(question().ends_with("\r\n1 track of a disc is written as Corvane alone can open it.")) << question();
}

}  // namespace
}  // namespace corvane
