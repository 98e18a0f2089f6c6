// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "controls/mci_axis.h"
#include "controls/mci_clock.h"
#include "platform/mci_control.h"
#include "winapi/message_window.h"
#include "winapi/sound/mci_device.h"
#include "winapi/sound/mci_thread.h"
#include "winapi/sound/sound_engines.h"

namespace corvane {

/// One opening of one MCI device. Asked from the user-interface thread, at once; done in the MCI thread, in order.
class MciSession : public std::enable_shared_from_this<MciSession> {
public:
    /// Called in the MCI thread.
    struct Listener {
        std::function<void()> opened;
        std::function<void(const std::string& reason)> failed;  ///< at most once; nothing follows
        /// A play has reached its end, at that place.
        std::function<void(std::uint64_t number, std::int64_t place)> ended;
    };
    struct Source {
        std::string deviceType;  ///< "Sequencer", "CDAudio" or "": by the file
        std::string path;
        SoundLevel level = SoundLevel::AsRecorded;
    };
    /// What is played, units of the axis; a `to` below 0: to the device's own end.
    struct Part {
        std::int64_t from = 0, to = 0;
    };

    MciSession(MciThread& thread, Source source, Listener listener);

    void open();
    void waitOpened(int milliseconds);
    /// Its first job has been begun; until then it waits for what the thread does for others.
    bool begun() const { return home_ != 0; }
    /// Forgets the device; nothing is told any more.
    void close();

    /// The number is larger than any before: what was asked for with a smaller one is overtaken.
    void play(std::uint64_t number, const Part& part);
    void pause(std::uint64_t number);   ///< the play of that number, if it still is the last one
    void resume(std::uint64_t number);  ///< likewise
    void stop(std::uint64_t number);

    struct Facts {
        bool opened = false;
        std::string reason;  ///< why it failed; empty: it has not
        MciAxis axis;
    };
    Facts facts() const;
    std::int64_t position() const;  ///< of the last play, units of the axis

private:
    void post(std::function<void(MciSession&)> job);
    void post(void (MciSession::*job)(std::uint64_t), std::uint64_t number);
    bool isCurrent(std::uint64_t number) const;

    // In the MCI thread.
    void openNow();
    /// "": one of the devices has it; else the first one's reason.
    std::string openSound();
    std::string openBy(SoundEngine engine, const std::wstring& path, float factor);
    std::string openMci(const wchar_t* type, const std::wstring& element);
    MCIERROR openDisc();
    void learnDisc(MciAxis& axis);
    void playNow(std::uint64_t number, const Part& part);
    void pauseNow(std::uint64_t number);
    void resumeNow(std::uint64_t number);
    void stopNow(std::uint64_t number);
    MCIERROR start(std::uint64_t number, std::int64_t from, std::int64_t to);
    void silence();
    void notified(std::uint64_t number, WPARAM code);
    void look(std::uint64_t number);
    void end(std::uint64_t number);
    void fail(const std::string& reason);
    DWORD deviceTime(std::int64_t units) const;
    std::optional<std::int64_t> devicePlace() const;

    MciThread& thread_;
    const Source source_;
    Listener listener_;

    std::atomic<std::uint64_t> home_ = 0;  ///< the thread that the device was opened on; 0: not yet

    // The MCI thread's own.
    MciDevice mci_;
    std::unique_ptr<SoundDevice> decoder_;     ///< Media Foundation's, where that plays it
    SoundDevice* device_ = &mci_;              ///< which of the two plays
    std::unique_ptr<MessageWindow> notified_;  ///< of one play: a notification to an older one has no window left
    std::int64_t end_ = 0;                     ///< units; 0: the device's own end, unknown
    bool sounding_ = false;                    ///< the device plays or is paused
    bool paused_ = false;
    bool notifies_ = false;  ///< the device still means to tell the end
    int looksAtEnd_ = 0;

    mutable std::mutex mutex_;  ///< guards what follows
    std::condition_variable openedOrFailed_;
    Facts facts_;
    std::uint64_t number_ = 0;  ///< asked for last
    MciClock clock_;
    bool closed_ = false;
};

}  // namespace corvane
