// SPDX-License-Identifier: GPL-3.0-or-later
// Each kind of control of a dialog: what its properties show, what the user's acts become, and that neither echoes.
#include "forms/item_tips.h"
#include "forms/row_habits.h"
#include "shell/native/field_text.h"
#include "shell/native/list_rows.h"
#include "unit/shell/native_rig.h"

namespace corvane {
namespace {

using test::px;
using Rows = std::vector<int>;
using Ranges = std::vector<RowRange>;
using Act = NativeMouse::Act;

using NativeControlOf = test::NativeFormRig;

TEST_F(NativeControlOf, WhatEveryControlHasIsShown) {
    CommandButton button(&form, "cmdTried");
    button.ToolTipText = "tip";
    button.Enabled = false;
    bind();
    auto& shown = surface.of<FakeButton>(button);
    EXPECT_EQ(shown.tip, "tip");
    EXPECT_FALSE(shown.enabled);
    button.Visible = false;
    button.ToolTipText = "";
    EXPECT_FALSE(shown.shown);
    EXPECT_EQ(shown.tip, "");
    int got = 0;
    button.GotFocus.tie([&] { ++got; });
    button.LostFocus.tie([&] { got += 10; });
    button.SetFocus();
    EXPECT_EQ(surface.focused, &button);
    shown.events.focused(false);
    EXPECT_EQ(got, 11);
    EXPECT_FALSE(shown.released);
    unbind();
    EXPECT_TRUE(shown.released);
    shown.events.focused(true);
    EXPECT_EQ(got, 11) << "the form has gone";
}

TEST_F(NativeControlOf, APushButtonIsPressedAsAnEventOfItsOwn) {
    CommandButton button(&form, "cmdTried");
    button.Caption = "R&B";
    button.Default = true;
    int clicks = 0;
    button.Click.tie([&] { ++clicks; });
    bind();
    auto& shown = surface.of<FakeButton>(button);
    EXPECT_EQ(shown.text, "R&&B") << "Enter presses it: it needs no letter";
    EXPECT_TRUE(shown.isDefault);
    button.Default = false;
    EXPECT_FALSE(shown.isDefault);
    button.Caption = "Add";
    EXPECT_EQ(shown.text, "Add") << "letters are chosen once";
    shown.events.pressed();
    EXPECT_EQ(clicks, 0);
    loop.drain();
    EXPECT_EQ(clicks, 1);
}

TEST_F(NativeControlOf, CaptionsShowTheLettersOfTheKeys) {
    CheckBox check(&form, "chkTried");
    OptionButton option(&form, "optTried");
    Frame frame(&form, "fraTried");
    Label leading(&form, "lblLeading"), plain(&form, "lblPlain");
    TextBox box(&form, "txtTried");
    check.Caption = "Check";
    option.Caption = "Option";
    frame.Caption = "Frame";
    leading.Caption = "Field";
    leading.Labels = &box;
    plain.Caption = "R&B";
    bind();
    EXPECT_EQ(surface.of<FakeButton>(check).text, "&Check");
    EXPECT_EQ(surface.of<FakeButton>(option).text, "&Option");
    EXPECT_EQ(surface.of<FakeButton>(frame).text, "Frame");
    EXPECT_EQ(surface.of<FakeLabel>(leading).text, "&Field");
    EXPECT_EQ(surface.of<FakeLabel>(leading).field, &box);
    EXPECT_EQ(surface.of<FakeLabel>(plain).text, "R&B") << "without a letter nothing is marked";
    EXPECT_EQ(surface.of<FakeLabel>(plain).field, nullptr);
}

TEST_F(NativeControlOf, SwitchesGoBothWaysWithoutAnEcho) {
    CheckBox check(&form, "chkTried");
    OptionButton first(&form, "optFirst"), second(&form, "optSecond");
    first.Value = true;
    int clicks = 0;
    check.Click.tie([&] { ++clicks; });
    bind();
    EXPECT_TRUE(surface.of<FakeButton>(first).on);
    surface.of<FakeButton>(check).toggle(true);
    EXPECT_TRUE(check.Value);
    EXPECT_EQ(clicks, 1);
    check.Value = false;
    EXPECT_FALSE(surface.of<FakeButton>(check).on);
    EXPECT_EQ(clicks, 2);
    surface.of<FakeButton>(second).toggle(true);
    EXPECT_FALSE(first.Value);
    EXPECT_FALSE(surface.of<FakeButton>(first).on) << "also where the system would leave it on";
}

TEST_F(NativeControlOf, AClickCountsWhereItIsReleasedInsideByTheLeftButton) {
    Label label(&form, "lblTried");
    std::string seen;
    label.MouseDown.tie([&](const MouseArgs& args) { seen += 'd' + std::to_string(args.button); });
    label.MouseMove.tie([&](const MouseArgs& args) { seen += 'm' + std::to_string(static_cast<int>(args.y)); });
    label.MouseUp.tie([&](const MouseArgs&) { seen += 'u'; });
    label.Click.tie([&] { seen += 'c'; });
    label.DblClick.tie([&] { seen += '2'; });
    bind();
    NativeEvents& events = surface.of<FakeLabel>(label).events;
    const auto after = [&](const std::vector<NativeMouse>& acts) {
        seen.clear();
        for (const NativeMouse& each : acts) events.mouse(each);
        return seen;
    };
    EXPECT_EQ(after({{Act::Press, kLeftButton}, {Act::Release, kLeftButton}}), "d1cu");
    EXPECT_EQ(after({{Act::Press, kLeftButton}, {Act::Release, kLeftButton, 0, 0, 0, false}}), "d1u");
    EXPECT_EQ(after({{Act::Press, kRightButton}, {Act::Release, kRightButton}}), "d2u");
    EXPECT_EQ(after({{Act::DoubleClick, kLeftButton}}), "d12");
    EXPECT_EQ(after({{Act::Move, 0, 0, 0, 2}}), "m30");
    label.Click.tie([&] { unbind(); });
    label.MouseDown.tie([&](const MouseArgs&) {
        seen += 'd';
        if (seen == "dd") unbind();
    });
    EXPECT_EQ(after({{Act::Release, kLeftButton}, {Act::Move}, {Act::DoubleClick, kLeftButton}}), "")
        << "the form went inside its click";
}

TEST_F(NativeControlOf, AMarkTakesTheMouseAlsoWhileItIsDarkAHandleIsHidden) {
    Image mark(&form, "imgMark"), handle(&form, "imgHandle");
    handle.MouseMove.tie([](const MouseArgs&) {});
    mark.Visible = false;
    bind();
    EXPECT_TRUE(surface.of<FakeMark>(mark).shown);
    EXPECT_FALSE(surface.of<FakeMark>(mark).lit);
    mark.Visible = true;
    EXPECT_TRUE(surface.of<FakeMark>(mark).lit);
    handle.Visible = false;
    EXPECT_FALSE(surface.of<FakeMark>(handle).shown);
}

struct NativeFieldOf : test::NativeFormRig {
    TextBox box{&form, "txtTried"};
    FakeField& shown() { return surface.of<FakeField>(box); }
    static std::u16string clef() { return u"\U0001D11E"; }  // one character, two units
};

TEST_F(NativeFieldOf, TextAndSelectionGoBothWays) {
    box.Text = "abc";
    box.AccessibleName = "Delay";
    bind();
    EXPECT_EQ(shown().held, (FieldText{u"abc", 0}));
    EXPECT_EQ(shown().hint, "Delay") << "no label names it";
    int changes = 0;
    box.Change.tie([&] { ++changes; });
    shown().type(u"x");
    EXPECT_EQ(box.Text.get(), "xabc");
    EXPECT_EQ(shown().held.cursor, 1) << "what is typed is not set once more";
    EXPECT_EQ(changes, 1);
    box.SelStart = 1;
    box.SelLength = 2;
    EXPECT_EQ(shown().selected, (std::pair{1, 3}));
    const int selects = shown().selects;
    shown().drag(2, 4);
    EXPECT_EQ(shown().selects, selects) << "not told back";
    EXPECT_EQ(box.SelStart, 2);
    EXPECT_EQ(box.SelLength, 2);
}

TEST_F(NativeFieldOf, PlacesCountCharacters) {
    bind();
    shown().held.text = u"a" + clef() + u"bc";
    shown().drag(1, 4);
    EXPECT_EQ(box.SelStart, 1);
    EXPECT_EQ(box.SelLength, 2);
    box.SelStart = 2;
    EXPECT_EQ(shown().selected, (std::pair{3, 5}));
    box.SelLength = 99;
    EXPECT_EQ(shown().selected, (std::pair{3, 5})) << "up to the end";
}

TEST_F(NativeFieldOf, KeysAreFilteredHoweverTheyComeIn) {
    box.KeyPress = [](int character) {
        return character == 'o' ? '0' : character >= '0' && character <= '9' ? character : 0;
    };
    bind();
    shown().type(u"1x2" + clef() + u"o");
    EXPECT_EQ(box.Text.get(), "120");
    EXPECT_EQ(shown().held.cursor, 3);
    unbind();
    EXPECT_EQ(shown().events.filtered({u"x", 1}), (FieldText{u"x", 1})) << "the form has gone";
}

TEST(FieldText, TheCursorStaysBehindWhatWasTakenBeforeIt) {
    const auto digits = [](int character) { return character >= '0' && character <= '9' ? character : 0; };
    EXPECT_EQ(takenByKeys({u"1a|2b", 3}, digits), (FieldText{u"12", 1}));
    EXPECT_EQ(takenByKeys({u"a12", 0}, digits), (FieldText{u"12", 0}));
    const auto all = [](int character) { return character; };
    for (const std::u16string text : {u"\U0001D11Ex", u"\xD834", u"\xDD1E\xD834x"}) {
        const FieldText given{text, static_cast<int>(text.size())};
        EXPECT_EQ(takenByKeys(given, all), given) << "halves of a pair stay as well";
    }
    EXPECT_EQ(takenByKeys({u"a", 1}, [](int) { return 0x1D11E; }).text, u"\U0001D11E");
    EXPECT_EQ(takenByKeys({u"a", 1}, [](int) { return 0x110000; }).text, u"") << "there is no such character";
    EXPECT_EQ(unitsIn(u"\U0001D11Ex", 1), 2);
    EXPECT_EQ(charactersIn(u"\U0001D11Ex", 2), 1);
    EXPECT_EQ(charactersIn(u"ab", 99), 2);
    EXPECT_EQ(charactersIn(u"ab", -1), 0);
}

/// The tool kit sets its own selection when the button is released.
TEST_F(NativeFieldOf, ASelectionThatIsSetDuringAPressIsSetAgainBehindIt) {
    box.Text = "S";
    box.GotFocus.tie([this] { box.SelLength = 1; });
    bind();
    surface.runLater();
    shown().events.mouse({Act::Press, kLeftButton});
    shown().events.focused(true);
    EXPECT_EQ(shown().selected, (std::pair{0, 1}));
    shown().drag(1, 1);  // the click's own
    EXPECT_EQ(box.SelLength, 1) << "not taken";
    shown().events.mouse({Act::Release, kLeftButton});
    surface.runLater();
    EXPECT_EQ(shown().selected, (std::pair{0, 1}));
    shown().events.mouse({Act::Press, kLeftButton});
    shown().events.mouse({Act::Release, kLeftButton});
    EXPECT_TRUE(surface.later.empty()) << "none was set this time";
    shown().drag(0, 0);
    EXPECT_EQ(box.SelLength, 0);
}

TEST_F(NativeControlOf, AStepperStaysInItsRangeAndWithWhatTheFormWants) {
    ScrollBar bar(&form, "hscrTried");
    bar.Max = 5;
    bar.Value = 2;
    bind();
    auto& shown = surface.of<FakeStepper>(bar);
    EXPECT_EQ((std::vector{shown.least, shown.most, shown.value}), (Rows{0, 5, 2}));
    shown.events.stepBy(1);
    EXPECT_EQ(bar.Value, 3);
    EXPECT_EQ(shown.value, 3);
    shown.events.stepTo(99);
    EXPECT_EQ(bar.Value, 5);
    shown.events.stepBy(-99);
    EXPECT_EQ(bar.Value, 0);
    shown.events.stepToEnd(true);
    EXPECT_EQ(bar.Value, 4);
    shown.events.stepToEnd(false);
    EXPECT_EQ(bar.Value, 1) << "the ends are a step beyond the numbers";
    bar.Change.tie([&] {
        if (bar.Value == 2) bar.Value = 1;
    });
    shown.value = 2;  // it has stepped by itself
    shown.events.stepTo(2);
    EXPECT_EQ(shown.value, 1);
    shown.value = 7;
    bar.Max = 1;
    shown.events.stepTo(7);
    EXPECT_EQ(shown.value, 1) << "it stood at its end before";
    bar.Max = 9;
    EXPECT_EQ(shown.most, 9);
    unbind();
    shown.events.stepBy(1);
    shown.events.stepToEnd(true);
    EXPECT_EQ(bar.Value, 1) << "the form has gone";
}

struct NativeChoiceOf : test::NativeFormRig {
    ComboBox combo{&form, "cboTried"};
    int clicks = 0;
    NativeChoiceOf() {
        combo.setItems({"5", "10", "20"});
        combo.Click.tie([this] { ++clicks; });
    }
    FakeChoice& shown() { return surface.of<FakeChoice>(combo); }
};

TEST_F(NativeChoiceOf, ItemsAndTheCurrentOneAreShownTogetherAfterTheHandler) {
    bind();
    EXPECT_EQ(shown().items.size(), 3U);
    combo.setItems({"a", "b"});
    combo.ListIndex = 1;
    EXPECT_EQ(shown().items.size(), 3U);
    surface.runLater();
    EXPECT_EQ(shown().items.size(), 2U);
    EXPECT_EQ(shown().current, 1);
    combo.ListIndex = 0;
    surface.runLater();
    EXPECT_EQ(shown().filled, 2) << "the items were not set again";
}

TEST_F(NativeChoiceOf, AChoiceClicksOnceAndTheSameAgainTakesItsTextAgain) {
    combo.Editable = true;
    bind();
    shown().choose(1);
    EXPECT_EQ(combo.Text.get(), "10");
    EXPECT_EQ(clicks, 1);
    combo.Text = "7";
    shown().choose(1);
    EXPECT_EQ(combo.Text.get(), "10");
    EXPECT_EQ(clicks, 1) << "what is current already does not click";
    combo.Click.tie([this] { combo.Text = "other"; });
    shown().choose(2);
    EXPECT_EQ(combo.Text.get(), "other") << "as the form wants it";
}

TEST_F(NativeChoiceOf, WhatIsTypedIsNoChoice) {
    combo.Editable = true;
    combo.ListIndex = 2;
    bind();
    EXPECT_EQ(shown().held.text, u"20");
    clicks = 0;
    shown().type("10");
    EXPECT_EQ(combo.ListIndex, -1);
    EXPECT_EQ(combo.Text.get(), "10");
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(shown().held, (FieldText{u"10", 2})) << "the cursor stays under who types";
    combo.Text = "32767";
    surface.runLater();
    EXPECT_EQ(shown().held, (FieldText{u"32767", 0}));
}

TEST_F(NativeControlOf, ADriveClicksEachTimeItIsChosen) {
    DriveBox drives(&form, "drvTried");
    drives.setItems({"Computer", "Home"});
    int clicks = 0;
    drives.Click.tie([&] { ++clicks; });
    bind();
    surface.of<FakeChoice>(drives).choose(1);
    surface.of<FakeChoice>(drives).choose(1);
    EXPECT_EQ(drives.ListIndex, 1);
    EXPECT_EQ(clicks, 2);
}

template <class C>
struct NativeListOf : test::NativeFormRig {
    C list{&form, "lstTried"};
    int clicks = 0;
    NativeListOf() {
        list.setItems({"a", "b", "c", "d", "e"});
        list.Click.tie([this] { ++clicks; });
        list.DblClick.tie([this] { clicks += 100; });
    }
    FakeList& shown() { return surface.of<FakeList>(list); }
};
using NativePlayList = NativeListOf<ListBox>;
using NativeFiles = NativeListOf<FileBox>;

TEST_F(NativePlayList, ItsRowsKeepTheirPlaceAndWidth) {
    bind();
    EXPECT_TRUE(shown().keptPlace);
    list.HorizontalExtent = 300;
    list.addItem("f");
    list.ListIndex = 4;
    surface.runLater();
    EXPECT_EQ(shown().refreshed, 2);
    EXPECT_EQ(shown().extent, 300);
    EXPECT_EQ(shown().current, 4);
    EXPECT_EQ(shown().selected, (Ranges{{4, 4}}));
    list.ListIndex = -1;
    surface.runLater();
    EXPECT_EQ(shown().refreshed, 2);
    EXPECT_EQ(shown().selected, Ranges{});
    EXPECT_EQ(shown().current, 4) << "where the keyboard is";
}

TEST_F(NativeFiles, TheUsersRowsAreSelectedAndClickOnce) {
    bind();
    EXPECT_FALSE(shown().keptPlace) << "another folder begins at its top";
    shown().events.rowsSelected({{0, 1}, {3, 3}}, 3);
    EXPECT_EQ(list.selectedIndices(), (Rows{0, 1, 3}));
    EXPECT_EQ(list.ListIndex, 3);
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(surface.later.empty()) << "not told back";
    shown().events.rowsSelected({{1, 4}}, 4);
    EXPECT_EQ(list.selectedIndices(), (Rows{1, 2, 3, 4}));
    shown().events.rowsSelected({{4, 99}}, 4);
    EXPECT_EQ(list.selectedIndices(), Rows{4}) << "rows that there are not";
    shown().events.currentMoved(2);
    EXPECT_EQ(list.ListIndex, 2);
    EXPECT_EQ(clicks, 3);
    list.clearSelection();
    surface.runLater();
    EXPECT_EQ(shown().selected, Ranges{});
}

TEST_F(NativeFiles, OpeningARowIsAnEventOfItsOwn) {
    bind();
    shown().events.opened(2);
    EXPECT_EQ(list.ListIndex, 2);
    EXPECT_EQ(clicks, 0);
    loop.drain();
    EXPECT_EQ(clicks, 100);
}

TEST_F(NativeFiles, AClickMayEndTheForm) {
    list.Click.tie([this] { unbind(); });
    bind();
    shown().events.rowsSelected({{0, 0}}, 0);
    shown().events.opened(1);
    shown().events.currentMoved(1);
    shown().events.dropped({true, {"/a"}});
    loop.drain();
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(list.ListIndex, 0);
}

TEST_F(NativePlayList, DroppedFilesComeAsAnEventOfTheirOwn) {
    std::vector<std::string> files;
    list.OLEDragDrop.tie([&](const DropData& data) { files = data.files; });
    bind();
    shown().events.dropped({true, {"/a", "/b"}});
    EXPECT_TRUE(files.empty());
    loop.drain();
    EXPECT_EQ(files, (std::vector<std::string>{"/a", "/b"}));
}

struct KeyedList : ListBox, TakesKeys, MovesRows {
    using ListBox::ListBox;
};
using NativeKeyedList = NativeListOf<KeyedList>;

/// WIN-67: A list's own keys are asked before the tool kit's list has them; what it does not take is left to that
TEST_F(NativeKeyedList, TakesItsOwnKeys) {
    bind();
    EXPECT_FALSE(shown().events.key({46, 0})) << "nothing is tied";
    std::vector<int> seen;
    list.takeKey = [&](const KeyArgs& key) {
        seen.push_back(key.keyCode);
        list.ListIndex = 2;
        return key.shift == 0;
    };
    EXPECT_TRUE(shown().events.key({46, 0}));
    EXPECT_FALSE(shown().events.key({38, kAltMask}));
    EXPECT_EQ(seen, (std::vector<int>{46, 38}));
    surface.runLater();
    EXPECT_EQ(shown().current, 2);
    unbind();
    EXPECT_FALSE(shown().events.key({46, 0}));
    EXPECT_EQ(seen.size(), 2U);
}

/// WIN-68: Rows that were dragged are told with the row that they are to stand in front of, and shown where the form
///     has put them
TEST_F(NativeKeyedList, TellsWhereRowsWereDragged) {
    bind();
    shown().events.rowsDragged(3);
    std::vector<int> places;
    list.moveRows = [&](int before) {
        places.push_back(before);
        list.setItems({"b", "a"});
    };
    const int refreshed = shown().refreshed;
    shown().events.rowsDragged(5);
    surface.runLater();
    EXPECT_EQ(places, std::vector<int>{5});
    EXPECT_EQ(shown().refreshed, refreshed + 1);
    unbind();
    shown().events.rowsDragged(1);
    EXPECT_EQ(places.size(), 1U);
}

TEST_F(NativePlayList, WithoutKeysOfItsOwnTakesNone) {
    bind();
    EXPECT_FALSE(shown().events.key({46, 0}));
    shown().events.rowsDragged(0);
    EXPECT_EQ(list.item(0), "a");
}

TEST(ListRows, ATipSaysThePathElseACutName) {
    Form form("frmTried", FormStyle::Dialog);
    TippedListBox tipped(&form, "lstTipped");
    ListBox plain(&form, "lstPlain");
    tipped.setItems({"one", "two"});
    plain.setItems({"name"});
    EXPECT_EQ(rowTip(tipped, 0, true), "one") << "nothing is tied";
    tipped.tipOf = [](int row) { return row == 0 ? "/music/one" : ""; };
    EXPECT_EQ(rowTip(tipped, 0, false), "/music/one");
    EXPECT_EQ(rowTip(tipped, 1, false), "");
    EXPECT_EQ(rowTip(tipped, 1, true), "two");
    EXPECT_EQ(rowTip(plain, 0, false), "");
    EXPECT_EQ(rowTip(plain, 0, true), "name");
    for (const int none : {-1, 1}) EXPECT_EQ(rowTip(plain, none, true), "");
}

TEST(ListRows, RowsBecomeRanges) {
    EXPECT_EQ(rangesOf({}), Ranges{});
    EXPECT_EQ(rangesOf({0, 1, 2, 4, 6, 7}), (Ranges{{0, 2}, {4, 4}, {6, 7}}));
}

}  // namespace
}  // namespace corvane
