// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "fake/player_fixture.h"
#include "listedit/frmFileList.h"
#include "storage/play_lists.h"

namespace corvane {

/// The editor over a machine with a drive "Home" (/home/ann, with a folder Music of five files), a drive "Computer" (/)
/// and an empty disc drive.
class EditorFixture : public PlayerFixture {
protected:
    EditorFixture() {
        for (const char* name : {"b.mid", "a.wav", "c.GIF", "notes.txt", "d.aiff"}) {
            machine.files.add(std::string("/home/ann/Music/") + name);
        }
        machine.files.add("/home/ann/first.mp3");
        machine.files.addFolder("/home/ann/Videos");
        machine.files.addFolder("/app");
        machine.files.lockFolder("/media/cdrom");
        machine.files.offeredDrives = {{"Computer", "/"}, {"Home", "/home/ann", true}, {"Disc", "/media/cdrom"}};
        player.gIniFile = "/app/KADO.INI";
        player.gListFileStem = "/app/FILE";
        machine.files.add("/app/skin.csv", "slider,40,10,10,0,0,200,8,WHITE\nknob,24,300,10,0,0,60,60,1\n");
        player.gTextPath = "/app/skin.csv";
        setUpPanel();
    }

    /// Opens the editor by the panel's button.
    FileListControls& open() {
        click(kEditor);
        machine.settle();
        machine.clearCalls();
        return editor();
    }
    FileListControls* found() { return player.forms.find<FileListControls>(); }
    FileListControls& editor() { return *found(); }
    const std::string& caption(int index) { return editor().cmdFileList.at(static_cast<std::size_t>(index)).Caption; }
    std::vector<std::string> names() { return editor().lstFileList[0].items(); }
    std::vector<std::string> paths() { return editor().lstFileList[1].items(); }
    ComboBox& combo(int index) { return editor().cboFileList.at(static_cast<std::size_t>(index)); }

    // What the user does.
    void push(int index) {
        CommandButton& pushed = editor().cmdFileList.at(static_cast<std::size_t>(index));
        machine.loop.enter([&] { pushed.Click.raise(); });
        machine.settle();
    }
    void goTo(const std::string& folder) {
        machine.loop.enter([&] { editor().dirFileList.Path = std::string(folder); });
    }
    void pick(ItemsControl& list, const std::vector<int>& indices) {
        machine.loop.enter([&] {
            for (const int each : indices) {
                list.select(each, true);
                list.ListIndex = each;
            }
            list.Click.raise();
        });
    }
    void doubleClick(ItemsControl& list, int index) {
        pick(list, {index});
        machine.loop.enter([&] { list.DblClick.raise(); });
        machine.settle();
    }
    void drop(const DropData& data) {
        machine.loop.post([this, data] { editor().lstFileList[0].OLEDragDrop.raise(data); });
        machine.settle();
    }
    void save() {
        machine.dialogs.answers.push_back(Answer::Ok);
        push(FileListControls::kSave);
    }
    void setRows(const std::vector<ListEntry>& rows) {
        push(FileListControls::kClear);
        for (const ListEntry& each : rows) {
            editor().lstFileList[0].addItem(each.name);
            editor().lstFileList[1].addItem(each.path);
        }
    }
    void writeList(const std::string& file, const std::string& lines) {
        machine.files.add(file, "[FILELIST]\r\n" + lines);
    }
};

}  // namespace corvane
