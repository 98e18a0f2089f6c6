// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <atomic>
#include <optional>

#include "contract/windows/media_rig.h"
#include "winapi/handle.h"
#include "winapi/sound/windows_mci_control.h"

namespace corvane {
namespace {

using test::sample;

/// A device that does not answer, for as long as the test lets it.
class HangingDevice : public testing::Test {
protected:
    HangingDevice() {
        WindowsMciControl::longestOpening = 600;
        WindowsMciControl::longestJob = 100;
        control_.Failed.tie([this](const std::string& reason) { reason_ = reason; });
        control_.Done.tie([this](int) { ++done_; });
    }
    ~HangingDevice() override {
        SetEvent(answers_->get());
        until([] { return MciThread::hanging() == 0; });
        WindowsMciControl::longestOpening = 10'000;
        WindowsMciControl::longestJob = 3'000;
    }
    /// Everything that is asked for later waits behind it.
    void hang() {
        station_.thread.post([answers = answers_] { WaitForSingleObject(answers->get(), 60'000); });
    }
    bool until(const std::function<bool()>& holds, int milliseconds = 8000) {
        return loop_.runUntil(holds, milliseconds);
    }
    bool playsToItsEnd() {
        done_ = 0;
        reason_.clear();
        control_.FileName(sample("scale.wav"));
        control_.Command("Open");
        control_.From(3500);
        control_.Command("Play");
        return until([this] { return done_ == 1 || !reason_.empty(); }) && reason_.empty();
    }

    WindowsLoop loop_;
    std::optional<MciStation> made_{std::in_place, loop_, loop_.uiPost()};
    MciStation& station_ = *made_;
    WindowsMciControl control_{station_};
    std::shared_ptr<Handle> answers_ = std::make_shared<Handle>(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    std::string reason_;
    int done_ = 0;
};

/// WIN-40: A device that does not answer fails its own file alone
TEST_F(HangingDevice, TheNextFileDoesNotWaitForIt) {
    hang();
    EXPECT_TRUE(playsToItsEnd()) << reason_;
    EXPECT_EQ(MciThread::hanging(), 1);
    EXPECT_TRUE(playsToItsEnd()) << reason_;
    EXPECT_EQ(MciThread::hanging(), 1) << "the new one is kept";
}

/// WIN-40
TEST_F(HangingDevice, AnOpeningThatDoesNotAnswerFails) {
    WindowsMciControl::longestJob = 60'000;  // it is not waited for elsewhere
    hang();
    control_.FileName(sample("scale.wav"));
    control_.Command("Open");
    control_.Command("Play");
    EXPECT_EQ(reason_, "") << "from inside the call";
    EXPECT_TRUE(until([this] { return !reason_.empty(); }, 3000));
    EXPECT_EQ(reason_, "It did not open in time.");
    SetEvent(answers_->get());
    WindowsMciControl::longestJob = 100;
    EXPECT_TRUE(playsToItsEnd()) << "nothing comes of the old one: " << reason_;
    until([this] { return done_ > 1; }, 700);
    EXPECT_EQ(done_, 1);
}

/// WIN-40
TEST_F(HangingDevice, AnOpenDeviceIsNotGivenUp) {
    control_.FileName(sample("scale.wav"));
    control_.Command("Open");
    control_.Command("Play");
    ASSERT_TRUE(until([this] { return control_.Length() > 0; }));
    until([this] { return !reason_.empty(); }, 1500);
    EXPECT_EQ(reason_, "");
    EXPECT_EQ(MciThread::hanging(), 0);
}

/// WIN-40
TEST_F(HangingDevice, WhatIsLeftOfItsSessionIsNotTouchedByAnotherThread) {
    const std::uint64_t none = MciThread::here();
    EXPECT_EQ(none, 0U) << "the user interface's thread is none for devices";
    std::atomic<std::uint64_t> first = 0;
    std::atomic<std::uint64_t> second = 0;
    station_.thread.post([&] { first = MciThread::here(); });
    ASSERT_TRUE(until([&] { return first != 0; }));
    hang();
    ASSERT_TRUE(until([this] { return station_.thread.replaceIfHung(20); }));
    EXPECT_FALSE(station_.thread.replaceIfHung(2000)) << "the new one has nothing to do";
    station_.thread.post([&] { second = MciThread::here(); });
    ASSERT_TRUE(until([&] { return second != 0; }));
    EXPECT_NE(first, second);
}

TEST_F(HangingDevice, AJobThatThrowsIsGivenUpAlone) {
    std::atomic<bool> after = false;
    station_.thread.post([] { throw std::bad_alloc(); });
    station_.thread.post([&] { after = true; });
    EXPECT_TRUE(until([&] { return after.load(); }));
}

}  // namespace
}  // namespace corvane
