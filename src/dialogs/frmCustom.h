// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>

#include "engine/player.h"
#include "forms/lists.h"

namespace corvane {

/// The controls of the settings dialog with their captions, places and tab order.
class CustomControls : public Form {
public:
    static constexpr FormId kId = FormId::Custom;
    static constexpr std::size_t kKeys = 11;  ///< command keys
    enum Group { kTopWindow = 0, kVolume, kImageHide, kPlayMode, kKeyCustom, kPanelCustomize };
    enum Option { kHideFalse = 0, kHideTrue, kNormalMode, kMainWindow, kSubWindow };
    enum Check { kQuickPlay = 0, kAutoStart };
    enum List { kDevices = 0, kBitmaps, kTexts };
    enum Text { kDelay = kKeys };  ///< the key fields come first
    enum Heading { kDelayHeading = kKeys, kBitmapHeading, kTextHeading, kVersion };
    enum Button { kOk = 0, kCancel };

    CustomControls();

    std::array<Frame, 6> fraCustom;
    std::array<OptionButton, 5> optCustom;
    std::array<CheckBox, 2> chkCustom;
    std::array<Label, kKeys + 4> lblCustom;
    std::array<Image, kKeys> imgCustom;  ///< highlights of the key fields
    std::array<TextBox, kKeys + 1> txtCustom;
    std::array<ComboBox, 3> cboCustom;
    std::array<CommandButton, 2> cmdCustom;
    CommandButton cmdMore;  ///< opens the page of conveniences
    Timer tmrCustom;

private:
    void nameControls();
    void fillChoices();
    void orderTabs();
    void placeGroups();
    void placeKeys();
    void placePanelGroup();
};

/// The settings dialog.
class frmCustom : public CustomControls {
public:
    explicit frmCustom(Player& player);

private:
    void tieFields();

    void Form_Load();
    void Form_Unload();
    void Form_CloseRequest();
    bool showPage();
    void cmdCustom_Click(int index);
    void cmdMore_Click();
    void txtCustom_GotFocus(int index);
    void txtCustom_LostFocus(int index);
    int txtCustom_KeyPress(int character) const;
    void tmrCustom_Timer();

    void showKeys();
    void showSkins();
    void showDevices();
    std::string versionText() const;

    void store();
    void takeSwitches();
    void takeKeys();
    std::string takeDelay();
    std::string skinName(List list) const;  ///< as it is chosen; the default one where nothing is
    std::string skinFolder() const;         ///< with the separator behind it
    bool canShowSkin();
    void takeWindowMode();
    void putPanel(int insertAfter);
    void takeDevice();
    void lightLamp(int lamp, bool on);

    Player& player_;
    int blinking_ = -1;  ///< the key field whose highlight blinks, -1 none
};

}  // namespace corvane
