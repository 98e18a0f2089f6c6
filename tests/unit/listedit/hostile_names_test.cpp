// SPDX-License-Identifier: GPL-3.0-or-later
// Names that fight the file format: what each becomes after a save, a restart and a load, on all hundred lists.
#include "editor_fixture.h"

namespace corvane {
namespace {

using Editor = FileListControls;

struct Hostile {
    const char* what;
    ListEntry stored;
    ListEntry back;
};

std::string repeated(const char* text, std::size_t times) {
    std::string result;
    for (std::size_t i = 0; i < times; ++i) result += text;
    return result;
}

ListEntry file(const std::string& name) { return {name, "/music/" + name}; }

std::vector<Hostile> hostileNames() {
    const auto whole = [](const char* what, const std::string& name) { return Hostile{what, file(name), file(name)}; };
    const std::string longest = repeated("x", 245) + ".mp3";  // the name, a bar and "/music/" and the name: 506 bytes
    const std::string tooLong = repeated("y", 251) + ".mp3";  // 518 bytes: the name gives way, the path stays
    const std::string wide = repeated("\xE3\x81\x82", 84) + "a.mp3";  // 257 bytes of three-byte characters: 522
    return {
        whole("comma", "a,b.mid"),
        whole("equals sign", "a=b=.mid"),
        whole("quotes", "\"a\".mid"),
        whole("quote at one end", "a.mid\""),
        whole("single quotes", "'a'.mid"),
        whole("brackets", "[FILELIST].mid"),
        whole("semicolon", ";a.mid"),
        whole("blank in front", " a.mid"),
        whole("blank at the end", "a.mid "),
        whole("tab", "a\tb.mid"),
        whole("emoji", "\xF0\x9F\x8E\xB5.mid"),
        whole("Japanese", "\xE6\x9B\xB2.mid"),
        whole("Latin-1, which is not UTF-8", "caf\xE9.mid"),
        whole("broken UTF-8", "\xC3(\xFF\xFE.mid"),
        whole("no extension", "a"),
        whole("longest", longest),
        {"bar", {"a|b.mid", "/music/a|b.mid"}, {"a_b.mid", "/music/a|b.mid"}},
        {"too long", file(tooLong), {tooLong.substr(0, 511 - 1 - 7 - tooLong.size()), "/music/" + tooLong}},
        {"too long, wide", file(wide), {wide.substr(0, 246 / 3 * 3), "/music/" + wide}},
    };
}

/// LIST-34
TEST_F(EditorFixture, EachHostileNameSurvivesOrBecomesWhatIsStated) {
    open();
    for (const Hostile& each : hostileNames()) {
        setRows({each.stored, {"next.wav", "/x/next.wav"}});
        save();
        push(Editor::kClear);
        push(Editor::kList);
        ASSERT_EQ(names().size(), 2U) << each.what;
        EXPECT_EQ(names()[0], each.back.name) << each.what;
        EXPECT_EQ(paths()[0], each.back.path) << each.what;
        EXPECT_EQ(names()[1], "next.wav") << each.what;
    }
    EXPECT_EQ(machine.dialogs.boxes.size(), hostileNames().size());  // the questions, no failure
}

/// LIST-34
TEST_F(EditorFixture, EachHostileListNameComesBack) {
    open();
    for (const std::string name : {"a|b", "a,b", "a=b", "\"quoted\"", " both ends ", "[KADO]", ";note", "'", "caf\xE9",
                                   "\xE6\x9B\xB2 \xF0\x9F\x8E\xB5"}) {
        editor().txtListName.Text = std::string(name);
        save();
        push(Editor::kClear);
        push(Editor::kList);
        EXPECT_EQ(editor().txtListName.Text.get(), name);
    }
}

/// LIST-03: All hundred lists keep apart
TEST_F(EditorFixture, AllHundredListsComeBackAfterARestart) {
    const auto hostile = hostileNames();
    const auto rowsOf = [&](int number) {
        std::vector<ListEntry> rows{file("list" + std::to_string(number) + ".mid")};
        for (int i = 0; i <= number % 3; ++i) {
            rows.push_back(hostile[static_cast<std::size_t>(number + i) % 16].stored);  // those that stay as they are
        }
        return rows;
    };
    open();
    for (int number = 0; number < 100; ++number) {
        machine.loop.enter([&] { editor().hscrPageList.Value = number / 10; });
        machine.loop.enter([&] { editor().hscrFileList.Value = number % 10; });
        setRows(rowsOf(number));
        editor().txtListName.Text = "List " + std::to_string(number);
        save();
    }
    push(Editor::kCancel);

    for (int number = 0; number < 100; ++number) {
        player.gPageNumber = static_cast<std::int16_t>(number / 10);
        player.gListNumber = static_cast<std::int16_t>(number % 10);
        open();
        const auto rows = rowsOf(number);
        ASSERT_EQ(names().size(), rows.size()) << number;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(names()[i], rows[i].name) << number;
            EXPECT_EQ(paths()[i], rows[i].path) << number;
        }
        EXPECT_EQ(editor().txtListName.Text.get(), "List " + std::to_string(number));
        push(Editor::kCancel);
    }
}

/// EDIT-64: An entry that is not UTF-8 plays from its own path
TEST_F(EditorFixture, AnEntryThatIsNotUtf8PlaysFromItsOwnPath) {
    player.gAutoPlay = true;
    machine.addSound("/music/caf\xE9.mid", 3000);
    open();
    setRows({file("caf\xE9.mid")});
    save();
    push(Editor::kClear);
    push(Editor::kList);
    push(Editor::kOk);
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(machine.log.count("mci.FileName /music/caf\xE9.mid"), 1);
    EXPECT_TRUE(machine.dialogs.boxes.size() == 1U);
}

}  // namespace
}  // namespace corvane
