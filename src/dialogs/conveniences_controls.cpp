// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/frmConveniences.h"
#include "storage/settings_schema.h"

namespace corvane {

namespace {

constexpr Twips pixels(int count) { return static_cast<Twips>(count) * kTwipsPerPixel; }

constexpr Twips kMargin = pixels(12);
constexpr Twips kLine = pixels(26);
constexpr Twips kBoxWidth = pixels(520);
constexpr Twips kInForceWidth = pixels(64);
constexpr Twips kWidth = kMargin + kBoxWidth + kMargin + kInForceWidth + kMargin;
constexpr Twips kButtonWidth = pixels(92);
constexpr Twips kButtonGap = pixels(8);

void place(Control& control, Twips left, Twips top, Twips width) {
    control.Move(left, top);
    control.SetSize(width, kLine);
}

}  // namespace

ConveniencesControls::ConveniencesControls()
    : Form("frmConveniences", FormStyle::Dialog),
      chkConveniences(controlArray<CheckBox, kRows>(this, "chkConveniences")),
      lblInForce(controlArray<Label, kRows>(this, "lblInForce")),
      lblConveniences(controlArray<Label, 2>(this, "lblConveniences")),
      cmdConveniences(controlArray<CommandButton, 3>(this, "cmdConveniences")) {
    Caption = "Corvane - Conveniences";
    nameControls();
    placeControls();
}

void ConveniencesControls::nameControls() {
    const std::vector<Setting> settings = convenienceSettings();
    int next = 0;
    for (std::size_t i = 0; i < kRows; ++i) {
        chkConveniences[i].Caption = std::string(settings.at(i).key) + ": " + settings.at(i).meaning;
        chkConveniences[i].TabIndex = next++;
    }
    cmdConveniences[kOk].Caption = "OK";
    cmdConveniences[kOk].Default = true;
    cmdConveniences[kCancel].Caption = "Cancel";
    cmdConveniences[kCancel].Cancel = true;
    cmdConveniences[kAsStarted].Caption = "As started";
    cmdConveniences[kAsStarted].ToolTipText = "What is chosen here is forgotten: the way of the start decides";
    for (const Button each : {kAsStarted, kOk, kCancel}) cmdConveniences[each].TabIndex = next++;
}

void ConveniencesControls::placeControls() {
    constexpr Twips kWide = kWidth - 2 * kMargin;
    Twips top = kMargin;
    place(lblConveniences[kWay], kMargin, top, kWide);
    top += kLine + kMargin;
    for (std::size_t i = 0; i < kRows; ++i) {
        place(chkConveniences[i], kMargin, top, kBoxWidth);
        place(lblInForce[i], kMargin + kBoxWidth + kMargin, top, kInForceWidth);
        top += kLine;
    }
    top += kMargin;
    place(lblConveniences[kNote], kMargin, top, kWide);
    top += kLine + kMargin;
    const Twips cancel = kWidth - kMargin - kButtonWidth;
    place(cmdConveniences[kAsStarted], kMargin, top, kButtonWidth);
    place(cmdConveniences[kOk], cancel - kButtonGap - kButtonWidth, top, kButtonWidth);
    place(cmdConveniences[kCancel], cancel, top, kButtonWidth);
    SetSize(kWidth, top + kLine + kMargin);
}

}  // namespace corvane
