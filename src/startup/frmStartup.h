// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "engine/player.h"

namespace corvane {

/// The program's first and last window: a copy of the empty panel that grows at the start and shrinks at the end.
/// Its animation step is kept in the player, because the form is unloaded in between.
class frmStartup : public Form {
public:
    explicit frmStartup(Player& player);

    Image imgDummyPanel;  ///< the panel's background
    std::array<Timer, 2> tmrOpenClose;

    /// Single instance, platform, paths and the skin's files; done once, before the form is loaded first. False: the
    /// program ends, a missing file was reported.
    static bool Form_Initialize(Player& player);
    /// Reads all settings, then the list to start with.
    static void LoadInitial(Player& player);

private:
    void Form_Load();
    void tmrOpenClose_Timer(int index);
    void skipTo(int index);
    void stepOpening();
    static void beginList(Player& player);
    void stepClosing();
    void loadSkin();
    void growTo(int step);
    void moveBy(float left, float top);
    void setBothSizes(Twips width, Twips height);

    Player& player_;
};

}  // namespace corvane
