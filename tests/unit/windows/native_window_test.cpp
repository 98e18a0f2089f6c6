// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/native/native_form_window.h"

#include <gtest/gtest.h>

#include <set>

#include "forms/item_tips.h"
#include "forms/row_habits.h"
#include "winapi/text.h"
#include "windows/windowing/dib.h"
#include "windows/windowing/label_font.h"

namespace corvane {
namespace {

constexpr Twips px(int pixels) { return static_cast<Twips>(pixels) * kTwipsPerPixel; }

/// A dialog with two arrows from 0 to 5, a field, a list to choose from and one to type into, each in a room of 40
/// rows.
struct DialogForm : ::testing::Test {
    DialogForm() {
        form.SetSize(px(400), px(200));
        put(bar, 10, 100);
        put(text, 60, 100);
        put(choice, 170, 100);
        put(typed, 280, 100);
        bar.SetSize(px(46), px(26));
        bar.Max = 5;
        bar.Value = 2;
        typed.Editable = true;
        window.bind();
        form.Show();
        loop.runUntil([] { return false; }, 50);
    }
    ~DialogForm() override { window.unbind(); }
    static void put(Control& control, int x, int y) {
        control.Move(px(x), px(y));
        control.SetSize(px(100), px(40));
        control.TabIndex = 0;
    }
    HWND of(const Control& control) const { return window.widgetOf(control); }
    RECT placeOf(const Control& control) const {
        RECT place{};
        GetWindowRect(of(control), &place);
        MapWindowPoints(nullptr, window.handle(), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    void click(const Control& control, int x, int y) {
        SendMessageW(of(control), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        SendMessageW(of(control), WM_LBUTTONUP, 0, MAKELPARAM(x, y));
    }
    void key(const Control& control, WPARAM code) { SendMessageW(of(control), WM_KEYDOWN, code, 1); }

    WindowsLoop loop;
    DesktopContext context{loop, 1.0, nullptr};
    Form form{"frmTried", FormStyle::Dialog};
    ScrollBar bar{&form, "hscrTried"};
    TextBox text{&form, "txtTried"};
    ComboBox choice{&form, "cboTried"};
    ComboBox typed{&form, "cboTyped"};
    NativeWindow window{form, context};
};

/// A list whose rows have tips.
struct TippedForm : ::testing::Test {
    TippedForm() {
        form.SetSize(px(400), px(300));
        list.Move(px(10), px(10));
        list.SetSize(px(120), px(200));
        for (const std::string& each :
             {std::string("01.mp3"), std::string("01.mp3"), std::string(200, 'n'), std::string("brief")}) {
            list.addItem(each);
        }
        list.tipOf = [](int row) -> std::string {
            if (row > 1) return {};
            return row == 0 ? "C:\\music\\one\\01.mp3" : "C:\\music\\two\\01.mp3";
        };
        window.bind();
        form.Show();
        loop.runUntil([] { return false; }, 50);
    }
    ~TippedForm() override { window.unbind(); }
    /// What the tool tip of the list says once the pointer has come to a row.
    std::string tipAt(int row) {
        const HWND widget = window.widgetOf(list);
        const auto height = static_cast<int>(SendMessageW(widget, LB_GETITEMHEIGHT, 0, 0));
        SendMessageW(widget, WM_MOUSEMOVE, 0, MAKELPARAM(5, row * height + height / 2));
        std::string found;
        const auto look = [&](HWND tips) {
            std::wstring text(1024, L'\0');
            TOOLINFOW tool{};
            tool.cbSize = sizeof tool;
            tool.hwnd = window.handle();
            tool.uId = reinterpret_cast<UINT_PTR>(widget);
            tool.lpszText = text.data();
            SendMessageW(tips, TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
            if (text[0] == L'\0') return;
            found = fromWide(text.c_str());
            tipStyle = GetWindowLongPtrW(tips, GWL_STYLE);
        };
        for (HWND tips = nullptr; (tips = FindWindowExW(nullptr, tips, TOOLTIPS_CLASSW, nullptr)) != nullptr;) {
            if (GetWindow(tips, GW_OWNER) == window.handle()) look(tips);
        }
        return found;
    }

    LONG_PTR tipStyle = 0;  ///< of what said it
    WindowsLoop loop;
    DesktopContext context{loop, 1.0, nullptr};
    Form form{"frmTried", FormStyle::Dialog};
    TippedListBox list{&form, "lstTried"};
    NativeWindow window{form, context};
};

/// WIN-07: Two arrows fill their place and step a number by mouse and keys, to a number that the form may change
TEST_F(DialogForm, TheArrowsFillTheirPlaceAndStep) {
    const RECT place = placeOf(bar);
    const int middle = static_cast<int>(place.right - place.left) / 2;
    EXPECT_EQ(place.right - place.left, window.scale().x(bar.Width));
    const int height = static_cast<int>(place.bottom - place.top) / 2;
    click(bar, middle + 2, height);
    EXPECT_EQ(bar.Value, 3);
    click(bar, middle - 2, height);
    click(bar, middle - 2, height);
    EXPECT_EQ(bar.Value, 1);
}

/// WIN-07
TEST_F(DialogForm, KeysStepTheArrowsBetweenTheirEnds) {
    key(bar, VK_RIGHT);
    EXPECT_EQ(bar.Value, 3);
    key(bar, VK_DOWN);
    key(bar, VK_LEFT);
    EXPECT_EQ(bar.Value, 1);
    for (int i = 0; i < 7; ++i) key(bar, VK_UP);
    EXPECT_EQ(bar.Value, 5);
    key(bar, VK_HOME);
    EXPECT_EQ(bar.Value, 1) << "the ends are a step beyond the numbers";
    key(bar, VK_END);
    EXPECT_EQ(bar.Value, 4);
    EXPECT_NE(SendMessageW(of(bar), WM_GETDLGCODE, 0, 0) & DLGC_WANTARROWS, 0);
}

/// WIN-07
TEST_F(DialogForm, AFormThatWantsAnotherNumberIsStayedWith) {
    bar.Change.tie([this] {
        if (bar.Value == 3) bar.Value = 0;  // the number wraps
    });
    const RECT place = placeOf(bar);
    const int right = static_cast<int>(place.right - place.left) - 4;
    click(bar, right, 10);
    EXPECT_EQ(bar.Value, 0);
    click(bar, right, 10);
    EXPECT_EQ(bar.Value, 1);
}

/// WIN-08: Fields are as high as their text asks and lie in the middle of their room
TEST_F(DialogForm, FieldsAreAsHighAsTheirTextAsksAndLieInTheMiddleOfTheirRoom) {
    const FormScale& scale = window.scale();
    const int middle = (scale.y(text.Top) + scale.y(text.Top + text.Height)) / 2;
    for (const Control* each :
         {static_cast<Control*>(&text), static_cast<Control*>(&choice), static_cast<Control*>(&typed)}) {
        const RECT place = placeOf(*each);
        EXPECT_NEAR(place.bottom - place.top, window.fieldHeight(), 4) << each->name();
        EXPECT_NEAR(static_cast<double>(place.top + place.bottom) / 2, middle, 1) << each->name();
    }
    EXPECT_LT(window.fieldHeight(), scale.y(text.Height)) << "there is room to lie in the middle of";
}

/// WIN-56: F1 is the dialog's wherever the keyboard is; a row says its path to the pointer
TEST_F(DialogForm, F1IsTheFormsWhereverTheKeyboardIs) {
    std::vector<int> keys;
    form.KeyDown.tie([&](const KeyArgs& args) { keys.push_back(args.keyCode * 10 + args.shift); });
    SetFocus(of(text));
    MSG help{of(text), WM_KEYDOWN, VK_F1, 1, 0, {}};
    EXPECT_TRUE(window.filter(help));
    EXPECT_TRUE(keys.empty()) << "done as an event of its own";
    EXPECT_TRUE(loop.runUntil([&] { return !keys.empty(); }, 2000));
    EXPECT_EQ(keys, std::vector<int>{kKeyF1 * 10});
    help.lParam |= 0x40000000;  // held down
    window.filter(help);
    MSG letter{of(text), WM_KEYDOWN, 'A', 1, 0, {}};
    window.filter(letter);
    loop.runUntil([] { return false; }, 100);
    EXPECT_EQ(keys.size(), 1U);
}

/// The row under the pointer says what the form has for it; else its text, where that is cut.
/// WIN-56
TEST_F(TippedForm, ARowSaysItsPathToThePointer) {
    EXPECT_EQ(tipAt(0), "C:\\music\\one\\01.mp3");
    EXPECT_NE(tipStyle & TTS_NOPREFIX, 0) << "an ampersand is a part of the name";
    EXPECT_NE(tipStyle & TTS_ALWAYSTIP, 0) << "also when another window is in front";
    EXPECT_EQ(tipAt(1), "C:\\music\\two\\01.mp3") << "two of one name are told apart";
    EXPECT_EQ(tipAt(2), std::string(200, 'n')) << "it has no path";
    EXPECT_EQ(tipAt(3), "") << "nor has this, and it is not cut";
    EXPECT_EQ(tipAt(1), "C:\\music\\two\\01.mp3");
    EXPECT_EQ(tipAt(9), "") << "below the last one";
    list.clear();
    list.addItem("other");
    loop.runUntil([] { return false; }, 50);
    EXPECT_EQ(tipAt(0), "C:\\music\\one\\01.mp3") << "of the new row";
}

/// WIN-76: A field whose form listens is told the keys that step, and those alone
TEST_F(DialogForm, AFieldTellsTheKeysThatStep) {
    std::vector<int> keys;
    text.KeyDown.tie([&](const KeyArgs& args) { keys.push_back(args.keyCode); });
    for (const WPARAM code : {VK_UP, VK_LEFT, VK_NEXT}) key(text, code);
    loop.runUntil([&] { return keys.size() > 1; }, 2000);
    EXPECT_EQ(keys, (std::vector<int>{VK_UP, VK_NEXT}));
}

/// WIN-77: Enter goes into the folder of the current row; no other key does
TEST(FolderForm, EnterGoesIntoTheFolder) {
    WindowsLoop loop;
    DesktopContext context{loop, 1.0, nullptr};
    Form form{"frmTried", FormStyle::Dialog};
    form.SetSize(px(400), px(300));
    FolderBox folders{&form, "dirTried"};
    folders.Move(px(10), px(10));
    folders.SetSize(px(120), px(200));
    NativeWindow window{form, context};
    for (const char* each : {"one", "two"}) folders.addItem(each);
    window.bind();
    form.Show();
    loop.runUntil([] { return false; }, 50);
    folders.ListIndex = 1;
    int opened = 0;
    folders.DblClick.tie([&opened] { ++opened; });
    const HWND widget = window.widgetOf(folders);
    SendMessageW(widget, WM_KEYDOWN, VK_HOME, 1);
    SendMessageW(widget, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    EXPECT_FALSE(loop.runUntil([&] { return opened > 0; }, 50));
    SendMessageW(widget, WM_KEYDOWN, VK_RETURN, 1);
    EXPECT_TRUE(loop.runUntil([&] { return opened > 0; }, 2000));
    EXPECT_EQ(opened, 1);
    window.unbind();
}

/// WIN-53: What is typed into a list's field counts as it is; nothing is chosen by leaving it
TEST_F(DialogForm, ATypedTextIsNoChoice) {
    int chosen = 0;
    typed.Click.tie([&] { ++chosen; });
    for (const char* each : {"5", "10", "30"}) typed.addItem(each);
    loop.runUntil([] { return false; }, 50);
    const HWND field = FindWindowExW(of(typed), nullptr, WC_EDITW, nullptr);
    ASSERT_NE(field, nullptr);
    SetFocus(field);
    for (const wchar_t each : std::wstring(L"10")) SendMessageW(field, WM_CHAR, each, 1);
    EXPECT_EQ(typed.Text.get(), "10");
    SetFocus(of(text));
    loop.runUntil([] { return false; }, 50);
    EXPECT_EQ(typed.Text.get(), "10");
    EXPECT_EQ(typed.ListIndex, -1);
    EXPECT_EQ(chosen, 0);
    SetFocus(field);
    SendMessageW(field, EM_SETSEL, 0, -1);
    for (const wchar_t each : std::wstring(L"40000")) SendMessageW(field, WM_CHAR, each, 1);
    SetFocus(of(text));
    EXPECT_EQ(typed.Text.get(), "40000");
    typed.Text = "32767";  // what it is held at
    EXPECT_TRUE(loop.runUntil(
        [&] {
            wchar_t shown[16] = {};
            GetWindowTextW(of(typed), shown, 16);
            return std::wstring(shown) == L"32767";
        },
        2000));
    SendMessageW(of(typed), CB_SETCURSEL, 1, 0);
    SendMessageW(window.handle(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(of(typed)), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(of(typed)));
    EXPECT_EQ(chosen, 1);
    EXPECT_EQ(typed.Text.get(), "10");
}

/// Letters that a font does not have all look the same.
/// WIN-09: Texts of any alphabet are drawn, found as names, and come back the same
TEST(Letters, JapaneseOnesAreDrawn) {
    std::set<std::vector<std::uint32_t>> seen;
    const LabelFont font(32);
    const std::wstring letters = L"日本語ひカ";
    for (const wchar_t each : letters) {
        Dib picture(40, 40);
        const HGDIOBJ before = SelectObject(picture.dc(), font.handle());
        SetTextColor(picture.dc(), RGB(255, 255, 255));
        SetBkMode(picture.dc(), TRANSPARENT);
        TextOutW(picture.dc(), 0, 0, &each, 1);
        SelectObject(picture.dc(), before);
        Dib::finish();
        seen.insert({picture.pixels(), picture.pixels() + 40 * 40});
    }
    EXPECT_EQ(seen.size(), letters.size());
}

struct MovedListBox : ListBox, MovesRows {
    using ListBox::ListBox;
};

/// A list of five rows that can be dragged.
struct DraggedForm : ::testing::Test {
    DraggedForm() {
        form.SetSize(px(400), px(300));
        list.Move(px(30), px(10));
        list.SetSize(px(120), px(200));
        list.MultiSelect = true;
        list.setItems({"a", "b", "c", "d", "e"});
        list.moveRows = [this](int before) { moved.push_back(before); };
        window.bind();
        form.Show();
        loop.runUntil([] { return false; }, 50);
    }
    ~DraggedForm() override { window.unbind(); }
    void mouse(UINT message, int halfRow, WPARAM keys = MK_LBUTTON) {
        const HWND widget = window.widgetOf(list);
        const auto height = static_cast<int>(SendMessageW(widget, LB_GETITEMHEIGHT, 0, 0));
        SendMessageW(widget, message, keys, MAKELPARAM(5, halfRow * height / 2 + 1));
    }

    WindowsLoop loop;
    DesktopContext context{loop, 1.0, nullptr};
    Form form{"frmTried", FormStyle::Dialog};
    MovedListBox list{&form, "lstTried"};
    std::vector<int> moved;
    NativeWindow window{form, context};
};

/// WIN-68
TEST_F(DraggedForm, ARowIsDraggedAndStaysTheSelectedOne) {
    mouse(WM_LBUTTONDOWN, 0);
    mouse(WM_MOUSEMOVE, 6);
    mouse(WM_LBUTTONUP, 6, 0);
    EXPECT_EQ(moved, std::vector<int>{3});
    EXPECT_EQ(list.selectedIndices(), std::vector<int>{0});
    mouse(WM_LBUTTONDOWN, 2);
    mouse(WM_MOUSEMOVE, 40);
    mouse(WM_LBUTTONUP, 40, 0);
    EXPECT_EQ(moved, (std::vector<int>{3, 5})) << "below the last one";
    EXPECT_EQ(list.selectedIndices(), std::vector<int>{1});
}

/// WIN-68
TEST_F(DraggedForm, SeveralSelectedRowsAreDraggedTogether) {
    mouse(WM_LBUTTONDOWN, 0);
    mouse(WM_LBUTTONUP, 0, 0);
    mouse(WM_LBUTTONDOWN, 4, MK_LBUTTON | MK_SHIFT);
    mouse(WM_LBUTTONUP, 4, MK_SHIFT);
    ASSERT_EQ(list.selectedIndices(), (std::vector<int>{0, 1, 2}));
    mouse(WM_LBUTTONDOWN, 2);
    mouse(WM_MOUSEMOVE, 9);
    mouse(WM_LBUTTONUP, 9, 0);
    EXPECT_EQ(moved, std::vector<int>{5});
    EXPECT_EQ(list.selectedIndices(), (std::vector<int>{0, 1, 2}));
    mouse(WM_LBUTTONDOWN, 2);
    mouse(WM_LBUTTONUP, 2, 0);
    EXPECT_EQ(moved.size(), 1U) << "a click is no drag";
    EXPECT_EQ(list.selectedIndices(), std::vector<int>{1});
}

/// WIN-68
TEST_F(DraggedForm, ADragThatIsTakenAwayMovesNothing) {
    mouse(WM_LBUTTONDOWN, 0);
    mouse(WM_MOUSEMOVE, 6);
    SendMessageW(window.widgetOf(list), WM_CAPTURECHANGED, 0, 0);
    mouse(WM_MOUSEMOVE, 8, 0);
    mouse(WM_LBUTTONUP, 8, 0);
    EXPECT_TRUE(moved.empty());
}

}  // namespace
}  // namespace corvane
