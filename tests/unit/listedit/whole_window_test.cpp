// SPDX-License-Identifier: GPL-3.0-or-later
// The editor as a whole: each control's place, texts and states, at several sizes.
#include "editor_fixture.h"
#include "fake/form_text.h"

namespace corvane {
namespace {

TEST_F(EditorFixture, EachControlIsWhatItIs) {
    open();
    expectKeptText("editor", formText(editor()));
}

TEST_F(EditorFixture, ALargerWindowGivesTheListsMore) {
    open();
    machine.loop.enter([this] {
        editor().SetSize(16000, 9000);
        editor().Resize.raise();
    });
    expectKeptText("editor_large", formText(editor()));
}

TEST_F(EditorFixture, ASmallWindowWithItsSplitterMovedStillHasRoomForAll) {
    open();
    machine.loop.enter([this] {
        editor().SetSize(editor().MinWidth, editor().MinHeight);
        editor().Resize.raise();
    });
    press(editor().imgFileList, {kLeftButton, 0, 0, 0});
    machine.loop.enter([this] { editor().imgFileList.MouseMove.raise({kLeftButton, 0, -500, 0}); });
    release(editor().imgFileList, {kLeftButton, 0, 0, 0});
    expectKeptText("editor_small", formText(editor()));
}

}  // namespace
}  // namespace corvane
