// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/control_sets.h"

#include <cmath>
#include <initializer_list>

#include "engine/mdlPublicFunction.h"

namespace corvane {

namespace {

/// The design-time texts name the controls' roles: tool tips and the names that assistive programs read.
void nameButtons(std::array<CommandButton, 12>& buttons) {
    static constexpr std::array<const char*, 12> kRoles = {"Power OFF", "Min Button", "Repeat",      "Shuffle",
                                                           "Play",      "Pause",      "Stop",        "Prev",
                                                           "Next",      "Program",    "Volume Down", "Volume Up"};
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        buttons[i].ToolTipText = kRoles[i];
        buttons[i].AccessibleName = kRoles[i];
        buttons[i].TabIndex = static_cast<int>(i);
    }
}

void nameLamp(Image& lamp, const char* name) {
    lamp.AccessibleName = name;
    lamp.Checkable = true;
}

void caption(MenuItem& item, const char* text) { item.Caption = text; }

}  // namespace

MainPanelControls::MainPanelControls()
    : Form("frmMainPanel", FormStyle::Painted),
      imgMainPanel(controlArray<Image, 18>(this, "imgMainPanel")),
      pctMainPanel(this, "pctMainPanel"),
      pctSlide(this, "pctSlide"),
      lblMainPanel(controlArray<Label, 6>(this, "lblMainPanel")),
      shpVolume(this, "shpVolume"),
      cmdMainPanel(controlArray<CommandButton, 12>(this, "cmdMainPanel")),
      tmrDisplay(this, "tmrDisplay"),
      tmrPrevNext(this, "tmrPrevNext"),
      tmrPlayBack(this, "tmrPlayBack") {
    raise(imgMainPanel[kKnobImage]);  // the knob and its indicator lie over the labels, the buttons over all
    raise(shpVolume);
    for (CommandButton& button : cmdMainPanel) raise(button);
    nameButtons(cmdMainPanel);

    Caption = "Corvane";
    pctMainPanel.ToolTipText = "Costom Setup";
    pctMainPanel.AccessibleName = "Costom Setup";
    pctSlide.ToolTipText = "Slider";
    pctSlide.AccessibleName = "Slider";
    imgMainPanel[kKnobImage].ToolTipText = "Volume";
    imgMainPanel[kKnobImage].AccessibleName = "Volume";
    int tab = cmdMainPanel.back().TabIndex;
    for (Control* each : std::initializer_list<Control*>{&pctSlide, &imgMainPanel[kKnobImage], &pctMainPanel}) {
        each->TabIndex = ++tab;
    }
    cmdMainPanel[kRepeat].Checkable = true;
    nameLamp(imgMainPanel[kAutoPlayLamp], "Auto Play");
    nameLamp(imgMainPanel[kQuickPlayLamp], "Quick Play");
    nameLamp(imgMainPanel[kRepeatLamp], "Repeat");
    static constexpr std::array<const char*, 6> kLabelRoles = {"",       "Display", "Time", "Total FileNo",
                                                               "FileNo", "Tittle"};
    for (std::size_t i = 0; i < lblMainPanel.size(); ++i) lblMainPanel[i].AccessibleName = kLabelRoles[i];
    lblMainPanel[kMarkLabel].AccessibleName = "Total";
    lblMainPanel[kMarkLabel].Caption = "/";

    // Stored pictures are copied into a visible image, never shown themselves.
    for (const int stored : {1, 2, 3, kRepeatOffImage, kRepeatOnImage, 10, 11, 13, 14, 16, 17}) {
        imgMainPanel[static_cast<std::size_t>(stored)].Visible = false;
    }
    shpVolume.SetSize(90, 90);
    shpVolume.FillColor = kWhite;
    pctSlide.SetSize(kTwipsPerPixel, kTwipsPerPixel);

    tmrDisplay.Interval = 1000;
    tmrDisplay.Enabled = true;
    tmrPrevNext.Interval = 750;
    tmrPlayBack.Interval = 200;
}

std::int32_t MainPanelControls::CalcPos(const mdlDefinePublic::PlayerState& state, std::int32_t x,
                                        std::int32_t packedLength) {
    const double share = static_cast<double>(x) / state.gSlideWidth;
    const auto target =
        static_cast<std::int32_t>(std::nearbyint(share * mdlPublicFunction::packedSeconds(packedLength)));
    return target % 60 * mdlDefinePublic::kPackedSecond + target / 60 * mdlDefinePublic::kPackedMinute;
}

MenuWindowControls::MenuWindowControls()
    : Form("frmMenuWindow", FormStyle::Hidden),
      pcpMainPanel(this, "pcpMainPanel"),
      mnuMenu(this, "mnuMenu"),
      mnuSub(controlArray<MenuItem, 13>(this, "mnuSub")),
      PlayCmd(controlArray<MenuItem, 8>(this, "PlayCmd")),
      PlayMode(controlArray<MenuItem, 2>(this, "PlayMode")),
      PlayCustom(controlArray<MenuItem, 5>(this, "PlayCustom")) {
    caption(mnuMenu, "Menu");
    static constexpr std::array<const char*, 13> kSub = {
        "Play Command", "-",         "Play Mode", "-",    "Play Custom", "", "", "-",
        "Min",          "Menu Exit", "-",         "Help", "Power OFF"};
    static constexpr std::array<const char*, 8> kCmd = {"Play", "Pause", "Stop",      "Prev",
                                                        "Next", "-",     "Volume Up", "Volume Down"};
    static constexpr std::array<const char*, 2> kMode = {"Repeat", "Shuffle"};
    static constexpr std::array<const char*, 5> kCustom = {"Start Position", "Stop Position", "-", "Custom ON",
                                                           "Custom Repeat"};
    for (std::size_t i = 0; i < mnuSub.size(); ++i) {
        caption(mnuSub[i], kSub[i]);
        if (i != 5 && i != 6) mnuMenu.children.push_back(&mnuSub[i]);
    }
    for (std::size_t i = 0; i < PlayCmd.size(); ++i) {
        caption(PlayCmd[i], kCmd[i]);
        mnuSub[kPlayCommand].children.push_back(&PlayCmd[i]);
    }
    for (std::size_t i = 0; i < PlayMode.size(); ++i) {
        caption(PlayMode[i], kMode[i]);
        mnuSub[kPlayMode].children.push_back(&PlayMode[i]);
    }
    for (std::size_t i = 0; i < PlayCustom.size(); ++i) {
        caption(PlayCustom[i], kCustom[i]);
        mnuSub[kPlayCustom].children.push_back(&PlayCustom[i]);
    }
    for (MenuItem* const choice : {&PlayMode[kRepeatEntry], &PlayCustom[kCustomOn], &PlayCustom[kCustomRepeats]})
        choice->Checkable = true;
}

MciWindowControls::MciWindowControls(Media& media)
    : Form("frmMCIWindow", FormStyle::Hidden), mmcMci(media.makeMciControl()) {
    Caption = "Form1";
}

MovieWindowControls::MovieWindowControls(Media& media)
    : Form("frmMovieWindow", FormStyle::Media), amvMovie(media.makeMovieControl(*this)), tmrMovie(this, "tmrMovie") {
    Caption = "Movie Window";
    amvMovie->AccessibleName = "Movie";
    tmrMovie.Interval = 500;
}

ImageWindowControls::ImageWindowControls()
    : Form("frmImageWindow", FormStyle::Media), pctImage(this, "pctImage"), tmrImage(this, "tmrImage") {
    Caption = "Image Window";
    pctImage.Scale = ScaleMode::InPixels;
    pctImage.AccessibleName = "Image";
    tmrImage.Interval = 1000;
}

}  // namespace corvane
