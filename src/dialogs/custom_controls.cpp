// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/frmCustom.h"

namespace corvane {

namespace {

constexpr Twips pixels(int count) { return static_cast<Twips>(count) * kTwipsPerPixel; }

constexpr Twips kMargin = pixels(12);
constexpr Twips kFrameTop = pixels(26);  ///< of the first line in a frame, below its caption
constexpr Twips kFrameSide = pixels(12);
constexpr Twips kLine = pixels(26);  ///< height of a field, and of a line of choices
constexpr Twips kLineStep = pixels(32);
constexpr Twips kLeftWidth = pixels(196);   ///< of the left column's frames
constexpr Twips kRightWidth = pixels(428);  ///< of the right column's frames
constexpr Twips kRightLeft = kMargin + kLeftWidth + kMargin;
constexpr Twips kWidth = kRightLeft + kRightWidth + kMargin;
constexpr Twips kButtonWidth = pixels(92);

constexpr Twips kKeyStep = pixels(36);  ///< the keys stand wider, so that both columns end together

constexpr Twips frameHeight(int lines, Twips step = kLineStep) {
    return kFrameTop + static_cast<Twips>(lines) * step - (step - kLine) + pixels(12);
}

void place(Control& control, Twips left, Twips top, Twips width, Twips height) {
    control.Move(left, top);
    control.SetSize(width, height);
}

}  // namespace

CustomControls::CustomControls()
    : Form("frmCustom", FormStyle::Dialog),
      fraCustom(controlArray<Frame, 6>(this, "fraCustom")),
      optCustom(controlArray<OptionButton, 5>(this, "optCustom")),
      chkCustom(controlArray<CheckBox, 2>(this, "chkCustom")),
      lblCustom(controlArray<Label, kKeys + 4>(this, "lblCustom")),
      imgCustom(controlArray<Image, kKeys>(this, "imgCustom")),
      txtCustom(controlArray<TextBox, kKeys + 1>(this, "txtCustom")),
      cboCustom(controlArray<ComboBox, 3>(this, "cboCustom")),
      cmdCustom(controlArray<CommandButton, 2>(this, "cmdCustom")),
      cmdMore(this, "cmdMore"),
      tmrCustom(this, "tmrCustom") {
    Caption = "Corvane - Custom Setup";
    nameControls();
    fillChoices();
    orderTabs();
    placeGroups();
    placeKeys();
    placePanelGroup();
}

void CustomControls::nameControls() {
    constexpr std::array<const char*, 6> kGroups = {"Top Window", "Volume Select", "Image Hide",
                                                    "Play Mode",  "Key Custom",    "Panel Customize"};
    constexpr std::array<const char*, 5> kOptions = {"False", "True", "Normal Mode", "Main Window", "Sub Window"};
    constexpr std::array<const char*, kKeys + 3> kHeadings = {
        "POWER_Click", "MINBUTTON_Click", "REPEAT_Click", "SHUFFLE_Click", "PLAY_Click", "PAUSE_Click", "STOP_Click",
        "PREV_Click",  "NEXT_Click",      "VOLUME_Up",    "VOLUME_Down",   "Delay Time", "Bitmap File", "Text File"};

    for (std::size_t i = 0; i < kGroups.size(); ++i) fraCustom[i].Caption = kGroups[i];
    for (std::size_t i = 0; i < kOptions.size(); ++i) optCustom[i].Caption = kOptions[i];
    for (std::size_t i = 0; i < kHeadings.size(); ++i) lblCustom[i].Caption = kHeadings[i];
    chkCustom[kQuickPlay].Caption = "Quick Play";
    chkCustom[kAutoStart].Caption = "Auto Start";
    cmdCustom[kOk].Caption = "OK";
    cmdCustom[kOk].Default = true;
    cmdCustom[kCancel].Caption = "Cancel";
    cmdCustom[kCancel].Cancel = true;
    cmdMore.Caption = "More…";
    cmdMore.ToolTipText = "The conveniences, one by one";

    for (std::size_t i = 0; i < txtCustom.size(); ++i) {
        lblCustom[i].Labels = &txtCustom[i];
        txtCustom[i].AccessibleName = kHeadings[i];
    }
    lblCustom[kBitmapHeading].Labels = &cboCustom[kBitmaps];
    lblCustom[kTextHeading].Labels = &cboCustom[kTexts];
    cboCustom[kDevices].AccessibleName = "Volume Select";
    cboCustom[kBitmaps].AccessibleName = "Bitmap File";
    cboCustom[kTexts].AccessibleName = "Text File";
}

void CustomControls::fillChoices() {
    cboCustom[kDevices].setItems({"AUTO DETECT", "WAVE OUT"});
    cboCustom[kBitmaps].Text = "BMP";
    cboCustom[kTexts].Text = "CSV";
    cboCustom[kBitmaps].Editable = true;
    cboCustom[kTexts].Editable = true;
    txtCustom[kDelay].Text = "500";
    txtCustom[kDelay].MaxLength = 5;
    for (std::size_t i = 0; i < kKeys; ++i) {
        txtCustom[i].MaxLength = 1;
        imgCustom[i].Visible = false;
    }
    tmrCustom.Interval = 500;
}

void CustomControls::orderTabs() {
    int next = 0;
    for (const Option each : {kNormalMode, kMainWindow, kSubWindow}) optCustom[each].TabIndex = next++;
    cboCustom[kDevices].TabIndex = next++;
    for (const Option each : {kHideFalse, kHideTrue}) optCustom[each].TabIndex = next++;
    for (CheckBox& each : chkCustom) each.TabIndex = next++;
    for (std::size_t i = 0; i < kKeys; ++i) txtCustom[i].TabIndex = next++;
    for (const List each : {kBitmaps, kTexts}) cboCustom[each].TabIndex = next++;
    txtCustom[kDelay].TabIndex = next++;
    cmdMore.TabIndex = next++;
    for (CommandButton& each : cmdCustom) each.TabIndex = next++;
}

void CustomControls::placeGroups() {
    const auto line = [this](Control& control, Group group, int row) {
        control.Container = &fraCustom[group];
        place(control, kFrameSide, kFrameTop + static_cast<Twips>(row) * kLineStep, kLeftWidth - 2 * kFrameSide, kLine);
    };
    line(optCustom[kNormalMode], kTopWindow, 0);
    line(optCustom[kMainWindow], kTopWindow, 1);
    line(optCustom[kSubWindow], kTopWindow, 2);
    line(cboCustom[kDevices], kVolume, 0);
    line(optCustom[kHideFalse], kImageHide, 0);
    line(optCustom[kHideTrue], kImageHide, 0);
    constexpr Twips kHalf = (kLeftWidth - 2 * kFrameSide) / 2;
    optCustom[kHideFalse].Width = kHalf;
    optCustom[kHideTrue].Width = kHalf;
    optCustom[kHideTrue].Left = kFrameSide + kHalf;
    line(chkCustom[kQuickPlay], kPlayMode, 0);
    line(chkCustom[kAutoStart], kPlayMode, 1);

    Twips top = kMargin;
    const std::array<std::pair<Group, int>, 4> column = {
        {{kTopWindow, 3}, {kVolume, 1}, {kImageHide, 1}, {kPlayMode, 2}}};
    for (const auto& [group, lines] : column) {
        place(fraCustom[group], kMargin, top, kLeftWidth, frameHeight(lines));
        top += frameHeight(lines) + kMargin;
    }
    const Twips bottom = top;
    constexpr Twips kButtonStep = kButtonWidth + pixels(8);
    const Twips right = kWidth - kMargin - kButtonWidth;
    const Twips more = right - 2 * kButtonStep - kMargin;
    place(lblCustom[kVersion], kMargin, bottom, more - 2 * kMargin, kLine);
    place(cmdMore, more, bottom, kButtonWidth, kLine);
    place(cmdCustom[kOk], right - kButtonStep, bottom, kButtonWidth, kLine);
    place(cmdCustom[kCancel], right, bottom, kButtonWidth, kLine);
    SetSize(kWidth, bottom + kLine + kMargin);
}

void CustomControls::placeKeys() {
    constexpr int kRows = 6;
    constexpr Twips kColumn = kRightWidth / 2 - pixels(2);
    constexpr Twips kMark = pixels(12), kLabel = pixels(128), kField = pixels(44);
    for (int i = 0; i < static_cast<int>(kKeys); ++i) {
        const auto at = static_cast<std::size_t>(i);
        const int column = i / kRows, row = i % kRows;
        const Twips left = pixels(6) + static_cast<Twips>(column) * kColumn;
        const Twips top = kFrameTop + static_cast<Twips>(row) * kKeyStep;
        for (Control* each : std::initializer_list<Control*>{&imgCustom[at], &lblCustom[at], &txtCustom[at]}) {
            each->Container = &fraCustom[kKeyCustom];
        }
        place(imgCustom[at], left, top, kMark, kLine);
        place(lblCustom[at], left + kMark + pixels(2), top, kLabel, kLine);
        place(txtCustom[at], left + kMark + pixels(2) + kLabel, top, kField, kLine);
    }
    place(fraCustom[kKeyCustom], kRightLeft, kMargin, kRightWidth, frameHeight(kRows, kKeyStep));
}

void CustomControls::placePanelGroup() {
    constexpr Twips kLabel = pixels(100);
    const auto row = [this](int number, Label& label, Control& field, Twips width) {
        const Twips top = kFrameTop + static_cast<Twips>(number) * kLineStep;
        label.Container = &fraCustom[kPanelCustomize];
        field.Container = &fraCustom[kPanelCustomize];
        place(label, kFrameSide, top, kLabel, kLine);
        place(field, kFrameSide + kLabel, top, width, kLine);
    };
    const Twips rest = kRightWidth - 2 * kFrameSide - kLabel;
    row(0, lblCustom[kBitmapHeading], cboCustom[kBitmaps], rest);
    row(1, lblCustom[kTextHeading], cboCustom[kTexts], rest);
    row(2, lblCustom[kDelayHeading], txtCustom[kDelay], pixels(72));
    const Twips top = kMargin + fraCustom[kKeyCustom].Height + kMargin;
    const Twips bottom = fraCustom[kPlayMode].Top + fraCustom[kPlayMode].Height;
    place(fraCustom[kPanelCustomize], kRightLeft, top, kRightWidth, bottom - top);
}

}  // namespace corvane
