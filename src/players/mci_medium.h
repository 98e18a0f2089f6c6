// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// What sound files and disc tracks have in common: the multimedia control of the MCI window plays them.
class MciMedium : public OpenMedium {
public:
    using OpenMedium::OpenMedium;

    FormId window() const override { return FormId::MciWindow; }
    void close(bool keepImage) override;
    void resume() override;
    void pause() override;
    void progress() override;
    bool isProgressing() const override { return control() != nullptr; }
    std::optional<std::int32_t> position() const override;
    void endHold(bool steppedFast) override;

protected:
    MciControl* control() const;  ///< null: the window is gone
    /// The window's control, with the present entry opened in it.
    MciControl& openControl(int timeFormat);
    /// Lets go what the window's control holds, and the window.
    void closeControl();

    /// Plays on from where it stands.
    virtual void playOn(MciControl& mci) = 0;
    /// A length that was not known in time for the start, or only guessed, is taken when it is.
    virtual void takeLength(MciControl& mci) = 0;
    /// A position that is no place in this file is not shown.
    virtual bool isOutside(std::int32_t /*position*/) const { return false; }
    virtual void showProgress(std::int32_t position) = 0;
    virtual bool isQuicklyPlayed(std::int32_t position) const = 0;
    /// Plays from the custom start position again, or from the beginning.
    virtual void playAgain(MciControl& mci) = 0;
};

}  // namespace corvane
