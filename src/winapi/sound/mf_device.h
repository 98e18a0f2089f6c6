// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "winapi/message_window.h"
#include "winapi/sound/mf_reader.h"
#include "winapi/sound/sound_device.h"

namespace corvane {

/// A sound file that Media Foundation decodes, on the wave output. Some seconds of it lie ready there; its place is
/// what the output has played, to the frame. Lives on a thread that handles messages.
class MfDevice : public SoundDevice {
public:
    explicit MfDevice(const MfLibrary& library = MfLibrary::installed());
    ~MfDevice() override { close(); }

    /// "": it is open; else why not, in words. factor: by what its samples are multiplied.
    std::string open(const std::wstring& path, float factor = 1);

    void close() override;
    MCIERROR play(HWND notified, std::optional<DWORD> from, std::optional<DWORD> to) override;
    MCIERROR pause() override;
    MCIERROR resume() override;
    MCIERROR stop() override;
    /// MCI_STATUS_LENGTH, MCI_STATUS_POSITION and MCI_STATUS_MODE.
    std::optional<DWORD> status(DWORD item, std::optional<DWORD> track = {}) const override;
    std::string failure() const override { return "What follows in the file cannot be decoded."; }

private:
    struct Block {
        WAVEHDR header{};
        std::vector<std::int16_t> samples;
        bool queued = false;
    };

    MCIERROR openOutput();
    void fill();
    bool take(Block& block);
    void returned();
    void tellEnd(WPARAM how);
    DWORD place() const;
    std::int64_t toFrames(DWORD milliseconds) const;

    MfReader reader_;
    MessageWindow returns_;  ///< told of each block that was played
    HWAVEOUT output_ = nullptr;
    std::array<Block, 16> blocks_;
    std::vector<std::int16_t> rest_;  ///< decoded and not yet given to the output
    float factor_ = 1;
    HWND notified_ = nullptr;  ///< null: the end was told, or nothing plays
    std::int64_t from_ = 0;    ///< frames of the file
    std::int64_t left_ = 0;    ///< frames that the part still has for the output; below 0: to the end of the file
    bool exhausted_ = false;
    bool broken_ = false;
};

}  // namespace corvane
