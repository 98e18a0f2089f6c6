// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/mci_control.h"
#include "windows/media/mci_session.h"
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
class WindowsMciControl : public MciControl {
public:
    /// The station outlives it.
    explicit WindowsMciControl(MciStation& station);
    ~WindowsMciControl() override;

    void DeviceType(const std::string& type) override { deviceType_ = type; }
    const std::string& DeviceType() const override { return deviceType_; }
    void FileName(const std::string& path) override { fileName_ = path; }
    void Command(std::string_view command) override;
    void TimeFormat(int format) override { timeFormat_ = format; }
    void UpdateInterval(int milliseconds) override;
    void Track(int track) override { track_ = track; }
    std::int32_t TrackLength() const override;
    std::int32_t Length() const override;
    std::int32_t Position() const override;
    void From(std::int32_t position) override { from_ = position; }
    void To(std::int32_t position) override { to_ = position; }
    std::int32_t To() const override { return to_.value_or(0); }

private:
    enum class State { Closed, Stopped, Playing, Paused };
    using Place = std::optional<std::int32_t>;  ///< in the time format

    void open();
    void close();
    void play(Place from, Place to);
    void pause();
    void stop();
    void seek(std::int32_t to);
    void change(State state);
    void later(EventLoop::Handler event);
    MciSession::Listener listener();
    void adopt();
    void failed(const std::string& reason);
    void ended(std::uint64_t playNumber, std::int64_t end);
    void leavePart();
    std::int64_t here() const;

    MciStation& station_;
    std::string deviceType_, fileName_;
    int timeFormat_ = kFormatMilliseconds;
    int track_ = 1;
    Place from_, to_;

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
