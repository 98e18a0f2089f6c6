// SPDX-License-Identifier: GPL-3.0-or-later
// The page of conveniences: what it shows, what OK writes, what it leaves.
#include "dialogs/frmConveniences.h"

#include <algorithm>
#include <stdexcept>

#include "storage/settings.h"
#include "unit/dialogs/custom_fixture.h"

namespace corvane {
namespace {

using Page = ConveniencesControls;

class ConveniencesPage : public CustomDialog {
protected:
    void start(bool byDesktop, const std::string& file = {}) {
        machine.process.byDesktop = byDesktop;
        if (!file.empty()) machine.files.add("/app/KADO.INI", file);
        readConveniences(player);
        open();
        more();
    }
    void more() {
        machine.loop.enter([&] { dialog().cmdMore.Click.raise(); });
        machine.settle();
    }
    Page* foundPage() { return player.forms.find<Page>(); }
    Page& page() { return *foundPage(); }
    void pushOnPage(int button) {
        CommandButton& pushed = page().cmdConveniences.at(static_cast<std::size_t>(button));
        machine.loop.enter([&] { pushed.Click.raise(); });
        machine.settle();
    }
    CheckBox& box(const std::string& key) {
        for (CheckBox& each : page().chkConveniences) {
            if (each.Caption.get().starts_with(key + ": ")) return each;
        }
        throw std::out_of_range(key);
    }
    int boxesOn() {
        return static_cast<int>(std::count_if(page().chkConveniences.begin(), page().chkConveniences.end(),
                                              [](const CheckBox& each) { return each.Value.get(); }));
    }
    std::string file() { return machine.files.has("/app/KADO.INI") ? machine.files.bytes("/app/KADO.INI") : ""; }
};

/// DIAL-39: "More…" opens the page of conveniences, behind which the dialog waits; both buttons bring it back
TEST_F(ConveniencesPage, MoreOpensItAndTheDialogWaits) {
    for (const int button : {Page::kOk, Page::kCancel}) {
        start(false);
        EXPECT_TRUE(page().Visible);
        EXPECT_FALSE(dialog().Enabled);
        pushOnPage(button);
        EXPECT_EQ(foundPage(), nullptr);
        EXPECT_TRUE(dialog().Enabled && dialog().Visible);
        EXPECT_EQ(machine.windows.active(), &dialog());
        push(CustomControls::kCancel);
    }
}

/// DIAL-40: The page shows what is in force: all off after a plain start, all on after one from the desktop, and what
///     the settings file says for one
TEST_F(ConveniencesPage, ShowsWhatIsInForce) {
    start(false);
    EXPECT_EQ(boxesOn(), 0);
    EXPECT_EQ(page().lblInForce[0].Caption.get(), "now off");
    EXPECT_EQ(page().lblConveniences[Page::kWay].Caption.get(), "A plain start: off but for those switched on here.");
    pushOnPage(Page::kCancel);
    push(CustomControls::kCancel);
    start(true, "[CONVENIENCES]\r\nFIND=OFF\r\n");
    EXPECT_EQ(boxesOn(), 9);
    EXPECT_FALSE(box("FIND").Value);
    EXPECT_EQ(box("FIND").ToolTipText.get(), "Not in force now");
    EXPECT_EQ(page().lblConveniences[Page::kWay].Caption.get(),
              "Started from the desktop: on but for those switched off here.");
}

/// DIAL-40
TEST_F(ConveniencesPage, SaysThatTheFileDecidesOverTheWayOfTheStart) {
    start(false, "[KADO]\r\nCONVENIENCES=ON\r\n");
    EXPECT_EQ(boxesOn(), 10);
    EXPECT_EQ(page().lblConveniences[Page::kWay].Caption.get(),
              "As KADO.INI says: on but for those switched off here.");
}

/// DIAL-41: OK writes the keys that were changed and no other; they count at once, but for KINDS and LONG
TEST_F(ConveniencesPage, OkWritesWhatWasChangedAlone) {
    start(false, "[KADO]\r\nREPEAT_Click=r\r\n");
    for (const char* key : {"HANDS", "LONG", "NAMES"}) box(key).Value = true;
    box("NAMES").Value = false;
    pushOnPage(Page::kOk);
    EXPECT_EQ(file(), "[KADO]\r\nREPEAT_Click=r\r\n[CONVENIENCES]\r\nLONG=ON\r\nHANDS=ON\r\n");
    EXPECT_TRUE(player.conveniences.hands);
    EXPECT_FALSE(player.conveniences.longLists);
    EXPECT_FALSE(player.conveniences.names);
}

/// DIAL-40
TEST_F(ConveniencesPage, ShowsAChoiceThatWaitsForTheNextStart) {
    start(false);
    box("LONG").Value = true;
    pushOnPage(Page::kOk);
    more();
    EXPECT_TRUE(box("LONG").Value);
    EXPECT_EQ(box("LONG").ToolTipText.get(), "Not in force now");
    box("LONG").Value = false;
    pushOnPage(Page::kOk);
    EXPECT_NE(file().find("LONG=OFF"), std::string::npos);
}

/// DIAL-41
TEST_F(ConveniencesPage, NothingChangedAndCancelWriteNothing) {
    start(true);
    pushOnPage(Page::kOk);
    EXPECT_EQ(file(), "");
    more();
    box("FIND").Value = false;
    pushOnPage(Page::kCancel);
    EXPECT_EQ(file(), "");
    EXPECT_TRUE(player.conveniences.find);
}

/// DIAL-42: "As started" shows what the way of the start gives; OK then takes the keys of all conveniences out of the
///     file, but for what is changed behind it, and leaves the rest of it
TEST_F(ConveniencesPage, AsStartedTakesTheKeysOut) {
    start(true, "[CONVENIENCES]\r\nFIND=OFF\r\n; mine\r\nhands=OFF\r\nOTHER=1\r\n[KADO]\r\nFIND=x\r\n");
    EXPECT_EQ(boxesOn(), 8);
    pushOnPage(Page::kAsStarted);
    EXPECT_EQ(boxesOn(), 10);
    EXPECT_NE(file().find("FIND=OFF"), std::string::npos);
    box("TEXTS").Value = false;
    pushOnPage(Page::kOk);
    EXPECT_EQ(file(), "[CONVENIENCES]\r\n; mine\r\nOTHER=1\r\nTEXTS=OFF\r\n[KADO]\r\nFIND=x\r\n");
    EXPECT_TRUE(player.conveniences.find && player.conveniences.hands);
    EXPECT_FALSE(player.conveniences.texts);
}

/// DIAL-41
TEST_F(ConveniencesPage, AFileThatCannotBeWrittenIsToldAndThePageStays) {
    start(false);
    box("FIND").Value = true;
    machine.files.failReplace = true;
    pushOnPage(Page::kOk);
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "KADO.INI Can't save!!");
    EXPECT_NE(foundPage(), nullptr);
    EXPECT_FALSE(player.conveniences.find);
}

/// DIAL-39
TEST_F(ConveniencesPage, TheDialogBehindItDoesNotGoAlone) {
    start(false);
    machine.loop.enter([&] { dialog().CloseRequest.raise(false); });
    machine.settle();
    EXPECT_NE(found(), nullptr);
    EXPECT_EQ(machine.windows.active(), &page());
    machine.loop.enter([&] { player.ports.windows.activate(dialog()); });
    machine.loop.enter([&] { dialog().Activate.raise(); });
    EXPECT_EQ(machine.windows.active(), &page());
    machine.loop.enter([&] { page().CloseRequest.raise(false); });
    machine.settle();
    EXPECT_EQ(foundPage(), nullptr);
    more();
    machine.loop.enter([&] { player.forms.unload(FormId::Custom); });
    EXPECT_EQ(foundPage(), nullptr);
}

}  // namespace
}  // namespace corvane
