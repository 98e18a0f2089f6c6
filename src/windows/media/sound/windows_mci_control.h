// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "shell/mci_command_control.h"
#include "windows/media/sound/mci_session.h"
#include "windows/media/ui_post.h"

namespace corvane {

/// What the multimedia controls share, kept warm while controls come and go.
struct MciStation {
    explicit MciStation(WindowsLoop& eventLoop) : loop(eventLoop), post(eventLoop) {}
    ~MciStation() { post.stop(); }

    WindowsLoop& loop;
    UiPost post;
    MciThread thread;
};

/// The multimedia control of this desktop: keeps the state that its form sees, over a device that works in its own
/// thread.
class WindowsMciControl : public MciCommandControl {
public:
    /// The station outlives it.
    explicit WindowsMciControl(MciStation& station);
    ~WindowsMciControl() override;

    /// Milliseconds: what has not opened by then fails; a drive may first have to spin a disc up.
    static inline UINT longestOpening = 10'000;
    static inline UINT longestDiscOpening = 30'000;
    /// Milliseconds that a device may take for another's business before what waits for it is done without it.
    static inline UINT longestJob = 3'000;

    void UpdateInterval(int milliseconds) override;
    std::int32_t TrackLength() const override;
    std::int32_t Length() const override;
    std::int32_t Position() const override;

protected:
    bool isOpen() const override { return state_ != State::Closed; }
    void openDevice() override;
    void closeDevice() override;
    void play(Place from, Place to) override;
    void pause() override;
    void stop() override;
    void seek(std::int32_t to) override;

private:
    enum class State { Closed, Stopped, Playing, Paused };

    std::optional<LRESULT> handle(UINT message, WPARAM timer);
    void watchOpening();
    void giveUpOpening();
    void change(State state);
    void later(EventLoop::Handler event);
    MciSession::Listener listener();
    void adopt();
    void failed(const std::string& reason);
    void ended(std::uint64_t playNumber, std::int64_t end);
    void leavePart();
    std::int64_t here() const;

    MciStation& station_;
    State state_ = State::Closed;
    std::shared_ptr<MciSession> session_;  ///< null: closed
    MciAxis axis_;                         ///< once opened
    bool opened_ = false;
    std::uint64_t ticket_ = 0;  ///< of the last open, close, play, stop or seek: what carries another one is late
    bool hasPart_ = false;      ///< the session plays or holds something of ours
    Place partEnd_;
    std::int64_t at_ = 0;       ///< units of the axis; where the device stands without a part
    Place wantedAt_;            ///< the same, while the axis is not known yet
    bool endedPaused_ = false;  ///< the part's end came when it was paused already
    int interval_;              ///< milliseconds
    bool updatePosted_ = false;
    MessageWindow updates_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace corvane
