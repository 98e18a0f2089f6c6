// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "fake/call_log.h"
#include "platform/ports.h"

namespace corvane {

/// Boxes that answer from a script.
class FakeDialogs : public Dialogs {
public:
    struct Box {
        std::string text;
        std::string title;
        Buttons buttons;
        Icon icon;
        bool operator==(const Box&) const = default;
    };

    FakeDialogs(EventLoop& loop, CallLog& log) : loop_(loop), log_(log) {}

    Answer messageBox(const std::string& text, const std::string& title, Buttons buttons, Icon icon) override;
    void popUp(MenuItem& menu) override;
    void help() override { log_.did("dialogs.help"); }

    /// Answers of the next boxes; without one a box is closed without an answer.
    std::deque<Answer> answers;
    /// Called while a box is up, before it is answered.
    std::function<void()> whileUp;

    std::vector<Box> boxes;        ///< shown so far
    MenuItem* poppedUp = nullptr;  ///< the menu that was popped up last
    int boxesUp = 0;               ///< on the screen now
    int mostBoxesUp = 0;           ///< most that were ever on the screen together
    bool loopWasHeld = true;       ///< each box so far came while the loop was held
    void choose(MenuItem& item);   ///< the user picks an item: its Click follows through the loop

private:
    EventLoop& loop_;
    CallLog& log_;
};

}  // namespace corvane
