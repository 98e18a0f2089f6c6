// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/input_map.h"

#include <gtest/gtest.h>

#include <QKeyEvent>
#include <QMimeData>

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

QKeyEvent key(int code, Qt::KeyboardModifiers modifiers, const QString& text = {}) {
    return QKeyEvent(QEvent::KeyPress, code, modifiers, text);
}

TEST(InputMap, KeysHaveVirtualCodes) {
    EXPECT_EQ(virtualKey(Qt::Key_F4, false), kKeyF4);
    EXPECT_EQ(virtualKey(Qt::Key_F1, false), kKeyF1);
    EXPECT_EQ(virtualKey(Qt::Key_Alt, false), kKeyAlt);
    EXPECT_EQ(virtualKey(Qt::Key_Z, false), 'Z');
    EXPECT_EQ(virtualKey(Qt::Key_5, false), '5');
    EXPECT_EQ(virtualKey(Qt::Key_5, true), 101);
    EXPECT_EQ(virtualKey(Qt::Key_Plus, true), 107);
    EXPECT_EQ(virtualKey(Qt::Key_Left, true), 37);
    EXPECT_EQ(virtualKey(Qt::Key_AltGr, false), 0);
}

TEST(InputMap, TheAltKeyCountsAsHeldWhileItGoesDown) {
    const KeyArgs down = keyArgs(key(Qt::Key_Alt, Qt::NoModifier));
    EXPECT_EQ(down.keyCode, kKeyAlt);
    EXPECT_EQ(down.shift, kAltMask);
    EXPECT_EQ(keyArgs(key(Qt::Key_F4, Qt::AltModifier)).shift, kAltMask);
}

TEST(InputMap, TheAltKeyCountsAsHeldInACopyOfItsEventToo) {
    const QKeyEvent down = key(Qt::Key_Alt, Qt::NoModifier);
    EXPECT_EQ(keyArgs(key(Qt::Key_Alt, down.modifiers())).shift, kAltMask);
    const QKeyEvent up(QEvent::KeyRelease, Qt::Key_Alt, Qt::AltModifier);
    EXPECT_EQ(keyArgs(up).shift, 0);
    EXPECT_EQ(keyArgs(QKeyEvent(QEvent::KeyRelease, Qt::Key_Alt, up.modifiers())).shift, 0);
}

/// KEY-18
TEST(InputMap, TypedCharactersAreCodePoints) {
    EXPECT_EQ(typedCharacter(key(Qt::Key_Z, Qt::NoModifier, "z")), 'z');
    EXPECT_EQ(typedCharacter(key(Qt::Key_Z, Qt::ShiftModifier, "Z")), 'Z');
    EXPECT_EQ(typedCharacter(key(0, Qt::NoModifier, QString::fromUcs4(U"\U0001F3B5"))), 0x1F3B5);
    EXPECT_EQ(typedCharacter(key(Qt::Key_Z, Qt::AltModifier, "z")), 0);
    EXPECT_EQ(typedCharacter(key(Qt::Key_Delete, Qt::NoModifier, "\x7F")), 0);
    EXPECT_EQ(typedCharacter(key(Qt::Key_F1, Qt::NoModifier)), 0);
    EXPECT_EQ(typedCharacter(key(Qt::Key_Backspace, Qt::NoModifier, "\b")), kKeyBackspace);
}

TEST(InputMap, ButtonsAndShiftStates) {
    EXPECT_EQ(buttonCode(Qt::LeftButton), kLeftButton);
    EXPECT_EQ(buttonCode(Qt::RightButton), kRightButton);
    EXPECT_EQ(buttonCode(Qt::MiddleButton), kMiddleButton);
    EXPECT_EQ(buttonCode(Qt::BackButton), 0);
    EXPECT_EQ(shiftState(Qt::ShiftModifier | Qt::AltModifier), kShiftMask | kAltMask);
    EXPECT_EQ(shiftState(Qt::ControlModifier | Qt::MetaModifier), kCtrlMask);
}

TEST(InputMap, FileAddressesBecomePathsByteForByte) {
    EXPECT_EQ(pathsOfUriList("# made by a file manager\r\nfile:///a%20b/%E3%81%82.mp3\r\nhttp://host/x.mp3\r\n"
                             "file://host/c.wav\nfile:/d.mid\nfile:///b%E9.wav\r\nfile:///nul%00.wav\r\n\r\n"),
              (Texts{"/a b/あ.mp3", "/c.wav", "/d.mid", "/b\xE9.wav"}));
}

/// DROP-09
TEST(InputMap, ADropWithoutFileNamesHasNoFiles) {
    QMimeData text;
    text.setText("file:///a.mp3");
    EXPECT_FALSE(dropData(text).hasFiles);
    QMimeData list;
    list.setData("text/uri-list", "file:///a.mp3\r\n");
    EXPECT_TRUE(dropData(list).hasFiles);
    EXPECT_EQ(dropData(list).files, Texts{"/a.mp3"});
}

}  // namespace
}  // namespace corvane
