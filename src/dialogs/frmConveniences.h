// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "engine/player.h"
#include "forms/lists.h"

namespace corvane {

/// The controls of the page of conveniences with their captions, places and tab order.
class ConveniencesControls : public Form {
public:
    static constexpr FormId kId = FormId::Conveniences;
    static constexpr std::size_t kRows = 10;
    enum Button { kOk = 0, kCancel, kAsStarted };
    enum Text { kWay = 0, kNote };

    ConveniencesControls();

    std::array<CheckBox, kRows> chkConveniences;  ///< in the order of convenienceSettings()
    std::array<Label, kRows> lblInForce;          ///< what counts now, beside each
    std::array<Label, 2> lblConveniences;
    std::array<CommandButton, 3> cmdConveniences;

private:
    void nameControls();
    void placeControls();
};

/// The page that switches the conveniences one by one. It belongs to the settings dialog, which waits behind it.
class frmConveniences : public ConveniencesControls {
public:
    explicit frmConveniences(Player& player);

private:
    void Form_Load();
    void Form_Unload();
    void cmdConveniences_Click(int index);
    void show(const Conveniences& wanted);
    void showAsStarted();
    bool store();

    Player& player_;
    Conveniences shown_;      ///< what the boxes were set to: only what differs is written
    bool asStarted_ = false;  ///< the keys of the file go before what differs is written
};

}  // namespace corvane
