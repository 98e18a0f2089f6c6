// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "platform/mci_control.h"

namespace corvane {

/// The command words and plain properties of the multimedia control of every desktop. A desktop derives from it and
/// says what each command does to its device.
class MciCommandControl : public MciControl {
public:
    void DeviceType(const std::string& type) override { deviceType_ = type; }
    const std::string& DeviceType() const override { return deviceType_; }
    void FileName(const std::string& path) override { fileName_ = path; }
    void Command(std::string_view command) override;
    void TimeFormat(int format) override { timeFormat_ = format; }
    void Track(int track) override { track_ = track; }
    void From(std::int32_t position) override { from_ = position; }
    void To(std::int32_t position) override { to_ = position; }
    std::int32_t To() const override { return to_.value_or(0); }

protected:
    using Place = std::optional<std::int32_t>;  ///< in the time format

    virtual bool isOpen() const = 0;  ///< otherwise only openDevice() is called
    virtual void openDevice() = 0;
    virtual void closeDevice() = 0;
    virtual void play(Place from, Place to) = 0;
    virtual void pause() = 0;
    virtual void stop() = 0;
    virtual void seek(std::int32_t to) = 0;

    const std::string& fileName() const { return fileName_; }
    int timeFormat() const { return timeFormat_; }
    int track() const { return track_; }

private:
    std::string deviceType_, fileName_;
    int timeFormat_ = kFormatMilliseconds;
    int track_ = 1;
    Place from_, to_;
};

}  // namespace corvane
