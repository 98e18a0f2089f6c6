// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/skin_builder.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>

#include "panel/skin_records.h"
#include "types/text.h"

namespace corvane {

namespace {

constexpr int kDefaultPanelWidth = 512;
constexpr int kDefaultPanelHeight = 128;
constexpr int kLabelHeight = 16;  ///< pixels, where the record gives none
constexpr int kTwips = static_cast<int>(kTwipsPerPixel);
constexpr int kIndicatorHalf = 45;  ///< twips
constexpr int kKnobRim = 60;        ///< twips between the indicator and the knob's edge

enum class Fills { Nothing, Window, Button, PressedButton, Box, Image, StoredImage, Label, WideLabel, Slider };

/// What a record fills. Pictures of indicators and lamps are also kept in stored images.
struct Target {
    Fills fills = Fills::Nothing;
    int index = 0;
    int stored = -1;  ///< image that keeps a copy of the picture
};

constexpr std::array<Target, kLastRecord + 1> kTargets = {{
    {},
    {Fills::Window},
    {Fills::Button, kPower},
    {Fills::PressedButton, kPower},
    {Fills::Button, kMinimise},
    {Fills::Button, kRepeat, kRepeatOffImage},
    {Fills::PressedButton, kRepeat, kRepeatOnImage},
    {Fills::Button, kShuffle},
    {Fills::Button, kPlay},
    {Fills::PressedButton, kPlay},
    {Fills::Button, kPause},
    {Fills::PressedButton, kPause},
    {Fills::Button, kStop},
    {Fills::Button, kPrev},
    {Fills::PressedButton, kPrev},
    {Fills::Button, kNext},
    {Fills::PressedButton, kNext},
    {Fills::Button, kEditor},
    {Fills::PressedButton, kEditor},
    {Fills::Button, kVolumeDown},
    {Fills::Button, kVolumeUp},
    {Fills::Box},
    {Fills::Image, 7},
    {Fills::Image, 8},
    {Fills::Image, kKnobImage},
    {Fills::Image, kIndicatorImage, kIndicatorImage + 1},
    {Fills::StoredImage, kIndicatorImage + 2},
    {Fills::StoredImage, kIndicatorImage + 3},
    {Fills::Label, kMarkLabel},
    {Fills::Label, kTotalLabel},
    {Fills::Label, kNumberLabel},
    {Fills::Label, kTimeLabel},
    {Fills::WideLabel, kTextLabel},
    {Fills::WideLabel, kTitleLabel},
    {Fills::Image, kAutoPlayLamp, kAutoPlayLamp + 1},
    {Fills::StoredImage, kAutoPlayLamp + 2},
    {Fills::Image, kQuickPlayLamp, kQuickPlayLamp + 1},
    {Fills::StoredImage, kQuickPlayLamp + 2},
    {Fills::Image, kRepeatLamp, kRepeatLamp + 1},
    {Fills::StoredImage, kRepeatLamp + 2},
    {Fills::Slider},
}};

Target target(const SkinRecord& record) { return kTargets[static_cast<std::size_t>(record.number)]; }

Pictures::Cell cell(const SkinRecord& record) { return {record.clipX, record.clipY, record.width, record.height}; }

Twips twips(int pixels) { return static_cast<float>(pixels) * kTwipsPerPixel; }

std::int16_t shortTwips(int length) {
    return static_cast<std::int16_t>(std::clamp<int>(length, 0, std::numeric_limits<std::int16_t>::max()));
}

void place(Control& control, const SkinRecord& record) { control.Move(twips(record.left), twips(record.top)); }

void fit(Control& control, const SkinRecord& record) {
    control.SetSize(twips(record.width), twips(record.height));
    place(control, record);
    control.Visible = true;
}

/// Applies records to one panel. Each picture belongs to one record number, so it is enough to cut the last one that
/// each number named, when all records are applied: a text file of many lines costs no picture a line.
class Builder {
public:
    Builder(mdlDefinePublic::PlayerState& state, MainPanelControls& panel) : state_(state), panel_(panel) {}

    /// All but the picture.
    void apply(const SkinRecord& record) {
        if (!record.used) return hide(record);
        const Target what = target(record);
        if (needsPicture(record)) cells_[static_cast<std::size_t>(record.number)] = cell(record);
        switch (what.fills) {
            case Fills::Window:
                place(panel_, record);
                break;
            case Fills::Button:
            case Fills::PressedButton:
                fit(panel_.cmdMainPanel[static_cast<std::size_t>(what.index)], record);
                break;
            case Fills::Box:
                fit(panel_.pctMainPanel, record);
                break;
            case Fills::Image:
                applyImage(record, what.index);
                break;
            case Fills::Label:
            case Fills::WideLabel:
                applyLabel(record, what.index);
                break;
            case Fills::Slider:
                applySlider(record);
                break;
            case Fills::StoredImage:
            case Fills::Nothing:
                break;
        }
    }

    /// False: the bitmap has no such part.
    bool cutPictures(Pictures& pictures, const Picture& bitmap) {
        for (std::size_t number = 0; number < cells_.size(); ++number) {
            if (!cells_[number]) continue;
            const Picture picture = pictures.cut(bitmap, *cells_[number]);
            if (picture.empty()) return false;
            setPicture(kTargets[number], picture);
        }
        return true;
    }

private:
    Image& image(int index) { return panel_.imgMainPanel[static_cast<std::size_t>(index)]; }

    void setPicture(const Target& what, const Picture& picture) {
        const auto index = static_cast<std::size_t>(what.index);
        switch (what.fills) {
            case Fills::Window:
                panel_.Picture = picture;
                break;
            case Fills::Button:
                panel_.cmdMainPanel[index].Picture = picture;
                break;
            case Fills::PressedButton:
                panel_.cmdMainPanel[index].DownPicture = picture;
                break;
            case Fills::Box:
                panel_.pctMainPanel.Picture = picture;
                break;
            case Fills::Image:
            case Fills::StoredImage:
                image(what.index).Picture = picture;
                break;
            default:
                break;
        }
        if (what.stored >= 0) image(what.stored).Picture = picture;
    }

    void hide(const SkinRecord& record) {
        const Target what = target(record);
        const auto index = static_cast<std::size_t>(what.index);
        switch (what.fills) {
            case Fills::Button:
            case Fills::PressedButton:
                panel_.cmdMainPanel[index].Visible = false;
                break;
            case Fills::Box:
                panel_.pctMainPanel.Visible = false;
                break;
            case Fills::Image:
            case Fills::StoredImage:
                image(what.index).Visible = false;
                break;
            case Fills::Label:
            case Fills::WideLabel:
                panel_.lblMainPanel[index].Visible = false;
                break;
            case Fills::Slider:
                panel_.pctSlide.Visible = false;
                break;
            case Fills::Window:  // a panel without a background is still a panel
            case Fills::Nothing:
                break;
        }
        if (what.index == kKnobImage && what.fills == Fills::Image) panel_.shpVolume.Visible = false;
    }

    void applyImage(const SkinRecord& record, int index) {
        fit(image(index), record);
        if (index != kKnobImage) return;
        const int width = record.width * kTwips;
        const int height = record.height * kTwips;
        state_.gVolumeX = shortTwips(width / 2);
        state_.gVolumeY = shortTwips(height / 2);
        state_.gVolumeRadius = shortTwips(std::min(width, height) / 2 - kIndicatorHalf - kKnobRim);
        panel_.shpVolume.Visible = true;
    }

    void applyLabel(const SkinRecord& record, int index) {
        Label& label = panel_.lblMainPanel[static_cast<std::size_t>(index)];
        place(label, record);
        if (record.width > 0) label.Width = twips(record.width);
        label.Height = twips(record.height > 0 ? record.height : kLabelHeight);
        if (const auto colour = skinColour(record.use)) label.ForeColor = *colour;
        label.Visible = true;
    }

    void applySlider(const SkinRecord& record) {
        PictureBox& slider = panel_.pctSlide;
        place(slider, record);
        slider.SetSize(kTwipsPerPixel, twips(record.height));
        if (const auto colour = skinColour(record.use)) slider.BackColor = *colour;
        slider.Visible = true;
        state_.gSlideWidth = std::max(record.width, 0) * kTwips;
        slider.hitWidth = static_cast<float>(state_.gSlideWidth);
    }

    mdlDefinePublic::PlayerState& state_;
    MainPanelControls& panel_;
    std::array<std::optional<Pictures::Cell>, kLastRecord + 1> cells_;
};

}  // namespace

bool needsPicture(const SkinRecord& record) {
    const Fills fills = target(record).fills;
    return record.used && fills != Fills::Label && fills != Fills::WideLabel && fills != Fills::Slider;
}

bool liesInside(const SkinRecord& record, int width, int height) {
    return record.clipX >= 0 && record.clipY >= 0 && record.width > 0 && record.height > 0 &&
           record.clipX + record.width <= width && record.clipY + record.height <= height;
}

bool isPanelSize(int width, int height) {
    return std::min(width, height) >= 1 && std::max(width, height) <= kMostPanelPixels;
}

std::optional<SkinFault> firstSkinFault(std::string_view text, int width, int height) {
    SkinRecords records(text);
    while (const auto record = records.next(1, kLastRecord)) {
        if (needsPicture(*record) && !liesInside(*record, width, height)) return SkinFault{records.line(), true};
    }
    if (records.failed()) return SkinFault{records.line(), false};
    return std::nullopt;
}

std::string trySkin(Ports& ports, const std::string& bitmapPath, const std::string& textPath) {
    for (const std::string& path : {bitmapPath, textPath}) {
        if (!ports.files.lookUp(path)) return text::onOneLine(path) + " Not found!!";
    }
    const Pictures::Decoded bitmap = ports.pictures.decode(bitmapPath);
    if (bitmap.picture.empty()) return text::onOneLine(bitmapPath) + "\r\n" + bitmap.reason;
    const auto text = ports.files.read(textPath, kMostSkinTextBytes);
    if (!text) return text::onOneLine(textPath) + "\r\nThis file cannot be read, or is too long.";
    const auto fault = firstSkinFault(*text, bitmap.picture.width(), bitmap.picture.height());
    if (!fault) return "";
    const std::string place = text::onOneLine(textPath) + "\r\nLine " + std::to_string(fault->line) + ": ";
    if (!fault->outside) return place + "a field is missing, or is no number.";
    return place + "this part does not lie inside the bitmap (" + std::to_string(bitmap.picture.width()) + " x " +
           std::to_string(bitmap.picture.height()) + ").";
}

void applyPanelRecord(std::string_view text, const Picture& bitmap, Pictures& pictures,
                      mdlDefinePublic::PlayerState& state, Image& background) {
    const auto record = SkinRecords(text).next(kPanelRecord, kPanelRecord);
    if (!record || !isPanelSize(record->width, record->height)) return;
    state.gPanelWidth = record->width;
    state.gPanelHeight = record->height;
    if (!record->used) return;
    const Picture picture = pictures.cut(bitmap, cell(*record));
    if (picture.empty()) return;
    background.Picture = picture;
    place(background, *record);
}

bool applySkin(std::string_view text, const Picture& bitmap, Pictures& pictures, mdlDefinePublic::PlayerState& state,
               MainPanelControls& panel) {
    if (firstSkinFault(text, bitmap.width(), bitmap.height())) return false;
    Builder builder(state, panel);
    SkinRecords records(text);
    while (const auto record = records.next(1, kLastRecord)) builder.apply(*record);
    return builder.cutPictures(pictures, bitmap);
}

void readPanelRecord(Player& player, Image& background) {
    player.gPanelWidth = kDefaultPanelWidth;
    player.gPanelHeight = kDefaultPanelHeight;
    const auto text = player.ports.files.read(player.gTextPath, kMostSkinTextBytes);
    if (!text) return;
    const auto* menu = player.forms.find<MenuWindowControls>();
    const Picture bitmap = menu != nullptr ? menu->pcpMainPanel.Picture : Picture();
    applyPanelRecord(*text, bitmap, player.ports.pictures, player, background);
}

bool buildPanel(Player& player, MainPanelControls& panel) {
    const auto* menu = player.forms.find<MenuWindowControls>();
    const auto text = player.ports.files.read(player.gTextPath, kMostSkinTextBytes);
    if (!text || menu == nullptr) return false;
    return applySkin(*text, menu->pcpMainPanel.Picture, player.ports.pictures, player, panel);
}

}  // namespace corvane
