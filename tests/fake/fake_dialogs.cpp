// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/fake_dialogs.h"

#include <algorithm>

namespace corvane {

namespace {

Answer refusal(Buttons buttons) {
    switch (buttons) {
        case Buttons::OkCancel:
            return Answer::Cancel;
        case Buttons::AbortRetryIgnore:
            return Answer::Abort;
        default:
            return Answer::Ok;
    }
}

}  // namespace

Answer FakeDialogs::messageBox(const std::string& text, const std::string& title, Buttons buttons, Icon icon) {
    log_.did("dialogs.messageBox " + text);
    boxes.push_back({text, title, buttons, icon});
    loopWasHeld = loopWasHeld && loop_.held();
    mostBoxesUp = std::max(mostBoxesUp, ++boxesUp);
    if (whileUp) whileUp();
    --boxesUp;
    if (answers.empty()) return refusal(buttons);
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

void FakeDialogs::popUp(MenuItem& menu) {
    log_.did("dialogs.popUp " + menu.name());
    poppedUp = &menu;
}

void FakeDialogs::choose(MenuItem& item) {
    loop_.post([chosen = &item] { chosen->Click.raise(); });
}

}  // namespace corvane
