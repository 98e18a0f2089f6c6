// SPDX-License-Identifier: GPL-3.0-or-later
// The playing indicator and the clock.
#include <ostream>

#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

class Display : public PanelHands {
protected:
    const std::string& text() { return label(kTextLabel); }
    const Picture& image(std::size_t index) { return panel().imgMainPanel.at(index).Picture.get(); }
    /// The number of the picture that the indicator shows; 0: none of the three.
    int shown() {
        for (const int each : {1, 2, 3}) {
            if (image(kIndicatorImage) == image(static_cast<std::size_t>(each))) return each;
        }
        return 0;
    }
    /// Three pictures that differ; the plain skin gives number 1 none.
    void setUpPictures(const char* path) {
        setUp(path);
        for (const std::uint32_t each : {1U, 2U, 3U}) panel().imgMainPanel[each].Picture = makePicture(8, 8, {each});
    }
};

struct Moment {
    LocalTime time;
    const char* text;
};

/// DISP-08: The clock is yy/mm/dd, AM or PM, hours and minutes of two digits each: 15:42 on 15 July 1998 is 98/07/15 PM
///     03:42
/// DISP-09: Hours above 11 are PM and lose 12: 12:30 is PM 00:30
/// DISP-10: Other hours are AM as they are: 00:30 is AM 00:30, 11:59 is AM 11:59
TEST_F(Display, TheClockCounts0To11InBothHalvesOfTheDay) {
    setUp(kSound);
    const std::vector<Moment> rows = {
        {{1998, 7, 15, 15, 42, 0}, "98/07/15 PM 03:42"}, {{1998, 7, 15, 12, 30, 0}, "98/07/15 PM 00:30"},
        {{1998, 7, 15, 0, 30, 0}, "98/07/15 AM 00:30"},  {{1998, 7, 15, 11, 59, 0}, "98/07/15 AM 11:59"},
        {{1998, 7, 15, 12, 0, 0}, "98/07/15 PM 00:00"},  {{1998, 7, 15, 0, 0, 0}, "98/07/15 AM 00:00"},
        {{1998, 7, 15, 12, 5, 0}, "98/07/15 PM 00:05"},  {{1998, 7, 15, 0, 5, 0}, "98/07/15 AM 00:05"},
        {{1998, 7, 15, 23, 59, 0}, "98/07/15 PM 11:59"}, {{1998, 7, 15, 13, 1, 0}, "98/07/15 PM 01:01"},
        {{1998, 7, 15, 1, 9, 0}, "98/07/15 AM 01:09"},   {{2000, 1, 2, 10, 10, 0}, "00/01/02 AM 10:10"},
        {{2009, 12, 31, 9, 0, 0}, "09/12/31 AM 09:00"},  {{2026, 11, 21, 20, 0, 0}, "26/11/21 PM 08:00"},
        {{2099, 10, 9, 22, 22, 0}, "99/10/09 PM 10:22"}};
    for (const Moment& row : rows) {
        machine.clock.start = row.time;
        machine.clock.start.second = -static_cast<int>(machine.schedule.now() / 1000) - 1;  // at the next tick
        machine.advance(1000);
        EXPECT_EQ(text(), row.text);
    }
}

/// DISP-12: While a device is being opened the time blinks, a second each; its text stays
TEST_F(Display, TheTimeBlinksWhileADeviceIsBeingOpened) {
    setUp(kTrack);
    PlayFile(player);
    Label& time = panel().lblMainPanel[kTimeLabel];
    machine.media.mci()->opening(true);
    machine.advance(1000);
    EXPECT_FALSE(time.Visible);
    EXPECT_NE(label(kTimeLabel), "") << "its text stays";
    machine.advance(1000);
    EXPECT_TRUE(time.Visible);
    machine.advance(1000);
    EXPECT_FALSE(time.Visible);
    machine.media.mci()->opening(false);
    machine.advance(1000);
    EXPECT_TRUE(time.Visible);
    machine.advance(1000);
    EXPECT_TRUE(time.Visible);
    machine.media.mci()->opening(true);
    machine.advance(1000);
    CloseFile(player, false);
    machine.advance(1000);
    EXPECT_TRUE(time.Visible) << "also when it is stopped meanwhile";
    time.Visible = false;
    PlayFile(player);
    machine.media.mci()->opening(true);
    machine.advance(1000);
    EXPECT_FALSE(time.Visible) << "a time that the skin leaves out does not come";
    machine.advance(1000);
    EXPECT_FALSE(time.Visible);
}

/// DISP-01: The display's timer runs from the start, once a second
TEST_F(Display, TheClockComesWithTheFirstSecondAndGoesOn) {
    machine.clock.start = {2001, 2, 3, 11, 59, 58};
    setUp(kSound);
    const std::string version = text();
    machine.advance(999);
    EXPECT_EQ(text(), version);
    machine.advance(1);
    EXPECT_EQ(text(), "01/02/03 AM 11:59");
    machine.advance(1000);
    EXPECT_EQ(text(), "01/02/03 PM 00:00");
}

/// DISP-02: While a file plays the indicator goes through pictures 2, 3 and 1, one a second
/// DISP-03: The phase begins at 0 and goes on where a pause left it
TEST_F(Display, WhilePlayingTheIndicatorGoesThrough23And1) {
    setUpPictures(kSound);
    act([this] { PlayFile(player); });
    const Calls::size_type steps = 7;
    std::vector<int> seen;
    while (seen.size() < steps) {
        machine.advance(999);
        const int before = shown();
        machine.advance(1);
        seen.push_back(shown());
        if (seen.size() > 1) {
            EXPECT_EQ(before, seen[seen.size() - 2]) << "one step a second";
        }
    }
    EXPECT_EQ(seen, (std::vector<int>{2, 3, 1, 2, 3, 1, 2}));
}

/// DISP-05: While a file plays the clock's text is left alone
TEST_F(Display, WhilePlayingTheTextStays) {
    for (const char* path : {kPicture, kMovie, kSound, kTrack}) {
        SCOPED_TRACE(path);
        bring(path, "playing");
        const std::string before = text();
        machine.advance(5000);
        EXPECT_EQ(text(), before);
        act([this] { CloseFile(player, false); });
    }
}

/// DISP-06: Paused, neither clock nor indicator changes
TEST_F(Display, WhilePausedNeitherChanges) {
    for (const char* path : {kPicture, kMovie, kSound, kTrack}) {
        SCOPED_TRACE(path);
        setUpPictures(path);
        act([this] { PlayFile(player); });
        machine.advance(1500);
        act([this] { PauseFile(player); });
        const std::string before = text();
        const int phase = shown();
        machine.advance(5000);
        EXPECT_EQ(text(), before);
        EXPECT_EQ(shown(), phase);
        act([this] { CloseFile(player, false); });
    }
}

/// DISP-03
TEST_F(Display, TheIndicatorGoesOnWhereItWasPaused) {
    setUpPictures(kSound);
    act([this] { PlayFile(player); });
    machine.advance(1000);
    ASSERT_EQ(shown(), 2);
    act([this] { PauseFile(player); });
    machine.advance(2000);
    act([this] { PlayFile(player); });
    machine.advance(1000);
    EXPECT_EQ(shown(), 3);
}

/// DISP-07: Stopped, the clock is shown and the indicator rests
TEST_F(Display, StoppedTheClockIsBackAndTheIndicatorRests) {
    setUpPictures(kSound);
    machine.clock.start = {2001, 2, 3, 4, 5, 0};
    act([this] { PlayFile(player); });
    machine.advance(2000);
    act([this] { CloseFile(player, false); });
    machine.advance(1000);
    EXPECT_EQ(text(), "01/02/03 AM 04:05");
    EXPECT_EQ(shown(), 3);
    machine.advance(3000);
    EXPECT_EQ(shown(), 3);
}

}  // namespace
}  // namespace corvane
