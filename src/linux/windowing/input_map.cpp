// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/input_map.h"

#include <QKeyEvent>
#include <QMimeData>
#include <algorithm>
#include <array>
#include <utility>

namespace corvane {

namespace {

constexpr std::array kKeys = std::to_array<std::pair<int, int>>({
    {Qt::Key_Backspace, kKeyBackspace},
    {Qt::Key_Tab, 9},
    {Qt::Key_Backtab, 9},
    {Qt::Key_Return, 13},
    {Qt::Key_Enter, 13},
    {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},
    {Qt::Key_Alt, kKeyAlt},
    {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, 20},
    {Qt::Key_Escape, 27},
    {Qt::Key_Space, 32},
    {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34},
    {Qt::Key_End, 35},
    {Qt::Key_Home, 36},
    {Qt::Key_Left, 37},
    {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},
    {Qt::Key_Down, 40},
    {Qt::Key_Insert, 45},
    {Qt::Key_Delete, 46},
    {Qt::Key_Meta, 91},
    {Qt::Key_Menu, 93},
    {Qt::Key_NumLock, 144},
    {Qt::Key_ScrollLock, 145},
    {Qt::Key_Semicolon, 186},
    {Qt::Key_Equal, 187},
    {Qt::Key_Comma, 188},
    {Qt::Key_Minus, 189},
    {Qt::Key_Period, 190},
    {Qt::Key_Slash, 191},
    {Qt::Key_QuoteLeft, 192},
    {Qt::Key_BracketLeft, 219},
    {Qt::Key_Backslash, 220},
    {Qt::Key_BracketRight, 221},
    {Qt::Key_Apostrophe, 222},
});

constexpr std::array kPadKeys = std::to_array<std::pair<int, int>>({
    {Qt::Key_Asterisk, 106},
    {Qt::Key_Plus, 107},
    {Qt::Key_Minus, 109},
    {Qt::Key_Period, 110},
    {Qt::Key_Comma, 110},
    {Qt::Key_Slash, 111},
});

template <std::size_t N>
int lookUp(const std::array<std::pair<int, int>, N>& table, int key) {
    const auto found = std::find_if(table.begin(), table.end(), [key](const auto& row) { return row.first == key; });
    return found == table.end() ? 0 : found->second;
}

}  // namespace

int shiftState(Qt::KeyboardModifiers modifiers) {
    return (modifiers.testFlag(Qt::ShiftModifier) ? kShiftMask : 0) |
           (modifiers.testFlag(Qt::ControlModifier) ? kCtrlMask : 0) |
           (modifiers.testFlag(Qt::AltModifier) ? kAltMask : 0);
}

int buttonCode(Qt::MouseButton button) {
    if (button == Qt::LeftButton) return kLeftButton;
    if (button == Qt::RightButton) return kRightButton;
    return button == Qt::MiddleButton ? kMiddleButton : 0;
}

int virtualKey(int qtKey, bool keypad) {
    if (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9) return keypad ? qtKey - Qt::Key_0 + 96 : qtKey;
    if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) return qtKey;
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24) return qtKey - Qt::Key_F1 + kKeyF1;
    if (keypad) {
        if (const int code = lookUp(kPadKeys, qtKey); code != 0) return code;
    }
    return lookUp(kKeys, qtKey);
}

KeyArgs keyArgs(const QKeyEvent& event) {
    // A key that is itself a modifier is held from its press on, not at its release. Qt's own answer is turned round
    // each time an event is copied, which it does while a screen reader listens.
    const auto own = static_cast<Qt::KeyboardModifiers>(event.key() == Qt::Key_Shift     ? Qt::ShiftModifier
                                                        : event.key() == Qt::Key_Control ? Qt::ControlModifier
                                                        : event.key() == Qt::Key_Alt     ? Qt::AltModifier
                                                                                         : Qt::NoModifier);
    const bool isPress = event.type() == QEvent::KeyPress;
    const Qt::KeyboardModifiers held = isPress ? event.modifiers() | own : event.modifiers() & ~own;
    return {virtualKey(event.key(), held.testFlag(Qt::KeypadModifier)), shiftState(held)};
}

int typedCharacter(const QKeyEvent& event) {
    if (event.modifiers().testFlag(Qt::AltModifier) || event.text().isEmpty()) return 0;
    if (event.key() == Qt::Key_Delete) return 0;  // Qt gives it a character of its own
    return static_cast<int>(event.text().toUcs4().first());
}

std::vector<std::string> pathsOfUriList(const QByteArray& list) {
    std::vector<std::string> paths;
    for (QByteArray line : list.split('\n')) {
        line = line.trimmed();
        if (!line.toLower().startsWith("file:")) continue;
        line.remove(0, 5);
        if (line.startsWith("//")) line.remove(0, std::max<qsizetype>(line.indexOf('/', 2), 2));  // the host's name
        const QByteArray path = QByteArray::fromPercentEncoding(line);
        if (path.startsWith('/') && !path.contains('\0')) paths.push_back(path.toStdString());
    }
    return paths;
}

bool offersFiles(const QMimeData& data) { return data.hasFormat(QStringLiteral("text/uri-list")); }

DropData dropData(const QMimeData& data) {
    if (!offersFiles(data)) return {};
    return {true, pathsOfUriList(data.data(QStringLiteral("text/uri-list")))};
}

}  // namespace corvane
