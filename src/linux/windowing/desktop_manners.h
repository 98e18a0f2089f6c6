// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QPalette>
#include <memory>

#include "linux/bus/desktop_settings.h"
#include "linux/bus/manners.h"

namespace corvane {

class XSettings;

/// Has the tool kit obey what the user has set on the desktop, and follow it while the program runs: colours and font
/// of dialogs and menus, double-click time, drag distance, blinking. What nobody has said stays as the tool kit has it
/// by itself. Lives on the user-interface thread, no longer than the application.
class DesktopManners {
public:
    /// bus, folder: of DesktopSettings. keepsLook: colours and font are the user's choice already.
    DesktopManners(const DesktopSettings::Bus& bus, const QString& folder, bool keepsLook = looksAreChosen());
    DesktopManners(const DesktopManners&) = delete;
    DesktopManners& operator=(const DesktopManners&) = delete;
    ~DesktopManners();

    const Manners& manners() const { return manners_; }
    /// Whether the environment chooses a theme or a style of the tool kit's.
    static bool looksAreChosen();

private:
    void follow();
    void applyLook() const;
    void applyHabits() const;
    QPalette palette() const;

    const bool keepsLook_;
    const QPalette ownPalette_;
    const QFont ownFont_;
    const int ownDoubleClickMs_, ownDragPixels_, ownFlashMs_;
    Manners manners_;
    DesktopSettings settings_;
    std::unique_ptr<XSettings> managed_;  ///< null: no display of X11
};

/// Colours of dialogs that are light or dark, each of the strongest contrast or not.
QPalette paletteOf(bool dark, bool highContrast);

}  // namespace corvane
