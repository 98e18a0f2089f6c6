// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "controls/mci_state_control.h"
#include "winapi/message_window.h"
#include "winapi/sound/mci_session.h"
#include "workers/ui_post.h"

namespace corvane {

/// What the multimedia controls share, kept warm while controls come and go.
struct MciStation {
    /// The loop outlives it. toLoop: its own, which it stops.
    MciStation(EventLoop& eventLoop, UiPost toLoop) : loop(eventLoop), post(std::move(toLoop)) {}
    ~MciStation() { post.stop(); }

    EventLoop& loop;
    UiPost post;
    MciThread thread;
};

/// The multimedia control of this desktop: a device that works in a thread of its own.
class WindowsMciControl : public MciStateControl {
public:
    /// The station outlives it.
    explicit WindowsMciControl(MciStation& station);
    ~WindowsMciControl() override { release(); }

    /// Milliseconds: what has not opened by then fails; a drive may first have to spin a disc up.
    static inline UINT longestOpening = 10'000;
    static inline UINT longestDiscOpening = 30'000;
    /// Milliseconds that a device may take for another's business before what waits for it is done without it.
    static inline UINT longestJob = 3'000;

protected:
    void openIt() override;
    void closeIt() override;
    const SoundAxis& axis() const override { return axis_; }
    std::string playPart(std::uint64_t number, std::int64_t from, std::int64_t to) override;
    void pausePart() override { session_->pause(part_); }
    void resumePart() override { session_->resume(part_); }
    void stopPart() override { session_->stop(++part_); }
    std::int64_t partPosition() const override { return session_->position(); }
    void tick(int intervalMs) override;

private:
    std::optional<LRESULT> handle(UINT message, WPARAM timer);
    void giveUpOpening();
    MciSession::Listener listener();
    void adopt();

    MciStation& station_;
    std::shared_ptr<MciSession> session_;  ///< null: closed
    MciAxis axis_;                         ///< once opened
    std::uint64_t part_ = 0;               ///< of the last play or stop that the session was told
    MessageWindow timers_;
};

}  // namespace corvane
